// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>
#include <QProcess>
#include <QStringList>

/// The presentation as a process without a display, driven by its standard input.
class ScreenUnderTest
{
public:
    explicit ScreenUnderTest(const QStringList &options = {});
    /// The test fails when the process does not end in order.
    ~ScreenUnderTest();

    /// What the screen answers to a line; the last is "done" or tells why not.
    QStringList play(const QString &line);
    /// Whether it answers "done"; if not, a warning says what it shows.
    bool does(const QString &line);
    bool doesAll(const QStringList &lines);
    /// What it shows once it is settled, in one text, a line each.
    QString shown();
    /// Waits until it shows the text.
    bool shows(const QString &text) { return does("wait " + text); }
    QImage picture();

    QByteArray errorOutput() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
};
