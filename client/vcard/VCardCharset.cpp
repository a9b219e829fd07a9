// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardParser.h"

#include <QRegularExpression>

#include <glib.h>

#include <memory>

namespace {

constexpr char westernWindows[] = "WINDOWS-1252";

struct FreeText
{
    void operator()(char *text) const { g_free(text); }
};

/// From the named character set, or as Latin 1, which has a character for every byte, where that does not fit.
QByteArray converted(const QByteArray &bytes, const char *charset)
{
    gsize length = 0;
    const std::unique_ptr<char, FreeText> text(
        g_convert(bytes.constData(), bytes.size(), "UTF-8", charset, nullptr, &length, nullptr));
    return text ? QByteArray(text.get(), qsizetype(length)) : QString::fromLatin1(bytes).toUtf8();
}

QByteArray lineToUtf8(const QByteArray &line)
{
    if (VCardCharset::isUtf8(line))
        return line;
    static const QRegularExpression charsetParameter(QStringLiteral("^([^:]*);CHARSET=\"?([^;:\"]+)\"?"),
                                                     QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = charsetParameter.match(QString::fromLatin1(line));
    if (!match.hasMatch())
        return converted(line, westernWindows);
    // Left in place, the parameter would have the value converted a second time.
    QByteArray bare = line;
    bare.remove(match.capturedEnd(1), match.capturedLength(0) - match.capturedLength(1));
    return converted(bare, match.captured(2).toLatin1().constData());
}

} // namespace

bool VCardCharset::isUtf8(const QByteArray &bytes)
{
    return g_utf8_validate_len(bytes.constData(), gsize(bytes.size()), nullptr);
}

QByteArray VCardCharset::toUtf8(const QByteArray &card)
{
    QByteArray unfolded = card;
    unfolded.replace("\r\n", "\n").replace("\n ", "").replace("\n\t", "");
    QByteArray result;
    for (const QByteArray &line : unfolded.split('\n'))
        result += lineToUtf8(line) + "\r\n";
    return result;
}

QString VCardCharset::decode(const QByteArray &bytes)
{
    return QString::fromUtf8(isUtf8(bytes) ? bytes : converted(bytes, westernWindows));
}
