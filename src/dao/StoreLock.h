// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/OwnedDescriptor.h"

#include <QString>

#include <optional>

/// The right of one process to a store: a lock on its folder, held until this object goes or the process ends, however
/// it ends. It leaves nothing behind.
class StoreLock
{
public:
    /// Takes the lock on this folder, in the place of any lock that is held. Answers why not, when it cannot. A lock
    /// that is held already stays.
    [[nodiscard]] std::optional<QString> take(const QString &folder);

private:
    QString m_folder;
    OwnedDescriptor m_descriptor;
};
