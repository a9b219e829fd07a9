// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What a caller asked a search for.
struct SearchRequest
{
    enum Kind { ByName, ByPhoneNumber };

    Kind kind = ByName;
    QString searchId;
    QString name;
    QString phoneNumber;
    int nbContacts = 0; ///< summaries sent with the first results and with the completion
    bool localOnly = false;
    int searchMode = 0; ///< the display mode when it was asked
};
