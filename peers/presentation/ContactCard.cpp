// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactCard.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/DirectorySearch.h"
#include "peers/presentation/ShownText.h"
#include "platform/records/ContactIds.h"
#include "platform/records/ContactNumbers.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"

#include <utility>

namespace {

constexpr QLatin1String fax("fax");
constexpr qint64 bounce = 1000; ///< ms

QVariantMap line(QLatin1String kind, const QString &value)
{
    return {{QStringLiteral("kind"), kind}, {QStringLiteral("value"), value}};
}

} // namespace

ContactCard::ContactCard(ModuleCalls &calls, DirectorySearch &search)
    : m_calls(calls)
    , m_search(search)
{
    connect(&m_search, &DirectorySearch::completed, this, [this] {
        if (std::exchange(m_awaitsSearch, false))
            read(Place::Results);
    });
}

void ContactCard::open(const QString &contactId)
{
    if (contactId.isEmpty())
        return;
    m_wanted = contactId;
    m_awaitsSearch = m_isSearchedAgain = false;
    read(Place::Phone); // copies of the company's contacts are there, too
}

void ContactCard::read(Place place)
{
    if (place == Place::Phone)
        m_calls.ask<ListContact>(this, ModuleName::directory, "getContactById", {m_wanted},
                                 [this, id = m_wanted](const std::optional<ListContact> &contacts) {
                                     if (id == m_wanted)
                                         take(Place::Phone, contacts);
                                 });
    else
        m_calls.ask<Contact>(this, ModuleName::directory, "getContactFromSearch", {m_search.id(), m_wanted},
                             [this, id = m_wanted](const std::optional<Contact> &contact) {
                                 if (id != m_wanted)
                                     return;
                                 const bool isNobody = contact && contact->contactId.isEmpty();
                                 take(Place::Results, isNobody  ? ListContact()
                                                      : contact ? std::optional(ListContact{*contact})
                                                                : std::nullopt);
                             });
}

void ContactCard::take(Place place, const std::optional<ListContact> &contacts)
{
    if (!contacts)
        Q_EMIT unreachable(); // a card that is open stays
    else if (!contacts->isEmpty())
        show(contacts->first());
    else
        takeNobody(place);
}

void ContactCard::takeNobody(Place place)
{
    if (place == Place::Phone && ContactIds::isRemote(m_wanted)) {
        read(Place::Results);
    } else if (place == Place::Results && !std::exchange(m_isSearchedAgain, true)) {
        m_awaitsSearch = true;
        m_search.recover();
    } else {
        close();
        Q_EMIT missing();
    }
}

void ContactCard::show(const Contact &contact)
{
    m_contact = contact;
    Q_EMIT changed();
    Q_EMIT previewChanged();
}

void ContactCard::close()
{
    m_wanted.clear();
    m_called.clear();
    m_calledLast.clear();
    m_awaitsSearch = false;
    m_contact.reset();
    Q_EMIT changed();
}

void ContactCard::reload()
{
    if (!m_wanted.isEmpty() && !ContactIds::isRemote(m_wanted))
        read(Place::Phone);
}

void ContactCard::call(const QString &number)
{
    // Somebody is impatient, or a key bounces.
    if (number == m_called || (number == m_calledLast && !m_sinceCall.hasExpired(bounce)))
        return;
    m_called = m_calledLast = number;
    m_sinceCall.start();
    m_calls.ask<QStringList>(this, ModuleName::telephony, "extractDialableNumberList", {QStringList(number)},
                             [this, number](const std::optional<QStringList> &dialable) {
                                 if (m_called != number)
                                     return;
                                 m_called.clear();
                                 Q_EMIT callRequested(formOf(dialable, number));
                             });
}

void ContactCard::setPreviewed(bool previewed)
{
    if (!m_contact)
        return;
    const char *const method = previewed ? "addContactToPreview" : "removeContactFromPreview";
    m_calls.ask<int>(this, ModuleName::directory, method, {QString(), m_contact->contactId},
                     [this, previewed, id = m_contact->contactId](std::optional<int> code) {
                         if (code != ResultCode::done && code != ResultCode::nothingToDo)
                             Q_EMIT refused();
                         else if (m_contact && m_contact->contactId == id)
                             m_contact->isPreviewed = previewed;
                         Q_EMIT previewChanged();
                     });
}

const Contact &ContactCard::contact() const
{
    static const Contact none;
    return m_contact ? *m_contact : none;
}

QString ContactCard::displayName() const
{
    return oneLine(contact().displayName());
}

QString ContactCard::company() const
{
    return oneLine(contact().misc.value(QStringLiteral("company")));
}

QString ContactCard::job() const
{
    return oneLine(contact().misc.value(QStringLiteral("job")));
}

QString ContactCard::initials() const
{
    return initialsOf(contact());
}

QUrl ContactCard::photo() const
{
    return ContactPhoto::imageUrl(contact());
}

QVariantList ContactCard::numbers() const
{
    QVariantList lines;
    const QList<ContactNumber> numbers = ContactNumbers::of(contact());
    for (const ContactNumber &number : numbers) {
        if (number.label != fax)
            lines.append(line(number.label, number.value.isEmpty() ? number.canonical : number.value));
    }
    return lines;
}

QVariantList ContactCard::addresses() const
{
    QVariantList lines;
    for (const auto &[kind, value] : {std::pair(fax, contact().fax), std::pair(QLatin1String("email"), contact().email),
                                      std::pair(QLatin1String("personalEmail"), contact().personalEmail),
                                      std::pair(QLatin1String("im"), contact().collaborationId)}) {
        if (!value.isEmpty())
            lines.append(line(kind, value));
    }
    return lines;
}

void ContactCard::takeUpdate(const ListContact &contacts)
{
    for (const Contact &contact : contacts) {
        if (isOpen() && contact.contactId == m_wanted)
            show(contact);
    }
}

void ContactCard::takeDeletion(const QStringList &contactIds)
{
    if (contactIds.contains(m_wanted))
        close();
}

#include "moc_ContactCard.cpp"
