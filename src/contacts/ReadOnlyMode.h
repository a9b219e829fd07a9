// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "src/fields/DirectoryFields.h"

/// Follows the event "READ_ONLY_MODE": while a synchronisation owner holds the directory, the user cannot write.
class ReadOnlyMode
{
public:
    ReadOnlyMode(const QString &moduleName, DirectoryFields &fields);

    /// Takes the event's `moduleName` and `readOnly`; an event for another module changes nothing.
    void syncReadOnlyModeSlot(const KestinEvent &event);

private:
    QString m_moduleName;
    DirectoryFields &m_fields;
};
