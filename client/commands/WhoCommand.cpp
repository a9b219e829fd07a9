// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/search/SearchRun.h"

namespace {

ListContact ofCompany(const QString &canonicalNumber, const BusSession &bus)
{
    const Interruption interruption;
    SearchRun search(bus);
    QObject::connect(&interruption, &Interruption::interrupted, &search, &SearchRun::interrupt);
    constexpr bool localOnly = false;
    search.startByNumber(canonicalNumber, localOnly);
    const EventWait::End end = search.wait();
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer,
                             QStringLiteral("nobody on the phone has the number %1, and the search in the company "
                                            "directory did not end within the limit")
                                 .arg(canonicalNumber));
    return search.match().contactId.isEmpty() ? ListContact() : ListContact{search.match()};
}

} // namespace

CommandHelp WhoCommand::help() const
{
    return {
        {QStringLiteral("who NUMBER [--local]")},
        QStringLiteral(R"help(Prints the names of everybody with this number, one a line, and ends with 1 when there is
nobody. The number is brought into its canonical form by the phone's telephony first, as
for a caller; without telephony it is looked for as it stands. When nobody on the phone has
it the company directory is searched, where there is one; "(company directory)" stands
behind a name from there (with --json the key "company" is true).)help"),
        {QStringLiteral("kestin-dir who '+33 1 55 66 70 00'"), QStringLiteral("kestin-dir who 7000 --json")}};
}

QList<QCommandLineOption> WhoCommand::options() const
{
    return {{QStringLiteral("local"), QStringLiteral("Only the contacts of the phone")}};
}

ExitCode WhoCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString number = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("NUMBER"));
    const QString canonicalNumber = TelephonyService(context.bus).canonicalNumber(number);
    ListContact contacts = DirectoryService(context.bus).byNumber(canonicalNumber);
    if (contacts.isEmpty() && !arguments.isSet(QStringLiteral("local")))
        contacts = ofCompany(canonicalNumber, context.bus);
    if (context.json) {
        Report::foundJson(context.out, contacts);
    } else {
        for (const Contact &contact : contacts)
            context.out << Printable::text(ContactText::displayName(contact))
                        << (ContactText::isOfCompany(contact) ? " (company directory)" : "") << '\n';
    }
    if (contacts.isEmpty())
        throw CommandFailure(ExitCode::Refused, QStringLiteral("nobody has the number %1").arg(number));
    return ExitCode::Done;
}
