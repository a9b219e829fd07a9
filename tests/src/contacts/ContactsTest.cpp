// SPDX-License-Identifier: Apache-2.0
#include "tests/src/contacts/Store.h"

#include "platform/framework/KestinException.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "src/contacts/ReadOnlyMode.h"
#include "src/contacts/TelephonyMode.h"
#include "src/dao/Transaction.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QFile>
#include <QSqlDriver>
#include <QTest>

#include <sqlite3.h>

using namespace ContactType;

namespace {

const QString request = "r";

} // namespace

class ContactsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCreatedContactIsCompletedStoredAndTold();
    void theRequestIdDecidesTypeAndNews();
    void capacityIsHeld();
    void aFullCacheGivesUpItsOldestOnly();
    void aCopyTakesNobodysId_data();
    void aCopyTakesNobodysId();
    void aLocalContactReplacesItsCachedCopies();
    void anonymousContactsAreRefused_data();
    void anonymousContactsAreRefused();
    void readOnlyModeRefusesEveryWrite();
    void theListFormCreatesWithLessCare();
    void modifyingReplacesAllButTypeAndPuid();
    void modifyingIsRefusedByType_data();
    void modifyingIsRefusedByType();
    void theListFormModifiesWithLessCare();
    void deletingIsRefusedByType_data();
    void deletingIsRefusedByType();
    void photosAreWantedAndDroppedByType();
    void aFailedWriteLeavesNothingAndTellsNothing();
    void previewCodesAndNews();
    void lookUps();
    void numbersSurviveTelephonyFaults_data();
    void numbersSurviveTelephonyFaults();
    void numbersOfManySurviveTelephonyFaults();
    void aSilenceCountsForTheListInWhichItCame();
    void changedDialingRulesRecomputeOnce();
    void recomputingGoesOnAtTheNextStart_data();
    void recomputingGoesOnAtTheNextStart();
    void missingLatinNamesAreFilledAtStart();
    void modeOfTelephony_data();
    void modeOfTelephony();
    void onlyItsOwnReadOnlyEventCounts();
};

void ContactsTest::aCreatedContactIsCompletedStoredAndTold()
{
    Store store;
    Contact contact = person("Zoë", "Abc", "03 88");
    contact.latinName = "caller's own";
    contact.setPUID("caller's own");
    contact.misc = {{"company", "Acme"}, {QString(), QString()}};
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), 0);
    QCOMPARE(store.takeNews(), QStringList{"created r #CONTACT_1#"});
    const Contact stored = store.stored("#CONTACT_1#");
    QCOMPARE(stored.officePhone, "0388");
    QCOMPARE(stored.officePhoneCan, "+0388");
    QCOMPARE(stored.latinName, "aabbcc");
    QCOMPARE(stored.latinFirstName, "zzooee\u0308");
    QCOMPARE(stored.misc, contact.misc);
    QVERIFY(store.fields.lastLocalChangeDate.isValid());
    QCOMPARE(store.transport.calls.value(0).method, "extractDialableNumberList");
    QCOMPARE(store.transport.calls.value(1).method, "makeCanonicalNumberListWithoutPrefix");
}

