// SPDX-License-Identifier: Apache-2.0
#include "src/dao/IndexRepair.h"
#include "src/dao/SetAsideFiles.h"
#include "src/dao/Transaction.h"
#include "tests/src/dao/TemporaryStore.h"

#include <QRegularExpression>
#include <QSqlDriver>

#include <sqlite3.h>

namespace {

const QString contactFails = "<6>Table Contact is not correct. Check fails";

QStringList setAsideFiles(const Database &database)
{
    const QDir folder = QFileInfo(database.filePath()).dir();
    return folder.entryList({"*set-aside*"}, QDir::Files, QDir::Name);
}

} // namespace

class DatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFirstStartBuildsTheStore()
    {
        const QTemporaryDir data;
        qputenv("KESTIN_DATA_DIR", data.filePath("not/there").toUtf8());
        const LogCapture log;
        Database database;
        QVERIFY(database.openDatabase(QString()));
        qunsetenv("KESTIN_DATA_DIR");
        const QString file = data.filePath("not/there/KestinApplication/KestinDirectory/kestindirectory.data");
        QVERIFY(database.filePath() == file && QFile::exists(file));
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(database.setAside() && database.createTables() && database.checkTables());
        QVERIFY(setAsideFiles(database).isEmpty());
    }

    void theSchemaIsAsOthersKnowIt()
    {
        TemporaryStore store;
        const QString schema = store.run("SELECT sql FROM sqlite_master WHERE type IN ('table','trigger') OR name IN "
                                         "('contact_id_idx','type_idx','misc_id_idx') ORDER BY rowid");
        QCOMPARE(schema + ' ', contentOf(KESTIN_SCHEMA).replace('\n', ' '));
        QCOMPARE(store.run("PRAGMA journal_mode") + store.run("PRAGMA synchronous"), "wal2"); // 2 is FULL
    }

    void aStoreOfTheFirstVersionIsContinued()
    {
        const QTemporaryDir folder;
        sqlite3 *file = nullptr;
        sqlite3_open(qPrintable(folder.filePath("kestindirectory.data")), &file);
        QCOMPARE(sqlite3_exec(file, contentOf(KESTIN_FIRST_STORE), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(file);
        Database database;
        QVERIFY(database.openDatabase(folder.path()) && database.checkTables());
        DaoContact dao(database.connection());
        const Contact contact = dao.getContact("#CONTACT_1#")->value(0);
        QCOMPARE(contact.firstName + contact.name + contact.officePhoneCan, "ZoëMüller+33199007700");
        QCOMPARE(contact.misc.value("company"), "Atelier Brumaire");
        QCOMPARE(dao.getAllContact()->size(), 3);
    }

    void aWrongShapeIsSetAside_data()
    {
        const Rows<QString> row;
        row("CREATE TRIGGER mine DELETE ON MISC BEGIN SELECT 1; END", "<6>Trigger mine is unknown!");
        row("DROP TRIGGER del_on_cascade_trg", "<6>Missing trigger(s) : update_on_cascade_trg / del_on_cascade_trg");
        row("DROP TABLE MISC", "<6>Table Misc is not correct. Check fails");
        row("ALTER TABLE CONTACT DROP COLUMN melody", contactFails);
    }

    void aWrongShapeIsSetAside()
    {
        const auto [line] = currentRow<QString>();
        TemporaryStore store;
        store.add("kept");
        store.dao.reset();
        store.run("DROP TRIGGER update_on_cascade_trg");
        store.run(QTest::currentDataTag());
        const LogCapture log;
        QVERIFY(!store.database.checkTables());
        QCOMPARE(log.lines.last(), line);
        QVERIFY(store.database.setAside());
        const QString kept = store.folder.filePath(setAsideFiles(store.database).value(0));
        QCOMPARE(log.lines.filter("<4>").filter(kept).size(), 1);
        QVERIFY(store.database.createTables() && store.database.checkTables());
        QCOMPARE(store.run("SELECT contactId FROM CONTACT"), QString());
        store.run(qPrintable(QString("ATTACH '%1' AS old").arg(kept)));
        QCOMPARE(store.run("SELECT contactId FROM old.CONTACT"), "kept");
    }

    void whatTheCheckLeavesOutIsCompleted()
    {
        constexpr char objects[] = "SELECT name FROM sqlite_master ORDER BY name";
        TemporaryStore store;
        const QString before = store.run(objects);
        Contact contact;
        contact.fax = "1";
        store.add("kept", contact);
        for (const char *sql :
             {"DROP INDEX fax_can_idx", "ALTER TABLE CONTACT DROP COLUMN faxCan", "DROP INDEX email_idx"})
            store.run(sql);
        QVERIFY(store.database.checkTables());
        store.run("CREATE TRIGGER no UPDATE ON CONTACT BEGIN SELECT RAISE(ABORT, 'no'); END");
        const LogCapture log(KestinLogger::Warning);
        store.database.completeTables();
        const QStringList told = log.lines.filter(QRegularExpression("^<.>(No|The)"));
        QCOMPARE(told.value(0),
                 "<3>No contact can be read or written: the column faxCan is missing and cannot be added");
        QCOMPARE(told.value(1), "<4>The look-ups are slow: an index could not be made");
        store.run("DROP TRIGGER no");
        for (int start = 0; start < 2; ++start)
            store.database.completeTables();
        QCOMPARE(store.run(objects), before);
        QCOMPARE(store.run("SELECT contactId FROM CONTACT WHERE faxCan='1'"), "kept"); // NULL would match nothing
        QCOMPARE(store.database.connection().userVersion(), Connection::numbersStale); // it is no canonical form yet
    }

    void ofTwoRowsOfOneIdTheUsersOwnStays()
    {
        constexpr char rows[] = "SELECT contactId || type || name FROM CONTACT ORDER BY rowid";
        constexpr char pairs[] = "SELECT contactId || keyName FROM MISC ORDER BY contactId, keyName";
        TemporaryStore store;
        Contact contact;
        const auto add = [&](const QString &id, const QString &name, int type = ContactType::Cached) {
            contact.name = name;
            store.add(id, contact, type);
        };
        add({}, "mine", ContactType::Local);
        add("#CONTACT_1#", "copy");
        for (const QString name : {"old", "newest", "older", "oldest"})
            add("c", name);
        add("d", "first");
        add("d", "last");
        add("e", "only");
        store.run("UPDATE CONTACT SET lastModificationDate='200' || (9 - rowid) WHERE contactId='c' AND rowid<>4");
        store.run("UPDATE CONTACT SET lastModificationDate='2001' WHERE contactId='d'");
        for (const QString id : {"#CONTACT_1#", "c", "e"})
            QVERIFY(store.dao->misc().replacePairs(id, {{"k", "v"}, {"l", "w"}}));
        const QString before = store.run(rows);
        QCOMPARE(store.dao->nbContact(), 9);
        store.run(
            "CREATE TEMP TRIGGER no BEFORE DELETE ON CONTACT WHEN OLD.name='first' BEGIN SELECT RAISE(ABORT,''); END");
        const LogCapture log(KestinLogger::Warning);
        store.database.completeTables(); // all or none
        QVERIFY(log.contains("<4>Cached copies with the ids of other contacts could not be removed"));
        QCOMPARE(store.run(rows), before);
        store.run("DROP TRIGGER no");
        for (int start = 0; start < 2; ++start)
            store.database.completeTables();
        QCOMPARE(store.run(rows), "#CONTACT_1#0mine c6newest d6last e6only");
        QCOMPARE(store.run(pairs), "#CONTACT_1#k #CONTACT_1#l ck cl ek el");
        QCOMPARE(store.dao->nbContact(), 4);
    }

    void noiseIsSetAsideAndTheNewestThreeAreKept()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("kestindirectory.data");
        const QByteArray noise(5000, 'Z');
        writeFile(path, noise);
        writeFile(folder.filePath("mine.set-aside-1"), "of somebody else");
        for (const char *stamp :
             {"20200101T000000000Z", "20200101T000000000Z-wal", "20210101T000000000Z", "20220101T000000000Z"})
            writeFile(path + ".set-aside-" + QLatin1String(stamp), "old");
        const LogCapture log;
        Database database;
        database.openDatabase(folder.path());
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(database.setAside() && database.createTables() && database.checkTables());
        const QStringList left = setAsideFiles(database);
        QCOMPARE(left.size(), 4);
        QCOMPARE(left.at(0), "kestindirectory.data.set-aside-20210101T000000000Z");
        QCOMPARE(left.at(3), "mine.set-aside-1");
        QCOMPARE(contentOf(folder.filePath(left.at(2))), noise);
    }

    void journalsGoWithTheirDatabaseOrAllStay()
    {
        // Behind the longer name there is room for the time stamp and "-wal", and none for "-journal".
        for (const int length : {20, 220}) {
            const QTemporaryDir folder;
            const QString name(length, 'd');
            for (const char *suffix : {"", "-journal", "-shm", "-wal"})
                writeFile(folder.filePath(name + QLatin1String(suffix)), suffix);
            const QString kept = QFileInfo(SetAsideFiles(folder.filePath(name)).add().value_or(QString())).fileName();
            QCOMPARE(kept.isEmpty(), length == 220);
            const QStringList expected = kept.isEmpty()
                                             ? QStringList{name, name + "-journal", name + "-shm", name + "-wal"}
                                             : QStringList{kept, kept + "-journal", kept + "-wal"};
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files, QDir::Name), expected);
        }
    }

    void aStoreThatCannotBeReadIsLeftAlone()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("file");
        writeFile(file, "of somebody else");
        const LogCapture log;
        Database database;
        QVERIFY(!database.openDatabase(file + "/below"));
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(!database.setAside());
        QVERIFY(log.lines.last().startsWith("<3>") && log.lines.last().contains(database.filePath()));
        QVERIFY(!database.createTables());
    }

    void triggersThatCannotBeListedSetNothingAside()
    {
        TemporaryStore store;
        const QVariant handle = store.database.connection().handle().driver()->handle();
        const auto refuse = [](void *, int action, const char *table, const char *, const char *, const char *) {
            return action == SQLITE_READ && qstrcmp(table, "sqlite_master") == 0 ? SQLITE_DENY : SQLITE_OK;
        };
        sqlite3_set_authorizer(*static_cast<sqlite3 *const *>(handle.constData()), refuse, nullptr);
        QVERIFY(!store.database.checkTables());
        QVERIFY(!store.database.setAside());
        QCOMPARE(setAsideFiles(store.database), QStringList());
    }

    void damagedIndexesAreMadeAnew_data()
    {
        const Rows<QString, QString, bool> row;
        for (const char *index : {"contact_id_idx", "latin_name_idx", "misc_id_idx"}) {
            row(qPrintable(QString(index) + ", last page"), index, "max", true);
            row(qPrintable(QString(index) + ", first page"), index, "min", true);
        }
        row("a table", "CONTACT", "max", false);
        row("pairs", "MISC", "min", false);
    }

    void damagedIndexesAreMadeAnew()
    {
        const auto [damaged, page, isMended] = currentRow<QString, QString, bool>();
        TemporaryStore store;
        store.fill(200);
        Connection &connection = store.database.connection();
        QCOMPARE(IndexRepair::isSound(connection), true);
        store.damage(damaged, page);
        QCOMPARE(IndexRepair::isSound(connection), false);
        const QString before = store.run("SELECT sql FROM sqlite_master WHERE type<>'index' OR sql IS NULL");
        {
            QSqlDatabase other = QSqlDatabase::cloneDatabase(connection.handle(), "other");
            QVERIFY(other.open() && QSqlQuery(other).exec("BEGIN IMMEDIATE"));
            store.run("PRAGMA busy_timeout=1");
            QVERIFY(IndexRepair::makeAnew(connection) == IndexRepair::Outcome::NotNow);
        }
        QSqlDatabase::removeDatabase("other");
        QCOMPARE(IndexRepair::makeAnew(connection) == IndexRepair::Outcome::Done, isMended);
        QCOMPARE(IndexRepair::isSound(connection), isMended);
        QCOMPARE(store.run("SELECT sql FROM sqlite_master WHERE type<>'index' OR sql IS NULL"), before);
        QCOMPARE(store.run("SELECT count(*) FROM sqlite_master WHERE type='index'"), "15");
        if (!isMended)
            return;
        const auto found = store.dao->getContact("#CONTACT_150#");
        QVERIFY(found && found->value(0).misc.value("key") == "149");
        QCOMPARE(idsOf(store.dao->getContactsByLatinName("199")), "#CONTACT_200#");
        QVERIFY(store.dao->deleteContact("#CONTACT_1#"));
        QCOMPARE(store.add({}, {}, ContactType::Local).type, ContactType::Local);
        QCOMPARE(store.run("SELECT count(contactId) FROM CONTACT"), "200");
        store.run("PRAGMA writable_schema=ON");
        store.run("DELETE FROM sqlite_master"); // it is closed to statements as before
        QCOMPARE(store.run("SELECT count(*) FROM sqlite_master WHERE type='index'"), "15");
    }

    void rebuildingEmptiesAStoreInUse()
    {
        TemporaryStore store;
        store.add("a");
        store.add("b");
        QVERIFY(store.dao->misc().insertPair("a", {}, {}));
        QCOMPARE(store.dao->nbContact(), 2);
        // What cannot be rebuilt stays as it is.
        store.run("DROP INDEX email_idx");
        store.run("CREATE VIEW email_idx AS SELECT 1");
        QVERIFY(!store.database.createTables());
        QCOMPARE(store.run("SELECT contactId FROM CONTACT"), "a b");
        store.run("DROP VIEW email_idx");
        // Reads that stop before the last row: a statement left open would pin the tables.
        QCOMPARE(store.dao->getOldestCachedContactId(), "a");
        store.add({}, {}, ContactType::Local);
        store.add({}, {}, ContactType::Local);
        QVERIFY(store.dao->mappingExport().next());
        QVERIFY(store.database.createTables() && store.database.checkTables());
        QCOMPARE(store.dao->nbContact(), 0);
        QVERIFY(store.dao->misc().pairs("a")->isEmpty());
    }

    void aPartIsRolledBackAlone()
    {
        TemporaryStore store;
        Connection &connection = store.database.connection();
        QCOMPARE(store.dao->nbContact(), 0); // a number that is kept must follow
        QString told;
        const auto telling = [&told](QChar what) { return [&told, what] { told += what; }; };
        {
            Transaction whole(connection);
            store.add("a");
            whole.afterCommit(telling('a'));
            {
                Transaction part(connection);
                store.add("lost");
                part.afterCommit(telling('l'));
                QVERIFY(Transaction(connection).commit());
            }
            {
                Transaction part(connection);
                store.run("INSERT INTO NOWHERE VALUES (1)");
                store.add("refused"); // as is all that follows a failure
                Transaction(connection).afterCommit(telling('r'));
                QVERIFY(whole.isActive() && !part.isActive() && !part.commit());
            }
            Transaction part(connection);
            store.add("b");
            part.afterCommit(telling('b'));
            QVERIFY(part.commit() && told.isEmpty() && whole.commit());
        }
        QCOMPARE(told, "ab");
        {
            Transaction whole(connection);
            Transaction part(connection);
            store.add("lost too");
            QVERIFY(part.commit());
        }
        QVERIFY(!connection.isInTransaction());
        QCOMPARE(idsOf(store.dao->getAllContact()), "a,b");
        QCOMPARE(store.dao->nbContact(), 2);
        Transaction(connection).isActive();
        store.run("DELETE FROM CONTACT");
        QCOMPARE(store.dao->nbContact(), 2); // kept: a transaction without a write is no reason to count again
    }

    void aCommitThatFailsKeepsNothing()
    {
        TemporaryStore store;
        store.failCommits();
        const LogCapture log(KestinLogger::Error);
        {
            Transaction transaction(store.database.connection());
            store.add("lost");
            QCOMPARE(store.dao->nbContact(), 1);
            QVERIFY(!transaction.commit());
        }
        QVERIFY(log.lines.join('|').startsWith("<3>Error while executing query COMMIT TRANSACTION : "));
        QCOMPARE(store.dao->nbContact(), 0);
        Transaction next(store.database.connection());
        QVERIFY(next.commit());
    }

    void nothingIsWrittenAfterTheDatabaseGaveUp()
    {
        TemporaryStore store;
        const LogCapture log(KestinLogger::Error);
        store.run("PRAGMA max_page_count=1"); // as full as it is now
        {
            Transaction whole(store.database.connection());
            store.add("a");
            {
                Transaction part(store.database.connection());
                QVERIFY(!store.dao->misc().insertPair("a", {}, QString(1000000, 'x')));
            }
            // The database has rolled back everything by itself.
            store.add("on its own");
            Transaction part(store.database.connection());
            QVERIFY(!part.isActive() && !part.commit() && !whole.isActive() && !whole.commit());
        }
        QCOMPARE(store.dao->nbContact(), 0);
        Transaction next(store.database.connection());
        store.add("b");
        QVERIFY(next.commit());
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "DatabaseTest.moc"
