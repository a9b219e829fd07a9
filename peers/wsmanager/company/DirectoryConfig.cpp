// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/DirectoryConfig.h"

#include "peers/wsmanager/company/DnText.h"
#include "peers/wsmanager/company/IniFile.h"
#include "peers/wsmanager/company/LdapFilter.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/RegularFile.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

struct TextKey
{
    const char *key;
    QString &value;
};

struct NumberKey
{
    const char *key;
    int &value;
    int minimum;
    int maximum;
};

std::optional<QString> take(const QString &text, const NumberKey &number)
{
    bool isNumber = false;
    const int given = text.toInt(&isNumber);
    if (!isNumber || given < number.minimum || given > number.maximum)
        return QStringLiteral("%1 is a number from %2 to %3, not \"%4\"")
            .arg(QLatin1String(number.key))
            .arg(number.minimum)
            .arg(number.maximum)
            .arg(text);
    number.value = given;
    return std::nullopt;
}

bool isAttributeName(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^([A-Za-z][A-Za-z0-9-]*|[0-9]+([.][0-9]+)*)(#.+)?$"));
    return form.match(text).hasMatch();
}

} // namespace

std::optional<QString> DirectoryConfig::read(const QString &path)
{
    const IniFile file = IniFile::read(path);
    std::optional<QString> problem = file.problem;
    for (const IniFile::Setting &setting : file.settings) {
        if (problem)
            break;
        if (setting.section == QLatin1String("directory"))
            problem = set(setting.key, setting.value);
        else if (setting.section == QLatin1String("attributes"))
            problem = setAttributes(setting.key, setting.value);
        else
            problem = QStringLiteral("\"%1\" stands in no section that is known; see --help").arg(setting.key);
    }
    return problem ? std::optional(QStringLiteral("%1: %2").arg(path, *problem)) : std::nullopt;
}

std::optional<QString> DirectoryConfig::set(const QString &key, const QString &value)
{
    return setText(key, value) ? std::nullopt : setOther(key, value.trimmed());
}

bool DirectoryConfig::setText(const QString &key, const QString &value)
{
    const std::array texts{TextKey{"name", name},
                           TextKey{"ldif", ldif},
                           TextKey{"url", server.url},
                           TextKey{"base", base},
                           TextKey{"objectClass", objectClass},
                           TextKey{"filter", filter},
                           TextKey{"bindName", server.bindName},
                           TextKey{"caFile", server.caFile}};
    const auto text = std::find_if(texts.begin(), texts.end(),
                                   [&key](const TextKey &known) { return key == QLatin1String(known.key); });
    if (text == texts.end())
        return false;
    const bool keepsBlanks = &text->value == &name || &text->value == &filter;
    text->value = keepsBlanks ? value : value.trimmed();
    return true;
}

std::optional<QString> DirectoryConfig::setOther(const QString &key, const QString &value)
{
    const std::array numbers{NumberKey{"pageSize", pageSize, 1, 1000},
                             NumberKey{"maxResults", maxResults, 1, 100000},
                             NumberKey{"timeoutSeconds", timeoutSeconds, 1, 600},
                             NumberKey{"connectSeconds", server.connectSeconds, 1, 600},
                             NumberKey{"retrySeconds", retrySeconds, 1, 86400},
                             NumberKey{"delayMs", delayMs, 0, 600000}};
    const auto number = std::find_if(numbers.begin(), numbers.end(),
                                     [&key](const NumberKey &known) { return key == QLatin1String(known.key); });
    if (number != numbers.end())
        return take(value, *number);
    if (key == QLatin1String("secretFile"))
        return setSecret(value);
    if (key != QLatin1String("startTls"))
        return QStringLiteral("there is no setting \"%1\"; see --help").arg(key);
    server.usesStartTls = value == QLatin1String("true");
    if (!server.usesStartTls && value != QLatin1String("false"))
        return QStringLiteral("startTls is true or false");
    return std::nullopt;
}

std::optional<QString> DirectoryConfig::setAttributes(const QString &field, const QString &value)
{
    const QStringList values = value.split(QLatin1Char(','));
    for (const QString &attribute : values) {
        if (!attribute.trimmed().isEmpty() && !isAttributeName(attribute.trimmed()))
            return QStringLiteral("\"%1\" is no name of an attribute").arg(attribute.trimmed());
    }
    if (!attributes.set(field, values))
        return QStringLiteral("a contact has no field \"%1\"").arg(field);
    return std::nullopt;
}

std::optional<QString> DirectoryConfig::setSecret(const QString &path)
{
    QFile file(path);
    if (const auto reason = RegularFile::open(file))
        return QStringLiteral("the secret %1 cannot be read: %2").arg(path, *reason);
    if (file.permissions() & QFileDevice::ReadOther)
        KestinLogger::warning("The secret %1 can be read by everybody", path);
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    server.secret = line;
    return std::nullopt;
}

std::optional<QString> DirectoryConfig::problem() const
{
    if (server.url.isEmpty() && ldif.isEmpty())
        return QStringLiteral("one of url and ldif must be given");
    if (!server.url.isEmpty() && !ldif.isEmpty())
        return QStringLiteral("url and ldif exclude each other");
    if (!base.isEmpty() && DnText::normalized(base.toUtf8()).isEmpty())
        return QStringLiteral("the base \"%1\" is no DN").arg(base);
    if (!ldif.isEmpty() && !filter.isEmpty())
        return QStringLiteral("a filter is for servers only");
    if (!filter.isEmpty() && !LdapFilter::isWellFormed(filter))
        return QStringLiteral("\"%1\" is no filter in parentheses (RFC 4515)").arg(filter);
    return server.problem();
}
