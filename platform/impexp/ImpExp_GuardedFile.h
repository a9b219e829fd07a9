// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_MarkupScanner.h"

#include <QFile>
#include <QIODevice>

#include <optional>

/// A file as an XML reader gets it. It ends early where going on would cost too much. A reader takes whatever lies
/// between two tokens into memory, and needs time for each token. So the caller that asks the reader for tokens says
/// when a new stretch begins: with each contact, and behind it.
class ImpExp_GuardedFile : public QIODevice
{
public:
    /// A stretch has at most `limit` bytes, and what a reader reads ahead.
    ImpExp_GuardedFile(const QString &path, qint64 limit);

    /// False when the path is no regular file that can be read; errorString() is set then. A pipe would be waited for,
    /// and a device has no end.
    bool openForReading();

    void beginStretch() { m_left = m_limit; }
    /// Why the file ended early, when it did.
    std::optional<QString> refusal() const { return m_refusal; }
    /// Whether a text that was too long for its stretch has been cut off since the last call.
    bool takeCut() { return m_scanner.takeCut(); }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QFile m_file;
    qint64 m_limit;
    qint64 m_left;
    ImpExp_MarkupScanner m_scanner;
    std::optional<QString> m_refusal;
};
