// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportRun.h"

#include "client/bus/RefusalText.h"
#include "client/text/ContactText.h"
#include "client/text/Terminal.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"

#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>

ImportRun::ImportRun(const DirectoryService &directory, PhotoFolder &photos)
    : m_directory(directory)
    , m_photos(photos)
    , m_requestId(DirectoryService::newRequestId())
{
}

bool ImportRun::read(QIODevice &device, const QString &file, qint64 size)
{
    Source source{device, VCardSplitter(device), file, size};
    QElapsedTimer timer;
    timer.start();
    m_source = &source;
    fill();
    if (m_inFlight > 0)
        m_loop.exec();
    m_source = nullptr;
    m_report.milliseconds += timer.elapsed();
    m_progress.clear();
    return source.cards > 0;
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
    m_progress.show(m_source->device.pos(), m_source->size, m_report.created + int(m_report.refused.size()));
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
    send(card, result);
}

void ImportRun::send(const RawCard &card, const VCardReader::Result &result)
{
    ++m_inFlight;
    Contact contact = result.contact;
    const RefusedCard identity{m_source->file, card.number, ContactText::displayName(contact), {}};
    const auto photo = std::make_shared<PhotoFile>(putPhoto(identity, result.picture));
    if (!photo->path().isEmpty())
        contact.photo = photo->path();
    auto *watcher = new QDBusPendingCallWatcher(m_directory.createAsync(m_requestId, contact), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, identity, contact, photo](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                --m_inFlight;
                settle(identity, contact, *photo, finished->reply());
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
        RefusedCard withReason = card;
        withReason.reason = QStringLiteral("the photo is left out: %1").arg(failure.text());
        m_report.withoutPhoto.append(withReason);
        m_progress.clear();
        Q_EMIT photoLeftOut(withReason);
        return {};
    }
}

void ImportRun::settle(const RefusedCard &card, const Contact &contact, PhotoFile &photo, const QDBusMessage &reply)
{
    try {
        const int code = BusSession::valueOf<int>(ModuleName::directory, reply);
        if (code == ResultCode::done) {
            photo.keep();
            ++m_report.created;
            return;
        }
        refuse(card, RefusalText::ofCreate(code, contact));
        if (RefusalText::isFinal(code))
            stop({ExitCode::Refused, RefusalText::ofCreate(code, contact)});
    } catch (const CommandFailure &failure) {
        const bool mayBeDone = failure.code() == ExitCode::NoAnswer;
        if (mayBeDone)
            photo.keep();
        refuse(card, failure.text() + (mayBeDone ? QStringLiteral("; it may have been created") : QString()));
        if (failure.code() != ExitCode::Refused)
            stop(failure);
    }
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
