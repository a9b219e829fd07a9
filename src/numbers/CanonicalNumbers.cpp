// SPDX-License-Identifier: Apache-2.0
#include "src/numbers/CanonicalNumbers.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"

#include <QDBusReply>

#include <algorithm>
#include <array>
#include <type_traits>

namespace {

const QString manyNumbers = QStringLiteral("makeCanonicalNumberMapWithoutPrefix");

struct Number
{
    QString Contact::*raw;
    QString Contact::*canonical;
};

// In the order in which the telephony service is given them and answers.
constexpr std::array numberFields{
    Number{&Contact::officePhone, &Contact::officePhoneCan},
    Number{&Contact::fax, &Contact::faxCan},
    Number{&Contact::personalMobile, &Contact::personalMobileCan},
    Number{&Contact::personalHome, &Contact::personalHomeCan},
    Number{&Contact::personalFax, &Contact::personalFaxCan},
};

bool isComplete(const QStringList &answer)
{
    return answer.size() >= qsizetype(numberFields.size());
}

void setNumbers(Contact &contact, QString Contact::*Number::*kind, const QStringList &values)
{
    for (std::size_t i = 0; i < numberFields.size(); ++i)
        contact.*(numberFields[i].*kind) = values.at(qsizetype(i));
}

/// Whether nobody answered in time. One who left the bus during the call is reported by the bus itself, and at once.
bool isSilence(const QDBusMessage &reply)
{
    const QDBusError::ErrorType error = QDBusError(reply).type();
    return (error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut) &&
           reply.service() != QLatin1String("org.freedesktop.DBus");
}

/// Makes a call for many contacts; nothing when it cannot be made.
template <typename Call>
std::optional<std::invoke_result_t<Call>> attempted(Call call)
{
    try {
        return call();
    } catch (const KestinException &exception) {
        KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony %1", exception.message());
    } catch (...) {
        KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony (unknown exception");
    }
    return std::nullopt;
}

} // namespace

NumbersOfMany::NumbersOfMany(CanonicalNumbers &numbers)
    : m_numbers(numbers)
{
    ++m_numbers.m_lists;
}

NumbersOfMany::~NumbersOfMany()
{
    if (--m_numbers.m_lists == 0)
        m_numbers.m_isSilent = false;
}

QDBusMessage CanonicalNumbers::call(const QString &method, const QVariant &argument)
{
    if (m_isSilent)
        return QDBusMessage::createError(QDBusError::NoReply, QStringLiteral("it did not answer in time just now"));
    const QDBusMessage reply = m_caller.syncRemoteCall(ModuleName::telephony, method, {argument});
    noteSilence(reply);
    return reply;
}

void CanonicalNumbers::noteSilence(const QDBusMessage &reply)
{
    m_isSilent = m_lists > 0 && isSilence(reply);
}

void CanonicalNumbers::extractDialableNumberList(Contact &contact)
{
    try {
        const QDBusReply<QStringList> reply = call(QStringLiteral("extractDialableNumberList"), rawNumbers(contact));
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
        const QDBusReply<QStringList> reply =
            call(QStringLiteral("makeCanonicalNumberListWithoutPrefix"), rawNumbers(contact));
        if (reply.isValid() && isComplete(reply.value()))
            setNumbers(contact, &Number::canonical, reply.value());
    } catch (const KestinException &exception) {
        KestinLogger::error("fillContactCanonicalNumbers failed to call Telephony %1", exception.message());
    } catch (...) {
        KestinLogger::error("fillContactCanonicalNumbers failed to call Telephony (unknown exception");
    }
}

/// Nothing when there is no answer.
std::optional<CanonicalNumbers::NumbersById> CanonicalNumbers::answerOf(const QDBusMessage &message)
{
    const QDBusReply<NumbersById> reply = message;
    if (reply.isValid())
        return reply.value();
    noteSilence(message);
    KestinLogger::error("fillContactsCanonicalNumbers failed to call Telephony %1", reply.error().message());
    return std::nullopt;
}

std::optional<CanonicalNumbers::NumbersById>
CanonicalNumbers::makeCanonicalNumberMapWithoutPrefix(const ListContact &contacts)
{
    if (contacts.isEmpty())
        return NumbersById();
    NumbersById request;
    for (const Contact &contact : contacts)
        request.insert(contact.contactId, rawNumbers(contact));
    const auto reply = attempted([&] { return call(manyNumbers, QVariant::fromValue(request)); });
    const auto answer = reply ? answerOf(*reply) : std::nullopt;
    // A telephony that is still starting may know of none of them.
    return answer && std::any_of(answer->cbegin(), answer->cend(), isComplete) ? answer : std::nullopt;
}

QStringList CanonicalNumbers::rawNumbers(const Contact &contact)
{
    QStringList result;
    for (const Number &number : numberFields)
        result.append(contact.*number.raw);
    return result;
}

bool CanonicalNumbers::setCanonicalNumbers(Contact &contact, const QStringList &answer)
{
    if (isComplete(answer))
        setNumbers(contact, &Number::canonical, answer);
    return isComplete(answer);
}

AskedNumbers CanonicalNumbers::askForCanonicalNumbers(const ListContact &contacts)
{
    NumbersById request;
    for (qsizetype i = 0; i < contacts.size(); ++i)
        request.insert(QString::number(i), rawNumbers(contacts.at(i)));
    if (m_isSilent)
        return {*this, std::nullopt};
    return {*this, attempted([&] {
                return m_caller.asyncRemoteCall(ModuleName::telephony, manyNumbers, {QVariant::fromValue(request)});
            })};
}

void AskedNumbers::fill(ListContact &contacts)
{
    CanonicalNumbers::NumbersById answer;
    if (m_call && !m_numbers->m_isSilent) {
        m_call->waitForFinished();
        answer = m_numbers->answerOf(m_call->reply()).value_or(CanonicalNumbers::NumbersById());
    }
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        const QStringList canonical = answer.value(QString::number(i));
        Contact &contact = contacts[i];
        setNumbers(contact, &Number::canonical,
                   isComplete(canonical) ? canonical : CanonicalNumbers::rawNumbers(contact));
    }
}
