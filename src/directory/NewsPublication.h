// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/directory/DirectoryEvent.h"
#include "src/directory/Popups.h"

#include <QObject>

struct OpenDirectory;

/// Makes an event or a popup of each thing that the use cases tell. Ends before what it listens to.
class NewsPublication : public QObject
{
    Q_OBJECT

public:
    NewsPublication(OpenDirectory &open, const DirectoryFields &fields, KestinModule &module, Popups &popups);

private:
    void publishContacts(OpenDirectory &open);
    void publishSearches(OpenDirectory &open);
    void publishImAddresses(OpenDirectory &open);
    void publishPhotos(OpenDirectory &open);
    void publishSynchronisation(OpenDirectory &open);

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
