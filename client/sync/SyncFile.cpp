// SPDX-License-Identifier: Apache-2.0
#include "client/sync/SyncFile.h"

#include "platform/records/RegularFile.h"

#include <QDir>

namespace {

constexpr qint64 chunkBytes = 64 * 1024;
constexpr qint64 mostOfToken = 32 * 1024 * 1024;
constexpr qsizetype mostOfPhoto = 16 * 1024 * 1024;
constexpr qsizetype mostOfText = 64 * 1024; // what is longer is compared by its begin
constexpr qsizetype mostTexts = 64;
constexpr int deepest = 64;

} // namespace

SyncFile::SyncFile(const QString &path)
    : m_file(path)
{
}

std::optional<QString> SyncFile::open()
{
    return RegularFile::open(m_file);
}

std::optional<QString> SyncFile::read(const std::function<void(const SyncEntry &)> &take)
{
    while (next()) {
        if (m_reader.isDTD())
            m_reader.raiseError(QStringLiteral("it has a document type declaration"));
        if (m_reader.isStartElement())
            beginElement();
        if (m_reader.isCharacters())
            takeText();
        if (m_reader.isEndElement()) {
            if (m_depth-- == m_entryDepth) {
                take(m_entry);
                m_entryDepth = 0;
            }
            m_element.clear();
        }
    }
    return m_reader.hasError() ? std::optional(m_reader.errorString()) : std::nullopt;
}

/// The reader gets the file piece by piece, and no more of it than may lie between two tokens.
bool SyncFile::next()
{
    while (m_reader.readNext() == QXmlStreamReader::Invalid &&
           m_reader.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
        const QByteArray chunk = m_file.read(chunkBytes);
        m_bytesOfToken += chunk.size();
        if (m_bytesOfToken > mostOfToken)
            m_reader.raiseError(QStringLiteral("a part of it is too large"));
        if (chunk.isEmpty() || m_reader.error() == QXmlStreamReader::CustomError)
            return false;
        m_reader.addData(chunk);
    }
    m_bytesOfToken = 0;
    return !m_reader.hasError() && !m_reader.atEnd();
}

void SyncFile::beginElement()
{
    const QXmlStreamAttributes attributes = m_reader.attributes();
    const auto attribute = [&attributes](const char *name) { return attributes.value(QLatin1String(name)).toString(); };
    if (++m_depth > deepest)
        m_reader.raiseError(QStringLiteral("its elements are too deep inside each other"));
    if (m_depth == 1) {
        bool isNumber = false;
        const int contacts = attribute("contacts").toInt(&isNumber);
        m_head = {attribute("device"), attribute("id"), attribute("created"),
                  isNumber ? std::optional(contacts) : std::nullopt};
    } else if (m_entryDepth > 0) {
        m_entry.isWhole = true;
        m_element = m_reader.name().toString();
    } else if (m_reader.name() == QLatin1String("contact")) {
        m_entryDepth = m_depth;
        m_entry = {
            attribute("duid"), attribute("puid"), false, attributes.hasAttribute(QLatin1String("replaced")), {}, {}};
    }
}

void SyncFile::takeText()
{
    if (m_element.isEmpty())
        return;
    if (m_element == QLatin1String("photo")) {
        if (m_entry.photo.size() + m_reader.text().size() <= mostOfPhoto)
            m_entry.photo += m_reader.text().toLatin1();
        return;
    }
    if (m_entry.texts.size() >= mostTexts && !m_entry.texts.contains(m_element))
        return;
    QString &text = m_entry.texts[m_element];
    text += m_reader.text().left(mostOfText - text.size());
}

qint64 SyncFile::bytesWritten(const QString &path)
{
    const QFileInfo target(path);
    qint64 bytes = 0;
    for (const QFileInfo &file : target.dir().entryInfoList(QDir::Files | QDir::Hidden)) {
        if (file.fileName().contains(target.fileName()))
            bytes += file.size();
    }
    return bytes;
}
