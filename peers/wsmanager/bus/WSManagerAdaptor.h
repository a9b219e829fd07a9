// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>

class WSManager;

/// The bus methods of the module "WSManager".
class WSManagerAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    /// A child of the module.
    explicit WSManagerAdaptor(WSManager &module);

public Q_SLOTS:
    bool getServiceRight(const QString &right);
    void udaGetAttributes(const QString &reqId);
    void udaGetAttributeProperties(const QString &reqId, const QString &attribute);
    void udaGetOperators(const QString &reqId);
    void udaGetDirectories(const QString &reqId);
    void udaSearchByFullName(const QString &searchId, const QString &name);
    void udaSearchByFullName(const QString &searchId, const QString &name, const QStringList &attributes,
                             const QStringList &values);
    void udaSearch(const QString &searchId, const QString &joining, const QStringList &attributes,
                   const QStringList &operators, const QStringList &values);
    /// The two further lists have no meaning here; other directories sort and select by them.
    void udaSearch(const QString &searchId, const QString &joining, const QStringList &attributes,
                   const QStringList &operators, const QStringList &values, const QStringList &first,
                   const QStringList &second);
    void udaSearch(const QString &searchId, const QString &text, const QStringList &attributes);
    void udaSearchByIMAddress(const QString &searchId, const QString &imAddress);
    void udaGetNextResults(const QString &searchId);
    void udaStopSearch(const QString &searchId);
    void udaGetContactProfile(const QString &reqId, const QString &contactId);
    void getAttributeTypeByContactId(const QString &reqId, const QString &contactId, const QString &attribute);
    void makeDialableCallNumber(const QString &reqId, const QString &number);

private:
    WSManager &m_manager;
};
