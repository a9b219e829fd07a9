// SPDX-License-Identifier: Apache-2.0
#include "tests/src/search/SearchStand.h"
#include "tests/support/Rows.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QTest>

class SearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void localContactsComeInOrder()
    {
        SearchStand stand;
        stand.put("b", "Müller");
        stand.put("a", "Mueller");
        stand.put("a", "Müller");
        stand.put("x", "Other");
        bool isToldBefore = false;
        QObject::connect(&*stand.search, &ContactSearch::workerCreated, &stand.context,
                         [&] { isToldBefore = stand.log.contains("<4>Search is local only"); });
        QCOMPARE(stand.search->startSearchContactByName("s", "mu", 2, true), 0);
        QVERIFY(isToldBefore);
        QTRY_COMPARE(stand.told, (QStringList{"results s 3 aMueller aMüller", "completed s 3 aMueller aMüller"}));
        QCOMPARE(stand.page("s"), "aMueller aMüller bMüller");
        QCOMPARE(stand.search->getSearchResults("s", 1, 1).value(0).firstName, "a");
        QCOMPARE(stand.search->getSearchResults("s", 7, 1).size(), 0);
        QCOMPARE(stand.search->getContactFromSearch("s", "nobody"), Contact());
        stand.search->purgeSearchResults("s");
        QCOMPARE(stand.page("s"), QString());
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 1); // the worker's own is closed
    }

    void bothSidesAreJoinedInOneList()
    {
        SearchStand stand;
        stand.put("x", "Pavel");
        stand.answerWith({{stand.person("Paul", "Martin"), stand.person("a", "Patel")},
                          {},
                          {stand.person("a", "Paar"), stand.person("Paula", "Adam")}});
        stand.search->startSearchContactByName("s", "pa", 6, false);
        QTRY_COMPARE(stand.told.size(), 2);
        // Full list: what the phone has comes first and at once, the rest with the completion, first-name matches last.
        QCOMPARE(stand.told, (QStringList{"results s 1 xPavel", "completed s 5 PaulaAdam"}));
        QCOMPARE(stand.page("s"), "xPavel aPaar aPatel PaulMartin PaulaAdam");
        QCOMPARE(stand.asked, (QStringList{"search s", "next s", "next s", "next s"}));
    }

    void perDirectoryTellsPacketsAsTheyCome()
    {
        SearchStand stand;
        stand.fields.searchMode = DirectoryFields::perDirectory;
        stand.put("x", "Pavel");
        stand.answerWith({{stand.person("b", "Pa"), stand.person("a", "Pa"), stand.person("Paul", "M")},
                          {stand.person("Paa", "N")}});
        const auto answers = std::exchange(stand.remote, {});
        stand.search->startSearchContactByName("s", "pa", 3, false);
        stand.fields.searchMode = DirectoryFields::fullList; // for the next search
        QTRY_COMPARE(stand.told, QStringList("results s 1 xPavel"));
        stand.remote = answers;
        stand.remote("search", "s");
        QTRY_COMPARE(stand.told.size(), 3);
        QCOMPARE(stand.told.value(1), "results s 3 aPa bPa");
        QCOMPARE(stand.told.value(2), "completed s 5");
        QCOMPARE(stand.page("s"), "xPavel aPa bPa PaaN PaulM");
    }

    void perDirectoryTellsPacketsThatCameFirst_data()
    {
        const Rows<QString, QStringList> row("name", "told");
        row("the phone has some", "pa", {"results s 1 xPavel", "results s 2 bPa", "completed s 2"});
        row("the phone has none", "nobody", {"results s 1 bPa", "completed s 1"});
    }

    void perDirectoryTellsPacketsThatCameFirst()
    {
        QFETCH(QString, name);
        SearchStand stand;
        stand.fields.searchMode = DirectoryFields::perDirectory;
        stand.put("x", "Pavel");
        stand.search->startSearchContactByName("s", name, 3, false);
        QVERIFY(
            stand.log.contains("<4>[startSearchcontactByName] UDA remote server is not reachable, search will be local "
                               "only"));
        stand.search->addContacts("s", {stand.person("b", "Pa")}, false);
        QTRY_VERIFY(stand.told.join(' ').contains("completed"));
        QTEST(stand.told, "told");
    }

    void oneContactIsTheOneListed_data()
    {
        // nameNow: of who is stored under the id
        // latinName: which a summary has not
        const Rows<QString, bool, QString> row("nameNow", "companyHasId", "latinName");
        row("as listed", "Pavel", true, latinText("Pavel"));
        row("the id came back", "Other", true, "company");
        row("the id came back and nobody else has it", "Other", false, "");
        row("deleted", "", true, "company");
        row("deleted and nobody else has it", "", false, "");
    }

    void oneContactIsTheOneListed()
    {
        QFETCH(QString, nameNow);
        QFETCH(bool, companyHasId);
        SearchStand stand;
        stand.put("x", "Pavel");
        const QString id = "#CONTACT_1#";
        Contact company = stand.person("c", "Pavel");
        company.latinName = "company";
        if (companyHasId)
            company.contactId = id;
        stand.answerWith({{company}});
        stand.search->startSearchContactByName("s", "pa", 10, false);
        QTRY_COMPARE(stand.told.size(), 2);
        QVERIFY(stand.dao->deleteContact(id));
        if (!nameNow.isEmpty())
            stand.put("x", nameNow);
        QCOMPARE(stand.dao->getContact(id)->value(0).name, nameNow);
        const Contact contact = stand.search->getContactFromSearch("s", id);
        QCOMPARE(contact.name, "Pavel");
        QTEST(contact.latinName, "latinName");
        QCOMPARE(stand.telephony.calls.value(0).method, "makeCanonicalNumberListWithoutPrefix");
    }

    void aNumberIsFoundOnEitherSide()
    {
        SearchStand stand;
        stand.put("local", "One", "+1");
        stand.search->startSearchContactByPhoneNumber("s1", "+1", false);
        QTRY_COMPARE(stand.told, QStringList("number s1 One"));
        stand.answerWith({{stand.person("remote", "Two")}});
        stand.search->startSearchContactByPhoneNumber("s2", "+2", false);
        QTRY_COMPARE(stand.told.value(1), "number s2 Two");
        stand.search->startSearchContactByPhoneNumber("s3", "+3", true);
        QTRY_COMPARE(stand.told.value(2), "number s3 ");
    }

    void anEmptyNumberCompletesAtOnce()
    {
        SearchStand stand;
        stand.put("a", "A");
        stand.search->startSearchContactByName("s", "a", 10, true);
        stand.search->startSearchContactByPhoneNumber("n", QString(), false);
        QCOMPARE(stand.told, QStringList("number n ")); // and the search that runs goes on as what it is
        QTRY_COMPARE(stand.told.mid(1), (QStringList{"results s 1 aA", "completed s 1 aA"}));
        stand.search->startSearchContactByPhoneNumber("n", QString(), false);
        QCOMPARE(stand.page("s"), QString()); // every start empties what was found before
    }

    void theLastRequestReplacesTheRunningSearch_data()
    {
        const Rows<QString> row("running");
        for (const char *id : {"s1", "NO_SEARCH", ""})
            row(id, id);
    }

    void theLastRequestReplacesTheRunningSearch()
    {
        QFETCH(QString, running);
        SearchStand stand;
        stand.put("a", "Found");
        stand.fields.icsLogin = true; // and nobody answers yet
        stand.search->startSearchContactByName(running, "f", 10, false);
        QTRY_COMPARE(stand.asked, QStringList("search " + running));
        stand.search->startSearchContactByName("s2", "f", 10, false);
        stand.search->startSearchContactByPhoneNumber("s3", "+9", true);
        QVERIFY(stand.log.contains("<4>Remote search " + running + " is ongoing, search  s2 will replace it"));
        QVERIFY(stand.log.contains("<4>local search " + running + " is ongoing, search  s3 will replace it"));
        stand.search->mailbox().setStarted(running);
        QTRY_VERIFY(stand.told.contains("number s3 "));
        QVERIFY(!stand.told.join(' ').contains("completed"));
        QCOMPARE(stand.asked, (QStringList{"search " + running, "stop " + running}));
    }

    void anIdThatComesAgainGetsItsOwnContactsOnly_data()
    {
        // status: with which the first search ends, 0: it is replaced
        const Rows<int, bool> row("status", "isPurged");
        row("replaced", 0, false);
        row("purged", 0, true);
        row("given up", int(PacketStatus::TimedOut), false);
    }

    void anIdThatComesAgainGetsItsOwnContactsOnly()
    {
        QFETCH(int, status);
        QFETCH(bool, isPurged);
        SearchStand stand;
        stand.put("a", "Found");
        stand.fields.icsLogin = true;
        SearchMailbox &mailbox = stand.search->mailbox();
        stand.search->startSearchContactByName("s", "f", 10, false);
        mailbox.setStarted("s");
        QTRY_COMPARE(stand.asked, (QStringList{"search s", "next s"}));
        if (isPurged)
            stand.search->purgeSearchResults("s");
        if (status != 0) {
            mailbox.put("s", {{stand.person("last", "F")}, status});
            QTRY_COMPARE(stand.told.value(1), "completed s 2 lastF");
        }
        stand.told.clear();
        stand.search->startSearchContactByName("s", "m", 10, false);
        QTRY_COMPARE(stand.asked, (QStringList{"search s", "next s", "stop s", "search s"}));
        mailbox.put("s", {{stand.person("late", "Stranger")}, int(PacketStatus::Finished)});
        mailbox.setStarted("s");
        QTRY_COMPARE(stand.asked.size(), 5);
        mailbox.put("s", {{stand.person("b", "Martin")}, int(PacketStatus::Finished)});
        QTRY_COMPARE(stand.told, QStringList("completed s 1"));
        QCOMPARE(stand.page("s"), "bMartin");
        stand.search->startSearchContactByName("t", "f", 10, true);
        stand.search->startSearchContactByName("t", "m", 10, true); // while the packet of the first is on its way
        QTRY_COMPARE(stand.told.mid(1), QStringList("completed t 0"));
    }

    void aWorkerThatCannotBeStartedFindsNothing()
    {
        SearchStand stand;
        stand.put("a", "Found");
        stand.fields.icsLogin = true;
        const auto spoil = [](SearchThread *worker) {
            worker->setStackSize(1);
            QTest::ignoreMessage(QtCriticalMsg, "QThread::start: Thread stack size error (Invalid argument)");
        };
        const auto spoiling = QObject::connect(&*stand.search, &ContactSearch::workerCreated, &stand.context, spoil);
        stand.search->startSearchContactByName("s", "f", 10, false);
        QCOMPARE(stand.told, QStringList()); // not before the answer
        QTRY_COMPARE(stand.told, QStringList("completed s 0"));
        QCOMPARE(stand.search->findChildren<SearchThread *>().size(), 0);
        QObject::disconnect(spoiling);
        stand.search->startSearchContactByName("t", "f", 10, true);
        QTRY_COMPARE(stand.told.mid(1), (QStringList{"results t 1 aFound", "completed t 1 aFound"}));
    }

    void aPurgedSearchTellsNothing_data()
    {
        const Rows<bool> row("isEarly");
        row("contacts told", false);
        row("contacts on their way", true);
    }

    void aPurgedSearchTellsNothing()
    {
        QFETCH(const bool, isEarly);
        SearchStand stand;
        stand.put("a", "Found");
        stand.fields.icsLogin = !isEarly;
        stand.search->startSearchContactByName("s", "f", 10, false);
        if (!isEarly)
            QTRY_COMPARE(stand.told, QStringList("results s 1 aFound"));
        stand.search->startSearchContactByName("w", "f", 10, false); // waits, and is dropped as well
        stand.search->purgeSearchResults("s");
        stand.search->mailbox().setStarted("s");
        QTRY_COMPARE(stand.search->findChildren<SearchThread *>().size(), 0);
        QCOMPARE(stand.asked, isEarly ? QStringList() : (QStringList{"search s", "stop s"}));
        stand.search->startSearchContactByName("t", "f", 10, true);
        QTRY_VERIFY(stand.told.contains("completed t 1 aFound"));
        QCOMPARE(stand.told.size(), isEarly ? 2 : 3);
    }

    void aSilentDirectoryIsGivenUp()
    {
        SearchStand stand;
        stand.put("a", "B");
        stand.fields.icsLogin = true;
        QElapsedTimer timer;
        timer.start();
        stand.search->startSearchContactByPhoneNumber("s", "+1", false);
        SearchMailbox mailbox; // of another one, which is accepted, and then silent
        mailbox.open("accepted");
        mailbox.setStarted("accepted");
        auto *other = new RemoteSearchByNameThread(mailbox, "b", "accepted"); // deleted by its end
        stand.connect(other);
        other->disconnect(&*stand.search);
        other->start();
        stand.search->mailbox().setStarted("another");
        QTRY_COMPARE_WITH_TIMEOUT(stand.told, QStringList("number s "), 15000);
        QVERIFY(timer.elapsed() > 9000);
        QTRY_COMPARE(stand.asked.size(), 4);
        stand.asked.sort();
        QCOMPARE(stand.asked, (QStringList{"next accepted", "search accepted", "search s", "stop accepted"}));
        QVERIFY(stand.log.contains("<7>[RemoteSearchByPhoneNumberThread] start search Id: s"));
        QVERIFY(stand.log.contains("<7>[RemoteSearchByPhoneThread] Security: stopping search unstarted"));
        QVERIFY(stand.log.contains("<7>[RemoteSearchByNameThread] Security: stopping search accepted w/o results"));
    }

    void strangeAnswersDoNoHarm()
    {
        SearchStand stand;
        stand.fields.icsLogin = true;
        stand.remote = [&](const QString &what, const QString &id) {
            SearchMailbox &mailbox = stand.search->mailbox();
            mailbox.put("unknown", {{stand.person("x", "X")}, 1});
            mailbox.setStarted(id);
            if (what != "next")
                return;
            for (int i = 0; i < 2; ++i) // answered twice counts once
                mailbox.put(id, {ListContact(10000, stand.person("a", "B")), int(PacketStatus::Finished)});
        };
        stand.search->startSearchContactByName("s", "b", 0, false);
        QTRY_COMPARE(stand.told, QStringList("completed s 10000"));
        QCOMPARE(stand.page("unknown"), QString());
        stand.search->mailbox().put("s", {{stand.person("late", "L")}, 1});
        QCOMPARE(stand.search->getSearchResults("s", 0, -1).size(), 10000);
    }

    void photoAddressesAreRewritten()
    {
        SearchStand stand;
        stand.fields.removeHttpsFromPhotoUrl = true;
        Contact contact = stand.person("a", "B");
        contact.photo = "https://h/p";
        Contact other = stand.person("b", "B");
        other.photo = "HTTPS://h/p";
        stand.answerWith({{contact, other}});
        stand.search->startSearchContactByName("s", "b", 10, false);
        QTRY_COMPARE(stand.told.size(), 1);
        QCOMPARE(stand.search->getContactFromSearch("s", contact.contactId).photo, "http://h/p");
        QCOMPARE(stand.search->getContactFromSearch("s", other.contactId).photo, "HTTPS://h/p");
    }

    void runningSearchesEndWithTheService()
    {
        SearchStand stand;
        stand.answerWith({ListContact(100, stand.person("a", "B")), {}});
        for (int i = 0; i < 20; ++i) {
            stand.search->startSearchContactByName(QString::number(i), "b", 10, i % 2 == 0);
            QCoreApplication::processEvents();
        }
        stand.search.reset(); // waits for whoever still works
        QCOMPARE(QSqlDatabase::connectionNames().size(), 1);
    }

    void waitsEndAtOnce_data()
    {
        const Rows<bool, QStringList> row("isAccepted", "asked");
        row("for the start", false, {"search s"});
        row("for a packet", true, {"search s", "next s"});
    }

    void waitsEndAtOnce()
    {
        QFETCH(bool, isAccepted);
        QFETCH(QStringList, asked);
        for (const bool isServiceEnding : {false, true}) { // or else the company directory leaves
            SearchStand stand;
            stand.fields.icsLogin = true;
            stand.search->startSearchContactByName("s", "b", 10, false);
            if (isAccepted)
                stand.search->mailbox().setStarted("s");
            QTRY_COMPARE(stand.asked, asked);
            QElapsedTimer timer;
            timer.start();
            if (isServiceEnding) {
                stand.search.reset();
            } else {
                stand.search->mailbox().abandon();
                QTRY_COMPARE(stand.told, QStringList("completed s 0"));
            }
            QVERIFY(timer.elapsed() < 3000);
        }
    }
};

QTEST_GUILESS_MAIN(SearchTest)
#include "SearchTest.moc"
