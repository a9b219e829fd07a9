// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"

#include <QStringList>

#include <functional>

class DaoContact;

/// Has the telephony service make the numbers of contacts dialable and canonical. Every failure of it is absorbed: it
/// is logged, and the numbers stay as told below. Main thread only.
class CanonicalNumbers
{
public:
    CanonicalNumbers(RemoteCaller &caller, DaoContact &dao);

    /// Replaces the five raw numbers with what can be dialled; left as they are on failure.
    void extractDialableNumberList(Contact &contact);
    /// Writes the five canonical numbers; equal to the raw ones on failure.
    void makeCanonicalNumberListWithoutPrefix(Contact &contact);

    /// The same for many contacts in one call that is not waited for: what is returned waits, 5 s at most, and fills
    /// the same contacts in, given in the same order.
    using FillNumbers = std::function<void(ListContact &contacts)>;
    FillNumbers askForCanonicalNumbers(const ListContact &contacts);

    /// Makes the canonical numbers of every stored contact anew, in one transaction; on failure all keep their old
    /// ones. No news are told.
    void fillContactsCanonicalNumbers();

private:
    friend class NumbersOfMany;
    using NumbersById = QMapQStringQStringList;

    QDBusMessage call(const QString &method, const QVariant &argument);
    void noteSilence(const QDBusMessage &reply);
    NumbersById answerOf(const QDBusMessage &message);
    bool store(Contact contact, const QStringList &canonicalNumbers);

    RemoteCaller &m_caller;
    DaoContact &m_dao;
    int m_lists = 0;         ///< NumbersOfMany that live
    bool m_isSilent = false; ///< telephony has let a call of theirs run into its time limit
};

/// While it lives, what is asked for are the numbers of one list, import or pass at start: when telephony has let one
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
