// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/LatinNames.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/LatinText.h"
#include "src/dao/DaoContact.h"

void LatinNames::checkAndFillLatinName()
{
    KestinLogger::debug("KestinDirectory::checkAndFillLatinName()");
    const std::optional<ListContact> contacts = m_dao.getContactsWithNoLatinName();
    if (!contacts)
        return;
    bool isAnyMissing = false;
    for (const Contact &contact : *contacts) {
        if (contact.name.isEmpty() && contact.latinFirstName == latinText(contact.firstName))
            continue; // nobody by last name: there is no other form to give
        isAnyMissing = true;
        KestinLogger::warning("KestinDirectory::checkAndFillLatinName() - contact %1 has no latin name!",
                              contact.contactId);
    }
    if (isAnyMissing)
        (void)m_dao.fillMissingLatinNames(); // a failure is logged there, and what is missing is made at the next start
}
