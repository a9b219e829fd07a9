// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportRun.h"

#include "client/bus/RefusalText.h"
#include "client/text/ContactText.h"
#include "client/text/Printable.h"
#include "client/vcard/VCardReader.h"

#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>

ImportRun::ImportRun(const DirectoryService &directory)
    : m_directory(directory)
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
    if (!card.fault.isEmpty())
        return refuse({m_source->file, card.number, {}, {}}, card.fault);
    const VCardReader::Result result = VCardReader::read(card.text);
    if (!result.refusal.isEmpty())
        return refuse({m_source->file, card.number, {}, {}}, result.refusal);
    send(card, result.contact);
}

void ImportRun::send(const RawCard &card, const Contact &contact)
{
    ++m_inFlight;
    const RefusedCard identity{m_source->file, card.number, ContactText::displayName(contact), {}};
    auto *watcher = new QDBusPendingCallWatcher(m_directory.createAsync(m_requestId, contact), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, identity, contact](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                --m_inFlight;
                settle(identity, contact, finished->reply());
                fill();
            });
}

void ImportRun::settle(const RefusedCard &card, const Contact &contact, const QDBusMessage &reply)
{
    try {
        const int code = BusSession::valueOf<int>(DirectoryService::module, reply);
        if (code == 0) {
            ++m_report.created;
            return;
        }
        refuse(card, RefusalText::ofCreate(code, contact));
        if (RefusalText::isFinal(code))
            stop({ExitCode::Refused, RefusalText::ofCreate(code, contact)});
    } catch (const CommandFailure &failure) {
        const bool mayBeDone = failure.code() == ExitCode::NoAnswer;
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
