// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

class QDBusMessage;
class RemoteCaller;

/// The settings that could not be read: asks for them again in the background, after 5 s and then less and less often,
/// until the settings manager answers. Nothing waits.
class UnreadSettings : public QObject
{
    Q_OBJECT

public:
    explicit UnreadSettings(RemoteCaller &caller);

    void add(const QString &key);
    /// Its value has come another way: an answer under way counts no more. Answers whether it was among them.
    bool remove(const QString &key) { return m_keys.remove(key); }
    /// At once: the settings manager has come to the bus, say.
    void ask();

Q_SIGNALS:
    void answered(const QString &key, const QString &value);

private:
    void ask(const QString &key);
    void take(const QString &key, const QDBusMessage &reply);

    RemoteCaller &m_caller;
    QSet<QString> m_keys;
    QTimer m_timer;
};