void ContactsTest::theRequestIdDecidesTypeAndNews()
{
    Store store;
    QCOMPARE(store.open->contacts.creation.createLocalContact(RequestId::deviceManagement, withType(Cached, "42")), 0);
    QCOMPARE(store.takeNews(), QStringList());
    QCOMPARE(store.stored("#DM_42#").type, DeviceManagement);
    QVERIFY(!store.fields.lastLocalChangeDate.isValid());
    QCOMPARE(store.open->contacts.creation.createLocalContact(RequestId::cached, withType(Local, "c1")), 0);
    QCOMPARE(store.stored("c1").type, Cached);
    QCOMPARE(store.takeNews(), QStringList{"created CACHED_REQID c1"});
    QCOMPARE(store.open->contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_42#"), 0);
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::capacityIsHeld()
{
    Store store;
    store.fields.maxContacts = 1;
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, person("A", "B")), 0);
    store.takeNews();
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, person("C", "D")), 3);
    QCOMPARE(store.takeNews(), QStringList{"full"});
    QVERIFY(store.log.contains("<7>DataBase Full"));
    QVERIFY(store.open->contacts.creation.createLocalContacts(request, {person("C", "D")}).isEmpty());
    QCOMPARE(store.takeNews(), QStringList());
    QCOMPARE(store.open->contacts.creation.createLocalContact(RequestId::deviceManagement, withType(DeviceManagement)),
             0);
    QCOMPARE(store.open->dao.nbContact(), 2);
    // A count that cannot be read is no room.
    store.fields.maxContacts = 1000;
    const QVariant handle = store.database.connection().handle().driver()->handle();
    const auto refuse = [](void *, int action, const char *, const char *function, const char *, const char *) {
        return action == SQLITE_FUNCTION && qstrcmp(function, "count") == 0 ? SQLITE_DENY : SQLITE_OK;
    };
    sqlite3_set_authorizer(*static_cast<sqlite3 *const *>(handle.constData()), refuse, nullptr);
    store.database.connection().beginEpoch();
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, person("C", "D")), -1);
    QVERIFY(store.open->contacts.creation.createLocalContacts(request, {person("C", "D")}).isEmpty());
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::aFullCacheGivesUpItsOldestOnly()
{
    Store store;
    store.fields.comLogSize = 2;
    const auto cache = [&store](const char *id) {
        store.open->contacts.creation.createLocalContact(RequestId::cached, withType(Cached, id));
        return store.takeNews().join('|') + ' ' + QString::number(store.open->dao._nbCachedContactQuery().value_or(-1));
    };
    for (const char *id : {"c1", "c2"})
        store.put(withType(Cached, id));
    QCOMPARE(cache("c3"), "deleted CACHED_REQID c1|created CACHED_REQID c3 2");
    QCOMPARE(cache("c3"), "deleted CACHED_REQID c3|created CACHED_REQID c3 2"); // takes the place of itself
    store.put(withType(Cached, "c4"));
    QCOMPARE(cache("c5"), "deleted CACHED_REQID c2|created CACHED_REQID c5 3");
    // The disk is full: the database undoes everything by itself, and what came then would be on its own.
    store.database.connection().executeQuery(
        "CREATE TEMP TRIGGER fault BEFORE DELETE ON CONTACT BEGIN SELECT RAISE(ROLLBACK,'full'); END");
    QCOMPARE(cache("c6"), " 3");
}

void ContactsTest::aCopyTakesNobodysId_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("isCreated");
    for (const char *taken : {"#CONTACT_1#", "#CONTACT_99#", "#DM_7#", "#DM_a\n#", "kind 2"})
        QTest::newRow(taken) << taken << false;
    for (const char *free : {"copy", "remote##", "#CONTACT_1##", "#CONTACT_x#", ""})
        QTest::newRow(free) << free << true;
}

void ContactsTest::aCopyTakesNobodysId()
{
    QFETCH(QString, id);
    QFETCH(bool, isCreated);
    Store store;
    ContactCreation &creation = store.open->contacts.creation;
    for (const Contact &contact :
         {person("A", "B"), withType(DeviceManagement, "7"), withType(2, "kind 2"), withType(Cached, "copy")})
        store.put(contact);
    Contact copy = withType(Cached);
    copy.contactId = id;
    const QStringList replaced{"deleted CACHED_REQID " + id};
    const auto rows = store.open->dao.getContact(id)->size();
    QCOMPARE(creation.createLocalContact(RequestId::cached, copy), isCreated ? 0 : 1);
    QCOMPARE(store.takeNews(), (id == "copy" ? replaced : QStringList()) +
                                   (isCreated ? QStringList{"created CACHED_REQID " + id} : QStringList()));
    for (const int type : {Cached, 2}) { // of the last kind nothing gives way to a second
        copy.type = type;
        QCOMPARE(creation.createLocalContacts(request, {copy}).size(), qsizetype(isCreated));
        QCOMPARE(store.takeNews(), isCreated ? replaced + QStringList{"created r " + id} : QStringList());
    }
    QCOMPARE(creation.createLocalContacts(request, {copy}).size(), 0);
    QCOMPARE(store.open->dao.getContact(id)->size(), isCreated ? 1 : rows);
}

void ContactsTest::aLocalContactReplacesItsCachedCopies()
{
    Store store;
    Contact cached = withType(Cached, "c1");
    cached.officePhoneCan = "+12";
    store.put(cached);
    store.put(cached); // as stores of before may hold it, like the one with a local contact's id
    store.put(withType(Cached, "without number"));
    Contact contact = person("A", "B");
    contact.misc.insert("k", "v");
    const QString kept = store.put(contact);
    cached.contactId = kept;
    store.open->dao.insertContact(cached, false);
    QCOMPARE(store.open->contacts.lookup.getContactById(kept).size(), 1);
    contact.personalMobile = "12";
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), 0);
    QCOMPARE(store.takeNews(), (QStringList{"deleted CACHED_REQID c1", "created r #CONTACT_6#"}));
    QVERIFY(!store.stored("without number").contactId.isEmpty());
    QCOMPARE(store.open->dao.getContact(kept)->size(), 1);
    QCOMPARE(store.stored(kept).misc, contact.misc);
}

void ContactsTest::anonymousContactsAreRefused_data()
{
    QTest::addColumn<bool>("isRefused");
    for (const char *field : {"personalMobile", "fax", "officePhone", "personalFax", "personalHomeCan"})
        QTest::newRow(field) << true;
    QTest::newRow("personalHome") << false;
}

