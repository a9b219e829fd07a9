// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

#include <QRandomGenerator>

#include <optional>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool keepsFreedMemory = true;
#else
constexpr bool keepsFreedMemory = false;
#endif

QVariantList byName(const QString &searchId, const QString &name, bool localOnly = false)
{
    return {searchId, name, 10, localOnly};
}

/// A file with 300 people who are found by their first names, "M…".
QString manyPeople(const QTemporaryDir &folder)
{
    QByteArray people;
    for (int i = 0; i < 300; ++i)
        people += QString("dn: uid=m%1,dc=example,dc=org\nobjectClass: inetOrgPerson\nuid: m%1\ncn: M%1 X\n"
                          "sn: X\ngivenName: M%1\ntelephoneNumber: +33 1 99 00 %1\n\n")
                      .arg(i, 4, 10, QChar('0'))
                      .toUtf8();
    return writeFile(folder.filePath("many.ldif"), people);
}

} // namespace

/// Searches through the running service, with a company directory that is there, slow, or gone.
class ServiceSearchesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        phone = std::make_unique<PhoneUnderTest>();
        phone->startPeers();
        QVERIFY(phone->company.startAndWaitForName(ModuleName::webServiceManager, phone->client));
        QVERIFY(phone->startDirectory());
        QCOMPARE(phone->create(person("firstName=Zoë|name=Martin")), 0);
        // The right is asked for at the start, and again when the company directory says that it can be asked.
        int probe = 0;
        QTRY_VERIFY(isRemote(QString("probe%1").arg(++probe)));
        phone->events.clear();
    }
    void cleanup() { phone.reset(); }

    void bothSidesAreFound()
    {
        phone->call("startSearchContactByName", byName("s", "mar"));
        QVERIFY(complete("s"));
        QCOMPARE(phone->firstResults.value("s").value(0).name, "Martin");
        const ListContactSummary found = results("s");
        QVERIFY(found.size() > 1);
        QCOMPARE(found.first().type, ContactType::Local);
        QVERIFY(found.last().contactId.endsWith("##"));
        const QDBusReply<Contact> whole = phone->call("getContactFromSearch", {"s", found.last().contactId});
        QCOMPARE(whole.value().contactId, found.last().contactId);
        phone->call("startSearchContactByPhoneNumber", {"n", whole.value().officePhoneCan, false});
        QVERIFY(complete("n"));
    }

    void aDirectoryThatHangsAndDiesDelaysNobody()
    {
        constexpr int soonMs = 4500; // a call waits for five seconds, a search for ten
        phone->company.freeze();
        phone->call("startSearchContactByName", byName("s", "mar"));
        QTRY_VERIFY_WITH_TIMEOUT(!phone->firstResults.value("s").isEmpty(), soonMs);
        QCOMPARE(phone->code("getContactTypeById", {"##"}), ContactType::Remote);
        phone->company.kill();
        QVERIFY(complete("s", soonMs));
        QCOMPARE(results("s").value(0).name, "Martin");
        phone->call("startSearchContactByPhoneNumber", {"n", "+33199000000", false});
        QVERIFY(complete("n", soonMs));
        QVERIFY(phone->company.startAndWaitForName(ModuleName::webServiceManager, phone->client));
        int probe = 0;
        QTRY_VERIFY(isRemote(QString("back%1").arg(++probe)));
    }

    void searchesAtRandomLeaveNothingBehind()
    {
        // By hand ten minutes: KESTIN_SEARCH_SECONDS=600 QTEST_FUNCTION_TIMEOUT=900000; a minute under each sanitizer.
        const int seconds = qEnvironmentVariableIntValue("KESTIN_SEARCH_SECONDS");
        const QDeadlineTimer end((seconds > 0 ? seconds : 8) * 1000);
        phone->set("DirMaxContact", "50"); // or the results grow with the contacts
        Program &company = phone->company;
        company.kill();
        company.setArguments({"--ldif", manyPeople(phone->data), "--page-size", "100"});
        QVERIFY(company.startAndWaitForName(ModuleName::webServiceManager, phone->client));
        const int threadsBefore = threads();
        const qsizetype filesBefore = openFiles();
        int residentEarly = 0;
        int searches = 0;
        auto *random = QRandomGenerator::global();
        for (int i = 0; !end.hasExpired(); ++i) {
            if (searches <= 100)
                residentEarly = residentKB();
            std::optional<QDBusPendingCall> call;
            // Most clients take a new id each time, some the same again.
            const QString id = random->bounded(4) > 0 ? QString("c%1").arg(i) : QString("again");
            switch (random->bounded(8)) {
            case 0:
                call = phone->asyncCall("purgeSearchResults", {id});
                break;
            case 1:
                call =
                    phone->asyncCall("startSearchContactByPhoneNumber", {id, "+33199000000", random->bounded(2) == 0});
                break;
            case 2:
                call = phone->asyncCall("createLocalContact",
                                        {"r", QVariant::fromValue(person("firstName=A|name=Mar" + id))});
                break;
            case 3:
                call =
                    phone->asyncCall("deleteLocalContact", {"r", QString("#CONTACT_%1#").arg(2 + random->bounded(50))});
                break;
            case 4:
                call = phone->asyncCall("getSearchResults", {id, 0, 5});
                break;
            default:
                phone->ended.clear();
                phone->firstResults.clear();
                phone->events.clear();
                call = phone->asyncCall("startSearchContactByName", byName(id, "m", random->bounded(3) == 0));
                if (random->bounded(2) == 0) // otherwise the next one replaces it
                    searches += int(complete(id));
            }
            if (i % 400 == 399) {
                company.kill();
                company.startAndWaitForName(ModuleName::webServiceManager, phone->client);
            }
            if (random->bounded(2) == 0)
                call->waitForFinished(); // otherwise the next one follows at once
            QCoreApplication::processEvents();
            QVERIFY2(phone->directory.isRunning(), qPrintable(phone->directory.errorOutput()));
        }
        phone->call("startSearchContactByName", byName("last", "mar"));
        QVERIFY(complete("last"));
        QCOMPARE(results("last").value(0).type, ContactType::Local);
        QTRY_VERIFY(threads() <= threadsBefore); // the start may still have had one
        // SQLite keeps the descriptor of a connection that was closed beside an open one, and takes it for the next:
        // one more for each worker that ever overlapped with another, never one for each search.
        constexpr int overlaps = 4;
        QTRY_VERIFY(openFiles() <= filesBefore + overlaps);
        qInfo("%d searches, resident %d kB then %d kB, %d threads, %d files", searches, residentEarly, residentKB(),
              threads(), int(openFiles()));
        if (searches > 100 && !keepsFreedMemory)
            QVERIFY(residentKB() <= residentEarly + 2048);
        QCOMPARE(phone->directory.terminate(), 0);
    }

