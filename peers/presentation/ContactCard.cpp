// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactCard.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/DirectorySearch.h"
#include "peers/presentation/Initials.h"
#include "platform/records/ContactIds.h"
#include "platform/records/ContactNumbers.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"

namespace {

QVariantMap line(QLatin1String kind, const QString &value)
{
    return {{QStringLiteral("kind"), kind}, {QStringLiteral("value"), value}};
}

} // namespace

ContactCard::ContactCard(ModuleCalls &calls, const DirectorySearch &search)
    : m_calls(calls)
    , m_search(search)
{
}

void ContactCard::open(const QString &contactId)
{
    m_wanted = contactId;
    if (ContactIds::isRemote(contactId)) {
        m_calls.ask<Contact>(this, ModuleName::directory, "getContactFromSearch", {m_search.id(), contactId},
                             [this, contactId](const std::optional<Contact> &contact) {
                                 if (m_wanted == contactId)
                                     show(contact);
                             });
        return;
    }
    m_calls.ask<ListContact>(this, ModuleName::directory, "getContactById", {contactId},
                             [this, contactId](const std::optional<ListContact> &contacts) {
                                 if (m_wanted == contactId)
                                     show(contacts && !contacts->isEmpty() ? std::optional(contacts->first())
                                                                           : std::nullopt);
                             });
}

void ContactCard::show(const std::optional<Contact> &contact)
{
    if (!contact || contact->contactId.isEmpty()) {
        close();
        Q_EMIT missing();
        return;
    }
    m_contact = contact;
    Q_EMIT changed();
}

void ContactCard::close()
{
    m_wanted.clear();
    m_contact.reset();
    Q_EMIT changed();
}

void ContactCard::reload()
{
    if (!m_wanted.isEmpty() && !ContactIds::isRemote(m_wanted))
        open(m_wanted);
}

void ContactCard::call(const QString &number)
{
    m_calls.ask<QStringList>(this, ModuleName::telephony, "extractDialableNumberList", {QStringList(number)},
                             [this, number](const std::optional<QStringList> &dialable) {
                                 Q_EMIT callRequested(dialable && dialable->size() == 1 ? dialable->first() : number);
                             });
}

void ContactCard::setPreviewed(bool previewed)
{
    if (!m_contact)
        return;
    const char *const method = previewed ? "addContactToPreview" : "removeContactFromPreview";
    m_calls.ask<int>(this, ModuleName::directory, method, {QString(), m_contact->contactId},
                     [this, previewed, id = m_contact->contactId](std::optional<int> code) {
                         if (code == ResultCode::done || code == ResultCode::nothingToDo) {
                             if (m_contact && m_contact->contactId == id)
                                 m_contact->isPreviewed = previewed;
                         } else {
                             Q_EMIT refused(code.value_or(ResultCode::writeFailed));
                         }
                         Q_EMIT changed();
                     });
}

const Contact &ContactCard::contact() const
{
    static const Contact none;
    return m_contact ? *m_contact : none;
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
    for (const ContactNumber &number : numbers)
        lines.append(line(number.label, number.value.isEmpty() ? number.canonical : number.value));
    return lines;
}

QVariantList ContactCard::addresses() const
{
    QVariantList lines;
    for (const auto &[kind, value] : {std::pair(QLatin1String("email"), contact().email),
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
