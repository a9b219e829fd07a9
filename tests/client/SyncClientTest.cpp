// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientDesk.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

/// The commands that have the directory read and write files, fetch photos and take over default contacts.
class SyncClientTest : public ClientDesk
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void exportedFileIsEditedAndImported();
    void whatCannotBeImportedIsTold();
    void nothingIsExportedTwice();
    void aDirectoryThatEndsOrIsSilentHangsNobody();
    void photoIsFetched();
    void defaultContactsAreReplaced();

private:
    /// The names of all contacts in their order.
    static QString names() { return client({u"list"_s, u"--json"_s}).names().join(u' '); }

    QProcess m_photoServer;
};

void SyncClientTest::init()
{
    m_photoServer.start(QStringLiteral(KESTIN_SAMPLES "/photo-server"), {QStringLiteral(KESTIN_SAMPLES)});
    QVERIFY(m_photoServer.waitForReadyRead(Program::limitMs));
    m_proxy = u"http://127.0.0.1:"_s + QString::fromUtf8(m_photoServer.readLine()).trimmed();
    ClientDesk::init();
    QByteArray cards;
    for (const char *name : {"Abel", "Berta", "Carl"})
        cards += "BEGIN:VCARD\nN:" + QByteArray(name) + "\nEND:VCARD\n";
    QCOMPARE(client({u"import"_s, u"-"_s}, cards).code, 0);
}

void SyncClientTest::cleanup()
{
    ClientDesk::cleanup();
    m_photoServer.kill();
    m_photoServer.waitForFinished();
}

