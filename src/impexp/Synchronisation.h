// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/impexp/ContactExport.h"
#include "src/impexp/ContactImport.h"

/// Synchronisation with a PC, by files.
struct Synchronisation
{
    Synchronisation(DaoContact &dao, DirectoryFields &fields, CanonicalNumbers &numbers, PhotoFiles &photoFiles,
                    const QString &moduleName)
        : exporter(dao, fields, moduleName)
        , importer(dao, fields, numbers, photoFiles)
    {
    }

    ContactExport exporter;
    ContactImport importer;
};
