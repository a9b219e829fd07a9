// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/ContactSummary.h"

#include <QElapsedTimer>
#include <QTimer>

/// The search behind the list on the screen. The directory keeps the results of one search for the whole phone, so
/// those of this one are gone when somebody else has searched. It is then made again, once the other has ended and its
/// results could be read.
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
    void again();
    /// The same when nobody else searches, so far as that is known.
    void againInTurn();
    /// The results are gone: the same when whoever has taken the turn has read theirs.
    void recover();
    /// Asks for a page of what a completed search has found; `page` tells it.
    void ask(int start, int length);
    /// While another search of this screen goes on this one waits, and is made again if it was running.
    void setHeld(bool held);

    const QString &id() const { return m_id; }
    /// Also while it waits.
    bool isRunning() const { return m_isRunning; }

    // How the directory's events come in.
    void takeResults(const KestinEvent &event);
    /// False when the event is about a search that is not of this object.
    bool takeCompletion(const KestinEvent &event);
    void takeOtherCompletion();
    /// The directory has left the bus, or does not answer; it is tried again, less and less often.
    void fail();

Q_SIGNALS:
    void began();
    /// The first of `count` results, or more of them; `contacts` are at most `told`.
    void found(int count, const ListContactSummary &contacts);
    void completed(int count);
    void page(int start, const ListContactSummary &contacts);
    /// The directory is not there.
    void failed();

private:
    void begin();
    QString nextId() { return QStringLiteral("%1-%2").arg(m_name).arg(++m_number); }
    void takePage(int start, const ListContactSummary &contacts);

    ModuleCalls &m_calls;
    QString m_name; ///< what the ids of this object begin with
    QString m_text;
    QString m_id;
    int m_number = 0;
    bool m_isRunning = false;
    bool m_isHeld = false;
    bool m_isDue = false;       ///< is to begin when it is no longer held
    int m_failures = 0;         ///< since it completed last
    int m_recoveries = 0;       ///< since the text, or a page
    QElapsedTimer m_otherEnded; ///< the search of somebody else, since this one completed
    QElapsedTimer m_otherFound; ///< something, and has not ended yet
    QTimer m_limit;             ///< for a sign of this search
    QTimer m_turn;              ///< until this one may begin
};
