// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>

#include <chrono>
#include <optional>

/// A picture that is to be made square.
struct Picture
{
    QString name;                      ///< of the file it is in; where it has a content, for the log only
    std::optional<QByteArray> content; ///< none: it is in the file
    int side = 0;                      ///< pixels of the square
};

/// The program kestin-picture at work on one picture. It gets nothing but the picture and little of the environment,
/// and what it answers is not trusted either. Destroying this ends the program.
class PictureRun : public QObject
{
    Q_OBJECT

public:
    PictureRun(const QString &program, std::chrono::milliseconds limit, const Picture &picture);
    ~PictureRun() override;

    /// Starts it; `ended` comes once, within the limit, and possibly from here.
    void start();
    /// Starts it and waits for its end.
    void run();

    /// What came of it, after the end: a JPEG, or null when the picture cannot be used (logged).
    const QByteArray &square() const { return m_square; }

Q_SIGNALS:
    void ended();

private:
    QString whyNotToStart() const;
    bool layOut();
    void read();
    void runOut();
    void giveUp(const QString &trouble);
    void end();
    void judge();
    void log() const;

    Picture m_picture;
    std::chrono::milliseconds m_limit;
    QFile m_content; ///< in memory; the program reads it without any help
    QProcess m_process;
    QTimer m_timer;
    QByteArray m_output;
    QByteArray m_errors;
    QByteArray m_square;
    QString m_trouble;
    bool m_isEnded = false;
};
