// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/ContactSummary.h"

/// What stands where a photo would: the first characters of first and last name, as capitals. Without names that of
/// what the contact is called by.
QString initialsOf(const ContactSummary &contact);
