// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/DirectorySearch.h"
#include "peers/presentation/RowDetails.h"
#include "platform/records/Contact.h"

#include <QAbstractListModel>
#include <QMap>
#include <QSet>
#include <QtQml/qqmlregistration.h>

/// The list on the screen: whoever the text in the search field finds, everybody when it is empty. It holds a few pages
/// of them, whatever the length of the list; a row that is not there yet is empty and comes.
class ContactListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY stateChanged)
    Q_PROPERTY(bool isReachable READ isReachable NOTIFY stateChanged)
    Q_PROPERTY(int phoneCount READ phoneCount NOTIFY stateChanged)
    Q_PROPERTY(int companyCount READ companyCount NOTIFY stateChanged)

public:
    ContactListModel(ModuleCalls &calls, DirectorySearch &search);

    enum Role { ContactId = Qt::UserRole, DisplayName, Initials, Number, Company, Photo, IsOfCompany, IsLoaded };
    int rowCount(const QModelIndex &parent = {}) const override;
    /// Asks for what is not there.
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// Where the contact is; -1 when it is on no page that is held and up to date.
    Q_INVOKABLE int rowOf(const QString &contactId) const;

    const QString &searchText() const { return m_text; }
    void setSearchText(const QString &text);
    bool isSearching() const { return m_search.isRunning(); }
    /// Whether the directory answers.
    bool isReachable() const { return m_isReachable; }
    /// How many were found so far in the phone, and in the company.
    int phoneCount() const { return m_phoneCount; }
    int companyCount() const { return m_count - m_phoneCount; }

    /// What the list shows may have changed; it is read again soon, once for many changes.
    void refresh();
    /// Photos and companies of these, or of all, are read again.
    void forgetDetails(const QStringList &contactIds);
    void forgetAllDetails() { m_details.forgetAll(); }

    /// Whether anything is on its way.
    bool isBusy() const { return m_search.isRunning() || m_refresh.isActive(); }

    static constexpr int pageSize = 50;
    static constexpr int pagesKept = 6;

Q_SIGNALS:
    void searchTextChanged();
    void stateChanged();
    /// The rows are those of another text.
    void shownAnew();
    /// Rows have been read, perhaps once more, and their contacts may have another place.
    void pageRead();

private:
    /// What the running search has found so far.
    struct Run
    {
        int phoneCount = 0;
        ListContactSummary first; ///< what was told with events, `DirectorySearch::told` at most
    };
    struct Page
    {
        QString searchId; ///< when it is not that of the search it is shown until it has been read again
        ListContactSummary contacts;
    };

    void takeFound(int count, const ListContactSummary &contacts);
    void complete(int count);
    void takePage(int start, const ListContactSummary &contacts);
    void fail();
    void showAnew(const ListContactSummary &first);
    void setShown(int rows);
    void tellRows(int first, int last);
    const ContactSummary *summaryOf(int row) const;
    void wantPage(int page) const;
    void showDetails(const QString &contactId);

    DirectorySearch &m_search;
    mutable RowDetails m_details;
    QString m_text;
    Run m_run;
    bool m_isReachable = true;
    bool m_isNew = true;    ///< the search of this text has not completed yet
    bool m_isShown = false; ///< something of it is on the screen
    bool m_isStale = false; ///< what was searched has changed meanwhile
    int m_count = 0;
    int m_shown = 0; ///< rows
    int m_phoneCount = 0;
    ListContactSummary m_first; ///< shown where no page is
    QMap<int, Page> m_pages;
    mutable QList<int> m_used;  ///< the pages that are held, the last used last
    mutable QSet<int> m_wanted; ///< pages on their way
    QTimer m_refresh;
    QTimer m_nobodyYet;
};
