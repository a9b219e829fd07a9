// SPDX-License-Identifier: Apache-2.0
#include "tests/peers/wsmanager/LdapStub.h"
#include "tests/peers/wsmanager/Peer.h"
#include "tests/peers/wsmanager/Slapd.h"
#include "tests/support/Person.h"
#include "tests/support/Test.h"

#include <csignal>

#include <sys/stat.h>

namespace {

const QString sample = KESTIN_SAMPLES "/company.ldif";
const QString byName = "udaSearchByFullName";
const QString base = "dc=example,dc=org";

QStringList idsOf(const QList<Peer::Packet> &packets)
{
    QStringList ids;
    for (const Peer::Packet &packet : packets) {
        for (const Contact &contact : packet.contacts)
            ids.append(contact.contactId);
    }
    ids.sort();
    return ids;
}

/// A configuration in a file of its own.
class Config
{
public:
    explicit Config(const QByteArray &text)
    {
        writeFile(m_folder.filePath("ws.ini"),
                  "[directory]\n" + QByteArray(text.contains("\nbase=") ? "" : "base=dc=example,dc=org\n") + text +
                      "\n");
    }
    QStringList arguments() const { return {"--config", m_folder.filePath("ws.ini")}; }
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile(writeFile(m_folder.filePath(name), text)).setPermissions(QFile::ReadOwner);
        return m_folder.filePath(name);
    }

private:
    QTemporaryDir m_folder;
};

/// A directory server with the sample company, and the manager before it with what the configuration says more.
struct Served
{
    explicit Served(const ClientBus &bus, const QByteArray &more = {}, const QByteArray &limits = {})
        : server("", limits)
        , isUp(server.start())
        , config("url=" + server.url().toUtf8() + '\n' + more)
        , peer(bus, config.arguments())
    {
    }
    /// Starts a search of which the server gives the first packet.
    bool begin(const QString &searchId)
    {
        return isUp && peer.start(byName, {searchId, "ma"}) && peer.next(searchId).status == PacketStatus::More;
    }

    Slapd server;
    const bool isUp;
    Config config;
    Peer peer;
};

} // namespace

