// SPDX-License-Identifier: Apache-2.0
#include "src/dao/SetAsideFiles.h"
#include "src/dao/Transaction.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"

#include <QDir>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QTest>

#include <sqlite3.h>

namespace {

const QString contactFails = u"<6>Table Contact is not correct. Check fails"_s;

QStringList setAsideFiles(const Database &database)
{
    const QDir folder = QFileInfo(database.filePath()).dir();
    return folder.entryList({u"*set-aside*"_s}, QDir::Files, QDir::Name);
}

} // namespace

class DatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFirstStartBuildsTheStore()
    {
        const QTemporaryDir data;
        qputenv("KESTIN_DATA_DIR", data.filePath(u"not/there"_s).toUtf8());
        const LogCapture log;
        Database database;
        QVERIFY(database.openDatabase(QString()));
        qunsetenv("KESTIN_DATA_DIR");
        const QString file = data.filePath(u"not/there/KestinApplication/KestinDirectory/kestindirectory.data"_s);
        QVERIFY(database.filePath() == file && QFile::exists(file));
        QVERIFY(log.contains(u"<7>Connecting to database at %1..."_s.arg(file)));
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(database.setAside() && database.createTables() && database.checkTables());
        QVERIFY(setAsideFiles(database).isEmpty());
    }

    void theSchemaIsAsOthersKnowIt()
    {
        TemporaryStore store;
        QCOMPARE(
            store.run("SELECT sql FROM sqlite_master WHERE type IN ('table','trigger') OR name IN "
                      "('contact_id_idx','type_idx','misc_id_idx') ORDER BY rowid"),
            u"CREATE TABLE CONTACT (contactId VARCHAR,loginName VARCHAR,salutation VARCHAR,firstName VARCHAR,name "
            "VARCHAR,latinFirstName VARCHAR,latinName VARCHAR,language VARCHAR,timezone VARCHAR,officePhone VARCHAR,"
            "officePhoneCan VARCHAR,attendant VARCHAR,colleague VARCHAR,assistant VARCHAR,email VARCHAR,fax VARCHAR,"
            "faxCan VARCHAR,voicemail VARCHAR,personalHome VARCHAR,personalHomeCan VARCHAR,personalMobile VARCHAR,"
            "personalMobileCan VARCHAR,personalFax VARCHAR,personalFaxCan VARCHAR,personalEmail VARCHAR,"
            "collaborationId VARCHAR,isPreviewed BOOLEAN,isPrivate BOOLEAN,type INTEGER,photo VARCHAR,melody VARCHAR,"
            "puid varchar(256), lastModificationDate datetime) "
            "CREATE INDEX contact_id_idx ON CONTACT(contactId) CREATE INDEX type_idx ON CONTACT(type) "
            "CREATE TABLE MISC (contactId VARCHAR,keyName VARCHAR,value VARCHAR) "
            "CREATE INDEX misc_id_idx ON MISC(contactId,keyName) "
            "CREATE TRIGGER del_on_cascade_trg BEFORE DELETE ON CONTACT FOR EACH ROW BEGIN DELETE from MISC WHERE "
            "contactId = OLD.contactId; END CREATE TRIGGER update_on_cascade_trg UPDATE OF lastModificationDate ON "
            "contact FOR EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END CREATE TRIGGER "
            "insert_local_MA_contact_trg AFTER INSERT ON CONTACT BEGIN update CONTACT set contactId=('#CONTACT_' || "
            "(last_insert_rowid()) || '#') where rowid=last_insert_rowid() and (type='0' or type='5'); end"_s);
        QCOMPARE(store.run("PRAGMA journal_mode") + store.run("PRAGMA synchronous"), u"wal2"_s); // 2 is FULL
    }

    void aWrongShapeIsSetAside_data()
    {
        const Rows<QString> row("line");
        row("CREATE TRIGGER mine DELETE ON MISC BEGIN SELECT 1; END", u"<6>Trigger mine is unknown!"_s);
        row("DROP TRIGGER del_on_cascade_trg", u"<6>Missing trigger(s) : update_on_cascade_trg / del_on_cascade_trg"_s);
        row("DROP TABLE MISC", u"<6>Table Misc is not correct. Check fails"_s);
        row("ALTER TABLE CONTACT DROP COLUMN melody", contactFails);
    }

    void aWrongShapeIsSetAside()
    {
        TemporaryStore store;
        store.add(u"kept"_s);
        store.dao.reset();
        store.run("DROP TRIGGER update_on_cascade_trg");
        store.run(QTest::currentDataTag());
        const LogCapture log;
        QVERIFY(!store.database.checkTables());
        QTEST(log.lines.last(), "line");
        QVERIFY(store.database.setAside());
        const QString kept = store.folder.filePath(setAsideFiles(store.database).value(0));
        QCOMPARE(log.lines.filter(u"<4>"_s).filter(kept).size(), 1);
        QVERIFY(store.database.createTables() && store.database.checkTables());
        QCOMPARE(store.run("SELECT contactId FROM CONTACT"), QString());
        store.run(qPrintable(u"ATTACH '%1' AS old"_s.arg(kept)));
        QCOMPARE(store.run("SELECT contactId FROM old.CONTACT"), u"kept"_s);
    }

    void whatTheCheckLeavesOutIsCompleted()
    {
        constexpr char objects[] = "SELECT name FROM sqlite_master ORDER BY name";
        TemporaryStore store;
        const QString before = store.run(objects);
        Contact contact;
        contact.fax = u"1"_s;
        store.add(u"kept"_s, contact);
        for (const char *sql :
             {"DROP INDEX fax_can_idx", "ALTER TABLE CONTACT DROP COLUMN faxCan", "DROP INDEX email_idx"})
            store.run(sql);
        QVERIFY(store.database.checkTables());
        store.run("CREATE TRIGGER no UPDATE ON CONTACT BEGIN SELECT RAISE(ABORT, 'no'); END");
        const LogCapture log(KestinLogger::Warning);
        store.database.completeTables();
        const QStringList told = log.lines.filter(QRegularExpression(u"^<.>(No|The)"_s));
        QCOMPARE(told.value(0),
                 u"<3>No contact can be read or written: the column faxCan is missing and cannot be added"_s);
        QCOMPARE(told.value(1), u"<4>The look-ups are slow: an index could not be made"_s);
        store.run("DROP TRIGGER no");
        for (int start = 0; start < 2; ++start)
            store.database.completeTables();
        QCOMPARE(store.run(objects), before);
        QCOMPARE(store.run("SELECT contactId FROM CONTACT WHERE faxCan='1'"), u"kept"_s); // NULL would match nothing
        QCOMPARE(store.database.connection().userVersion(), Connection::numbersStale);    // it is no canonical form yet
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
        add({}, u"mine"_s, ContactType::Local);
        add(u"#CONTACT_1#"_s, u"copy"_s);
        for (const QString &name : {u"old"_s, u"newest"_s, u"older"_s, u"oldest"_s})
            add(u"c"_s, name);
        add(u"d"_s, u"first"_s);
        add(u"d"_s, u"last"_s);
        add(u"e"_s, u"only"_s);
        store.run("UPDATE CONTACT SET lastModificationDate='200' || (9 - rowid) WHERE contactId='c' AND rowid<>4");
        store.run("UPDATE CONTACT SET lastModificationDate='2001' WHERE contactId='d'");
        for (const QString &id : {u"#CONTACT_1#"_s, u"c"_s, u"e"_s})
            QVERIFY(store.dao->misc().replacePairs(id, {{u"k"_s, u"v"_s}, {u"l"_s, u"w"_s}}));
        const QString before = store.run(rows);
        QCOMPARE(store.dao->nbContact(), 9);
        store.run(
            "CREATE TEMP TRIGGER no BEFORE DELETE ON CONTACT WHEN OLD.name='first' BEGIN SELECT RAISE(ABORT,''); END");
        const LogCapture log(KestinLogger::Warning);
        store.database.completeTables(); // all or none
        QVERIFY(log.contains(u"<4>Cached copies with the ids of other contacts could not be removed"_s));
        QCOMPARE(store.run(rows), before);
        store.run("DROP TRIGGER no");
        for (int start = 0; start < 2; ++start)
            store.database.completeTables();
        QCOMPARE(store.run(rows), u"#CONTACT_1#0mine c6newest d6last e6only"_s);
        QCOMPARE(store.run(pairs), u"#CONTACT_1#k #CONTACT_1#l ck cl ek el"_s);
        QCOMPARE(store.dao->nbContact(), 4);
    }

    void noiseIsSetAsideAndTheNewestThreeAreKept()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"kestindirectory.data"_s);
        const QByteArray noise(5000, 'Z');
        writeFile(path, noise);
        writeFile(folder.filePath(u"mine.set-aside-1"_s), "of somebody else");
        for (const char *stamp :
             {"20200101T000000000Z", "20200101T000000000Z-wal", "20210101T000000000Z", "20220101T000000000Z"})
            writeFile(path + ".set-aside-"_L1 + QLatin1String(stamp), "old");
        const LogCapture log;
        Database database;
        database.openDatabase(folder.path());
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(database.setAside() && database.createTables() && database.checkTables());
        const QStringList left = setAsideFiles(database);
        QCOMPARE(left.size(), 4);
        QCOMPARE(left.at(0), u"kestindirectory.data.set-aside-20210101T000000000Z"_s);
        QCOMPARE(left.at(3), u"mine.set-aside-1"_s);
        QCOMPARE(contentOf(folder.filePath(left.at(2))), noise);
    }

    void journalsGoWithTheirDatabaseOrAllStay()
    {
        // Behind the longer name there is room for the time stamp and "-wal", and none for "-journal".
        for (const int length : {20, 220}) {
            const QTemporaryDir folder;
            const QString name(length, u'd');
            for (const char *suffix : {"", "-journal", "-shm", "-wal"})
                writeFile(folder.filePath(name + QLatin1String(suffix)), suffix);
            const QString kept = QFileInfo(SetAsideFiles(folder.filePath(name)).add().value_or(QString())).fileName();
            QCOMPARE(kept.isEmpty(), length == 220);
            const QStringList expected =
                kept.isEmpty() ? QStringList{name, name + "-journal"_L1, name + "-shm"_L1, name + "-wal"_L1}
                               : QStringList{kept, kept + "-journal"_L1, kept + "-wal"_L1};
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files, QDir::Name), expected);
        }
    }

    void aStoreThatCannotBeReadIsLeftAlone()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"file"_s);
        writeFile(file, "of somebody else");
        const LogCapture log;
        Database database;
        QVERIFY(!database.openDatabase(file + "/below"_L1));
        QVERIFY(!database.checkTables());
        QCOMPARE(log.lines.last(), contactFails);
        QVERIFY(!database.setAside());
        QVERIFY(log.lines.last().startsWith("<3>"_L1) && log.lines.last().contains(database.filePath()));
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

    void rebuildingEmptiesAStoreInUse()
    {
        TemporaryStore store;
        store.add(u"a"_s);
        store.add(u"b"_s);
        QVERIFY(store.dao->misc().insertPair(u"a"_s, {}, {}));
        QCOMPARE(store.dao->nbContact(), 2);
        // What cannot be rebuilt stays as it is.
        store.run("DROP INDEX email_idx");
        store.run("CREATE VIEW email_idx AS SELECT 1");
        QVERIFY(!store.database.createTables());
        QCOMPARE(store.run("SELECT contactId FROM CONTACT"), u"a b"_s);
        store.run("DROP VIEW email_idx");
        // Reads that stop before the last row: a statement left open would pin the tables.
        QCOMPARE(store.dao->getOldestCachedContactId(), u"a"_s);
        store.add({}, {}, ContactType::Local);
        store.add({}, {}, ContactType::Local);
        QVERIFY_THROWS_EXCEPTION(int, (void)store.dao->mappingExport([](const Contact &) { throw 1; }));
        QVERIFY(store.database.createTables() && store.database.checkTables());
        QCOMPARE(store.dao->nbContact(), 0);
        QVERIFY(store.dao->misc().pairs(u"a"_s)->isEmpty());
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
            store.add(u"a"_s);
            whole.afterCommit(telling(u'a'));
            {
                Transaction part(connection);
                store.add(u"lost"_s);
                part.afterCommit(telling(u'l'));
                QVERIFY(Transaction(connection).commit());
            }
            {
                Transaction part(connection);
                store.run("INSERT INTO NOWHERE VALUES (1)");
                store.add(u"refused"_s); // as is all that follows a failure
                Transaction(connection).afterCommit(telling(u'r'));
                QVERIFY(whole.isActive() && !part.isActive() && !part.commit());
            }
            Transaction part(connection);
            store.add(u"b"_s);
            part.afterCommit(telling(u'b'));
            QVERIFY(part.commit() && told.isEmpty() && whole.commit());
        }
        QCOMPARE(told, u"ab"_s);
        {
            Transaction whole(connection);
            Transaction part(connection);
            store.add(u"lost too"_s);
            QVERIFY(part.commit());
        }
        QVERIFY(!connection.isInTransaction());
        QCOMPARE(idsOf(store.dao->getAllContact()), u"a,b"_s);
        QCOMPARE(store.dao->nbContact(), 2);
        Transaction(connection).isActive();
        store.run("DELETE FROM CONTACT");
        QCOMPARE(store.dao->nbContact(), 2); // kept: a transaction without a write is no reason to count again
    }

    void aCommitThatFailsKeepsNothing()
    {
        TemporaryStore store;
        for (const char *sql : {"PRAGMA foreign_keys=ON", "CREATE TABLE p(id PRIMARY KEY)",
                                "CREATE TABLE c(id REFERENCES p(id) DEFERRABLE INITIALLY DEFERRED)"})
            store.run(sql);
        const LogCapture log(KestinLogger::Error);
        {
            Transaction transaction(store.database.connection());
            store.add(u"lost"_s);
            QCOMPARE(store.dao->nbContact(), 1);
            store.run("INSERT INTO c VALUES (1)");
            QVERIFY(!transaction.commit());
        }
        QVERIFY(log.lines.join(u'|').startsWith("<3>Error while executing query COMMIT TRANSACTION : "_L1));
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
            store.add(u"a"_s);
            {
                Transaction part(store.database.connection());
                QVERIFY(!store.dao->misc().insertPair(u"a"_s, {}, QString(1000000, u'x')));
            }
            // The database has rolled back everything by itself.
            store.add(u"on its own"_s);
            Transaction part(store.database.connection());
            QVERIFY(!part.isActive() && !part.commit() && !whole.isActive() && !whole.commit());
        }
        QCOMPARE(store.dao->nbContact(), 0);
        Transaction next(store.database.connection());
        store.add(u"b"_s);
        QVERIFY(next.commit());
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "DatabaseTest.moc"
