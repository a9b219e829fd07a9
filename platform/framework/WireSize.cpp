// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/WireSize.h"

#include "platform/records/Contact.h"
#include "platform/records/RecordMaps.h"

#include <algorithm>
#include <numeric>

namespace {

// A length before, a NUL and padding behind each text.
constexpr qsizetype textFrame = 12;
constexpr qsizetype mostBytesOfUnit = 3;

/// In UTF-8, of which a half of a surrogate pair takes two bytes.
qsizetype exactly(const QString &text)
{
    qsizetype size = text.size() + textFrame;
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        size += int(unit >= 0x80) + int(unit >= 0x800 && (unit & 0xf800) != 0xd800);
    }
    return size;
}

/// No less than that, and without a look at the characters.
qsizetype atMost(const QString &text)
{
    return mostBytesOfUnit * text.size() + textFrame;
}

/// Sizes of values, of whose texts each is measured by `ofText`.
template <qsizetype (*ofText)(const QString &)>
struct Size
{
    static qsizetype of(const QString &text) { return ofText(text); }

    template <typename T>
    static qsizetype of(const QList<T> &list)
    {
        return std::accumulate(list.cbegin(), list.cend(), qsizetype(0),
                               [](qsizetype sum, const T &element) { return sum + of(element); });
    }

    template <typename T>
    static qsizetype of(const QMap<QString, T> &map)
    {
        qsizetype size = 0;
        for (auto pair = map.cbegin(); pair != map.cend(); ++pair)
            size += of(pair.key()) + of(pair.value()) + textFrame;
        return size;
    }

    static qsizetype of(const ContactSummary &summary)
    {
        return of(summary.contactId) + of(summary.firstName) + of(summary.name) + of(summary.officePhone) +
               of(summary.email) + textFrame;
    }

    static qsizetype of(const Contact &contact)
    {
        constexpr qsizetype fixedPart = 64;
        qsizetype size = fixedPart + of(contact.photo) + of(contact.melody) + of(contact.getPUID());
        for (const Contact::TextField &field : Contact::texts)
            size += of(contact.*field.value);
        return size + of(contact.misc);
    }
};

bool isTooLong(const QString &text)
{
    return text.size() > WireSize::longestText / mostBytesOfUnit && exactly(text) - textFrame > WireSize::longestText;
}

bool hasTooLong(const Contact &contact)
{
    const auto isLongPair = [](const auto &pair) { return isTooLong(pair.first) || isTooLong(pair.second); };
    return isTooLong(contact.photo) || isTooLong(contact.melody) || isTooLong(contact.getPUID()) ||
           std::any_of(Contact::texts.begin(), Contact::texts.end(),
                       [&contact](const Contact::TextField &field) { return isTooLong(contact.*field.value); }) ||
           std::any_of(contact.misc.constKeyValueBegin(), contact.misc.constKeyValueEnd(), isLongPair);
}

template <typename T>
bool measure(const QMetaType &type, const void *value, qsizetype &size)
{
    if (type != QMetaType::fromType<T>())
        return false;
    const T &measured = *static_cast<const T *>(value);
    size = Size<atMost>::of(measured);
    if (size > WireSize::limit / 2)
        size = Size<exactly>::of(measured);
    return true;
}

} // namespace

qsizetype WireSize::of(const QMetaType &type, const void *value)
{
    qsizetype size = 0;
    // Whichever type it is has measured it; for none of them the size stays 0.
    (void)(measure<ListContact>(type, value, size) || measure<Contact>(type, value, size) ||
           measure<ListContactSummary>(type, value, size) || measure<QStringList>(type, value, size) ||
           measure<QString>(type, value, size) || measure<QMapQStringQString>(type, value, size) ||
           measure<QMapQStringQStringList>(type, value, size));
    return size;
}

qsizetype WireSize::of(const QVariant &value)
{
    return of(value.metaType(), value.constData());
}

bool WireSize::hasTooLongText(const QMetaType &type, const void *value)
{
    if (type == QMetaType::fromType<Contact>())
        return hasTooLong(*static_cast<const Contact *>(value));
    if (type != QMetaType::fromType<ListContact>())
        return false;
    const auto &contacts = *static_cast<const ListContact *>(value);
    return std::any_of(contacts.cbegin(), contacts.cend(), hasTooLong);
}
