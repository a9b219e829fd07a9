// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportSending.h"

#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"

#include <QDBusPendingCallWatcher>

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
    else
        m_known.forget(sending.contact);
    const QString maybe =
        sending.isUpdate ? QStringLiteral("; it may have been changed") : QStringLiteral("; it may have been created");
    refuse(sending.identity, failure.text() + (mayBeDone ? maybe : QString()));
    if (failure.code() != ExitCode::Refused)
        stop(failure);
}
