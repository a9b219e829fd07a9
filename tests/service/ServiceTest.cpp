// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

#include "platform/records/DirectoryCodes.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/UpdateReport.h"

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

    void noArgumentOfAnEventHarms()
    {
        phone->directory.terminate();
        phone->directory.setEnvironment("KESTIN_LOG_LEVEL", "7");
        QVERIFY(phone->startDirectory());
        using namespace EventName;
        const QStringList events{
            wsContactProfile,       wsAttributes, wsNextResults,     wsOperators,           wsSearch,
            wsSearchByFullName,     wsStopSearch, wsCanonizeNumber,  wsManagerAvailability, wsDirectoryAvailability,
            wsAttributeByContactId, readOnlyMode, presentationLoaded};
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

    void aResultTooLargeIsAnError()
    {
        constexpr int half = 75;
        Contact contact;
        contact.firstName = contact.name = contact.email = QString(60000, 'x');
        for (int i = 0; i < 2; ++i)
            phone->call("createLocalContacts", {"r", QVariant::fromValue(ListContact(half, contact))});
        const QDBusMessage answer = phone->call("getLocalContacts", {0, -1});
        QCOMPARE(answer.errorName(), "org.freedesktop.DBus.Error.LimitsExceeded");
        QVERIFY(answer.errorMessage().contains("ask for fewer at a time"));
        QCOMPARE(phone->contacts("getLocalContacts", {0, half}).size(), half);
        // A search that finds as much ends all the same, with the number of them.
        phone->directory.terminate();
        QVERIFY(phone->startDirectory());
        QCOMPARE(phone->code("startSearchContactByName", {"s", "x", 2 * half, true}), ResultCode::done);
        QTRY_COMPARE_WITH_TIMEOUT(phone->ended, QStringList("s"), Program::limitMs);
        QCOMPARE(phone->nbResults, 2 * half);
        QVERIFY(
            phone->directory.waitForErrorOutput("<4>event DIR_SEARCH_COMPLETED_BY_NAME is sent without its summaries"));
        // One by number that finds a single contact of as much, likewise: the latin form of a name counts too.
        contact.officePhone = "03 88 12 34 56";
        for (int i = 0; i < 390; ++i)
            contact.misc.insert(QString::number(i), QString(64000, 'x'));
        QCOMPARE(phone->create(contact), ResultCode::done);
        QCOMPARE(phone->code("startSearchContactByPhoneNumber", {"n", "+33388123456", true}), ResultCode::done);
        QTRY_COMPARE_WITH_TIMEOUT(phone->ended.value(1), "n", Program::limitMs);
    }

    void aTextTooLongIsRefused()
    {
        const QString refusal = "createLocalContact: a text of a contact is longer than 64 KiB";
        Contact contact = person("x");
        contact.misc.insert("note", QString(32768, u'\u00e9'));
        QCOMPARE(phone->create(contact), ResultCode::done);
        contact.misc["note"] += 'x';
        QCOMPARE(phone->call("createLocalContact", {"r", QVariant::fromValue(contact)}).errorMessage(), refusal);
        contact = person("x");
        contact.photo = QString(65537, 'x');
        QCOMPARE(phone->call("createLocalContact", {"r", QVariant::fromValue(contact)}).errorMessage(), refusal);
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
        const Rows<QString> row;
        row("on the same bus",
            "<3>KestinDirectory cannot start: the name com.norlan.Kestin.KestinDirectory is already taken\n");
        row("on another bus", "kestindirectory.data cannot be opened: another process uses it\n");
    }

    void aSecondServiceIsRefused()
    {
        const auto [reason] = currentRow<QString>();
        const QString stray = writeFile(phone->data.filePath("KestinDirectory/photos/photo_stray"));
        Program second("kestin-directory");
        std::optional<PrivateBus> other;
        if (QTest::currentDataTag() == QByteArray("on another bus"))
            other.emplace();
        QCOMPARE(second.run(), 1);
        QVERIFY2(second.errorOutput().contains(reason), qPrintable(second.errorOutput()));
        QVERIFY(QFile::exists(stray)); // a start that goes on would sweep it
        QCOMPARE(phone->create(person("A")), 0);
    }

private:
    std::unique_ptr<PhoneUnderTest> phone;
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
