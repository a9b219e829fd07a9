// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

class Presentation;
class Screen;

/// Drives the window by lines from standard input, as a person would with keys, and tells what it shows, as a screen
/// reader would. What was told ends with a line "done", or "failed: " and why. The lines:
///   type TEXT     into what has the focus
///   key NAME      "Return", "Down", "Escape", "Ctrl+A" …
///   print         all that is shown, a line each
///   wait TEXT     until one of these lines contains the text
///   frame         until the next frame is on the screen
///   settle        until nothing is asked, searched or loaded any more
///   save FILE     a picture of the window
/// The process ends with the input.
class Playback : public QObject
{
    Q_OBJECT

public:
    Playback(Presentation &phone, Screen &screen);

    /// What the window shows, in the order in which assistive technology reads it.
    QStringList lines() const;
    bool isSettled() const;

    static constexpr int limitMs = 20000;

private:
    using Condition = std::function<bool()>;

    void read();
    void playNext();
    void play(const QString &command, const QString &argument);
    void press(const QString &name);
    void type(const QString &text);
    /// Answers when the condition holds in so many frames that follow each other.
    void await(const Condition &condition, int frames = 1);
    void look();
    void answer(const QString &problem = {});

    Presentation &m_phone;
    Screen &m_screen;
    QByteArray m_input;
    bool m_isAtEnd = false;
    Condition m_condition; ///< what is waited for
    int m_framesWanted = 0;
    int m_framesLeft = 0;
    QElapsedTimer m_since;
    QTimer m_frames; ///< so that there are frames
};
