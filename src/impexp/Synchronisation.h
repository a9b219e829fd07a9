// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/impexp/ContactExport.h"
#include "src/impexp/ContactImport.h"

/// Synchronisation with a PC, by files.
struct Synchronisation
{
    Synchronisation(DaoContact &dao, DirectoryFields &fields, RemoteCaller &telephony, PhotoFiles &photoFiles,
                    const QString &moduleName, LongWork &longWork)
        : exporter(dao, fields, moduleName, longWork)
        , importer(dao, fields, telephony, photoFiles, longWork)
        , m_fields(fields)
    {
    }

    /// Whether a bus call of this method waits while long work is going on: those that change the store, and other
    /// imports and exports. An import beside another is refused, so that need not wait.
    bool mustWait(const QByteArray &method) const;

    ContactExport exporter;
    ContactImport importer;

private:
    const DirectoryFields &m_fields;
};