void ContactsTest::anonymousContactsAreRefused()
{
    QFETCH(bool, isRefused);
    Store store;
    Contact contact = person("A", "B", "Anonymous");
    for (const Contact::TextField &text : Contact::texts) {
        if (qstrcmp(QTest::currentDataTag(), text.name) == 0)
            contact.*text.value = "anonymous";
    }
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), isRefused ? -1 : 0);
    QCOMPARE(store.takeNews().first(), isRefused ? "anonymous" : "created r #CONTACT_1#");
    if (!isRefused)
        return;
    QCOMPARE(store.open->contacts.creation.createLocalContact(RequestId::cached, contact), -1);
    contact.contactId = store.put(person("A", "B"));
    QCOMPARE(store.takeNews(), QStringList()); // no popup for a cached one
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), -1);
    QCOMPARE(store.takeNews(), QStringList{"anonymous"});
}

void ContactsTest::readOnlyModeRefusesEveryWrite()
{
    Store store;
    const QString id = store.put(person("A", "B"));
    store.fields.readOnlyMode = true;
    Contact contact = store.stored(id);
    contact.name = "C";
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), 6);
    QVERIFY(store.open->contacts.creation.createLocalContacts(request, {contact}).isEmpty());
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), 6);
    QVERIFY(store.open->contacts.modification.modifyLocalContacts(request, {contact}).isEmpty());
    QCOMPARE(store.open->contacts.deletion.deleteLocalContact(request, id), 6);
    QCOMPARE(store.open->contacts.preview.addContactToPreview(request, id), 6);
    QCOMPARE(store.open->contacts.preview.removeContactFromPreview(request, id), 6);
    QCOMPARE(store.open->contacts.preview.updateContactsPreview(request, {id}, true), 6);
    QCOMPARE(store.open->dao.nbContact(), 1);
    QCOMPARE(store.stored(id).name, "B");
    QCOMPARE(store.takeNews(), QStringList());
    QVERIFY(store.log.contains(
        QStringLiteral("<4>KestinDirectory:createLocalContacts:synchronization mode.Can't add %1").arg(id)));
}

void ContactsTest::theListFormCreatesWithLessCare()
{
    Store store;
    store.fields.maxContacts = 4;
    ListContact contacts;
    for (const int type : {0, 3, 4, 1, 5, 6, 2, 0}) {
        Contact contact = withType(type, "own");
        contact.collaborationId = QStringLiteral("im%1").arg(contacts.size());
        contact.officePhone = "anonymous";
        contact.contactId += QString::number(type);
        contacts.append(contact);
    }
    const QMapQStringQString ids = store.open->contacts.creation.createLocalContacts(request, contacts);
    QCOMPARE(ids,
             (QMapQStringQString{{"im0", "#CONTACT_1#"}, {"im4", "#CONTACT_2#"}, {"im5", "own6"}, {"im6", "own2"}}));
    QCOMPARE(store.takeNews(), QStringList{"created r #CONTACT_1# #CONTACT_2# own6 own2"});
    QVERIFY(store.stored("#CONTACT_1#").latinName.isEmpty());
    // Copies that later ones replace take no room, and are not told.
    store.fields.maxContacts = 7;
    contacts = {withType(Cached, "c1"), withType(Cached, "c2"), withType(Cached, "c2"), person("A", "B"),
                person("C", "D")};
    for (const int i : {0, 3})
        contacts[i].personalMobile = contacts[i].officePhone = "12";
    for (qsizetype i = 0; i < contacts.size(); ++i)
        contacts[i].collaborationId = QStringLiteral("im%1").arg(i);
    QCOMPARE(store.open->contacts.creation.createLocalContacts(request, contacts),
             (QMapQStringQString{{"im2", "c2"}, {"im3", "#CONTACT_7#"}, {"im4", "#CONTACT_8#"}}));
    QCOMPARE(store.takeNews(), (QStringList{"deleted CACHED_REQID c2", "deleted CACHED_REQID c1",
                                            "created r c2 #CONTACT_7# #CONTACT_8#"}));
    QVERIFY(store.open->contacts.creation.createLocalContacts(request, {}).isEmpty());
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::modifyingReplacesAllButTypeAndPuid()
{
    Store store;
    Contact contact = person("A", "B");
    contact.misc = {{"company", "Acme"}};
    contact.contactId = store.put(contact);
    store.open->dao.updatePuidContact(contact.contactId, "p1");
    contact.setPUID("caller's own");
    contact.name = "É";
    contact.type = Cached;
    contact.officePhone = "1 2";
    contact.misc = {{"job", "chef"}, {"zip", "1"}};
    store.transport.calls.clear();
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), 0);
    QCOMPARE(store.takeNews(), QStringList{"updated r #CONTACT_1# false"});
    const Contact stored = store.stored(contact.contactId);
    const qsizetype logged = store.log.lines.indexOf("<7>Local contact of id #CONTACT_1# has been updated");
    QVERIFY(logged >= 0 && logged < store.log.lines.indexOf("updated r #CONTACT_1# false"));
    contact.setLastModificationDate(QDateTime(QDate(2001, 2, 3), QTime(4, 5), Qt::UTC));
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), 0); // changes nothing
    contact.latinFirstName = stored.latinFirstName;
    contact.latinName = stored.latinName;
    QCOMPARE(store.open->contacts.modification.modifyLocalContacts(request, {contact}).size(), 1);
    QCOMPARE(store.takeNews(), (QStringList{"updated r #CONTACT_1# false", "updated r #CONTACT_1# false"}));
    QVERIFY(store.stored(contact.contactId) == stored);
    QCOMPARE(stored.type, Local);
    QCOMPARE(stored.latinName, "ee\u0301");
    QCOMPARE(stored.officePhone, "1 2"); // made dialable at creation only
    QCOMPARE(stored.officePhoneCan, "+1 2");
    QCOMPARE(stored.misc, contact.misc);
    QCOMPARE(stored.getPUID(), "p1");
    QCOMPARE(store.transport.calls.size(), 3);
    contact.contactId = "' OR 1=1 --";
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), 2);
    QVERIFY(store.log.contains("<7>Contact does not exist. Return 2"));
}

