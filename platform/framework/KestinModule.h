// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/framework/LongWork.h"
#include "platform/framework/ModuleWatch.h"
#include "platform/framework/RemoteCaller.h"
#include "platform/records/Capability.h"

#include <QDBusContext>
#include <QMap>
#include <QObject>
#include <QStringList>

#include <memory>

class HeldCall;
class KestinTransport;

/// Base of every module of the platform: a named object that the framework brings to life (KestinApplication). It
/// publishes its methods on the bus through an adaptor, calls other modules and exchanges events with them.
class KestinModule : public QObject, public QDBusContext, public RemoteCaller
{
    Q_OBJECT

public:
    /// `name` is the module's short name. Bus name and object path follow from it (KestinBus).
    explicit KestinModule(const QString &name);

    // The life of a module, in the order in which the framework goes through it.
    virtual bool check();  ///< whether everything is there that the module keeps; false calls deploy
    virtual bool deploy(); ///< makes what check missed; false ends the process
    virtual bool init();   ///< false ends the process
    virtual bool run();    ///< the last before it is on the bus; false ends the process
    virtual void presentation_loaded();
    virtual void presentation_stop();
    virtual void stop(); ///< the event loop has ended
    virtual bool preSaveForSaveRestore();
    virtual bool postRestoreForSaveRestore();
    virtual bool restoreDataToDefault();
    virtual bool restoreDataToFactory();

    // What the module can do, by name. The forms without a list id mean list 0.
    Q_INVOKABLE virtual MapQStringCapability getCapabilities();
    Q_INVOKABLE virtual MapQStringCapability getCapabilities(int listId);
    Q_INVOKABLE virtual Capability getCapability(QString name);
    Q_INVOKABLE virtual Capability getCapability(int listId, QString name);

    QString getModuleName() const { return m_name; }

    /// Must come before init. The transport must outlive the module.
    void attach(KestinTransport &transport) { m_transport = &transport; }

    QDBusMessage syncRemoteCall(const QString &module, const QString &method, const QVariantList &arguments,
                                std::chrono::milliseconds limit = callLimit) override;
    [[nodiscard]] QDBusPendingCall asyncRemoteCall(const QString &module, const QString &method,
                                                   const QVariantList &arguments) override;
    void send(const QString &module, const QString &method, const QVariantList &arguments) override;

    /// Calls the slot for every event of this name. The signature of the slot takes a KestinEvent. False when the
    /// module cannot subscribe.
    bool subscribeEvent(const QString &eventName, QObject *receiver, const char *slotSignature);
    /// Tells when the other module leaves the bus or comes to it, until the watch is destroyed.
    std::unique_ptr<ModuleWatch> watchModule(const QString &module);
    /// Whether the event was handed to the bus. An event of more than 24 MiB is not.
    bool notifyEvent(const KestinEvent &event);
    /// Asks the module "Presentation" for a popup. It is no failure when that module is not there.
    bool showPopup(const QString &text, int kind, int duration, const QStringList &buttons, const QString &icon,
                   const QStringList &arguments, const QMap<QString, QString> &options);

    /// What keeps the module busy for longer than a caller should wait for another answer.
    LongWork &longWork() { return m_longWork; }
    const LongWork &longWork() const { return m_longWork; }
    /// Whether a bus call of this method has to wait now, for the end of long work or for what waits for that already.
    virtual bool mustWait(const QByteArray &method) const;

    /// The call that is served now is this one, which the bus library takes for returned; null: it is no more.
    void setHeldCall(HeldCall *call) { m_heldCall = call; }
    /// Answers the bus call being served with an error instead of a result. Does nothing outside of a call.
    void answerWithError(const QString &errorName, const QString &message);

private:
    KestinTransport &transport();

    QString m_name;
    KestinTransport *m_transport = nullptr;
    LongWork m_longWork;
    HeldCall *m_heldCall = nullptr;
};
