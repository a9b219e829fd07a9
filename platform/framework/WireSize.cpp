// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/WireSize.h"

#include "platform/records/Contact.h"

#include <numeric>

namespace {

// A length before, a NUL and padding behind each text.
constexpr qsizetype textFrame = 12;
// A UTF-16 unit takes at most three bytes in UTF-8.
qsizetype sizeOf(const QString &text)
{
    return 3 * text.size() + textFrame;
}

qsizetype sizeOf(const ContactSummary &summary)
{
    return sizeOf(summary.contactId) + sizeOf(summary.firstName) + sizeOf(summary.name) + sizeOf(summary.officePhone) +
           sizeOf(summary.email) + textFrame;
}

qsizetype sizeOf(const Contact &contact)
{
    constexpr qsizetype fixedPart = 64;
    qsizetype size = fixedPart + sizeOf(contact.photo) + sizeOf(contact.melody) + sizeOf(contact.getPUID());
    for (const Contact::TextField &field : Contact::texts)
        size += sizeOf(contact.*field.value);
    for (auto pair = contact.misc.cbegin(); pair != contact.misc.cend(); ++pair)
        size += sizeOf(pair.key()) + sizeOf(pair.value());
    return size;
}

template <typename T>
qsizetype sizeOf(const QList<T> &list)
{
    return std::accumulate(list.cbegin(), list.cend(), qsizetype(0),
                           [](qsizetype sum, const T &element) { return sum + sizeOf(element); });
}

template <typename T>
bool measure(const QMetaType &type, const void *value, qsizetype &size)
{
    if (type != QMetaType::fromType<T>())
        return false;
    size = sizeOf(*static_cast<const T *>(value));
    return true;
}

} // namespace

qsizetype WireSize::of(const QMetaType &type, const void *value)
{
    qsizetype size = 0;
    // Whichever type it is has measured it; for none of them the size stays 0.
    (void)(measure<ListContact>(type, value, size) || measure<Contact>(type, value, size) ||
           measure<ListContactSummary>(type, value, size) || measure<QStringList>(type, value, size) ||
           measure<QString>(type, value, size));
    return size;
}

qsizetype WireSize::of(const QVariant &value)
{
    return of(value.metaType(), value.constData());
}
