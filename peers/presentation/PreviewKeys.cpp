// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/PreviewKeys.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/ShownText.h"
#include "platform/records/KestinBus.h"

using namespace std::chrono_literals;

PreviewKeys::PreviewKeys(ModuleCalls &calls)
    : m_calls(calls)
{
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(100ms);
    connect(&m_refresh, &QTimer::timeout, this, &PreviewKeys::read);
}

int PreviewKeys::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_contacts.size());
}

QHash<int, QByteArray> PreviewKeys::roleNames() const
{
    return {{ContactId, "contactId"}, {DisplayName, "displayName"}, {Initials, "initials"}, {Photo, "photo"}};
}

QVariant PreviewKeys::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Contact &contact = m_contacts.at(index.row());
    switch (role) {
    case ContactId:
        return contact.contactId;
    case DisplayName:
        return oneLine(contact.displayName());
    case Initials:
        return initialsOf(contact);
    case Photo:
        return ContactPhoto::imageUrl(contact);
    }
    return {};
}

void PreviewKeys::refresh()
{
    if (!m_refresh.isActive())
        m_refresh.start();
}

void PreviewKeys::read()
{
    m_calls.ask<ListContact>(this, ModuleName::directory, "getAllContactsInPreview", {0, most},
                             [this](const std::optional<ListContact> &contacts) {
                                 if (!contacts || *contacts == m_contacts)
                                     return;
                                 beginResetModel();
                                 m_contacts = *contacts;
                                 endResetModel();
                             });
}

#include "moc_PreviewKeys.cpp"
