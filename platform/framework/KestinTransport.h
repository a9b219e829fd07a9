// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/framework/ModuleWatch.h"
#include "platform/framework/RemoteCaller.h"

#include <QByteArray>

#include <memory>

class QObject;

/// What carries a module's calls and events: the bus in service, a script in tests.
class KestinTransport : public RemoteCaller
{
public:
    /// Sends the event from the object of `module`. False when it could not be sent.
    virtual bool sendEvent(const QString &module, const KestinEvent &event) = 0;

    /// From now on every event of this name calls the slot of `receiver`. The slot takes a KestinEvent, by value or by
    /// reference, and is given by its signature ("slot_changed(KestinEvent)"). False when the receiver has no such slot
    /// or the subscription cannot be made. The subscription ends with the receiver.
    virtual bool subscribe(const QString &eventName, QObject *receiver, const QByteArray &slotSignature) = 0;

    /// Watches the module from now on, until the watch is destroyed.
    virtual std::unique_ptr<ModuleWatch> watch(const QString &module) = 0;
};
