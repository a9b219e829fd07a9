// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMetaType>
#include <QVariant>

/// How large values become on the bus. A bus daemon ends the connection of a sender whose message is over its limit (32
/// MiB on a system bus as shipped). So a value that could grow that large is measured before it is sent.
namespace WireSize {

/// The largest value that is sent. Leaves room for the rest of the message below the limit of a system bus.
inline constexpr qsizetype limit = 24 * 1024 * 1024;

/// The longest text of a contact that is taken from a caller, in bytes of UTF-8. No name, number or address comes near
/// it, while a single text of megabytes costs each later search and page.
inline constexpr qsizetype longestText = 64 * 1024;

/// The size of a value in bytes, a few too many for what stands between texts. Of a value that surely is below half the
/// limit it is the most that so many characters can take. Texts, lists and maps of texts, contacts, summaries and lists
/// of these are measured. Any other type is small by its nature and counts as 0.
qsizetype of(const QMetaType &type, const void *value);
qsizetype of(const QVariant &value);

/// Whether a text of a contact, or of a contact in a list, is over longestText. No other type has such texts.
bool hasTooLongText(const QMetaType &type, const void *value);

} // namespace WireSize
