// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <tuple>

// Qt gives what is tried five seconds, which a loaded or emulated machine may need.
#undef QTRY_VERIFY
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT(expression, 30000)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, 30000)

/// The data of a test function: called with the name of each row and its values, which have these types. The test
/// function takes them with currentRow.
template <typename... Types>
class Rows
{
public:
    Rows() { QTest::addColumn<std::tuple<Types...>>("row"); }
    void operator()(const QByteArray &name, const Types &...values) const
    {
        QTest::newRow(name.constData()) << std::tuple<Types...>(values...);
    }
};

/// The values of the row with which the test function runs.
template <typename... Types>
std::tuple<Types...> currentRow()
{
    QFETCH(std::tuple<Types...>, row);
    return row;
}

/// What is in a file; empty when it cannot be read.
inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.exists() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes or replaces a file, and the folder that it is in; returns the path.
inline QString writeFile(const QString &path, const QByteArray &content = {})
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}
