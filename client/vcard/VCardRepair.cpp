// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardRepair.h"

#include <QByteArrayList>

#include <algorithm>

namespace {

/// What has no colon so far is no property. It would be looked through again with every folded line.
constexpr qsizetype longestHead = 8 * 1024;

bool isLetterOrDigit(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

bool isToken(const QByteArray &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char character) {
        return isLetterOrDigit(character) || character == '-' || character == '_';
    });
}

bool isBase64Line(const QByteArray &line)
{
    return !line.isEmpty() && std::all_of(line.begin(), line.end(), [](char character) {
        return isLetterOrDigit(character) || character == '+' || character == '/' || character == '=';
    });
}

/// The types among the words of a text.
QByteArray typesAmong(QByteArray text)
{
    static const QByteArrayList types{"work", "home", "cell", "mobile", "fax", "pager", "car", "pref", "main"};
    std::replace_if(
        text.begin(), text.end(), [](char character) { return !isLetterOrDigit(character); }, ' ');
    QByteArray result;
    for (const QByteArray &word : text.toLower().simplified().split(' ')) {
        if (types.contains(word))
            result += ";TYPE=" + word;
    }
    return result;
}

/// The place of a character outside quotes; -1 when there is none.
qsizetype find(const QByteArray &line, char wanted, qsizetype from)
{
    bool isQuoted = false;
    for (qsizetype place = from; place < line.size(); ++place) {
        if (line.at(place) == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && line.at(place) == wanted)
            return place;
    }
    return -1;
}

QByteArray mendedParameter(const QByteArray &parameter)
{
    const bool isBare = !parameter.contains('=');
    const QByteArray name = isBare ? parameter.trimmed() : parameter.left(parameter.indexOf('=')).trimmed();
    if (isBare && (name.toUpper() == "BASE64" || name.toUpper() == "B"))
        return ";ENCODING=BASE64";
    if (isToken(name))
        return ';' + (isBare ? name : parameter.trimmed());
    return typesAmong(parameter);
}

/// What stands before a property's value, with the colon.
QByteArray mendedHead(const QByteArray &head)
{
    QByteArray result;
    qsizetype from = 0;
    while (from <= head.size()) {
        qsizetype end = find(head, ';', from);
        end = end < 0 ? head.size() : end;
        const QByteArray piece = head.mid(from, end - from);
        result += from == 0 ? piece.trimmed() : mendedParameter(piece);
        from = end + 1;
    }
    return result + ':';
}

/// A property that grows line by line.
class Property
{
public:
    /// False when the line is the next property's.
    bool take(const QByteArray &line)
    {
        const bool isFolded = line.startsWith(' ') || line.startsWith('\t');
        if (m_goesOn)
            m_value += line;
        else if (isFolded || (m_isBase64 && isBase64Line(line)))
            m_value += isFolded ? line.mid(1) : line;
        else
            return false;
        look();
        return true;
    }

    void begin(const QByteArray &line)
    {
        *this = Property();
        m_value = line;
        look();
    }

    QByteArray text() const { return m_head.isEmpty() ? QByteArray() : m_head + m_value + "\r\n"; }

private:
    void look()
    {
        if (m_head.isEmpty() && !m_isLost)
            takeHead();
        m_goesOn = m_isQuoted && m_value.endsWith('=');
        if (m_goesOn)
            m_value.chop(1);
    }

    void takeHead()
    {
        qsizetype colon = find(m_value, ':', 0);
        QByteArray head = m_value.left(colon);
        if (colon < 0) { // a quote that is not closed
            colon = m_value.indexOf(':');
            head = m_value.left(colon).replace('"', "");
        }
        m_isLost = colon < 0 && m_value.size() > longestHead;
        if (colon < 0)
            return;
        m_head = mendedHead(head);
        m_value.remove(0, colon + 1);
        const QByteArray upper = m_head.toUpper();
        m_isQuoted = upper.contains("QUOTED-PRINTABLE");
        m_isBase64 =
            upper.contains(";ENCODING=BASE64") || upper.contains(";ENCODING=B:") || upper.contains(";ENCODING=B;");
    }

    QByteArray m_head; ///< empty until the colon is there
    QByteArray m_value;
    bool m_isLost = false; ///< not looked for any more
    bool m_isQuoted = false;
    bool m_isBase64 = false;
    bool m_goesOn = false;
};

} // namespace

QByteArray VCardRepair::mended(const QByteArray &card)
{
    QByteArray result;
    Property property;
    for (QByteArray line : card.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        line.replace('\r', ' '); // to the library an end
        if (property.take(line))
            continue;
        result += property.text();
        property.begin(line);
    }
    return result + property.text();
}
