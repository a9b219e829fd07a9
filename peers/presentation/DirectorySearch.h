// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/ContactSummary.h"

#include <QTimer>

/// The search behind the list on the screen. The directory keeps the results of one search for the whole phone, so
/// those of this one may be gone when somebody else has searched; it is then started again.
class DirectorySearch : public QObject
{
    Q_OBJECT

public:
    explicit DirectorySearch(ModuleCalls &calls);

    /// How many contacts are told with the first results: more than a screen shows.
    static constexpr int told = 50;

    /// Forgets the search before. An empty text finds everybody on the phone, any other looks in the company as well.
    void start(const QString &text);
    /// The same text once more.
    void again() { start(m_text); }
    /// Asks for a page of what a completed search has found; `page` tells it.
    void ask(int start, int length);

    const QString &id() const { return m_id; }
    bool isRunning() const { return m_isRunning; }

    /// How the directory's events come in.
    void takeResults(const KestinEvent &event);
    void takeCompletion(const KestinEvent &event);
    /// Another search has ended, which may have taken the place of this one: the completion of this one is not told
    /// then.
    void takeOtherCompletion();

Q_SIGNALS:
    /// The first of `count` results; `contacts` are at most `told`.
    void found(int count, const ListContactSummary &contacts);
    void completed(int count);
    void page(int start, const ListContactSummary &contacts);
    /// The directory is not there, or does not end the search.
    void failed();

private:
    void fail();
    bool isOurs(const KestinEvent &event) const;

    ModuleCalls &m_calls;
    QString m_name; ///< what the ids of this process begin with
    QString m_text;
    QString m_id;
    int m_number = 0;
    bool m_isRunning = false;
    QTimer m_limit;   ///< since the last sign of the search
    QTimer m_restart; ///< after the search of somebody else, so that they can read what they found
};
