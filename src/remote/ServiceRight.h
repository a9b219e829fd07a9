// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"
#include "src/fields/DirectoryFields.h"

#include <QTimer>

/// Knows whether the phone may use the company directory: the right "IcsUda".
class ServiceRight
{
public:
    ServiceRight(RemoteCaller &caller, DirectoryFields &fields);

    /// At the start: `isAllowed` by the phone's mode, which says whether the right is asked for.
    void start(bool isAllowed);
    /// The web-service manager has left the bus: there is no right until it is given again, and nobody to ask.
    void managerLeft();
    /// It is back on the bus: the right is asked for again if the mode allowed it at the start.
    void managerCame();

    /// Asks for a check, which is made once the event loop has handled what lies before it; until then further requests
    /// ask for nothing more. So a manager that hangs costs one wait, however many events it has raised.
    void request();
    /// Asks the web-service manager (5 s at most), for those too who have requested it until now. A valid answer
    /// becomes `icsLogin`, an error leaves it as it was. When it is true the attributes of the directory are asked for.
    /// The answer is whether these are initialised: not yet.
    bool check();

    /// The attributes have come, or could not be had.
    void setAttributesInitialised(bool isInitialised);

private:
    RemoteCaller &m_caller;
    DirectoryFields &m_fields;
    QTimer m_requested;
    bool m_isAllowed = false;
    bool m_attributesInitialised = false;
};
