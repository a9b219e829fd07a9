// SPDX-License-Identifier: Apache-2.0
#include "tests/src/impexp/SyncFixture.h"

#include "platform/records/LatinText.h"

#include <sqlite3.h>

namespace {

/// #CONTACT_1# with all that a file carries and more, #CONTACT_2# with a photo file of our own, a contact of device
/// management and a cached one.
struct FilledSyncFixture : SyncFixture
{
    FilledSyncFixture()
    {
        const Contact contact =
            person("firstName=Zoë|name=M<&>\r\nller|officePhone=0388|personalFax=12|fax=99|assistant=Max|melody=bells|"
                   "photo=https://x/photo|puid=p1|misc.company=Acme|misc.job=Clerk|misc.other=kept");
        put(contact);
        writeFile(ownPhoto(), "image");
        put(person("name=Two|puid=p2|photo=" + ownPhoto()));
        add("9", contact, ContactType::DeviceManagement);
        add("c6", contact);
    }
    void put(Contact contact)
    {
        fillLatinNames(contact);
        contact = add({}, contact, ContactType::Local);
        QVERIFY(dao->misc().replacePairs(contact.contactId, contact.misc));
    }
    QString ownPhoto() const { return fields.photoDirectory + "photo_two"; }
    /// Id, persistent id, last name, photo and pairs of each local contact.
    QString content()
    {
        QStringList lines;
        for (const Contact &contact : dao->getContactByType(ContactType::Local).value_or(ListContact()))
            lines.append(contact.contactId + ' ' + contact.getPUID() + ' ' + contact.name.left(3) + ' ' +
                         shown(contact.photo) + ' ' + QStringList(contact.misc.values()).join('+'));
        return lines.join('|');
    }
};

const QByteArray both = "<contact duid='#CONTACT_1#' puid='p1'/><contact duid='#CONTACT_2#' puid='p2'/>";
const QString one = "#CONTACT_1# p1 M<& https://x/photo Acme+Clerk+kept";
const QString two = "#CONTACT_2# p2 Two photo_two ";
const QString before = one + '|' + two;

QByteArray update(const char *elements)
{
    return "<contact duid='#CONTACT_1#' puid='p1'/><contact duid='#CONTACT_2#' puid='p2'><lastName>Two</lastName>" +
           QByteArray(elements) + "</contact>";
}

// What SQLite does with each new connection.
int checkReferences(sqlite3 *database, const char **, const void *)
{
    return sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
}
int refuse(sqlite3 *, const char **, const void *)
{
    return SQLITE_ERROR;
}

} // namespace

class SyncTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anExportComesBackTheSame()
    {
        const auto withoutIds = [](QByteArray file) {
            QString text = QString::fromUtf8(file);
            return text.replace(QRegularExpression("(created|duid|free)=\"[^\"]*\""), "\\1=\"\"")
                .replace(QRegularExpression("<(duid|lastModificationDate)>[^<]*"), "<\\1>");
        };
        QString file;
        Contact was;
        {
            FilledSyncFixture store;
            writeFile(store.ownPhoto(), QByteArray(100000, '\xff'));
            QCOMPARE(store.exportAll(false), QStringList{"exported Success "});
            QVERIFY(contentOf(store.path()).contains("<contact duid=\"#CONTACT_2#\" puid=\"p2\"/>"));
            QCOMPARE(store.exportAll(), QStringList{"exported Success "});
            QCOMPARE(QProcess::execute("xmllint", {"--noout", "--schema", KESTIN_SYNC_SCHEMA, store.path()}), 0);
            QVERIFY(contentOf(store.path()).contains("contacts=\"2\" free=\"999\""));
            file = withoutIds(contentOf(store.path()));
            was = store.stored("#CONTACT_1#");
        }
        SyncFixture other;
        writeFile(other.path(), file.toUtf8());
        other.importFile();
        QCOMPARE(other.news, (QStringList{"imported Success ", "changed"}));
        const Contact is = other.stored("#CONTACT_1#");
        QCOMPARE(is.latinName, was.latinName);
        QCOMPARE(is.officePhoneCan, "+0388");
        QCOMPARE(is.personalFax + is.fax + is.getPUID(), "1299p1");
        QCOMPARE(other.exportAll().size(), 3);
        QCOMPARE(withoutIds(contentOf(other.path())), file);
    }

    void anExportIsSkippedOnlyWhenNothingChanged()
    {
        FilledSyncFixture store;
        const QStringList done{"exported Success "};
        const QStringList skipped{"exported NothingToDo "};
        const QDateTime now = store.stored("c6").getLastModificationDate(); // the newest
        store.fields.lastLocalChangeDate = now;
        QCOMPARE(store.exportAll(true, now.addMSecs(-1)), done);
        QFile::remove(store.path());
        QCOMPARE(store.exportAll(true, now), skipped);
        QVERIFY(!QFile::exists(store.path()));
        store.fields.maxContactsChanged = true;
        QCOMPARE(store.exportAll(true, now), done);
        QCOMPARE(store.exportAll(true, now), skipped);
        store.fields.lastLocalChangeDate = now.addMSecs(1); // a deletion leaves no row
        QCOMPARE(store.exportAll(true, now), done);
        store.fields.lastLocalChangeDate = {};
        QCOMPARE(store.import({}).last(), "changed");
        QCOMPARE(store.exportAll(true, now), done); // nobody left
        QVERIFY(!contentOf(store.path()).contains("<contact"));
    }

    void whatCannotBeExportedIsTold()
    {
        FilledSyncFixture store;
        QVERIFY(store.dao->updatePuidContact("#CONTACT_1#", "p\u0001"));
        writeFile(store.ownPhoto(), QByteArray(11 << 20, 'x'));
        for (const bool full : {false, true}) {
            store.log.lines.clear();
            QCOMPARE(store.exportAll(full), (QStringList{"exported Success ", "not exported"}));
            QVERIFY(store.log.contains("<4>Can't export contact with id:#CONTACT_1# because its \"puid\" holds a "
                                       "character that XML cannot carry"));
            const QByteArray file = contentOf(store.path());
            QVERIFY(file.contains("#CONTACT_2#") && !file.contains("<photo>"));
        }
        store.importFile();
        QCOMPARE(store.content(), two); // its photo was left out
        QCOMPARE(store.photoFiles(), QStringList{"photo_two"});
        store.news.clear();
        store.fields.maxContactsChanged = true;
        store.exporting.exportToXml(store.folder.filePath("missing/\nx"), 0, true, {}, {}, {}, {});
        QVERIFY(store.news.value(0).startsWith("exported Failure " + store.folder.filePath("missing/\\nx")));
        QVERIFY(store.fields.maxContactsChanged);
    }

    void theFileRulesTheStore_data()
    {
        const Rows<QByteArray, QStringList, QString> row;
        const auto refused = [](const QString &text) {
            return QStringList{"imported Success " + text, "not imported " + text};
        };
        const auto cannot = [&](const QString &id, const QString &reason) {
            return refused("Can't import contact with duid=\"" + id + "\" because " + reason);
        };
        const QStringList quiet{"imported Success "};
        const QStringList changed{"imported Success ", "changed"};
        row("the same ids", both, quiet, before);
        row("nobody", "",
            {"dropped photo_two", "imported Success ", "deleted pcSyncDeleteContactReqId #CONTACT_1#,#CONTACT_2#",
             "changed"},
            "");
        row("one goes", "<contact duid='#CONTACT_2#'/>",
            {"imported Success ", "deleted pcSyncDeleteContactReqId #CONTACT_1#", "changed"}, two);
        row("another persistent id", "<contact duid='#CONTACT_1#' puid='new'/><contact duid='#CONTACT_2#' puid='p2'/>",
            changed, "#CONTACT_1# new M<& https://x/photo Acme+Clerk+kept|" + two);
        row("a new contact",
            both + "<contact duid='' puid='n'><lastName>New</lastName><photo> aW1h\nZ2U= </photo><company>C</company>"
                   "</contact>",
            changed, before + "|#CONTACT_5# n New photo_new C");
        const QString notStored = "The imported contact with duid=\"7\\n8\" is not stored into the local database.";
        row("unknown id", both + "<contact duid='7&#10;8' puid='x'/>", refused(notStored), before);
        row("unknown contact", both + "<contact duid='7&#10;8'><email>e</email></contact>", refused(notStored), before);
        const QString notLocal = "\" is not a local one. It's not possible to modify it!";
        for (const QString id : {"#DM_9#", "c6"})
            row(qPrintable(id), both + "<contact duid='" + id.toUtf8() + "'><email>e</email></contact>",
                refused("The imported contact with duid=\"" + id + notLocal), before);
        row("twice", both + "<contact duid='#CONTACT_2#' puid='x'/>", cannot("#CONTACT_2#", "it is in the file twice"),
            before);
        const QString noPhoto = "Can't create the photo file for contact : ";
        row("bad base64", update("<photo>a</photo>"), refused(noPhoto + "#CONTACT_2#"), before);
        row("too large", update("<photo>" + QByteArray((10 << 20) + 1, 'x').toBase64() + "</photo>"),
            refused(noPhoto + "#CONTACT_2#"), before);
        row("bad base64 of a new one", both + "<contact puid='n'><photo>aW1h=</photo></contact>",
            refused(noPhoto + "#CONTACT_5#") << "changed", before + "|#CONTACT_5# n   ");
        row("repeated", update("<email>a</email><email>b</email>"),
            cannot("#CONTACT_2#", "its element \"email\" is repeated"), before);
        row("no photo any more", update(""), {"dropped photo_two", "imported Success ", "changed"},
            one + "|#CONTACT_2# p2 Two  ");
        row("the same photo", update("<photo>aW1hZ2U=</photo>"), quiet, before);
        row("another photo", update("<photo>aW1hZ2Uy</photo>"), {"dropped photo_two", "imported Success ", "changed"},
            one + "|#CONTACT_2# p2 Two photo_new ");
        row("too many", both + QByteArray("<contact/>").repeated(998),
            {"imported Failure The number of contacts to import is higher than the maximum one allowed."}, before);
        row("not well formed at its end", "<contact puid='n'><lastName>New</lastName></contact><a>",
            {"imported Failure line 1, column 78: Opening and ending tag mismatch."}, before);
    }

    void theFileRulesTheStore()
    {
        const auto [file, news, content] = currentRow<QByteArray, QStringList, QString>();
        FilledSyncFixture store;
        QCOMPARE(store.import(file), news);
        QCOMPARE(store.content(), content);
        QCOMPARE(store.dao->nbContact(), *store.dao->nbLocalUserContacts() + 2);
        QVERIFY(!store.fields.importOngoing);
        QCOMPARE(store.photoFiles().size(), store.content().count("photo_"));
    }

    void anUpdateTakesWhatTheFileSaysAndLeavesTheRest()
    {
        FilledSyncFixture store;
        Contact expected = store.stored("#CONTACT_1#");
        store.import("<contact duid='#CONTACT_1#' puid='new'><lastName>Abc</lastName><officePhone>0389</officePhone>"
                     "<jobTitle>Boss</jobTitle></contact><contact duid='#CONTACT_2#'/>");
        expected.firstName = expected.latinFirstName = expected.personalFax = expected.fax = "";
        expected.name = "Abc";
        expected.latinName = "aabbcc";
        expected.officePhone = "0389";
        expected.officePhoneCan = "+0389";
        expected.misc = {{"job", "Boss"}, {"other", "kept"}};
        expected.setPUID("new");
        QCOMPARE(store.stored("#CONTACT_1#"), expected);
    }

    void whatDidNotChangeIsNotWritten()
    {
        FilledSyncFixture store;
        store.exportAll();
        store.run("CREATE TRIGGER no AFTER UPDATE ON CONTACT BEGIN SELECT "
                  "RAISE(ABORT, 'written'); END");
        store.importFile();
        QCOMPARE(store.news, QStringList{"imported Success "});
        QVERIFY(store.canonized().isEmpty());
    }

    void photosThatCannotBeReadOrKept()
    {
        FilledSyncFixture store;
        store.fields.fileDiskUserQuota = 0;
        QFile::remove(store.ownPhoto());
        store.import(update("<photo>aW1hZ2U=</photo>") + "<contact><photo>aW1hZ2U=</photo></contact>");
        QCOMPARE(store.content(), before + "|#CONTACT_5#    ");
    }

    void whatGoesLeavesItsRoomToOtherPhotos_data()
    {
        const Rows<QByteArray, QString> row;
        const QByteArray fresh = "<contact puid='n'><photo>aW1hZ2Uy</photo></contact>";
        const QByteArray small = "<contact puid='n'><photo>aW1h</photo></contact>";
        const QByteArray two = "<contact duid='#CONTACT_2#'>";
        row("of a contact that goes", fresh, "photo_new");
        row("of one that comes later", fresh + two + "<email>e</email></contact>", ",photo_new");
        row("of the contact itself", two + "<photo>aW1hZ2Uy</photo></contact>", "photo_new");
        row("one that stays", fresh + two + "</contact>", "photo_two,");
        row("one that stays the same", fresh + two + "<photo>aW1hZ2U=</photo></contact>", "photo_two,");
        row("as many as fit", small + two + "<photo>aW1h</photo></contact>" + small, "photo_new,,photo_new");
        row("one that a contact names still", "<contact duid='#CONTACT_1#'/>" + fresh, "photo_two,");
    }

    /// There is room for 6 bytes, and a photo of 5.
    void whatGoesLeavesItsRoomToOtherPhotos()
    {
        const auto [file, expected] = currentRow<QByteArray, QString>();
        FilledSyncFixture store;
        store.fields.fileDiskUserQuota = 6;
        QVERIFY(
            store.dao->updatePhotoContact("#CONTACT_1#", file.contains("CONTACT_1") ? store.ownPhoto() : QString()));
        store.import(file);
        QStringList photos;
        for (const Contact &contact : store.dao->getContactByType(ContactType::Local).value_or(ListContact()))
            photos.append(store.shown(contact.photo));
        QCOMPARE(photos.join(','), expected);
        QVERIFY(store.photos.room() >= 0);
        store.photos.recount();
        QVERIFY(store.photos.room() >= 0);
    }

    void numbersAreMadeForManyAtOnce()
    {
        SyncFixture store;
        store.fields.maxContacts = 600; // as many as there is room for
        QByteArray many;
        for (int i = 0; i < 600; ++i)
            many += "<contact><officePhone>" + QByteArray::number(i) + "</officePhone></contact>";
        store.import(many);
        QCOMPARE(store.canonized(), (QList<qsizetype>{100, 100, 100, 100, 100, 100}));
        QCOMPARE(store.run("SELECT COUNT(DISTINCT officePhone) FROM CONTACT WHERE officePhoneCan='+' || officePhone"),
                 "600");
        store.exportAll();
        QStringList ids;
        const QByteArray file = contentOf(store.path());
        for (int i = 1; i <= 600; ++i) {
            ids.append("#CONTACT_" + QString::number(i) + '#');
            QVERIFY(file.contains("<duid>" + ids.last().toUtf8() + "</duid>"));
        }
        QCOMPARE(store.import({}).value(1), "deleted pcSyncDeleteContactReqId " + ids.join(','));
    }

    void anIdThatComesBackIsNoContactOfTheFile()
    {
        SyncFixture store;
        store.import("<contact><lastName>A</lastName></contact>");
        const QStringList news =
            store.import(QByteArray("<contact><officePhone>1</officePhone></contact>").repeated(250) +
                         "<contact duid='#CONTACT_2#'><lastName>B</lastName></contact>");
        QVERIFY(
            news.contains("not imported The imported contact with duid=\"#CONTACT_2#\" is not stored into the local "
                          "database."));
        QCOMPARE(store.run("SELECT COUNT(*) FROM CONTACT WHERE name=''"), "250");
    }

    void aFailureLeavesAllAsItWas_data()
    {
        const Rows<QString> row;
        row("begin", "cannot be opened");
        row("locked", "BEGIN IMMEDIATE TRANSACTION");
        row("commit", "");
        row("half way", "CREATE TRIGGER no AFTER INSERT ON CONTACT WHEN NEW.name='N' "
                        "BEGIN SELECT RAISE(ROLLBACK, 'disk full'); END");
    }

    void aFailureLeavesAllAsItWas()
    {
        const auto [statement] = currentRow<QString>();
        FilledSyncFixture store;
        const auto reset = qScopeGuard(sqlite3_reset_auto_extension);
        QSqlDatabase::database().setConnectOptions("QSQLITE_BUSY_TIMEOUT=1"); // of the import's own
        if (statement.size() > 20)
            store.run(statement);
        else
            sqlite3_auto_extension(reinterpret_cast<void (*)()>(statement.isEmpty() ? checkReferences : refuse));
        if (statement.isEmpty())
            store.failCommits();
        const QStringList news = store.import("<contact duid='#CONTACT_2#'><photo>aW1hZ2Uy</photo></contact>"
                                              "<contact><lastName>N</lastName><photo>aW1hZ2Uy</photo></"
                                              "contact><contact><lastName>M</lastName></contact>");
        QCOMPARE(news.last(), "imported Failure The contacts cannot be written to the database.");
        QCOMPARE(store.content(), before);
        QCOMPARE(store.dao->nbContact(), 4);
        QCOMPARE(store.photoFiles(), QStringList{"photo_two"});
        QVERIFY(!store.fields.importOngoing);
    }

    void aFileThatChangesWhileItIsReadChangesNothing()
    {
        const QByteArray first = "<contact duid='#CONTACT_1#'/>";
        const QByteArray fresh = "<contact><lastName>N</lastName></contact>";
        for (const auto &[then, later] :
             {std::pair(first + first, both), {both, first + first}, {both, first}, {first, first + fresh}}) {
            FilledSyncFixture store;
            KestinLogger::setSink([&store, content = later](const QByteArray &line) {
                if (line.contains(":parse each contact"))
                    writeFile(store.path(), "<directory>" + content + "</directory>");
            });
            QCOMPARE(store.import(then), QStringList{"imported Failure the file has changed while it was read"});
            QCOMPARE(store.content(), before);
        }
    }

    void aRefusedContactIsOneError()
    {
        FilledSyncFixture store;
        store.run("CREATE TRIGGER no AFTER INSERT ON MISC WHEN NEW.value='bad' "
                  "BEGIN SELECT RAISE(ABORT, 'no'); END");
        const QStringList news = store.import(both + "<contact><company>bad</company><photo>aW1hZ2U=</photo></contact>"
                                                     "<contact puid='g'><company>good</company></contact>");
        const QString text = "Can't import contact with duid=\"\" because the database refused it";
        QCOMPARE(news,
                 (QStringList{"dropped photo_new", "imported Success " + text, "not imported " + text, "changed"}));
        QCOMPARE(store.content(), before + "|#CONTACT_5# g   good");

        store.fields.maxContacts = 9000;
        const QStringList many = store.import(("<contact duid='" + QByteArray(999, 'x') + "'/>").repeated(5000));
        QCOMPARE(many.filter("not imported").size(), 5000);
        const QString cause = many.filter("imported Success").value(0);
        QVERIFY2(cause.endsWith(" more") && cause.size() < 1100000, qPrintable(cause.right(100)));
    }

    void aStoreThatCannotBeReadToItsEndFails()
    {
        SyncFixture store;
        store.import(QByteArray("<contact><lastName>A</lastName></contact>").repeated(150));
        store.exportAll();
        const QByteArray earlier = contentOf(store.path());
        store.damage("CONTACT");
        const QString reason = "Failure The contacts cannot be read from the database.";
        for (const bool isFull : {false, true})
            QCOMPARE(store.exportAll(isFull), QStringList("exported " + reason));
        QCOMPARE(contentOf(store.path()), earlier);
        int noted = 0;
        store.database.connection().setDamageHandler([&noted] { ++noted; });
        noted = 0;
        store.importFile();
        QVERIFY(store.news == QStringList("imported " + reason) && noted == 1);
    }

    void oneImportAtATimeAlsoWhenReadOnly()
    {
        FilledSyncFixture store;
        store.fields.readOnlyMode = true;
        store.fields.importOngoing = true;
        QCOMPARE(store.import({}), QStringList());
        QCOMPARE(store.content(), before);
        store.fields.importOngoing = false;
        store.import({});
        QCOMPARE(store.content(), "");
    }
};

QTEST_GUILESS_MAIN(SyncTest)
#include "SyncTest.moc"
