// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>

/// A caller who searches by name and waits for the events, search after search. An event that is wrong, or does not
/// come, is a BenchError.
class SearchClient : public QObject
{
    Q_OBJECT

public:
    explicit SearchClient(const QDBusConnection &connection);

    /// Nanoseconds since the call was sent, until the event was here, before its values are decoded.
    struct Times
    {
        qint64 firstResults = 0; ///< 0: there were none before the completion
        qint64 completion = 0;
    };
    /// The search must find exactly `hits` contacts. A local search must tell the first ten of them at once.
    Times search(const QString &name, int hits, bool localOnly);
    /// The id of the last search. Its results are held until the next search.
    QString searchId() const { return m_searchId; }

    static constexpr int summariesWanted = 10;

private Q_SLOTS:
    void take(const QDBusMessage &message);

private:
    void check(const QDBusMessage &event, int hits, int summaries) const;

    QDBusConnection m_connection;
    QString m_searchId;
    int m_searches = 0;
    QElapsedTimer m_timer;
    QEventLoop m_loop;
    Times m_times;
    QDBusMessage m_firstResults;
    QDBusMessage m_completion;
};
