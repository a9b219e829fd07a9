// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/LatinNames.h"

#include "platform/framework/KestinLogger.h"
#include "src/dao/DaoContact.h"
#include "src/dao/LatinText.h"
#include "src/dao/Transaction.h"

void LatinNames::checkAndFillLatinName()
{
    KestinLogger::debug("KestinDirectory::checkAndFillLatinName()");
    std::optional<ListContact> contacts = m_dao.getContactsWithNoLatinName();
    if (!contacts || contacts->isEmpty())
        return;
    Transaction transaction(m_dao.connection());
    for (Contact &contact : *contacts) {
        KestinLogger::warning("KestinDirectory::checkAndFillLatinName() - contact %1 has no latin name!",
                              contact.contactId);
        fillLatinNames(contact);
        if (m_dao.updateContact(contact) != 0 || m_dao.misc().replacePairs(contact.contactId, contact.misc) != 0)
            return; // logged there; undone here, so no contact loses its pairs, and tried again at the next start
    }
    transaction.commit();
}
