// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QStringList>

class DaoContact;

/// Bytes of photo files that go when an import is done, and so leave their room to the photos that it brings.
class ImportRoom
{
public:
    explicit ImportRoom(DaoContact &dao);

    /// These files go, but for those that a contact names.
    void addUnnamed(const QStringList &photos);

    /// An image of so many bytes will come, and this file (none if empty) will go.
    void expect(qint64 bytes, const QString &photo);
    /// When all that will come has been told. Where everything fits, all files that will go count from now on, so that
    /// the order of the contacts does not matter. Otherwise each counts when it has been replaced.
    void settle(qint64 room);

    qint64 leaving() const { return m_leaving; }
    /// What the file adds to that when the one contact that names it does so no more.
    qint64 gainOf(const QString &photo) const;
    void add(qint64 bytes) { m_leaving += bytes; }

private:
    bool isNamedBy(const QString &photo, int contacts) const;

    DaoContact &m_dao;
    qint64 m_leaving = 0;
    qint64 m_expected = 0;
    QHash<QString, int> m_replaced; ///< files, and how many contacts will no longer name each
    bool m_isTight = false;
};