void ContactsTest::modifyingIsRefusedByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("isInList");
    for (int type = 0; type <= 6; ++type)
        QTest::addRow("type %d", type) << type << int(type != Local && type != Cached)
                                       << (type != Remote && type != DeviceManagement && type != Other);
}

void ContactsTest::modifyingIsRefusedByType()
{
    QFETCH(int, type);
    QFETCH(int, code);
    QFETCH(bool, isInList);
    Store store;
    Contact contact = withType(type);
    contact.contactId = store.put(contact);
    contact.type = type == Local ? DeviceManagement : Local; // says the caller
    contact.name = "single";
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), code);
    QCOMPARE(store.stored(contact.contactId).name == QLatin1String("single"), code == 0);
    contact.name = "list";
    QCOMPARE(store.open->contacts.modification.modifyLocalContacts(request, {contact}).contains(contact.contactId),
             isInList);
    QCOMPARE(store.stored(contact.contactId).name == QLatin1String("list"), isInList);
    QCOMPARE(store.stored(contact.contactId).type, type);
}

void ContactsTest::theListFormModifiesWithLessCare()
{
    Store store;
    Contact contact = person("A", "B");
    contact.collaborationId = "old@im";
    contact.contactId = store.put(contact);
    contact.collaborationId = "new@im";
    contact.officePhone = "anonymous";
    contact.latinName = "given";
    Contact missing = contact, earlier = contact; // of two of one id the last is what is stored
    missing.contactId = "nobody";
    earlier.name = "E";
    earlier.collaborationId = "old@im";
    QCOMPARE(store.open->contacts.modification.modifyLocalContacts(request, {missing, earlier, contact}),
             (QMapQStringQString{{contact.contactId, "old@im"}}));
    QCOMPARE(store.takeNews(), QStringList{"updated r #CONTACT_1# false"});
    QCOMPARE(store.stored(contact.contactId).latinName, "given");
}

void ContactsTest::deletingIsRefusedByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("code");
    for (int type = 0; type <= 6; ++type)
        QTest::addRow("type %d", type) << type << int(type == Remote || type == Other || type == ManagerAssistant);
}

void ContactsTest::deletingIsRefusedByType()
{
    QFETCH(int, type);
    QFETCH(int, code);
    Store store;
    Contact contact = withType(type);
    contact.misc.insert("k", "v");
    const QString id = store.put(contact);
    QCOMPARE(store.open->contacts.deletion.deleteLocalContact(request, id), code);
    QCOMPARE(store.open->dao.misc().pairs(id)->size(), qsizetype(code));
    const QStringList told = store.takeNews();
    QCOMPARE(told.join(QLatin1Char(';')), code == 0 ? "deleted r " + id : QString());
    const QStringList &lines = store.log.lines;
    QCOMPARE(lines.indexOf("<7>Contact successfully deleted") + 1, code == 0 ? lines.indexOf(told.first()) : 0);
    QCOMPARE(store.open->contacts.deletion.deleteLocalContact(request, "nobody"), 2);
}