private:
    ListContactSummary results(const QString &searchId)
    {
        return QDBusReply<ListContactSummary>(phone->call("getSearchResults", {searchId, 0, -1})).value();
    }
    bool complete(const QString &searchId, int limitMs = 25000)
    {
        return QTest::qWaitFor([&] { return phone->ended.contains(searchId); }, limitMs);
    }
    bool isRemote(const QString &searchId)
    {
        phone->call("startSearchContactByName", byName(searchId, "a"));
        complete(searchId);
        const ListContactSummary found = results(searchId);
        return std::any_of(found.cbegin(), found.cend(),
                           [](const ContactSummary &contact) { return contact.type == ContactType::Remote; });
    }
    int threads() const { return int(QDir(QString("/proc/%1/task").arg(phone->directory.processId())).count()); }
    qsizetype openFiles() const
    {
        return QDir(QString("/proc/%1/fd").arg(phone->directory.processId()))
            .entryList(QDir::System | QDir::Files)
            .size();
    }

    int residentKB() const
    {
        return contentOf(QString("/proc/%1/statm").arg(phone->directory.processId())).split(' ').value(1).toInt() * 4;
    }

    std::unique_ptr<PhoneUnderTest> phone;
};

QTEST_GUILESS_MAIN(ServiceSearchesTest)
#include "ServiceSearchesTest.moc"
