// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/PlatformCalls.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/AddressText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/UpdateReport.h"

#include <QDBusReply>

namespace {
const QString getMethod = QStringLiteral("getSettingValue");
const QString setMethod = QStringLiteral("setSettingValue");
} // namespace

std::optional<QString> PlatformCalls::getStringSetting(const QString &key)
{
    try {
        const QDBusReply<QString> reply = m_caller.syncRemoteCall(ModuleName::settings, getMethod, {key});
        if (reply.isValid())
            return reply.value();
        KestinLogger::error("ERROR: While getting value of %1, reply is invalid", key);
    } catch (const KestinException &exception) {
        KestinLogger::error("ERROR: While getting value of %1:\n%2", key, exception.message());
    } catch (...) {
        KestinLogger::error("ERROR: While getting value of %1", key);
    }
    return std::nullopt;
}

std::optional<int> PlatformCalls::getIntSetting(const QString &key)
{
    const std::optional<QString> value = getStringSetting(key);
    return value ? std::optional(value->toInt()) : std::nullopt;
}

QString PlatformCalls::getSetting(const QString &key)
{
    try {
        const QDBusReply<QString> reply = m_caller.syncRemoteCall(ModuleName::settings, getMethod, {key});
        if (reply.isValid())
            return reply.value();
    } catch (...) {
        // Told below, like an answer that is an error.
    }
    KestinLogger::warning("Can't get the setting :%1.", key);
    return {};
}

void PlatformCalls::setStringSetting(const QString &key, const QString &value)
{
    try {
        m_caller.send(ModuleName::settings, setMethod, {key, value});
    } catch (const KestinException &exception) {
        KestinLogger::error("ERROR: While setting value of %1:\n%2", key, exception.message());
    } catch (...) {
        KestinLogger::error("ERROR: While setting value of %1", key);
    }
}

void PlatformCalls::setIntSetting(const QString &key, int value)
{
    setStringSetting(key, QString::number(value));
}

bool PlatformCalls::setSettingConfirmed(const QString &key, const QString &value)
{
    try {
        const QDBusReply<UpdateReport> reply = m_caller.syncRemoteCall(ModuleName::settings, setMethod, {key, value});
        if (reply.isValid())
            return true;
        KestinLogger::error("ERROR 1: While setting %1 with value : %2", key, AddressText::withoutUserInfo(value));
    } catch (...) {
        KestinLogger::error("ERROR 2: While setting %1 with value : %2", key, AddressText::withoutUserInfo(value));
    }
    return false;
}

void PlatformCalls::callModule(const QString &module, const QString &method, const QVariantList &arguments)
{
    try {
        m_caller.send(module, method, arguments);
    } catch (const KestinException &exception) {
        KestinLogger::error("ERROR: While calling method %1 of module %2 (%3)", method, module, exception.message());
    } catch (...) {
        KestinLogger::error("ERROR: While calling method %1 of module %2", method, module);
    }
}
