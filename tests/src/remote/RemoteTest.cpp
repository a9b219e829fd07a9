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

class RemoteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRightDecides()
    {
        LogCapture log;
        ScriptedTransport transport;
        DirectoryFields fields;
        ServiceRight right(transport, fields);
        QVERIFY(!right.check()); // nobody there
        QVERIFY(!fields.icsLogin);
        QVERIFY(log.contains("<3>bad reply on WSManager:GetServiceRight(IcsUda) : 0"));
        transport.answer = ScriptedTransport::with(true);
        right.setAttributesInitialised(true);
        QVERIFY(!right.check());
        QVERIFY(fields.icsLogin);
        QVERIFY(log.contains("<7>UDA remote ICS services availability : 1"));
        QCOMPARE(transport.calls.last().text(), "WSManager.udaGetAttributes InitDir");
        transport.answer = ScriptedTransport::failing;
        right.check();
        QVERIFY(fields.icsLogin); // an error keeps what was known
        transport.calls.clear();
        transport.answer = ScriptedTransport::with(false);
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
        transport.answer = ScriptedTransport::with(true);
        for (const bool isAllowed : {false, true}) {
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

    void aFailedCallIsLoggedInItsWords()
    {
        LogCapture log;
        ScriptedTransport transport;
        RemoteDirectory directory(transport);
        QCOMPARE(directory.searchByPhoneNumber("s", "AND", {"1"}, {"a"}, {"b"}), true);
        QCOMPARE(transport.calls.last().text(), "WSManager.udaSearch s AND TELEPHONENUMBER EQUAL 1 a b");
        QCOMPARE(directory.stopSearch("s"), false);
        transport.answer = [](const auto &, const auto &) -> QDBusMessage { throw KestinException("m", 1, "why"); };
        QCOMPARE(directory.searchByFullName("s", "n", {}, {}), std::nullopt);
        directory.getDirectories("t");
        QCOMPARE(
            log.lines,
            (QStringList{"<3>ERROR: While calling method searchByFullName of module KestinWebServiceHelper:", "<3>why",
                         "<3>ERROR: While calling method getDirectories of module KestinWebServiceHelper:why"}));
    }

    void searchesAskForWhatIsNeeded()
    {
        ScriptedTransport transport;
        SearchCalls calls(transport);
        calls.searchByFullName("s", "n");
        calls.searchByPhoneNumber("s", "+1");
        calls.getNextResults("s");
        calls.stopSearch("s");
        QStringList made;
        for (const ScriptedTransport::Call &call : transport.calls)
            made.append(call.text());
        QCOMPARE(made,
                 (QStringList{"WSManager.udaSearchByFullName s n", "WSManager.udaSearch s AND TELEPHONENUMBER EQUAL +1",
                              "WSManager.udaGetNextResults s", "WSManager.udaStopSearch s"}));
    }

    void answersAreReadAndMalformedOnesCountAsEmpty()
    {
        LogCapture log;
        WebServiceEvents events;
        QSignalSpy started(&events, &WebServiceEvents::searchStarted);
        QSignalSpy packets(&events, &WebServiceEvents::packetReceived);
        QSignalSpy addresses(&events, &WebServiceEvents::imAddressReceived);
        QSignalSpy availability(&events, &WebServiceEvents::availabilityChanged);
        QSignalSpy profiles(&events, &WebServiceEvents::profileReceived);
        QSignalSpy attributes(&events, &WebServiceEvents::attributesReceived);
        events.searchAccepted({"E", {{"reqId", "s", true}, {"response", "OK", true}}});
        QCOMPARE(started.value(0), QVariantList{"s"});
        QVERIFY(log.contains("<7>Result status=OK searchId=s"));
        const QVariant three = QVariant::fromValue(ListContact(3));
        events.nextResults({"E", {{"reqId", "s", true}, {"status", 2, true}, {"result", three, true}}});
        events.nextResults({"E", {}});
        events.nextResults({"E", {{"reqId", 7, true}, {"status", "x", true}, {"result", QStringList("a"), true}}});
        QCOMPARE(packets.size(), 3);
        QCOMPARE(packets.value(0).value(1).value<ListContact>().size(), 3);
        QCOMPARE(packets.value(0).value(2).toInt(), 2);
        QVERIFY(log.contains("<7>Event get next results with status [2] and nb contacts [3] "));
        QCOMPARE(packets.value(2).value(1).value<ListContact>().size(), 0);
        events.attributeByContactId({"E", {{"reqId", "a[b[imAddress]", true}, {"result", "im@h", true}}});
        QCOMPARE(addresses.value(0), (QVariantList{"a[b", "im@h"}));
        events.managerAvailability({"E", {{"status", 1, true}}});
        events.directoryAvailability({"E", {}});
        QCOMPARE(availability.size(), 2);
        events.contactProfile({"E", {{"result", 1, true}}});
        QCOMPARE(profiles.value(0).value(1).value<ListContact>().size(), 0);
        events.attributes({"E", {}});
        QCOMPARE(attributes.value(0).value(0).toBool(), false);
    }

    void aCopyIsAnsweredOnce()
    {
        LogCapture log;
        ScriptedTransport transport;
        RemoteDirectory directory(transport);
        RemoteContacts contacts(directory);
        QSignalSpy copies(&contacts, &RemoteContacts::copyArrived);
        const auto copiesAfter = [&](const QString &id, qsizetype profile) {
            contacts.profileReceived(id, ListContact(profile));
            return copies.size();
        };
        QCOMPARE(copiesAfter("a", 1), 0); // nobody asked
        contacts.copyContactToLocal("a");
        QCOMPARE(transport.calls.last().arguments, (QVariantList{"a", "a"}));
        QCOMPARE(copiesAfter("a", 1), 1);
        QCOMPARE(copiesAfter("a", 1), 1);
        contacts.copyContactToLocal("b");
        QCOMPARE(copiesAfter("b", 0), 1); // the directory does not know it
        QCOMPARE(copiesAfter("b", 1), 1);
        transport.answer = ScriptedTransport::failing;
        contacts.copyContactToLocal("c"); // cannot be asked for
        QCOMPARE(copiesAfter("c", 1), 1);
        transport.answer = ScriptedTransport().answer;
        RemoteContacts impatient(directory, std::chrono::milliseconds(0));
        QSignalSpy lateCopies(&impatient, &RemoteContacts::copyArrived);
        impatient.copyContactToLocal("d");
        impatient.profileReceived("d", ListContact(1));
        QCOMPARE(lateCopies.size(), 0);
    }

    void anImAddressIsAskedOfTheCompany()
    {
        ScriptedTransport transport;
        RemoteDirectory directory(transport);
        RemoteContacts(directory).askForImAddress("42");
        QCOMPARE(transport.calls.last().text(), "WSManager.getAttributeTypeByContactId 42[imAddress] 42 imAddress");
    }
};

QTEST_GUILESS_MAIN(RemoteTest)
#include "RemoteTest.moc"
