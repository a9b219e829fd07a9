// SPDX-License-Identifier: Apache-2.0
#include "src/directory/Popups.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/KestinModule.h"

namespace {
enum Key { ContactsNotSynchronized = 0, PhotosTooLarge = 1, AnonymousContact = 2 };
}

Popups::Popups(KestinModule &module, DirectoryFields &fields)
    : m_module(module)
    , m_fields(fields)
{
}

void Popups::fillTexts()
{
    m_fields.popupTexts = {
        {ContactsNotSynchronized, QStringLiteral("Some contacts have not been synchronized.")},
        {PhotosTooLarge, QStringLiteral("The contact photo has not been saved because the device is full. Please free "
                                        "memory by removing contacts with photos.")},
        {AnonymousContact, QStringLiteral("Impossible to create anonymous contact.")},
    };
}

void Popups::showPopupContactFailureDuringSynchronization(const QString &failure)
{
    show(failure.isNull() ? m_fields.popupTexts.value(ContactsNotSynchronized) : failure,
         "KestinDirectory::showPopupContactFailureDuringSynchronization : ### Popup ### text:%1");
}

void Popups::showPopupContactsPhotosTotalSizeExceeded()
{
    show(m_fields.popupTexts.value(PhotosTooLarge),
         "KestinDirectory::showPopupContactsPhotosTotalSizeExceeded : ### Popup ### text:%1");
}

void Popups::showPopupCreatingAnonymousContactImpossible()
{
    show(m_fields.popupTexts.value(AnonymousContact),
         "KestinDirectory::showPopupCreatingAnonymousContactImpossible : ### Popup ### text:%1");
}

void Popups::show(const QString &text, const char *logPattern)
{
    constexpr int kind = 3;
    constexpr int noDuration = -1;
    KestinLogger::info(logPattern, text);
    m_module.showPopup(text, kind, noDuration, {}, {}, {}, {});
}
