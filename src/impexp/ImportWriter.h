// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/LongWork.h"
#include "src/impexp/ImportPhotos.h"
#include "src/numbers/CanonicalNumbers.h"

#include <QList>

class DaoContact;
class ImportErrors;

/// Writes the contacts of an import, a few hundred at a time, so that their canonical numbers are asked for in one
/// call: while some are written, telephony works on the numbers of the next. A contact that the database refuses is an
/// error of its own.
class ImportWriter
{
public:
    struct Entry
    {
        Contact contact;
        bool isNew = false;
        bool isChanged = true; ///< false: only the log tells of it, for flash wears
        bool needsNumbers = false;
        ImportPhotos::Result photo = ImportPhotos::Same;
        QString photoBefore; ///< differs from the contact's when that has changed
    };

    /// What an import ends with when the database fails as a whole.
    static const QString databaseFailure;

    ImportWriter(DaoContact &dao, CanonicalNumbers &numbers, ImportPhotos &photos, ImportErrors &errors,
                 LongWork &longWork);

    /// Takes a contact, which waits to be written.
    void add(const Entry &entry);
    /// Whether so much waits that `write` is due.
    bool isFull() const;
    /// Has telephony work on what waits, and writes what it was given before. Throws ImpExp_FatalException when the
    /// database has given up the transaction.
    Work write();
    /// Writes all that was taken. Throws as `write`.
    Work flush();

    /// At least one contact was written.
    bool hasWritten() const { return m_hasWritten; }

private:
    struct Asked
    {
        QList<Entry> entries;
        std::optional<AskedNumbers> numbers; ///< none when no entry needs any
    };

    static ListContact inNeedOfNumbers(const QList<Entry> &entries);
    Asked askForNumbers();
    static void fillNumbers(Asked &asked);
    void write(Entry &entry);
    bool store(Entry &entry);

    DaoContact &m_dao;
    CanonicalNumbers &m_numbers;
    NumbersOfMany m_pause; ///< a telephony that stays silent is not asked for the rest of this import
    ImportPhotos &m_photos;
    ImportErrors &m_errors;
    LongWork &m_longWork;
    Asked m_asked;          ///< are written next
    QList<Entry> m_waiting; ///< behind these
    qsizetype m_waitingSize = 0;
    bool m_hasWritten = false;
};
