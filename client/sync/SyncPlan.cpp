// SPDX-License-Identifier: Apache-2.0
#include "client/sync/SyncPlan.h"

#include "platform/records/KestinPaths.h"

#include <QFile>

#include <algorithm>

namespace {

struct Element
{
    const char *name;
    QString Contact::*field;
    const char *misc; ///< the pair, where there is no field
};

constexpr Element elements[] = {
    {"firstName", &Contact::firstName, nullptr},
    {"lastName", &Contact::name, nullptr},
    {"email", &Contact::email, nullptr},
    {"personalEmail", &Contact::personalEmail, nullptr},
    {"officePhone", &Contact::officePhone, nullptr},
    {"personalHome", &Contact::personalHome, nullptr},
    {"personalMobile", &Contact::personalMobile, nullptr},
    {"collaborationId", &Contact::collaborationId, nullptr},
    {"officePhone2", &Contact::personalFax, nullptr},
    {"otherPhone", &Contact::fax, nullptr},
    {"company", nullptr, "company"},
    {"jobTitle", nullptr, "job"},
};

QString valueOf(const Contact &contact, const Element &element)
{
    return element.field ? contact.*element.field : contact.misc.value(QLatin1String(element.misc));
}

/// The photo of the contact as the file would have it; none when it is elsewhere.
QByteArray photoOf(const Contact &contact)
{
    constexpr qint64 mostBytes = 10 * 1024 * 1024;
    QFile file(contact.photo);
    const bool isOurs = contact.photo.startsWith(KestinPaths::data(QStringLiteral("/data/KestinDirectory/photos/")));
    return isOurs && file.open(QIODevice::ReadOnly) ? file.read(mostBytes) : QByteArray();
}

bool isSame(const SyncEntry &entry, const Contact &contact)
{
    if (!entry.puid.isEmpty() && entry.puid != contact.getPUID())
        return false;
    if (!entry.isWhole)
        return true;
    const bool hasSameTexts = std::all_of(std::begin(elements), std::end(elements), [&](const Element &element) {
        return entry.text(element.name) == valueOf(contact, element);
    });
    const QString assistant = QStringLiteral("assistant");
    return hasSameTexts && entry.texts.value(assistant, contact.assistant) == contact.assistant &&
           QByteArray::fromBase64(entry.photo) == photoOf(contact);
}

/// People of other phones may work for the same company.
bool hasAnythingOf(const SyncEntry &entry, const Contact &contact)
{
    const QDateTime date = QDateTime::fromString(entry.text("lastModificationDate"), Qt::ISODateWithMs);
    return (date.isValid() && date == contact.getLastModificationDate()) ||
           (!entry.puid.isEmpty() && entry.puid == contact.getPUID()) ||
           std::any_of(std::begin(elements), std::end(elements), [&](const Element &element) {
               const QString text = entry.text(element.name);
               return element.field && !text.isEmpty() && text == valueOf(contact, element);
           });
}

} // namespace

SyncPlan::SyncPlan(const ListContact &stored)
{
    for (const Contact &contact : stored)
        m_stored.insert(contact.contactId, contact);
}

void SyncPlan::take(const SyncEntry &entry)
{
    if (entry.duid.isEmpty()) {
        m_created += entry.isWhole ? 1 : 0;
        return;
    }
    const auto stored = m_stored.constFind(entry.duid);
    if (stored == m_stored.cend()) {
        ++m_unknown;
        return;
    }
    if (m_seen.contains(entry.duid))
        return; // the first one counts
    m_seen.insert(entry.duid);
    ++(isSame(entry, *stored) ? m_kept : m_changed);
    m_foreign += entry.isWhole && !hasAnythingOf(entry, *stored) ? 1 : 0;
}
