// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// What an import has others do for it.

/// Fills the canonical numbers of the contacts that were asked for, given in the same order; waits for them if need be.
using FillNumbers = std::function<void(ListContact &contacts)>;
/// Asks for the canonical numbers of many contacts and does not wait. What it returns is called once, or never.
using Canonize = std::function<FillNumbers(const ListContact &contacts)>;
/// Makes what one import asks with: when telephony stays silent, the rest of this import is not asked for.
using BeginCanonize = std::function<Canonize()>;
/// The photo files that an import adds to.
struct PhotoKeeping
{
    /// Bytes that they may still take; negative when they take too much.
    std::function<qint64()> room;
    /// Writes an image into a new file, as if `leaving` more bytes were free. Returns its path, a null text when it
    /// cannot be kept.
    std::function<QString(const QByteArray &image, qint64 leaving)> keep;
};