void ContactsTest::photosAreWantedAndDroppedByType()
{
    Store store;
    const auto lastOf = [&store] { return store.takeNews().mid(1).join('|'); };
    Contact contact = withType(Cached, "c");
    contact.photo = "http://a/1";
    store.open->contacts.creation.createLocalContact(RequestId::cached, contact);
    QCOMPARE(lastOf(), "wanted c http://a/1");
    store.open->contacts.modification.modifyLocalContact(request, contact);
    QCOMPARE(lastOf(), "wanted c http://a/1");
    contact.photo = "/p/photo_2";
    store.open->contacts.modification.modifyLocalContact(request, contact);
    QCOMPARE(lastOf(), "dropped http://a/1|wanted c /p/photo_2");
    contact.photo.clear();
    store.open->contacts.modification.modifyLocalContacts(request, {contact});
    QCOMPARE(store.takeNews().join('|'), "dropped /p/photo_2|updated r c false");

    contact.photo = "http://a/3";
    store.open->contacts.creation.createLocalContact(RequestId::deviceManagement, contact);
    QCOMPARE(store.takeNews(), QStringList());
    store.open->contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_c#");
    QCOMPARE(store.takeNews(), QStringList("dropped http://a/3"));
    contact.type = ManagerAssistant;
    Contact cached = contact;
    cached.contactId = "d";
    cached.type = Cached; // whose photo the list form leaves alone
    store.open->contacts.creation.createLocalContacts(request, {cached, contact});
    QCOMPARE(store.takeNews().filter("wanted").join('|'), "wanted #CONTACT_3# http://a/3");
}

void ContactsTest::aFailedWriteLeavesNothingAndTellsNothing()
{
    Store store;
    Contact cached = withType(Cached, "c1");
    cached.officePhoneCan = "+12";
    store.put(cached);
    Contact contact = person("A", "B", "12");
    contact.misc.insert("k", "refused");
    // The row goes in, the pair does not: the row must go again, and the cached copy come back.
    store.database.connection().executeQuery(QStringLiteral(
        "CREATE TEMP TRIGGER fault BEFORE INSERT ON MISC WHEN NEW.value='refused' BEGIN SELECT RAISE(ABORT,'x'); END"));
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), -1);
    QCOMPARE(store.takeNews(), QStringList());
    QVERIFY(!store.fields.lastLocalChangeDate.isValid());
    QCOMPARE(store.open->dao.nbContact(), 1);
    QCOMPARE(store.stored("c1").contactId, "c1");
    // In a list only that one is missing.
    Contact other = person("C", "D");
    other.collaborationId = "im";
    QCOMPARE(store.open->contacts.creation.createLocalContacts(request, {contact, other}).size(), 1);
    QCOMPARE(store.takeNews().size(), 1);
    QCOMPARE(store.open->dao.nbContact(), 2);
    store.failCommits();
    contact.contactId = "c1";
    QCOMPARE(store.open->contacts.modification.modifyLocalContact(request, contact), -1);
    QCOMPARE(store.open->contacts.deletion.deleteLocalContact(request, "c1"), -1);
    QVERIFY(!store.log.contains("<7>Local contact of id c1 has been updated"));
    QVERIFY(!store.log.contains("<7>Contact successfully deleted"));
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::previewCodesAndNews()
{
    Store store;
    ContactPreview &preview = store.open->contacts.preview;
    const QString local = store.put(person("A", "B"));
    const QString assistant = store.put(withType(ManagerAssistant));
    QCOMPARE(preview.addContactToPreview(request, "nobody"), -1);
    QCOMPARE(preview.removeContactFromPreview(request, local), 4);
    QCOMPARE(preview.addContactToPreview(request, local), 0);
    QCOMPARE(preview.addContactToPreview(request, local), 4);
    QCOMPARE(preview.removeContactFromPreview(request, assistant), 1); // even when not in it
    QCOMPARE(preview.addContactToPreview(RequestId::deviceManagement, assistant), 0);
    QCOMPARE(store.open->contacts.lookup.getAllContactsInPreview(0, -1).size(), 2);
    QCOMPARE(preview.removeContactFromPreview(request, local), 0);
    QCOMPARE(store.takeNews(), (QStringList{"previewed r #CONTACT_1#", "unpreviewed r #CONTACT_1# true"}));
    QCOMPARE(preview.updateContactsPreview(request, {local, "nobody", assistant}, false), 0);
    QCOMPARE(preview.updateContactsPreview(request, {local}, true), 0);
    QCOMPARE(store.takeNews(), (QStringList{"unpreviewed r #CONTACT_1# #CONTACT_2# false", "previewed r #CONTACT_1#"}));
    QCOMPARE(preview.updateContactsPreview(request, {}, true), -1);
    QCOMPARE(store.takeNews(), QStringList());
    QVERIFY(!store.fields.lastLocalChangeDate.isValid());
}

