// SPDX-License-Identifier: Apache-2.0
#include "tests/peers/presentation/ScreenUnderTest.h"

#include "tests/support/Program.h"
#include "tests/support/Test.h"

#include <QCoreApplication>

ScreenUnderTest::ScreenUnderTest(const QStringList &options)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_QUICK_BACKEND", "software");
    m_process.setProcessEnvironment(environment);
    m_process.start(QCoreApplication::applicationDirPath() + "/kestin-presentation",
                    QStringList{"--play", "--light"} + options);
}

ScreenUnderTest::~ScreenUnderTest()
{
    m_process.closeWriteChannel();
    const bool hasEnded = m_process.waitForFinished(Program::limitMs);
    m_process.kill();
    QTest::qVerify(hasEnded && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0,
                   "the screen ends as it should", m_process.readAllStandardError().constData(), __FILE__, __LINE__);
    m_process.waitForFinished(Program::limitMs);
}

QStringList ScreenUnderTest::play(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    QStringList answer;
    do {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(Program::limitMs))
                return answer << "failed: no answer; " + QString::fromUtf8(errorOutput());
        }
        answer.append(QString::fromUtf8(m_process.readLine()).trimmed());
    } while (answer.last() != "done" && !answer.last().startsWith("failed: "));
    return answer;
}

bool ScreenUnderTest::does(const QString &line)
{
    const QString answer = play(line).last();
    if (answer != "done")
        qWarning("%s: %s\n%s", qUtf8Printable(line), qUtf8Printable(answer), qUtf8Printable(play("print").join('\n')));
    return answer == "done";
}

bool ScreenUnderTest::doesAll(const QStringList &lines)
{
    return std::all_of(lines.begin(), lines.end(), [this](const QString &line) { return does(line); });
}

QString ScreenUnderTest::shown()
{
    does("settle");
    QStringList lines = play("print");
    lines.removeLast();
    return lines.join('\n');
}

QImage ScreenUnderTest::picture()
{
    const QTemporaryDir folder;
    return does("save " + folder.filePath("screen.png")) ? QImage(folder.filePath("screen.png")) : QImage();
}
