// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/Confirmation.h"
#include "client/commands/Report.h"
#include "client/sync/SyncFile.h"
#include "client/sync/SyncPlan.h"

namespace {

/// What an import would do. Throws CommandFailure when the file cannot be opened. A file that is no good is none, which
/// the directory tells better.
std::optional<SyncPlan> planOf(SyncFile &file, const QString &path, const CommandContext &context)
{
    if (const auto reason = file.open())
        throw CommandFailure(
            ExitCode::FileError,
            QStringLiteral("%1 cannot be read, so it is not known whose contacts it holds: %2; --force "
                           "has the directory import it all the same")
                .arg(path, *reason));
    SyncPlan plan(contactsOfType(DirectoryService(context.bus), ContactType::Local));
    const auto fault = file.read([&plan](const SyncEntry &entry) { plan.take(entry); });
    return fault ? std::nullopt : std::optional(plan);
}

/// Why the file seems to be of another phone, when it does.
std::optional<QString> foreignness(const SyncFile::Head &head, const SyncPlan &plan, const QString &device)
{
    if (!head.device.isEmpty() && head.device != device)
        return QStringLiteral("it is from the device \"%1\", and this one is \"%2\" (--device says otherwise)")
            .arg(head.device, device);
    if (plan.foreign() > 0)
        return QStringLiteral("%1 of its contacts have nothing in common with the contacts of their ids here")
            .arg(plan.foreign());
    if (plan.unknown() > 0)
        return QStringLiteral("%1 of its contacts have ids that are not on this phone").arg(plan.unknown());
    if (plan.removed() > 0 && plan.kept() + plan.changed() == 0)
        return QStringLiteral("it lists nobody of this phone");
    return std::nullopt;
}

QJsonObject jsonOf(const SyncPlan &plan, const SyncFile::Head &head, const QString &path)
{
    return {{QStringLiteral("file"), path},
            {QStringLiteral("device"), head.device},
            {QStringLiteral("id"), head.id},
            {QStringLiteral("exported"), head.created},
            {QStringLiteral("created"), plan.created()},
            {QStringLiteral("changed"), plan.changed()},
            {QStringLiteral("kept"), plan.kept()},
            {QStringLiteral("removed"), plan.removed()},
            {QStringLiteral("unknown"), plan.unknown()},
            {QStringLiteral("foreign"), plan.foreign()}};
}

QString planText(const SyncPlan &plan, const SyncFile::Head &head, const QString &path)
{
    const QString source =
        head.device.isEmpty() ? QString() : QStringLiteral(" (of %1, %2)").arg(head.device, head.created);
    return QStringLiteral("a dry run, nothing is changed: %1%2: created %3, changed %4, removed %5, kept %6")
        .arg(path, source)
        .arg(plan.created())
        .arg(plan.changed())
        .arg(plan.removed())
        .arg(plan.kept());
}

} // namespace

ExitCode SyncCommand::tryImport(const QString &path, const QCommandLineParser &arguments, CommandContext &context)
{
    SyncFile file(path);
    const std::optional<SyncPlan> plan = planOf(file, path, context);
    if (!plan)
        throw CommandFailure(ExitCode::FileError,
                             QStringLiteral("%1 is no synchronisation file, or a broken one").arg(path));
    const auto foreign = foreignness(file.head(), *plan, deviceOf(arguments));
    if (context.json) {
        QJsonObject object = jsonOf(*plan, file.head(), path);
        object.insert(QStringLiteral("needsForce"), foreign.value_or(QString()));
        Report::json(context.out, object);
    } else {
        context.out << Printable::text(planText(*plan, file.head(), path)) << '\n';
    }
    if (!foreign || arguments.isSet(QStringLiteral("force")))
        return ExitCode::Done;
    Report::failure({ExitCode::Refused, QStringLiteral("it needs --force: %1").arg(*foreign)});
    return ExitCode::Refused;
}

/// Throws CommandFailure when the file is of another phone, or when a person does not want it to remove contacts.
void SyncCommand::expectWanted(const QString &path, const QCommandLineParser &arguments, const CommandContext &context)
{
    SyncFile file(path);
    const std::optional<SyncPlan> plan = planOf(file, path, context);
    const auto foreign = plan ? foreignness(file.head(), *plan, deviceOf(arguments)) : std::nullopt;
    if (foreign)
        throw CommandFailure(
            ExitCode::Refused,
            QStringLiteral("%1 is not imported: %2; it would replace contacts and remove %3. --force "
                           "imports it; contacts of another phone come by kestin-dir export and import")
                .arg(path, *foreign)
                .arg(plan->removed()));
    if (plan && plan->removed() > 0 && Confirmation::isWanted(arguments))
        Confirmation::ask(QStringLiteral("%1 does not list %2 of the contacts here. Remove them?")
                              .arg(path, QString::number(plan->removed())));
}
