// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/text/LiveTable.h"
#include "client/text/Terminal.h"

namespace {

constexpr int defaultRows = 20;

/// Ids of the company directory are long and have to be whole: they stand last, where a narrow terminal breaks the
/// line, and the addresses are left out there.
Table tableOf(const ListContactSummary &contacts)
{
    Table table({{QStringLiteral("NAME")},
                 {QStringLiteral("OFFICE")},
                 {QStringLiteral("FROM")},
                 {QStringLiteral("E-MAIL"), Table::uncut, 1},
                 {QStringLiteral("ID")}});
    for (const ContactSummary &contact : contacts)
        table.addRow({contact.displayName(), contact.officePhone,
                      contact.isOfCompany() ? QStringLiteral("company") : QStringLiteral("phone"), contact.email,
                      contact.contactId});
    return table;
}

QString canonical(const QString &number, const BusSession &bus)
{
    const TelephonyService::Canonical canonical = TelephonyService(bus).canonical(number);
    if (canonical.fault)
        Report::problem(QStringLiteral("the number is looked for as it stands: %1").arg(canonical.fault->text()));
    return canonical.number;
}

} // namespace

struct SearchCommand::Request
{
    QString text;
    bool isNumber;
    bool localOnly;
    int rows;

    CommandFailure nobody(const std::optional<CommandFailure> &companyFault) const
    {
        const QString where = localOnly || companyFault ? QStringLiteral(" on the phone") : QString();
        const QString nobody = isNumber ? QStringLiteral("nobody%1 has the number %2").arg(where, text)
                                        : QStringLiteral("nobody%1 is found by the name \"%2\"").arg(where, text);
        if (!companyFault)
            return {ExitCode::Refused, nobody};
        return {companyFault->code(), QStringLiteral("%1; %2").arg(nobody, companyFault->text())};
    }
};

CommandHelp SearchCommand::help() const
{
    return {{QStringLiteral("search TEXT [--local] [--limit N]"),
             QStringLiteral("search --number NUMBER [--local] [--limit N]")},
            QStringLiteral(
                R"(Finds contacts of the phone whose last name begins with the text, and those that the company
directory finds by it ('' finds all of the phone); or everybody with a number. The column FROM says where a
contact is kept: "phone" or "company" (with --json the key "company"). A contact of the company
directory can be looked at with kestin-dir show and taken over with kestin-dir copy.

On a terminal contacts are shown as they come, and at the end the table in its order takes their place;
into a file or a pipe only that table is written. When the search is interrupted (Ctrl-C) or takes too
long, what has come until then is printed, and the exit code is not 0. It ends with 1 when nobody is
found. The directory runs one search at a time: this one takes the place of one that is running.)"),
            {QStringLiteral("kestin-dir search mül"), QStringLiteral("kestin-dir search mül --local --limit 5"),
             QStringLiteral("kestin-dir search --number '+33 1 55 66 70 00' --json | jq -r '.[].name'")}};
}

QList<QCommandLineOption> SearchCommand::options() const
{
    return {{QStringLiteral("number"), QStringLiteral("Search for a number"), QStringLiteral("NUMBER")},
            {QStringLiteral("local"), QStringLiteral("Only the contacts of the phone")},
            {QStringLiteral("limit"), QStringLiteral("Print at most N contacts (%1)").arg(defaultRows),
             QStringLiteral("N")}};
}

SearchCommand::Request SearchCommand::requestOf(const QCommandLineParser &arguments)
{
    const bool isNumber = arguments.isSet(QStringLiteral("number"));
    QStringList texts = arguments.positionalArguments();
    if (isNumber && !texts.isEmpty())
        throw CommandFailure(ExitCode::Usage, QStringLiteral("search takes a TEXT or a --number, not both"));
    if (isNumber)
        texts = arguments.values(QStringLiteral("number"));
    // Without a text everybody is found.
    const bool isEmpty = !isNumber && texts.size() == 1 && texts.first().isEmpty();
    const QString what = isNumber ? QStringLiteral("NUMBER") : QStringLiteral("TEXT");
    return {isEmpty ? QString() : CommandArguments::one(texts, what), isNumber,
            arguments.isSet(QStringLiteral("local")),
            CommandArguments::number(arguments, QStringLiteral("limit"), defaultRows, 1)};
}

EventWait::End SearchCommand::follow(const Request &request, SearchRun &search, CommandContext &context)
{
    LiveTable live(context.out);
    const auto show = [&] {
        if (!context.json)
            live.show(tableOf(search.announced()), QStringLiteral("searching; Ctrl-C ends"));
    };
    QObject::connect(&search, &SearchRun::announcedMore, &search, show);
    if (request.isNumber)
        search.startByNumber(canonical(request.text, context.bus), request.localOnly);
    else
        search.startByName(request.text, request.rows, request.localOnly);
    show();
    const EventWait::End end = search.wait();
    search.disconnect();
    return end;
}

void SearchCommand::print(ListContactSummary contacts, const Request &request, CommandContext &context)
{
    const bool hasMore = contacts.size() > request.rows;
    if (hasMore)
        contacts.resize(request.rows);
    if (context.json)
        Report::foundJson(context.out, contacts);
    else if (!contacts.isEmpty())
        tableOf(contacts).write(context.out, Terminal::outputWidth());
    context.out.flush();
    if (hasMore)
        Report::note(QStringLiteral("there are more than %1; --limit says how many are printed").arg(request.rows));
}

ExitCode SearchCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const Request request = requestOf(arguments);
    const Interruption interruption;
    SearchRun search(context.bus);
    QObject::connect(&interruption, &Interruption::interrupted, &search, &SearchRun::interrupt);
    const EventWait::End end = follow(request, search, context);
    const ListContactSummary contacts =
        end == EventWait::End::Done ? search.results(request.rows + 1) : search.announced();
    print(contacts, request, context);
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer, QStringLiteral("the search did not end within the limit; another "
                                                                "search may have taken its place"));
    const std::optional<CommandFailure> fault = search.companyFault();
    if (contacts.isEmpty())
        throw request.nobody(fault);
    // A phone without a company directory lacks nothing.
    if (fault && fault->code() != ExitCode::Refused)
        Report::problem(QStringLiteral("there may be more: %1").arg(fault->text()));
    return ExitCode::Done;
}
