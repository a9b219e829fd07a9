// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/directory/DirectoryEvent.h"
#include "src/directory/Popups.h"

#include <QObject>

struct UseCases;

/// Makes an event or a popup of each thing that the use cases tell. Main thread only; ends before what it listens to.
class NewsPublication : public QObject
{
    Q_OBJECT

public:
    NewsPublication(UseCases &useCases, const DirectoryFields &fields, KestinModule &module, Popups &popups);

private:
    void publishContacts(UseCases &useCases);
    void publishSearches(UseCases &useCases);
    void publishImAddresses(UseCases &useCases);
    void publishPhotos(UseCases &useCases);
    void publishSynchronisation(UseCases &useCases);

    /// Publishes the event that is made of the signal's arguments.
    template <typename Sender, typename Signal, typename... Arguments>
    void publish(Sender &sender, Signal signal, DirectoryEvent (*makeEvent)(Arguments...))
    {
        connect(&sender, signal, this,
                [this, makeEvent](const auto &...arguments) { makeEvent(arguments...).send(m_module); });
    }

    void tellQuotaExceeded();

    const DirectoryFields &m_fields;
    KestinModule &m_module;
    Popups &m_popups;
    bool m_isQuotaTold = false; ///< in the import that is going on
};
