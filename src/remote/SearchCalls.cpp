// SPDX-License-Identifier: Apache-2.0
#include "src/remote/SearchCalls.h"

#include "platform/records/KestinBus.h"
#include "platform/records/WebServiceCalls.h"

#include <QStringList>

void SearchCalls::searchByFullName(const QString &searchId, const QString &name)
{
    m_calls.callModule(ModuleName::webServiceManager, WebServiceMethod::searchByFullName, {searchId, name});
}

void SearchCalls::searchByPhoneNumber(const QString &searchId, const QString &phoneNumber)
{
    m_calls.callModule(ModuleName::webServiceManager, WebServiceMethod::search,
                       {searchId, WebServiceTerm::allOf, QStringList{WebServiceTerm::anyNumber},
                        QStringList{WebServiceTerm::equal}, QStringList{phoneNumber}});
}

void SearchCalls::getNextResults(const QString &searchId)
{
    m_calls.callModule(ModuleName::webServiceManager, WebServiceMethod::getNextResults, {searchId});
}

void SearchCalls::stopSearch(const QString &searchId)
{
    m_calls.callModule(ModuleName::webServiceManager, WebServiceMethod::stopSearch, {searchId});
}
