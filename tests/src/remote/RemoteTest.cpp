// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"
#include "src/remote/RemoteContacts.h"
#include "src/remote/SearchCalls.h"
#include "src/remote/ServiceRight.h"
#include "src/remote/WebServiceEvents.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScriptedTransport.h"

#include <QSignalSpy>
#include <QTest>

namespace {

KestinEvent eventWith(const ListEventArgument &arguments)
{
    return KestinEvent("E", arguments);
}

} // namespace

class RemoteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRightDecides();
    void callsAndTheirTexts();
    void searchesAskForWhatIsNeeded();
    void answersAreRead();
    void malformedAnswersCountAsEmpty();
    void aCopyIsAnsweredOnce();
    void anImAddressIsAskedOfTheCompany();
};

void RemoteTest::theRightDecides()
{
    LogCapture log;
    ScriptedTransport transport;
    DirectoryFields fields;
    ServiceRight right(transport, fields);
    QVERIFY(!right.check()); // nobody there
    QVERIFY(!fields.icsLogin);
    QVERIFY(log.contains("<3>bad reply on WSManager:GetServiceRight(IcsUda) : 0"));
    transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &message) {
        return message.createReply(QVariant(true));
    };
    right.setAttributesInitialised(true);
    QVERIFY(!right.check());
    QVERIFY(fields.icsLogin);
    QVERIFY(log.contains("<7>UDA remote ICS services availability : 1"));
    QCOMPARE(transport.calls.last().method, "udaGetAttributes");
    QCOMPARE(transport.calls.last().arguments, QVariantList{"InitDir"});
    transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &) -> QDBusMessage { throw 1; };
    right.check();
    QVERIFY(fields.icsLogin); // an error keeps what was known
    transport.calls.clear();
    transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &message) {
        return message.createReply(QVariant(false));
    };
    right.check();
    QVERIFY(!fields.icsLogin); // withdrawn
    QCOMPARE(transport.calls.size(), 1);
    // A check serves all who asked before it; those who ask while it waits get one more.
    transport.answer = [&right, &transport](const ScriptedTransport::Call &, const QDBusMessage &message) {
        for (int events = transport.calls.size() == 2 ? 4 : 0; events > 0; --events)
            right.request();
        return ScriptedTransport::noPeer(message);
    };
    for (int events = 0; events < 4; ++events)
        right.request();
    QCOMPARE(transport.calls.size(), 1); // nothing yet
    QTRY_COMPARE(transport.calls.size(), 3);
    QCoreApplication::processEvents();
    QCOMPARE(transport.calls.size(), 3);
    for (const bool isAllowed : {false, true}) {
        transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &message) {
            return message.createReply(QVariant(true));
        };
        right.start(isAllowed);
        QCOMPARE(fields.icsLogin, isAllowed);
        fields.icsLogin = true; // an availability event has said so
        right.managerLeft();
        QVERIFY(!fields.icsLogin);
        right.managerCame();
        QCoreApplication::processEvents();
        QCOMPARE(fields.icsLogin, isAllowed);
    }
    right.setAttributesInitialised(false);
    QVERIFY(log.contains("<4>Attributes have not been correctly initialized"));
}

void RemoteTest::callsAndTheirTexts()
{
    LogCapture log;
    ScriptedTransport transport;
    RemoteDirectory directory(transport);
    bool ok = false;
    QVERIFY(directory.searchByPhoneNumber("s", "AND", {"1"}, {"a"}, {"b"}, &ok));
    QVERIFY(ok);
    QCOMPARE(transport.calls.last().method, "udaSearch");
    QCOMPARE(transport.calls.last().arguments,
             (QVariantList{"s", "AND", QStringList("TELEPHONENUMBER"), QStringList("EQUAL"), QStringList("1"),
                           QStringList("a"), QStringList("b")}));
    QVERIFY(!directory.stopSearch("s"));
    transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &) -> QDBusMessage {
        throw KestinException("m", 1, "why");
    };
    QVERIFY(!directory.searchByFullName("s", "n", {}, {}, &ok));
    QVERIFY(!ok);
    QCOMPARE(log.lines, (QStringList{"<3>ERROR: While calling method searchByFullName of module "
                                     "KestinWebServiceHelper:",
                                     "<3>why"}));
    log.lines.clear();
    directory.getDirectories("t");
    QCOMPARE(log.lines, QStringList("<3>ERROR: While calling method getDirectories of module "
                                    "KestinWebServiceHelper:why"));
}

