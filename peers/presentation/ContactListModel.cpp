// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactListModel.h"

#include "peers/presentation/Initials.h"

using namespace std::chrono_literals;

ContactListModel::ContactListModel(ModuleCalls &calls, DirectorySearch &search)
    : m_search(search)
    , m_details(calls)
{
    connect(&m_search, &DirectorySearch::found, this, &ContactListModel::showFirst);
    connect(&m_search, &DirectorySearch::completed, this, &ContactListModel::complete);
    connect(&m_search, &DirectorySearch::page, this, &ContactListModel::takePage);
    connect(&m_search, &DirectorySearch::failed, this, &ContactListModel::fail);
    connect(&m_details, &RowDetails::known, this, &ContactListModel::showDetails);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(200ms);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        m_search.again();
        Q_EMIT stateChanged();
    });
}

int ContactListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

QHash<int, QByteArray> ContactListModel::roleNames() const
{
    return {{ContactId, "contactId"},     {DisplayName, "displayName"}, {Initials, "initials"},
            {Number, "number"},           {Company, "company"},         {Photo, "photo"},
            {IsOfCompany, "isOfCompany"}, {IsLoaded, "isLoaded"}};
}

QVariant ContactListModel::data(const QModelIndex &index, int role) const
{
    const ContactSummary *summary = summaryOf(index.row());
    if (role == IsLoaded)
        return summary != nullptr;
    if (!summary)
        return role == IsOfCompany ? QVariant(false) : role == Photo ? QVariant(QUrl()) : QVariant(QString());
    switch (role) {
    case ContactId:
        return summary->contactId;
    case DisplayName:
        return summary->displayName();
    case Initials:
        return initialsOf(*summary);
    case Number:
        return summary->officePhone;
    case IsOfCompany:
        return summary->isOfCompany();
    case Company:
        return summary->isOfCompany() ? QString() : m_details.of(summary->contactId).company;
    case Photo:
        return summary->isOfCompany() ? QUrl() : m_details.of(summary->contactId).photo;
    }
    return {};
}

void ContactListModel::setSearchText(const QString &text)
{
    if (text == m_text && m_search.isRunning())
        return;
    m_text = text;
    m_isNew = true;
    m_refresh.stop();
    m_search.start(text);
    Q_EMIT searchTextChanged();
    Q_EMIT stateChanged();
}

void ContactListModel::refresh()
{
    if (!m_refresh.isActive())
        m_refresh.start();
}

void ContactListModel::forgetDetails(const ListContact &contacts)
{
    for (const Contact &contact : contacts)
        m_details.forget(contact.contactId);
}

void ContactListModel::showFirst(int count, const ListContactSummary &contacts)
{
    m_isReachable = true;
    const bool isOfPhone = !contacts.isEmpty() && !contacts.first().isOfCompany();
    if (!m_isNew && isOfPhone) { // the same text again: what is shown stays until all is known
        m_first = contacts;
        m_phoneCount = count;
        return;
    }
    if (m_isNew) {
        beginResetModel();
        m_pages.clear();
        m_wanted.clear();
        m_first = contacts;
        m_shown = int(contacts.size());
        endResetModel();
        m_isNew = false;
        m_phoneCount = isOfPhone ? count : 0;
    } else { // a packet of the company
        m_first += contacts;
        if (m_search.isRunning() && m_shown < m_first.size()) {
            beginInsertRows({}, m_shown, int(m_first.size()) - 1);
            m_shown = int(m_first.size());
            endInsertRows();
        }
    }
    m_count = count;
    Q_EMIT stateChanged();
}

void ContactListModel::complete(int count)
{
    m_isReachable = true;
    if (m_isNew)
        showFirst(0, {});
    m_wanted.clear();
    m_count = count;
    m_phoneCount = std::min(m_phoneCount, count);
    setCount(count);
    tellRows(0, m_shown - 1);
    Q_EMIT stateChanged();
}

void ContactListModel::takePage(int start, const ListContactSummary &contacts)
{
    const int page = start / pageSize;
    m_wanted.remove(page);
    m_pages.insert(page, new Page{m_search.id(), contacts});
    tellRows(start, std::min(start + int(contacts.size()), m_shown) - 1);
}

void ContactListModel::fail()
{
    m_isReachable = false;
    m_wanted.clear();
    Q_EMIT stateChanged();
}

void ContactListModel::setCount(int count)
{
    if (count > m_shown) {
        beginInsertRows({}, m_shown, count - 1);
        m_shown = count;
        endInsertRows();
    } else if (count < m_shown) {
        beginRemoveRows({}, count, m_shown - 1);
        m_shown = count;
        endRemoveRows();
    }
}

void ContactListModel::tellRows(int first, int last)
{
    if (first <= last)
        Q_EMIT dataChanged(index(first), index(last));
}

/// Null while it is on its way.
const ContactSummary *ContactListModel::summaryOf(int row) const
{
    const int number = row / pageSize;
    const Page *page = m_pages.object(number);
    if (!page || page->searchId != m_search.id())
        wantPage(number);
    const ListContactSummary &contacts = page ? page->contacts : m_first;
    const int place = page ? row % pageSize : row;
    return place < contacts.size() ? &contacts.at(place) : nullptr;
}

void ContactListModel::wantPage(int page) const
{
    if (m_search.isRunning() || m_wanted.contains(page))
        return;
    m_wanted.insert(page);
    m_search.ask(page * pageSize, pageSize);
}

void ContactListModel::showDetails(const QString &contactId)
{
    const auto tell = [this, &contactId](const ListContactSummary &contacts, int start) {
        for (int place = 0; place < contacts.size() && start + place < m_shown; ++place) {
            if (contacts.at(place).contactId == contactId)
                tellRows(start + place, start + place);
        }
    };
    tell(m_first, 0);
    const QList<int> pages = m_pages.keys();
    for (const int page : pages)
        tell(m_pages.object(page)->contacts, page * pageSize);
}
