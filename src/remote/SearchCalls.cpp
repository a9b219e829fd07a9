// SPDX-License-Identifier: Apache-2.0
#include "src/remote/SearchCalls.h"

#include <QStringList>

namespace {
const QString webServiceManager = QStringLiteral("WSManager");
}

void SearchCalls::searchByFullName(const QString &searchId, const QString &name)
{
    m_calls.callModule(webServiceManager, QStringLiteral("udaSearchByFullName"), {searchId, name});
}

void SearchCalls::searchByPhoneNumber(const QString &searchId, const QString &phoneNumber)
{
    m_calls.callModule(webServiceManager, QStringLiteral("udaSearch"),
                       {searchId, QStringLiteral("AND"), QStringList{QStringLiteral("TELEPHONENUMBER")},
                        QStringList{QStringLiteral("EQUAL")}, QStringList{phoneNumber}});
}

void SearchCalls::getNextResults(const QString &searchId)
{
    m_calls.callModule(webServiceManager, QStringLiteral("udaGetNextResults"), {searchId});
}

void SearchCalls::stopSearch(const QString &searchId)
{
    m_calls.callModule(webServiceManager, QStringLiteral("udaStopSearch"), {searchId});
}
