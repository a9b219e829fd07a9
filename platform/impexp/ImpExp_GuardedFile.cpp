// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_GuardedFile.h"

#include "platform/impexp/ImpExp_Format.h"

#include "platform/records/RegularFile.h"

ImpExp_GuardedFile::ImpExp_GuardedFile(const QString &path, qint64 limit)
    : m_file(path)
    , m_limit(limit)
    , m_left(limit)
    , m_scanner(ImpExp_Format::textBytes(limit))
{
}

bool ImpExp_GuardedFile::openForReading()
{
    if (const auto reason = RegularFile::open(m_file, ReadOnly | Unbuffered)) {
        setErrorString(*reason);
        return false;
    }
    return open(ReadOnly | Unbuffered); // the reader has a buffer of its own
}

qint64 ImpExp_GuardedFile::readData(char *data, qint64 maxSize)
{
    if (m_refusal)
        return -1;
    if (m_left <= 0) {
        m_refusal = QStringLiteral("a contact, a text or a comment is larger than %1 bytes").arg(m_limit);
        return -1;
    }
    qint64 accepted = 0;
    while (accepted == 0 && !m_refusal) {
        const qint64 size = m_file.read(data, qMin(maxSize, m_left));
        if (size < 0)
            m_refusal = m_file.errorString();
        if (size <= 0)
            return size;
        accepted = m_scanner.scan(data, size);
        m_refusal = m_scanner.refusal();
    }
    m_left -= accepted;
    return accepted;
}

qint64 ImpExp_GuardedFile::writeData(const char *, qint64)
{
    return -1;
}
