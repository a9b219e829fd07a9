// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/DirectoryService.h"
#include "client/import/ImportProgress.h"
#include "client/import/ImportReport.h"
#include "client/import/ImportSource.h"
#include "client/import/KnownContacts.h"
#include "client/import/ListCreation.h"
#include "client/photo/PhotoFolder.h"

#include <QEventLoop>
#include <QObject>

#include <memory>
#include <optional>

/// What an import does with a card whose contact is there already.
enum class Duplicates { Skip, Update, Add };

/// Creates a contact for every card of a source, and of further sources after it. Contacts are created in lists, each
/// in one durable write, and two lists are under way at a time, so the directory need not wait for this program nor the
/// other way round. What a list did not create is tried alone, for then the directory tells why. The run stops early
/// when no further card can succeed: the directory is full, read-only, gone or silent. A card whose contact is there
/// (KnownContacts), or came with an earlier card, is skipped, or updates the contact that was there, or makes another
/// contact.
class ImportRun : public QObject
{
    Q_OBJECT

public:
    /// Embedded photos are put into `photos`. A contact that is refused leaves no photo there. Both arguments outlive
    /// this object. With `isTrial` nothing is changed, and the report tells what would be.
    ImportRun(const BusSession &bus, PhotoFolder &photos, Duplicates duplicates, bool isTrial);

    /// Reads the source to its end and returns when every call is answered. False when it holds no card.
    bool read(ImportSource &source);

    const ImportReport &report() const { return m_report; }
    /// Why the run stopped early. None when it did not.
    const std::optional<CommandFailure> &stopped() const { return m_stopped; }

    static constexpr int longestList = 32;
    static constexpr int mostUnderWay = 2 * longestList; ///< contacts
    static constexpr int mostAlone = 8;                  ///< calls of a single contact
    static constexpr qsizetype mostListTexts = 1024 * 1024;

public Q_SLOTS:
    /// No further card is read. What is under way is waited for.
    void interrupt();

Q_SIGNALS:
    void cardRefused(const RefusedCard &card);
    /// The contact comes, but lacks something of the card.
    void cardReduced(const RefusedCard &card);

private:
    void fill();
    void takeCard(const ImportCard &card);
    struct Sending;
    using Waiting = std::shared_ptr<Sending>;

    void lookAround();
    void takeContact(Sending sending, const QByteArray &picture);
    void takeKnown(Sending sending, const QByteArray &picture);
    void send(Sending sending, const QByteArray &picture);
    PhotoFile putPhoto(const RefusedCard &card, const QByteArray &picture);
    void sendAlone(const Waiting &waiting);
    void sendList();
    void dropWaiting();
    void settleList(const QList<Waiting> &list, const ListCreation::Answer &answer);
    void settle(Sending &sending, const QDBusMessage &reply);
    void settleDone(Sending &sending);
    void settleFailed(Sending &sending, const CommandFailure &failure);
    int settledCards() const;
    void tellUnreachable(const Sending &sending);
    void reduce(QList<RefusedCard> &list, RefusedCard card, const QString &reason);
    void refuse(RefusedCard card, const QString &reason);
    void stop(const CommandFailure &failure);

    const BusSession &m_bus;
    DirectoryService m_directory;
    PhotoFolder &m_photos;
    Duplicates m_duplicates;
    KnownContacts m_known;
    QString m_requestId;
    ImportReport m_report;
    ImportProgress m_progress;
    std::optional<CommandFailure> m_stopped;
    ImportSource *m_source = nullptr;
    int m_cards = 0; ///< of the source
    bool m_atEnd = false;
    QEventLoop m_loop;
    std::unique_ptr<ListCreation> m_creation;
    QList<Waiting> m_list;     ///< to be created together
    qsizetype m_listTexts = 0; ///< UTF-16 units in the list
    QList<Waiting> m_again;    ///< what a list did not create
    int m_underWay = 0;        ///< contacts that are not settled
    int m_alone = 0;           ///< of these, those with a call of their own
    bool m_isAwake = false;    ///< the directory has answered
};
