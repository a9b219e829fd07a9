// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/ContactSelection.h"
#include "client/text/ContactText.h"

namespace {

qint32 typeOf(const QString &word)
{
    const std::optional<qint32> type = ContactText::typeOf(word);
    if (!type)
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--type takes %1 or a number, not \"%2\"")
                                                  .arg(ContactText::typeNames().join(QLatin1String(", ")), word));
    return *type;
}

/// Empty when none is asked for.
QString orderOf(const QCommandLineParser &arguments)
{
    const QString order = arguments.value(QStringLiteral("sort"));
    if (arguments.isSet(QStringLiteral("sort")) && !ContactSelection::orders().contains(order))
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--sort takes %1, not \"%2\"")
                                                  .arg(ContactSelection::orders().join(QLatin1String(", ")), order));
    return order;
}

} // namespace

CommandHelp ListCommand::help() const
{
    return {
        {QStringLiteral("list [TEXT...] [--type KIND] [--sort ORDER] [--columns LIST] [--start N] [--length N]")},
        QStringLiteral(
            R"(Prints a table of the contacts of the phone, ordered by name. Columns that are empty are left out, and so
are, where a terminal is too narrow, the less important ones; no number is cut. --columns shows others:
id, name, office, mobile, home, email, type, first-name, last-name, fax, extension, voicemail,
private-email, im, company, photo, date, and misc.KEY for any attribute.

With a TEXT only those that have it in their name, a number, an e-mail address, the company or the id;
with several TEXTs, all of them. Neither letter case nor accents count, nor what separates digits. It
ends with 1 when nobody has them.

--start and --length pick from what would be printed. Without TEXT, --type and --sort they pick in the
order in which the directory keeps contacts (by id), so that a long directory can be read in pieces.)"),
        {QStringLiteral("kestin-dir list"), QStringLiteral("kestin-dir list zoe"),
         QStringLiteral("kestin-dir list '01 55' --sort company --columns name,office,company,misc.floor"),
         QStringLiteral("kestin-dir list --type cached"), QStringLiteral("kestin-dir list --start 100 --length 50"),
         QStringLiteral("kestin-dir list --json | jq -r '.[].email'")}};
}

QList<QCommandLineOption> ListCommand::options() const
{
    return {{QStringLiteral("type"),
             QStringLiteral("Only contacts of this kind: %1, or a number")
                 .arg(ContactText::typeNames().join(QLatin1String(", "))),
             QStringLiteral("KIND")},
            {QStringLiteral("sort"),
             QStringLiteral("By %1 (date: changed last comes first)")
                 .arg(ContactSelection::orders().join(QLatin1String(", "))),
             QStringLiteral("ORDER")},
            CommandArguments::columnsOption(),
            {QStringLiteral("start"), QStringLiteral("Leave out the first N contacts"), QStringLiteral("N")},
            {QStringLiteral("length"), QStringLiteral("At most N contacts"), QStringLiteral("N")}};
}

ListContact ListCommand::read(const QCommandLineParser &arguments, const BusSession &bus)
{
    const int start = CommandArguments::number(arguments, QStringLiteral("start"), 0, 0);
    const int length = CommandArguments::number(arguments, QStringLiteral("length"), ContactPages::toTheEnd, 0);
    const QString order = orderOf(arguments);
    const QStringList texts = arguments.positionalArguments();
    const DirectoryService directory(bus);
    ContactPages pages([&directory](int from, int count) { return directory.page(from, count); });
    const bool isOfType = arguments.isSet(QStringLiteral("type"));
    if (!isOfType && order.isEmpty() && texts.isEmpty())
        return pages.read(start, length);
    ListContact contacts = isOfType ? contactsOfType(directory, typeOf(arguments.value(QStringLiteral("type"))))
                                    : pages.read(0, ContactPages::toTheEnd);
    contacts.removeIf([&texts](const Contact &contact) { return !ContactSelection::matches(contact, texts); });
    sortByName(contacts);
    ContactSelection::sort(contacts, order);
    return contacts.mid(start, length);
}

ExitCode ListCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QStringList texts = arguments.positionalArguments();
    const QStringList columns = CommandArguments::columns(arguments);
    const ListContact contacts = read(arguments, context.bus);
    const bool isNobody = contacts.isEmpty() && !texts.isEmpty();
    if (context.json || !isNobody)
        Report::contacts(context.out, contacts, context.json, columns);
    if (isNobody)
        throw CommandFailure(
            ExitCode::Refused,
            QStringLiteral("no contact of the phone has \"%1\"").arg(texts.join(QLatin1String("\" and \""))));
    return ExitCode::Done;
}
