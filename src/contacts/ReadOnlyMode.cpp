// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/ReadOnlyMode.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/PlatformEvents.h"

ReadOnlyMode::ReadOnlyMode(const QString &moduleName, DirectoryFields &fields)
    : m_moduleName(moduleName)
    , m_fields(fields)
{
}

void ReadOnlyMode::syncReadOnlyModeSlot(const KestinEvent &event)
{
    const auto moduleName = event.argument<QString>(ArgumentName::moduleName);
    const auto readOnly = event.argument<bool>(ArgumentName::readOnly);
    KestinLogger::debug("KestinDirectory::syncReadOnlyModeSlot : %1 is %2in read-only mode.", moduleName,
                        readOnly ? "" : "not ");
    if (moduleName == m_moduleName)
        m_fields.readOnlyMode = readOnly;
}
