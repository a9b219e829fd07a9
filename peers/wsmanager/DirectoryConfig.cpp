// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/DirectoryConfig.h"

#include "peers/wsmanager/DnText.h"
#include "platform/framework/KestinLogger.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>

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

bool isAttributeName(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9][A-Za-z0-9.-]*(#.+)?$"));
    return form.match(text).hasMatch();
}

} // namespace

QString DirectoryConfig::read(const QString &path)
{
    QFile readable(path);
    if (!readable.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read: %2").arg(path, readable.errorString());
    const QSettings file(path, QSettings::IniFormat);
    QString problem =
        file.status() == QSettings::NoError ? QString() : QStringLiteral("it is not a well-formed INI file");
    const QStringList keys = file.allKeys();
    for (const QString &key : keys) {
        if (!problem.isEmpty())
            break;
        // A text that was typed with bare commas, as a DN is, comes as a list.
        const QStringList values = file.value(key).toStringList();
        const QString setting = key.section(QLatin1Char('/'), 1);
        if (key.startsWith(QLatin1String("directory/")))
            problem = set(setting, values.join(QLatin1Char(',')));
        else if (key.startsWith(QLatin1String("attributes/")))
            problem = setAttributes(setting, values);
        else
            problem = QStringLiteral("\"%1\" stands in no section that is known; see --help").arg(key);
    }
    return problem.isEmpty() ? problem : QStringLiteral("%1: %2").arg(path, problem);
}

QString DirectoryConfig::set(const QString &key, const QString &value)
{
    QString problem;
    if (setText(key, value.trimmed()) || setNumber(key, value.trimmed(), problem))
        return problem;
    if (key == QLatin1String("secretFile"))
        return setSecret(value.trimmed());
    if (key != QLatin1String("startTls"))
        return QStringLiteral("there is no setting \"%1\"; see --help").arg(key);
    server.usesStartTls = value == QLatin1String("true");
    return server.usesStartTls || value == QLatin1String("false") ? QString()
                                                                  : QStringLiteral("startTls is true or false");
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
    if (text != texts.end())
        text->value = value;
    return text != texts.end();
}

bool DirectoryConfig::setNumber(const QString &key, const QString &value, QString &problem)
{
    const std::array numbers{NumberKey{"pageSize", pageSize, 1, 1000},
                             NumberKey{"maxResults", maxResults, 1, 100000},
                             NumberKey{"timeoutSeconds", timeoutSeconds, 1, 600},
                             NumberKey{"connectSeconds", server.connectSeconds, 1, 600},
                             NumberKey{"retrySeconds", retrySeconds, 1, 86400},
                             NumberKey{"delayMs", delayMs, 0, 600000}};
    const auto number = std::find_if(numbers.begin(), numbers.end(),
                                     [&key](const NumberKey &known) { return key == QLatin1String(known.key); });
    if (number == numbers.end())
        return false;
    bool isNumber = false;
    const int given = value.toInt(&isNumber);
    if (isNumber && given >= number->minimum && given <= number->maximum)
        number->value = given;
    else
        problem = QStringLiteral("%1 is a number from %2 to %3, not \"%4\"")
                      .arg(key)
                      .arg(number->minimum)
                      .arg(number->maximum)
                      .arg(value);
    return true;
}

QString DirectoryConfig::setAttributes(const QString &field, const QStringList &values)
{
    for (const QString &attribute : values) {
        if (!attribute.isEmpty() && !isAttributeName(attribute.trimmed()))
            return QStringLiteral("\"%1\" is no name of an attribute").arg(attribute);
    }
    return attributes.set(field, values) ? QString() : QStringLiteral("a contact has no field \"%1\"").arg(field);
}

QString DirectoryConfig::setSecret(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("the secret %1 cannot be read: %2").arg(path, file.errorString());
    if (file.permissions() & QFileDevice::ReadOther)
        KestinLogger::warning("The secret %1 can be read by everybody", path);
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    server.secret = line;
    return QString();
}

QString DirectoryConfig::problem() const
{
    if (server.url.isEmpty() == ldif.isEmpty())
        return QStringLiteral("one of url and ldif must be given");
    if (!base.isEmpty() && DnText::normalized(base.toUtf8()).isEmpty())
        return QStringLiteral("the base \"%1\" is no DN").arg(base);
    if (!ldif.isEmpty() && !filter.isEmpty())
        return QStringLiteral("a filter is for servers only");
    // Many servers take a name without a secret for nobody, and answer as they answer anybody.
    if (!server.bindName.isEmpty() && server.secret.isEmpty())
        return QStringLiteral("a bind name needs a secret; secretFile names no file, or an empty one");
    if (!filter.isEmpty() && !(filter.startsWith(QLatin1Char('(')) && filter.endsWith(QLatin1Char(')'))))
        return QStringLiteral("a filter stands in parentheses");
    return QString();
}
