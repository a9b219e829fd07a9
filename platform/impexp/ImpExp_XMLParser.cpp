// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_XMLParser.h"

#include "platform/impexp/Contact_Item.h"
#include "platform/impexp/ImpExp_Exception.h"

using namespace ImpExp_Format;

namespace {

constexpr std::array idNames{duid, puid};

bool isId(const QString &name)
{
    return name == duid || name == puid;
}

/// Makes attribute and element of each id agree. Returns what is wrong, empty when nothing is.
QString agreeOnIds(ImpExp_Item &item)
{
    QString problem;
    for (const QLatin1String id : idNames) {
        if (!item.hasElement(id))
            continue;
        if (!item.hasAttribute(id))
            item.setAttribute(id, item.getElement(id));
        else if (item.getAttribute(id) != item.getElement(id))
            problem = QStringLiteral("its attribute and its element \"%1\" differ").arg(id);
    }
    return problem;
}

} // namespace

ImpExp_XMLParser::ImpExp_XMLParser(const QString &path, qint64 limit)
    : m_file(path, limit)
{
    if (!m_file.openForReading())
        throw ImpExp_FatalException(QStringLiteral("%1 cannot be read: %2").arg(path, m_file.errorString()));
    m_reader.setDevice(&m_file);
    m_reader.setNamespaceProcessing(false);
}

bool ImpExp_XMLParser::getItem(ImpExp_Item &item, bool withElements)
{
    constexpr int underRoot = 2;
    for (;;) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::EndDocument)
            return false;
        if (token != QXmlStreamReader::StartElement || m_depth < underRoot)
            continue;
        if (m_reader.name() == item.name()) {
            readItem(item, withElements);
            return true;
        }
        if (m_reader.name() != page)
            skipElement();
    }
}

QXmlStreamReader::TokenType ImpExp_XMLParser::next()
{
    const QXmlStreamReader::TokenType token = m_reader.readNext();
    checkToken(token);
    return token;
}

void ImpExp_XMLParser::checkToken(QXmlStreamReader::TokenType token)
{
    switch (token) {
    case QXmlStreamReader::Invalid:
    case QXmlStreamReader::EndDocument:
        // A file that was cut off shows to the reader as one that ends too early, or even as one that is complete.
        if (const auto refusal = m_file.refusal())
            fail(*refusal);
        if (token == QXmlStreamReader::Invalid)
            fail(m_reader.errorString());
        break;
    case QXmlStreamReader::StartDocument:
        // What the bytes were scanned for holds for this one only.
        if (!m_reader.documentEncoding().isEmpty() &&
            m_reader.documentEncoding().compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0)
            fail(QStringLiteral("the file is not UTF-8"));
        break;
    case QXmlStreamReader::StartElement:
        enterElement();
        break;
    case QXmlStreamReader::EndElement:
        --m_depth;
        break;
    default:
        break;
    }
}

void ImpExp_XMLParser::enterElement()
{
    if (++m_depth > depth)
        fail(QStringLiteral("more than %1 elements are inside each other").arg(depth));
    if (m_depth == 1 && m_reader.name() != root)
        fail(QStringLiteral("the root element is \"%1\" and not \"%2\"").arg(m_reader.name(), root));
}

void ImpExp_XMLParser::fail(const QString &reason) const
{
    throw ImpExp_FatalException(reason, m_reader.lineNumber(), m_reader.columnNumber());
}

void ImpExp_XMLParser::readItem(ImpExp_Item &item, bool withElements)
{
    item = ImpExp_Item(item.name());
    const QXmlStreamAttributes attributes = m_reader.attributes();
    for (const QXmlStreamAttribute &attribute : attributes)
        item.setAttribute(attribute.name().toString(), attribute.value().toString());

    QString problem;
    m_file.beginStretch();
    for (auto token = next(); token != QXmlStreamReader::EndElement; token = next()) {
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString name = m_reader.name().toString();
        if (!Contact_Item::isElement(name)) {
            skipElement();
        } else if (withElements || isId(name)) {
            const QString wrong = readElement(item, name);
            problem = problem.isEmpty() ? wrong : problem;
        } else {
            item.setElement(name, QString());
            skipElement();
        }
    }
    m_file.beginStretch();

    const QString difference = agreeOnIds(item);
    if (!withElements)
        item.dropElements();
    else if (!problem.isEmpty() || !difference.isEmpty())
        throw ImpExp_ErrorException(problem.isEmpty() ? difference : problem);
}

/// Returns what is wrong with it, empty when nothing is.
QString ImpExp_XMLParser::readElement(ImpExp_Item &item, const QString &name)
{
    const bool isRepeated = item.hasElement(name);
    QString problem;
    m_file.takeCut();
    QString text = readText(problem);
    if (m_file.takeCut()) {
        text = QChar(0x2026);
        if (name != photo)
            problem = QStringLiteral("its element \"%1\" is too large");
    }
    if (isRepeated)
        return QStringLiteral("its element \"%1\" is repeated").arg(name);
    item.setElement(name, text);
    return problem.isEmpty() ? problem : problem.arg(name);
}

QString ImpExp_XMLParser::readText(QString &problem)
{
    QString text;
    for (auto token = next(); token != QXmlStreamReader::EndElement; token = next()) {
        if (token == QXmlStreamReader::Characters) {
            text += m_reader.text();
        } else if (token == QXmlStreamReader::StartElement) {
            problem = QStringLiteral("its element \"%1\" holds another one");
            skipElement();
        }
    }
    return text;
}

void ImpExp_XMLParser::skipElement()
{
    const int outside = m_depth - 1;
    while (m_depth > outside)
        next();
}
