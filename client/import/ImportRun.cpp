// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportRun.h"

#include "client/bus/ContactPages.h"
#include "client/bus/RefusalText.h"
#include "client/text/ContactText.h"
#include "client/text/Terminal.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"

#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>

/// A contact on its way to the directory.
struct ImportRun::Sending
{
    RefusedCard identity;
    Contact contact;
    QStringList unreachable;
    bool isUpdate = false;
    PhotoFile photo = {};

    QString refusal(int code) const
    {
        return isUpdate ? RefusalText::ofModify(code, contact) : RefusalText::ofCreate(code, contact);
    }
};

ImportRun::ImportRun(const DirectoryService &directory, PhotoFolder &photos, Duplicates duplicates, bool isTrial)
    : m_directory(directory)
    , m_photos(photos)
    , m_duplicates(duplicates)
    , m_requestId(DirectoryService::newRequestId())
{
    m_report.isTrial = isTrial;
}

/// Who is there already. Without knowing that nobody is created.
void ImportRun::lookAround()
{
    if (m_isAwake || m_duplicates == Duplicates::Add)
        return;
    try {
        for (const Contact &contact : contactsOfType(m_directory, ContactType::Local))
            m_known.add(contact, contact.contactId);
        m_isAwake = true;
    } catch (const CommandFailure &failure) {
        stop(failure);
    }
}

bool ImportRun::read(QIODevice &device, const QString &file, qint64 size)
{
    Source source{device, VCardSplitter(device), file, size};
    QElapsedTimer timer;
    timer.start();
    m_source = &source;
    lookAround();
    fill();
    if (m_inFlight > 0)
        m_loop.exec();
    m_source = nullptr;
    m_report.milliseconds += timer.elapsed();
    m_progress.clear();
    return source.cards > 0 || m_stopped;
}

int ImportRun::settledCards() const
{
    return m_report.created + m_report.updated + m_report.skipped + int(m_report.refused.size());
}

/// Keeps as many calls in flight as there may be; ends the loop when there is nothing left to wait for.
void ImportRun::fill()
{
    while (m_inFlight < callsInFlight && !m_stopped && !m_source->atEnd) {
        const std::optional<RawCard> card = m_source->splitter.next();
        if (card)
            takeCard(*card);
        else
            m_source->atEnd = true;
    }
    m_progress.show(m_source->device.pos(), m_source->size, settledCards());
    if (m_inFlight == 0)
        m_loop.quit();
}

void ImportRun::takeCard(const RawCard &card)
{
    ++m_source->cards;
    if (card.fault)
        return refuse({m_source->file, card.number, {}, {}}, *card.fault);
    const VCardReader::Result result = VCardReader::read(card.text);
    if (result.refusal)
        return refuse({m_source->file, card.number, {}, {}}, *result.refusal);
    m_report.leaveOut(result.leftOut);
    takeContact({{m_source->file, card.number, ContactText::displayName(result.contact), {}},
                 result.contact,
                 result.unreachable},
                result.picture);
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

void ImportRun::send(Sending sending, const QByteArray &picture)
{
    tellUnreachable(sending);
    if (m_report.isTrial) {
        ++(sending.isUpdate ? m_report.updated : m_report.created);
        return;
    }
    sending.photo = putPhoto(sending.identity, picture);
    if (!sending.photo.path().isEmpty())
        sending.contact.photo = sending.photo.path();
    ++m_inFlight;
    const QDBusPendingCall call = sending.isUpdate ? m_directory.modifyAsync(m_requestId, sending.contact)
                                                   : m_directory.createAsync(m_requestId, sending.contact);
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    const auto sent = std::make_shared<Sending>(std::move(sending));
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, sent](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        --m_inFlight;
        settle(*sent, finished->reply());
        fill();
    });
}

/// None when there is no picture, and when it cannot be kept; the contact is created all the same.
PhotoFile ImportRun::putPhoto(const RefusedCard &card, const QByteArray &picture)
{
    if (picture.isEmpty())
        return {};
    try {
        // At its start, which a call may bring about, the directory removes photos that no contact names.
        if (!m_isAwake)
            m_directory.byId({});
        m_isAwake = true;
        return m_photos.put(picture);
    } catch (const CommandFailure &failure) {
        reduce(m_report.withoutPhoto, card, QStringLiteral("the photo is left out: %1").arg(failure.text()));
        return {};
    }
}

void ImportRun::settle(Sending &sending, const QDBusMessage &reply)
{
    try {
        const int code = BusSession::valueOf<int>(ModuleName::directory, reply);
        if (code == ResultCode::done) {
            sending.photo.keep();
            ++(sending.isUpdate ? m_report.updated : m_report.created);
            return;
        }
        m_known.forget(sending.contact);
        refuse(sending.identity, sending.refusal(code));
        if (!sending.isUpdate && RefusalText::isFinal(code))
            stop({ExitCode::Refused, sending.refusal(code)});
    } catch (const CommandFailure &failure) {
        const bool mayBeDone = failure.code() == ExitCode::NoAnswer;
        if (mayBeDone)
            sending.photo.keep();
        const QString maybe = sending.isUpdate ? QStringLiteral("; it may have been changed")
                                               : QStringLiteral("; it may have been created");
        refuse(sending.identity, failure.text() + (mayBeDone ? maybe : QString()));
        if (failure.code() != ExitCode::Refused)
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
