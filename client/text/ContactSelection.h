// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QStringList>

#include <optional>

/// Which contacts a person means by some words, and in which order they are wanted.
namespace ContactSelection {

/// Whether each of the texts stands somewhere in the name, a number, an address, the company or the id. Letter case and
/// accents do not count, nor what separates the digits of a number.
bool matches(const Contact &contact, const QStringList &texts);

/// What `sort` takes, for help texts.
QStringList orders();

/// Orders contacts that are ordered by name already by another thing; those that are equal in it stay by name.
void sort(ListContact &contacts, const QString &order);

} // namespace ContactSelection
