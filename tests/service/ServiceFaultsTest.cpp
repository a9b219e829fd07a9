// SPDX-License-Identifier: Apache-2.0
#include "platform/records/DirectoryCodes.h"
#include "tests/service/FullDisk.h"
#include "tests/support/PhoneUnderTest.h"

#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace {

/// A contact of which half is easily told: the name, the number and both pairs carry the same text.
Contact marked(const QString &mark)
{
    return person("name=" + mark + "|officePhone=" + mark + "|misc.first=" + mark + "|misc.second=" + mark);
}

bool isWhole(const Contact &contact)
{
    return contact.misc.value("first") == contact.name && contact.misc.value("second") == contact.name &&
           contact.misc.size() == 2 && !contact.latinName.isEmpty();
}

/// Rows of MISC without their contact, read from the file itself.
int orphanPairs(const QString &path)
{
    int count = -1;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "orphans");
        database.setDatabaseName(path);
        database.open();
        QSqlQuery query("SELECT COUNT(*) FROM MISC WHERE contactId NOT IN (SELECT contactId FROM CONTACT)", database);
        if (query.next())
            count = query.value(0).toInt();
    }
    QSqlDatabase::removeDatabase("orphans");
    return count;
}

} // namespace

/// The service when something breaks.
class ServiceFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { phone = std::make_unique<PhoneUnderTest>(); }
    void cleanup() { phone.reset(); }

    void answeredWritesSurviveAKill()
    {
        phone->startPeers();
        phone->set("DirMaxContact", "100000");
        QMap<QString, QString> expected; // id and mark of every contact whose last write was answered 0
        constexpr int rounds = 20;
        for (int round = 0; round < rounds; ++round) {
            QVERIFY(phone->startDirectory());
            const ListContact before = phone->contacts("getLocalContacts", {0, -1});
            // Every kind of write in flight at once, one a contact, so that whatever is answered tells its last state.
            struct Write
            {
                QString id;
                QString mark;
                bool isStored; ///< whether a contact with this mark is there afterwards, or none is
                QDBusPendingCall answer;
            };
            QList<Write> writes;
            for (int i = 0; i < 12; ++i) {
                const QString mark = QString("%1%2").arg(1000 + round).arg(1000 + i);
                writes.append(
                    {{}, mark, true, phone->asyncCall("createLocalContact", {"r", QVariant::fromValue(marked(mark))})});
                if (i >= before.size() / 2)
                    continue;
                Contact changed = marked(mark + '1');
                changed.contactId = before.at(i).contactId;
                writes.append({changed.contactId, changed.name, true,
                               phone->asyncCall("modifyLocalContact", {"r", QVariant::fromValue(changed)})});
                if (i % 3 != 0)
                    continue;
                const Contact gone = before.at(before.size() - 1 - i);
                writes.append(
                    {gone.contactId, gone.name, false, phone->asyncCall("deleteLocalContact", {"r", gone.contactId})});
            }
            for (const Write &write : writes)
                expected.remove(write.id); // undecided until answered
            writes[(2 * round) % writes.size()].answer.waitForFinished();
            phone->directory.kill();
            QVERIFY(phone->startDirectory());
            QSet<QString> names;
            QMap<QString, QString> stored;
            const ListContact after = phone->contacts("getLocalContacts", {0, -1});
            for (const Contact &contact : after) {
                QVERIFY2(isWhole(contact), qPrintable(contact.contactId));
                names.insert(contact.name);
                stored.insert(contact.contactId, contact.name);
            }
            for (Write &write : writes) {
                write.answer.waitForFinished();
                const QDBusPendingReply<int> reply = write.answer;
                if (reply.isError() || reply.value() != 0)
                    continue;
                QVERIFY2(names.contains(write.mark) == write.isStored, qPrintable(write.mark));
            }
            for (auto kept = expected.cbegin(); kept != expected.cend(); ++kept)
                QCOMPARE(stored.value(kept.key()), kept.value());
            expected = stored;
            QCOMPARE(orphanPairs(phone->databasePath()), 0);
            phone->directory.kill();
        }
        QVERIFY(expected.size() >= rounds);
    }

    void aFullDiskRefusesAndRecovers()
    {
        FullDisk disk(phone->directory, phone->data.path());
        phone->startPeers();
        QVERIFY(phone->startDirectory());
        QCOMPARE(phone->create(marked("100001")), 0);
        disk.leave(100000);
        // What does not fit is refused, alone and in a list.
        const QString large(60000, 'x'); // in four texts of the contact
        QCOMPARE(phone->create(marked(large)), ResultCode::writeFailed);
        const ListContact list{marked(large), marked("100002")};
        phone->call("createLocalContacts", {"r", QVariant::fromValue(list)});
        QVERIFY(phone->directory.waitForErrorOutput("<3>Error while executing query"));
        const ListContact kept = phone->contacts("getLocalContacts", {0, -1});
        for (const Contact &contact : kept)
            QVERIFY(isWhole(contact) && contact.name.size() == 6);
        QVERIFY(!kept.isEmpty());
        disk.empty();
        QCOMPARE(phone->create(marked("100003")), 0);
        QCOMPARE(phone->contacts("getLocalContacts", {0, -1}).size(), kept.size() + 1);
    }

    void aSettingsManagerThatHangsDelaysTheStartAndCountsLater()
    {
        phone->startPeers();
        phone->set("DirectoryDefaultContacts", "1,,,A,,0,,");
        phone->settings.freeze();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(phone->startDirectory());
        const qint64 start = timer.elapsed();
        QVERIFY2(start > 5000 && start < 40000, qPrintable(QString::number(start))); // 17 settings: 5 s and 16 s
        QCOMPARE(phone->create(marked("1")), ResultCode::capacityReached);
        phone->settings.thaw();
        QTRY_COMPARE_WITH_TIMEOUT(phone->create(marked("1")), 0, Program::limitMs);
        QTRY_COMPARE(phone->contacts("getContactsByType", {ContactType::DeviceManagement}).size(), 1);
    }

    void noiseIsSetAside()
    {
        const QByteArray noise = QByteArray("no database").repeated(1000);
        const QFileInfo database(writeFile(phone->databasePath(), noise));
        const QString photo = writeFile(phone->data.filePath("KestinDirectory/photos/photo_1"));
        phone->startPeers();
        QVERIFY(phone->startDirectory());
        QCOMPARE(phone->create(marked("1")), 0);
        const QFileInfoList kept = database.dir().entryInfoList({"*.set-aside-*"});
        QCOMPARE(kept.size(), 1);
        const QString copy = kept.first().filePath();
        QCOMPARE(contentOf(copy), noise);
        QVERIFY(phone->directory.errorOutput().contains(copy));
        for (const bool isKept : {true, false}) { // a photo that it may name stays as long as it does
            QCOMPARE(phone->directory.terminate(), 0);
            QVERIFY(isKept || QFile::remove(copy));
            QVERIFY(phone->startDirectory());
            QCOMPARE(QFile::exists(photo), isKept);
        }
    }

    void withoutABusItEnds()
    {
        {
            auto bus = std::make_unique<PrivateBus>();
            Program service("kestin-directory");
            const QDBusConnection client = bus->connection("watcher");
            QVERIFY(service.startAndWaitForName(ModuleName::directory, client));
            bus.reset();
            QVERIFY(service.waitForErrorOutput("<3>KestinDirectory ends: the message bus closed the connection"));
            QCOMPARE(service.waitForEnd(), 1);
        }
        Program service("kestin-directory"); // the address of the bus that has just gone is still in the environment
        QCOMPARE(service.run(), 1);
        QVERIFY(service.errorOutput().contains("<3>KestinDirectory cannot start: the message bus cannot be reached"));
    }

private:
    std::unique_ptr<PhoneUnderTest> phone;
};

QTEST_GUILESS_MAIN(ServiceFaultsTest)

#include "ServiceFaultsTest.moc"
