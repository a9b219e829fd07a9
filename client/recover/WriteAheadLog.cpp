// SPDX-License-Identifier: Apache-2.0
#include "client/recover/WriteAheadLog.h"

#include "client/recover/PageFile.h"

#include <QtEndian>

namespace {

// As the file format says: https://www.sqlite.org/fileformat2.html#the_write_ahead_log
constexpr qsizetype logHeaderLength = 32;
constexpr qsizetype frameHeaderLength = 24;
constexpr qsizetype saltLength = 8;
constexpr qsizetype summedOfHeader = 24;
constexpr qsizetype summedOfFrameHeader = 8;
constexpr quint32 logMagic = 0x377f0682; // one more where sums are made of big-endian words

class Sum
{
public:
    explicit Sum(bool isBigEndian)
        : m_isBigEndian(isBigEndian)
    {
    }
    void add(QByteArrayView bytes)
    {
        for (qsizetype place = 0; place + saltLength <= bytes.size(); place += saltLength) {
            m_first += word(bytes, place) + m_second;
            m_second += word(bytes, place + 4) + m_first;
        }
    }
    bool isAt(QByteArrayView bytes, qsizetype place) const
    {
        return BigEndian::read32(bytes, place) == m_first && BigEndian::read32(bytes, place + 4) == m_second;
    }

private:
    quint32 word(QByteArrayView bytes, qsizetype place) const
    {
        const char *at = bytes.data() + place;
        return m_isBigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
    }

    bool m_isBigEndian;
    quint32 m_first = 0;
    quint32 m_second = 0;
};

} // namespace

bool WriteAheadLog::isWhole(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < logHeaderLength)
        return true;
    const QByteArray header = file.read(logHeaderLength);
    Sum sum((BigEndian::read32(header, 0) & 1U) != 0);
    sum.add(QByteArrayView(header).first(summedOfHeader));
    const qint64 pageSize = BigEndian::read32(header, 8);
    constexpr qint64 largestPage = 65536;
    if ((BigEndian::read32(header, 0) & ~1U) != logMagic || !sum.isAt(header, summedOfHeader) || pageSize > largestPage)
        return false;
    bool isAtEnd = false;
    while (file.size() - file.pos() >= frameHeaderLength + pageSize) {
        const QByteArray frame = file.read(frameHeaderLength);
        const QByteArray page = file.read(pageSize);
        if (frame.mid(8, saltLength) != header.mid(16, saltLength)) {
            isAtEnd = true; // the rest was written before the log began anew
            continue;
        }
        sum.add(QByteArrayView(frame).first(summedOfFrameHeader));
        sum.add(page);
        if (isAtEnd || !sum.isAt(frame, 16))
            return false;
    }
    return true;
}
