// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinLogger.h"

#include <QStringList>

/// Collects what kept single contacts from being imported; each is logged as a warning.
class ImportErrors
{
public:
    void cannotImport(const QString &duid, const QString &reason);
    void notStored(const QString &duid);
    void notLocal(const QString &duid);
    /// Of a contact that is imported without its photo.
    void noImage(const QString &contactId);

    static constexpr const char *noPhotoFile = "Can't create the photo file for contact : %1";

    const QStringList &texts() const { return m_texts; }
    /// All texts, each on a line of its own; of very many the first, for a message of the bus is bounded, and how many
    /// more.
    QString lines() const;

private:
    template <typename... Arguments>
    void add(const char *pattern, const Arguments &...arguments)
    {
        KestinLogger::warning(pattern, arguments...);
        m_texts.append(QString::fromUtf8(pattern).arg(arguments...));
    }

    QStringList m_texts;
};
