// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/import/ImportProgress.h"
#include "client/import/ImportReport.h"
#include "client/import/KnownContacts.h"
#include "client/photo/PhotoFolder.h"
#include "client/vcard/VCardReader.h"
#include "client/vcard/VCardSplitter.h"

#include <QEventLoop>
#include <QObject>

#include <optional>

/// What an import does with a card whose contact is there already.
enum class Duplicates { Skip, Update, Add };

/// Creates a contact for every card of a file, and of further files after it. Some calls are in flight at a time, so
/// the directory need not wait for this program nor the other way round. The run stops early when no further card can
/// succeed: the directory is full, read-only, gone or silent. A card whose contact is there (KnownContacts), or came
/// with an earlier card, is skipped, or updates the contact that was there, or makes another contact.
class ImportRun : public QObject
{
    Q_OBJECT

public:
    /// Embedded photos are put into `photos`. A contact that is refused leaves no photo there. Both arguments outlive
    /// this object. With `isTrial` nothing is changed, and the report tells what would be.
    ImportRun(const DirectoryService &directory, PhotoFolder &photos, Duplicates duplicates, bool isTrial);

    /// Reads the device to its end and returns when every call is answered. False when the device cannot be read or
    /// holds no card. `file` is what the file is called. `size` is its bytes, 0 when not known.
    bool read(QIODevice &device, const QString &file, qint64 size);

    const ImportReport &report() const { return m_report; }
    /// Why the run stopped early. None when it did not.
    const std::optional<CommandFailure> &stopped() const { return m_stopped; }

    static constexpr int callsInFlight = 8;

public Q_SLOTS:
    /// No further card is read. The calls in flight are waited for.
    void interrupt();

Q_SIGNALS:
    void cardRefused(const RefusedCard &card);
    /// The contact comes, but lacks something of the card.
    void cardReduced(const RefusedCard &card);

private:
    struct Source
    {
        QIODevice &device;
        VCardSplitter splitter;
        QString file;
        qint64 size;
        int cards = 0;
        bool atEnd = false;
    };

    void fill();
    void takeCard(const RawCard &card);
    struct Sending;

    void lookAround();
    void takeContact(Sending sending, const QByteArray &picture);
    void takeKnown(Sending sending, const QByteArray &picture);
    void send(Sending sending, const QByteArray &picture);
    PhotoFile putPhoto(const RefusedCard &card, const QByteArray &picture);
    void settle(Sending &sending, const QDBusMessage &reply);
    int settledCards() const;
    void tellUnreachable(const Sending &sending);
    void reduce(QList<RefusedCard> &list, RefusedCard card, const QString &reason);
    void refuse(RefusedCard card, const QString &reason);
    void stop(const CommandFailure &failure);

    const DirectoryService &m_directory;
    PhotoFolder &m_photos;
    Duplicates m_duplicates;
    KnownContacts m_known;
    QString m_requestId;
    ImportReport m_report;
    ImportProgress m_progress;
    std::optional<CommandFailure> m_stopped;
    Source *m_source = nullptr;
    QEventLoop m_loop;
    int m_inFlight = 0;
    bool m_isAwake = false; ///< the directory has answered
};
