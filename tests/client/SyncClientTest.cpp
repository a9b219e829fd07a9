// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientFixture.h"

/// The commands that have the directory read and write files, fetch photos and take over default contacts.
class SyncClientTest : public ClientFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_photoServer.start(KESTIN_SAMPLES "/photo-server", {KESTIN_SAMPLES});
        QVERIFY(m_photoServer.waitForReadyRead(Program::limitMs));
        m_proxy = "http://127.0.0.1:" + QString::fromUtf8(m_photoServer.readLine()).trimmed();
        ClientFixture::init();
        QByteArray cards;
        for (const char *name : {"Abel", "Berta", "Carl"})
            cards += "BEGIN:VCARD\nN:" + QByteArray(name) + "\nEND:VCARD\n";
        QCOMPARE(client("import -", cards).code, 0);
    }

    void cleanup()
    {
        ClientFixture::cleanup();
        m_photoServer.kill();
        m_photoServer.waitForFinished();
    }

    void exportedFileIsEditedAndImported()
    {
        const QString relative = QDir::current().relativeFilePath(path("a.xml"));
        QCOMPARE(client("sync export --full --page-size 2", {relative}).out,
                 "exported to " + path("a.xml") + " with 3 contacts\n");
        const QByteArray text = contentOf(path("a.xml")).replace("Abel", "Adam");
        const qsizetype secondPage = text.indexOf("</page>");
        QVERIFY(text.indexOf("</page>", secondPage + 1) > 0);
        // The third contact, alone on its page, goes and another comes.
        write("b.xml", text.left(secondPage) + "<contact duid=\"\" puid=\"p\"><lastName>Dora</lastName></contact>"
                                               "</page></directory>");
        const QJsonDocument plan = client("sync import --json --dry-run", {path("b.xml")}).json();
        QCOMPARE(plan["created"].toInt() * 1000 + plan["changed"].toInt() * 100 + plan["removed"].toInt() * 10 +
                     plan["kept"].toInt(),
                 1111);
        QCOMPARE(names(), "Abel Berta Carl");
        const Outcome import = client("sync import --json", {path("b.xml")});
        QVERIFY(import.code == 0 && import.value("status") == "Success");
        QCOMPARE(names(), "Adam Berta Dora");
    }

    void whatCannotBeImportedIsTold()
    {
        const QByteArray kept = "<directory><contact duid=\"#CONTACT_1#\" puid=\"\"/>";
        write("a.xml", kept + "<contact duid=\"a\" puid=\"\"/><contact duid=\"b\" puid=\"\"/></directory>");
        const Outcome partial = client("sync import --force", {path("a.xml")});
        QCOMPARE(partial.code, 1);
        QCOMPARE(partial.out, "imported " + path("a.xml") + ", with 2 problems\n");
        QCOMPARE(partial.error.count("kestin-dir: not imported: The imported contact with duid="), 2);
        write("b.xml", kept);
        for (const QString &name : {path("b.xml"), QString("/no/such/file.xml")}) {
            const Outcome broken = client("sync import --force", {name});
            QVERIFY(broken.ended(1, "kestin-dir: the import failed: ") && broken.out.isEmpty());
        }
        QVERIFY(client("sync import", {path("b.xml")}).ended(1, "kestin-dir: the import failed: "));
        QVERIFY(client("sync import /no/such/file.xml").ended(4, "not known whose contacts it holds: No such file"));
        QVERIFY(client("sync export /no/such/folder/a.xml").ended(1, "kestin-dir: the export failed: "));
        QCOMPARE(names(), "Abel");
    }

    void anImportBesideAnotherIsRefused()
    {
        const QByteArray one = "<contact duid='' puid='p'><officePhone>0199007700</officePhone></contact></directory>";
        write("a.xml", "<directory>" + one);
        m_phone->telephony.freeze(); // it goes on until telephony counts as silent
        const QDBusPendingCall first = m_phone->asyncCall("importFromXml", {path("a.xml")});
        QVERIFY(client("sync import --force", {path("a.xml")}).ended(1, "refused it: another import is going on"));
        QVERIFY(!first.isFinished());
        m_phone->telephony.thaw();
        QTRY_VERIFY_WITH_TIMEOUT(first.isFinished(), Program::limitMs);
        QCOMPARE(client("sync import --force", {path("a.xml")}).code, 0);
    }

    void whatTheFileCannotHoldIsTold()
    {
        const QString sql = "import sqlite3; c = sqlite3.connect('%1'); "
                            "c.execute(\"UPDATE CONTACT SET puid = char(1) WHERE name = 'Abel'\"); c.commit()";
        QCOMPARE(QProcess::execute("python3", {"-c", sql.arg(m_phone->databasePath())}), 0);
        QCOMPARE(client("add --last-name", QStringList("D\u0001")).code, 0);
        const Outcome exported = client("sync export --full --json", {path("a.xml")});
        QVERIFY(exported.ended(1, "1 contacts of the phone are not in "));
        QVERIFY(exported.ended(1, "1 contacts hold characters that the file cannot"));
        QCOMPARE(exported.json()["contacts"].toInt(), 3);
        QCOMPARE(client("sync import", {path("a.xml")}).code, 0);
        QCOMPARE(names(), "Berta Carl D\ufffd");
    }

    void aFileOfAnotherPhoneIsNotImported_data()
    {
        const Rows<QByteArray, QByteArray, QString> row; // what stands in its place
        row("another device", "device=\"", "device=\"other-", "it is from the device \"other-");
        row("an id that is not here", "#CONTACT_2#", "#CONTACT_7#", "1 of its contacts have ids that are not");
        row("another person", "<lastName>Abel<", "<lastName>Zoe<", "1 of its contacts have nothing in common");
    }

    void aFileOfAnotherPhoneIsNotImported()
    {
        const auto [from, to, reason] = currentRow<QByteArray, QByteArray, QString>();
        QCOMPARE(client("sync export --full", {path("a.xml")}).code, 0);
        const QByteArray text =
            contentOf(path("a.xml")).replace("<lastModificationDate>20", "<lastModificationDate>19");
        write("a.xml", QByteArray(text).replace(from, to));
        QVERIFY(client("sync import", {path("a.xml")}).ended(1, reason));
        QVERIFY(client("sync import --dry-run", {path("a.xml")}).ended(1, "it needs --force: " + reason));
        QCOMPARE(client("sync import --dry-run --force", {path("a.xml")}).code, 0);
        QCOMPARE(names(), "Abel Berta Carl");
        write("a.xml", text);
        QCOMPARE(client("sync import", {path("a.xml")}).code, 0);
        write("a.xml", "<directory/>");
        QVERIFY(client("sync import", {path("a.xml")}).ended(1, "it lists nobody of this phone"));
    }

    void nothingIsExportedTwice()
    {
        const QString command = "sync export " + path("a.xml");
        QCOMPARE(client(command).code, 0);
        QVERIFY(QFile::remove(path("a.xml")));
        const QString later = command + " --since " + QDateTime::currentDateTimeUtc().addDays(1).toString(Qt::ISODate);
        const Outcome nothing = client(later);
        QVERIFY(nothing.code == 0 && nothing.out.startsWith("nothing to do: ") && !QFile::exists(path("a.xml")));
        QCOMPARE(client("settings set DirMaxContact 500").code, 0); // the file tells it
        QVERIFY(QTest::qWaitFor([&] { return client(later).out.startsWith("exported to"); }));
        QCOMPARE(client(command + " --json").json()["contacts"].toInt(), 3);
    }

    void aDirectoryThatEndsOrIsSilentHangsNobody()
    {
        m_phone->directory.freeze();
        QVERIFY(client("sync import --force --timeout 1", {path("a.xml")})
                    .ended(5, "did not tell the end within the limit"));
        Program waiting("kestin-dir", {"sync", "export", path("a.xml")});
        waiting.start();
        m_phone->directory.kill();
        QTRY_VERIFY_WITH_TIMEOUT(!waiting.isRunning(), Program::limitMs / 2);
        QVERIFY2(waiting.errorOutput().startsWith("kestin-dir: KestinDirectory "), qPrintable(waiting.errorOutput()));
    }

    void photoIsFetched()
    {
        const Outcome fetched = client("photo #CONTACT_1# http://photos.example/portrait.png --wait --json");
        QVERIFY(fetched.ended(0, ""));
        QCOMPARE(client("show #CONTACT_1# --json").value("photo"), fetched.value("photo"));
        const QJsonValue size = fetched.json()["size"];
        QVERIFY(size["width"].toInt() == 100 && size["height"].toInt() == 100);
        const Outcome missing = client("photo #CONTACT_2# http://photos.example/no --wait --timeout 1");
        QVERIFY(missing.ended(5, "did not fetch the photo"));
    }

    void defaultContactsAreReplaced()
    {
        const QByteArray card = "BEGIN:VCARD\nN:Desk\\, help #1\nTEL;TYPE=WORK:7000\nADR:;;Main;Paris;;;\nEND:VCARD\n";
        for (int time = 0; time < 2; ++time) { // the second time nothing changes, so nobody tells anything
            const Outcome set = client("defaults set - --json", card);
            QVERIFY(set.ended(0, ""));
            const QJsonValue contact = set.json()[0];
            QCOMPARE(contact["contactId"].toString(), "#DM_1#");
            QCOMPARE(contact["name"].toString() + contact["misc"]["city"].toString(), "Desk, help #1Paris");
        }
        const Outcome some = client("defaults set - --json --text", "1,,,No,anonymous,1,,\n2,,,Yes,1,1,,\n");
        QVERIFY(some.ended(1, "holds 1 of the 2 contacts"));
        QCOMPARE(names(), "Abel Berta Carl Yes");
        QCOMPARE(client("defaults set --none --json").json().array(), QJsonArray());
        QCOMPARE(names(), "Abel Berta Carl");
    }

private:
    QProcess m_photoServer;
};

QTEST_GUILESS_MAIN(SyncClientTest)
#include "SyncClientTest.moc"
