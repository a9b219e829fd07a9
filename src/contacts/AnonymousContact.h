// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// Whether the contact is a caller who withheld the number: such a one is never kept.
bool isAnonymous(const Contact &contact);
