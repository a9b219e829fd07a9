// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Confirmation.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/import/ImportRun.h"
#include "client/recover/RecoverySource.h"
#include "client/recover/StoreRecovery.h"
#include "client/text/ContactTable.h"

#include <utility>

namespace {

/// What a database holds, and what of that the phone lacks.
struct Comparison
{
    RecoveredStore store; ///< but for its contacts
    qsizetype there = 0;  ///< how many the phone has
    ListContact lacking;
    int photos = 0; ///< of those that are lacking: files that are there, and so on
    int addresses = 0;
    int withoutFile = 0;

    /// None when it is not known how many there were.
    std::optional<int> lost() const
    {
        const auto local = [](const QMap<int, int> &counts) { return counts.value(ContactType::Local); };
        return store.held ? std::optional(std::max(0, local(*store.held) - local(store.read))) : std::nullopt;
    }
};

RecoveredStore read(const QString &path)
{
    const Interruption interruption;
    RecoveryProgress progress;
    ImportProgress bar;
    QObject::connect(&interruption, &Interruption::interrupted, &progress, &RecoveryProgress::interrupt);
    QObject::connect(&progress, &RecoveryProgress::advanced, &progress,
                     [&bar](qint64 done, qint64 total) { bar.show(done, total, QStringLiteral("reading")); });
    return StoreRecovery(path, progress).read();
}

void countPhoto(const Contact &contact, Comparison &comparison)
{
    switch (StoredPhoto::of(contact.photo).kind) {
    case StoredPhoto::Kind::None:
        break;
    case StoredPhoto::Kind::Address:
        ++comparison.addresses;
        break;
    case StoredPhoto::Kind::InFolder:
    case StoredPhoto::Kind::Elsewhere:
        ++comparison.photos;
        break;
    case StoredPhoto::Kind::Missing:
        ++comparison.withoutFile;
        break;
    }
}

Comparison compare(RecoveredStore store, const BusSession &bus)
{
    Comparison comparison;
    comparison.lacking = std::exchange(store.contacts, {});
    comparison.store = store;
    KnownContacts known;
    for (const Contact &contact : contactsOfType(DirectoryService(bus), ContactType::Local))
        known.add(contact, contact.contactId);
    comparison.there = comparison.lacking.removeIf([&known](const Contact &contact) { return known.find(contact); });
    for (const Contact &contact : std::as_const(comparison.lacking))
        countPhoto(contact, comparison);
    sortByName(comparison.lacking);
    return comparison;
}

void write(const Comparison &comparison, QTextStream &out)
{
    Table kinds({{QStringLiteral("KIND")},
                 {QStringLiteral("HELD")},
                 {QStringLiteral("READABLE")},
                 {QStringLiteral("ON THE PHONE")},
                 {QStringLiteral("LACKING")}});
    const RecoveredStore &store = comparison.store;
    QMap<int, int> types = store.held.value_or(store.read);
    types.insert(store.read);
    types.insert(ContactType::Local, 0);
    for (const int type : types.keys()) {
        const bool isLocal = type == ContactType::Local;
        kinds.addRow({ContactText::typeName(type),
                      store.held ? QString::number(store.held->value(type)) : QStringLiteral("?"),
                      QString::number(store.read.value(type)), isLocal ? QString::number(comparison.there) : QString(),
                      isLocal ? QString::number(comparison.lacking.size()) : QString()});
    }
    kinds.write(out, Terminal::outputWidth());
    if (comparison.lacking.isEmpty())
        return;
    out << "\nTheir photos: " << comparison.photos << " found, " << comparison.withoutFile << " missing, "
        << comparison.addresses << " addresses\n\n";
    constexpr qsizetype mostNames = 20;
    ContactTable::of(comparison.lacking.mid(0, mostNames)).write(out, Terminal::outputWidth());
    if (const qsizetype more = comparison.lacking.size() - mostNames; more > 0)
        out << "and " << more << " more (--json names all)\n";
    out.flush();
}

/// Of the phone's kinds, by the words that the other commands have for them.
QJsonObject jsonOf(const QMap<int, int> &counts)
{
    QJsonObject object;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        object.insert(ContactText::typeName(count.key()), *count);
    return object;
}

QJsonObject jsonOf(const Comparison &comparison, const QString &path)
{
    QJsonArray lacking;
    for (const Contact &contact : comparison.lacking)
        lacking.append(RecordJson::of(contact));
    const RecoveredStore &store = comparison.store;
    return {{QStringLiteral("file"), path},
            {QStringLiteral("damaged"), store.isDamaged},
            {QStringLiteral("mayHoldRemoved"), store.mayHoldRemoved},
            {QStringLiteral("mayLackPairs"), store.mayLackPairs},
            {QStringLiteral("held"), store.held ? QJsonValue(jsonOf(*store.held)) : QJsonValue()},
            {QStringLiteral("readable"), jsonOf(store.read)},
            {QStringLiteral("onThePhone"), comparison.there},
            {QStringLiteral("lacking"), lacking},
            {QStringLiteral("photos"), QJsonObject{{QStringLiteral("found"), comparison.photos},
                                                   {QStringLiteral("missing"), comparison.withoutFile},
                                                   {QStringLiteral("addresses"), comparison.addresses}}}};
}

void tellDamage(const Comparison &comparison, const QString &path)
{
    if (!comparison.store.isDamaged)
        return;
    const std::optional<int> lost = comparison.lost();
    if (!lost)
        Report::note(QStringLiteral("%1 is damaged, and nothing tells how many contacts it held").arg(path));
    else if (*lost > 0)
        Report::problem(
            QStringLiteral("%1 is damaged: %2 contacts of the user cannot be read").arg(path, QString::number(*lost)));
    else
        Report::note(QStringLiteral("%1 is damaged, but all contacts of the user can be read").arg(path));
    if (comparison.store.mayLackPairs)
        Report::note(QStringLiteral("attributes of contacts (misc) may be missing: a part of them cannot be read"));
    if (comparison.store.mayHoldRemoved)
        Report::note(QStringLiteral(
            "contacts or attributes that had been removed may be among them: what tells that is damaged"));
}

/// Creates the contacts that are lacking.
ExitCode bringBack(const Comparison &comparison, const QString &path, QJsonObject json, CommandContext &context)
{
    PhotoFolder photos{SettingsService(context.bus)};
    const Interruption interruption;
    ImportRun run(context.bus, photos, Duplicates::Add, false); // who is there has been looked at
    QObject::connect(&interruption, &Interruption::interrupted, &run, &ImportRun::interrupt);
    const auto tell = [](const RefusedCard &card) { Report::problem(card.toString()); };
    QObject::connect(&run, &ImportRun::cardRefused, &run, tell);
    QObject::connect(&run, &ImportRun::cardReduced, &run, tell);
    RecoverySource source(path, comparison.lacking);
    run.read(source);
    const QJsonObject report = run.report().toJson();
    for (const char *key : {"created", "refused", "withoutPhoto", "seconds"})
        json.insert(QLatin1String(key), report.value(QLatin1String(key)));
    if (context.json)
        Report::json(context.out, json);
    else
        context.out << Printable::text(run.report().toString()) << '\n';
    if (!run.stopped())
        return run.report().refused.isEmpty() ? ExitCode::Done : ExitCode::Refused;
    Report::failure({run.stopped()->code(), QStringLiteral("stopped before the end: %1").arg(run.stopped()->text())});
    return run.stopped()->code();
}

} // namespace

