// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/ImportErrors.h"

namespace {

/// An id as a person can still read it: a hostile one may have the length of a page, and there may be thousands.
QString readable(const QString &duid)
{
    constexpr qsizetype longest = 256;
    return KestinLogger::shown(duid.size() <= longest ? duid : duid.first(longest) + QChar(0x2026));
}

} // namespace

void ImportErrors::cannotImport(const QString &duid, const QString &reason)
{
    add("Can't import contact with duid=\"%1\" because %2", readable(duid), reason);
}

void ImportErrors::notStored(const QString &duid)
{
    add("The imported contact with duid=\"%1\" is not stored into the local database.", readable(duid));
}

void ImportErrors::notLocal(const QString &duid)
{
    add("The imported contact with duid=\"%1\" is not a local one. It's not possible to modify it!", readable(duid));
}

void ImportErrors::noImage(const QString &contactId)
{
    add(noPhotoFile, contactId);
}

QString ImportErrors::lines() const
{
    constexpr qsizetype largest = 1024 * 1024; // characters
    QStringList first;
    qsizetype size = 0;
    for (const QString &text : m_texts) {
        size += text.size();
        if (size > largest)
            return (first << QStringLiteral("and %1 more").arg(m_texts.size() - first.size())).join(QLatin1Char('\n'));
        first.append(text);
    }
    return first.join(QLatin1Char('\n'));
}
