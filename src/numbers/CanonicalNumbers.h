// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"

#include <QDBusPendingCall>
#include <QStringList>

#include <optional>

class AskedNumbers;

/// Has the telephony service make the numbers of contacts dialable and canonical. Every failure of it is absorbed: it
/// is logged, and the numbers stay as told below.
class CanonicalNumbers
{
public:
    explicit CanonicalNumbers(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// Replaces the five raw numbers with what can be dialled; left as they are on failure.
    void extractDialableNumberList(Contact &contact);
    /// Writes the five canonical numbers; equal to the raw ones on failure.
    void makeCanonicalNumberListWithoutPrefix(Contact &contact);

    /// The same for many contacts in one call that is not waited for.
    AskedNumbers askForCanonicalNumbers(const ListContact &contacts);

    /// What telephony answers, five numbers by contact id, as a rule; nothing when it does not (logged), or has no list
    /// that is complete.
    using NumbersById = QMapQStringQStringList;
    std::optional<NumbersById> makeCanonicalNumberMapWithoutPrefix(const ListContact &contacts);
    static QStringList rawNumbers(const Contact &contact);
    /// Takes the five from such an answer. False, and the contact is as it was, when there are fewer.
    static bool setCanonicalNumbers(Contact &contact, const QStringList &answer);

    /// Whether telephony has let a call run into its time limit under the NumbersOfMany that live.
    bool isSilent() const { return m_isSilent; }

private:
    friend class AskedNumbers;
    friend class NumbersAhead;
    friend class NumbersOfMany;

    /// A method of telephony, and what the log tells when it cannot be called.
    struct Kind
    {
        const char *method;
        const char *failure; ///< with the reason as %1
        const char *unknownFailure;
    };
    static const Kind dialable;
    static const Kind canonical;
    static const Kind canonicalOfMany;

    std::optional<QDBusPendingCall> begin(const Kind &kind, const QVariant &argument);
    std::optional<QDBusMessage> reply(const std::optional<QDBusPendingCall> &call);
    std::optional<QStringList> numbers(const std::optional<QDBusPendingCall> &call);
    std::optional<NumbersById> numbersById(const std::optional<QDBusPendingCall> &call);
    static void setDialableNumbers(Contact &contact, const QStringList &answer);

    RemoteCaller &m_caller;
    int m_lists = 0; ///< NumbersOfMany that live
    bool m_isSilent = false;
    std::size_t m_askedAhead = 1; ///< contacts for which NumbersAhead may ask at a time
};

/// The canonical numbers of many contacts, once telephony has been asked for them. Must not outlive what was asked.
class AskedNumbers
{
public:
    /// Waits, 5 s at most, and fills in the contacts that were asked for, given in the same order.
    void fill(ListContact &contacts);

    /// The call, for those who wait otherwise; none when it could not be made.
    const std::optional<QDBusPendingCall> &call() const { return m_call; }

private:
    friend class CanonicalNumbers;

    AskedNumbers(CanonicalNumbers &numbers, const std::optional<QDBusPendingCall> &call)
        : m_numbers(&numbers)
        , m_call(call)
    {
    }

    CanonicalNumbers *m_numbers;
    std::optional<QDBusPendingCall> m_call;
};

/// While it lives, what is asked for are the numbers of one list, import or pass at start: when telephony has let a
/// call run into its time limit, it is not asked for the rest, whose numbers stay as after any failure. A thousand
/// contacts then wait once and not a thousand times. Outside, every call is made.
class NumbersOfMany
{
public:
    explicit NumbersOfMany(CanonicalNumbers &numbers);
    ~NumbersOfMany();
    NumbersOfMany(const NumbersOfMany &) = delete;
    NumbersOfMany &operator=(const NumbersOfMany &) = delete;

private:
    CanonicalNumbers &m_numbers;
};
