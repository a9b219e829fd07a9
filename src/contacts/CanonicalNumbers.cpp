// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/CanonicalNumbers.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "src/dao/DaoContact.h"
#include "src/dao/Transaction.h"

#include <QDBusReply>
#include <QHash>

#include <array>

namespace {

const QString telephony = QStringLiteral("Telephony");

struct Number
{
    QString Contact::*raw;
    QString Contact::*canonical;
};

// In the order in which the telephony service is given them and answers.
constexpr std::array numbers{
    Number{&Contact::officePhone, &Contact::officePhoneCan},
    Number{&Contact::fax, &Contact::faxCan},
    Number{&Contact::personalMobile, &Contact::personalMobileCan},
    Number{&Contact::personalHome, &Contact::personalHomeCan},
    Number{&Contact::personalFax, &Contact::personalFaxCan},
};

bool isComplete(const QStringList &answer)
{
    return answer.size() >= qsizetype(numbers.size());
}

QStringList rawNumbers(const Contact &contact)
{
    QStringList result;
    for (const Number &number : numbers)
        result.append(contact.*number.raw);
    return result;
}

void setNumbers(Contact &contact, QString Contact::*Number::*kind, const QStringList &values)
{
    for (std::size_t i = 0; i < numbers.size(); ++i)
        contact.*(numbers[i].*kind) = values.at(qsizetype(i));
}

} // namespace

CanonicalNumbers::CanonicalNumbers(RemoteCaller &caller, DaoContact &dao)
    : m_caller(caller)
    , m_dao(dao)
{
}

void CanonicalNumbers::extractDialableNumberList(Contact &contact)
{
    try {
        const QDBusReply<QStringList> reply =
            m_caller.syncRemoteCall(telephony, QStringLiteral("extractDialableNumberList"), {rawNumbers(contact)});
        if (reply.isValid() && isComplete(reply.value()))
            setNumbers(contact, &Number::raw, reply.value());
    } catch (const KestinException &exception) {
        KestinLogger::error("convertMultipleNumbers failed to call Telephony: %1", exception.message());
    } catch (...) {
        KestinLogger::error("convertMultipleNumbers failed to call Telephony (unknown exception");
    }
}

void CanonicalNumbers::makeCanonicalNumberListWithoutPrefix(Contact &contact)
{
    setNumbers(contact, &Number::canonical, rawNumbers(contact));
    try {
        const QDBusReply<QStringList> reply = m_caller.syncRemoteCall(
            telephony, QStringLiteral("makeCanonicalNumberListWithoutPrefix"), {rawNumbers(contact)});
        if (reply.isValid() && isComplete(reply.value()))
            setNumbers(contact, &Number::canonical, reply.value());
    } catch (const KestinException &exception) {
        KestinLogger::error("fillContactCanonicalNumbers failed to call Telephony %1", exception.message());
    } catch (...) {
        KestinLogger::error("fillContactCanonicalNumbers failed to call Telephony (unknown exception");
    }
}

QMapQStringQStringList CanonicalNumbers::askForMany(const QMapQStringQStringList &rawNumbers)
{
    try {
        const QDBusReply<QMapQStringQStringList> reply = m_caller.syncRemoteCall(
            telephony, QStringLiteral("makeCanonicalNumberMapWithoutPrefix"), {QVariant::fromValue(rawNumbers)});
        if (reply.isValid())
            return reply.value();
        KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony %1", reply.error().message());
    } catch (const KestinException &exception) {
        KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony %1", exception.message());
    } catch (...) {
        KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony (unknown exception");
    }
    return {};
}

void CanonicalNumbers::makeCanonicalNumbers(ListContact &contacts)
{
    QMapQStringQStringList request;
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        const QStringList raw = rawNumbers(contacts.at(i));
        setNumbers(contacts[i], &Number::canonical, raw);
        request.insert(QString::number(i), raw);
    }
    const QMapQStringQStringList answer = askForMany(request);
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        const QStringList canonical = answer.value(QString::number(i));
        if (isComplete(canonical))
            setNumbers(contacts[i], &Number::canonical, canonical);
    }
}

void CanonicalNumbers::fillContactsCanonicalNumbers()
{
    const ListContact all = m_dao.getAllContact();
    if (all.isEmpty()) {
        KestinLogger::debug("fillContactsCanonicalNumbers No contact to canonize");
        return;
    }
    QHash<QString, Contact> contacts;
    QMapQStringQStringList request;
    for (const Contact &contact : all) {
        contacts.insert(contact.contactId, contact);
        request.insert(contact.contactId, rawNumbers(contact));
    }
    const QMapQStringQStringList answer = askForMany(request);
    if (answer.isEmpty())
        return;
    Transaction transaction(m_dao.connection());
    for (auto entry = answer.cbegin(); entry != answer.cend(); ++entry) {
        const auto contact = contacts.constFind(entry.key());
        if (contact == contacts.cend())
            KestinLogger::error("fillContactsCanonicalNumbers Unknown contactID %1", entry.key());
        else if (isComplete(entry.value()) && !store(*contact, entry.value()))
            return;
    }
    transaction.commit();
}

bool CanonicalNumbers::store(Contact contact, const QStringList &canonicalNumbers)
{
    const Contact before = contact;
    setNumbers(contact, &Number::canonical, canonicalNumbers);
    if (contact == before)
        return true; // nothing to write, and flash wears
    return m_dao.updateContact(contact) == 0 && m_dao.misc().replacePairs(contact.contactId, contact.misc) == 0;
}
