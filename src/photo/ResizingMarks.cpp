// SPDX-License-Identifier: Apache-2.0
#include "src/photo/ResizingMarks.h"

#include "platform/records/RegularFile.h"
#include "src/photofiles/PhotoFiles.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr qsizetype maxPictures = 256;
constexpr qsizetype stateLength = 40;
constexpr qint64 maxBytes = 16 * 1024;

/// The same as long as the file was not written, and of the same length for every path.
QByteArray stateOf(const QString &path)
{
    const QFileInfo file(path);
    const QString state = QStringLiteral("%1 %2 ").arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch());
    return QCryptographicHash::hash((state + path).toUtf8(), QCryptographicHash::Sha1).toHex();
}

} // namespace

ResizingMarks::ResizingMarks(const QString &path)
    : m_path(path)
{
    QFile file(path);
    if (RegularFile::open(file))
        return;
    m_stored = file.read(maxBytes);
    m_known = m_stored.split('\n');
    m_first = QString::fromUtf8(QByteArray::fromPercentEncoding(m_known.takeFirst()));
    m_known.removeIf([](const QByteArray &state) { return state.size() != stateLength; });
}

bool ResizingMarks::isPassedOver(const QString &photo)
{
    if (m_known.isEmpty())
        return false;
    const QByteArray state = stateOf(photo);
    if (!m_known.contains(state))
        return false;
    m_seen.append(state);
    return true;
}

void ResizingMarks::passOver(const QString &photo)
{
    m_known.append(stateOf(photo));
    m_seen.append(m_known.last());
}

void ResizingMarks::keep(const QString &next)
{
    QByteArrayList lines = next.isEmpty() ? m_seen : m_known;
    lines.remove(0, std::max<qsizetype>(0, lines.size() - maxPictures));
    lines.prepend(next.toUtf8().toPercentEncoding());
    const QByteArray content = lines.join('\n');
    if (content == m_stored)
        return;
    if (content.isEmpty())
        QFile::remove(m_path);
    else
        (void)PhotoFiles::write(m_path, content); // logged; without it the next start begins at the beginning
}
