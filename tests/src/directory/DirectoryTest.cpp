// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"
#include "platform/records/DirectoryCodes.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"
#include "src/dbus/KestinDirectoryAdaptor.h"
#include "src/directory/DirectoryEvent.h"
#include "src/directory/KestinDirectory.h"
#include "src/directory/OpenDirectory.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Person.h"
#include "tests/support/ScriptedTransport.h"
#include "tests/support/Test.h"

#include <QCryptographicHash>
#include <QMetaMethod>
#include <QSqlQuery>

#include <algorithm>
#include <array>

namespace {

/// The module on a data folder of its own, with a settings manager that knows `settings` and nobody else there.
struct ModuleFixture
{
    ModuleFixture()
    {
        qputenv("KESTIN_DATA_DIR", folder.path().toUtf8());
        directory.attach(transport);
        transport.answer = [this](const ScriptedTransport::Call &call, const QDBusMessage &message) {
            const auto setting = settings.constFind(call.arguments.value(0).toString());
            if (call.method != "getSettingValue" || setting == settings.constEnd())
                return ScriptedTransport::noPeer(message);
            return message.createReply(QVariant(*setting));
        };
    }
    void start()
    {
        QVERIFY(directory.check() || directory.deploy());
        QVERIFY(directory.init());
        QVERIFY(directory.run());
    }
    int create(const Contact &contact = {}, const QString &reqId = "r")
    {
        return directory.createLocalContact(reqId, contact);
    }
    void change(const char *slot, const QString &value)
    {
        Setting setting;
        setting.value = value;
        ListSetting answer{setting};
        QVERIFY(
            QMetaObject::invokeMethod(&directory, slot, Q_RETURN_ARG(ListSetting, answer), Q_ARG(Setting, setting)));
        QVERIFY(answer.isEmpty());
    }

    LogCapture log;
    QTemporaryDir folder;
    QMap<QString, QString> settings;
    ScriptedTransport transport;
    KestinDirectory directory{ModuleName::directory};
};

QStringList ownSlots(const QMetaObject &object)
{
    QStringList result;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        const QMetaMethod method = object.method(i);
        result.append(QString::fromLatin1(method.methodSignature()) + ' ' + method.typeName() + ' ' +
                      method.parameterNames().join(',') + (method.access() == QMetaMethod::Private ? " private" : ""));
    }
    return result;
}

} // namespace

class DirectoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slotsStandInTheirOrder()
    {
        QCOMPARE(ownSlots(KestinDirectory::staticMetaObject).join('\n') + '\n',
                 contentOf(KESTIN_PUBLISHED "slots.txt"));
        const QMetaObject &object = KestinDirectory::staticMetaObject;
        QCOMPARE(object.classInfo(object.indexOfClassInfo("D-Bus Interface")).value(),
                 "com.norlan.Kestin.KestinInterface");
    }

    void theIntrospectionTextIsAsPublished()
    {
        const QMetaObject &adaptor = KestinDirectoryAdaptor::staticMetaObject;
        const QByteArray text = adaptor.classInfo(adaptor.indexOfClassInfo("D-Bus Introspection")).value();
        // Clients have been generated from it: every byte stays.
        QCOMPARE(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex(),
                 "b8853c444c5c29604d0fc3c6ff5b70d9ef1de09e9fd3ea67417c6a7307b63cea");
    }

    void everyPublishedMethodFindsItsSlot()
    {
        ModuleFixture module;
        module.start();
        KestinDirectoryAdaptor adaptor(module.directory);
        const QMetaObject &type = KestinDirectoryAdaptor::staticMetaObject;
        for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
            QVariantList values{QVariant(type.method(i).returnMetaType())};
            for (int j = 0; j < type.method(i).parameterCount(); ++j)
                values.append(QVariant(type.method(i).parameterMetaType(j)));
            std::array<void *, 8> arguments{};
            std::transform(values.begin(), values.end(), arguments.begin(),
                           [](QVariant &value) { return value.data(); });
            try {
                adaptor.qt_metacall(QMetaObject::InvokeMetaMethod, i, arguments.data());
            } catch (const KestinException *failure) {
                QFAIL(qPrintable(failure->message()));
            }
        }
    }

    void aMissingSlotIsThrownAsPointer()
    {
        KestinModule module("Other"); // has none of the slots
        KestinDirectoryAdaptor adaptor(module);
        KestinException *thrown = nullptr;
        try {
            adaptor.getContactById("x");
        } catch (KestinException *exception) {
            thrown = exception;
        }
        QVERIFY(thrown);
        QCOMPARE(thrown->message(), "Adaptor::invokeMethod failed: getContactById");
        delete thrown;
    }

    void startsWithoutAnyPeer()
    {
        ModuleFixture module;
        module.transport.subscriptionsWork = false;
        module.start();
        QVERIFY(QFileInfo(module.folder.filePath("KestinDirectory/photos")).isDir());
        QVERIFY(QFileInfo::exists(module.folder.filePath("KestinApplication/KestinDirectory/kestindirectory.data")));
        QCOMPARE(module.create(), ResultCode::capacityReached); // no capacity is known
        QCOMPARE(module.transport.eventNames(), QStringList(EventName::databaseFull));
        QVERIFY(module.transport.events.first().arguments().isEmpty());
        QCOMPARE(module.create({}, RequestId::cached), ResultCode::done);
        // What could not be read comes later and counts like a change, but for what has changed meanwhile.
        module.change("dirSearchModeChanged", "2");
        module.settings = {{"DirMaxContact", "3"}, {"DirSearchMode", "1"}, {"DirectoryDefaultContacts", "1,,,A,,0,,"}};
        const auto tellReadOnly = [&module](bool isOn) {
            module.directory.syncReadOnlyModeSlot(
                KestinEvent("E", {{"moduleName", ModuleName::directory, true}, {"readOnly", isOn, true}}));
        };
        tellReadOnly(true); // refuses contacts, and so holds them back
        Q_EMIT module.transport.watches.value(ModuleName::settings)->came();
        QTRY_VERIFY(module.log.contains("<6>KestinDIR::dirMaxContactChanged to 3"));
        QTRY_VERIFY(module.log.contains("<6>The setting DirectoryDefaultContacts, which could not be read before, has "
                                        "come"));
        tellReadOnly(false);
        QTRY_COMPARE(module.directory.getContactsByType(ContactType::DeviceManagement).size(), 1);
        QCOMPARE(module.create(), 0);
        QCOMPARE(module.create(), ResultCode::capacityReached);
        QVERIFY(!module.log.contains("<6>KestinDIR::dirSearchModeChanged to 1"));
        // However many events of the company directory wait, its right is asked for once.
        module.transport.calls.clear();
        for (int events = 0; events < 4; ++events)
            QVERIFY(QMetaObject::invokeMethod(&module.directory,
                                              "event_WSMANAGER_EVENT_DIRECTORY_AVAILABILITY_STATUS_handle",
                                              Q_ARG(KestinEvent, KestinEvent())));
        QTRY_VERIFY(!module.transport.calls.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(module.transport.calls.size(), 1);
    }

    void photosMadeSquareAtStartAreTold()
    {
        ModuleFixture module;
        const char *pixel =
            "424d3a0000000000000036000000280000000100000001000000010018000000000004000000c40e0000c40e0000000000"
            "000000000000ff0000";
        const QString photo = writeFile(module.folder.filePath("photo"), QByteArray::fromHex(pixel));
        Contact contact = person("contactId=c1|type=Cached|photo=" + photo);
        {
            const QString folder = module.folder.filePath("KestinApplication/KestinDirectory");
            Database database;
            QVERIFY(QDir().mkpath(folder) && database.openDatabase(folder) && database.createTables());
            QVERIFY(DaoContact(database.connection()).insertContact(contact, false));
        }
        module.start();
        QCOMPARE(module.transport.eventNames(), QStringList(EventName::contactsUpdated));
        const auto arguments = module.transport.events.first().arguments();
        const auto told = arguments.value(1).value.value<ListContact>();
        QVERIFY(told.size() == 1 && told.first().photo == contact.photo + "_100x100" &&
                !arguments.value(2).value.toBool());
    }

    void damageIsMendedWhenItIsMetOrLookedFor_data()
    {
        const Rows<QString, bool, QString> row;
        const char *anew = "<4>The database %1 was damaged; its indexes were made anew";
        row("met", "contact_id_idx", true, anew);
        row("looked for", "photo_idx", false, anew);
        row("out of date", "contact_id_idx", false, anew);
        row("a table", "CONTACT", false,
            "<3>The database %1 is damaged, and not in its indexes alone. What can still be read of it is told by: "
            "kestin-dir recover %1 --dry-run");
    }

    void damageIsMendedWhenItIsMetOrLookedFor()
    {
        const auto [damaged, isMet, line] = currentRow<QString, bool, QString>();
        TemporaryStore store;
        LongWork longWork;
        store.fill(201);
        if (QTest::currentDataTag() == QByteArray("out of date"))
            store.outdate(damaged);
        else
            store.damage(damaged);
        const LogCapture log;
        StoreCare care(store.database, longWork);
        if (isMet)
            QVERIFY(!store.dao->getContact("#CONTACT_201#"));
        else
            care.check();
        QTRY_VERIFY2(log.contains(line.arg(store.database.filePath())), qPrintable(log.lines.join("\n")));
        QCOMPARE(!store.dao->getContact("#CONTACT_201#").value_or(ListContact()).isEmpty(), damaged != "CONTACT");
        QCoreApplication::processEvents();
        QCOMPARE(log.lines.filter("kestin-dir recover").size(), damaged == "CONTACT" ? 1 : 0);
    }

    void settingsAreReadAndFollowed()
    {
        ModuleFixture module;
        module.settings = {{"DirMaxContact", "1"}, {"DirSearchMode", "2"}, {"RemoveHttpsFromPhotoUrl", "True"}};
        module.start();
        QVERIFY(module.log.contains("<7>KestinDirectory::setDirSearchMode: SEARCH_DISPLAY_PER_DIRECTORY"));
        QVERIFY(module.log.contains("<7>removeHttpsFromPhotoUrl = 0"));
        QCOMPARE(module.create(), 0);
        QCOMPARE(module.create(), ResultCode::capacityReached);
        const auto exported = [&module, later = QDateTime::currentDateTimeUtc().addDays(1)] {
            module.directory.exportToXml(module.folder.filePath("contacts.xml"), 0, true, "id", "device", later, later);
            module.directory.longWork().finish();
            return module.transport.events.last().argument<ImpExpStatus>("status").toString();
        };
        QCOMPARE(exported(), "Success"); // whoever synchronises is told of the capacity
        QCOMPARE(exported(), "NothingToDo");
        module.change("dirMaxContactChanged", "2");
        QCOMPARE(exported(), "Success");
        QCOMPARE(module.create(), 0);
        module.change("dirMaxContactChanged", "12abc");
        QCOMPARE(module.create(), ResultCode::capacityReached);
        module.change("dirSearchModeChanged", "x");
        QCOMPARE(module.log.lines.last(), "<7>KestinDirectory::setDirSearchMode: SEARCH_DISPLAY_FULL_LIST");
        module.change("removeHttpsFromPhotoUrlChanged", "true");
        QCOMPARE(module.log.lines.last(), "<7>removeHttpsFromPhotoUrl = 1");
    }

    void eventsCarryTheirArguments()
    {
        ModuleFixture module;
        module.settings = {{"DirMaxContact", "10"}};
        module.start();
        module.create(person("A"), "r1");
        const Contact contact = person("name=B|contactId=#CONTACT_1#");
        module.directory.modifyLocalContact("r2", contact);
        module.directory.addContactToPreview("r3", contact.contactId);
        module.directory.removeContactFromPreview("r4", contact.contactId);
        module.directory.deleteLocalContact("r5", contact.contactId);
        const QString file = module.folder.filePath("contacts.xml");
        module.directory.exportToXml(file, 0, true, "id", "device", {}, {});
        module.directory.longWork().finish();
        module.create(contact, "r6");
        module.directory.importFromXml(file);
        module.directory.longWork().finish();
        module.change("userPhotoChanged", QString());
        QStringList told;
        for (const KestinEvent &event : module.transport.events) {
            QString line = event.getEvtName();
            for (const EventArgument &argument : event.arguments()) {
                QVERIFY(argument.flag);
                line += ' ' + argument.name + '=' + QString::fromLatin1(argument.value.typeName());
            }
            told.append(line + ' ' + event.argument<QString>("reqId"));
        }
        const QStringList expected{
            "DIR_CONTACTS_CREATED reqId=QString contacts=QList<Contact> r1",
            "DIR_CONTACTS_UPDATED reqId=QString contacts=QList<Contact> onlyPhotoHasChanged=bool r2",
            "DIR_CONTACTSINPREVIEW_CREATED reqId=QString contacts=QList<Contact> r3",
            "DIR_CONTACTSINPREVIEW_DELETED reqId=QString contacts=QList<Contact> requestedByUser=bool r4",
            "DIR_CONTACTS_DELETED reqId=QString contactIds=QStringList r5",
            "ExportFinishedEvt status=ImpExpStatus cause=QString ",
            "DIR_CONTACTS_CREATED reqId=QString contacts=QList<Contact> r6",
            "ImportFinishedEvt status=ImpExpStatus cause=QString ",
            "DIR_CONTACTS_DELETED reqId=QString contactIds=QStringList pcSyncDeleteContactReqId",
            "DIR_CONTENT_CHANGED ",
            "userPhotoChanged fileName=QString "};
        QCOMPARE(told, expected);
    }

    void aFailedEventIsOnlyLogged()
    {
        ModuleFixture module;
        module.settings = {{"DirMaxContact", "10"}};
        module.start();
        module.transport.refusedEvents = 1;
        QCOMPARE(module.create(), 0);
        QCOMPARE(module.log.lines.last(), "<3>event DIR_CONTACTS_CREATED notification failed ");
        // The end of a search goes out with as much as the bus takes.
        const QString name = "event DIR_SEARCH_COMPLETED_BY_PHONE_NUMBER ", sent = "<7>" + name + "sent ";
        const QList<QStringList> ends{
            {"A", "<4>" + name + "is sent with the summary of its contact: all of it is more than the bus carries",
             sent},
            {"", "<4>" + name + "is sent with an empty contact: all of it is more than the bus carries", sent},
            {"", sent, "<3>" + name + "notification failed "}};
        for (const QStringList &end : ends) {
            module.transport.refusedEvents = int(ends.indexOf(end)) + 1;
            DirectoryEvent::searchCompletedByPhoneNumber("s", person("name=A|photo=p")).send(module.directory);
            const auto told = module.transport.events.last().argument<Contact>("contact");
            QCOMPARE((QStringList{told.name + told.photo} + module.log.lines.mid(module.log.lines.size() - 2)), end);
        }
    }

    void anAnonymousContactShowsThePopup()
    {
        ModuleFixture module;
        module.start();
        QCOMPARE(module.create(person("fax=anonymous")), ResultCode::anonymous);
        const ScriptedTransport::Call call = module.transport.calls.last();
        QCOMPARE(call.module + '.' + call.method, "Presentation.showPopup");
        QCOMPARE(call.arguments.mid(0, 3), (QVariantList{"Impossible to create anonymous contact.", 3, -1}));
        QCOMPARE(call.arguments.size(), 7);
    }

    void anImportShowsWhatFailed_data()
    {
        const Rows<QString> row;
        row("no room for photos", "0");
        row("room beyond what a number holds", "4096");
    }

    void anImportShowsWhatFailed()
    {
        const auto [quota] = currentRow<QString>();
        ModuleFixture module;
        module.settings = {{"DirMaxContact", "10"}, {"FileDiskUserQuota", quota}};
        module.start();
        const QString file = writeFile(module.folder.filePath("contacts.xml"),
                                       R"(<directory><contact duid="one" puid="p"/><contact duid="two" puid="p"/>)"
                                       R"(<contact duid="" puid="p"><photo>QUJD</photo></contact>)"
                                       R"(<contact duid="" puid="q"><photo>QUJD</photo></contact></directory>)");
        for (int times = 0; times < 2; ++times) {
            module.directory.importFromXml(file);
            module.directory.longWork().finish();
        }
        QStringList popups;
        for (const ScriptedTransport::Call &call : module.transport.calls) {
            if (call.method == "showPopup")
                popups.append(call.arguments.value(0).toString());
        }
        const QStringList expected{
            "The contact photo has not been saved because the device is full. Please free memory by "
            "removing contacts with photos.",
            R"(The imported contact with duid="one" is not stored into the local database.)",
            R"(The imported contact with duid="two" is not stored into the local database.)"};
        const QStringList once = expected.mid(quota == "0" ? 0 : 1);
        QCOMPARE(popups, once + once);
    }

    void restoringEmptiesTheStore_data()
    {
        const Rows<bool, QString, QString, QString, QString> row;
        const QString all = "UserPhoto_1 kestindirectory.data.set-aside-1 photo_default photo_other", none = "SELECT 1",
                      whole = QString(all).replace("photo_other", "photo_named photo_other");
        row("to default", false, none, "", "DIR_CONTACTS_CREATED DIR_CONTENT_CHANGED", "UserPhoto_1 photo_default");
        row("to default, beside a database set aside", false, none, "1", "DIR_CONTACTS_CREATED DIR_CONTENT_CHANGED",
            all);
        row("to factory", true, none, "1", "userPhotoChanged DIR_CONTENT_CHANGED", "");
        const QString refused = "ALTER TABLE MISC RENAME TO AWAY\nCREATE VIEW MISC AS SELECT * FROM AWAY";
        row("refused", true, refused, "1", "", whole);
    }

    void restoringEmptiesTheStore()
    {
        const auto [toFactory, statements, setAside, events, left] =
            currentRow<bool, QString, QString, QString, QString>();
        ModuleFixture module;
        const QString photos = module.folder.filePath("KestinDirectory/photos/"),
                      data = module.folder.filePath("KestinApplication/KestinDirectory/");
        module.settings = {{"DirMaxContact", "10"},
                           {"DirectoryDefaultContacts", "1,,,A,,0,," + photos + "photo_default"}};
        module.start();
        QCOMPARE(module.create(person("photo=" + photos + "photo_named")), 0);
        QStringList paths{photos + "photo_named", photos + "photo_default", photos + "photo_other",
                          photos + "UserPhoto_1"};
        if (!setAside.isEmpty())
            paths.append(data + "kestindirectory.data.set-aside-" + setAside);
        for (const QString &path : paths)
            writeFile(path);
        for (const QString &statement : statements.split('\n'))
            QVERIFY(QSqlQuery().exec(statement));
        module.transport.events.clear();
        QCOMPARE(toFactory ? module.directory.restoreDataToFactory() : module.directory.restoreDataToDefault(),
                 toFactory);
        QCOMPARE(module.transport.eventNames().join(' '), events);
        if (!module.transport.events.isEmpty())
            QCOMPARE(module.directory.getLocalContacts(0, -1).size(), toFactory ? 0 : 1);
        QStringList files = QDir(photos).entryList(QDir::Files) + QDir(data).entryList({"*set-aside*"});
        files.sort();
        QCOMPARE(files.join(' '), left);
    }

    void anUnreadableSettingLeavesTheUsersPhoto()
    {
        ModuleFixture module;
        module.start();
        const QString photo = writeFile(module.folder.filePath("KestinDirectory/photos/UserPhoto_1"));
        module.directory.slot_presentationLoaded({});
        QVERIFY(QFile::exists(photo) && module.transport.events.isEmpty());
        module.settings = {{"UserPhoto", ""}};
        module.directory.slot_presentationLoaded({});
        QVERIFY(!QFile::exists(photo) && module.transport.events.size() == 1);
    }

    void photosFollowTheirContacts()
    {
        ModuleFixture module;
        Database database;
        DirectoryFields fields;
        QVERIFY(database.openDatabase(module.folder.path()) && database.createTables());
        OpenDirectory open(database.connection(), module.directory, module.directory, fields, "KestinDirectory",
                           module.directory.longWork());
        Q_EMIT open.photos.ofContacts.contactsUpdated({}, true);
        QVERIFY(fields.lastLocalChangeDate.isValid()); // an export takes it up
        ContactPhotos &photos = open.photos.ofContacts;
        QVERIFY(photos.want("a", "http://photos.example/a") && photos.want("b", "http://photos.example/b"));
        Q_EMIT open.contacts.news.photoDropped("a", "http://photos.example/a");
        QCOMPARE(photos.pendingCount(), 1);
        Q_EMIT open.synchronisation.importer.contentChanged(); // nobody of that id
        QCOMPARE(photos.pendingCount(), 0);
    }
};

QTEST_GUILESS_MAIN(DirectoryTest)
#include "DirectoryTest.moc"