CommandHelp RecoverCommand::help() const
{
    return {
        {QStringLiteral("recover FILE [--dry-run] [--yes]")},
        QStringLiteral(
            R"(Shows what a database of the directory holds, and brings back those contacts of the user that the phone
lacks. FILE is a database that the directory has set aside because it failed the check at its start
(beside the one in use, with ".set-aside-" and the time in its name), or one that somebody has kept.
It may be damaged: what SQLite cannot reach is taken from its pages one by one.

FILE is only read, and a journal beside it with it; the work is done on a copy in a folder of its own
below TMPDIR, which needs as much room as the file. A contact that is there, by its UID or by its name
together with a number or an address, is left alone, so that nobody comes twice. The others come with
their attributes, their place in the preview list and their photos, as far as the files are still in the
photo folder or elsewhere on the phone; the directory gives them new ids, and no persistent id (puid).
Contacts of device management, copies and managers are counted only: they come from elsewhere.
A terminal is asked before contacts are created. With 0 it ends when all that could be read are there.)"),
        {QStringLiteral("kestin-dir recover kestindirectory.data.set-aside-20261122T081500000Z --dry-run"),
         QStringLiteral("kestin-dir recover kestindirectory.data.set-aside-20261122T081500000Z")}};
}

QList<QCommandLineOption> RecoverCommand::options() const
{
    return {{QStringLiteral("dry-run"), QStringLiteral("Change nothing, show what the file holds")},
            Confirmation::option()};
}

ExitCode RecoverCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString path = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("FILE"));
    const Comparison comparison = compare(read(path), context.bus);
    const bool isTrial = arguments.isSet(QStringLiteral("dry-run"));
    QJsonObject json = jsonOf(comparison, path);
    json.insert(QStringLiteral("dryRun"), isTrial);
    tellDamage(comparison, path);
    if (!context.json)
        write(comparison, context.out);
    if (isTrial || comparison.lacking.isEmpty()) {
        if (context.json)
            Report::json(context.out, json);
        return ExitCode::Done;
    }
    if (Confirmation::isWanted(arguments))
        Confirmation::ask(QStringLiteral("Bring %1 contacts back?").arg(comparison.lacking.size()));
    return bringBack(comparison, path, json, context);
}
