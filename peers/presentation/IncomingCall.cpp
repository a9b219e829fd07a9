// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/IncomingCall.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/ShownText.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QUuid>

using namespace std::chrono_literals;

IncomingCall::IncomingCall(ModuleCalls &calls)
    : m_calls(calls)
    , m_name(QLatin1String("caller-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(20s); // the directory gives the company 10 s to accept, and 10 s to tell
    connect(&m_limit, &QTimer::timeout, this, [this] { setSearching(false); });
    m_patience.setSingleShot(true);
    m_patience.setInterval(300ms);
    connect(&m_patience, &QTimer::timeout, this, &IncomingCall::lookUpAsItCame);
}

void IncomingCall::ring(const QString &number)
{
    ++m_serial;
    m_isRinging = true;
    m_number = number;
    m_searches = 0;
    setSearching(false);
    show({});
    m_patience.start();
    ask();
}

void IncomingCall::ask()
{
    if (m_isAsking || isWithheld())
        return;
    m_isAsking = true;
    const auto canonized = [this, serial = m_serial, number = m_number](const std::optional<QStringList> &forms) {
        lookUp(serial, formOf(forms, number));
    };
    m_calls.ask<QStringList>(this, ModuleName::telephony, "makeCanonicalNumberListWithoutPrefix",
                             {QStringList(m_number)}, canonized);
}

void IncomingCall::lookUp(int serial, const QString &canonical)
{
    if (serial != m_serial) {
        endLookUp(serial);
        return;
    }
    m_patience.stop();
    m_calls.ask<ListContact>(this, ModuleName::directory, "getLocalContacts", {canonical},
                             [this, serial, canonical](const std::optional<ListContact> &contacts) {
                                 endLookUp(serial);
                                 if (serial != m_serial || !contacts)
                                     return;
                                 m_canonical = canonical;
                                 if (!contacts->isEmpty())
                                     show(contacts->first());
                                 else if (!isKnown() && m_searches == 0)
                                     searchCompany();
                             });
}

/// The name of who calls from a canonical number, which is the form that is looked up, does not wait for a telephony
/// service that is slow or stuck.
void IncomingCall::lookUpAsItCame()
{
    if (isWithheld())
        return;
    m_calls.ask<ListContact>(this, ModuleName::directory, "getLocalContacts", {m_number},
                             [this, serial = m_serial](const std::optional<ListContact> &contacts) {
                                 if (serial == m_serial && !isKnown() && contacts && !contacts->isEmpty())
                                     show(contacts->first());
                             });
}

void IncomingCall::endLookUp(int serial)
{
    m_isAsking = false;
    if (m_isRinging && serial != m_serial)
        ask();
}

void IncomingCall::searchCompany()
{
    setSearching(true);
    m_searchId = QStringLiteral("%1-%2-%3").arg(m_name).arg(m_serial).arg(++m_searches);
    constexpr bool localOnly = false;
    m_calls.ask<int>(this, ModuleName::directory, "startSearchContactByPhoneNumber",
                     {m_searchId, m_canonical, localOnly}, [this, id = m_searchId](std::optional<int> code) {
                         if (!code && id == m_searchId)
                             setSearching(false);
                     });
}

void IncomingCall::setSearching(bool isSearching)
{
    if (isSearching)
        m_limit.start();
    else
        m_limit.stop();
    const bool wasSearching = !m_searchId.isEmpty();
    if (!isSearching)
        m_searchId.clear();
    if (wasSearching != isSearching)
        Q_EMIT searching(isSearching);
}

bool IncomingCall::takeCompletion(const KestinEvent &event)
{
    const QString id = event.argument<QString>(ArgumentName::searchId);
    if (!m_searchId.isEmpty() && id == m_searchId) {
        setSearching(false);
        show(event.argument<Contact>(ArgumentName::contact));
    }
    return id.startsWith(m_name);
}

void IncomingCall::takeOtherCompletion()
{
    constexpr int most = 3;
    if (!m_searchId.isEmpty() && m_searches < most)
        searchCompany();
}

void IncomingCall::lookUpAgain()
{
    if (m_isRinging && !isKnown() && m_searchId.isEmpty())
        ask();
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
    m_patience.stop();
    setSearching(false);
    Q_EMIT changed();
}

bool IncomingCall::isWithheld() const
{
    Contact caller;
    caller.officePhone = m_number;
    return m_number.isEmpty() || caller.isAnonymous();
}

QString IncomingCall::number() const
{
    return oneLine(m_number);
}

QString IncomingCall::displayName() const
{
    return oneLine(m_caller.displayName());
}

QString IncomingCall::company() const
{
    return oneLine(m_caller.misc.value(QStringLiteral("company")));
}

QString IncomingCall::initials() const
{
    return isKnown() ? initialsOf(m_caller) : QStringLiteral("?");
}

QUrl IncomingCall::photo() const
{
    return ContactPhoto::imageUrl(m_caller);
}

#include "moc_IncomingCall.cpp"
