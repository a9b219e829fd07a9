// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/ContactSummary.h"

/// A text from elsewhere as it is shown on one line: control characters, those of the direction of writing too, and
/// blanks in a row are one blank.
QString oneLine(const QString &text);

/// What stands where a photo would: the first characters of first and last name, as capitals. Without names that of
/// what the contact is called by.
QString initialsOf(const ContactSummary &contact);
