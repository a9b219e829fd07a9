// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "client/bus/PeerServices.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Confirmation.h"
#include "client/commands/Report.h"
#include "client/defaults/DefaultContacts.h"
#include "client/text/EventText.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"
#include "platform/records/RegularFile.h"

#include <cstdio>

namespace {

ListContact stored(const BusSession &bus)
{
    ListContact contacts = contactsOfType(DirectoryService(bus), ContactType::DeviceManagement);
    sortByName(contacts);
    return contacts;
}

DefaultContacts read(const QString &path, bool isText)
{
    const bool isStandardInput = path == QLatin1String("-");
    QFile file(path);
    const auto failure = [&path](const QString &reason) {
        return CommandFailure(ExitCode::FileError, QStringLiteral("%1 cannot be read: %2").arg(path, reason));
    };
    std::optional<QString> reason;
    if (!isStandardInput)
        reason = RegularFile::open(file);
    else if (!file.open(stdin, QIODevice::ReadOnly))
        reason = file.errorString();
    if (reason)
        throw failure(*reason);
    const DefaultContacts contacts =
        isText ? DefaultContacts::ofText(QString::fromUtf8(file.readAll())) : DefaultContacts::ofCards(file, path);
    if (file.error() != QFileDevice::NoError)
        throw failure(file.errorString());
    return contacts;
}

/// Writes the setting and waits until the directory tells that it holds the contacts.
void apply(const QString &key, const DefaultContacts &contacts, bool hadSome, const BusSession &bus)
{
    const QString last = contacts.count > 0 ? EventName::contactsCreated : EventName::contactsDeleted;
    EventWait wait(bus);
    wait.listen({last}, ModuleName::directory);
    SettingsService(bus).setValue(key, contacts.value);
    if (contacts.count == 0 && !hadSome)
        return;
    const EventWait::End end = wait.run([](const QString &, const ListEventArgument &arguments) {
        return EventValue::of<QString>(arguments, ArgumentName::reqId) == RequestId::deviceManagement;
    });
    if (end != EventWait::End::Done)
        throw CommandFailure(ExitCode::NoAnswer,
                             QStringLiteral("%1 is written, but the directory did not tell within the limit that it "
                                            "holds the contacts; its log may tell why")
                                 .arg(key));
}

} // namespace

CommandHelp DefaultsCommand::help() const
{
    return {
        {QStringLiteral("defaults [show]"), QStringLiteral("defaults set FILE [--text]"),
         QStringLiteral("defaults set --none [--yes]")},
        QStringLiteral(
            R"(Shows the contacts that device management has put on the phone, or replaces all of them: they are written
into the setting DirectoryDefaultContacts, the directory's taking them over is waited for, and what it
holds then is printed. FILE holds vCards, or with --text records in the setting's own form, one or more
a line; "-" is the standard input. The setting has no place for everything that a contact can hold;
what is left out is told. With --none a terminal is asked first. It ends with 1 when a contact cannot be carried or was not taken.

A record has 8 or 20 fields: id, salutation, first name, last name, office number, 1 for the preview
list, e-mail address, photo; fax, mobile, home, private e-mail address, extension, instant-messaging
address, company, job, address, city, zip, country. "#" stands between records and "," between
fields, a backslash before either where a field holds it.)"),
        {QStringLiteral("kestin-dir defaults"), QStringLiteral("kestin-dir defaults set reception.vcf"),
         QStringLiteral("echo '1,,Zoë,Müller,7000,1,,' | kestin-dir defaults set - --text")}};
}

QList<QCommandLineOption> DefaultsCommand::options() const
{
    return {{QStringLiteral("none"), QStringLiteral("Set: take all of them away")},
            Confirmation::option(),
            {QStringLiteral("text"), QStringLiteral("Set: FILE holds records in the setting's own form")}};
}

ExitCode DefaultsCommand::set(const DefaultContacts &contacts, CommandContext &context)
{
    const QString key = QStringLiteral("DirectoryDefaultContacts");
    for (const QString &text : contacts.leftOut)
        Report::problem(QStringLiteral("%1 is left out: the default contacts have no place for it").arg(text));
    const bool hadSome = !stored(context.bus).isEmpty();
    // The settings manager tells nobody of a setting that stays as it is.
    if (SettingsService(context.bus).value(key) != contacts.value)
        apply(key, contacts, hadSome, context.bus);
    const ListContact now = stored(context.bus);
    Report::contacts(context.out, now, context.json);
    if (now.size() == contacts.count)
        return ExitCode::Done;
    Report::problem(QStringLiteral("the directory holds %1 of the %2 contacts; its log tells what it did not take")
                        .arg(now.size())
                        .arg(contacts.count));
    return ExitCode::Refused;
}

ExitCode DefaultsCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString action = rest.isEmpty() ? QStringLiteral("show") : rest.takeFirst();
    const bool isNone = arguments.isSet(QStringLiteral("none"));
    if (action == QLatin1String("set")) {
        if (!isNone)
            return set(
                read(CommandArguments::one(rest, QStringLiteral("FILE")), arguments.isSet(QStringLiteral("text"))),
                context);
        CommandArguments::none(rest);
        if (Confirmation::isWanted(arguments))
            Confirmation::ask(QStringLiteral("Take all contacts of device management away?"));
        return set({}, context);
    }
    if (action != QLatin1String("show"))
        throw CommandArguments::unknownAction(arguments, {QStringLiteral("show"), QStringLiteral("set")});
    CommandArguments::none(rest);
    Report::contacts(context.out, stored(context.bus), context.json);
    return ExitCode::Done;
}