void ContactsTest::lookUps()
{
    Store store;
    ContactLookup &lookup = store.open->contacts.lookup;
    Contact last = person("a", "z", "2");
    last.email = "A@b.example";
    last.officePhoneCan = "+2";
    last.isPreviewed = true;
    for (const char *name : {"bZ", "Éa", "az"}) {
        last.firstName = QString::fromUtf8(name).chopped(1);
        last.name = name + strlen(name) - 1;
        store.put(last);
    }
    for (const ListContact &found :
         {lookup.getLocalContacts(0, 10), lookup.getLocalContacts("+2"), lookup.getAllContactsInPreview(0, 10)}) {
        QStringList names;
        for (const Contact &contact : found)
            names.append(contact.firstName + contact.name);
        QCOMPARE(names, (QStringList{"Éa", "az", "bZ"}));
    }
    QCOMPARE(lookup.getLocalContacts(1, 1).value(0).contactId, "#CONTACT_2#");
    QCOMPARE(lookup.getLocalContacts(0, 0).size(), 0);
    QCOMPARE(lookup.getLocalContacts("2").size(), 0);
    QCOMPARE(lookup.getLocalContactByEmailAddress("a@B.EXAMPLE").size(), 3);
    QCOMPARE(lookup.getContactById("#CONTACT_1#").size(), 1);
    QVERIFY(store.log.contains("<4>No misc has been found for the specified contact"));
    QCOMPARE(lookup.getContactById("nobody").size(), 0);
    QVERIFY(store.log.contains("<4>The contact of specified ID has not been found"));
    QCOMPARE(lookup.getContactTypeById("anything##"), Remote);
    QCOMPARE(lookup.getContactTypeById("#CONTACT_1#"), Local);
    QCOMPARE(lookup.getContactTypeById(QString()), Other);
    QStringList imAddress;
    QObject::connect(&lookup, &ContactLookup::imAddressFound, [&imAddress](const QString &id, const QString &address) {
        imAddress = {id, address};
    });
    store.open->dao.misc().insertPair("#CONTACT_1#", "imAddress", "im@h");
    lookup.getImAddressByContactId("#CONTACT_1#");
    QCOMPARE(imAddress, (QStringList{"#CONTACT_1#", "im@h"}));
    lookup.getImAddressByContactId("42");
    QCOMPARE(store.transport.calls.last().method, "getAttributeTypeByContactId");
}

void ContactsTest::numbersSurviveTelephonyFaults_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("line");
    QTest::newRow("absent") << 0 << QString();
    QTest::newRow("four elements") << 1 << QString();
    QTest::newRow("another type") << 2 << QString();
    QTest::newRow("exception") << 3 << "<3>fillContactCanonicalNumbers failed to call Telephony why";
    QTest::newRow("unknown exception") << 4
                                       << "<3>fillContactCanonicalNumbers failed to call Telephony (unknown exception";
}

void ContactsTest::numbersSurviveTelephonyFaults()
{
    QFETCH(int, fault);
    QFETCH(QString, line);
    Store store;
    store.transport.answer = [fault](const ScriptedTransport::Call &, const QDBusMessage &message) {
        switch (fault) {
        case 1:
            return message.createReply(QVariant(QStringList{QString(), QString(), QString(), QString()}));
        case 2:
            return message.createReply(QVariant(42));
        case 3:
            throw KestinException("m", 1, "why");
        case 4:
            throw 1;
        default:
            return ScriptedTransport::noPeer(message);
        }
    };
    Contact contact = person("A", "B", "0 3");
    contact.officePhoneCan = "stale";
    QCOMPARE(store.open->contacts.creation.createLocalContact(request, contact), 0);
    const Contact stored = store.stored("#CONTACT_1#");
    QCOMPARE(stored.officePhone, "0 3");
    QCOMPARE(stored.officePhoneCan, "0 3");
    QVERIFY(line.isEmpty() || store.log.contains(line));
}

void ContactsTest::numbersOfManySurviveTelephonyFaults()
{
    Store store;
    const auto canonicalOf = [&store](const ScriptedTransport::Answer &answer) {
        store.transport.answer = answer;
        ListContact contacts{person("A", "B", "1"), person("C", "D", "2")};
        store.open->numbers.canonical.askForCanonicalNumbers(contacts).fill(contacts);
        return contacts.at(0).officePhoneCan + ' ' + contacts.at(1).officePhoneCan;
    };
    const auto secondOnly = [](const ScriptedTransport::Call &call, const QDBusMessage &message) {
        auto numbers = call.arguments.value(0).value<QMapQStringQStringList>();
        numbers.remove("0");
        numbers["1"][0] = "+2";
        return message.createReply(QVariant::fromValue(numbers));
    };
    QCOMPARE(canonicalOf(secondOnly), "1 +2");
    QCOMPARE(canonicalOf([](const auto &, const QDBusMessage &message) { return ScriptedTransport::noPeer(message); }),
             "1 2");
}

