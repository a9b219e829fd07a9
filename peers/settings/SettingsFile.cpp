// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsFile.h"

#include "platform/records/DurableFile.h"
#include "platform/records/RegularFile.h"

#include <QFileInfo>
#include <QSettings>
#include <QStringList>

namespace {

/// A text that was typed with bare commas is a list to QSettings.
QString textOf(const QVariant &value)
{
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

/// Whether each quote is closed and each backslash begins an escape that QSettings knows.
bool isWellFormedValue(const QByteArray &value)
{
    constexpr char escapes[] = "abfnrtv\"?'\\x01234567";
    bool isQuoted = false;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value.at(i) == '"')
            isQuoted = !isQuoted;
        else if (value.at(i) == '\\' && (++i == value.size() || !QByteArrayView(escapes).contains(value.at(i))))
            return false;
    }
    return !isQuoted;
}

bool isWellFormed(const QByteArray &line)
{
    if (line.isEmpty() || line.startsWith(';') || line.startsWith('#'))
        return true;
    if (line.contains('\0') || !line.isValidUtf8())
        return false;
    if (line.startsWith('['))
        return line.endsWith(']');
    const qsizetype equals = line.indexOf('=');
    return equals > 0 && isWellFormedValue(line.mid(equals + 1));
}

} // namespace

SettingsFile::SettingsFile(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath())
{
}

SettingsFile::Content SettingsFile::read() const
{
    Content content;
    content.problem = problem();
    if (!QFileInfo(m_path).isFile())
        return content; // QSettings would wait for a pipe
    const QSettings file(m_path, QSettings::IniFormat);
    const QStringList keys = file.allKeys();
    for (const QString &key : keys)
        content.values.insert(key, textOf(file.value(key)));
    return content;
}

std::optional<QString> SettingsFile::problem() const
{
    QFile file(m_path);
    if (!file.exists())
        return std::nullopt;
    if (const auto reason = RegularFile::open(file))
        return QStringLiteral("%1 cannot be read: %2").arg(m_path, *reason);
    // QSettings skips what it does not understand, and would drop it with the next write.
    for (int number = 1; !file.atEnd(); ++number) {
        if (!isWellFormed(file.readLine().trimmed()))
            return QStringLiteral("%1 is not a well-formed INI file (line %2)").arg(m_path, QString::number(number));
    }
    return std::nullopt;
}

std::optional<QString> SettingsFile::write(const QString &key, const QString &value)
{
    QSettings file(m_path, QSettings::IniFormat);
    const QVariant before = file.value(key);
    file.setValue(key, value);
    file.sync();
    // The replaced file is on the disk, but its name only once the folder is.
    if (file.status() == QSettings::NoError && DurableFile::syncFolderOf(m_path))
        return std::nullopt;
    // What stays pending would be written, and seem to be stored, with the next value.
    if (before.isValid())
        file.setValue(key, before);
    else
        file.remove(key);
    return QStringLiteral("%1 cannot be written").arg(m_path);
}
