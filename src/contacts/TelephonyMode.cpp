// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/TelephonyMode.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"

#include <QDBusReply>

bool TelephonyMode::getKestinMode()
{
    KestinLogger::debug("call begin to getKestin mode");
    KestinMode mode{STR_KESTIN_MODE_UNKNOWN};
    try {
        const QDBusReply<KestinMode> reply =
            m_caller.syncRemoteCall(ModuleName::telephony, QStringLiteral("getKestinMode"), {});
        if (!reply.isValid()) {
            KestinLogger::debug("WS not available yet...");
            return false;
        }
        mode = reply.value();
    } catch (const KestinException &exception) {
        KestinLogger::error("getKestinMode failed to call Telephony: %1", exception.message());
        return false;
    } catch (...) {
        KestinLogger::error("getKestinMode failed to call Telephony (unknown exception");
        return false;
    }
    KestinLogger::debug("Telephony - getKestinMode reply valid - return (%1).", mode.text);
    if (mode.text == STR_KESTIN_MODE_BASIC) {
        KestinLogger::debug("STR_KESTIN_MODE_BASIC - STR_KESTIN_MODE_BASIC - STR_KESTIN_MODE_BASIC");
        return false;
    }
    return mode.text != STR_KESTIN_MODE_UNKNOWN;
}
