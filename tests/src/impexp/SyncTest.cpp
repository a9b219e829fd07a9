// SPDX-License-Identifier: Apache-2.0
#include "tests/src/impexp/SyncStand.h"

#include "src/dao/LatinText.h"
#include "tests/support/Rows.h"

#include <QProcess>
#include <QTest>

namespace {

/// #CONTACT_1# with all that a file carries and more, #CONTACT_2# with a photo file of our own, a contact of device
/// management and a cached one.
struct FilledStand : SyncStand
{
    FilledStand()
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
                         shown(contact.photo) + ' ' + QStringList(contact.misc.values()).join(u'+'));
        return lines.join(u'|');
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
            FilledStand phone;
            writeFile(phone.ownPhoto(), QByteArray(100000, '\xff'));
            QCOMPARE(phone.exportAll(false), QStringList{"exported Success "});
            QVERIFY(contentOf(phone.path()).contains("<contact duid=\"#CONTACT_2#\" puid=\"p2\"/>"));
            QCOMPARE(phone.exportAll(), QStringList{"exported Success "});
            QCOMPARE(QProcess::execute("xmllint", {"--noout", "--schema", KESTIN_SYNC_SCHEMA, phone.path()}), 0);
            QVERIFY(contentOf(phone.path()).contains("contacts=\"2\" free=\"999\""));
            file = withoutIds(contentOf(phone.path()));
            was = phone.stored("#CONTACT_1#");
        }
        SyncStand other;
        writeFile(other.path(), file.toUtf8());
        other.importing.importFromXml(other.path());
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
        FilledStand stand;
        const QStringList done{"exported Success "};
        const QStringList skipped{"exported NothingToDo "};
        const QDateTime now = stand.stored("c6").getLastModificationDate(); // the newest
        stand.fields.lastLocalChangeDate = now;
        QCOMPARE(stand.exportAll(true, now.addMSecs(-1)), done);
        QFile::remove(stand.path());
        QCOMPARE(stand.exportAll(true, now), skipped);
        QVERIFY(!QFile::exists(stand.path()));
        stand.fields.maxContactsChanged = true;
        QCOMPARE(stand.exportAll(true, now), done);
        QCOMPARE(stand.exportAll(true, now), skipped);
        stand.fields.lastLocalChangeDate = now.addMSecs(1); // a deletion leaves no row
        QCOMPARE(stand.exportAll(true, now), done);
        stand.fields.lastLocalChangeDate = {};
        QCOMPARE(stand.import({}).last(), "changed");
        QCOMPARE(stand.exportAll(true, now), done); // nobody left
        QVERIFY(!contentOf(stand.path()).contains("<contact"));
    }

    void whatCannotBeExportedIsTold()
    {
        FilledStand stand;
        QVERIFY(stand.dao->updatePuidContact("#CONTACT_1#", "p\u0001"));
        writeFile(stand.ownPhoto(), QByteArray(11 << 20, 'x'));
        for (const bool full : {false, true}) {
            stand.log.lines.clear();
            QCOMPARE(stand.exportAll(full), (QStringList{"exported Success ", "not exported"}));
            QVERIFY(stand.log.contains("<4>Can't export contact with id:#CONTACT_1# because its \"puid\" holds a "
                                       "character that XML cannot carry"));
            const QByteArray file = contentOf(stand.path());
            QVERIFY(file.contains("#CONTACT_2#") && !file.contains("<photo>"));
        }
        stand.importing.importFromXml(stand.path());
        QCOMPARE(stand.content(), two); // its photo was left out
        QCOMPARE(stand.photoFiles(), QStringList{"photo_two"});
        stand.news.clear();
        stand.fields.maxContactsChanged = true;
        stand.exporting.exportToXml(stand.folder.filePath("missing/\nx"), 0, true, {}, {}, {}, {});
        QVERIFY(stand.news.value(0).startsWith("exported Failure " + stand.folder.filePath("missing/\\nx")));
        QVERIFY(stand.fields.maxContactsChanged);
    }

    void theFileRulesTheStore_data()
    {
        const Rows<QByteArray, QStringList, QString> row("file", "news", "content");
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
        QFETCH(const QByteArray, file);
        FilledStand stand;
        QTEST(stand.import(file), "news");
        QTEST(stand.content(), "content");
        QCOMPARE(stand.dao->nbContact(), *stand.dao->nbLocalUserContacts() + 2);
        QVERIFY(!stand.fields.importOngoing);
        QCOMPARE(stand.photoFiles().size(), stand.content().count("photo_"));
    }

    void anUpdateTakesWhatTheFileSaysAndLeavesTheRest()
    {
        FilledStand stand;
        Contact expected = stand.stored("#CONTACT_1#");
        stand.import("<contact duid='#CONTACT_1#' puid='new'><lastName>Abc</lastName><officePhone>0389</officePhone>"
                     "<jobTitle>Boss</jobTitle></contact><contact duid='#CONTACT_2#'/>");
        expected.firstName = expected.latinFirstName = expected.personalFax = expected.fax = "";
        expected.name = "Abc";
        expected.latinName = "aabbcc";
        expected.officePhone = "0389";
        expected.officePhoneCan = "+0389";
        expected.misc = {{"job", "Boss"}, {"other", "kept"}};
        expected.setPUID("new");
        QCOMPARE(stand.stored("#CONTACT_1#"), expected);
        QVERIFY(stand.log.contains("<7>KestinDirectory::importFromXml :update contact into the DB."));
        QVERIFY(stand.log.contains("<7>KestinDirectory::importFromXml: modify contact : #CONTACT_1#"));
        QVERIFY(stand.log.contains("<6>KestinDirectory::importFromXml : import process succeeded."));
    }

    void whatDidNotChangeIsNotWritten()
    {
        FilledStand stand;
        stand.exportAll();
        stand.database.connection().executeQuery("CREATE TEMP TRIGGER no AFTER UPDATE ON main.CONTACT BEGIN SELECT "
                                                 "RAISE(ABORT, 'written'); END");
        stand.importing.importFromXml(stand.path());
        QCOMPARE(stand.news, QStringList{"imported Success "});
        QVERIFY(stand.canonized().isEmpty());
        QVERIFY(stand.log.contains("<7>KestinDirectory::importFromXml: modify contact : #CONTACT_2#"));
    }

    void photosThatCannotBeReadOrKept()
    {
        FilledStand stand;
        stand.fields.fileDiskUserQuota = 0;
        QFile::remove(stand.ownPhoto());
        stand.import(update("<photo>aW1hZ2U=</photo>") + "<contact><photo>aW1hZ2U=</photo></contact>");
        QVERIFY(stand.log.contains("<4>Can't read the local photo file for contact : #CONTACT_2#"));
        QVERIFY(stand.log.contains("<4>Can't create the photo file for contact : #CONTACT_2#"));
        QVERIFY(stand.log.contains("<4>Can't create the photo file for contact : #CONTACT_5#"));
        QCOMPARE(stand.content(), before + "|#CONTACT_5#    ");
    }

    void whatGoesLeavesItsRoomToOtherPhotos_data()
    {
        const Rows<QByteArray, QString> row("file", "photos");
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
        QFETCH(const QByteArray, file);
        FilledStand stand;
        stand.fields.fileDiskUserQuota = 6;
        QVERIFY(
            stand.dao->updatePhotoContact("#CONTACT_1#", file.contains("CONTACT_1") ? stand.ownPhoto() : QString()));
        stand.import(file);
        QStringList photos;
        for (const Contact &contact : stand.dao->getContactByType(ContactType::Local).value_or(ListContact()))
            photos.append(stand.shown(contact.photo));
        QTEST(photos.join(u','), "photos");
        QVERIFY(stand.photos.room() >= 0);
        stand.photos.recount();
        QVERIFY(stand.photos.room() >= 0);
    }

    void numbersAreMadeForManyAtOnce()
    {
        SyncStand stand;
        stand.fields.maxContacts = 600; // as many as there is room for
        QByteArray many;
        for (int i = 0; i < 600; ++i)
            many += "<contact><officePhone>" + QByteArray::number(i) + "</officePhone></contact>";
        stand.import(many);
        QCOMPARE(stand.canonized(), (QList<qsizetype>{100, 100, 100, 100, 100, 100}));
        QCOMPARE(stand.run("SELECT COUNT(*) FROM CONTACT WHERE officePhoneCan='+' || officePhone"), "600");
        stand.exportAll();
        QStringList ids;
        const QByteArray file = contentOf(stand.path());
        for (int i = 1; i <= 600; ++i) {
            ids.append("#CONTACT_" + QString::number(i) + '#');
            QVERIFY(file.contains("<duid>" + ids.last().toUtf8() + "</duid>"));
        }
        QCOMPARE(stand.import({}).value(1), "deleted pcSyncDeleteContactReqId " + ids.join(u','));
    }

    void anIdThatComesBackIsNoContactOfTheFile()
    {
        SyncStand stand;
        stand.import("<contact><lastName>A</lastName></contact>");
        const QStringList news =
            stand.import(QByteArray("<contact><officePhone>1</officePhone></contact>").repeated(250) +
                         "<contact duid='#CONTACT_2#'><lastName>B</lastName></contact>");
        QVERIFY(
            news.contains("not imported The imported contact with duid=\"#CONTACT_2#\" is not stored into the local "
                          "database."));
        QCOMPARE(stand.run("SELECT COUNT(*) FROM CONTACT WHERE name=''"), "250");
    }

    void aFailureLeavesAllAsItWas_data()
    {
        const Rows<QString, QString> row("statements", "logged");
        const QString text =
            "<3>KestinDirectory::importFromXml : error while trying to %1 a unique transaction during the "
            "import process %2 the database.";
        row("begin", "BEGIN", text.arg("begin", "on"));
        row("commit",
            "PRAGMA foreign_keys=ON\nCREATE TEMP TABLE p(id PRIMARY KEY)\nCREATE TEMP TABLE c(id "
            "REFERENCES p(id) DEFERRABLE INITIALLY DEFERRED)\nCREATE TEMP TRIGGER no AFTER INSERT "
            "ON main.CONTACT BEGIN INSERT INTO c VALUES(1); END",
            text.arg("commit", "to"));
        row("half way",
            "CREATE TEMP TRIGGER no AFTER INSERT ON main.CONTACT WHEN NEW.name='N' BEGIN SELECT "
            "RAISE(ROLLBACK, 'disk full'); END",
            "<4>Can't import contact with duid=\"\" because the database refused it");
    }

    void aFailureLeavesAllAsItWas()
    {
        QFETCH(const QString, statements);
        QFETCH(const QString, logged);
        FilledStand stand;
        for (const QString &statement : statements.split('\n'))
            stand.database.connection().executeQuery(statement);
        const QStringList news = stand.import("<contact duid='#CONTACT_2#'><photo>aW1hZ2Uy</photo></contact>"
                                              "<contact><lastName>N</lastName><photo>aW1hZ2Uy</photo></"
                                              "contact><contact><lastName>M</lastName></contact>");
        QCOMPARE(news.last(), "imported Failure The contacts cannot be written to the database.");
        QVERIFY(stand.log.contains(logged));
        QCOMPARE(stand.content(), before);
        QCOMPARE(stand.dao->nbContact(), 4);
        QCOMPARE(stand.photoFiles(), QStringList{"photo_two"});
        QVERIFY(!stand.fields.importOngoing);
    }

    void aFileThatChangesWhileItIsReadChangesNothing()
    {
        const QByteArray first = "<contact duid='#CONTACT_1#'/>";
        const QByteArray fresh = "<contact><lastName>N</lastName></contact>";
        for (const auto &[then, later] :
             {std::pair(first + first, both), {both, first + first}, {both, first}, {first, first + fresh}}) {
            FilledStand stand;
            KestinLogger::setSink([&stand, content = later](const QByteArray &line) {
                if (line.contains(":parse each contact"))
                    writeFile(stand.path(), "<directory>" + content + "</directory>");
            });
            QCOMPARE(stand.import(then), QStringList{"imported Failure the file has changed while it was read"});
            QCOMPARE(stand.content(), before);
        }
    }

    void aRefusedContactIsOneError()
    {
        FilledStand stand;
        stand.database.connection().executeQuery(
            "CREATE TEMP TRIGGER no AFTER INSERT ON main.MISC WHEN NEW.value='bad' "
            "BEGIN SELECT RAISE(ABORT, 'no'); END");
        const QStringList news = stand.import(both + "<contact><company>bad</company><photo>aW1hZ2U=</photo></contact>"
                                                     "<contact puid='g'><company>good</company></contact>");
        const QString text = "Can't import contact with duid=\"\" because the database refused it";
        QCOMPARE(news,
                 (QStringList{"dropped photo_new", "imported Success " + text, "not imported " + text, "changed"}));
        QCOMPARE(stand.content(), before + "|#CONTACT_5# g   good");

        stand.fields.maxContacts = 9000;
        const QStringList many = stand.import(("<contact duid='" + QByteArray(999, 'x') + "'/>").repeated(5000));
        QCOMPARE(many.filter("not imported").size(), 5000);
        const QString cause = many.filter("imported Success").value(0);
        QVERIFY2(cause.endsWith(" more") && cause.size() < 1100000, qPrintable(cause.right(100)));
    }

    void aStoreThatCannotBeReadToItsEndFails()
    {
        SyncStand stand;
        stand.import(QByteArray("<contact><lastName>A</lastName></contact>").repeated(150));
        stand.exportAll();
        const QByteArray earlier = contentOf(stand.path());
        stand.damage("CONTACT");
        const QString reason = "Failure The contacts cannot be read from the database.";
        for (const bool isFull : {false, true})
            QCOMPARE(stand.exportAll(isFull), QStringList("exported " + reason));
        QCOMPARE(contentOf(stand.path()), earlier);
        stand.importing.importFromXml(stand.path());
        QCOMPARE(stand.news, QStringList("imported " + reason));
    }

    void oneImportAtATimeAlsoWhenReadOnly()
    {
        FilledStand stand;
        stand.fields.readOnlyMode = true;
        stand.fields.importOngoing = true;
        QCOMPARE(stand.import({}), QStringList());
        QCOMPARE(stand.content(), before);
        QVERIFY(stand.log.contains("<4>an import is already on-going!"));
        stand.fields.importOngoing = false;
        stand.import({});
        QCOMPARE(stand.content(), "");
    }
};

QTEST_GUILESS_MAIN(SyncTest)
#include "SyncTest.moc"
