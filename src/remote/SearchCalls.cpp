// SPDX-License-Identifier: Apache-2.0
#include "src/remote/SearchCalls.h"

#include "platform/records/KestinBus.h"

#include <QStringList>

void SearchCalls::searchByFullName(const QString &searchId, const QString &name)
{
    m_calls.callModule(ModuleName::webServiceManager, QStringLiteral("udaSearchByFullName"), {searchId, name});
}

void SearchCalls::searchByPhoneNumber(const QString &searchId, const QString &phoneNumber)
{
    m_calls.callModule(ModuleName::webServiceManager, QStringLiteral("udaSearch"),
                       {searchId, QStringLiteral("AND"), QStringList{QStringLiteral("TELEPHONENUMBER")},
                        QStringList{QStringLiteral("EQUAL")}, QStringList{phoneNumber}});
}

void SearchCalls::getNextResults(const QString &searchId)
{
    m_calls.callModule(ModuleName::webServiceManager, QStringLiteral("udaGetNextResults"), {searchId});
}

void SearchCalls::stopSearch(const QString &searchId)
{
    m_calls.callModule(ModuleName::webServiceManager, QStringLiteral("udaStopSearch"), {searchId});
}
