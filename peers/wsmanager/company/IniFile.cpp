// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/IniFile.h"

#include "platform/records/RegularFile.h"

#include <algorithm>

namespace {

/// The value that is written so; none when a quote is not closed, or something stands behind it.
std::optional<QString> valueOf(const QString &text)
{
    const QLatin1Char quote('"');
    if (!text.startsWith(quote))
        return text.count(quote) % 2 == 0 ? std::optional(text) : std::nullopt;
    QString value;
    qsizetype i = 1;
    for (; i < text.size() && text.at(i) != quote; ++i) {
        if (text.at(i) == QLatin1Char('\\') && i + 1 < text.size())
            ++i;
        value.append(text.at(i));
    }
    return i == text.size() - 1 ? std::optional(value) : std::nullopt;
}

} // namespace

IniFile IniFile::read(const QString &path)
{
    IniFile result;
    QFile file(path);
    if (const auto reason = RegularFile::open(file)) {
        result.problem = QStringLiteral("it cannot be read: %1").arg(*reason);
        return result;
    }
    QString section;
    for (int number = 1; !file.atEnd() && !result.problem; ++number) {
        if (const auto fault = result.take(QString::fromUtf8(file.readLine()).trimmed(), section))
            result.problem = QStringLiteral("line %1 %2").arg(QString::number(number), *fault);
    }
    return result;
}

std::optional<QString> IniFile::take(const QString &line, QString &section)
{
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (line.isEmpty() || line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#')))
        return std::nullopt;
    if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
        section = line.mid(1, line.size() - 2).trimmed();
        return std::nullopt;
    }
    if (equals <= 0)
        return QStringLiteral("is neither a section nor a setting");
    const QString key = line.left(equals).trimmed();
    const std::optional<QString> value = valueOf(line.mid(equals + 1).trimmed());
    if (!value)
        return QStringLiteral("has a double quote without its counterpart");
    const auto isKnown = [&](const Setting &known) { return known.section == section && known.key == key; };
    if (std::any_of(settings.cbegin(), settings.cend(), isKnown))
        return QStringLiteral("sets \"%1\" for the second time").arg(key);
    settings.append({section, key, *value});
    return std::nullopt;
}
