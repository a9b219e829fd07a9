// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/search/SearchRun.h"
#include "client/text/ContactNumbers.h"

#include <QJsonArray>

namespace {

/// Who has the number, and what could not be asked about it.
struct Answer
{
    QString number; ///< as it was looked for
    ListContact contacts;
    std::optional<CommandFailure> telephonyFault;
    std::optional<CommandFailure> companyFault;
    bool isOfPhoneOnly = true;
};

void askCompany(Answer &answer, const BusSession &bus)
{
    const Interruption interruption;
    SearchRun search(bus);
    QObject::connect(&interruption, &Interruption::interrupted, &search, &SearchRun::interrupt);
    constexpr bool localOnly = false;
    search.startByNumber(answer.number, localOnly);
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

Answer ask(const QString &number, bool localOnly, const BusSession &bus)
{
    const TelephonyService::Canonical canonical = TelephonyService(bus).canonical(number);
    Answer answer{canonical.number, {}, canonical.fault, {}};
    answer.contacts = DirectoryService(bus).byNumber(answer.number);
    if (answer.contacts.isEmpty() && !localOnly)
        askCompany(answer, bus);
    return answer;
}

void printJson(const Answer &answer, QTextStream &out)
{
    QList<QJsonObject> objects;
    for (const Contact &contact : answer.contacts) {
        QJsonArray fields;
        for (const ContactNumber &number : ContactNumbers::equalTo(contact, answer.number))
            fields.append(number.field);
        objects.append(RecordJson::ofFound(contact));
        objects.last().insert(QLatin1String("matchedFields"), fields);
    }
    Report::json(out, objects);
}

void print(const Answer &answer, QTextStream &out)
{
    for (const Contact &contact : answer.contacts) {
        const QString numbers = ContactNumbers::toString(ContactNumbers::equalTo(contact, answer.number));
        out << Printable::text(ContactText::displayName(contact));
        if (!numbers.isEmpty())
            out << ", " << Printable::text(numbers);
        out << (ContactText::isOfCompany(contact) ? " (company directory)" : "") << '\n';
    }
}

CommandFailure nobody(const QString &number, const Answer &answer)
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
        {QStringLiteral("who NUMBER [--local]")},
        QStringLiteral(
            R"help(Prints everybody with this number, one a line, and which of their numbers it is. It ends with 1 when
there is nobody.

The phone's telephony brings the number into its canonical form first, as for a caller; where that
cannot be asked the number is looked for as it stands, and that is told. When nobody on the phone has
it the company directory is searched; "(company directory)" stands behind a name from there (with
--json the key "company" is true, and "matchedFields" names the numbers). When nobody is found and
one of the two could not be asked, that is told, and the exit code is 3 or 5 where an answer may be
had another time.)help"),
        {QStringLiteral("kestin-dir who '+33 1 55 66 70 00'"), QStringLiteral("kestin-dir who 7000 --json")}};
}

QList<QCommandLineOption> WhoCommand::options() const
{
    return {{QStringLiteral("local"), QStringLiteral("Only the contacts of the phone")}};
}

ExitCode WhoCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString number = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("NUMBER"));
    const Answer answer = ask(number, arguments.isSet(QStringLiteral("local")), context.bus);
    if (context.json)
        printJson(answer, context.out);
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
