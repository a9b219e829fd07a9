// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Transaction.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Person.h"
#include "tests/support/Test.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// Every text different from every other, with what a statement could stumble over.
Contact fullContact()
{
    Contact contact;
    for (const Contact::TextField &field : Contact::texts)
        contact.*field.value = u"\uFEFF"_s + QLatin1String(field.name) + u" '%1' :name \u00e9\U0001F4DE\uFFFE"_s;
    contact.isPrivate = true;
    contact.photo = u"photo"_s;
    contact.melody = u"melody"_s;
    contact.setPUID(u"puid"_s);
    return contact;
}

using Change = void (*)(Contact &contact);
using Read = bool (*)(DaoContact &dao);
bool isWhole(ContactWalk walk)
{
    while (walk.next()) {
    }
    return walk.isAtEnd();
}
const QDateTime longAgo({2001, 2, 3}, {4, 5, 6, 7}, Qt::UTC);
constexpr int most = std::numeric_limits<int>::max();

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Read)

class DaoContactTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anIdFollowsTheType()
    {
        TemporaryStore store;
        const LogCapture log;
        QStringList ids;
        for (const int type : {0, 1, 3, 5, 6}) {
            Contact contact = fullContact();
            contact.contactId = u"42-%1"_s.arg(type);
            contact.type = type;
            contact.setLastModificationDate(longAgo);
            const bool withPuid = type > 3;
            QVERIFY(store.dao->insertContact(contact, withPuid));
            QVERIFY(contact.getLastModificationDate().secsTo(QDateTime::currentDateTimeUtc()) < 60);
            contact.setPUID(withPuid ? u"puid"_s : QString());
            QCOMPARE(store.dao->getContact(contact.contactId), ListContact{contact});
            ids.append(contact.contactId);
        }
        QCOMPARE(ids.join(u' '), u"#CONTACT_1# 42-1 #DM_42-3# #CONTACT_4# 42-6"_s);
        QCOMPARE(log.lines.filter(u"<7>DaoContact::insertContact : "_s).size(), 5 * 5);
        QCOMPARE(log.lines.first(), u"<7>DaoContact::insertContact : idcontact:42-0"_s);
    }

    void onlyAChangeGivesANewDate_data()
    {
        const Rows<bool, Change> row;
        row("nothing", false, [](Contact &) {});
        row("in preview", false, [](Contact &contact) { contact.isPreviewed = true; });
        row("a text", true, [](Contact &contact) { contact.name += u'x'; });
        row("case of a text", true,
            [](Contact &contact) { contact.collaborationId = contact.collaborationId.toUpper(); });
        row("photo", true, [](Contact &contact) { contact.photo.clear(); });
        row("company", true, [](Contact &contact) { contact.misc[u"company"_s] = u"b"_s; });
        row("of nobody", false, [](Contact &contact) { contact.contactId = u"none"_s; });
    }

    void onlyAChangeGivesANewDate()
    {
        const auto [isNew, change] = currentRow<bool, Change>();
        TemporaryStore store;
        Contact contact = store.add(u"id"_s, fullContact());
        contact.setLastModificationDate(longAgo);
        QVERIFY(store.dao->updateContactFromImport(contact));
        const QMap<QString, QString> pairs{{u"company"_s, u"a"_s}, {QString(), QString()}};
        QVERIFY(store.dao->misc().replacePairs(u"id"_s, pairs));
        contact.misc = pairs;
        QCOMPARE(store.dao->getContact(u"id"_s), ListContact{contact});
        change(contact);
        const LogCapture log;
        QVERIFY(store.dao->updateContact(contact));
        QVERIFY(log.contains("<7>isUpdateLastModificationDateNeeded : "_L1 + QVariant(isNew).toString()));
        const Contact stored = store.dao->getContact(u"id"_s)->value(0);
        QCOMPARE(stored.getLastModificationDate() != longAgo, isNew);
        // The pairs of a changed contact are the caller's to write again.
        QCOMPARE(stored.misc, isNew ? decltype(pairs)() : pairs);
        QVERIFY(contact.contactId != u"id"_s || (stored.name == contact.name && stored.photo == contact.photo));
    }

    void singleFieldsAreWrittenAlone()
    {
        TemporaryStore store;
        Contact contact = store.add(u"newContact"_s, fullContact());
        store.add(u"other"_s);
        const QString id = contact.contactId = u"it's"_s;
        QVERIFY(store.dao->updateIdContact(id));
        contact.misc = {{u"key"_s, u"value"_s}};
        QVERIFY(store.dao->misc().replacePairs(id, contact.misc));
        contact.setPUID(u"p"_s);
        QVERIFY(store.dao->updatePuidContact(id, contact.getPUID()));
        contact.photo = u"/a'b.png"_s;
        QVERIFY(store.dao->updatePhotoContact(id, contact.photo));
        contact.isPreviewed = true;
        QVERIFY(store.dao->updateContactPreview(id, true));
        QCOMPARE(store.dao->getContact(id), ListContact{contact});
        QCOMPARE(store.run("SELECT isPreviewed || photo || puid FROM CONTACT WHERE contactId='other'"), u"false"_s);
        QVERIFY(store.dao->deleteContact(id));
        QCOMPARE(store.run("SELECT contactId FROM CONTACT UNION SELECT contactId FROM MISC"), u"other"_s);
    }

    void onlyTheIdsOfAListAreMeant()
    {
        TemporaryStore store;
        DaoContact &dao = *store.dao;
        for (const char *id : {"a", "it's", "c"})
            store.add(QLatin1String(id));
        const QStringList ids{u"it's"_s, u"c"_s, u"none"_s};
        const QStringList hostile{u"x') OR ('1'='1"_s};
        const LogCapture log(KestinLogger::Error);
        QVERIFY(dao.updateContactsPreview(ids, true));
        QVERIFY(dao.updateContactsPreview(hostile, false));
        QCOMPARE(idsOf(dao.getAllContactInPreview(0, -1)), u"c,it's"_s);
        QCOMPARE(idsOf(dao.getContactsById(ids)), u"c,it's"_s);
        QCOMPARE(idsOf(dao.getContactsById(hostile)), QString());
        QCOMPARE(log.lines, QStringList());
        QVERIFY(!dao.updateContactsPreview({}, false) && dao.getContactsById({})->isEmpty());
        QCOMPARE(log.lines, (QStringList{u"<3>DaoContact::updateContactsPreview : the list of contact ids is empty !"_s,
                                         u"<3>DaoContact::getContactsById : the list of contact IDs is empty !"_s}));
    }

    void contactsAreCountedByKind()
    {
        TemporaryStore store;
        DaoContact &dao = *store.dao;
        const auto counts = [&dao] {
            return QList<std::optional<int>>{dao.nbContact(), dao.nbDMContacts(), dao.nbLocalUserContacts(),
                                             dao._nbCachedContactQuery(),
                                             dao._nbContactsUsingThisPhotoQuery(u"photo"_s)};
        };
        QCOMPARE(counts(), (QList<std::optional<int>>{0, 0, 0, 0, 0}));
        QCOMPARE(dao.getOldestCachedContactId(), QString());
        for (const int type : {0, 1, 3, 5, 5})
            store.add(u"id"_s, fullContact(), type);
        QList<Contact> cached{store.add(u"a"_s), store.add(u"b"_s), store.add(u"c"_s)};
        QCOMPARE(counts(), (QList<std::optional<int>>{8, 3, 1, 3, 5}));
        // Times of several zones are compared as times.
        cached[1].setLastModificationDate(QDateTime({2001, 1, 1}, {0, 0}, Qt::UTC));
        cached[2].setLastModificationDate(QDateTime({2001, 1, 1}, {1, 0}, Qt::OffsetFromUTC, 7200));
        for (const Contact &contact : cached)
            QVERIFY(dao.updateContactFromImport(contact));
        QCOMPARE(dao.getOldestCachedContactId(), u"c"_s);
    }

    void aChangeOfTheSameMomentIsInTheExport()
    {
        TemporaryStore store;
        Contact contact = store.add(u"a"_s);
        contact.setLastModificationDate(longAgo);
        QVERIFY(store.dao->updateContactFromImport(contact));
        QVERIFY(store.dao->isDirectorySynchronized(longAgo, longAgo));
        QVERIFY(!store.dao->isDirectorySynchronized(longAgo.addMSecs(-1), {}));
        QVERIFY(!store.dao->isDirectorySynchronized(longAgo, longAgo.addMSecs(1)));
    }

    void pagesStayInBounds()
    {
        TemporaryStore store;
        Contact contact;
        contact.isPreviewed = true;
        for (const char *id : {"d", "b", "a", "c"})
            store.add(QLatin1String(id), contact);
        const auto page = [&store](int start, int length) {
            const QString all = idsOf(store.dao->getAllContact(start, length));
            const QString preview = idsOf(store.dao->getAllContactInPreview(start, length));
            return all == preview ? all : all + " but "_L1 + preview;
        };
        QCOMPARE(page(0, 2), u"a,b"_s);
        QCOMPARE(page(2, 2), u"c,d"_s);
        QCOMPARE(page(4, 1) + page(0, 0) + page(most, most), QString());
        QCOMPARE(page(-3, 1), u"a"_s);
        QCOMPARE(page(1, -1), u"b,c,d"_s);
        QCOMPARE(page(2, most), u"c,d"_s);
        QVERIFY(store.dao->updateContactPreview(u"b"_s, false));
        QCOMPARE(page(0, 2), u"a,b but a,c"_s);
        QCOMPARE(idsOf(store.dao->getAllContact()), u"a,b,c,d"_s);
    }

    void pagesFarBehindAreAsTheStoreIs()
    {
        TemporaryStore store;
        const auto fill = [&store](int first, int last) {
            Transaction transaction(store.database.connection());
            for (int i = first; i < last; ++i)
                store.add(u"c%1"_s.arg(i, 4, 10, QChar(u'0')));
            QVERIFY(transaction.commit());
        };
        const auto page = [&store](int start) { return idsOf(store.dao->getAllContact(start, 2)); };
        fill(0, 600);
        for (int round = 0; round < 2; ++round) { // found, and entered where it was found
            QCOMPARE(page(400) + page(599) + page(402) + page(600), u"c0400,c0401c0599c0402,c0403"_s);
            QCOMPARE(store.dao->getAllContact(500, -1)->size(), 100);
        }
        QVERIFY(store.dao->deleteContact(u"c0010"_s));
        QCOMPARE(page(400), u"c0401,c0402"_s);
        {
            const Transaction undone(store.database.connection());
            fill(1000, 1001);
            QVERIFY(store.dao->deleteContact(u"c0011"_s));
            QCOMPARE(page(400), u"c0402,c0403"_s);
        }
        QCOMPARE(page(400), u"c0401,c0402"_s);
        {
            QSqlDatabase other = QSqlDatabase::cloneDatabase(store.database.connection().handle(), u"other"_s);
            QVERIFY(other.open());
            QSqlQuery query(other);
            QVERIFY(query.exec(u"DELETE FROM Contact WHERE contactId='c0000'"_s));
            QVERIFY(query.exec(u"UPDATE Contact SET contactId='c0500' WHERE contactId BETWEEN 'c0490' AND 'c0501'"_s));
        }
        QSqlDatabase::removeDatabase(u"other"_s);
        QCOMPARE(page(400), u"c0402,c0403"_s);
        QCOMPARE(page(492), u"c0500,c0500"_s);
        QCOMPARE(page(500), u"c0502,c0503"_s); // of rows with one id none is left out
    }

    void contactsAreLookedUp()
    {
        TemporaryStore store;
        DaoContact &dao = *store.dao;
        Contact contact;
        contact.email = u"Ann.O'Neil@x.org"_s;
        contact.collaborationId = u"IM:Ann"_s;
        store.add(u"remote"_s, contact, ContactType::Remote);
        contact.officePhoneCan = u"+33"_s;
        store.add(u"cached"_s, contact);
        store.add(u"without number"_s);
        QCOMPARE(idsOf(dao.getContactsByEmailAddress(u"ANN.o'neil@X.ORG"_s)), u"remote"_s);
        QCOMPARE(idsOf(dao.getContactByIMAddress(u"im:ann"_s)), u"remote"_s);
        QCOMPARE(idsOf(dao.getContactByType(6)), u"cached,without number"_s);
        QCOMPARE(dao._getCachedContactsWithMatchingOfficePhone({}), QStringList());
        for (const auto number : {&Contact::officePhoneCan, &Contact::faxCan, &Contact::personalHomeCan,
                                  &Contact::personalMobileCan, &Contact::personalFaxCan}) {
            Contact other;
            other.*number = u"+33"_s;
            QCOMPARE(dao._getCachedContactsWithMatchingOfficePhone(other), QStringList(u"cached"_s));
            other.*number = u"+44"_s;
            other.officePhone = u"+55"_s;
            store.add(u"x"_s, other, ContactType::Remote);
            QCOMPARE(idsOf(dao.getContactByPhoneNumber(u"+44"_s)), u"x"_s);
            QVERIFY(dao.deleteContact(u"x"_s));
        }
        QCOMPARE(idsOf(dao.getContactByPhoneNumber(u"+55"_s)), QString());
        const LogCapture log;
        QVERIFY(dao.getContactByPhoneNumber({})->isEmpty());
        QCOMPARE(log.lines, QStringList(u"<4>getContactByPhoneNumber : empty phoneNumber, returns empty list"_s));
    }

    void miscPairsBecomeTheRecords()
    {
        TemporaryStore store;
        DaoMisc &misc = store.dao->misc();
        const QString id = u"it's"_s;
        QVERIFY(misc.insertPair(u"other"_s, u"key"_s, u"1"_s));
        const QMap<QString, QString> pairs{{QString(), u"a"_s}, {u"key"_s, QString()}, {u"c"_s, u"d"_s}};
        QVERIFY(misc.replacePairs(id, pairs));
        QCOMPARE(misc.pairs(id), pairs);
        const QString writes = store.run("SELECT total_changes()");
        QVERIFY(misc.replacePairs(id, pairs));
        QCOMPARE(store.run("SELECT total_changes()"), writes);
        QCOMPARE(misc.value(id, u"key"_s), QStringList(QString()));
        QVERIFY(misc.updatePair(id, u"key"_s, u"2"_s));
        QVERIFY(misc.deletePair(id, u"c"_s));
        QCOMPARE(misc.pairs(id), (QMap<QString, QString>{{QString(), u"a"_s}, {u"key"_s, u"2"_s}}));
        QVERIFY(misc.replacePairs(id, {}));
        QCOMPARE(store.run("SELECT contactId || value FROM MISC"), u"other1"_s);
    }

    void aStoreOfBeforeIsReadAndContinued()
    {
        TemporaryStore store;
        // Rows as the service wrote them when its statements still ran through Qt's.
        store.run(
            "INSERT INTO CONTACT VALUES('#CONTACT_1#','','Dr.','Zoë','O''Müller','zzooeë','oo''''mmuülllleerr','','',"
            "'+49 711','+49711','','','12','Z@x.de','','','','','','0171','+49171','4711','4711','','zoe@im','true',"
            "'false',0,'http://photos.example/z.jpg','ring',NULL,'2026-11-22T00:05:38.417Z')");
        store.run("INSERT INTO MISC VALUES('#CONTACT_1#','company','Norlan')");
        Contact contact =
            person("contactId=#CONTACT_1#|salutation=Dr.|firstName=Zoë|name=O'Müller|latinFirstName=zzooeë|"
                   "latinName=oo''mmuülllleerr|officePhone=+49 711|officePhoneCan=+49711|assistant=12|email=Z@x.de|"
                   "personalMobile=0171|personalMobileCan=+49171|personalFax=4711|personalFaxCan=4711|"
                   "collaborationId=zoe@im|photo=http://photos.example/z.jpg|melody=ring|misc.company=Norlan");
        contact.isPreviewed = true;
        contact.setLastModificationDate(QDateTime({2026, 11, 22}, {0, 5, 38, 417}, Qt::UTC));
        QCOMPARE(store.dao->getContact(contact.contactId), ListContact{contact});
        QCOMPARE(idsOf(store.dao->getAllContactInPreview(0, 1)), contact.contactId);
        contact.isPrivate = true;
        QVERIFY(store.dao->updateContactFromImport(contact));
        QCOMPARE(
            store.run("SELECT isPreviewed || isPrivate || type || typeof(type) || loginName || lastModificationDate "
                      "FROM CONTACT"),
            u"truetrue0integer2026-11-22T00:05:38.417Z"_s);
    }

    void datesAndFlagsOfOthersAreRead()
    {
        TemporaryStore store;
        store.add(u"a"_s);
        for (const QString date : {"2026-11-22T23:05:38.417Z", "2026-11-22T24:00:00.000Z", "2026-13-22T00:05:38.417Z",
                                   "2026-11-22T00:05:38.417", "2026-11-22T00:05:38.41+01:00", "2026-11-22 00:05"}) {
            store.run("UPDATE CONTACT SET isPrivate='False', lastModificationDate='" + date + '\'');
            const Contact contact = store.dao->getContact(u"a"_s)->first();
            QCOMPARE(contact.getLastModificationDate(), QDateTime::fromString(date, Qt::ISODateWithMs));
            QVERIFY(!contact.isPrivate);
        }
    }

    void failuresAreLoggedAndHarmless()
    {
        TemporaryStore store;
        DaoContact &dao = *store.dao;
        store.add(u"a"_s);
        store.run("ALTER TABLE CONTACT RENAME TO AWAY");
        Contact contact;
        const LogCapture log(KestinLogger::Error);
        QVERIFY(!dao.insertContact(contact, false) && !dao.updateContactsPreview({u"a"_s}, true));
        QVERIFY(!dao.nbContact() && !dao.getOldestCachedContactId());
        QVERIFY(!dao.getAllContact() && !dao.getContactsByName({}));
        QCOMPARE(log.lines.size(), 6);
        for (const QString &line : log.lines) {
            QVERIFY2(line.startsWith("<3>Error while executing query "_L1), qPrintable(line));
            QVERIFY2(line.contains(" : no such table: CONTACT"_L1), qPrintable(line));
        }
        store.run("ALTER TABLE AWAY RENAME TO CONTACT");
        QCOMPARE(dao.nbContact(), 1);
    }

    void aWalkThatBreaksOffIsNoEnd_data()
    {
        const Rows<QString, Read> rows;
        const auto row = [&rows](const QByteArray &damaged, const char *what, Read read) {
            rows(damaged + ", " + what, damaged, read);
        };
        for (const char *table : {"CONTACT", "MISC"}) {
            row(table, "whole contacts", [](DaoContact &dao) { return dao.getAllContact().has_value(); });
            row(table, "export", [](DaoContact &dao) { return isWhole(dao.fullExport()); });
        }
        row("MISC", "writing pairs", [](DaoContact &dao) { return dao.misc().replacePairs(u"a"_s, {}); });
        row("CONTACT", "summaries", [](DaoContact &dao) { return dao.getContactsByLatinName({}).has_value(); });
        row("CONTACT", "ids", [](DaoContact &dao) { return isWhole(dao.mappingExport()); });
        row("CONTACT", "pairs of ids", [](DaoContact &dao) { return isWhole(dao.getLocalPuids()); });
        row("CONTACT", "cached copies", [](DaoContact &dao) {
            Contact contact;
            contact.faxCan = u"1"_s;
            return dao._getCachedContactsWithMatchingOfficePhone(contact).has_value();
        });
        row("CONTACT", "oldest", [](DaoContact &dao) { return dao.getOldestCachedContactId().has_value(); });
        row("CONTACT", "changes", [](DaoContact &dao) {
            return dao.isDirectorySynchronized(QDateTime::currentDateTimeUtc().addDays(1), longAgo);
        });
        row("type_idx", "count", [](DaoContact &dao) { return dao._nbCachedContactQuery().has_value(); });
        row("photo_idx", "photos", [](DaoContact &dao) { return dao.getPhotos().has_value(); });
    }

    void aWalkThatBreaksOffIsNoEnd()
    {
        const auto [damaged, read] = currentRow<QString, Read>();
        TemporaryStore store;
        {
            Transaction transaction(store.database.connection());
            for (int i = 0; i < 60; ++i) {
                const Contact contact = store.add(u"a"_s, fullContact(), i % 2 * ContactType::Cached);
                QVERIFY(store.dao->misc().insertPair(contact.contactId, u"key"_s, QString(200, u'x')));
            }
            QVERIFY(transaction.commit());
        }
        store.damage(qPrintable(damaged));
        const LogCapture log(KestinLogger::Error);
        QVERIFY(!read(*store.dao));
        QCOMPARE(log.lines.size(), 1);
        QVERIFY(log.lines.first().startsWith("<3>Error while executing query "_L1));
    }
};

QTEST_GUILESS_MAIN(DaoContactTest)
#include "DaoContactTest.moc"
