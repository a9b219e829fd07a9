// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinMode.h"
#include "src/contacts/ReadOnlyMode.h"
#include "src/contacts/TelephonyMode.h"
#include "tests/src/contacts/ContactsFixture.h"

#include <QSqlDriver>

#include <sqlite3.h>

using namespace ContactType;
using namespace ResultCode;

class ContactsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCreatedContactIsCompletedStoredAndTold()
    {
        ContactsFixture store;
        const Contact contact = person("firstName=Zoë|name=Abc|officePhone=03 88|latinName=caller's own|"
                                       "puid=caller's own|misc.company=Acme|misc.=");
        QCOMPARE(store.create(contact), "done|created r #CONTACT_1#");
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhone + stored.officePhoneCan, "0388+0388");
        QCOMPARE(stored.latinFirstName + stored.latinName, "zzooee\u0308aabbcc");
        QCOMPARE(stored.misc, contact.misc);
        QVERIFY(store.fields.lastLocalChangeDate.isValid());
    }

    void theRequestIdDecidesTypeAndNews()
    {
        ContactsFixture store;
        QCOMPARE(store.create(withType(Cached, "42"), RequestId::deviceManagement), "done");
        QCOMPARE(store.stored("#DM_42#").type, DeviceManagement);
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
        QCOMPARE(store.create(withType(Local, "c1"), RequestId::cached), "done|created CACHED_REQID c1");
        QCOMPARE(store.stored("c1").type, Cached);
        QCOMPARE(store.did(store.contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_42#")), "done");
    }

    void capacityIsHeld()
    {
        ContactsFixture store;
        store.fields.maxContacts = 1;
        QCOMPARE(store.create(person("A")), "done|created r #CONTACT_1#");
        QCOMPARE(store.create(person("C")), "capacityReached|full");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {person("C")}).isEmpty());
        QCOMPARE(store.create(withType(DeviceManagement), RequestId::deviceManagement), "done");
        QCOMPARE(store.dao.nbContact(), 2);
        // A count that cannot be read is no room.
        store.fields.maxContacts = 1000;
        const QVariant handle = store.database.connection().handle().driver()->handle();
        const auto refuse = [](void *, int action, const char *, const char *function, const char *, const char *) {
            return action == SQLITE_FUNCTION && qstrcmp(function, "count") == 0 ? SQLITE_DENY : SQLITE_OK;
        };
        sqlite3_set_authorizer(*static_cast<sqlite3 *const *>(handle.constData()), refuse, nullptr);
        store.database.connection().beginEpoch();
        QCOMPARE(store.create(person("C")), "failed");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {person("C")}).isEmpty());
        QCOMPARE(store.takeNews(), "");
    }

    void aFullCacheGivesUpItsOldestOnly()
    {
        ContactsFixture store;
        store.fields.comLogSize = 2;
        const auto cache = [&store](const char *id) {
            return store.create(withType(Cached, id), RequestId::cached) + ' ' +
                   QString::number(store.dao._nbCachedContactQuery().value_or(-1));
        };
        for (const char *id : {"c1", "c2"})
            store.put(withType(Cached, id));
        QCOMPARE(cache("c3"), "done|deleted CACHED_REQID c1|created CACHED_REQID c3 2");
        QCOMPARE(cache("c3"), "done|deleted CACHED_REQID c3|created CACHED_REQID c3 2"); // takes the place of itself
        store.put(withType(Cached, "c4"));
        QCOMPARE(cache("c5"), "done|deleted CACHED_REQID c2|created CACHED_REQID c5 3");
        // The disk is full: the database undoes everything by itself, and what came then would be on its own.
        store.run("CREATE TEMP TRIGGER fault BEFORE DELETE ON CONTACT BEGIN SELECT RAISE(ROLLBACK,'full'); END");
        QCOMPARE(cache("c6"), "failed 3");
    }

    void aCopyTakesNobodysId_data()
    {
        const Rows<bool> row;
        for (const char *taken : {"#CONTACT_1#", "#CONTACT_99#", "#DM_7#", "#DM_a\n#", "kind 2"})
            row(taken, false);
        for (const char *free : {"copy", "remote##", "#CONTACT_1##", "#CONTACT_x#", ""})
            row(free, true);
    }

    void aCopyTakesNobodysId()
    {
        const auto [isCreated] = currentRow<bool>();
        const QString id = QTest::currentDataTag();
        ContactsFixture store;
        for (const Contact &contact :
             {person("A"), withType(DeviceManagement, "7"), withType(2, "kind 2"), withType(Cached, "copy")})
            store.put(contact);
        Contact copy = withType(Cached, id);
        const QString deleted = "deleted CACHED_REQID " + id + '|';
        const auto rows = store.dao.getContact(id)->size();
        QCOMPARE(store.create(copy, RequestId::cached),
                 isCreated ? "done|" + (id == "copy" ? deleted : "") + "created CACHED_REQID " + id : "wrongType");
        for (const int type : {Cached, 2}) { // of the last kind nothing gives way to a second
            copy.type = type;
            QCOMPARE(store.contacts.creation.createLocalContacts("r", {copy}).size(), qsizetype(isCreated));
            QCOMPARE(store.takeNews(), isCreated ? deleted + "created r " + id : "");
        }
        QCOMPARE(store.contacts.creation.createLocalContacts("r", {copy}).size(), 0);
        QCOMPARE(store.dao.getContact(id)->size(), isCreated ? 1 : rows);
    }

    void aLocalContactReplacesItsCachedCopies()
    {
        ContactsFixture store;
        Contact cached = person("type=Cached|contactId=c1|officePhoneCan=+12");
        store.put(cached);
        store.put(cached); // as stores of before may hold it, like the one with a local contact's id
        store.put(withType(Cached, "without number"));
        Contact contact = person("name=B|misc.k=v");
        const QString kept = store.put(contact);
        cached.contactId = kept;
        QVERIFY(store.dao.insertContact(cached, false));
        QCOMPARE(store.contacts.lookup.getContactById(kept).size(), 1);
        contact.personalMobile = "12";
        QCOMPARE(store.create(contact), "done|deleted CACHED_REQID c1|created r #CONTACT_6#");
        QVERIFY(!store.stored("without number").contactId.isEmpty());
        QCOMPARE(store.dao.getContact(kept)->size(), 1);
        QCOMPARE(store.stored(kept).misc, contact.misc);
    }

    void anonymousContactsAreRefused_data()
    {
        const Rows<bool> row;
        for (const char *field : {"personalMobile", "fax", "officePhone", "personalFax", "personalHomeCan"})
            row(field, true);
        row("personalHome", false);
    }

    void anonymousContactsAreRefused()
    {
        const auto [isRefused] = currentRow<bool>();
        ContactsFixture store;
        Contact contact = person(QString("name=B|officePhone=Anonymous|%1=anonymous").arg(QTest::currentDataTag()));
        QCOMPARE(store.create(contact), isRefused ? "failed|anonymous" : "done|created r #CONTACT_1#");
        if (!isRefused)
            return;
        QCOMPARE(store.create(contact, RequestId::cached), "failed"); // no popup
        contact.contactId = store.put(person("A"));
        QCOMPARE(store.modify(contact), "failed|anonymous");
    }

    void readOnlyModeRefusesEveryWrite()
    {
        ContactsFixture store;
        const QString id = store.put(person("B"));
        store.fields.readOnlyMode = true;
        Contact contact = store.stored(id);
        contact.name = "C";
        for (const QString &answer : {store.create(contact), store.modify(contact), store.remove(id)})
            QCOMPARE(answer, "readOnly");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {contact}).isEmpty());
        QVERIFY(store.contacts.modification.modifyLocalContacts("r", {contact}).isEmpty());
        QCOMPARE(store.contacts.preview.addContactToPreview("r", id), readOnly);
        QCOMPARE(store.contacts.preview.removeContactFromPreview("r", id), readOnly);
        QCOMPARE(store.contacts.preview.updateContactsPreview("r", {id}, true), readOnly);
        QCOMPARE(store.dao.nbContact(), 1);
        QCOMPARE(store.stored(id).name, "B");
        QCOMPARE(store.takeNews(), "");
    }

    void theListFormCreatesWithLessCare()
    {
        ContactsFixture store;
        store.fields.maxContacts = 4;
        ListContact contacts;
        for (const int type : {Local, DeviceManagement, Other, Remote, ManagerAssistant, Cached, 2, Local})
            contacts.append(person(QString("type=%1|contactId=own%1|officePhone=anonymous|collaborationId=im%2")
                                       .arg(type)
                                       .arg(contacts.size())));
        QCOMPARE(
            store.contacts.creation.createLocalContacts("r", contacts),
            (QMapQStringQString{{"im0", "#CONTACT_1#"}, {"im4", "#CONTACT_2#"}, {"im5", "own6"}, {"im6", "own2"}}));
        QCOMPARE(store.takeNews(), "created r #CONTACT_1# #CONTACT_2# own6 own2");
        QVERIFY(store.stored("#CONTACT_1#").latinName.isEmpty());
        // Copies that later ones replace take no room, and are not told.
        store.fields.maxContacts = 7;
        contacts = {person("type=Cached|contactId=c1|collaborationId=im0|personalMobile=12|officePhone=12"),
                    person("type=Cached|contactId=c2|collaborationId=im1"),
                    person("type=Cached|contactId=c2|collaborationId=im2"),
                    person("name=B|collaborationId=im3|personalMobile=12|officePhone=12"),
                    person("name=D|collaborationId=im4")};
        QCOMPARE(store.contacts.creation.createLocalContacts("r", contacts),
                 (QMapQStringQString{{"im2", "c2"}, {"im3", "#CONTACT_7#"}, {"im4", "#CONTACT_8#"}}));
        QCOMPARE(store.takeNews(),
                 "deleted CACHED_REQID c2|deleted CACHED_REQID c1|created r c2 #CONTACT_7# #CONTACT_8#");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {}).isEmpty());
        QCOMPARE(store.takeNews(), "");
    }

    void modifyingReplacesAllButTypeAndPuid()
    {
        ContactsFixture store;
        Contact contact =
            person("firstName=A|name=É|puid=caller's own|type=Cached|officePhone=1 2|misc.job=chef|misc.zip=1");
        contact.contactId = store.put(person("firstName=A|name=B|misc.company=Acme"));
        QVERIFY(store.dao.updatePuidContact(contact.contactId, "p1"));
        QCOMPARE(store.modify(contact), "done|updated r #CONTACT_1# false");
        const Contact stored = store.stored(contact.contactId);
        contact.setLastModificationDate(QDateTime(QDate(2001, 2, 3), QTime(4, 5), Qt::UTC));
        QCOMPARE(store.modify(contact), "done|updated r #CONTACT_1# false"); // changes nothing
        contact.latinFirstName = stored.latinFirstName;
        contact.latinName = stored.latinName;
        QCOMPARE(store.contacts.modification.modifyLocalContacts("r", {contact}).size(), 1);
        QCOMPARE(store.takeNews(), "updated r #CONTACT_1# false");
        QVERIFY(store.stored(contact.contactId) == stored);
        QCOMPARE(stored.type, Local);
        QCOMPARE(stored.latinName, "ee\u0301");
        QCOMPARE(stored.officePhone + stored.officePhoneCan, "1 2+1 2"); // made dialable at creation only
        QCOMPARE(stored.misc, contact.misc);
        QCOMPARE(stored.getPUID(), "p1");
        QCOMPARE(store.transport.calls.size(), 3);
        contact.contactId = "' OR 1=1 --";
        QCOMPARE(store.modify(contact), "noSuchContact");
    }

    void theTypeDecidesWhatMayBeChanged_data()
    {
        const Rows<int, bool, bool, bool> row; // type; modified alone, in a list; deleted
        row("Local", Local, true, true, true);
        row("Cached", Cached, true, true, true);
        row("DeviceManagement", DeviceManagement, false, false, true);
        row("Other", Other, false, false, false);
        row("Remote", Remote, false, false, false);
        row("ManagerAssistant", ManagerAssistant, false, true, false);
        row("none of them", 2, false, true, true);
    }

    void theTypeDecidesWhatMayBeChanged()
    {
        const auto [type, isModified, isModifiedInList, isDeleted] = currentRow<int, bool, bool, bool>();
        ContactsFixture store;
        Contact contact = withType(type);
        contact.misc.insert("k", "v");
        const QString id = contact.contactId = store.put(contact);
        contact.type = type == Local ? DeviceManagement : Local; // says the caller
        contact.name = "single";
        QCOMPARE(store.modify(contact), isModified ? "done|updated r " + id + " false" : "wrongType");
        QCOMPARE(store.stored(id).name == "single", isModified);
        contact.name = "list";
        QCOMPARE(store.contacts.modification.modifyLocalContacts("r", {contact}).contains(id), isModifiedInList);
        QCOMPARE(store.stored(id).name == "list", isModifiedInList);
        QCOMPARE(store.stored(id).type, type);
        store.takeNews();
        QCOMPARE(store.remove(id), isDeleted ? "done|deleted r " + id : "wrongType");
        QCOMPARE(store.dao.misc().pairs(id)->isEmpty(), isDeleted);
        QCOMPARE(store.remove("nobody"), "noSuchContact");
    }

    void theListFormModifiesWithLessCare()
    {
        ContactsFixture store;
        const QString id = store.put(person("name=B|collaborationId=old@im"));
        const QString line = "name=%1|collaborationId=%2@im|officePhone=anonymous|latinName=given|contactId=%3";
        const ListContact list{person(line.arg("B", "new", "nobody")), person(line.arg("E", "old", id)),
                               person(line.arg("B", "new", id))}; // of two of one id the last is what is stored
        QCOMPARE(store.contacts.modification.modifyLocalContacts("r", list), (QMapQStringQString{{id, "old@im"}}));
        QCOMPARE(store.takeNews(), "updated r #CONTACT_1# false");
        QCOMPARE(store.stored(id).latinName, "given");
    }

    void photosAreWantedAndDroppedByType()
    {
        ContactsFixture store;
        Contact contact = withType(Cached, "c");
        contact.photo = "http://a/1";
        QCOMPARE(store.create(contact, RequestId::cached), "done|created CACHED_REQID c|wanted c http://a/1");
        QCOMPARE(store.modify(contact), "done|updated r c false|wanted c http://a/1");
        contact.photo = "/p/photo_2";
        QCOMPARE(store.modify(contact), "done|updated r c false|dropped http://a/1|wanted c /p/photo_2");
        contact.photo.clear();
        store.contacts.modification.modifyLocalContacts("r", {contact});
        QCOMPARE(store.takeNews(), "dropped /p/photo_2|updated r c false");

        contact.photo = "http://a/3";
        QCOMPARE(store.create(contact, RequestId::deviceManagement), "done");
        QCOMPARE(store.did(store.contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_c#")),
                 "done|dropped http://a/3");
        // Of a cached contact the list form leaves the photo alone.
        store.contacts.creation.createLocalContacts("r",
                                                    {person("type=Cached|contactId=d|photo=http://a/3"),
                                                     person("type=ManagerAssistant|contactId=c|photo=http://a/3")});
        QCOMPARE(store.told.filter("wanted"), QStringList("wanted #CONTACT_3# http://a/3"));
    }

    void aFailedWriteLeavesNothingAndTellsNothing()
    {
        ContactsFixture store;
        store.put(person("type=Cached|contactId=c1|officePhoneCan=+12"));
        Contact contact = person("name=B|officePhone=12|misc.k=refused");
        // The row goes in, the pair does not: the row must go again, and the cached copy come back.
        store.run("CREATE TEMP TRIGGER fault BEFORE INSERT ON MISC WHEN NEW.value='refused' "
                  "BEGIN SELECT RAISE(ABORT,'x'); END");
        QCOMPARE(store.create(contact), "failed");
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
        QCOMPARE(store.dao.nbContact(), 1);
        QCOMPARE(store.stored("c1").contactId, "c1");
        // In a list only that one is missing.
        QCOMPARE(
            store.contacts.creation.createLocalContacts("r", {contact, person("name=D|collaborationId=im")}).size(), 1);
        QCOMPARE(store.told.size(), 1);
        QCOMPARE(store.dao.nbContact(), 2);
        store.takeNews();
        store.failCommits();
        contact.contactId = "c1";
        QCOMPARE(store.modify(contact), "failed");
        QCOMPARE(store.remove("c1"), "failed");
        QVERIFY(!store.log.contains("<7>Local contact of id c1 has been updated"));
        QVERIFY(!store.log.contains("<7>Contact successfully deleted"));
    }

    void previewCodesAndNews()
    {
        ContactsFixture store;
        ContactPreview &preview = store.contacts.preview;
        const QString local = store.put(person("B"));
        const QString assistant = store.put(withType(ManagerAssistant));
        QCOMPARE(store.did(preview.addContactToPreview("r", "nobody")), "failed");
        QCOMPARE(store.did(preview.removeContactFromPreview("r", local)), "nothingToDo");
        QCOMPARE(store.did(preview.addContactToPreview("r", local)), "done|previewed r #CONTACT_1#");
        QCOMPARE(store.did(preview.addContactToPreview("r", local)), "nothingToDo");
        QCOMPARE(store.did(preview.removeContactFromPreview("r", assistant)), "wrongType"); // even when not in it
        QCOMPARE(store.did(preview.addContactToPreview(RequestId::deviceManagement, assistant)), "done");
        QCOMPARE(store.contacts.lookup.getAllContactsInPreview(0, -1).size(), 2);
        QCOMPARE(store.did(preview.removeContactFromPreview("r", local)), "done|unpreviewed r #CONTACT_1# true");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {local, "nobody", assistant}, false)),
                 "done|unpreviewed r #CONTACT_1# #CONTACT_2# false");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {local}, true)), "done|previewed r #CONTACT_1#");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {}, true)), "failed");
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
    }

    void contactsAreLookedUp()
    {
        ContactsFixture store;
        ContactLookup &lookup = store.contacts.lookup;
        for (const char *names : {"firstName=b|name=Z", "firstName=É|name=a", "firstName=a|name=z"}) {
            Contact contact = person(QString(names) + "|officePhone=2|email=A@b.example|officePhoneCan=+2");
            contact.isPreviewed = true;
            store.put(contact);
        }
        for (const ListContact &found :
             {lookup.getLocalContacts(0, 10), lookup.getLocalContacts("+2"), lookup.getAllContactsInPreview(0, 10)}) {
            QStringList names;
            for (const Contact &contact : found)
                names.append(contact.firstName + contact.name);
            QCOMPARE(names, (QStringList{"Éa", "az", "bZ"}));
        }
        QCOMPARE(lookup.getLocalContacts(1, 1).value(0).contactId, "#CONTACT_2#");
        QCOMPARE(lookup.getLocalContacts(0, 0).size() + lookup.getLocalContacts("2").size(), 0);
        QCOMPARE(lookup.getLocalContactByEmailAddress("a@B.EXAMPLE").size(), 3);
        QCOMPARE(lookup.getContactById("#CONTACT_1#").size(), 1);
        QCOMPARE(lookup.getContactById("nobody").size(), 0);
        QStringList imAddress;
        QObject::connect(&lookup, &ContactLookup::imAddressFound,
                         [&imAddress](const QString &id, const QString &address) {
                             imAddress = {id, address};
                         });
        QVERIFY(store.dao.misc().insertPair("#CONTACT_1#", "imAddress", "im@h"));
        lookup.getImAddressByContactId("#CONTACT_1#");
        QCOMPARE(imAddress, (QStringList{"#CONTACT_1#", "im@h"}));
        lookup.getImAddressByContactId("42");
        QCOMPARE(store.transport.calls.last().method, "getAttributeTypeByContactId");
        QCOMPARE(lookup.getContactTypeById("anything##"), Remote);
        QCOMPARE(lookup.getContactTypeById("#CONTACT_1#"), Local);
        QCOMPARE(lookup.getContactTypeById(QString()), Other);
    }

    void missingLatinNamesAreFilledAtStart()
    {
        ContactsFixture store;
        const Contact contact = person("firstName=A|name=Bé|misc.k=v");
        const QString id = store.put(contact);
        const QString nameless = store.put(person("firstName=Only"));
        const QDateTime date = store.stored(id).getLastModificationDate();
        for (int start = 0; start < 2; ++start)
            store.contacts.latinNames.checkAndFillLatinName();
        QCOMPARE(store.stored(id).latinName, "bbee\u0301");
        QCOMPARE(store.stored(id).misc, contact.misc);
        QCOMPARE(store.stored(id).getLastModificationDate(), date); // what is derived is no change
        QCOMPARE(store.log.lines.filter("has no latin name!").size(), 2);
        QCOMPARE(store.stored(nameless).latinFirstName, "oonnllyy");
        QCOMPARE(store.takeNews(), "");
    }

    void onlyTheAdvancedModeAllowsTheCompanyDirectory()
    {
        registerDBusKestinMode();
        ScriptedTransport transport;
        QVERIFY(!TelephonyMode(transport).getKestinMode()); // nobody there
        transport.answer = ScriptedTransport::failing;
        QVERIFY(!TelephonyMode(transport).getKestinMode());
        for (const QString mode : {"advanced", "basic", "unknown"}) {
            transport.answer = ScriptedTransport::with(QVariant::fromValue(KestinMode{mode}));
            QCOMPARE(TelephonyMode(transport).getKestinMode(), mode == "advanced");
        }
    }

    void onlyItsOwnReadOnlyEventCounts()
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
};

QTEST_GUILESS_MAIN(ContactsTest)
#include "ContactsTest.moc"
