// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardParser.h"

#include "client/vcard/VCardRepair.h"

#include <libebook-contacts/libebook-contacts.h>

#include <algorithm>
#include <memory>

namespace {

struct Unref
{
    void operator()(EVCard *card) const { g_object_unref(card); }
};

/// The library reports what it repairs on standard error; what matters of that is said in this program's own words.
class QuietLibrary
{
public:
    QuietLibrary()
        : m_handler(g_log_set_handler(domain, G_LOG_LEVEL_MASK, &QuietLibrary::drop, nullptr))
    {
    }
    ~QuietLibrary() { g_log_remove_handler(domain, m_handler); }
    Q_DISABLE_COPY_MOVE(QuietLibrary)

private:
    static constexpr char domain[] = "libebook-contacts";
    static void drop(const char *, GLogLevelFlags, const char *, void *) {}

    guint m_handler;
};

QString valueText(const GString *value)
{
    QString text = VCardCharset::decode(QByteArray(value->str, qsizetype(value->len)));
    // A text ends at a NUL on the bus.
    return text.remove(QChar(u'\0'));
}

QSet<QString> typesOf(EVCardAttribute *attribute)
{
    QSet<QString> types;
    for (GList *value = e_vcard_attribute_get_param(attribute, EVC_TYPE); value; value = value->next) {
        // Version 4.0 writes several types as one quoted list.
        const QString list = QString::fromUtf8(static_cast<const char *>(value->data)).toLower();
        for (const QString &type : list.split(QLatin1Char(',')))
            types.insert(type.trimmed());
    }
    return types;
}

/// Version 4.0 writes a number, the others a type.
int preferenceOf(EVCardAttribute *attribute, const QSet<QString> &types)
{
    constexpr int most = 1;
    if (types.contains(QStringLiteral("pref")))
        return most;
    const GList *value = e_vcard_attribute_get_param(attribute, "PREF");
    const int preference = value ? QByteArray(static_cast<const char *>(value->data)).toInt() : 0;
    return preference < most ? VCardProperty::leastPreferred : std::min(preference, VCardProperty::leastPreferred);
}

bool isBase64(EVCardAttribute *attribute)
{
    const GList *encoding = e_vcard_attribute_get_param(attribute, EVC_ENCODING);
    const QByteArray name = encoding ? QByteArray(static_cast<const char *>(encoding->data)).toLower() : QByteArray();
    return name == "b" || name == "base64";
}

VCardProperty propertyOf(EVCardAttribute *attribute)
{
    VCardProperty property;
    property.name = QString::fromUtf8(e_vcard_attribute_get_name(attribute)).toUpper();
    property.types = typesOf(attribute);
    property.preference = preferenceOf(attribute, property.types);
    for (GList *value = e_vcard_attribute_get_values_decoded(attribute); value; value = value->next) {
        const auto *bytes = static_cast<const GString *>(value->data);
        if (isBase64(attribute))
            property.bytes = QByteArray(bytes->str, qsizetype(bytes->len));
        property.values.append(valueText(bytes));
    }
    return property;
}

} // namespace

void VCardProperty::sortByPreference(VCardProperties &properties)
{
    std::stable_sort(properties.begin(), properties.end(), [](const VCardProperty &one, const VCardProperty &other) {
        return one.preference < other.preference;
    });
}

VCardProperties VCardParser::parse(const QByteArray &card)
{
    const QuietLibrary quiet;
    const std::unique_ptr<EVCard, Unref> parsed(e_vcard_new_from_string(VCardRepair::mended(card).constData()));
    VCardProperties properties;
    for (GList *attribute = e_vcard_get_attributes(parsed.get()); attribute; attribute = attribute->next)
        properties.append(propertyOf(static_cast<EVCardAttribute *>(attribute->data)));
    return properties;
}
