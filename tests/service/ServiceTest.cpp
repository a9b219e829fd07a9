// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/PlatformEvents.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/UpdateReport.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"

#include <QFile>
#include <QTest>

/// What a user of the running service sees.
class ServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        phone = std::make_unique<PhoneUnderTest>();
        phone->startPeers();
        QVERIFY(phone->startDirectory());
    }
    void cleanup() { phone.reset(); }

    /// Each of the three that a contact may be merged by counts in its own place.
    void contactsToMergeAreFoundByEachKey()
    {
        QCOMPARE(phone->create(person("officePhone=03 88 12 34 56|collaborationId=im@example.org|personalFax=4711")),
                 0);
        const Contact stored = phone->contacts("getLocalContacts", {0, 1}).value(0);
        const QStringList values{stored.collaborationId, stored.officePhoneCan, stored.personalFaxCan};
        for (int value = 0; value < 3; ++value) {
            for (int place = 0; place < 3; ++place) {
                QVariantList arguments{"", "", ""};
                arguments[place] = values.at(value);
                QCOMPARE(phone->contacts("getContactToMerge", arguments).size(), place == value ? 1 : 0);
            }
        }
        QCOMPARE(stored.officePhoneCan, "+33388123456");
        QTRY_COMPARE(phone->events, QStringList(EventName::contactsCreated));
    }

    void mapsTravelAsTexts()
    {
        const ListContact list{person("collaborationId=im@example.org")};
        const QDBusReply<QMapQStringQString> ids = phone->call("createLocalContacts", {"r", QVariant::fromValue(list)});
        QVERIFY2(ids.isValid(), qPrintable(ids.error().message()));
        QCOMPARE(ids.value().value("im@example.org"), "#CONTACT_1#");
        QCOMPARE(phone->code("updateContactsPreview", {"r", QStringList("#CONTACT_1#"), true}), 0);
        QCOMPARE(phone->contacts("getAllContactsInPreview", {0, 10}).size(), 1);
    }

    void aChangedSettingCounts()
    {
        phone->set("DirMaxContact", "1");
        QTRY_VERIFY(phone->create(person("A")) == 3); // the first ones may still go in
        const auto stored = phone->contacts("getLocalContacts", {0, -1}).size();
        phone->set("DirMaxContact", QString::number(stored + 10));
        QTRY_COMPARE(phone->create(person("B")), 0);
        QTRY_VERIFY(phone->events.contains(EventName::databaseFull));
    }

    void readOnlyModeComesAsAnEvent()
    {
        const auto tell = [this](bool readOnly) {
            phone->raise(EventName::readOnlyMode,
                         {{"moduleName", ModuleName::directory, true}, {"readOnly", readOnly, true}});
        };
        tell(true);
        QTRY_COMPARE(phone->code("deleteLocalContact", {"r", "nobody"}), 6);
        QCOMPARE(phone->create(person("A")), 6);
        tell(false);
        QTRY_COMPARE(phone->code("deleteLocalContact", {"r", "nobody"}), 2);
    }

    void noArgumentOfAnEventHarms()
    {
        registerDBusImpExpStatus();
        registerDBusKestinMode();
        registerDBusUpdateReport();
        registerDBusQMapQStringQStringList();
        phone->directory.terminate();
        phone->directory.setEnvironment("KESTIN_LOG_LEVEL", "7");
        QVERIFY(phone->startDirectory());
        const QStringList events =
            QString("WS_DIRECTORY_GET_CONTACT_PROFILE WS_DIRECTORY_GET_ATTRIBUTES WS_DIRECTORY_GET_NEXT_RESULTS "
                    "WS_DIRECTORY_GET_OPERATORS WS_DIRECTORY_SEARCH WS_DIRECTORY_SEARCH_BY_FULL_NAME "
                    "WS_DIRECTORY_STOP_SEARCH WS_DIRECTORY_CANONIZE_NUMBER WSManagerAvailabilityEvent "
                    "UDAAvailabilityEvent WS_DIRECTORY_GETATTRIBUTEBYCONTACTID READ_ONLY_MODE presentationLoaded")
                .split(' ');
        const QVariant variant = QVariant::fromValue(QDBusVariant("v"));
        const auto of = [](const auto &value) { return QVariant::fromValue(value); };
        // Records of (s), (i), (is), larger ones, lists of them, none of them; then what is no record.
        const QVariantMap numbers{{"a", 1}};
        const QMapQStringQString texts{{"a", "b"}};
        const QVariantList mixed{1, "a", variant};
        const QVariantList values{of(KestinMode()),
                                  of(ImpExpStatus()),
                                  of(UpdateReport()),
                                  of(Contact()),
                                  of(ListContact(1)),
                                  of(ListContactSummary(1)),
                                  of(ListContact()),
                                  of(QList<int>(2)),
                                  numbers,
                                  of(texts),
                                  mixed,
                                  QStringList("a"),
                                  QByteArray("bytes"),
                                  variant,
                                  of(QDBusVariant(of(Contact()))),
                                  1.5};
        for (const QString &event : events) {
            for (const QVariant &value : values) {
                ListEventArgument arguments;
                for (const char *name : {"reqId", "response", "status", "result", "moduleName", "readOnly"})
                    arguments.append({name, value, true});
                phone->raise(event, arguments);
            }
        }
        QCOMPARE(phone->code("getContactTypeById", {"##"}), ContactType::Remote);
        for (const QString &event : events) {
            const bool isOfWebService = event.startsWith("WS_") || event.endsWith("AvailabilityEvent");
            const QString own =
                event == EventName::readOnlyMode ? "::syncReadOnlyModeSlot" : "::slot_presentationLoaded";
            QVERIFY(phone->directory.waitForErrorOutput(isOfWebService ? "<7>Event " + event + " Received" : own));
        }
    }

    void oddInputIsKeptOrAnswered()
    {
        const QStringList names{"O'Hara'); DROP TABLE CONTACT; --",
                                "100%_$",
                                "two\nlines\t<3>forged",
                                "%1 %2 %n",
                                QString(1 << 20, 'x'),
                                QString::fromUcs4(U"\U0001F600 é"),
                                "' OR '1'='1"};
        for (qsizetype i = 0; i < names.size(); ++i) {
            Contact contact;
            contact.name = names.at(i);
            contact.officePhone = names.at(i).left(2000);
            contact.collaborationId = names.at(i).left(100);
            contact.misc.insert(names.at(i).left(50), names.at(i).left(50));
            QCOMPARE(phone->create(contact), 0);
            const QString id = QString("#CONTACT_%1#").arg(i + 1);
            const ListContact stored = phone->contacts("getContactById", {id});
            QCOMPARE(stored.value(0).name, names.at(i));
            QCOMPARE(stored.value(0).misc, contact.misc);
            QCOMPARE(phone->contacts("getContactToMerge", {contact.collaborationId, "", ""}).size(), 1);
            QCOMPARE(phone->code("updateContactsPreview", {"r", QStringList(names.at(i).left(100)), true}), 0);
            QCOMPARE(phone->code("deleteLocalContact", {"r", names.at(i).left(100)}), 2);
        }
        QCOMPARE(phone->contacts("getLocalContacts", {0, -1}).size(), names.size());
        QCOMPARE(phone->contacts("getContactToMerge", {"", "", ""}).size(), 0);
    }

    void aResultTooLargeIsAnError()
    {
        constexpr int contacts = 6;
        Contact contact = person("x");
        contact.email = QString(9 << 19, 'x');
        for (int i = 0; i < contacts; ++i)
            QCOMPARE(phone->create(contact), 0);
        const QDBusMessage answer = phone->call("getLocalContacts", {0, -1});
        QCOMPARE(answer.errorName(), "org.freedesktop.DBus.Error.LimitsExceeded");
        QVERIFY(answer.errorMessage().contains("ask for fewer at a time"));
        QCOMPARE(phone->contacts("getLocalContacts", {0, 2}).size(), 2);
        // A search that finds as much ends all the same, with the number of them.
        QCOMPARE(phone->code("startSearchContactByName", {"s", "x", contacts, true}), 0);
        QTRY_COMPARE_WITH_TIMEOUT(phone->ended, QStringList("s"), Program::limitMs);
        QCOMPARE(phone->nbResults, contacts);
        QVERIFY(
            phone->directory.waitForErrorOutput("<4>event DIR_SEARCH_COMPLETED_BY_NAME is sent without its summaries"));
        // One by number that finds a single contact of as much, likewise: the latin form of a name counts too.
        QCOMPARE(phone->create(person("officePhone=03 88 12 34 56|name=" + QString(13 << 20, 'x'))), 0);
        QCOMPARE(phone->code("startSearchContactByPhoneNumber", {"n", "+33388123456", true}), 0);
        QTRY_COMPARE_WITH_TIMEOUT(phone->ended.value(1), "n", Program::limitMs);
    }

    void wrongCallsAreErrors()
    {
        QCOMPARE(phone->call("createLocalContact", {"r", "no contact"}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(phone->call("getContactById", {}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(phone->call("syncReadOnlyModeSlot", {}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(phone->code("getContactTypeById", {"##"}), ContactType::Remote);
    }

    void changedDialingRulesCountFromTheNextStart()
    {
        const Contact contact = person("officePhone=0388123456|misc.company=Acme");
        QCOMPARE(phone->create(contact), 0);
        phone->set("DialingRuleCountryCode", "49");
        QCOMPARE(phone->telephony.terminate(), 0); // nobody there at the next start: it counts from the one after that
        QCOMPARE(phone->directory.terminate(), 0);
        QVERIFY(phone->startDirectory());
        QCOMPARE(phone->contacts("getLocalContacts", {"+33388123456"}).size(), 1);
        QVERIFY(phone->telephony.startAndWaitForName(ModuleName::telephony, phone->client));
        QCOMPARE(phone->directory.terminate(), 0);
        QVERIFY(phone->startDirectory());
        const ListContact found = phone->contacts("getLocalContacts", {"+49388123456"});
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().misc, contact.misc);
    }

    void aSecondServiceIsRefused_data()
    {
        const Rows<QString> row("reason");
        row("on the same bus",
            "<3>KestinDirectory cannot start: the name com.norlan.Kestin.KestinDirectory is already taken\n");
        row("on another bus", "kestindirectory.data cannot be opened: another process uses it\n");
    }

    void aSecondServiceIsRefused()
    {
        const QString stray = writeFile(phone->data.filePath("KestinDirectory/photos/photo_stray"));
        Program second("kestin-directory");
        std::optional<PrivateBus> other;
        if (QTest::currentDataTag() == QByteArray("on another bus"))
            other.emplace();
        QCOMPARE(second.run(), 1);
        QFETCH(const QString, reason);
        QVERIFY2(second.errorOutput().contains(reason), qPrintable(second.errorOutput()));
        QVERIFY(QFile::exists(stray)); // a start that goes on would sweep it
        QCOMPARE(phone->create(person("A")), 0);
    }

private:
    std::unique_ptr<PhoneUnderTest> phone;
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
