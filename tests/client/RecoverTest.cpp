// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientFixture.h"

/// What comes back from a database of which a part is damaged.
class RecoverTest : public ClientFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_phone = std::make_unique<PhoneUnderTest>();
        m_phone->startPeers();
        m_phone->set("DirMaxContact", "1000");
        QVERIFY(m_phone->startDirectory());
    }

    /// A store with texts that take several pages, removed contacts, and a log beside it.
    void initTestCase()
    {
        init();
        ListContact contacts;
        for (int number = 1000; number < 1450; ++number) {
            Contact contact = person(QString("P%1|officePhone=%1|misc.job=J%1").arg(number));
            contact.salutation = number % 20 == 3 ? QString(5000, 'x') : "Dr";
            contact.misc["note"] = QString(number % 10 == 3 ? 6000 : 20, 'n');
            contact.isPreviewed = number % 50 == 0;
            contacts.append(contact);
        }
        m_phone->call("createLocalContacts", {"r", QVariant::fromValue(contacts)});
        QStringList ids;
        for (const Contact &contact : m_phone->contacts("getLocalContacts", {0, -1})) {
            const bool isRemoved = contact.name >= "P1200" && contact.name < "P1250";
            m_held[contact.name] = contact;
            isRemoved ? ids.append(contact.contactId) : m_kept.append(contact.name);
        }
        QCOMPARE(client("remove", ids).code, 0);
        m_phone->directory.kill();
        for (const QString suffix : {"", "-wal"})
            QVERIFY(QFile::copy(m_phone->databasePath() + suffix, m_store.filePath("store") + suffix));
        cleanup();
    }

    void theRestComesBack_data()
    {
        // The pages that hold noise, what else is done to the file, and whether contacts that were removed may come.
        const Rows<QString, QString, bool> row;
        const QString leaf = "SELECT pageno FROM dbstat WHERE name='CONTACT' AND pagetype='leaf' AND pageno%7=3",
                      inner = "SELECT pageno FROM dbstat WHERE name='CONTACT' AND pagetype='internal'",
                      index = " UNION SELECT rootpage FROM sqlite_master WHERE name LIKE '%_idx'";
        row("nothing", "SELECT 0", "", false);
        row("nothing, with a log", "SELECT 0", "log", false);
        row("the header of the file, with a log", "SELECT 0", "log header", false);
        row("nothing, with a log of which the beginning is damaged", "SELECT 0", "log frame", true);
        row("inner pages", inner, "", false);
        row("last pages", leaf, "", false);
        row("last pages and all indexes", leaf + index, "", false);
        row("inner pages and all indexes", inner + index, "", false);
        row("a page of a long text",
            "SELECT max(pageno) FROM dbstat WHERE name='CONTACT' AND pagetype='overflow' GROUP BY path LIMIT 1", "",
            false);
        row("misc pairs", "SELECT pageno FROM dbstat WHERE name='MISC' AND pageno%3=0", "", false);
        row("the schema", "SELECT 1 UNION SELECT pageno FROM dbstat WHERE name='sqlite_schema'", "", false);
        row("the header of the file", "SELECT 0", "header", false);
        row("the list of free pages and inner pages", inner, "free", false);
        row("the list of free pages, inner pages and all indexes", inner + index, "free", true);
        row("the end is cut off", "SELECT 0", "cut", false);
        row("small pages", leaf, "page_size=512", false);
        row("large pages and the header", leaf, "page_size=65536 header", false);
        row("inner pages of another encoding", inner, "encoding='UTF-16be'", false);
        row("the first page of another encoding", "SELECT 1", "encoding='UTF-16le' header", true);
        row("a table of an older version", inner, "old", false);
        row("two pages in each other's place", "SELECT 0", "swap", false);
    }

    void theRestComesBack()
    {
        const auto [pages, doing, mayHoldRemoved] = currentRow<QString, QString, bool>();
        QProcess damage;
        damage.start(KESTIN_DAMAGE, QStringList{m_store.filePath("store"), path("kept"), pages} + doing.split(' '));
        QVERIFY(damage.waitForFinished(Program::limitMs));
        QCOMPARE(damage.readAllStandardError(), QByteArray());
        const int left = int(m_kept.size()) - damage.readAll().toInt();
        QCOMPARE(client("recover --dry-run", {path("kept")}).code, 0);
        const Outcome first = client("recover --json", {path("kept")});
        QCOMPARE(first.code, 0);
        const int created = first.json()["created"].toInt();
        QVERIFY2(mayHoldRemoved ? created >= left : created == left,
                 qPrintable(QString("%1 %2").arg(created).arg(left)));
        QCOMPARE(first.json()["mayHoldRemoved"].toBool(), mayHoldRemoved);
        QCOMPARE(client("recover --json", {path("kept")}).json()["lacking"].toArray().size(), 0);
        const ListContact there = m_phone->contacts("getLocalContacts", {0, -1});
        QCOMPARE(there.size(), created);
        for (const Contact &contact : there) {
            const Contact held = m_held.value(contact.name);
            QVERIFY(mayHoldRemoved || m_kept.contains(contact.name));
            QVERIFY(contact.salutation == held.salutation && contact.isPreviewed == held.isPreviewed);
            QVERIFY(contact.misc == held.misc || pages.contains("MISC") || doing == "cut");
        }
    }

    void photosComeBack()
    {
        const QByteArray picture = "\xff\xd8\xffpicture";
        const QString photos = path("KestinDirectory/photos/");
        const QStringList stored{writeFile(photos + "photo_1_100x100", picture), writeFile(path("b.jpg"), picture),
                                 path("none.jpg"), "http://nobody.invalid/d.jpg"};
        for (int index = 0; index < stored.size(); ++index)
            QCOMPARE(m_phone->create(person(QString("P%1|photo=%2").arg(index).arg(stored.at(index)))), 0);
        QCOMPARE(m_phone->directory.terminate(), 0);
        writeFile(m_phone->databasePath(), contentOf(m_phone->databasePath()).replace(0, 100, QByteArray(100, 'x')));
        QVERIFY(m_phone->startDirectory());
        const QDir folder = QFileInfo(m_phone->databasePath()).dir();
        const QString kept = folder.filePath(folder.entryList({"*.set-aside-*"}).value(0));
        const QJsonDocument shown = client("recover --json --dry-run", {kept}).json();
        QCOMPARE(QJsonDocument(shown["photos"].toObject()).toJson(QJsonDocument::Compact),
                 R"({"addresses":1,"found":2,"missing":1})");
        QCOMPARE(names(), "");
        QCOMPARE(client("recover", {kept}).code, 0);
        QVERIFY(QFile::remove(kept) && QFile::remove(path("b.jpg")));
        QCOMPARE(m_phone->directory.terminate(), 0);
        QVERIFY(m_phone->startDirectory()); // it removes photos that nobody names
        const QJsonArray contacts = client("list --json").json().array();
        QCOMPARE(contacts.size(), 4);
        QCOMPARE(contacts[0][u"photo"].toString(), stored.at(0));
        QVERIFY(contacts[1][u"photo"].toString().startsWith(photos + "photo_"));
        for (const int index : {0, 1})
            QCOMPARE(contentOf(contacts[index][u"photo"].toString()), picture);
        QCOMPARE(contacts[2][u"photo"].toString(), "");
        QCOMPARE(contacts[3][u"photo"].toString(), stored.at(3));
    }

    void whatIsNoDatabaseOfTheDirectoryIsTold_data()
    {
        const Rows<QString, QString> row; // a statement, or what is in the file; what is told
        row("nothing there", "", "cannot be read: No such file or directory");
        row("nothing in it", "empty", "is empty");
        row("a folder", "/", "cannot be read: it is not a regular file");
        row("noise", "no database", "is no database");
        row("of somebody else", "CREATE TABLE a (b)", "is no database of the directory");
        row("a view that never ends",
            "CREATE VIEW CONTACT AS WITH RECURSIVE a(contactId) AS (SELECT 1 UNION ALL SELECT "
            "contactId FROM a) SELECT contactId, 0 AS type FROM a",
            "is no database of the directory");
    }

    void whatIsNoDatabaseOfTheDirectoryIsTold()
    {
        const auto [content, told] = currentRow<QString, QString>();
        const QString name = content == "/" ? content : path("a");
        const QString make = "import sqlite3, sys; sqlite3.connect(sys.argv[1]).execute(sys.argv[2])";
        if (content.startsWith("CREATE"))
            QCOMPARE(QProcess::execute("python3", {"-c", make, name, content}), 0);
        else if (!content.isEmpty() && content != "/")
            writeFile(name, content == "empty" ? "" : content.toUtf8().repeated(1000));
        QVERIFY(client("recover", {name}).ended(4, "kestin-dir: " + name + " " + told));
    }

private:
    QTemporaryDir m_store;
    QMap<QString, Contact> m_held; ///< by name, those that were removed included
    QStringList m_kept;
};

QTEST_GUILESS_MAIN(RecoverTest)

#include "RecoverTest.moc"
