// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"
#include "src/dao/Transaction.h"
#include "tests/src/contacts/ContactsFixture.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingReply>

/// Canonical numbers of those who ask for them, and of all that are stored.
class NumbersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersSurviveTelephonyFaults_data()
    {
        const Rows<ScriptedTransport::Answer> row;
        row("absent", ScriptedTransport().answer);
        row("four elements", ScriptedTransport::with(QStringList(4)));
        row("another type", ScriptedTransport::with(42));
        row("exception", [](const auto &, const auto &) -> QDBusMessage { throw KestinException("m", 1, "why"); });
        row("unknown exception", ScriptedTransport::failing);
    }

    void numbersSurviveTelephonyFaults()
    {
        ContactsFixture store;
        std::tie(store.transport.answer) = currentRow<ScriptedTransport::Answer>();
        QCOMPARE(store.create(person("name=B|officePhone=0 3|officePhoneCan=stale")), "done|created r #CONTACT_1#");
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhone + stored.officePhoneCan, "0 30 3");
    }

    void numbersOfManySurviveTelephonyFaults()
    {
        ContactsFixture store;
        const auto canonicalOf = [&store](const ScriptedTransport::Answer &answer) {
            store.transport.answer = answer;
            ListContact contacts{person("officePhone=1"), person("officePhone=2")};
            store.numbers.canonical.askForCanonicalNumbers(contacts).fill(contacts);
            return contacts.at(0).officePhoneCan + ' ' + contacts.at(1).officePhoneCan;
        };
        const auto secondOnly = [](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            auto numbers = call.arguments.value(0).value<QMapQStringQStringList>();
            numbers.remove("0");
            numbers["1"][0] = "+2";
            return message.createReply(QVariant::fromValue(numbers));
        };
        QCOMPARE(canonicalOf(secondOnly), "1 +2");
        QCOMPARE(canonicalOf(ScriptedTransport().answer), "1 2");
    }

    void aSilenceCountsForTheListInWhichItCame()
    {
        ContactsFixture store;
        const ListContact list(3, person("officePhone=1"));
        const QByteArray one = R"(<contact duid="" puid="p"><officePhone>1</officePhone></contact>)";
        const QString file =
            writeFile(store.folder.filePath("contacts.xml"), "<directory>" + one.repeated(400) + "</directory>");
        const auto callsOf = [&store](const auto &work) {
            store.transport.calls.clear();
            work();
            return store.transport.calls.size();
        };
        const auto create = [&] { store.contacts.creation.createLocalContacts("r", list); };
        store.transport.answer = [](const auto &, const QDBusMessage &message) {
            return message.createErrorReply(QDBusError::NoReply, "silent");
        };
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(callsOf(create), 1);
            QCOMPARE(callsOf([&] { store.contacts.modification.modifyLocalContacts("r", *store.dao.getAllContact()); }),
                     1);
            QCOMPARE(callsOf([&] { store.contacts.defaultContacts.setDefaultContacts("1,,,A,1,,,#2,,,B,2,,,"); }), 1);
            const auto import = [&] {
                store.synchronisation.importer.importFromXml(file);
                store.finish();
            };
            QCOMPARE(callsOf(import), 2); // the second went out with the first
            QCOMPARE(callsOf([&] { store.create(list.first()); }), 2);
        }
        // Who leaves the bus during a call is not silent.
        const PrivateBus bus;
        const QDBusConnection caller = bus.connection("caller");
        Program telephony("kestin-telephony");
        QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, caller));
        telephony.freeze();
        const QString name = KestinBus::serviceName(ModuleName::telephony);
        const QDBusPendingCall call = caller.asyncCall(KestinBus::methodCall(ModuleName::telephony, "a"));
        QVERIFY(caller.interface()->isServiceRegistered(name)); // is answered behind the call
        telephony.kill();
        store.transport.answer = [lost = QDBusPendingReply<>(call)](const auto &, const auto &) mutable {
            lost.waitForFinished();
            return lost.reply();
        };
        QCOMPARE(callsOf(create), 6);
        QCOMPARE(call.error().type(), QDBusError::NoReply);
        QDBusConnection::disconnectFromBus("caller");
    }

    void aListIsAskedForAhead_data()
    {
        const Rows<int, int, int> row; // contacts that keep the numbers they came with; fewest and most calls
        row("answered", 0, 300, 300);
        row("too few numbers", 1, 300, 300);
        row("leaves", 70, 300, 300);
        row("falls silent", 70, 101, 180); // the rest is not asked for
    }

    /// Over a bus with the limits of a system bus; the fault comes in the middle.
    void aListIsAskedForAhead()
    {
        const auto [without, leastCalls, mostCalls] = currentRow<int, int, int>();
        const QByteArray fault = QTest::currentDataTag();
        const PrivateBus bus;
        const QDBusConnection caller = bus.connection(fault);
        Program telephony("kestin-telephony");
        QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, caller));
        const int limitMs = fault == "falls silent" ? 2000 : 5000;
        ContactsFixture store;
        QStringList calls;
        QList<QDBusPendingCall> made;
        qsizetype mostUnderWay = 0;
        store.transport.forward = [&](const ScriptedTransport::Call &call) -> std::optional<QDBusPendingCall> {
            calls.append(call.text());
            if (calls.size() == 100 && fault == "leaves")
                telephony.kill();
            if (calls.size() == 100 && fault == "falls silent")
                telephony.freeze();
            if (fault == "too few numbers" && call.text().contains("121099,"))
                return QDBusPendingCall::fromCompletedCall(
                    QDBusMessage::createMethodCall("a.b", "/a", "a.b", "c").createReply(QVariant(QStringList(4))));
            made.append(caller.asyncCall(KestinBus::methodCall(call.module, call.method, call.arguments), limitMs));
            mostUnderWay = std::max(mostUnderWay, std::count_if(made.cbegin(), made.cend(),
                                                                [](const auto &one) { return !one.isFinished(); }));
            return made.last();
        };
        ListContact list;
        for (int i = 1000; i < 1150; ++i)
            list.append(person(QString("collaborationId=%1|officePhone=+33 38812%1").arg(i)));
        QCOMPARE(store.contacts.creation.createLocalContacts("r", list).size(), 150);
        QVERIFY2(mostUnderWay > 8 && mostUnderWay <= 64, qPrintable(QString::number(mostUnderWay)));
        int raw = 0;
        const std::optional<ListContact> stored = store.dao.getAllContact();
        for (const Contact &contact : *stored)
            raw += int(contact.officePhoneCan != "+3338812" + contact.collaborationId);
        QVERIFY2(raw >= without && (raw == without) == (without < 2), qPrintable(QString::number(raw)));
        QVERIFY2(calls.size() >= leastCalls && calls.size() <= mostCalls, qPrintable(QString::number(calls.size())));
        const qsizetype first = calls.indexOf("Telephony.extractDialableNumberList +33 388121009,,,,");
        QVERIFY(first >= 0 &&
                calls.lastIndexOf("Telephony.makeCanonicalNumberListWithoutPrefix +33388121009,,,,") > first);
        QDBusConnection::disconnectFromBus(fault);
    }

    void changedDialingRulesRecomputeOnce()
    {
        ContactsFixture store;
        QMap<QString, QString> settings{{"DialingRuleCountryCode", "33"}};
        store.transport.answer = [&](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            const QString key = call.arguments.value(0).toString();
            if (call.method == "getSettingValue")
                return message.createReply(QVariant(settings.value(key, QString())));
            if (store.numbers.stored.areStale()) // before the copies, or a kill in between would leave the old numbers
                settings[key] = call.arguments.value(1).toString();
            return message.createReply(QVariant(QString()));
        };
        store.run("PRAGMA query_only=1");
        QVERIFY(store.numbers.dialingRules.dialingRulesChanged());
        QCOMPARE(store.transport.calls.size(), 10); // what cannot be marked is not taken for done
        store.run("PRAGMA query_only=0");
        QVERIFY(store.numbers.dialingRules.dialingRulesChanged());
        QCOMPARE(store.transport.calls.size(), 25);
        QCOMPARE(store.transport.calls.last().arguments.value(0).toString(), "DialingRuleExternalPrefixExceptionsSave");
        QCOMPARE(settings.value("DialingRuleCountryCodeSave"), "33");
        QVERIFY(!store.numbers.dialingRules.dialingRulesChanged());
        store.numbers.stored.fillContactsCanonicalNumbers(); // of nobody
        QVERIFY(!store.numbers.stored.areStale());
        QCOMPARE(store.transport.calls.size(), 35);
    }

    void recomputingGoesOnAtTheNextStart_data()
    {
        const Rows<int, int, int> row;
        row("a portion refused", int(QDBusError::Failed), 3, 201);
        row("nothing for a portion", -1, 3, 201);
        row("silence", int(QDBusError::NoReply), 2, 200);
    }

    void recomputingGoesOnAtTheNextStart()
    {
        auto [error, calls, renewed] = currentRow<int, int, int>();
        ContactsFixture store;
        StoredNumbers &numbers = store.numbers.stored;
        const Contact contact = person("officePhone=12|misc.company=Acme");
        Transaction transaction(store.database.connection());
        for (int i = 0; i < 401; ++i)
            store.put(contact);
        QVERIFY(transaction.commit() && numbers.markStale());
        store.transport.answer = [&](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            if (error < 0 && store.transport.calls.size() == 2)
                return message.createReply(QVariant::fromValue(QMapQStringQStringList()));
            if (error > 0 && store.transport.calls.size() == 2)
                return message.createErrorReply(QDBusError::ErrorType(error), "x");
            auto answer = call.arguments.value(0).value<QMapQStringQStringList>();
            for (QStringList &five : answer)
                five = {"+1", "+2", "+3", "+4", "+5"};
            answer.insert("gone", {"+1", "+2", "+3", "+4", "+5"});
            answer.insert("#CONTACT_401#", {"+1", "+2", "+3", "+4"}); // too few
            return message.createReply(QVariant::fromValue(answer));
        };
        numbers.fillContactsCanonicalNumbers();
        QCOMPARE(int(store.transport.calls.size()), calls);
        QCOMPARE(int(store.contacts.lookup.getLocalContacts("+5").size()), renewed);
        QVERIFY(numbers.areStale());
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhoneCan + stored.faxCan + stored.personalMobileCan + stored.personalHomeCan +
                     stored.personalFaxCan,
                 "+1+2+3+4+5");
        QCOMPARE(stored.misc, contact.misc);
        QVERIFY(store.log.contains("<3>fillContactsCanonicalNumbers Unknown contactID gone"));
        error = 0;
        numbers.fillContactsCanonicalNumbers();
        QCOMPARE(store.contacts.lookup.getLocalContacts("+5").size(), 400);
        QVERIFY(!numbers.areStale());
        QVERIFY(store.stored("#CONTACT_1#") == stored);
        QCOMPARE(store.takeNews(), "");
    }
};

QTEST_GUILESS_MAIN(NumbersTest)
#include "NumbersTest.moc"
