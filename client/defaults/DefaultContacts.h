// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QIODevice>
#include <QStringList>

/// The contacts of device management as the setting DirectoryDefaultContacts holds them: records with "#" between them,
/// their 8 or 20 fields with "," between them, a backslash before either character where a field holds it.
struct DefaultContacts
{
    QString value; ///< of the setting
    int count = 0; ///< of records
    /// What the contacts hold and the form has no place for: "Zoë Müller: misc.note".
    QStringList leftOut;

    /// Each contact's id is its place, from 1. Throws CommandFailure that names the contact and the field when the form
    /// cannot carry a value: a line break, a backslash at the end, and the words escSharp and escComa.
    static DefaultContacts of(const ListContact &contacts);
    /// Of the vCards of a file, called `file`. Throws as well when the device cannot be read or a card not be used.
    static DefaultContacts ofCards(QIODevice &device, const QString &file);
    /// Of records in the setting's own form, one or more a line. Throws CommandFailure that names the record when it
    /// does not have 8 or 20 fields, or holds what the form cannot carry.
    static DefaultContacts ofText(const QString &text);
};
