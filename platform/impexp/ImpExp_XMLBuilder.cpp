// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_XMLBuilder.h"

#include "platform/impexp/ImpExp_Exception.h"
#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_Text.h"
#include "platform/records/DurableFile.h"
#include "platform/records/RegularFile.h"

#include <QFileInfo>

namespace {

constexpr qint64 perTag = 64; // names, brackets and blanks around the values

/// The bytes of the texts with their tags; ImpExp_ErrorException for one that a file cannot carry.
qint64 sizeOf(const ImpExp_Item::Texts &texts)
{
    qint64 size = perTag;
    for (const auto &[name, value] : texts) {
        const std::optional<qint64> encoded = ImpExp_Text::encodedSize(value);
        if (!encoded)
            throw ImpExp_ErrorException(QStringLiteral("its \"%1\" holds a character that XML cannot carry").arg(name));
        if (*encoded > ImpExp_Format::textBytes(ImpExp_Format::contactBytes))
            throw ImpExp_ErrorException(QStringLiteral("its \"%1\" is too large").arg(name));
        size += *encoded + perTag;
    }
    return size;
}

void checkItem(const ImpExp_Item &item)
{
    // What is refused here is what a reader would refuse, and with it the whole file.
    const qint64 tag = sizeOf(item.attributes());
    if (tag > ImpExp_Format::tagBytes || tag + sizeOf(item.elements()) > ImpExp_Format::contactBytes)
        throw ImpExp_ErrorException(QStringLiteral("it is too large"));
}

/// The item with texts that XML can carry, when one of its texts is none. Ids stay: another id is another contact's.
std::optional<ImpExp_Item> carriedItem(const ImpExp_Item &item)
{
    std::optional<ImpExp_Item> result;
    QStringList replaced;
    for (const auto &[name, text] : item.elements()) {
        if (ImpExp_Text::encodedSize(text))
            continue;
        if (!result)
            result = item;
        result->setElement(name, ImpExp_Text::carried(text));
        replaced.append(name);
    }
    if (result)
        result->setAttribute(ImpExp_Format::replaced, replaced.join(QLatin1Char(' ')));
    return result;
}

/// Whether a text begins as XML does: with markup, perhaps behind a byte order mark and blanks.
bool beginsLikeXml(QIODevice &file)
{
    constexpr qint64 mostBlanks = 4096;
    QByteArray begin = file.read(mostBlanks);
    if (begin.startsWith("\xef\xbb\xbf"))
        begin.remove(0, 3);
    return begin.trimmed().startsWith('<');
}

/// A slip of the caller, who names the path, must not cost a database.
bool isSomethingElse(const QString &path)
{
    QFile file(path);
    return file.exists() && file.size() > 0 && (RegularFile::open(file) || !beginsLikeXml(file));
}

} // namespace

ImpExp_XMLBuilder::ImpExp_XMLBuilder(const QString &deviceId, const QString &id, const QString &path, int pageSize,
                                     const QDateTime &createdDate, int contacts, int freeCapacity,
                                     const QString &moduleName, const QDateTime &previousExportDate)
    : m_pageSize(pageSize)
    , m_file(path)
    , m_writer(&m_file)
{
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        fail(QStringLiteral("it is not a regular file")); // root could replace a device
    if (isSomethingElse(path))
        fail(QStringLiteral("there is a file that is no XML, which stays"));
    if (!m_file.open(QIODevice::WriteOnly))
        fail(m_file.errorString());
    m_writer.setAutoFormatting(true);
    m_writer.setAutoFormattingIndent(1);
    m_writer.writeStartDocument();
    m_writer.writeStartElement(ImpExp_Format::root);
    writeAttribute(QLatin1String("module"), moduleName);
    writeAttribute(QLatin1String("device"), deviceId);
    writeAttribute(QLatin1String("id"), id);
    writeAttribute(QLatin1String("created"), ImpExp_Text::ofTime(createdDate));
    writeAttribute(QLatin1String("previousExport"), ImpExp_Text::ofTime(previousExportDate));
    writeAttribute(QLatin1String("contacts"), QString::number(contacts));
    writeAttribute(QLatin1String("free"), QString::number(freeCapacity));
    checkWritten();
}

ImpExp_XMLBuilder::~ImpExp_XMLBuilder() = default;

/// Of the root. The reader bounds the tag as a whole; a share for each of a handful is simpler to keep.
void ImpExp_XMLBuilder::writeAttribute(QLatin1String name, const QString &value)
{
    const std::optional<qint64> size = ImpExp_Text::encodedSize(value);
    if (!size)
        fail(QStringLiteral("its \"%1\" holds a character that XML cannot carry").arg(name));
    if (*size > ImpExp_Format::tagBytes / 8)
        fail(QStringLiteral("its \"%1\" is too long").arg(name));
    m_writer.writeAttribute(name, value);
}

void ImpExp_XMLBuilder::putItem(const ImpExp_Item &wanted)
{
    const std::optional<ImpExp_Item> carried = carriedItem(wanted);
    const ImpExp_Item &item = carried ? *carried : wanted;
    checkItem(item);
    if (m_pages == 0 || (m_pageSize > 0 && m_itemsInPage == m_pageSize))
        beginPage();
    ++m_itemsInPage;
    if (item.hasElements())
        m_writer.writeStartElement(item.name());
    else
        m_writer.writeEmptyElement(item.name());
    for (const auto &[name, value] : item.attributes())
        m_writer.writeAttribute(name, value);
    for (const auto &[name, text] : item.elements()) {
        m_writer.writeStartElement(name);
        writeText(text);
        m_writer.writeEndElement();
    }
    if (item.hasElements())
        m_writer.writeEndElement();
    checkWritten();
}

void ImpExp_XMLBuilder::beginPage()
{
    if (m_pages > 0)
        m_writer.writeEndElement();
    m_writer.writeStartElement(ImpExp_Format::page);
    m_writer.writeAttribute(QLatin1String("number"), QString::number(++m_pages));
    m_itemsInPage = 0;
}

void ImpExp_XMLBuilder::writeText(QStringView text)
{
    // In pieces, for the writer makes copies; and a carriage return has to be escaped, or readers take it for the end
    // of a line.
    constexpr qsizetype piece = 64 * 1024;
    while (!text.isEmpty()) {
        if (text.front() == u'\r') {
            m_writer.writeEntityReference(QStringLiteral("#13"));
            text = text.sliced(1);
            continue;
        }
        const qsizetype end = text.indexOf(u'\r');
        qsizetype size = qMin(end < 0 ? text.size() : end, piece);
        if (text[size - 1].isHighSurrogate())
            ++size;
        m_writer.writeCharacters(text.first(size).toString());
        text = text.sliced(size);
    }
}

void ImpExp_XMLBuilder::checkWritten()
{
    if (m_writer.hasError())
        fail(m_file.errorString());
}

void ImpExp_XMLBuilder::finish()
{
    m_writer.writeEndDocument();
    checkWritten();
    if (const auto failure = DurableFile::commit(m_file))
        fail(*failure);
}

void ImpExp_XMLBuilder::fail(const QString &reason)
{
    throw ImpExp_FatalException(QStringLiteral("%1 cannot be written: %2").arg(m_file.fileName(), reason));
}
