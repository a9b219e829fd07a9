// SPDX-License-Identifier: Apache-2.0
#include "tests/src/contacts/Store.h"

#include "platform/framework/KestinException.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "src/contacts/ReadOnlyMode.h"
#include "src/contacts/TelephonyMode.h"
#include "src/dao/Transaction.h"
#include "tests/support/Files.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"
#include "tests/support/Rows.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QSqlDriver>
#include <QTest>

#include <sqlite3.h>

using namespace ContactType;

class ContactsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCreatedContactIsCompletedStoredAndTold()
    {
        Store store;
        const Contact contact = person("firstName=Zoë|name=Abc|officePhone=03 88|latinName=caller's own|"
                                       "puid=caller's own|misc.company=Acme|misc.=");
        QCOMPARE(store.create(contact), "0|created r #CONTACT_1#");
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhone + stored.officePhoneCan, "0388+0388");
        QCOMPARE(stored.latinFirstName + stored.latinName, "zzooee\u0308aabbcc");
        QCOMPARE(stored.misc, contact.misc);
        QVERIFY(store.fields.lastLocalChangeDate.isValid());
        QCOMPARE(store.transport.calls.value(0).method, "extractDialableNumberList");
        QCOMPARE(store.transport.calls.value(1).method, "makeCanonicalNumberListWithoutPrefix");
    }

    void theRequestIdDecidesTypeAndNews()
    {
        Store store;
        QCOMPARE(store.create(withType(Cached, "42"), RequestId::deviceManagement), "0");
        QCOMPARE(store.stored("#DM_42#").type, DeviceManagement);
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
        QCOMPARE(store.create(withType(Local, "c1"), RequestId::cached), "0|created CACHED_REQID c1");
        QCOMPARE(store.stored("c1").type, Cached);
        QCOMPARE(store.did(store.contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_42#")), "0");
    }

    void capacityIsHeld()
    {
        Store store;
        store.fields.maxContacts = 1;
        QCOMPARE(store.create(person("A")), "0|created r #CONTACT_1#");
        QCOMPARE(store.create(person("C")), "3|full");
        QVERIFY(store.log.contains("<7>DataBase Full"));
        QVERIFY(store.contacts.creation.createLocalContacts("r", {person("C")}).isEmpty());
        QCOMPARE(store.create(withType(DeviceManagement), RequestId::deviceManagement), "0");
        QCOMPARE(store.dao.nbContact(), 2);
        // A count that cannot be read is no room.
        store.fields.maxContacts = 1000;
        const QVariant handle = store.database.connection().handle().driver()->handle();
        const auto refuse = [](void *, int action, const char *, const char *function, const char *, const char *) {
            return action == SQLITE_FUNCTION && qstrcmp(function, "count") == 0 ? SQLITE_DENY : SQLITE_OK;
        };
        sqlite3_set_authorizer(*static_cast<sqlite3 *const *>(handle.constData()), refuse, nullptr);
        store.database.connection().beginEpoch();
        QCOMPARE(store.create(person("C")), "-1");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {person("C")}).isEmpty());
        QCOMPARE(store.takeNews(), "");
    }

    void aFullCacheGivesUpItsOldestOnly()
    {
        Store store;
        store.fields.comLogSize = 2;
        const auto cache = [&store](const char *id) {
            return store.create(withType(Cached, id), RequestId::cached) + ' ' +
                   QString::number(store.dao._nbCachedContactQuery().value_or(-1));
        };
        for (const char *id : {"c1", "c2"})
            store.put(withType(Cached, id));
        QCOMPARE(cache("c3"), "0|deleted CACHED_REQID c1|created CACHED_REQID c3 2");
        QCOMPARE(cache("c3"), "0|deleted CACHED_REQID c3|created CACHED_REQID c3 2"); // takes the place of itself
        store.put(withType(Cached, "c4"));
        QCOMPARE(cache("c5"), "0|deleted CACHED_REQID c2|created CACHED_REQID c5 3");
        // The disk is full: the database undoes everything by itself, and what came then would be on its own.
        store.run("CREATE TEMP TRIGGER fault BEFORE DELETE ON CONTACT BEGIN SELECT RAISE(ROLLBACK,'full'); END");
        QCOMPARE(cache("c6"), "-1 3");
    }

    void aCopyTakesNobodysId_data()
    {
        const Rows<bool> row("isCreated");
        for (const char *taken : {"#CONTACT_1#", "#CONTACT_99#", "#DM_7#", "#DM_a\n#", "kind 2"})
            row(taken, false);
        for (const char *free : {"copy", "remote##", "#CONTACT_1##", "#CONTACT_x#", ""})
            row(free, true);
    }

    void aCopyTakesNobodysId()
    {
        QFETCH(bool, isCreated);
        const QString id = QTest::currentDataTag();
        Store store;
        for (const Contact &contact :
             {person("A"), withType(DeviceManagement, "7"), withType(2, "kind 2"), withType(Cached, "copy")})
            store.put(contact);
        Contact copy = withType(Cached, id);
        const QString deleted = "deleted CACHED_REQID " + id + '|';
        const auto rows = store.dao.getContact(id)->size();
        QCOMPARE(store.create(copy, RequestId::cached),
                 isCreated ? "0|" + (id == "copy" ? deleted : "") + "created CACHED_REQID " + id : "1");
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
        Store store;
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
        QCOMPARE(store.create(contact), "0|deleted CACHED_REQID c1|created r #CONTACT_6#");
        QVERIFY(!store.stored("without number").contactId.isEmpty());
        QCOMPARE(store.dao.getContact(kept)->size(), 1);
        QCOMPARE(store.stored(kept).misc, contact.misc);
    }

    void anonymousContactsAreRefused_data()
    {
        const Rows<bool> row("isRefused");
        for (const char *field : {"personalMobile", "fax", "officePhone", "personalFax", "personalHomeCan"})
            row(field, true);
        row("personalHome", false);
    }

    void anonymousContactsAreRefused()
    {
        QFETCH(bool, isRefused);
        Store store;
        Contact contact = person(QString("name=B|officePhone=Anonymous|%1=anonymous").arg(QTest::currentDataTag()));
        QCOMPARE(store.create(contact), isRefused ? "-1|anonymous" : "0|created r #CONTACT_1#");
        if (!isRefused)
            return;
        QCOMPARE(store.create(contact, RequestId::cached), "-1"); // no popup
        contact.contactId = store.put(person("A"));
        QCOMPARE(store.modify(contact), "-1|anonymous");
    }

    void readOnlyModeRefusesEveryWrite()
    {
        Store store;
        const QString id = store.put(person("B"));
        store.fields.readOnlyMode = true;
        Contact contact = store.stored(id);
        contact.name = "C";
        QCOMPARE(store.create(contact) + store.modify(contact) + store.remove(id), "666");
        QVERIFY(store.contacts.creation.createLocalContacts("r", {contact}).isEmpty());
        QVERIFY(store.contacts.modification.modifyLocalContacts("r", {contact}).isEmpty());
        QCOMPARE(store.contacts.preview.addContactToPreview("r", id), 6);
        QCOMPARE(store.contacts.preview.removeContactFromPreview("r", id), 6);
        QCOMPARE(store.contacts.preview.updateContactsPreview("r", {id}, true), 6);
        QCOMPARE(store.dao.nbContact(), 1);
        QCOMPARE(store.stored(id).name, "B");
        QCOMPARE(store.takeNews(), "");
        QVERIFY(store.log.contains("<4>KestinDirectory:createLocalContacts:synchronization mode.Can't add " + id));
    }

    void theListFormCreatesWithLessCare()
    {
        Store store;
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
        Store store;
        Contact contact =
            person("firstName=A|name=É|puid=caller's own|type=Cached|officePhone=1 2|misc.job=chef|misc.zip=1");
        contact.contactId = store.put(person("firstName=A|name=B|misc.company=Acme"));
        QVERIFY(store.dao.updatePuidContact(contact.contactId, "p1"));
        QCOMPARE(store.modify(contact), "0|updated r #CONTACT_1# false");
        const Contact stored = store.stored(contact.contactId);
        const qsizetype logged = store.log.lines.indexOf("<7>Local contact of id #CONTACT_1# has been updated");
        QVERIFY(logged >= 0 && logged < store.log.lines.indexOf("updated r #CONTACT_1# false"));
        contact.setLastModificationDate(QDateTime(QDate(2001, 2, 3), QTime(4, 5), Qt::UTC));
        QCOMPARE(store.modify(contact), "0|updated r #CONTACT_1# false"); // changes nothing
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
        QCOMPARE(store.modify(contact), "2");
        QVERIFY(store.log.contains("<7>Contact does not exist. Return 2"));
    }

    void theTypeDecidesWhatMayBeChanged_data()
    {
        const Rows<int, int, bool, int> row("type", "modifyCode", "isModifiedInList", "deleteCode");
        for (int type = 0; type <= 6; ++type)
            row("type " + QByteArray::number(type), type, int(type != Local && type != Cached),
                type != Remote && type != DeviceManagement && type != Other,
                int(type == Remote || type == Other || type == ManagerAssistant));
    }

    void theTypeDecidesWhatMayBeChanged()
    {
        QFETCH(int, type);
        QFETCH(int, modifyCode);
        QFETCH(bool, isModifiedInList);
        QFETCH(int, deleteCode);
        Store store;
        Contact contact = withType(type);
        contact.misc.insert("k", "v");
        const QString id = contact.contactId = store.put(contact);
        contact.type = type == Local ? DeviceManagement : Local; // says the caller
        contact.name = "single";
        QCOMPARE(store.contacts.modification.modifyLocalContact("r", contact), modifyCode);
        QCOMPARE(store.stored(id).name == "single", modifyCode == 0);
        contact.name = "list";
        QCOMPARE(store.contacts.modification.modifyLocalContacts("r", {contact}).contains(id), isModifiedInList);
        QCOMPARE(store.stored(id).name == "list", isModifiedInList);
        QCOMPARE(store.stored(id).type, type);

        store.takeNews();
        const QString told = "deleted r " + id;
        QCOMPARE(store.remove(id), deleteCode == 0 ? "0|" + told : QString::number(deleteCode));
        QCOMPARE(store.dao.misc().pairs(id)->size(), qsizetype(deleteCode));
        const QStringList &lines = store.log.lines;
        QCOMPARE(lines.indexOf("<7>Contact successfully deleted") + 1, deleteCode == 0 ? lines.indexOf(told) : 0);
        QCOMPARE(store.remove("nobody"), "2");
    }

    void theListFormModifiesWithLessCare()
    {
        Store store;
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
        Store store;
        Contact contact = withType(Cached, "c");
        contact.photo = "http://a/1";
        QCOMPARE(store.create(contact, RequestId::cached), "0|created CACHED_REQID c|wanted c http://a/1");
        QCOMPARE(store.modify(contact), "0|updated r c false|wanted c http://a/1");
        contact.photo = "/p/photo_2";
        QCOMPARE(store.modify(contact), "0|updated r c false|dropped http://a/1|wanted c /p/photo_2");
        contact.photo.clear();
        store.contacts.modification.modifyLocalContacts("r", {contact});
        QCOMPARE(store.takeNews(), "dropped /p/photo_2|updated r c false");

        contact.photo = "http://a/3";
        QCOMPARE(store.create(contact, RequestId::deviceManagement), "0");
        QCOMPARE(store.did(store.contacts.deletion.deleteLocalContact(RequestId::deviceManagement, "#DM_c#")),
                 "0|dropped http://a/3");
        // Of a cached contact the list form leaves the photo alone.
        store.contacts.creation.createLocalContacts("r",
                                                    {person("type=Cached|contactId=d|photo=http://a/3"),
                                                     person("type=ManagerAssistant|contactId=c|photo=http://a/3")});
        QCOMPARE(store.told.filter("wanted"), QStringList("wanted #CONTACT_3# http://a/3"));
    }

    void aFailedWriteLeavesNothingAndTellsNothing()
    {
        Store store;
        store.put(person("type=Cached|contactId=c1|officePhoneCan=+12"));
        Contact contact = person("name=B|officePhone=12|misc.k=refused");
        // The row goes in, the pair does not: the row must go again, and the cached copy come back.
        store.run("CREATE TEMP TRIGGER fault BEFORE INSERT ON MISC WHEN NEW.value='refused' "
                  "BEGIN SELECT RAISE(ABORT,'x'); END");
        QCOMPARE(store.create(contact), "-1");
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
        QCOMPARE(store.modify(contact) + store.remove("c1"), "-1-1");
        QVERIFY(!store.log.contains("<7>Local contact of id c1 has been updated"));
        QVERIFY(!store.log.contains("<7>Contact successfully deleted"));
    }

    void previewCodesAndNews()
    {
        Store store;
        ContactPreview &preview = store.contacts.preview;
        const QString local = store.put(person("B"));
        const QString assistant = store.put(withType(ManagerAssistant));
        QCOMPARE(store.did(preview.addContactToPreview("r", "nobody")), "-1");
        QCOMPARE(store.did(preview.removeContactFromPreview("r", local)), "4");
        QCOMPARE(store.did(preview.addContactToPreview("r", local)), "0|previewed r #CONTACT_1#");
        QCOMPARE(store.did(preview.addContactToPreview("r", local)), "4");
        QCOMPARE(store.did(preview.removeContactFromPreview("r", assistant)), "1"); // even when not in it
        QCOMPARE(store.did(preview.addContactToPreview(RequestId::deviceManagement, assistant)), "0");
        QCOMPARE(store.contacts.lookup.getAllContactsInPreview(0, -1).size(), 2);
        QCOMPARE(store.did(preview.removeContactFromPreview("r", local)), "0|unpreviewed r #CONTACT_1# true");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {local, "nobody", assistant}, false)),
                 "0|unpreviewed r #CONTACT_1# #CONTACT_2# false");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {local}, true)), "0|previewed r #CONTACT_1#");
        QCOMPARE(store.did(preview.updateContactsPreview("r", {}, true)), "-1");
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
    }

    void contactsAreLookedUp()
    {
        Store store;
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
        QVERIFY(store.log.contains("<4>No misc has been found for the specified contact"));
        QCOMPARE(lookup.getContactById("nobody").size(), 0);
        QVERIFY(store.log.contains("<4>The contact of specified ID has not been found"));
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

    void numbersSurviveTelephonyFaults_data()
    {
        const Rows<QString> row("line");
        const QString failed = "<3>fillContactCanonicalNumbers failed to call Telephony ";
        row("absent", "");
        row("four elements", "");
        row("another type", "");
        row("exception", failed + "why");
        row("unknown exception", failed + "(unknown exception");
    }

    void numbersSurviveTelephonyFaults()
    {
        QFETCH(QString, line);
        Store store;
        const QByteArray fault = QTest::currentDataTag();
        store.transport.answer = [fault](const auto &, const QDBusMessage &message) {
            if (fault == "exception")
                throw KestinException("m", 1, "why");
            if (fault == "unknown exception")
                throw 1;
            return fault == "four elements"  ? message.createReply(QVariant(QStringList(4)))
                   : fault == "another type" ? message.createReply(QVariant(42))
                                             : ScriptedTransport::noPeer(message);
        };
        QCOMPARE(store.create(person("name=B|officePhone=0 3|officePhoneCan=stale")), "0|created r #CONTACT_1#");
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhone + stored.officePhoneCan, "0 30 3");
        QVERIFY(line.isEmpty() || store.log.contains(line));
    }

    void numbersOfManySurviveTelephonyFaults()
    {
        Store store;
        const auto canonicalOf = [&store](const ScriptedTransport::Answer &answer) {
            store.transport.answer = answer;
            ListContact contacts{person("officePhone=1"), person("officePhone=2")};
            store.numbers.canonical.askForCanonicalNumbers(contacts).fill(contacts);
            return contacts.at(0).officePhoneCan + ' ' + contacts.at(1).officePhoneCan;
        };
        const auto secondOnly = [](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            auto numbers = call.arguments.value(0).value<QMapQStringQStringList>();
            numbers.remove("0");
            numbers["1"][0] = "+2";
            return message.createReply(QVariant::fromValue(numbers));
        };
        QCOMPARE(canonicalOf(secondOnly), "1 +2");
        QCOMPARE(canonicalOf(ScriptedTransport().answer), "1 2");
    }

    void aSilenceCountsForTheListInWhichItCame()
    {
        Store store;
        const ListContact list(3, person("officePhone=1"));
        const QByteArray one = R"(<contact duid="" puid="p"><officePhone>1</officePhone></contact>)";
        const QString file =
            writeFile(store.folder.filePath("contacts.xml"), "<directory>" + one.repeated(400) + "</directory>");
        const auto callsOf = [&store](const auto &work) {
            store.transport.calls.clear();
            work();
            return store.transport.calls.size();
        };
        const auto create = [&] { store.contacts.creation.createLocalContacts("r", list); };
        store.transport.answer = [](const auto &, const QDBusMessage &message) {
            return message.createErrorReply(QDBusError::NoReply, "silent");
        };
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(callsOf(create), 1);
            QCOMPARE(callsOf([&] { store.contacts.modification.modifyLocalContacts("r", *store.dao.getAllContact()); }),
                     1);
            QCOMPARE(callsOf([&] { store.contacts.defaultContacts.setDefaultContacts("1,,,A,1,,,#2,,,B,2,,,"); }), 1);
            QCOMPARE(callsOf([&] { store.synchronisation.importer.importFromXml(file); }),
                     2); // the second went out with the first
            QCOMPARE(callsOf([&] { store.create(list.first()); }), 2);
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

    void changedDialingRulesRecomputeOnce()
    {
        Store store;
        QMap<QString, QString> settings{{"DialingRuleCountryCode", "33"}};
        store.transport.answer = [&](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            const QString key = call.arguments.value(0).toString();
            if (call.method == QLatin1String("getSettingValue"))
                return message.createReply(QVariant(settings.value(key, QString())));
            if (store.numbers.stored.areStale()) // before the copies, or a kill in between would leave the old numbers
                settings[key] = call.arguments.value(1).toString();
            return message.createReply(QVariant(QString()));
        };
        store.run("PRAGMA query_only=1");
        QVERIFY(store.numbers.dialingRules.dialingRulesChanged());
        QCOMPARE(store.transport.calls.size(), 10); // what cannot be marked is not taken for done
        store.run("PRAGMA query_only=0");
        QVERIFY(store.numbers.dialingRules.dialingRulesChanged());
        QCOMPARE(store.transport.calls.size(), 25);
        QCOMPARE(store.transport.calls.last().arguments.value(0).toString(), "DialingRuleExternalPrefixExceptionsSave");
        QCOMPARE(settings.value("DialingRuleCountryCodeSave"), "33");
        QVERIFY(!store.numbers.dialingRules.dialingRulesChanged());
        store.numbers.stored.fillContactsCanonicalNumbers(); // of nobody
        QVERIFY(!store.numbers.stored.areStale());
        QCOMPARE(store.transport.calls.size(), 35);
    }

    void recomputingGoesOnAtTheNextStart_data()
    {
        const Rows<int, int, int> row("error", "calls", "renewed");
        row("a portion refused", int(QDBusError::Failed), 3, 201);
        row("nothing for a portion", -1, 3, 201);
        row("silence", int(QDBusError::NoReply), 2, 200);
    }

    void recomputingGoesOnAtTheNextStart()
    {
        QFETCH(int, error);
        Store store;
        StoredNumbers &numbers = store.numbers.stored;
        const Contact contact = person("officePhone=12|misc.company=Acme");
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
        QTEST(int(store.contacts.lookup.getLocalContacts("+5").size()), "renewed");
        QVERIFY(numbers.areStale());
        const Contact stored = store.stored("#CONTACT_1#");
        QCOMPARE(stored.officePhoneCan + stored.faxCan + stored.personalMobileCan + stored.personalHomeCan +
                     stored.personalFaxCan,
                 "+1+2+3+4+5");
        QCOMPARE(stored.misc, contact.misc);
        QVERIFY(store.log.contains("<3>fillContactsCanonicalNumbers Unknown contactID gone"));
        error = 0;
        numbers.fillContactsCanonicalNumbers();
        QCOMPARE(store.contacts.lookup.getLocalContacts("+5").size(), 400);
        QVERIFY(!numbers.areStale());
        QVERIFY(store.stored("#CONTACT_1#") == stored);
        QCOMPARE(store.takeNews(), "");
    }

    void missingLatinNamesAreFilledAtStart()
    {
        Store store;
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
        QVERIFY(
            store.log.contains("<4>KestinDirectory::checkAndFillLatinName() - contact " + id + " has no latin name!"));
        QCOMPARE(store.takeNews(), "");
    }

    void modeOfTelephony_data()
    {
        const Rows<QString, bool> row("mode", "isAllowed");
        row("advanced", "advanced", true);
        row("basic", "basic", false);
        row("unknown", "unknown", false);
        row("nobody there", "", false);
        row("an exception", "throw", false);
    }

    void modeOfTelephony()
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
