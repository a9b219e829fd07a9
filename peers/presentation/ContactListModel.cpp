// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/ContactListModel.h"

#include "peers/presentation/ShownText.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

ContactListModel::ContactListModel(ModuleCalls &calls, DirectorySearch &search)
    : m_search(search)
    , m_details(calls)
{
    connect(&m_search, &DirectorySearch::began, this, [this] {
        m_run = {};
        Q_EMIT stateChanged();
    });
    connect(&m_search, &DirectorySearch::found, this, &ContactListModel::takeFound);
    connect(&m_search, &DirectorySearch::completed, this, &ContactListModel::complete);
    connect(&m_search, &DirectorySearch::page, this, &ContactListModel::takePage);
    connect(&m_search, &DirectorySearch::failed, this, &ContactListModel::fail);
    connect(&m_details, &RowDetails::known, this, &ContactListModel::showDetails);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(200ms);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (m_search.isRunning())
            m_isStale = true; // or changes that go on would let no search complete
        else
            m_search.againInTurn();
    });
    m_nobodyYet.setSingleShot(true);
    m_nobodyYet.setInterval(150ms); // nothing is told of a phone that has nobody
    connect(&m_nobodyYet, &QTimer::timeout, this, [this] {
        m_count = m_phoneCount = 0;
        showAnew({});
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
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ContactSummary *summary = summaryOf(index.row());
    if (role == IsLoaded)
        return summary != nullptr;
    const ContactSummary contact = summary ? *summary : ContactSummary();
    const bool hasDetails = summary && !contact.isOfCompany();
    switch (role) {
    case ContactId:
        return contact.contactId;
    case DisplayName:
        return oneLine(contact.displayName());
    case Initials:
        return initialsOf(contact);
    case Number:
        return oneLine(contact.officePhone);
    case IsOfCompany:
        return contact.isOfCompany();
    case Company:
        return hasDetails ? oneLine(m_details.of(contact.contactId).company) : QString();
    case Photo:
        return hasDetails ? m_details.of(contact.contactId).photo : QUrl();
    }
    return {};
}

int ContactListModel::rowOf(const QString &contactId) const
{
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page) {
        const auto has = [&contactId](const ContactSummary &contact) { return contact.contactId == contactId; };
        const auto found = std::find_if(page->contacts.begin(), page->contacts.end(), has);
        if (page->searchId == m_search.id() && found != page->contacts.end())
            return page.key() * pageSize + int(found - page->contacts.begin());
    }
    return -1;
}

void ContactListModel::setSearchText(const QString &text)
{
    m_text = text;
    m_isNew = true;
    m_isShown = false;
    m_isStale = false;
    m_refresh.stop();
    m_nobodyYet.start();
    m_search.start(text);
    Q_EMIT searchTextChanged();
}

void ContactListModel::refresh()
{
    if (!m_refresh.isActive())
        m_refresh.start();
}

void ContactListModel::forgetDetails(const QStringList &contactIds)
{
    for (const QString &id : contactIds)
        m_details.forget(id);
}

void ContactListModel::takeFound(int count, const ListContactSummary &contacts)
{
    m_isReachable = true;
    count = std::max(count, 0);
    // What the phone has is told alone and first.
    if (!contacts.isEmpty() && contacts.first().type != ContactType::Remote)
        m_run.phoneCount = count;
    m_run.first += contacts.mid(0, DirectorySearch::told - m_run.first.size());
    if (m_isNew) { // when the same is searched again, what is shown stays until all is known
        m_count = count;
        m_phoneCount = m_run.phoneCount;
        if (m_isShown) {
            m_first = m_run.first;
            setShown(int(m_first.size()));
        } else {
            showAnew(m_run.first);
        }
    }
    Q_EMIT stateChanged();
}

void ContactListModel::complete(int count)
{
    m_isReachable = true;
    count = std::max(count, 0);
    if (m_isNew && !m_isShown)
        showAnew({});
    m_isNew = false;
    m_first = m_run.first;
    m_count = count;
    m_phoneCount = std::min(m_run.phoneCount, count);
    m_wanted.clear();
    setShown(count);
    tellRows(0, m_shown - 1);
    if (std::exchange(m_isStale, false))
        m_refresh.start();
    Q_EMIT stateChanged();
}

void ContactListModel::takePage(int start, const ListContactSummary &contacts)
{
    const int page = start / pageSize;
    m_wanted.remove(page);
    m_pages.insert(page, {m_search.id(), contacts});
    m_used.removeOne(page);
    m_used.append(page);
    if (m_used.size() > pagesKept)
        m_pages.remove(m_used.takeFirst());
    tellRows(start, std::min(start + int(contacts.size()), m_shown) - 1);
    Q_EMIT pageRead();
}

void ContactListModel::fail()
{
    m_isReachable = false;
    m_wanted.clear();
    if (m_isNew && !m_isShown) {
        m_count = m_phoneCount = 0;
        showAnew({});
    }
    Q_EMIT stateChanged();
}

/// What was shown was of another text. The rows stay where they are: to make them costs more than to fill them.
void ContactListModel::showAnew(const ListContactSummary &first)
{
    m_pages.clear();
    m_used.clear();
    m_wanted.clear();
    m_first = first;
    m_isShown = true;
    m_nobodyYet.stop();
    setShown(int(first.size()));
    tellRows(0, m_shown - 1);
    Q_EMIT shownAnew();
}

void ContactListModel::setShown(int rows)
{
    if (rows > m_shown) {
        beginInsertRows({}, m_shown, rows - 1);
        m_shown = rows;
        endInsertRows();
    } else if (rows < m_shown) {
        beginRemoveRows({}, rows, m_shown - 1);
        m_shown = rows;
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
    const auto page = m_pages.constFind(number);
    const bool isHeld = page != m_pages.constEnd();
    if (!isHeld || page->searchId != m_search.id())
        wantPage(number);
    if (isHeld && m_used.last() != number) {
        m_used.removeOne(number);
        m_used.append(number);
    }
    const ListContactSummary &contacts = isHeld ? page->contacts : m_first;
    const int place = isHeld ? row % pageSize : row;
    return place < contacts.size() ? &contacts.at(place) : nullptr;
}

void ContactListModel::wantPage(int page) const
{
    if (m_search.isRunning() || !m_isReachable || m_wanted.contains(page))
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
    const QMap<int, Page> pages = m_pages; // a row that is told may ask for another page
    for (auto page = pages.cbegin(); page != pages.cend(); ++page)
        tell(page->contacts, page.key() * pageSize);
}

#include "moc_ContactListModel.cpp"
