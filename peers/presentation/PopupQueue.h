// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QQueue>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

/// What modules have asked to be told at once, one text after the other. Each goes when it is closed or its time is
/// over.
class PopupQueue : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(int waiting READ waiting NOTIFY changed)

public:
    PopupQueue();

    /// `seconds` is how long it stays; 0 or less: 8. Of a text beyond `longest` the beginning is told. What comes when
    /// `most` wait is left out.
    void add(const QString &text, int seconds = 0);
    Q_INVOKABLE void next();

    /// Empty when nothing is to be told.
    QString text() const { return m_popups.isEmpty() ? QString() : m_popups.head().text; }
    /// How many come after this one.
    int waiting() const { return std::max(0, int(m_popups.size()) - 1); }

    static constexpr int most = 20;
    static constexpr qsizetype longest = 1000; ///< characters

Q_SIGNALS:
    void changed();

private:
    void show();

    struct Popup
    {
        QString text;
        int seconds;
    };
    QQueue<Popup> m_popups; ///< the first is on the screen
    QTimer m_end;
};
