// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/IniFile.h"

#include "platform/records/RegularFile.h"

#include <algorithm>

namespace {

/// The text without its quotes and backslashes, if it has them.
QString unquoted(const QString &text)
{
    if (text.size() < 2 || !text.startsWith(QLatin1Char('"')) || !text.endsWith(QLatin1Char('"')))
        return text;
    QString result;
    for (qsizetype i = 1; i < text.size() - 1; ++i) {
        if (text.at(i) == QLatin1Char('\\') && i < text.size() - 2)
            ++i;
        result.append(text.at(i));
    }
    return result;
}

} // namespace

IniFile IniFile::read(const QString &path)
{
    IniFile result;
    QFile file(path);
    if (const QString reason = RegularFile::open(file); !reason.isEmpty()) {
        result.problem = QStringLiteral("it cannot be read: %1").arg(reason);
        return result;
    }
    QString section;
    for (int number = 1; !file.atEnd(); ++number) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            section = line.mid(1, line.size() - 2).trimmed();
        else if (equals > 0)
            result.settings.append({section, line.left(equals).trimmed(), unquoted(line.mid(equals + 1).trimmed())});
        else
            result.problem = QStringLiteral("line %1 is neither a section nor a setting").arg(number);
    }
    return result;
}