void ContactsTest::aSilenceCountsForTheListInWhichItCame()
{
    Store store;
    OpenDirectory &cases = *store.open;
    const ListContact list(3, person("A", "B", "1"));
    const QString file = store.folder.filePath("contacts.xml");
    QFile xml(file);
    QVERIFY(xml.open(QIODevice::WriteOnly));
    xml.write("<directory>" +
              QByteArray(R"(<contact duid="" puid="p"><officePhone>1</officePhone></contact>)").repeated(400) +
              "</directory>");
    xml.close();
    const auto callsOf = [&store](const auto &work) {
        store.transport.calls.clear();
        work();
        return store.transport.calls.size();
    };
    const auto create = [&] { cases.contacts.creation.createLocalContacts(request, list); };
    const auto createOne = [&] { cases.contacts.creation.createLocalContact(request, list.first()); };
    store.transport.answer = [](const auto &, const QDBusMessage &message) {
        return message.createErrorReply(QDBusError::NoReply, "silent");
    };
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(callsOf(create), 1);
        QCOMPARE(callsOf([&] { cases.contacts.modification.modifyLocalContacts(request, *cases.dao.getAllContact()); }),
                 1);
        QCOMPARE(callsOf([&] { cases.contacts.defaultContacts.setDefaultContacts("1,,,A,1,,,#2,,,B,2,,,"); }), 1);
        QCOMPARE(callsOf([&] { cases.synchronisation.importer.importFromXml(file); }),
                 2); // the second went out with the first
        QCOMPARE(callsOf(createOne), 2);
    }
    // Who leaves the bus during a call is not silent.
    const PrivateBus bus;
    const QDBusConnection caller = bus.connection("caller");
    Program telephony("kestin-telephony");
    QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, caller));
    telephony.freeze();
    const QString name = KestinBus::serviceName(ModuleName::telephony);
    const QDBusPendingCall call = caller.asyncCall(KestinBus::methodCall(ModuleName::telephony, "a"));
    QVERIFY(caller.interface()->isServiceRegistered(name)); // is answered behind the call
    telephony.kill();
    store.transport.answer = [lost = QDBusPendingReply<>(call)](const auto &, const auto &) mutable {
        lost.waitForFinished();
        return lost.reply();
    };
    QCOMPARE(callsOf(create), 6);
    QCOMPARE(call.error().type(), QDBusError::NoReply);
    QDBusConnection::disconnectFromBus("caller");
}

void ContactsTest::changedDialingRulesRecomputeOnce()
{
    Store store;
    OpenDirectory &cases = *store.open;
    QMap<QString, QString> settings{{"DialingRuleCountryCode", "33"}};
    store.transport.answer = [&](const ScriptedTransport::Call &call, const QDBusMessage &message) {
        const QString key = call.arguments.value(0).toString();
        if (call.method == QLatin1String("getSettingValue"))
            return message.createReply(QVariant(settings.value(key, QString())));
        if (cases.numbers.stored.areStale()) // before the copies, or a kill in between would leave the old numbers
            settings[key] = call.arguments.value(1).toString();
        return message.createReply(QVariant(QString()));
    };
    store.database.connection().executeQuery("PRAGMA query_only=1");
    QVERIFY(cases.numbers.dialingRules.dialingRulesChanged());
    QCOMPARE(store.transport.calls.size(), 10); // what cannot be marked is not taken for done
    store.database.connection().executeQuery("PRAGMA query_only=0");
    QVERIFY(cases.numbers.dialingRules.dialingRulesChanged());
    QCOMPARE(store.transport.calls.size(), 25);
    QCOMPARE(store.transport.calls.last().arguments.value(0).toString(), "DialingRuleExternalPrefixExceptionsSave");
    QCOMPARE(settings.value("DialingRuleCountryCodeSave"), "33");
    QVERIFY(!cases.numbers.dialingRules.dialingRulesChanged());
    cases.numbers.stored.fillContactsCanonicalNumbers(); // of nobody
    QVERIFY(!cases.numbers.stored.areStale());
    QCOMPARE(store.transport.calls.size(), 35);
}

void ContactsTest::recomputingGoesOnAtTheNextStart_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("calls");
    QTest::addColumn<int>("renewed");
    QTest::newRow("a portion refused") << int(QDBusError::Failed) << 3 << 201;
    QTest::newRow("nothing for a portion") << -1 << 3 << 201;
    QTest::newRow("silence") << int(QDBusError::NoReply) << 2 << 200;
}

