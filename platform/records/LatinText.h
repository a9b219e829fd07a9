// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

struct Contact;

/// The form in which names are stored for matching and ordering: lower case, Unicode compatibility decomposition
/// (NFKD), then every character that is not a non-spacing mark twice and each non-spacing mark once ("abc" becomes
/// "aabbcc"). Stored names, search texts and sort keys all go through this one function, so that a prefix of a name is
/// a prefix of its form. A surrogate pair is one character.
QString latinText(const QString &text);

/// Derives both latin names of the contact; what was there is overwritten.
void fillLatinNames(Contact &contact);
