// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsStore.h"

#include "peers/settings/ValueText.h"
#include "platform/framework/KestinLogger.h"

#include <algorithm>

namespace {

bool isKeyCharacter(QChar character)
{
    // The file's format takes a slash or a backslash as a separator of groups.
    return character.isPrint() && character != QLatin1Char('/') && character != QLatin1Char('\\');
}

bool isKey(const QString &key)
{
    return !key.trimmed().isEmpty() && key.size() <= SettingsStore::keyLimit &&
           std::all_of(key.cbegin(), key.cend(), isKeyCharacter);
}

} // namespace

SettingsStore::SettingsStore(const QString &path)
    : m_file(path)
{
}

void SettingsStore::load()
{
    const SettingsFile::Content content = m_file.read();
    reportProblems(content);
    m_problem = content.problem;
    // What a damaged file seems to hold is better than nothing, but not better than what was read before.
    if (!m_isLoaded)
        m_values = content.values;
    else if (!m_problem)
        replaceValues(content.values);
    m_isLoaded = true;
}

void SettingsStore::reportProblems(const SettingsFile::Content &content)
{
    if (content.problem && content.problem != m_problem)
        KestinLogger::error("%1; nothing is written to it until it is corrected", *content.problem);
    for (const KnownSetting &known : m_catalogue.all()) {
        const auto found = content.values.constFind(known.record.key);
        if (found == content.values.cend() || m_values.value(known.record.key) == *found)
            continue;
        if (const auto refusal = SettingsCatalogue::refusal(known.record, *found))
            KestinLogger::warning("%1: %2, not \"%3\"; the default %4 is used", path(), *refusal,
                                  ValueText::shown(*found), known.record.defaultValue);
    }
}

void SettingsStore::replaceValues(const QHash<QString, QString> &values)
{
    QHash<QString, QString> before;
    for (const KnownSetting &known : m_catalogue.all())
        before.insert(known.record.key, *value(known.record.key));
    m_values = values;
    for (const KnownSetting &known : m_catalogue.all()) {
        if (*value(known.record.key) == before.value(known.record.key))
            continue;
        m_writers.insert(known.record.key, QStringLiteral("file"));
        Q_EMIT changed(*setting(known.record.key));
    }
}

std::optional<QString> SettingsStore::value(const QString &key) const
{
    const KnownSetting *known = m_catalogue.find(key);
    const auto stored = m_values.constFind(key);
    const bool isStored = stored != m_values.cend();
    if (!known)
        return isStored ? std::optional(*stored) : std::nullopt;
    return isStored && !SettingsCatalogue::refusal(known->record, *stored) ? *stored : known->record.defaultValue;
}

std::optional<Setting> SettingsStore::setting(const QString &key) const
{
    const std::optional<QString> current = value(key);
    if (!current)
        return std::nullopt;
    const KnownSetting *known = m_catalogue.find(key);
    Setting setting = known ? known->record : Setting();
    setting.key = key;
    setting.value = *current;
    setting.lastWriter = m_writers.value(key);
    return setting;
}

ListSetting SettingsStore::settings() const
{
    ListSetting settings;
    QStringList others = m_values.keys();
    for (const KnownSetting &known : m_catalogue.all()) {
        settings.append(*setting(known.record.key));
        others.removeAll(known.record.key);
    }
    others.sort();
    for (const QString &key : std::as_const(others))
        settings.append(*setting(key));
    return settings;
}

UpdateReport SettingsStore::set(const QString &key, const QString &value)
{
    load(); // an edit of the file that nobody told of yet must not be taken for a part of this change
    const std::optional<UpdateReport> report = refusal(key, value);
    return report ? *report : write(key, value);
}

std::optional<UpdateReport> SettingsStore::refusal(const QString &key, const QString &value) const
{
    if (!isKey(key))
        return UpdateReport{BadKey,
                            QStringLiteral("a key is 1 to %1 printable characters without / and \\").arg(keyLimit)};
    if (value.size() > valueLimit)
        return UpdateReport{
            TooLong,
            QStringLiteral("the value of %1 is longer than %2 characters").arg(key, QString::number(valueLimit))};
    if (totalWith(key, value) > totalLimit)
        return UpdateReport{TooLong, QStringLiteral("with %1 all values together are longer than %2 characters")
                                         .arg(key, QString::number(totalLimit))};
    if (m_problem)
        return UpdateReport{NotWritable, *m_problem};
    const KnownSetting *known = m_catalogue.find(key);
    if (const auto reason = known ? SettingsCatalogue::refusal(known->record, value) : std::nullopt)
        return UpdateReport{BadValue, *reason};
    return std::nullopt;
}

UpdateReport SettingsStore::write(const QString &key, const QString &value)
{
    if (m_values.contains(key) && m_values.value(key) == value)
        return {};
    if (const auto reason = m_file.write(key, value)) {
        KestinLogger::error("%1; %2 keeps its value", *reason, key);
        return {NotWritable, *reason};
    }
    const std::optional<QString> before = this->value(key);
    m_values.insert(key, value);
    m_writers.insert(key, QStringLiteral("bus"));
    if (before != value)
        Q_EMIT changed(*setting(key));
    return {};
}

qsizetype SettingsStore::totalWith(const QString &key, const QString &value) const
{
    qsizetype total = key.size() + value.size() - m_values.value(key).size();
    for (auto stored = m_values.cbegin(); stored != m_values.cend(); ++stored)
        total += stored.key().size() + stored.value().size();
    return total;
}

#include "moc_SettingsStore.cpp"
