// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"

#include <QStringList>

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

    /// The same for many contacts in one call.
    void makeCanonicalNumbers(ListContact &contacts);

    /// Makes the canonical numbers of every stored contact anew, in one transaction; on failure all keep their old
    /// ones. No news are told.
    void fillContactsCanonicalNumbers();

private:
    QMapQStringQStringList askForMany(const QMapQStringQStringList &rawNumbers);
    bool store(Contact contact, const QStringList &canonicalNumbers);

    RemoteCaller &m_caller;
    DaoContact &m_dao;
};
