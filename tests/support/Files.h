// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

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
