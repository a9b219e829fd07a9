// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"
#include "bench/SyncClient.h"

class Stand;

/// Exports of the whole store and imports of it into an empty store, beside the same work in bare SQLite and XML.
/// Leaves the store with the contacts of the last import.
class SyncRun
{
public:
    SyncRun(Stand &stand, int size);

    void measure(FigureTable &table, Progress &progress);

private:
    void measureExports(FigureTable &table, Progress &progress);
    void measureImports(FigureTable &table, Progress &progress);
    void measureBeside(const QString &file, FigureTable &table);
    void measureCards(FigureTable &table) const;
    /// The exported file as a phone without these contacts has to get it.
    QString withoutIds() const;
    qint64 canonicalNumbers() const;
    QString path(const char *name) const;

    Stand &m_stand;
    int m_size;
    SyncClient m_client;
};