/// What is asked of a company directory; and the web-service manager as a process, over a file and over a real server.
class WSManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("KESTIN_LOG_LEVEL", "7"); }

    void fileAndServerFindTheSame()
    {
        const QList<std::pair<QString, int>> names{
            {"jean", 1}, {"JR ann", 1},   {"L'étoile*", 1}, {"Mühlen", 1},  {"back\\", 1},
            {"*", 0},    {")(uid=*", 0},  {"(jeannot)", 1}, {"ühlen", 0},   {"юлия", -1},
            {"ma", -1},  {"BRÉC ma", -1}, {" Zo  mü ", 1},  {"健太郎", -1}, {"plus+equals=", 1}};
        using Criteria = std::pair<QStringList, int>; // attribute, operator, value
        const QList<Criteria> criteria{{{"EMAIL", "EQUAL", "Ann.Comma@brumaire.example"}, 1},
                                       {{"TELEPHONENUMBER", "EQUAL", "+33199007567"}, 1},
                                       {{"TELEPHONENUMBER", "EQUAL", "+33 1-99 007567"}, 1},
                                       {{"TELEPHONENUMBER", "EQUAL", "99007567"}, 0},
                                       {{"officePhone", "BEGINS", "+33353"}, -1},
                                       {{"city", "CONTAINS", "ondo"}, -1},
                                       {{"misc.city", "ENDS", "LIN"}, -1},
                                       {{"EMAIL", "CONTAINS", "*"}, 0}};
        const auto ask = [&](const QStringList &arguments) {
            Peer peer(m_bus, arguments);
            QList<QStringList> found;
            for (const auto &[name, count] : names) {
                peer.start(byName, {name, name});
                found.append(idsOf(peer.all(name)));
            }
            for (const auto &[criterion, count] : criteria) {
                peer.start("udaSearch", {"id", "AND", criterion.mid(0, 1), criterion.mid(1, 1), criterion.mid(2)});
                found.append(idsOf(peer.all("id")));
            }
            return found;
        };
        Slapd server;
        QVERIFY(server.start());
        const QList<QStringList> inFile = ask({"--ldif", sample, "--base", base});
        const QList<QStringList> onServer = ask({"--url", server.url(), "--base", base});
        for (qsizetype i = 0; i < inFile.size(); ++i) {
            const qsizetype criterion = i - names.size();
            const int expected = criterion < 0 ? names[i].second : criteria[criterion].second;
            const QString asked = criterion < 0 ? names[i].first : criteria[criterion].first.join(' ');
            QVERIFY2(inFile[i] == onServer[i], qPrintable(asked));
            QVERIFY2(expected < 0 ? !inFile[i].isEmpty() : inFile[i].size() == expected, qPrintable(asked));
        }
    }

    void entryBecomesContact()
    {
        const Config config(
            "ldif=people.ldif\n[attributes]\npersonalFax=pager\nmisc.floor=roomNumber, departmentNumber\n"
            "personalHome=\n");
        const QString ldif = config.write(
            "people.ldif",
            "version: 1\n\ndn: cn=Zo\\C3\\AB [1]\\, Jr.,OU=people, dc=example,dc=org\nobjectClass: inetOrgPerson\n"
            "cn:: Wm/DqyBNw7xsbGVy\nsn:: TcO8bGxlcg==\ngivenName;lang-de:: Wm/Dqw==\nmail: zoe@example.org\n"
            "mail: second@example.org\ntelephoneNumber: +33 1 99 00 00 01\nmobile: +33 6 39 98 00 01\n"
            "homePhone: +33 1 99 00 00 02\npager: 4711\nfacsimileTelephoneNumber: +33 1 99 00 00 03\n"
            "o: Example\nou: Design\ntitle: Night\n  watch\nstreet: 1 Lane\nl: Paris\npostalCode: 75099\n"
            "departmentNumber: 7\nlabeledURI: https://example.org/ home page\n"
            "labeledURI: https://example.org/zoe.jpg photo\nlabeledURI: sip:zoe@example.org im\n\n"
            "dn: cn=elsewhere,dc=example,dc=com\nobjectClass: inetOrgPerson\ncn: Zoe\nsn: Zoe\n\n"
            "dn: cn=device,dc=example,dc=org\nobjectClass: device\ncn: Zoe\n");
        Peer peer(m_bus, config.arguments() + QStringList{"--ldif", ldif});
        QVERIFY(peer.start(byName, {"1", "zo"}));
        const Peer::Packet packet = peer.next("1");
        QCOMPARE(packet.status, PacketStatus::Finished);
        const Contact expected =
            person("contactId=cn=Zo%C3%AB %5B1%5D%5C2C "
                   "Jr.,OU=people,dc=example,dc=org##|type=Remote|firstName=Zoë|name=Müller|"
                   "email=zoe@example.org|officePhone=+33 1 99 00 00 01|personalMobile=+33 6 39 98 00 01|"
                   "personalFax=4711|fax=+33 1 99 00 00 03|photo=https://example.org/zoe.jpg|"
                   "collaborationId=sip:zoe@example.org|misc.company=Example|misc.department=Design|"
                   "misc.job=Night watch|misc.address=1 Lane|misc.city=Paris|misc.zip=75099|misc.floor=7");
        QCOMPARE(packet.contacts, ListContact{expected});

        const QString id = expected.contactId;
        QCOMPARE(peer.profile(id), ListContact{expected});
        const QList<std::pair<QString, QString>> values{{"imAddress", "sip:zoe@example.org"},
                                                        {"officePhone", expected.officePhone},
                                                        {"floor", "7"},
                                                        {"nothing", QString()}};
        for (const auto &[attribute, value] : values) {
            const QString tag = id + '[' + attribute + ']';
            peer.call("getAttributeTypeByContactId", {tag, id, attribute});
            const auto event = peer.event(EventName::wsAttributeByContactId, tag);
            QVERIFY(event && event->argument<QString>("result") == value);
            QCOMPARE(event->argument<int>("status"), value.isEmpty() ? 0 : 1);
        }
    }

    void questionsAreAnswered()
    {
        Served served(m_bus, "name=Brumaire, Paris");
        Peer &peer = served.peer;
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(peer.event(EventName::wsManagerAvailability));
        QVERIFY(!peer.call("getServiceRight", {"IcsCall"}).arguments().value(0).toBool());
        const QList<std::tuple<QString, QVariantList, QString, QString>> questions{
            {"udaGetAttributes", {"InitDir"}, EventName::wsAttributes, "TELEPHONENUMBER"},
            {"udaGetOperators", {"InitDir"}, EventName::wsOperators, "EQUAL"},
            {"udaGetDirectories", {"InitDir"}, EventName::wsDirectories, "Brumaire, Paris"}};
        for (const auto &[method, arguments, event, element] : questions) {
            peer.call(method, arguments);
            const auto answer = peer.event(event, "InitDir");
            QVERIFY2(answer, qPrintable(event));
            QCOMPARE(answer->argument<int>("status"), 1);
            QVERIFY2(answer->argument<QStringList>("result").contains(element), qPrintable(event));
        }
        const QString known = "uid=vazhiko.mtisdzireli25,ou=people,dc=example,dc=org##";
        QCOMPARE(peer.profile(known).size(), 1);
        for (const QString &id : {"uid=x," + base + "##", QString("x##")})
            QCOMPARE(peer.profile(id), ListContact());
        QVERIFY(peer.start("udaSearchByIMAddress", {"im", "sip:vazhiko.mtisdzireli25@brumaire.example"}));
        QCOMPARE(idsOf(peer.all("im")), QStringList{known});
        QVERIFY(peer.start("udaSearch", {"all", "VAZHIKO.MTIS", QStringList{"email", "loginName"}}));
        QCOMPARE(idsOf(peer.all("all")), QStringList{known});
        QVERIFY(peer.start(byName, {"both", "ვაჟიკო", QStringList{"city"}, QStringList{"London"}}));
        QVERIFY(!idsOf(peer.all("both")).contains(known));
        QCOMPARE(peer.call(byName, {"one"}).errorName(), "org.freedesktop.DBus.Error.UnknownMethod");
        QCOMPARE(peer.program().terminate(), 0);
        for (const QLatin1String name : {EventName::wsDirectoryAvailability, EventName::wsManagerAvailability}) {
            const auto end = peer.event(name);
            QVERIFY2(end, name.data());
            QCOMPARE(end->argument<int>("status"), 0);
        }
    }

    void numberIsFoundInItsCanonicalForm()
    {
        Peer peer(m_bus, {"--ldif", sample});
        const QVariantList search{"n", "AND", QStringList{"TELEPHONENUMBER"}, QStringList{"EQUAL"},
                                  QStringList{"01 99 00 75 67"}};
        QVERIFY(peer.start("udaSearch", search));
        QCOMPARE(idsOf(peer.all("n")).size(), 0); // nobody tells that this is France
        const Config rules("");
        const QString file = rules.write("settings.ini", "[General]\nDialingRuleCountryCode=33\n");
        Program settings("kestin-settings", {"--file", file});
        Program telephony("kestin-telephony");
        QVERIFY(settings.startAndWaitForName(ModuleName::settings, m_bus.connection));
        QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, m_bus.connection));
        QVERIFY(peer.start("udaSearch", search));
        QCOMPARE(idsOf(peer.all("n")).size(), 1);
        peer.call("makeDialableCallNumber", {"d", "01 99-00 75 67"});
        const auto dialable = peer.event(EventName::wsCanonizeNumber, "d");
        QVERIFY(dialable && dialable->argument<QString>("result") == "0199007567");
    }

    void pagesBecomePackets_data()
    {
        const Rows<QByteArray, QByteArray, QList<int>> row;
        const QList<int> everybody{60, 60, 60, 60, 10};
        row("server with pages", QByteArray(), "pageSize=60", everybody);
        row("server without pages", "limits * size.prtotal=disabled", "pageSize=60", everybody);
        row("last page full", QByteArray(), "pageSize=125", QList<int>{125, 125});
        row("size limit of the server", "limits * size.prtotal=70", "pageSize=60", QList<int>{60, 10});
        row("size limit without pages", "limits * size.prtotal=disabled size=70", "pageSize=60", QList<int>{60, 10});
        row("limit of our own", QByteArray(), "pageSize=60\nmaxResults=100", QList<int>{60, 40});
        row("filter", QByteArray(), "pageSize=60\nfilter=(cn=Ann Comma, Jr.)\n", QList<int>{1});
    }

    void pagesBecomePackets()
    {
        const auto [limits, config, sizes] = currentRow<QByteArray, QByteArray, QList<int>>();
        Served served(m_bus, config, limits);
        Peer &peer = served.peer;
        QVERIFY(peer.start("udaSearch", {"all", "brumaire", QStringList{"EMAIL"}}));
        const QList<Peer::Packet> packets = peer.all("all");
        QList<int> found;
        for (const Peer::Packet &packet : packets)
            found.append(int(packet.contacts.size()));
        QCOMPARE(found, sizes);
        QCOMPARE(packets.last().status, PacketStatus::Finished);
        QStringList ids = idsOf(packets);
        QCOMPARE(ids.removeDuplicates(), 0);
        QCOMPARE(peer.next("all").status, PacketStatus::Finished); // over
    }

    void bindDecides()
    {
        Slapd server("disallow bind_anon");
        QVERIFY(server.start());
        const QByteArray account =
            "url=" + server.plainUrl().toUtf8() + "\nbindName=cn=admin,dc=example,dc=org\nsecretFile=";
        for (const auto &[secret, isRight] : {std::pair("secret", true), std::pair("wrong", false)}) {
            const Config keeper("");
            const QByteArray secretFile = keeper.write("secret", QByteArray(secret) + "\n").toUtf8();
            const Config config(account + secretFile);
            Peer peer(m_bus, config.arguments());
            QVERIFY(
                peer.program().waitForErrorOutput("<4>The password goes to " + server.plainUrl() + " in the clear"));
            if (isRight)
                QVERIFY(peer.waitForAvailability(true));
            else
                QVERIFY(peer.program().waitForErrorOutput("bind: Invalid credentials"));
            QCOMPARE(peer.hasRight(), isRight);
            QVERIFY(peer.start(byName, {"1", "jean"}));
            const Peer::Packet packet = peer.next("1");
            QCOMPARE(packet.status, isRight ? PacketStatus::Finished : PacketStatus::TimedOut);
            QCOMPARE(packet.contacts.size(), isRight ? 1 : 0);
            QVERIFY(!peer.program().errorOutput().contains(QLatin1String(secret)));
        }
    }

    void tlsDecides_data()
    {
        const Rows<QByteArray, QByteArray, QString> row;
        const QByteArray tls = "url=TLS\n";
        const QByteArray startTls = "url=PLAIN\nstartTls=true\n";
        const QByteArray trusted = "caFile=FOLDER/cert.pem";
        const QString others = "/etc/ssl/certs/ca-certificates.crt";
        const QString refused = "cannot be used: the certificate of %1 is refused";
        row("trusted", QByteArray(), tls + trusted, QString());
        row("trusted, secured later", QByteArray(), startTls + trusted, QString());
        row("trusted by the library's configuration", QByteArray(), tls, QString());
        row("unknown", QByteArray(), tls, refused.arg("TLS"));
        row("unknown, secured later", QByteArray(), startTls, refused.arg("PLAIN"));
        row("signed by others", QByteArray(), tls + "caFile=" + others.toUtf8(),
            "or nobody in \"" + others + "\" has signed it");
        row("too old a version", "TLSCipherSuite NORMAL:-VERS-ALL:+VERS-TLS1.1\n", tls + trusted,
            "cannot be used: connect:");
    }

    void tlsDecides()
    {
        auto [settings, config, refusal] = currentRow<QByteArray, QByteArray, QString>();
        Slapd server("TLSCertificateFile FOLDER/cert.pem\nTLSCertificateKeyFile FOLDER/key.pem\n" + settings);
        QCOMPARE(QProcess::execute("openssl",
                                   {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                                    "-days", "2", "-subj", "/CN=localhost", "-addext", "subjectAltName=IP:127.0.0.1",
                                    "-keyout", server.file("key.pem"), "-out", server.file("cert.pem")}),
                 0);
        QVERIFY(server.start(true));
        config.replace("FOLDER/cert.pem", server.file("cert.pem").toUtf8());
        config.replace("=TLS", '=' + server.tlsUrl().toUtf8()).replace("=PLAIN", '=' + server.plainUrl().toUtf8());
        refusal.replace("TLS", server.tlsUrl()).replace("PLAIN", server.plainUrl());
        qputenv("LDAPTLS_REQCERT", "never"); // the library's configuration does not weaken ours
        if (refusal.isEmpty() && !config.contains("caFile"))
            qputenv("LDAPTLS_CACERT", server.file("cert.pem").toUtf8());
        const Config file(config);
        Program check("kestin-wsmanager", QStringList("--check") + file.arguments());
        QCOMPARE(check.run(), refusal.isEmpty() ? 0 : 1);
        const QString seen = check.output() + check.errorOutput();
        QVERIFY2(seen.contains(refusal), qPrintable(seen));
        if (refusal.isEmpty() || refusal.contains("certificate of"))
            QVERIFY2(seen.contains("certificate of cn=localhost, signed by cn=localhost, good until 2"),
                     qPrintable(seen));
        Peer peer(m_bus, file.arguments());
        qunsetenv("LDAPTLS_REQCERT");
        qunsetenv("LDAPTLS_CACERT");
        if (refusal.isEmpty())
            QVERIFY(peer.waitForAvailability(true));
        else
            QVERIFY2(peer.program().waitForErrorOutput(refusal), qPrintable(peer.program().errorOutput()));
        QVERIFY(peer.start(byName, {"1", "jean"}));
        QCOMPARE(peer.next("1").status, refusal.isEmpty() ? PacketStatus::Finished : PacketStatus::TimedOut);
    }

    void baseIsTheLimit()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config library("");
        qputenv("LDAPCONF", library.write("ldap.conf", "BASE ou=people,dc=example,dc=org\n").toUtf8());
        const QString id = "cn=Ann Comma%5C2C Jr.,ou=people,dc=example,dc=org##";
        // Without a base of our own that of the library holds.
        for (const auto &[ownBase, count] :
             {std::pair("", 1), std::pair("uid=pengfei.zhong,ou=people,dc=example,dc=org", 0)}) {
            Peer peer(m_bus, {"--url", server.url(), "--base", ownBase});
            peer.start(byName, {"1", "ann comma"});
            QCOMPARE(peer.next("1").contacts.size(), count);
            QCOMPARE(peer.profile(id).size(), count);
        }
        qunsetenv("LDAPCONF");
    }

    void serverThatMisbehaves()
    {
        LdapStub server;
        const Config config("url=" + server.url() + "\nretrySeconds=600");
        Peer peer(m_bus, config.arguments());
        QVERIFY(peer.waitForAvailability(true));
        server.names = {"no name", "cn=zoe,dc=example,dc=org", ""};
        QVERIFY(peer.start(byName, {"1", "zoe"}));
        QCOMPARE(idsOf(peer.all("1")), QStringList{"cn=zoe,dc=example,dc=org##"});
        // A search that fails is looked into at once; the server still lets us in, so it stays available.
        server.names.clear();
        const int binds = server.binds;
        QVERIFY(peer.start(byName, {"2", "zoe"}));
        QCOMPARE(peer.next("2").status, PacketStatus::TimedOut);
        QTRY_COMPARE(server.binds, binds + 2);
        QVERIFY(peer.hasRight());
        QVERIFY(!peer.event(EventName::wsDirectoryAvailability, "", 0));
        QVERIFY(peer.program().errorOutput().contains("<4>A search on the directory server"));
    }

    void serverThatHangs()
    {
        Served served(m_bus, "pageSize=5\ntimeoutSeconds=2\nconnectSeconds=1\nretrySeconds=1");
        Peer &peer = served.peer;
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(served.begin("1"));

        served.server.freeze(true);
        peer.call("udaGetNextResults", {"1"});
        // The bus is served meanwhile: what is asked later is answered before.
        peer.call("udaGetOperators", {"meanwhile"});
        QVERIFY(peer.event(EventName::wsOperators, "meanwhile"));
        QVERIFY(!peer.event(EventName::wsNextResults, "1", 0));
        const auto event = peer.event(EventName::wsNextResults, "1");
        QVERIFY(event && event->argument<int>("status") == int(PacketStatus::TimedOut));
        QVERIFY(peer.waitForAvailability(false));
        QVERIFY(peer.start(byName, {"2", "ma"}));
        QCOMPARE(peer.next("2").status, PacketStatus::TimedOut);

        served.server.freeze(false);
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(served.begin("3"));
        served.server.freeze(true);
        peer.call("udaGetNextResults", {"3"});
        QCOMPARE(peer.program().terminate(), 0);
    }

    void serverThatGoes()
    {
        Served served(m_bus, "pageSize=5\nretrySeconds=1");
        Peer &peer = served.peer;
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(served.begin("1"));
        served.server.stop();
        const Peer::Packet packet = peer.next("1");
        QCOMPARE(packet.status, PacketStatus::TimedOut);
        QVERIFY(packet.contacts.isEmpty());
        QVERIFY(peer.waitForAvailability(false));
        QVERIFY(served.server.start());
        QVERIFY(peer.waitForAvailability(true));
    }

    void sampleConfigurationsFit_data()
    {
        const Rows<QByteArray, QByteArray, QString> row;
        row("openldap.conf", QByteArray(), QByteArray(), "officePhone 250 telephoneNumber +");
        const auto entry = [](const QByteArray &name, const QByteArray &more) {
            return "\ndn: cn=" + name + ",dc=example,dc=org\nobjectClass: extensibleObject\nobjectClass: " + more +
                   "\ncn: " + name + "\nsn: M\nsAMAccountName: " + name + "\ninstanceType: 4\n" +
                   "nTSecurityDescriptor: x\nobjectCategory: dc=x\ntelephoneNumber: +33 1 99 00 00 01\n";
        };
        row("active-directory.conf", "include /etc/ldap/schema/nis.schema\ninclude /etc/ldap/schema/msuser.schema\n",
            "dn: dc=example,dc=org\nobjectClass: domain\ndc: example\n" +
                entry("zoe", "user\nuserAccountControl: 512\nipPhone: 4711\ncompany: Brumaire\n"
                             "userPrincipalName: zoe@example.org") +
                entry("gone", "user\nuserAccountControl: 514") + entry("pc", "computer"),
            "email 1 mail,userPrincipalName zoe@example.org fax 0 facsimileTelephoneNumber firstName 0 givenName "
            "language 0 preferredLanguage loginName 1 sAMAccountName zoe misc.address 0 streetAddress misc.city 0 l "
            "misc.company 1 company Brumaire misc.country 0 co,c misc.department 0 department misc.job 0 title "
            "misc.zip 0 postalCode name 1 sn,displayName,cn M officePhone 1 telephoneNumber +33 1 99 00 00 01 "
            "personalFax 1 ipPhone 4711");
    }

    void sampleConfigurationsFit()
    {
        const auto [schema, entries, seen] = currentRow<QByteArray, QByteArray, QString>();
        const QString name = QTest::currentDataTag();
        const Config files("");
        Slapd server(schema, {}, entries.isEmpty() ? sample : files.write("entries.ldif", entries));
        QVERIFY(server.start());
        QByteArray text = contentOf(KESTIN_CONFIGURATIONS + name);
        text.replace("/etc/kestin/wsmanager.secret", files.write("secret", "secret").toUtf8());
        text.replace("cn=phone,cn=Users", "cn=admin").replace("cn=phone", "cn=admin");
        Program check("kestin-wsmanager", {"--check", "--config", files.write(name, text), "--url", server.url()});
        QCOMPARE(check.run(), 0);
        QVERIFY2(check.output().simplified().contains(seen), qPrintable(check.output()));
    }

    void theCheckSaysWhyNobodyIsFound()
    {
        Slapd server;
        QVERIFY(server.start());
        const QByteArray url = "url=" + server.url().toUtf8() + '\n';
        const Config keeper("");
        const QByteArray wrong = "secretFile=" + keeper.write("secret", "wrong").toUtf8();
        const QList<std::pair<QByteArray, QString>> reasons{
            {"url=ldapi://%2Fnowhere", "cannot be used: connect: Can't contact LDAP server"},
            {url + "bindName=cn=admin,dc=example,dc=org\n" + wrong, "bind: Invalid credentials"},
            {url + "\nbase=dc=example,dc=com", "No such object"},
            {url + "objectClass=device", "objectClass device; or the server does not show them to an anonymous caller"},
            {"ldif=" + sample.toUtf8() + "\nobjectClass=device", "below \"dc=example,dc=org\": objectClass device\n"}};
        for (const auto &[text, reason] : reasons) {
            const Config config(text);
            Program check("kestin-wsmanager", QStringList("--check") + config.arguments());
            QCOMPARE(check.run(), 1);
            QVERIFY2(check.errorOutput().contains(reason), qPrintable(check.errorOutput()));
        }
    }

    void aNewConfigurationLeavesSearchesAlone()
    {
        Served served(m_bus, "pageSize=100");
        Peer &peer = served.peer;
        const auto reload = [&](const QByteArray &text, const QString &logged) {
            writeFile(served.config.arguments().last(), "[directory]\nbase=dc=example,dc=org\n" + text);
            ::kill(pid_t(peer.program().processId()), SIGHUP);
            return peer.program().waitForErrorOutput(logged);
        };
        const auto everybody = [](const char *id) { return QVariantList{id, "brumaire", QStringList{"EMAIL"}}; };
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(peer.start("udaSearch", everybody("former")));
        QCOMPARE(peer.next("former").contacts.size(), 100);
        QVERIFY(reload("url=ldap//x", "\n<4>The configuration before stays"));
        QVERIFY(reload("ldif=/nowhere/at/all.ldif", "\n<3>The company directory /nowhere/at/all.ldif"));
        QVERIFY(peer.hasRight());
        QVERIFY(reload("ldif=" + sample.toUtf8() + "\npageSize=200\n[attributes]\nname=title\n",
                       "\n<6>The configuration has been read again"));
        const auto told = peer.event(EventName::wsDirectoryAvailability);
        QVERIFY(told && told->argument<int>("status") == 0);
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(peer.start("udaSearch", everybody("present")));
        for (const auto &[id, sizes, isTitle] :
             {std::tuple("former", QList<int>{100, 50}, false), std::tuple("present", QList<int>{200, 50}, true)}) {
            for (const int size : sizes) {
                const ListContact contacts = peer.next(id).contacts;
                QCOMPARE(contacts.size(), size);
                QCOMPARE(contacts.first().name == contacts.first().misc["job"], isTitle);
            }
        }
    }

    void stopAbandonsTheOperation()
    {
        Served served(m_bus, "pageSize=5");
        Peer &peer = served.peer;
        QVERIFY(served.begin("1"));
        const QString asked = "The directory server is asked for";
        served.server.freeze(true);
        const qsizetype sofar = peer.program().errorOutput().count(asked);
        peer.call("udaGetNextResults", {"1"});
        QTRY_COMPARE(peer.program().errorOutput().count(asked), sofar + 1);
        peer.call("udaStopSearch", {"1"});
        const auto stopped = peer.event(EventName::wsStopSearch, "1");
        QVERIFY(stopped && stopped->argument<int>("status") == 1);
        served.server.freeze(false);
        QVERIFY(served.server.waitForLog("ABANDON msg="));
        QCOMPARE(peer.next("1").status,
                 PacketStatus::Finished); // answered for itself, not by what the server sent for the stopped one
    }

    void refusalsAreAnswered()
    {
        Peer peer(m_bus, {"--ldif", sample, "--page-size", "1"});
        const auto list = [](const char *text) { return QStringList{QString::fromUtf8(text)}; };
        const QList<std::pair<QString, QVariantList>> refused{
            {byName, {"r", "  "}},
            {"udaSearch", {"r", "XOR", list("EMAIL"), list("EQUAL"), list("x")}},
            {"udaSearch", {"r", "AND", list("SHOESIZE"), list("EQUAL"), list("x")}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("LIKE"), list("x")}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("EQUAL"), QStringList{"x", "y"}}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("EQUAL"), list("")}}};
        for (const auto &[method, arguments] : refused) {
            QVERIFY(!peer.start(method, arguments));
            const Peer::Packet packet = peer.next("r");
            QCOMPARE(packet.status, PacketStatus::Finished);
            QVERIFY(packet.contacts.isEmpty());
        }
        for (int i = 0; i < 16; ++i)
            QVERIFY(peer.start(byName, {QString::number(i), "ma"}));
        QVERIFY(!peer.start(byName, {"17th", "ma"}));
        QVERIFY(peer.start(byName, {"3", "jean"})); // takes the place of the former "3"
        QCOMPARE(peer.next("3").contacts.value(0).firstName, "Jean (Jeannot)");
        QVERIFY(peer.start(byName, {"17th", "ma"}));
    }

    void aDirectoryThatIsTooSlowIsGivenUp()
    {
        Peer peer(m_bus, {"--ldif", sample, "--delay", "5000", "--timeout", "1"});
        QVERIFY(peer.start(byName, {"1", "jean"}));
        QCOMPARE(peer.next("1").status, PacketStatus::TimedOut);
    }

    void mistakesInTheConfiguration_data()
    {
        const Rows<QByteArray, QString> row;
        row("nothing", QByteArray(), "one of url and ldif");
        row("both", "url=ldap://x\nldif=y", "url and ldif exclude each other");
        row("scheme", "url=ldaps://x/ http://a:b@y", "\"http://y\" is no address");
        row("secured twice", "url=ldaps://x\nstartTls=true", "startTls secures ldap:// only");
        row("no name", QByteArray("url=ldap://x\nsecretFile=" KESTIN_SAMPLES "/company.ldif"),
            "a secret needs a bind name");
        row("typo", "ulr=ldap://x", "no setting \"ulr\"");
        row("number", "url=ldap://x\npageSize=0", "pageSize is a number from 1 to 1000");
        row("no secret", "url=ldap://x\nbindName=cn=a", "needs a secret");
        row("secret", "url=ldap://x\nsecretFile=/nowhere/at/all", "cannot be read");
        row("field", "url=ldap://x\n[attributes]\nshoeSize=x", "no field \"shoeSize\"");
        row("attribute", "url=ldap://x\n[attributes]\nname=s)n", "no name of an attribute");
        row("digit", "url=ldap://x\n[attributes]\nname=9x", "no name of an attribute");
        row("no setting", "url=ldap://x\nbase", "line 4 is neither");
        row("section", "[other]\nname=x", "no section that is known");
        row("base", "url=ldap://x\nbase=example.org", "is no DN");
        row("filter", "url=ldap://x\nfilter=a=b", "in parentheses");
        row("two filters", "url=ldap://x\nfilter=(a=b)(c=d)", "no filter");
        row("no certificates", "url=ldaps://x\ncaFile=/nowhere/at/all", "cannot be used");
        row("no file", "ldif=/nowhere/at/all.ldif", "cannot be opened");
        row("twice", "url=ldap://x\n[directory]\nurl=ldap://y", "line 5 sets \"url\" for");
        for (const char *name : {"\"x", "x\"", "\"x\" y\"", "\"x\\\"", "\""})
            row(name, QByteArray("url=ldap://x\nname=") + name, "line 4 has a double quote without");
        QCOMPARE(::mkfifo(qPrintable(m_pipe), 0600), 0);
        for (const char *setting : {"", "ldif=", "secretFile="})
            row(QByteArray("pipe as ") + setting, setting + m_pipe.toUtf8(), "it is not a regular file");
        row("pipe as certificates", "url=ldaps://x\ncaFile=" + m_pipe.toUtf8(), "cannot be used");
        row("folder", "ldif=/", "it is not a regular file");
        row("no LDIF", QByteArray("ldif=" KESTIN_SAMPLES "/phone-book.vcf"), "no well-formed LDIF");
    }

    void mistakesInTheConfiguration()
    {
        const auto [text, expected] = currentRow<QByteArray, QString>();
        const Config config(text);
        Program program("kestin-wsmanager", text.startsWith('/') ? QStringList{"--config", text} : config.arguments());
        QCOMPARE(program.run(), 1);
        QVERIFY2(program.errorOutput().contains(expected), qPrintable(program.errorOutput()));
    }

private:
    const ClientBus m_bus;
    const QTemporaryDir m_folder;
    const QString m_pipe = m_folder.filePath("pipe");
};

QTEST_GUILESS_MAIN(WSManagerTest)
#include "WSManagerTest.moc"
