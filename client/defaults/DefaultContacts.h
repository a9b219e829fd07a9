// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QIODevice>
#include <QStringList>

/// The contacts of device management as the setting DirectoryDefaultContacts holds them. Records have "#" between them.
/// Their 8 or 20 fields have "," between them. A backslash stands before either character where a field holds it.
struct DefaultContacts
{
    QString value; ///< of the setting
    int count = 0; ///< of records
    /// What the contacts hold and the form has no place for: "Zoë Müller: misc.note".
    QStringList leftOut;

    /// Each contact's id is its place, from 1. Throws CommandFailure when the form cannot carry a value: a line break,
    /// a backslash at the end, and the words escSharp and escComa. The failure names the contact and the field.
    static DefaultContacts of(const ListContact &contacts);
    /// Of the vCards of a file, called `file`. Throws also when the device cannot be read or a card cannot be used.
    static DefaultContacts ofCards(QIODevice &device, const QString &file);
    /// Of records in the setting's own form. A line holds a record or more. Throws CommandFailure when a record does
    /// not have 8 or 20 fields, or holds what the form cannot carry. The failure names the record.
    static DefaultContacts ofText(const QString &text);
};
