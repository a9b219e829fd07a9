// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/import/ImportSource.h"

/// What became of the photo that a contact had.
struct StoredPhoto
{
    enum class Kind {
        None,
        Address,   ///< from which the directory fetches it
        InFolder,  ///< a file of the phone's photo folder, which stays when a contact names it
        Elsewhere, ///< another file, of which the phone needs a copy
        Missing,
    };

    static StoredPhoto of(const QString &photo);

    Kind kind = Kind::None;
    QString path; ///< where the file is now, or the address; empty when it is missing
};

/// The contacts of a database as an import takes them, with their photos.
class RecoverySource : public ImportSource
{
public:
    /// `file` is what the database is called.
    RecoverySource(const QString &file, const ListContact &contacts);

    std::optional<ImportCard> next() override;
    qint64 done() const override { return m_next; }
    qint64 total() const override { return m_contacts.size(); }

private:
    QString m_file;
    ListContact m_contacts;
    qsizetype m_next = 0;
};
