// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/commands/WhoExplanation.h"
#include "client/search/SearchRun.h"
#include "platform/records/ContactNumbers.h"

namespace {

void askCompany(WhoAnswer &answer, const BusSession &bus)
{
    const Interruption interruption;
    SearchRun search(bus);
    QObject::connect(&interruption, &Interruption::interrupted, &search, &SearchRun::interrupt);
    constexpr bool localOnly = false;
    search.startByNumber(answer.canonical, localOnly);
    const EventWait::End end = search.wait();
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted"));
    constexpr int most = 20;
    if (end == EventWait::End::Done)
        answer.contacts = search.contacts(most);
    answer.companyFault = end == EventWait::End::Done
                              ? search.companyFault()
                              : CommandFailure(ExitCode::NoAnswer,
                                               QStringLiteral("the search in the company directory did not end within "
                                                              "the limit"));
    answer.isOfPhoneOnly = answer.companyFault.has_value();
}

WhoAnswer ask(const QString &number, bool localOnly, const BusSession &bus)
{
    const TelephonyService::Canonical canonical = TelephonyService(bus).canonical(number);
    WhoAnswer answer{number, canonical.number, {}, canonical.fault, {}};
    answer.contacts = DirectoryService(bus).byNumber(answer.canonical);
    if (answer.contacts.isEmpty() && !localOnly)
        askCompany(answer, bus);
    return answer;
}

void print(const WhoAnswer &answer, QTextStream &out)
{
    for (const Contact &contact : answer.contacts) {
        const QString numbers = ContactNumbers::toString(ContactNumbers::equalTo(contact, answer.canonical));
        out << Printable::text(contact.displayName());
        if (!numbers.isEmpty())
            out << ", " << Printable::text(numbers);
        out << (contact.isOfCompany() ? " (company directory)" : "") << '\n';
    }
}

CommandFailure nobody(const QString &number, const WhoAnswer &answer)
{
    QString text = (answer.isOfPhoneOnly ? QStringLiteral("nobody on the phone has the number %1")
                                         : QStringLiteral("nobody has the number %1"))
                       .arg(number);
    ExitCode code = ExitCode::Refused;
    if (answer.companyFault) {
        text += QStringLiteral("; %1").arg(answer.companyFault->text());
        code = answer.companyFault->code();
    }
    if (answer.telephonyFault) {
        text += QStringLiteral("; it was looked for as it stands: %1").arg(answer.telephonyFault->text());
        code = answer.telephonyFault->code();
    }
    return {code, text};
}

} // namespace

CommandHelp WhoCommand::help() const
{
    return {
        {QStringLiteral("who NUMBER [--local] [--explain]")},
        QStringLiteral(
            R"help(Prints everybody with this number, one a line, and which of their numbers it is. It ends with 1 when
there is nobody.

The phone's telephony brings the number into its canonical form first, as for a caller; where that
cannot be asked the number is looked for as it stands, and that is told. When nobody on the phone has
it the company directory is searched; "(company directory)" stands behind a name from there (with
--json the key "company" is true, and "matchedFields" names the numbers). When nobody is found and
one of the two could not be asked, that is told, and the exit code is 3 or 5 where an answer may be
had another time.

--explain tells how the number became canonical, under which rules, and which number of which contact
it met; when nobody on the phone has it, whose number ends with the same eight digits and why that is
not it. With --json that is an object.)help"),
        {QStringLiteral("kestin-dir who '+33 1 55 66 70 00'"),
         QStringLiteral("kestin-dir who '0 01 55 66 70 00' --explain"), QStringLiteral("kestin-dir who 7000 --json")}};
}

QList<QCommandLineOption> WhoCommand::options() const
{
    return {{QStringLiteral("local"), QStringLiteral("Only the contacts of the phone")},
            {QStringLiteral("explain"), QStringLiteral("Tell how the number was read and what it met")}};
}

ExitCode WhoCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString number = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("NUMBER"));
    const WhoAnswer answer = ask(number, arguments.isSet(QStringLiteral("local")), context.bus);
    if (arguments.isSet(QStringLiteral("explain")))
        WhoExplanation(answer, context.bus).print(context);
    else if (context.json)
        Report::json(context.out, answer.toJson());
    else
        print(answer, context.out);
    if (answer.contacts.isEmpty())
        throw nobody(number, answer);
    context.out.flush();
    if (answer.telephonyFault)
        Report::problem(
            QStringLiteral("the number was looked for as it stands: %1").arg(answer.telephonyFault->text()));
    return ExitCode::Done;
}