void RemoteTest::searchesAskForWhatIsNeeded()
{
    ScriptedTransport transport;
    SearchCalls calls(transport);
    calls.searchByFullName("s", "n");
    calls.searchByPhoneNumber("s", "+1");
    calls.getNextResults("s");
    calls.stopSearch("s");
    QStringList made;
    for (const ScriptedTransport::Call &call : transport.calls) {
        made.append(call.module + '.' + call.method);
        for (const QVariant &argument : call.arguments)
            made.last() += ' ' + argument.toStringList().join(',');
    }
    QCOMPARE(made,
             (QStringList{"WSManager.udaSearchByFullName s n", "WSManager.udaSearch s AND TELEPHONENUMBER EQUAL +1",
                          "WSManager.udaGetNextResults s", "WSManager.udaStopSearch s"}));
}

void RemoteTest::answersAreRead()
{
    LogCapture log;
    WebServiceEvents events;
    QSignalSpy started(&events, &WebServiceEvents::searchStarted);
    QSignalSpy packets(&events, &WebServiceEvents::packetReceived);
    QSignalSpy addresses(&events, &WebServiceEvents::imAddressReceived);
    QSignalSpy availability(&events, &WebServiceEvents::availabilityChanged);
    events.searchAccepted(eventWith({{"reqId", "s", true}, {"response", "OK", true}}));
    QCOMPARE(started.value(0), QVariantList{"s"});
    QVERIFY(log.contains("<7>Result status=OK searchId=s"));
    events.nextResults(
        eventWith({{"reqId", "s", true}, {"status", 2, true}, {"result", QVariant::fromValue(ListContact(3)), true}}));
    QCOMPARE(packets.value(0).value(1).value<ListContact>().size(), 3);
    QCOMPARE(packets.value(0).value(2).toInt(), 2);
    QVERIFY(log.contains("<7>Event get next results with status [2] and nb contacts [3] "));
    events.attributeByContactId(eventWith({{"reqId", "a[b[imAddress]", true}, {"result", "im@h", true}}));
    QCOMPARE(addresses.value(0), (QVariantList{"a[b", "im@h"}));
    events.managerAvailability(eventWith({{"status", 1, true}}));
    events.directoryAvailability(eventWith({}));
    QCOMPARE(availability.size(), 2);
}

void RemoteTest::malformedAnswersCountAsEmpty()
{
    LogCapture log;
    WebServiceEvents events;
    QSignalSpy packets(&events, &WebServiceEvents::packetReceived);
    QSignalSpy profiles(&events, &WebServiceEvents::profileReceived);
    QSignalSpy attributes(&events, &WebServiceEvents::attributesReceived);
    events.nextResults(eventWith({}));
    events.nextResults(eventWith({{"reqId", 7, true}, {"status", "x", true}, {"result", QStringList("a"), true}}));
    QCOMPARE(packets.size(), 2);
    QCOMPARE(packets.value(1).value(1).value<ListContact>().size(), 0);
    events.contactProfile(eventWith({{"result", 1, true}}));
    QCOMPARE(profiles.value(0).value(1).value<ListContact>().size(), 0);
    events.attributes(eventWith({}));
    QCOMPARE(attributes.value(0).value(0).toBool(), false);
}

void RemoteTest::aCopyIsAnsweredOnce()
{
    LogCapture log;
    ScriptedTransport transport;
    RemoteDirectory directory(transport);
    RemoteContacts contacts(directory);
    QSignalSpy copies(&contacts, &RemoteContacts::copyArrived);
    contacts.profileReceived("a", ListContact(1));
    QCOMPARE(copies.size(), 0); // nobody asked
    contacts.copyContactToLocal("a");
    QCOMPARE(transport.calls.last().arguments, (QVariantList{"a", "a"}));
    contacts.profileReceived("a", ListContact(1));
    contacts.profileReceived("a", ListContact(1));
    QCOMPARE(copies.size(), 1);
    contacts.copyContactToLocal("b");
    contacts.profileReceived("b", {}); // the directory does not know it
    contacts.profileReceived("b", ListContact(1));
    QCOMPARE(copies.size(), 1);
    transport.answer = [](const ScriptedTransport::Call &, const QDBusMessage &) -> QDBusMessage { throw 1; };
    contacts.copyContactToLocal("c"); // cannot be asked for
    contacts.profileReceived("c", ListContact(1));
    QCOMPARE(copies.size(), 1);
    transport.answer = ScriptedTransport().answer;
    RemoteContacts impatient(directory, std::chrono::milliseconds(0));
    QSignalSpy lateCopies(&impatient, &RemoteContacts::copyArrived);
    impatient.copyContactToLocal("d");
    impatient.profileReceived("d", ListContact(1));
    QCOMPARE(lateCopies.size(), 0);
}

void RemoteTest::anImAddressIsAskedOfTheCompany()
{
    ScriptedTransport transport;
    RemoteDirectory directory(transport);
    RemoteContacts(directory).askForImAddress("42");
    QCOMPARE(transport.calls.last().method, "getAttributeTypeByContactId");
    QCOMPARE(transport.calls.last().arguments, (QVariantList{"42[imAddress]", "42", "imAddress"}));
}

QTEST_GUILESS_MAIN(RemoteTest)
#include "RemoteTest.moc"
