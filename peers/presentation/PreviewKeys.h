// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/records/Contact.h"

#include <QAbstractListModel>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

/// The keys beside the list: the contacts of the preview list, the first 24 of them.
class PreviewKeys : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    explicit PreviewKeys(ModuleCalls &calls);

    enum Role { ContactId = Qt::UserRole, DisplayName, Initials, Photo };
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The list may have changed; it is read again soon, once for many changes.
    void refresh();
    bool isBusy() const { return m_refresh.isActive(); }

    static constexpr int most = 24;

private:
    void read();

    ModuleCalls &m_calls;
    ListContact m_contacts;
    QTimer m_refresh;
};
