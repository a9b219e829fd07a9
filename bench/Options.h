// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What the command line asks for.
struct Options
{
    /// Reads the command line; --help, --version and mistakes end the process.
    static Options fromCommandLine();

    bool wants(const QString &group) const { return groups.contains(group); }

    QList<int> sizes; ///< contacts in the store, ascending
    QStringList groups;
    QString workDirectory;
    bool json = false;
    int calls = 0;    ///< of each look-up
    int creates = 0;  ///< single creates
    int searches = 0; ///< for each number of hits; a tenth as many remote searches
    int starts = 0;
    int batch = 0; ///< contacts in a createLocalContacts
};