void SyncClientTest::exportedFileIsEditedAndImported()
{
    const QString relative = QDir::current().relativeFilePath(path(u"a.xml"_s));
    const Outcome exported = client({u"sync"_s, u"export"_s, relative, u"--full"_s, u"--page-size"_s, u"2"_s});
    QCOMPARE(exported.out, u"exported to %1 with 3 contacts\n"_s.arg(path(u"a.xml"_s)));
    QFile file(path(u"a.xml"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll().replace("Abel", "Adam");
    const qsizetype secondPage = text.indexOf("</page>");
    QVERIFY(text.indexOf("</page>", secondPage + 1) > 0);
    // The third contact, alone on its page, goes and another comes.
    write(u"b.xml"_s, text.left(secondPage) + "<contact duid=\"\" puid=\"p\"><lastName>Dora</lastName></contact>"
                                              "</page></directory>");
    const Outcome import = client({u"sync"_s, u"import"_s, path(u"b.xml"_s), u"--json"_s});
    QCOMPARE(import.code, 0);
    QCOMPARE(import.json()[u"status"], u"Success"_s);
    QCOMPARE(names(), u"Adam Berta Dora"_s);
}

void SyncClientTest::whatCannotBeImportedIsTold()
{
    const QByteArray kept = "<directory><contact duid=\"#CONTACT_1#\" puid=\"\"/>";
    write(u"a.xml"_s, kept + "<contact duid=\"a\" puid=\"\"/><contact duid=\"b\" puid=\"\"/></directory>");
    const Outcome partial = client({u"sync"_s, u"import"_s, path(u"a.xml"_s)});
    QCOMPARE(partial.code, 1);
    QCOMPARE(partial.out, u"imported %1, with 2 problems\n"_s.arg(path(u"a.xml"_s)));
    QCOMPARE(partial.error.count(u"kestin-dir: not imported: The imported contact with duid="_s), 2);
    QCOMPARE(names(), u"Abel"_s);

    write(u"b.xml"_s, kept);
    for (const QString &name : {path(u"b.xml"_s), u"/no/such/file.xml"_s}) {
        const Outcome broken = client({u"sync"_s, u"import"_s, name});
        QCOMPARE(broken.code, 1);
        QCOMPARE(broken.out, QString());
        QVERIFY2(broken.error.startsWith(u"kestin-dir: the import failed: "_s), qPrintable(broken.error));
    }
    const Outcome noFolder = client({u"sync"_s, u"export"_s, u"/no/such/folder/a.xml"_s});
    QCOMPARE(noFolder.code, 1);
    QVERIFY2(noFolder.error.startsWith(u"kestin-dir: the export failed: "_s), qPrintable(noFolder.error));
    QCOMPARE(names(), u"Abel"_s);
}

void SyncClientTest::nothingIsExportedTwice()
{
    const QStringList command{u"sync"_s, u"export"_s, path(u"a.xml"_s)};
    QCOMPARE(client(command).code, 0);
    QVERIFY(QFile::remove(path(u"a.xml"_s)));
    const QString later = QDateTime::currentDateTimeUtc().addDays(1).toString(Qt::ISODate);
    const Outcome nothing = client(command + QStringList{u"--since"_s, later});
    QCOMPARE(nothing.code, 0);
    QVERIFY2(nothing.out.startsWith(u"nothing to do: "_s), qPrintable(nothing.out));
    QVERIFY(!QFile::exists(path(u"a.xml"_s)));
    QCOMPARE(client({u"settings"_s, u"set"_s, u"DirMaxContact"_s, u"500"_s}).code, 0); // the file tells it
    QVERIFY(QTest::qWaitFor([&] {
        return client(command + QStringList{u"--since"_s, later}).out.startsWith(u"exported to"_s);
    }));
    QCOMPARE(client(command + QStringList{u"--json"_s}).json()[u"contacts"], 3);
}

void SyncClientTest::aDirectoryThatEndsOrIsSilentHangsNobody()
{
    m_directory->freeze();
    const Outcome silent = client({u"sync"_s, u"import"_s, path(u"a.xml"_s), u"--timeout"_s, u"1"_s});
    QCOMPARE(silent.code, 5);
    QVERIFY2(silent.error.contains(u"did not tell the end within the limit"_s), qPrintable(silent.error));
    Program waiting(u"kestin-dir"_s, {u"sync"_s, u"export"_s, path(u"a.xml"_s)});
    waiting.start();
    m_directory->kill();
    QTRY_VERIFY_WITH_TIMEOUT(!waiting.isRunning(), Program::limitMs / 2);
    QVERIFY2(waiting.errorOutput().startsWith(u"kestin-dir: KestinDirectory "_s), qPrintable(waiting.errorOutput()));
}

void SyncClientTest::photoIsFetched()
{
    const Outcome fetched =
        client({u"photo"_s, u"#CONTACT_1#"_s, u"http://photos.example/portrait.png"_s, u"--wait"_s, u"--json"_s});
    QVERIFY2(fetched.code == 0, qPrintable(fetched.error));
    const QString photo = fetched.json()[u"photo"].toString();
    QCOMPARE(client({u"show"_s, u"#CONTACT_1#"_s, u"--json"_s}).json()[u"photo"], photo);
    QCOMPARE(fetched.json()[u"size"][u"width"], 100);
    QCOMPARE(fetched.json()[u"size"][u"height"], 100);
    const Outcome missing =
        client({u"photo"_s, u"#CONTACT_2#"_s, u"http://photos.example/no"_s, u"--wait"_s, u"--timeout"_s, u"1"_s});
    QCOMPARE(missing.code, 5);
    QVERIFY2(missing.error.contains(u"did not fetch the photo"_s), qPrintable(missing.error));
}

void SyncClientTest::defaultContactsAreReplaced()
{
    const QStringList command{u"defaults"_s, u"set"_s, u"-"_s, u"--json"_s};
    const QByteArray card = "BEGIN:VCARD\nN:Desk\\, help #1\nTEL;TYPE=WORK:7000\nADR:;;Main;Paris;;;\nEND:VCARD\n";
    for (int time = 0; time < 2; ++time) {
        // The second time nothing changes, so nobody tells anything.
        const Outcome set = client(command, card);
        QVERIFY2(set.code == 0, qPrintable(set.error));
        QCOMPARE(set.json()[0][u"contactId"], u"#DM_1#"_s);
        QCOMPARE(set.json()[0][u"name"], u"Desk, help #1"_s);
        QCOMPARE(set.json()[0][u"misc"][u"city"], u"Paris"_s);
    }
    const Outcome some = client(command + QStringList{u"--text"_s}, "1,,,No,anonymous,1,,\n2,,,Yes,1,1,,\n");
    QCOMPARE(some.code, 1);
    QVERIFY2(some.error.contains(u"holds 1 of the 2 contacts"_s), qPrintable(some.error));
    QCOMPARE(names(), u"Abel Berta Carl Yes"_s);
    QCOMPARE(client({u"defaults"_s, u"set"_s, u"--none"_s, u"--json"_s}).json().array(), QJsonArray());
    QCOMPARE(names(), u"Abel Berta Carl"_s);
}

QTEST_GUILESS_MAIN(SyncClientTest)
#include "SyncClientTest.moc"
