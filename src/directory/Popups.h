// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/fields/DirectoryFields.h"

class KestinModule;

/// The popups that the directory asks the presentation for. Showing a popup cannot fail as far as the directory is
/// concerned.
class Popups
{
public:
    Popups(KestinModule &module, DirectoryFields &fields);

    /// Fills the texts; before that every popup is empty.
    void fillTexts();

    /// With the text of what failed, or the general text when it is null.
    void showPopupContactFailureDuringSynchronization(const QString &failure = QString());
    void showPopupContactsPhotosTotalSizeExceeded();
    void showPopupCreatingAnonymousContactImpossible();

private:
    void show(const QString &text, const char *logPattern);

    KestinModule &m_module;
    DirectoryFields &m_fields;
};
