// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryEntry.h"

#include <optional>

/// The entries of an LDIF file, parsed by the directory library.
struct LdifFile
{
    DirectoryEntries entries;
    std::optional<QString> problem; ///< why the file could not be read to its end, when it could not

    static LdifFile read(const QString &path);
};
