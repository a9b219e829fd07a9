// SPDX-License-Identifier: Apache-2.0
#include "src/numbers/CanonicalNumbers.h"

#include "platform/framework/KestinException.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"

#include <QDBusReply>

#include <algorithm>
#include <array>

namespace {

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

const CanonicalNumbers::Kind CanonicalNumbers::dialable{
    "extractDialableNumberList",
    "convertMultipleNumbers failed to call Telephony: %1",
    "convertMultipleNumbers failed to call Telephony (unknown exception",
};
const CanonicalNumbers::Kind CanonicalNumbers::canonical{
    "makeCanonicalNumberListWithoutPrefix",
    "fillContactCanonicalNumbers failed to call Telephony %1",
    "fillContactCanonicalNumbers failed to call Telephony (unknown exception",
};
const CanonicalNumbers::Kind CanonicalNumbers::canonicalOfMany{
    "makeCanonicalNumberMapWithoutPrefix",
    "fillContactsCanonicalNumbers failed to call Telephony %1",
    "fillContactsCanonicalNumbers failed to call Telephony (unknown exception",
};

/// Nothing when telephony is not asked any more, or cannot be (logged).
std::optional<QDBusPendingCall> CanonicalNumbers::begin(const Kind &kind, const QVariant &argument)
{
    try {
        if (!m_isSilent)
            return m_caller.asyncRemoteCall(ModuleName::telephony, QLatin1String(kind.method), {argument});
    } catch (const KestinException &exception) {
        KestinLogger::error(kind.failure, exception.message());
    } catch (...) {
        KestinLogger::error(kind.unknownFailure);
    }
    return std::nullopt;
}

/// Waits, but not for a telephony that is known to be silent.
std::optional<QDBusMessage> CanonicalNumbers::reply(const std::optional<QDBusPendingCall> &call)
{
    if (!call || (m_isSilent && !call->isFinished()))
        return std::nullopt;
    QDBusPendingCall waiting = *call;
    waiting.waitForFinished();
    const QDBusMessage reply = waiting.reply();
    m_isSilent = m_lists > 0 && (m_isSilent || isSilence(reply));
    return reply;
}

/// A complete answer; nothing when there is none.
std::optional<QStringList> CanonicalNumbers::numbers(const std::optional<QDBusPendingCall> &call)
{
    const std::optional<QDBusMessage> message = reply(call);
    if (!message)
        return std::nullopt;
    const QDBusReply<QStringList> answer = *message;
    return answer.isValid() && isComplete(answer.value()) ? std::optional(answer.value()) : std::nullopt;
}

/// Nothing when there is no answer (logged).
std::optional<CanonicalNumbers::NumbersById> CanonicalNumbers::numbersById(const std::optional<QDBusPendingCall> &call)
{
    const std::optional<QDBusMessage> message = reply(call);
    if (!message)
        return std::nullopt;
    const QDBusReply<NumbersById> answer = *message;
    if (answer.isValid())
        return answer.value();
    KestinLogger::error(canonicalOfMany.failure, answer.error().message());
    return std::nullopt;
}

void CanonicalNumbers::extractDialableNumberList(Contact &contact)
{
    if (const auto answer = numbers(begin(dialable, rawNumbers(contact))))
        setNumbers(contact, &Number::raw, *answer);
}

void CanonicalNumbers::makeCanonicalNumberListWithoutPrefix(Contact &contact)
{
    const QStringList raw = rawNumbers(contact);
    setNumbers(contact, &Number::canonical, numbers(begin(canonical, raw)).value_or(raw));
}

std::optional<CanonicalNumbers::NumbersById>
CanonicalNumbers::makeCanonicalNumberMapWithoutPrefix(const ListContact &contacts)
{
    if (contacts.isEmpty())
        return NumbersById();
    NumbersById request;
    for (const Contact &contact : contacts)
        request.insert(contact.contactId, rawNumbers(contact));
    const auto answer = numbersById(begin(canonicalOfMany, QVariant::fromValue(request)));
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

void CanonicalNumbers::setDialableNumbers(Contact &contact, const QStringList &answer)
{
    setNumbers(contact, &Number::raw, answer);
}

AskedNumbers CanonicalNumbers::askForCanonicalNumbers(const ListContact &contacts)
{
    NumbersById request;
    for (qsizetype i = 0; i < contacts.size(); ++i)
        request.insert(QString::number(i), rawNumbers(contacts.at(i)));
    return {*this, begin(canonicalOfMany, QVariant::fromValue(request))};
}

void AskedNumbers::fill(ListContact &contacts)
{
    const auto answer = m_numbers->numbersById(m_call).value_or(CanonicalNumbers::NumbersById());
    for (qsizetype i = 0; i < contacts.size(); ++i) {
        const QStringList canonical = answer.value(QString::number(i));
        Contact &contact = contacts[i];
        setNumbers(contact, &Number::canonical,
                   isComplete(canonical) ? canonical : CanonicalNumbers::rawNumbers(contact));
    }
}
