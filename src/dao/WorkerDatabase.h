// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/Connection.h"
#include "src/dao/DaoContact.h"

#include <QString>

#include <optional>

/// The database as a worker has it: a connection of its own to the file that the default connection has open, on the
/// thread that makes this object, closed with it. What it writes in a transaction nobody else sees before the commit;
/// the others must not write meanwhile.
class WorkerDatabase
{
public:
    enum class Access { Read, Write };

    explicit WorkerDatabase(Access access = Access::Read);
    ~WorkerDatabase();
    WorkerDatabase(const WorkerDatabase &) = delete;
    WorkerDatabase &operator=(const WorkerDatabase &) = delete;

    DaoContact &contacts() { return *m_contacts; }

private:
    QString m_name;
    std::optional<Connection> m_connection;
    std::optional<DaoContact> m_contacts;
};
