// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsCatalogue.h"

#include "platform/records/KestinBus.h"

#include <QStringList>

#include <algorithm>

namespace {

enum AccessLevel { User = 0, Administrator = 1, Internal = 2 };

struct Row
{
    const char *key;
    const char *defaultValue;
    int minimum;
    int maximum;
    const char *unit;
    AccessLevel accessLevel;
    bool rebootRequired;
    const char *owner;
    const char *changeMethod;
    const char *choices; ///< "value=label;value=label"
    const char *label;
    const char *description;
};

constexpr const char *directory = ModuleName::directory.data();
constexpr const char *telephony = ModuleName::telephony.data();
constexpr char rulesChanged[] = "dialingRulesChanged";

constexpr Row rows[] = {
    {"ComLogSize", "40", 0, 10000, "contacts", Administrator, true, "", "", "", "Remembered contacts",
     "How many contacts of the company directory are kept on the phone"},
    {"DirMaxContact", "1000", 0, 100000, "contacts", Administrator, false, directory, "dirMaxContactChanged", "",
     "Local contacts", "How many contacts the user may create"},
    {"DirMaxWordSearch", "5", 0, 100, "words", Administrator, true, "", "", "", "Words in a search",
     "How many words of a searched name are used"},
    {"DirSearchMode", "1", 1, 2, "", User, false, directory, "dirSearchModeChanged",
     "1=One list;2=A list per directory", "Search results",
     "Whether the results of all directories are shown as one list"},
    {"RemoveHttpsFromPhotoUrl", "false", 0, 0, "", Administrator, false, directory, "removeHttpsFromPhotoUrlChanged",
     "false=No;true=Yes", "Photos without https", "Whether photo addresses are asked for over http instead of https"},
    {"DirectoryDefaultContacts", "", 0, 0, "", Administrator, false, directory, "defaultContactsChanged", "",
     "Default contacts",
     "Contacts that every phone has: records separated by #, their 8 or 20 fields by commas, \\# and \\, for the "
     "characters themselves"},
    {"FileDiskUserQuota", "20", 0, 2047, "MiB", Administrator, true, "", "", "", "Space for photos",
     "How much room the photos may take"},
    {"UserPhoto", "", 0, 0, "", User, false, directory, "userPhotoChanged", "", "Own photo",
     "The user's own photo: a path on the phone or an http or https address"},
    {"DialingRuleCountryCode", "", 0, 0, "", Administrator, false, telephony, rulesChanged, "", "Country code",
     "Country calling code of the place, for example 33; empty: only numbers with + are understood"},
    {"DialingRuleAreaCode", "", 0, 0, "", Administrator, false, telephony, rulesChanged, "", "Area code",
     "Area code of the place, for numbers that are given without one"},
    {"DialingRuleExternalPrefix", "", 0, 0, "", Administrator, false, telephony, rulesChanged, "", "Outside line",
     "What is dialled before a number to get an outside line, for example 0"},
    {"DialingRuleMinNumberLength", "6", 0, 20, "digits", Administrator, false, telephony, rulesChanged, "",
     "Shortest outside number", "A number with fewer digits is an internal extension"},
    {"DialingRuleExternalPrefixExceptions", "", 0, 0, "", Administrator, false, telephony, rulesChanged, "",
     "Without outside line", "Numbers or their beginnings, separated by commas, that need no outside line"},
    {"DialingRuleCountryCodeSave", "", 0, 0, "", Internal, false, "", "", "", "Country code in use",
     "The country code of the stored canonical numbers"},
    {"DialingRuleAreaCodeSave", "", 0, 0, "", Internal, false, "", "", "", "Area code in use",
     "The area code of the stored canonical numbers"},
    {"DialingRuleExternalPrefixSave", "", 0, 0, "", Internal, false, "", "", "", "Outside line in use",
     "The outside-line prefix of the stored canonical numbers"},
    {"DialingRuleMinNumberLengthSave", "", 0, 0, "", Internal, false, "", "", "", "Shortest outside number in use",
     "The shortest outside number of the stored canonical numbers"},
    {"DialingRuleExternalPrefixExceptionsSave", "", 0, 0, "", Internal, false, "", "", "",
     "Without outside line in use", "The exceptions of the stored canonical numbers"},
};

QList<std::pair<QString, QString>> choicesOf(const Row &row)
{
    QList<std::pair<QString, QString>> choices;
    const QStringList texts = QString::fromUtf8(row.choices).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString &text : texts)
        choices.append({text.section(QLatin1Char('='), 0, 0), text.section(QLatin1Char('='), 1)});
    return choices;
}

KnownSetting settingOf(const Row &row)
{
    KnownSetting known;
    Setting &record = known.record;
    record.key = QString::fromUtf8(row.key);
    record.defaultValue = QString::fromUtf8(row.defaultValue);
    record.category = record.key.startsWith(QLatin1String("DialingRule")) ? QStringLiteral("Dialing rules")
                                                                          : QStringLiteral("Directory");
    record.label = QString::fromUtf8(row.label);
    record.description = QString::fromUtf8(row.description);
    record.unit = QString::fromUtf8(row.unit);
    record.minimum = row.minimum;
    record.maximum = row.maximum;
    record.accessLevel = row.accessLevel;
    record.choices = choicesOf(row);
    record.rebootRequired = row.rebootRequired;
    known.owner = QString::fromUtf8(row.owner);
    known.changeMethod = QString::fromUtf8(row.changeMethod);
    return known;
}

std::optional<QString> choiceRefusal(const Setting &setting, const QString &value)
{
    QStringList values;
    for (const auto &choice : setting.choices)
        values.append(choice.first);
    if (values.isEmpty() || values.contains(value))
        return std::nullopt;
    return QStringLiteral("%1 must be one of %2").arg(setting.key, values.join(QStringLiteral(", ")));
}

} // namespace

SettingsCatalogue::SettingsCatalogue()
{
    for (const Row &row : rows)
        m_settings.append(settingOf(row));
}

const KnownSetting *SettingsCatalogue::find(const QString &key) const
{
    const auto found = std::find_if(m_settings.cbegin(), m_settings.cend(),
                                    [&key](const KnownSetting &known) { return known.record.key == key; });
    return found == m_settings.cend() ? nullptr : &*found;
}

std::optional<QString> SettingsCatalogue::refusal(const Setting &setting, const QString &value)
{
    if (setting.maximum <= setting.minimum)
        return choiceRefusal(setting, value);
    bool isNumber = false;
    const int number = value.toInt(&isNumber, 10);
    if (!isNumber)
        return QStringLiteral("%1 must be a whole number").arg(setting.key);
    if (number < setting.minimum || number > setting.maximum)
        return QStringLiteral("%1 must be between %2 and %3")
            .arg(setting.key, QString::number(setting.minimum), QString::number(setting.maximum));
    return std::nullopt;
}
