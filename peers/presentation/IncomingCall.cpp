// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/IncomingCall.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/Initials.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QUuid>

IncomingCall::IncomingCall(ModuleCalls &calls)
    : m_calls(calls)
    , m_name(QLatin1String("caller-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

void IncomingCall::ring(const QString &number)
{
    const int serial = ++m_serial;
    m_isRinging = true;
    m_number = number;
    show({});
    if (isWithheld())
        return;
    m_calls.ask<QStringList>(this, ModuleName::telephony, "makeCanonicalNumberListWithoutPrefix", {QStringList(number)},
                             [this, serial, number](const std::optional<QStringList> &forms) {
                                 if (serial == m_serial)
                                     lookUp(forms && forms->size() == 1 ? forms->first() : number);
                             });
}

void IncomingCall::lookUp(const QString &canonical)
{
    m_calls.ask<ListContact>(this, ModuleName::directory, "getLocalContacts", {canonical},
                             [this, serial = m_serial, canonical](const std::optional<ListContact> &contacts) {
                                 if (serial != m_serial)
                                     return;
                                 if (contacts && !contacts->isEmpty())
                                     show(contacts->first());
                                 else if (contacts)
                                     searchCompany(canonical);
                             });
}

void IncomingCall::searchCompany(const QString &canonical)
{
    constexpr bool localOnly = false;
    m_calls.ask<int>(this, ModuleName::directory, "startSearchContactByPhoneNumber",
                     {QStringLiteral("%1-%2").arg(m_name).arg(m_serial), canonical, localOnly},
                     [](const std::optional<int> &) {});
}

void IncomingCall::takeCompletion(const KestinEvent &event)
{
    if (m_isRinging &&
        event.argument<QString>(ArgumentName::searchId) == QStringLiteral("%1-%2").arg(m_name).arg(m_serial))
        show(event.argument<Contact>(ArgumentName::contact));
}

void IncomingCall::show(const Contact &caller)
{
    m_caller = caller;
    Q_EMIT changed();
}

void IncomingCall::dismiss()
{
    ++m_serial;
    m_isRinging = false;
    Q_EMIT changed();
}

bool IncomingCall::isWithheld() const
{
    Contact caller;
    caller.officePhone = m_number;
    return m_number.isEmpty() || caller.isAnonymous();
}

QString IncomingCall::initials() const
{
    return isKnown() ? initialsOf(m_caller) : QStringLiteral("?");
}

QUrl IncomingCall::photo() const
{
    return ContactPhoto::imageUrl(m_caller);
}
