// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinLogger.h"

#include <QStringList>

/// Collects what is logged while it lives, at a level of its choice. The lines keep their prefix ("<7>…").
class LogCapture
{
public:
    explicit LogCapture(int level = KestinLogger::Debug)
    {
        KestinLogger::setLevel(level);
        KestinLogger::setSink([this](const QByteArray &line) { lines.append(QString::fromUtf8(line)); });
    }
    ~LogCapture()
    {
        KestinLogger::setSink({});
        KestinLogger::setLevel(KestinLogger::Warning);
    }

    bool contains(const QString &line) const { return lines.contains(line); }

    QStringList lines;
};
