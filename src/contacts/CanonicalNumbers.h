// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"

#include <QDeadlineTimer>
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
    /// the same contacts in, given in the same order. After a silence telephony is not asked for 10 s.
    using FillNumbers = std::function<void(ListContact &contacts)>;
    FillNumbers askForCanonicalNumbers(const ListContact &contacts);

    /// Makes the canonical numbers of every stored contact anew, in one transaction; on failure all keep their old
    /// ones. No news are told.
    void fillContactsCanonicalNumbers();

private:
    using NumbersById = QMapQStringQStringList;
    NumbersById answerOf(const QDBusMessage &message);
    bool store(Contact contact, const QStringList &canonicalNumbers);

    RemoteCaller &m_caller;
    DaoContact &m_dao;
    QDeadlineTimer m_pause; ///< over, unless telephony has just been silent
};
