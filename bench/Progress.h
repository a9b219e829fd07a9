// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A line on standard error that tells how far the work is. Nothing when standard error is no terminal.
class Progress
{
public:
    Progress();
    ~Progress();

    /// What follows belongs to this: "10000 contacts: filling".
    void begin(const QString &task);
    void show(int done, int total);

private:
    void print(const QString &line);

    bool m_isTerminal;
    QString m_task;
    int m_shownPercent = -1;
};
