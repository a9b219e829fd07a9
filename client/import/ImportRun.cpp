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

#include <utility>

namespace {

/// UTF-16 units, roughly.
qsizetype textsOf(const Contact &contact)
{
    qsizetype size = 0;
    for (const Contact::TextField &field : Contact::texts)
        size += (contact.*field.value).size();
    for (auto pair = contact.misc.cbegin(); pair != contact.misc.cend(); ++pair)
        size += pair.key().size() + pair->size();
    return size;
}

} // namespace

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

bool ImportRun::read(QIODevice &device, const QString &file, qint64 size)
{
    Source source{device, VCardSplitter(device), file, size};
    QElapsedTimer timer;
    timer.start();
    m_source = &source;
    lookAround();
    fill();
    if (m_underWay > 0)
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

/// Keeps as many contacts under way as there may be; ends the loop when there is nothing left to wait for.
void ImportRun::fill()
{
    while (!m_stopped && !m_again.isEmpty() && m_alone < mostAlone)
        sendAlone(m_again.takeFirst());
    while (m_underWay < mostUnderWay && !m_stopped && !m_source->atEnd) {
        const std::optional<RawCard> card = m_source->splitter.next();
        if (card)
            takeCard(*card);
        else
            m_source->atEnd = true;
    }
    if (m_stopped)
        dropWaiting();
    else if (m_source->atEnd)
        sendList();
    m_progress.show(m_source->device.pos(), m_source->size, settledCards());
    if (m_underWay == 0)
        m_loop.quit();
}

/// What was not created and will not be tried.
void ImportRun::dropWaiting()
{
    m_underWay -= int(m_list.size() + m_again.size());
    m_list.clear();
    m_again.clear();
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
    ++m_underWay;
    const auto waiting = std::make_shared<Sending>(std::move(sending));
    if (waiting->isUpdate || waiting->contact.isAnonymous())
        return sendAlone(waiting);
    m_list.append(waiting);
    m_listTexts += textsOf(waiting->contact);
    if (m_list.size() == longestList || m_listTexts > mostListTexts)
        sendList();
}

void ImportRun::sendAlone(const Waiting &waiting)
{
    ++m_alone;
    const QDBusPendingCall call = waiting->isUpdate ? m_directory.modifyAsync(m_requestId, waiting->contact)
                                                    : m_directory.createAsync(m_requestId, waiting->contact);
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, waiting](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        --m_alone;
        --m_underWay;
        settle(*waiting, finished->reply());
        fill();
    });
}

void ImportRun::sendList()
{
    const QList<Waiting> list = std::exchange(m_list, {});
    m_listTexts = 0;
    if (list.size() == 1)
        return sendAlone(list.first());
    ListContact contacts;
    for (const Waiting &waiting : list)
        contacts.append(waiting->contact);
    if (!list.isEmpty())
        m_creation->create(contacts, [this, list](const ListCreation::Answer &answer) {
            settleList(list, answer);
            fill();
        });
}

void ImportRun::settleList(const QList<Waiting> &list, const ListCreation::Answer &answer)
{
    for (qsizetype place = 0; place < list.size(); ++place) {
        const Waiting &waiting = list.at(place);
        if (!answer.isCreated.at(place) && !answer.failure) {
            m_again.append(waiting);
            continue;
        }
        --m_underWay;
        if (answer.isCreated.at(place))
            settleDone(*waiting);
        else
            settleFailed(*waiting, *answer.failure);
    }
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
        if (code == ResultCode::done)
            return settleDone(sending);
        m_known.forget(sending.contact);
        refuse(sending.identity, sending.refusal(code));
        if (!sending.isUpdate && RefusalText::isFinal(code))
            stop({ExitCode::Refused, sending.refusal(code)});
    } catch (const CommandFailure &failure) {
        settleFailed(sending, failure);
    }
}

void ImportRun::settleDone(Sending &sending)
{
    sending.photo.keep();
    ++(sending.isUpdate ? m_report.updated : m_report.created);
}

void ImportRun::settleFailed(Sending &sending, const CommandFailure &failure)
{
    const bool mayBeDone = failure.code() == ExitCode::NoAnswer;
    if (mayBeDone)
        sending.photo.keep();
    const QString maybe =
        sending.isUpdate ? QStringLiteral("; it may have been changed") : QStringLiteral("; it may have been created");
    refuse(sending.identity, failure.text() + (mayBeDone ? maybe : QString()));
    if (failure.code() != ExitCode::Refused)
        stop(failure);
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
