// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportRun.h"

#include "client/bus/ContactPages.h"
#include "client/import/ImportSending.h"
#include "client/text/Terminal.h"

#include <QElapsedTimer>

#include <utility>

ImportRun::ImportRun(const BusSession &bus, PhotoFolder &photos, Duplicates duplicates, bool isTrial)
    : m_bus(bus)
    , m_directory(bus)
    , m_photos(photos)
    , m_duplicates(duplicates)
    , m_requestId(DirectoryService::newRequestId())
{
    m_report.isTrial = isTrial;
}

/// Who is there already, and what comes. Without knowing that nobody is created.
void ImportRun::lookAround()
{
    try {
        if (!m_creation)
            m_creation = std::make_unique<ListCreation>(m_bus);
        if (m_isAwake || m_duplicates == Duplicates::Add)
            return;
        for (const Contact &contact : contactsOfType(m_directory, ContactType::Local))
            m_known.add(contact, contact.contactId);
        m_isAwake = true;
    } catch (const CommandFailure &failure) {
        stop(failure);
    }
}

bool ImportRun::read(ImportSource &source)
{
    QElapsedTimer timer;
    timer.start();
    m_source = &source;
    m_cards = 0;
    m_atEnd = false;
    lookAround();
    fill();
    if (m_underWay > 0)
        m_loop.exec();
    m_source = nullptr;
    m_report.milliseconds += timer.elapsed();
    m_progress.clear();
    return m_cards > 0 || m_stopped;
}

int ImportRun::settledCards() const
{
    return m_report.created + m_report.updated + m_report.skipped + int(m_report.refused.size());
}

/// Keeps as many contacts under way as there may be; ends the loop when there is nothing left to wait for.
void ImportRun::fill()
{
    while (!m_stopped && !m_again.isEmpty() && m_alone < mostAlone)
        sendAlone(m_again.takeFirst());
    while (m_underWay < mostUnderWay && !m_stopped && !m_atEnd) {
        if (const std::optional<ImportCard> card = m_source->next())
            takeCard(*card);
        else
            m_atEnd = true;
    }
    if (m_stopped)
        dropWaiting();
    else if (m_atEnd)
        sendList();
    m_progress.show(m_source->done(), m_source->total(), QStringLiteral("%1 cards").arg(settledCards()));
    if (m_underWay == 0)
        m_loop.quit();
}

/// What was not created and will not be tried.
void ImportRun::dropWaiting()
{
    const int waiting = int(m_list.size() + m_again.size());
    m_underWay -= waiting;
    m_report.notTried += waiting;
    m_list.clear();
    m_again.clear();
}

void ImportRun::takeCard(const ImportCard &card)
{
    ++m_cards;
    if (!card.identity.reason.isEmpty())
        return refuse(card.identity, card.identity.reason);
    m_report.leaveOut(card.leftOut);
    takeContact({card.identity, card.contact, card.unreachable}, card.picture);
}

void ImportRun::takeContact(Sending sending, const QByteArray &picture)
{
    const bool adds = m_duplicates == Duplicates::Add;
    const std::optional<QString> id = adds ? std::nullopt : m_known.find(sending.contact);
    if (!id) {
        if (!adds)
            m_known.add(sending.contact, {});
        return send(std::move(sending), picture);
    }
    if (m_duplicates == Duplicates::Skip || id->isEmpty()) {
        ++m_report.skipped;
        return;
    }
    sending.contact.contactId = *id;
    takeKnown(std::move(sending), picture);
}

/// The contact is updated, unless the card tells nothing new.
void ImportRun::takeKnown(Sending sending, const QByteArray &picture)
{
    try {
        const std::optional<Contact> stored = m_directory.byId(sending.contact.contactId);
        if (stored) {
            sending.contact = merged(*stored, sending.contact);
            sending.isUpdate = true;
        }
        if (stored && sending.contact == *stored && picture.isEmpty())
            ++m_report.skipped;
        else
            send(std::move(sending), picture);
    } catch (const CommandFailure &failure) {
        refuse(sending.identity, failure.text());
        stop(failure);
    }
}

void ImportRun::tellUnreachable(const Sending &sending)
{
    for (const QString &number : sending.unreachable)
        reduce(m_report.unreachable, sending.identity,
               QStringLiteral("no call finds %1: the five fields for numbers are taken").arg(number));
}

void ImportRun::reduce(QList<RefusedCard> &list, RefusedCard card, const QString &reason)
{
    card.reason = reason;
    list.append(card);
    m_progress.clear();
    Q_EMIT cardReduced(card);
}

void ImportRun::refuse(RefusedCard card, const QString &reason)
{
    card.reason = reason;
    m_report.refused.append(card);
    m_progress.clear();
    Q_EMIT cardRefused(card);
}

void ImportRun::stop(const CommandFailure &failure)
{
    if (!m_stopped)
        m_stopped = failure;
}

void ImportRun::interrupt()
{
    stop({ExitCode::Refused, QStringLiteral("interrupted")});
}

#include "moc_ImportRun.cpp"
