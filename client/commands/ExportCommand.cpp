// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/photo/PictureFile.h"
#include "client/vcard/VCardWriter.h"
#include "platform/records/DurableFile.h"

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
                            .arg(contact.contactId, ContactText::displayName(contact), failure.text()));
        return {};
    }
}

void writeFile(const ListContact &contacts, const QString &path)
{
    // Somebody's only copy must not be lost to a full disk.
    QSaveFile file(path);
    bool isWritten = file.open(QIODevice::WriteOnly);
    for (const Contact &contact : contacts)
        isWritten = isWritten && file.write(VCardWriter::write(contact, pictureOf(contact))) >= 0;
    if (const auto failure = DurableFile::commit(file))
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
told and left out. Not written are the ids and dates that the directory gives by itself.)"),
        {QStringLiteral("kestin-dir export people.vcf"), QStringLiteral("kestin-dir export - | gzip >people.vcf.gz")}};
}

ExitCode ExportCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QString path = CommandArguments::one(arguments.positionalArguments(), QStringLiteral("FILE"));
    ListContact contacts = contactsOfType(DirectoryService(context.bus), ContactType::Local);
    sortByName(contacts);
    if (path == QLatin1String("-")) {
        for (const Contact &contact : std::as_const(contacts))
            context.out << QString::fromUtf8(VCardWriter::write(contact, pictureOf(contact)));
        return ExitCode::Done;
    }
    writeFile(contacts, path);
    context.out << Printable::text(QStringLiteral("exported %1 contacts to %2").arg(contacts.size()).arg(path)) << '\n';
    return ExitCode::Done;
}
