// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/remote/RemoteContacts.h"
#include "src/remote/RemoteDirectory.h"
#include "src/remote/SearchCalls.h"
#include "src/remote/ServiceRight.h"
#include "src/remote/WebServiceEvents.h"

/// The company directory, as the web-service manager gives access to it.
struct CompanyDirectory
{
    CompanyDirectory(RemoteCaller &caller, DirectoryFields &fields);

    RemoteDirectory directory;
    RemoteContacts contacts;
    SearchCalls searchCalls;
    ServiceRight serviceRight;
    WebServiceEvents events;
};
