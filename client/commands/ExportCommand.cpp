// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/photo/PictureFile.h"
#include "client/vcard/VCardWriter.h"
#include "platform/records/DurableFile.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

/// The picture of a contact whose photo is a file; none when it cannot be read, which is told.
QByteArray pictureOf(const Contact &contact)
{
    if (!contact.photo.startsWith(QLatin1Char('/')))
        return {};
    try {
        return PictureFile::read(contact.photo);
    } catch (const CommandFailure &failure) {
        Report::problem(QStringLiteral("%1 (%2) is exported without the photo: %3")
                            .arg(contact.contactId, contact.displayName(), failure.text()));
        return {};
    }
}

void writeCards(const ListContact &contacts, QFileDevice &file)
{
    bool isWritten = file.open(QIODevice::WriteOnly);
    for (const Contact &contact : contacts)
        isWritten = isWritten && file.write(VCardWriter::write(contact, pictureOf(contact))) >= 0;
}

/// Why the file is not written, when it is not. Somebody's only copy must not be lost to a full disk.
std::optional<QString> replaceFile(const ListContact &contacts, const QString &path)
{
    QSaveFile file(path);
    writeCards(contacts, file);
    return DurableFile::commit(file);
}

/// The same of a device or a pipe, in whose place no file may come.
std::optional<QString> writeInto(const ListContact &contacts, const QString &path)
{
    QFile file(path);
    writeCards(contacts, file);
    const bool isWritten = file.isOpen() && file.flush() && file.error() == QFileDevice::NoError;
    return isWritten ? std::nullopt : std::optional(file.errorString());
}

void writeFile(const ListContact &contacts, const QString &path)
{
    const QFileInfo target(path);
    const bool isSomethingElse = target.exists() && !target.isFile();
    if (const auto failure = isSomethingElse ? writeInto(contacts, path) : replaceFile(contacts, path))
        throw CommandFailure(ExitCode::FileError, QStringLiteral("%1 cannot be written: %2").arg(path, *failure));
}

} // namespace

CommandHelp ExportCommand::help() const
{
    return {
        {QStringLiteral("export FILE")},
        QStringLiteral(
            R"(Writes the contacts of the user as vCards of version 3.0, "-" being the standard output. kestin-dir
import makes the same contacts of them: what a vCard has no place for stands in properties of our own
(X-KESTIN-...). A photo that is a file of this machine is embedded; where that cannot be read it is
told and left out. A device or a pipe is written to and stays what it is. Not written are the ids and
dates that the directory gives by itself. With --json an object tells "exported" and "file".)"),
        {QStringLiteral("kestin-dir export people.vcf"), QStringLiteral("kestin-dir export - | gzip >people.vcf.gz")}};
}

ExitCode ExportCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString path = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("FILE"));
    ListContact contacts = contactsOfType(DirectoryService(context.bus), ContactType::Local);
    sortByName(contacts);
    if (path == QLatin1String("-")) {
        if (context.json)
            throw CommandFailure(ExitCode::Usage, QStringLiteral("vCards on the standard output leave no room for "
                                                                 "--json; name a file"));
        for (const Contact &contact : std::as_const(contacts))
            context.out << QString::fromUtf8(VCardWriter::write(contact, pictureOf(contact)));
        return ExitCode::Done;
    }
    writeFile(contacts, path);
    if (context.json)
        Report::json(context.out, {{QStringLiteral("exported"), contacts.size()}, {QStringLiteral("file"), path}});
    else
        context.out << Printable::text(QStringLiteral("exported %1 contacts to %2").arg(contacts.size()).arg(path))
                    << '\n';
    return ExitCode::Done;
}
