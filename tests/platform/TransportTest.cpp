// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/BusTransport.h"
#include "platform/framework/ErrorReplying.h"
#include "platform/framework/KestinApplication.h"
#include "platform/framework/KestinModule.h"
#include "platform/records/Contact.h"
#include "platform/records/KestinBus.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Test.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <csignal>

using namespace std::chrono_literals;

namespace {

constexpr int tooLarge = 24 * 1024 * 1024;
constexpr int fits = tooLarge - 100;

} // namespace

class TestAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    explicit TestAdaptor(KestinModule &module)
        : QDBusAbstractAdaptor(&module)
    {
    }

public Q_SLOTS:
    QString fails() { throw new KestinException("M", 4, "it failed"); }
    void failsWithoutResult() { fails(); }
    void begins();
    QString answers(int length) { return QString(length, 'a'); }
    int lengthOf(const QString &text) { return int(text.size()); }
    ListContact answersContacts(int length)
    {
        Contact contact;
        contact.melody = QString(length, 'b');
        return {contact};
    }
};

/// A module with the adaptor above, on a connection of its own. Notes the events that it is given.
class TestModule : public KestinModule
{
    Q_OBJECT

public:
    TestModule(const PrivateBus &bus, const QString &name, const QString &connectionName)
        : KestinModule(name)
        , transport(bus.connection(connectionName))
        , m_connectionName(connectionName)
    {
        new ErrorReplying<TestAdaptor>(*this);
        attach(transport);
    }
    ~TestModule() override { QDBusConnection::disconnectFromBus(m_connectionName); }

    bool subscribe(const char *event, QObject *receiver, const char *slot = "slot_event( KestinEvent const& )")
    {
        return subscribeEvent(QLatin1String(event), receiver, slot);
    }
    QDBusError::ErrorType ask(const QString &module, const QString &method)
    {
        return QDBusError(syncRemoteCall(module, method, {})).type();
    }

    bool mustWait(const QByteArray &method) const override { return method != "answers" && longWork().isBusy(); }
    /// Goes on until it is let end.
    void begin()
    {
        m_work.emplace(waitForEnd());
        longWork().start(*m_work);
    }

    BusTransport transport;
    QList<KestinEvent> events;
    bool isToEnd = false;

public Q_SLOTS:
    void slot_event(const KestinEvent &event) { events.append(event); }
    void slot_number(int) {}

private:
    Work waitForEnd()
    {
        while (!isToEnd)
            co_await longWork().turn();
    }

    QString m_connectionName;
    std::optional<Work> m_work;
};

void TestAdaptor::begins()
{
    static_cast<TestModule *>(parent())->begin();
}

/// What a module does on the bus, without being one.
class Peer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    QStringList popups;

public Q_SLOTS:
    void showPopup(const QDBusMessage &message) { popups.append(message.signature()); }
};

/// Notes what the framework leads it through, with a "*" while it has its adaptor and a "+" while its name
/// is on the bus, and asks for its end.
class LivingModule : public KestinModule
{
public:
    explicit LivingModule(const QDBusConnection &observer)
        : KestinModule("Living")
        , m_observer(observer)
    {
    }

    bool check() override { return note("check"); }
    bool deploy() override { return !note("deploy"); }
    bool init() override { return !note("init"); }
    bool run() override
    {
        const auto endWhenPublished = [this] {
            note("life");
            ::raise(SIGTERM);
        };
        QMetaObject::invokeMethod(this, endWhenPublished, Qt::QueuedConnection);
        return !note("run");
    }
    void stop() override { note("stop"); }

    QString life;

private:
    bool note(const QString &hook)
    {
        const bool isOnBus = m_observer.interface()->isServiceRegistered(KestinBus::serviceName(getModuleName()));
        life += hook + (findChild<TestAdaptor *>() ? "*" : QString()) + (isOnBus ? "+ " : " ");
        return isOnBus;
    }

