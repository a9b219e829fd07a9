// SPDX-License-Identifier: Apache-2.0
#include "src/remote/CompanyDirectory.h"

CompanyDirectory::CompanyDirectory(RemoteCaller &caller, DirectoryFields &fields)
    : directory(caller)
    , contacts(directory)
    , searchCalls(caller)
    , serviceRight(caller, fields)
{
    QObject::connect(&events, &WebServiceEvents::attributesReceived, &events,
                     [this](bool areInitialised) { serviceRight.setAttributesInitialised(areInitialised); });
    QObject::connect(&events, &WebServiceEvents::availabilityChanged, &events, [this] { serviceRight.request(); });
    QObject::connect(&events, &WebServiceEvents::profileReceived, &contacts, &RemoteContacts::profileReceived);
}
