// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/LatinNames.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/DaoContact.h"
#include "src/dao/LatinText.h"
#include "src/dao/Transaction.h"

void LatinNames::checkAndFillLatinName()
{
    KestinLogger::debug("KestinDirectory::checkAndFillLatinName()");
    const std::optional<ListContact> contacts = m_dao.getContactsWithNoLatinName();
    if (!contacts)
        return;
    Transaction transaction(m_dao.connection());
    for (Contact contact : *contacts) {
        const QString latinFirstName = contact.latinFirstName;
        fillLatinNames(contact);
        if (contact.latinName.isEmpty() && contact.latinFirstName == latinFirstName)
            continue; // nobody by last name: there is no other form to give
        KestinLogger::warning("KestinDirectory::checkAndFillLatinName() - contact %1 has no latin name!",
                              contact.contactId);
        if (!transaction.isActive() || m_dao.updateLatinNames(contact) != 0)
            return; // logged there; undone here, and tried again at the next start
    }
    (void)transaction.commit(); // a failure is logged there, and what is missing is made at the next start
}