    QDBusConnection m_observer;
};

class TransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_module.emplace(m_bus, "M", "module");
        m_caller.emplace(m_bus, "M", "caller");
        QCOMPARE(m_module->transport.publish(*m_module), std::nullopt);
    }

    void cleanup()
    {
        m_module.reset();
        m_caller.reset();
        QDBusConnection::disconnectFromBus("peer");
    }

    void aSilentPeerIsWaitedForAndAMissingOneIsNot()
    {
        QElapsedTimer timer;
        timer.start();
        // The module lives on this thread, which waits for the answer: so there is none.
        QDBusPendingCall call = m_caller->asyncRemoteCall("M", "answers", {1});
        QCOMPARE(m_caller->ask("M", "answers"), QDBusError::NoReply);
        call.waitForFinished();
        QCOMPARE(call.error().type(), QDBusError::NoReply);
        QVERIFY2(timer.elapsed() >= 4500 && timer.elapsed() < 9500, qPrintable(QString::number(timer.elapsed())));
        timer.start();
        QVERIFY(!m_caller->syncRemoteCall("M", "answers", {1}, 100ms).errorName().isEmpty());
        QCOMPARE(m_caller->ask("Nobody", "a"), QDBusError::ServiceUnknown);
        QVERIFY(timer.elapsed() < 4500); // nobody waits for five seconds
    }

    void noAnswerIsHeldUpByWhatWaits()
    {
        QList<QDBusPendingCall> waiting; // at the module, whose thread this is
        for (int i = 0; i < 3; ++i)
            waiting.append(m_caller->asyncRemoteCall("M", "lengthOf", {QString(fits, 'a')}));
        QCOMPARE(m_caller->ask("Nobody", "a"), QDBusError::ServiceUnknown); // so the bus has them all
        QCOMPARE(m_module->ask("Nobody", "a"), QDBusError::ServiceUnknown);
        for (const QDBusPendingCall &call : waiting)
            QTRY_VERIFY_WITH_TIMEOUT(call.isFinished(), PrivateBus::limitMs);
    }

    void eventsReachOnlyThoseWhoWantThem()
    {
        TestModule second(m_bus, "Second", "second");
        auto gone = std::make_unique<TestModule>(m_bus, "Gone", "gone");
        for (TestModule *receiver : {&*m_caller, &second, gone.get()})
            QVERIFY(m_caller->subscribe("wanted", receiver));
        QVERIFY(m_caller->subscribe("other", &second, "slot_event(KestinEvent)"));
        gone.reset();
        Contact contact;
        contact.name = "M\u00fcller";
        KestinEvent event("wanted", {});
        event.addArgument(QVariant::fromValue(ListContact{contact}), "contacts", true);
        event.addArgument(5, "nbResults", false);
        QVERIFY(m_module->notifyEvent({"unwanted", {}}) && m_module->notifyEvent(event));
        QVERIFY(m_module->notifyEvent({"other", {}}));
        QTRY_COMPARE(second.events.size(), 2);
        QCOMPARE(m_caller->events.size(), 1);
        const KestinEvent received = m_caller->events.first();
        QCOMPARE(received.getEvtName(), "wanted");
        QCOMPARE(received.argument<ListContact>("contacts"), ListContact{contact});
        QCOMPARE(received.argument<int>("nbResults"), 5);
        QCOMPARE(received.argument<QString>("none"), QString());
        QCOMPARE(received.arguments().last().flag, false);
        QVERIFY(second.events.last().arguments().isEmpty());
    }

    void whatCannotWorkIsRefused()
    {
        QVERIFY(!m_caller->subscribe("event", &*m_caller, "slot_missing(KestinEvent)"));
        QVERIFY(!m_caller->subscribe("event", &*m_caller, "slot_event()"));
        QVERIFY(!m_caller->subscribe("event", &*m_caller, "slot_number(int)"));
        KestinEvent event("large", {});
        event.addArgument(QStringList(2, QString(tooLarge / 2, 'a')), "contactIds", true);
        QVERIFY(!m_module->notifyEvent(event));
        QVERIFY(m_module->notifyEvent({"small", {}}));
    }

    void aModuleIsWatched()
    {
        const std::unique_ptr<ModuleWatch> watch = m_module->watchModule("Peer");
        QSignalSpy came(watch.get(), &ModuleWatch::came);
        QSignalSpy left(watch.get(), &ModuleWatch::left);
        Peer peer;
        for (int times = 1; times < 3; ++times) {
            publishPeer("Peer", peer);
            QTRY_COMPARE(came.size(), times);
            QCOMPARE(left.size(), times - 1);
            QDBusConnection::disconnectFromBus("peer");
            QTRY_COMPARE(left.size(), times);
        }
    }

    void aTakenNameIsRefused()
    {
        QCOMPARE(m_caller->transport.publish(*m_caller), "the name com.norlan.Kestin.M is already taken");
        QCOMPARE(call("answers", {2}).arguments().value(0).toString(), "aa");
        m_module->transport.withdraw(*m_module);
        QCOMPARE(QDBusError(call("answers", {2})).type(), QDBusError::ServiceUnknown);
        QCOMPARE(m_caller->transport.publish(*m_caller), std::nullopt);
    }

    void aPopupIsAskedOfThePresentation()
    {
        const auto show = [this] { return m_module->showPopup("text", 3, -1, {}, {}, {}, {}); };
        QVERIFY(show()); // nobody there is no failure
        Peer peer;
        publishPeer(ModuleName::presentation, peer);
        // The peer lives on this thread and answers none of them until they all were sent: a system bus lets 128 wait.
        constexpr int popups = 200;
        for (int i = 0; i < popups; ++i)
            QVERIFY(show());
        QCOMPARE(m_module->ask("Nobody", "a"), QDBusError::ServiceUnknown);
        QTRY_COMPARE(peer.popups, QStringList(popups, "siiassasa{ss}"));
    }

    void failuresOfASlotAreErrorReplies_data()
    {
        const Rows<QVariantList, QString> row;
        const QString failed = "com.norlan.Kestin.KestinException: it failed";
        const QString limit =
            "org.freedesktop.DBus.Error.LimitsExceeded: %1: the result is larger than the bus carries; "
            "ask for fewer at a time";
        row("fails", QVariantList(), failed);
        row("failsWithoutResult", QVariantList(), failed);
        row("answers", QVariantList{tooLarge}, limit.arg("answers"));
        row("lengthOf", QVariantList{QString(tooLarge, 'a')},
            "org.freedesktop.DBus.Error.LimitsExceeded: lengthOf: the arguments are larger than "
            "24 MiB; send fewer at a time");
        row("answersContacts", QVariantList{tooLarge}, limit.arg("answersContacts"));
    }

    void failuresOfASlotAreErrorReplies()
    {
        const auto [arguments, error] = currentRow<QVariantList, QString>();
        const QDBusMessage reply = call(QLatin1String(QTest::currentDataTag()), arguments);
        QCOMPARE(reply.errorName() + ": " + reply.errorMessage(), error);
        // The next caller is served by the same connection.
        const QDBusMessage next = call("answers", {fits});
        QCOMPARE(next.arguments().value(0).toString().size(), fits);
        QCOMPARE(call("lengthOf", {QString(fits / 2, u'\u00e9')}).arguments().value(0).toInt(), fits / 2);
        QCOMPARE(next.service(), m_bus.connection("module").baseService());
    }

    void callsWaitForLongWork()
    {
        const QList<QVariantList> calls{{"begins"}, {"lengthOf", "abc"}, {"fails"}, {"begins"}, {"lengthOf", "ab"}};
        QStringList answers;
        for (const QVariantList &one : calls) {
            auto *call = new QDBusPendingCallWatcher(m_caller->asyncRemoteCall("M", one.first().toString(), one.mid(1)),
                                                     &*m_caller);
            connect(call, &QDBusPendingCallWatcher::finished, &*m_caller,
                    [&answers, call] { answers.append(call->reply().arguments().value(0).toString()); });
        }
        QCOMPARE(call("answers", {2}).arguments().value(0).toString(), "aa"); // comes behind them
        QCOMPARE(answers, QStringList());
        m_module->isToEnd = true;
        QTRY_COMPARE(answers, (QStringList{"", "3", "it failed", "", "2"}));
        QVERIFY(!m_module->longWork().isBusy());
        m_module->isToEnd = false;
        QVERIFY(!m_caller->asyncRemoteCall("M", "begins", {}).isError());
        QTRY_VERIFY(m_module->longWork().isGoingOn()); // and is broken off with its module
    }

    void callsLeaveLongWorkItsShare()
    {
        m_module->begin();
        m_module->isToEnd = true;
        auto *adaptor = m_module->findChild<QDBusAbstractAdaptor *>();
        const int method = adaptor->metaObject()->indexOfMethod("answers(int)");
        int length = 1;
        void *arguments[] = {nullptr, &length};
        const QDeadlineTimer limit(30s);
        while (m_module->longWork().isGoingOn() && !limit.hasExpired()) // and the loop has no turn
            adaptor->qt_metacall(QMetaObject::InvokeMetaMethod, method, arguments);
        QVERIFY(!m_module->longWork().isGoingOn());
    }

    void whatWaitsIsBounded()
    {
        m_module->begin();
        const QVariantList large{QString(fits / 2 + 1, 'a')};
        const QDBusPendingCall first = m_caller->asyncRemoteCall("M", "lengthOf", large);
        QCOMPARE(call("lengthOf", large).errorMessage(), "lengthOf: too many calls wait already; call again later");
        m_module->isToEnd = true;
        QTRY_COMPARE(first.reply().arguments(), QVariantList{fits / 2 + 1});
        QCOMPARE(call("lengthOf", large).arguments(), QVariantList{fits / 2 + 1});
    }

    void aModuleIsOnTheBusFromRunToStop()
    {
        LivingModule module(m_bus.connection("peer"));
        QCOMPARE(static_cast<KestinApplication *>(qApp)->exec<TestAdaptor>(module), 0);
        QCOMPARE(module.life, "check deploy init run life*+ stop* ");
    }

    void theEndOfTheBusIsTold()
    {
        auto bus = std::make_unique<PrivateBus>();
        TestModule module(*bus, "M", "lost");
        QSignalSpy disconnected(&module.transport, &BusTransport::disconnected);
        bus.reset();
        QVERIFY(!disconnected.isEmpty() || disconnected.wait(PrivateBus::limitMs));
        QCOMPARE(module.ask("M", "a"), QDBusError::Disconnected);
    }

private:
    /// Calls the module, with this thread free to answer and longer than modules wait: much is carried here.
    QDBusMessage call(const QString &method, const QVariantList &arguments = {})
    {
        return m_bus.answerTo(KestinBus::methodCall("M", method, arguments), "caller");
    }

    /// On the connection "peer", under the module's name.
    void publishPeer(const QString &module, QObject &peer)
    {
        QDBusConnection connection = m_bus.connection("peer");
        QVERIFY(connection.registerObject(KestinBus::objectPath(module), &peer, QDBusConnection::ExportAllSlots));
        QVERIFY(connection.registerService(KestinBus::serviceName(module)));
    }

    PrivateBus m_bus;
    std::optional<TestModule> m_module; ///< is on the bus
    std::optional<TestModule> m_caller; ///< is not
};

int main(int argc, char **argv)
{
    KestinApplication application(argc, argv);
    TransportTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "TransportTest.moc"