void ContactsTest::recomputingGoesOnAtTheNextStart()
{
    QFETCH(int, error);
    Store store;
    StoredNumbers &numbers = store.open->numbers.stored;
    Contact contact = person("A", "B", "12");
    contact.misc.insert("company", "Acme");
    Transaction transaction(store.database.connection());
    for (int i = 0; i < 401; ++i)
        store.put(contact);
    QVERIFY(transaction.commit() && numbers.markStale());
    store.transport.answer = [&](const ScriptedTransport::Call &call, const QDBusMessage &message) {
        if (error < 0 && store.transport.calls.size() == 2)
            return message.createReply(QVariant::fromValue(QMapQStringQStringList()));
        if (error > 0 && store.transport.calls.size() == 2)
            return message.createErrorReply(QDBusError::ErrorType(error), "x");
        auto answer = call.arguments.value(0).value<QMapQStringQStringList>();
        for (QStringList &five : answer)
            five = {"+1", "+2", "+3", "+4", "+5"};
        answer.insert("gone", {"+1", "+2", "+3", "+4", "+5"});
        answer.insert("#CONTACT_401#", {"+1", "+2", "+3", "+4"}); // too few
        return message.createReply(QVariant::fromValue(answer));
    };
    numbers.fillContactsCanonicalNumbers();
    QTEST(int(store.transport.calls.size()), "calls");
    QTEST(int(store.open->contacts.lookup.getLocalContacts("+5").size()), "renewed");
    QVERIFY(numbers.areStale());
    const Contact stored = store.stored("#CONTACT_1#");
    QCOMPARE(stored.officePhoneCan + stored.faxCan + stored.personalMobileCan + stored.personalHomeCan +
                 stored.personalFaxCan,
             "+1+2+3+4+5");
    QCOMPARE(stored.misc, contact.misc);
    QVERIFY(store.log.contains("<3>fillContactsCanonicalNumbers Unknown contactID gone"));
    error = 0;
    numbers.fillContactsCanonicalNumbers();
    QCOMPARE(store.open->contacts.lookup.getLocalContacts("+5").size(), 400);
    QVERIFY(!numbers.areStale());
    QVERIFY(store.stored("#CONTACT_1#") == stored);
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::missingLatinNamesAreFilledAtStart()
{
    Store store;
    Contact contact = person("A", "Bé");
    contact.misc.insert("k", "v");
    const QString id = store.put(contact);
    const QString nameless = store.put(person("Only", ""));
    const QDateTime date = store.stored(id).getLastModificationDate();
    for (int start = 0; start < 2; ++start)
        store.open->contacts.latinNames.checkAndFillLatinName();
    QCOMPARE(store.stored(id).latinName, "bbee\u0301");
    QCOMPARE(store.stored(id).misc, contact.misc);
    QCOMPARE(store.stored(id).getLastModificationDate(), date); // what is derived is no change
    QCOMPARE(store.log.lines.filter("has no latin name!").size(), 2);
    QCOMPARE(store.stored(nameless).latinFirstName, "oonnllyy");
    QVERIFY(store.log.contains(
        QStringLiteral("<4>KestinDirectory::checkAndFillLatinName() - contact %1 has no latin name!").arg(id)));
    QCOMPARE(store.takeNews(), QStringList());
}

void ContactsTest::modeOfTelephony_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("advanced") << "advanced" << true;
    QTest::newRow("basic") << "basic" << false;
    QTest::newRow("unknown") << "unknown" << false;
    QTest::newRow("nobody there") << QString() << false;
    QTest::newRow("an exception") << "throw" << false;
}

void ContactsTest::modeOfTelephony()
{
    QFETCH(QString, mode);
    QFETCH(bool, isAllowed);
    registerDBusKestinMode();
    ScriptedTransport transport;
    if (!mode.isEmpty()) {
        transport.answer = [&](const ScriptedTransport::Call &, const QDBusMessage &message) {
            if (mode == "throw")
                throw 1;
            return message.createReply(QVariant::fromValue(KestinMode{mode}));
        };
    }
    QCOMPARE(TelephonyMode(transport).getKestinMode(), isAllowed);
}

void ContactsTest::onlyItsOwnReadOnlyEventCounts()
{
    DirectoryFields fields;
    ReadOnlyMode mode(ModuleName::directory, fields);
    const auto tell = [&](const QString &module, const QVariant &value) {
        KestinEvent event;
        event.addArgument(module, "moduleName", true);
        event.addArgument(value, "readOnly", true);
        mode.syncReadOnlyModeSlot(event);
        return fields.readOnlyMode;
    };
    QVERIFY(!tell("Other", true));
    QVERIFY(tell(ModuleName::directory, true));
    QVERIFY(tell("Other", false));
    QVERIFY(!tell(ModuleName::directory, false));
}

QTEST_GUILESS_MAIN(ContactsTest)
#include "ContactsTest.moc"
