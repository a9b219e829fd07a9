// SPDX-License-Identifier: Apache-2.0
#include "tests/src/search/SearchFixture.h"

#include <QElapsedTimer>
#include <QSqlDatabase>

class SearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void localContactsComeInOrder()
    {
        SearchFixture store;
        store.put("b", "Müller");
        store.put("a", "Mueller");
        store.put("a", "Müller");
        store.put("x", "Other");
        bool isToldBefore = false;
        QObject::connect(&*store.search, &ContactSearch::workerCreated, &store.context,
                         [&] { isToldBefore = store.log.contains("<4>Search is local only"); });
        QCOMPARE(store.search->startSearchContactByName("s", "mu", 2, true), 0);
        QVERIFY(isToldBefore);
        QTRY_COMPARE(store.told, (QStringList{"results s 3 aMueller aMüller", "completed s 3 aMueller aMüller"}));
        QCOMPARE(store.page("s"), "aMueller aMüller bMüller");
        QCOMPARE(store.search->getSearchResults("s", 1, 1).value(0).firstName, "a");
        QCOMPARE(store.search->getSearchResults("s", 7, 1).size(), 0);
        QCOMPARE(store.search->getContactFromSearch("s", "nobody"), Contact());
        store.search->purgeSearchResults("s");
        QCOMPARE(store.page("s"), QString());
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 1); // the worker's own is closed
    }

    void theNextLetterFindsItsThreadReady()
    {
        SearchFixture store;
        const auto search = [&store](const char *id, const char *name) {
            const qsizetype told = store.told.size();
            store.search->startSearchContactByName(id, name, 2, true);
            QTRY_VERIFY(store.told.size() > told && store.told.last().startsWith("completed"));
        };
        search("s", "m");
        search("s", "ma"); // the thread of the next search is made behind this one
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 2);
        store.put("a", "Martin", "+331"); // since its connection was opened
        store.search->startSearchContactByPhoneNumber("n", "+331", true);
        QTRY_COMPARE(store.told.last(), "number n Martin");
        search("s", "mar");
        QCOMPARE(store.told.last(), "completed s 1 aMartin");
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 2);
        const QString file = store.database.filePath();
        QVERIFY(QFile::rename(file, file + ".away"));
        search("s", "mart");
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 2); // one of a thread that cannot open its own
        QVERIFY(QFile::rename(file + ".away", file));
        search("s", "marti");
        QCOMPARE(store.told.last(), "completed s 1 aMartin");
        store.search->startSearchContactByPhoneNumber("n", "+331", true);
        store.search->purgeSearchResults("n");
        QTRY_COMPARE(QSqlDatabase::connectionNames().size(), 1);
    }

    void bothSidesAreJoinedInOneList()
    {
        SearchFixture store;
        store.put("x", "Pavel");
        store.answerWith({{store.person("Paul", "Martin"), store.person("a", "Patel")},
                          {},
                          {store.person("a", "Paar"), store.person("Paula", "Adam")}});
        store.search->startSearchContactByName("s", "pa", 6, false);
        QTRY_COMPARE(store.told.size(), 2);
        // Full list: what the phone has comes first and at once, the rest with the completion, first-name matches last.
        QCOMPARE(store.told, (QStringList{"results s 1 xPavel", "completed s 5 PaulaAdam"}));
        QCOMPARE(store.page("s"), "xPavel aPaar aPatel PaulMartin PaulaAdam");
        QCOMPARE(store.asked, (QStringList{"search s", "next s", "next s", "next s"}));
    }

    void perDirectoryTellsPacketsAsTheyCome()
    {
        SearchFixture store;
        store.fields.searchMode = DirectoryFields::perDirectory;
        store.put("x", "Pavel");
        store.answerWith({{store.person("b", "Pa"), store.person("a", "Pa"), store.person("Paul", "M")},
                          {store.person("Paa", "N")}});
        const auto answers = std::exchange(store.remote, {});
        store.search->startSearchContactByName("s", "pa", 3, false);
        store.fields.searchMode = DirectoryFields::fullList; // for the next search
        QTRY_COMPARE(store.told, QStringList("results s 1 xPavel"));
        store.remote = answers;
        store.remote("search", "s");
        QTRY_COMPARE(store.told.size(), 3);
        QCOMPARE(store.told.value(1), "results s 3 aPa bPa");
        QCOMPARE(store.told.value(2), "completed s 5");
        QCOMPARE(store.page("s"), "xPavel aPa bPa PaaN PaulM");
    }

    void perDirectoryTellsPacketsThatCameFirst_data()
    {
        const Rows<QString, QStringList> row;
        row("the phone has some", "pa", {"results s 1 xPavel", "results s 2 bPa", "completed s 2"});
        row("the phone has none", "nobody", {"results s 1 bPa", "completed s 1"});
    }

    void perDirectoryTellsPacketsThatCameFirst()
    {
        const auto [name, told] = currentRow<QString, QStringList>();
        SearchFixture store;
        store.fields.searchMode = DirectoryFields::perDirectory;
        store.put("x", "Pavel");
        store.search->startSearchContactByName("s", name, 3, false);
        store.search->addContacts("s", {store.person("b", "Pa")}, false);
        QTRY_VERIFY(store.told.join(' ').contains("completed"));
        QCOMPARE(store.told, told);
    }

    void oneContactIsTheOneListed_data()
    {
        // nameNow: of who is stored under the id
        // latinName: which a summary has not
        const Rows<QString, bool, QString> row;
        row("as listed", "Pavel", true, latinText("Pavel"));
        row("the id came back", "Other", true, "company");
        row("the id came back and nobody else has it", "Other", false, "");
        row("deleted", "", true, "company");
        row("deleted and nobody else has it", "", false, "");
    }

    void oneContactIsTheOneListed()
    {
        auto [nameNow, companyHasId, latinName] = currentRow<QString, bool, QString>();
        SearchFixture store;
        store.put("x", "Pavel");
        const QString id = "#CONTACT_1#";
        Contact company = store.person("c", "Pavel");
        company.latinName = "company";
        if (companyHasId)
            company.contactId = id;
        store.answerWith({{company}});
        store.search->startSearchContactByName("s", "pa", 10, false);
        QTRY_COMPARE(store.told.size(), 2);
        QVERIFY(store.dao->deleteContact(id));
        if (!nameNow.isEmpty())
            store.put("x", nameNow);
        QCOMPARE(store.dao->getContact(id)->value(0).name, nameNow);
        const Contact contact = store.search->getContactFromSearch("s", id);
        QCOMPARE(contact.name, "Pavel");
        QCOMPARE(contact.latinName, latinName);
        QCOMPARE(store.transport.calls.value(0).method, "makeCanonicalNumberListWithoutPrefix");
    }

    void damageThatASearchMeetsIsTold()
    {
        SearchFixture store;
        store.put("x", "Pavel");
        store.damage("latin_name_idx");
        store.search->startSearchContactByName("s", "pa", 10, true);
        QTRY_COMPARE(store.told.size(), 2);
        QVERIFY(store.told.join(' ').contains("damaged") && store.told.join(' ').contains("completed"));
    }

    void aNumberIsFoundOnEitherSide()
    {
        SearchFixture store;
        store.put("local", "One", "+1");
        store.search->startSearchContactByPhoneNumber("s1", "+1", false);
        QTRY_COMPARE(store.told, QStringList("number s1 One"));
        store.answerWith({{store.person("remote", "Two")}});
        store.search->startSearchContactByPhoneNumber("s2", "+2", false);
        QTRY_COMPARE(store.told.value(1), "number s2 Two");
        store.search->startSearchContactByPhoneNumber("s3", "+3", true);
        QTRY_COMPARE(store.told.value(2), "number s3 ");
    }

    void anEmptyNumberCompletesAtOnce()
    {
        SearchFixture store;
        store.put("a", "A");
        store.search->startSearchContactByName("s", "a", 10, true);
        store.search->startSearchContactByPhoneNumber("n", QString(), false);
        QCOMPARE(store.told, QStringList("number n ")); // and the search that runs goes on as what it is
        QTRY_COMPARE(store.told.mid(1), (QStringList{"results s 1 aA", "completed s 1 aA"}));
        store.search->startSearchContactByPhoneNumber("n", QString(), false);
        QCOMPARE(store.page("s"), QString()); // every start empties what was found before
    }

    void theLastRequestReplacesTheRunningSearch_data()
    {
        const Rows<QString> row;
        for (const char *id : {"s1", "NO_SEARCH", ""})
            row(id, id);
    }

    void theLastRequestReplacesTheRunningSearch()
    {
        const auto [running] = currentRow<QString>();
        SearchFixture store;
        store.put("a", "Found");
        store.fields.icsLogin = true; // and nobody answers yet
        store.search->startSearchContactByName(running, "f", 10, false);
        QTRY_COMPARE(store.asked, QStringList("search " + running));
        store.search->startSearchContactByName("s2", "f", 10, false);
        store.search->startSearchContactByPhoneNumber("s3", "+9", true);
        store.search->mailbox().setStarted(running);
        QTRY_VERIFY(store.told.contains("number s3 "));
        QVERIFY(!store.told.join(' ').contains("completed"));
        QCOMPARE(store.asked, (QStringList{"search " + running, "stop " + running}));
    }

    void anIdThatComesAgainGetsItsOwnContactsOnly_data()
    {
        // status: with which the first search ends, 0: it is replaced
        const Rows<int, bool> row;
        row("replaced", 0, false);
        row("purged", 0, true);
        row("given up", int(PacketStatus::TimedOut), false);
    }

    void anIdThatComesAgainGetsItsOwnContactsOnly()
    {
        const auto [status, isPurged] = currentRow<int, bool>();
        SearchFixture store;
        store.put("a", "Found");
        store.fields.icsLogin = true;
        SearchMailbox &mailbox = store.search->mailbox();
        store.search->startSearchContactByName("s", "f", 10, false);
        mailbox.setStarted("s");
        QTRY_COMPARE(store.asked, (QStringList{"search s", "next s"}));
        if (isPurged)
            store.search->purgeSearchResults("s");
        if (status != 0) {
            mailbox.put("s", {{store.person("last", "F")}, status});
            QTRY_COMPARE(store.told.value(1), "completed s 2 lastF");
        }
        store.told.clear();
        store.search->startSearchContactByName("s", "m", 10, false);
        QTRY_COMPARE(store.asked, (QStringList{"search s", "next s", "stop s", "search s"}));
        mailbox.put("s", {{store.person("late", "Stranger")}, int(PacketStatus::Finished)});
        mailbox.setStarted("s");
        QTRY_COMPARE(store.asked.size(), 5);
        mailbox.put("s", {{store.person("b", "Martin")}, int(PacketStatus::Finished)});
        QTRY_COMPARE(store.told, QStringList("completed s 1"));
        QCOMPARE(store.page("s"), "bMartin");
        store.search->startSearchContactByName("t", "f", 10, true);
        store.search->startSearchContactByName("t", "m", 10, true); // while the packet of the first is on its way
        QTRY_COMPARE(store.told.mid(1), QStringList("completed t 0"));
    }

    void aWorkerThatCannotBeStartedFindsNothing()
    {
        SearchFixture store;
        store.put("a", "Found");
        store.fields.icsLogin = true;
        const auto spoil = [](SearchThread *worker) {
            worker->setStackSize(1);
            QTest::ignoreMessage(QtCriticalMsg, "QThread::start: Thread stack size error (Invalid argument)");
        };
        const auto spoiling = QObject::connect(&*store.search, &ContactSearch::workerCreated, &store.context, spoil);
        store.search->startSearchContactByName("s", "f", 10, false);
        QCOMPARE(store.told, QStringList()); // not before the answer
        QTRY_COMPARE(store.told, QStringList("completed s 0"));
        QCOMPARE(store.search->findChildren<SearchThread *>().size(), 0);
        QObject::disconnect(spoiling);
        store.search->startSearchContactByName("t", "f", 10, true);
        QTRY_COMPARE(store.told.mid(1), (QStringList{"results t 1 aFound", "completed t 1 aFound"}));
    }

    void aPurgedSearchTellsNothing_data()
    {
        const Rows<bool> row;
        row("contacts told", false);
        row("contacts on their way", true);
    }

    void aPurgedSearchTellsNothing()
    {
        const auto [isEarly] = currentRow<bool>();
        SearchFixture store;
        store.put("a", "Found");
        store.fields.icsLogin = !isEarly;
        store.search->startSearchContactByName("s", "f", 10, false);
        if (!isEarly)
            QTRY_COMPARE(store.told, QStringList("results s 1 aFound"));
        store.search->startSearchContactByName("w", "f", 10, false); // waits, and is dropped as well
        store.search->purgeSearchResults("s");
        store.search->mailbox().setStarted("s");
        QTRY_COMPARE(store.search->findChildren<SearchThread *>().size(), 0);
        QCOMPARE(store.asked, isEarly ? QStringList() : (QStringList{"search s", "stop s"}));
        store.search->startSearchContactByName("t", "f", 10, true);
        QTRY_VERIFY(store.told.contains("completed t 1 aFound"));
        QCOMPARE(store.told.size(), isEarly ? 2 : 3);
    }

    void aSilentDirectoryIsGivenUp()
    {
        SearchFixture store;
        store.put("a", "B");
        store.fields.icsLogin = true;
        QElapsedTimer timer;
        timer.start();
        store.search->startSearchContactByPhoneNumber("s", "+1", false);
        SearchMailbox mailbox; // of another one, which is accepted, and then silent
        mailbox.open("accepted");
        mailbox.setStarted("accepted");
        auto *other = new RemoteSearchByNameThread(mailbox, "b", "accepted"); // deleted by its end
        store.connect(other);
        other->disconnect(&*store.search);
        other->start();
        store.search->mailbox().setStarted("another");
        QTRY_COMPARE(store.told, QStringList("number s "));
        QVERIFY(timer.elapsed() > 9000);
        QTRY_COMPARE(store.asked.size(), 4);
        store.asked.sort();
        QCOMPARE(store.asked, (QStringList{"next accepted", "search accepted", "search s", "stop accepted"}));
    }

    void strangeAnswersDoNoHarm()
    {
        SearchFixture store;
        store.fields.icsLogin = true;
        store.remote = [&](const QString &what, const QString &id) {
            SearchMailbox &mailbox = store.search->mailbox();
            mailbox.put("unknown", {{store.person("x", "X")}, int(PacketStatus::More)});
            mailbox.setStarted(id);
            if (what != "next")
                return;
            for (int i = 0; i < 2; ++i) // answered twice counts once
                mailbox.put(id, {ListContact(10000, store.person("a", "B")), int(PacketStatus::Finished)});
        };
        store.search->startSearchContactByName("s", "b", 0, false);
        QTRY_COMPARE(store.told, QStringList("completed s 10000"));
        QCOMPARE(store.page("unknown"), QString());
        store.search->mailbox().put("s", {{store.person("late", "L")}, int(PacketStatus::More)});
        QCOMPARE(store.search->getSearchResults("s", 0, -1).size(), 10000);
    }

    void photoAddressesAreRewritten()
    {
        SearchFixture store;
        store.fields.removeHttpsFromPhotoUrl = true;
        Contact contact = store.person("a", "B");
        contact.photo = "https://h/p";
        Contact other = store.person("b", "B");
        other.photo = "HTTPS://h/p";
        store.answerWith({{contact, other}});
        store.search->startSearchContactByName("s", "b", 10, false);
        QTRY_COMPARE(store.told.size(), 1);
        QCOMPARE(store.search->getContactFromSearch("s", contact.contactId).photo, "http://h/p");
        QCOMPARE(store.search->getContactFromSearch("s", other.contactId).photo, "HTTPS://h/p");
    }

    void runningSearchesEndWithTheService()
    {
        SearchFixture store;
        store.answerWith({ListContact(100, store.person("a", "B")), {}});
        for (int i = 0; i < 20; ++i) {
            store.search->startSearchContactByName(QString::number(i), "b", 10, i % 2 == 0);
            QCoreApplication::processEvents();
        }
        store.search.reset(); // waits for whoever still works
        QCOMPARE(QSqlDatabase::connectionNames().size(), 1);
    }

    void waitsEndAtOnce_data()
    {
        const Rows<bool, QStringList> row;
        row("for the start", false, {"search s"});
        row("for a packet", true, {"search s", "next s"});
    }

    void waitsEndAtOnce()
    {
        const auto [isAccepted, asked] = currentRow<bool, QStringList>();
        for (const bool isServiceEnding : {false, true}) { // or else the company directory leaves
            SearchFixture store;
            store.fields.icsLogin = true;
            store.search->startSearchContactByName("s", "b", 10, false);
            if (isAccepted)
                store.search->mailbox().setStarted("s");
            QTRY_COMPARE(store.asked, asked);
            QElapsedTimer timer;
            timer.start();
            if (isServiceEnding) {
                store.search.reset();
            } else {
                store.search->mailbox().abandon();
                QTRY_COMPARE(store.told, QStringList("completed s 0"));
            }
            QVERIFY(timer.elapsed() < 9000);
        }
    }
};

QTEST_GUILESS_MAIN(SearchTest)
#include "SearchTest.moc"
