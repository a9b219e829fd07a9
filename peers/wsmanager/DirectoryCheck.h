// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/bus/RunningSearch.h"
#include "peers/wsmanager/company/DirectoryConfig.h"
#include "peers/wsmanager/company/DirectorySource.h"

#include <QMap>
#include <QTextStream>

#include <optional>

/// Tries a configuration and tells on standard output what it leads to: the server and how it is secured, how many
/// people are found, and which of a contact's fields they have. Needs no bus.
class DirectoryCheck : public QObject
{
    Q_OBJECT

public:
    explicit DirectoryCheck(const DirectoryConfig &config);

    /// Once. The exit code: 0 when people are found; otherwise 1, and standard error says why.
    int run();

private:
    std::optional<QString> findPeople();
    QString nobodyText() const;
    QString boundName() const;
    void reachServer();
    void search(DirectorySource &source);
    void take(const DirectoryEntries &entries);
    void tellPeople();
    void tell(const QString &title, const QString &text);

    const DirectoryConfig m_config;
    QTextStream m_out;
    PacketStatus m_status = PacketStatus::More;
    int m_people = 0;
    QMap<QString, int> m_filled; ///< how many people have the field
    DirectoryEntry m_example;    ///< the first person with the most fields
    int m_exampleFields = -1;
};
