// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/FigureTable.h"
#include "bench/Progress.h"

#include <QString>

class BusClient;

/// Single creates, each durable. They take turns with what a create cannot do without: a call, the numbers brought into
/// form by the telephony service, a durable insert.
class CreateRun
{
public:
    /// `bareDatabase` is a copy of the service's database as it is now, with `stored` made-up contacts.
    CreateRun(const BusClient &client, const QString &bareDatabase, int stored);

    static constexpr int warmUp = 10;
    /// Creates warmUp + `creates` contacts. The figures are put down for a store of `size` contacts.
    void measure(int creates, int size, FigureTable &table, Progress &progress) const;

private:
    qint64 create(int index) const;

    const BusClient &m_client;
    QString m_bareDatabase;
    int m_stored;
};
