// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/DialingRulesReader.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/framework/RemoteCaller.h"
#include "platform/records/KestinBus.h"

namespace {
constexpr int pauseMs = 10000;
} // namespace

DialingRulesReader::DialingRulesReader(RemoteCaller &caller)
    : m_caller(caller)
{
}

const DialingRules &DialingRulesReader::rules()
{
    if (m_isRead || !m_pause.hasExpired())
        return m_rules;
    DialingRules rules;
    try {
        m_isRead = read(rules);
    } catch (const KestinException &exception) {
        noteFailure(exception.message());
    }
    if (m_isRead) {
        m_rules = rules;
        m_failureIsKnown = false;
    }
    return m_rules;
}

/// False when the settings manager did not answer. A setting that it does not know is an empty one.
bool DialingRulesReader::read(DialingRules &rules)
{
    const QStringList keys = DialingRules::settingKeys();
    for (const QString &key : keys) {
        const QDBusMessage reply =
            m_caller.syncRemoteCall(ModuleName::settings, QStringLiteral("getSettingValue"), {key});
        const bool isError = reply.type() == QDBusMessage::ErrorMessage;
        if (isError && reply.errorName() != KestinBus::exceptionError) {
            noteFailure(reply.errorMessage());
            return false;
        }
        rules.set(key, isError ? QString() : reply.arguments().value(0).toString());
    }
    return true;
}

void DialingRulesReader::noteFailure(const QString &reason)
{
    if (!m_failureIsKnown)
        KestinLogger::warning("The dialing rules cannot be read from the settings: %1", reason);
    m_failureIsKnown = true;
    m_pause.setRemainingTime(pauseMs);
}
