// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/bus/EventWait.h"
#include "client/bus/RefusalText.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/photo/PhotoFolder.h"
#include "client/photo/PhotoSource.h"
#include "client/photo/PictureFile.h"
#include "client/text/EventText.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

namespace {

/// The directory would take the address and then fetch nothing, which only its log would tell.
void refuseUnfetchable(const QString &address)
{
    if (const auto refusal = PhotoSource::refusalOf(address))
        throw CommandFailure(ExitCode::Refused, QStringLiteral("%1; nothing is changed").arg(*refusal));
}

Contact contactOf(const QString &id, const DirectoryService &directory)
{
    const std::optional<Contact> contact = directory.byId(id);
    if (!contact)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("no contact has the id %1").arg(id));
    return *contact;
}

void setPhoto(Contact contact, const QString &photo, const DirectoryService &directory)
{
    contact.photo = photo;
    const int code = directory.modify(DirectoryService::newRequestId(), contact);
    if (code != ResultCode::done)
        throw CommandFailure(ExitCode::Refused, RefusalText::ofModify(code, contact));
}

QString setFile(const QString &path, const QString &id, const BusSession &bus)
{
    const QByteArray picture = PictureFile::read(path);
    const DirectoryService directory(bus);
    // Before the file is put there: at its start the directory removes those that no contact names.
    const Contact contact = contactOf(id, directory);
    PhotoFile file = PhotoFolder(SettingsService(bus)).put(picture);
    const QString photo = file.path();
    try {
        setPhoto(contact, photo, directory);
    } catch (const CommandFailure &failure) {
        // The contact may have it all the same.
        if (failure.code() == ExitCode::NoAnswer)
            file.keep();
        throw;
    }
    file.keep();
    return photo;
}

/// Sets what the command line names, nothing included, and returns what the contact's photo is then.
QString set(const QString &source, const QString &id, const BusSession &bus)
{
    if (!source.isEmpty() && !PhotoSource::isAddress(source))
        return setFile(source, id, bus);
    const DirectoryService directory(bus);
    setPhoto(contactOf(id, directory), source, directory);
    return source;
}

/// The photo that the event says the directory has fetched for the contact; empty when it says no such thing.
QString fetchedPhoto(const QString &id, const ListEventArgument &arguments)
{
    if (!EventValue::of<bool>(arguments, ArgumentName::onlyPhotoHasChanged))
        return {};
    for (const Contact &contact : EventValue::of<ListContact>(arguments, ArgumentName::contacts)) {
        if (contact.contactId == id)
            return contact.photo;
    }
    return {};
}

QString setAddressAndWait(const QString &address, const QString &id, const BusSession &bus)
{
    const Interruption interruption;
    EventWait wait(bus);
    QObject::connect(&interruption, &Interruption::interrupted, &wait, &EventWait::interrupt);
    wait.listen({EventName::contactsUpdated}, ModuleName::directory);
    const DirectoryService directory(bus);
    setPhoto(contactOf(id, directory), address, directory);
    QString photo;
    const EventWait::End end = wait.run([&](const QString &, const ListEventArgument &arguments) {
        photo = fetchedPhoto(id, arguments);
        return !photo.isEmpty();
    });
    if (end == EventWait::End::Interrupted)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("interrupted; the photo may still be fetched"));
    if (end == EventWait::End::TimedOut)
        throw CommandFailure(ExitCode::NoAnswer,
                             QStringLiteral("the address is set, but the directory did not fetch the photo within the "
                                            "limit; its log may tell why"));
    return photo;
}

QJsonObject jsonOf(const PictureFile::Size &size)
{
    QJsonObject object;
    object.insert(QStringLiteral("width"), size.width);
    object.insert(QStringLiteral("height"), size.height);
    object.insert(QStringLiteral("bytes"), size.bytes);
    return object;
}

void report(const QString &photo, CommandContext &context)
{
    std::optional<PictureFile::Size> size;
    if (photo.startsWith(QLatin1Char('/')))
        size = PictureFile::sizeOf(photo);
    if (context.json) {
        QJsonObject object{{QStringLiteral("photo"), photo}};
        if (size)
            object.insert(QStringLiteral("size"), jsonOf(*size));
        return Report::json(context.out, object);
    }
    if (photo.isEmpty())
        return;
    context.out << Printable::text(photo);
    if (size)
        context.out << " (" << size->width << " x " << size->height << " pixels, " << size->bytes << " bytes)";
    context.out << '\n';
}

} // namespace

CommandHelp PhotoCommand::help() const
{
    return {
        {QStringLiteral("photo ID FILE"), QStringLiteral("photo ID ADDRESS [--wait]"),
         QStringLiteral("photo ID --none")},
        QStringLiteral(
            R"(Sets the photo of a contact and prints what it is: the path of its file with its size, or its address.
FILE is a JPEG, PNG or GIF of at most 10 MiB; a copy goes into the directory's photo folder, within
what the setting FileDiskUserQuota allows. At its next start the directory makes it 100 x 100 pixels.
ADDRESS begins with http:// or https://; the directory fetches the photo after the answer, and with
--wait that is waited for. It fetches nothing from the phone itself (localhost, 127.0.0.1 and the
like), so such an address is refused, and so is another scheme. --none takes the photo away.)"),
        {QStringLiteral("kestin-dir photo '#CONTACT_12#' zoe.jpg"),
         QStringLiteral("kestin-dir photo '#CONTACT_12#' https://people.example.org/zoe.png --wait"),
         QStringLiteral("kestin-dir photo '#CONTACT_12#' --none")}};
}

QList<QCommandLineOption> PhotoCommand::options() const
{
    return {{QStringLiteral("none"), QStringLiteral("Take the photo away")},
            {QStringLiteral("wait"), QStringLiteral("Wait until the directory has fetched the photo")}};
}

ExitCode PhotoCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString id = CommandArguments::some(rest.mid(0, 1), QStringLiteral("ID")).first();
    rest.removeFirst();
    const bool isNone = arguments.isSet(QStringLiteral("none"));
    if (isNone)
        CommandArguments::none(rest);
    const QString source = isNone ? QString() : CommandArguments::one(rest, QStringLiteral("FILE or ADDRESS"));
    const bool waits = arguments.isSet(QStringLiteral("wait"));
    if (waits && !PhotoSource::isAddress(source))
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--wait is for an ADDRESS"));
    if (PhotoSource::isAddress(source))
        refuseUnfetchable(source);
    report(waits ? setAddressAndWait(source, id, context.bus) : set(source, id, context.bus), context);
    return ExitCode::Done;
}
