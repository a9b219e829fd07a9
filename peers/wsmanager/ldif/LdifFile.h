// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryEntry.h"

/// The entries of an LDIF file, parsed by the directory library.
struct LdifFile
{
    DirectoryEntries entries;
    QString problem; ///< why it could not be read to its end; empty: it could

    static LdifFile read(const QString &path);
};
