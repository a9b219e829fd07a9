// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/QueryBuilder.h"
#include "peers/wsmanager/company/LdapFilter.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"
#include "tests/peers/wsmanager/LdapStub.h"
#include "tests/peers/wsmanager/Peer.h"
#include "tests/peers/wsmanager/Slapd.h"
#include "tests/support/Files.h"
#include "tests/support/Person.h"
#include "tests/support/Rows.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString sample = u"" KESTIN_SAMPLES "/company.ldif"_s;
const QString byName = u"udaSearchByFullName"_s;
const QString base = u"dc=example,dc=org"_s;

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
    QStringList arguments() const { return {u"--config"_s, m_folder.filePath("ws.ini")}; }
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile(writeFile(m_folder.filePath(name), text)).setPermissions(QFile::ReadOwner);
        return m_folder.filePath(name);
    }

private:
    QTemporaryDir m_folder;
};

QByteArray urlOf(const Slapd &server)
{
    return "url=" + server.url().toUtf8() + "\n";
}

} // namespace

/// What is asked of a company directory; and the web-service manager as a process, over a file and over a real server.
class WSManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bus = std::make_unique<PeerBus>();
        qputenv("KESTIN_LOG_LEVEL", "7");
    }

    void filtersAreEscaped_data()
    {
        const Rows<QString, QByteArray> row("text", "expected");
        row("plain", u"zoe"_s, "zoe");
        row("wildcard", u"*"_s, "\\2A");
        row("injection", u"x)(uid=*"_s, "x\\29\\28uid=\\2A");
        row("backslash", u"a\\2A"_s, "a\\5C2A");
        row("NUL", QString(u"a"_s + QChar(0) + u"b"_s), "a\\00b");
        row("UTF-8", u"ö"_s, "\\C3\\B6");
    }

    void filtersAreEscaped()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);
        QCOMPARE(LdapFilter::escaped(text), expected);
        AttributeMap map;
        map.set("email", {"mail"});
        const DirectoryQuery query = QueryBuilder(map).byCriteria("AND", {"EMAIL"}, {"ENDS"}, {text});
        QCOMPARE(LdapFilter::of(query, "person", "(ou=x)"),
                 QByteArray("(&(objectClass=person)(ou=x)(mail=*") + expected + "))");
    }

    void fileAndServerFindTheSame()
    {
        const QList<std::pair<QString, int>> names{
            {u"jean"_s, 1}, {u"JR ann"_s, 1},   {u"L'étoile*"_s, 1}, {u"Mühlen"_s, 1},  {u"back\\"_s, 1},
            {u"*"_s, 0},    {u")(uid=*"_s, 0},  {u"(jeannot)"_s, 1}, {u"ühlen"_s, 0},   {u"юлия"_s, -1},
            {u"ma"_s, -1},  {u"BRÉC ma"_s, -1}, {u" Zo  mü "_s, 1},  {u"健太郎"_s, -1}, {u"plus+equals="_s, 1}};
        using Criteria = std::pair<QStringList, int>; // attribute, operator, value
        const QList<Criteria> criteria{{{u"EMAIL"_s, u"EQUAL"_s, u"Ann.Comma@brumaire.example"_s}, 1},
                                       {{u"TELEPHONENUMBER"_s, u"EQUAL"_s, u"+33199007567"_s}, 1},
                                       {{u"TELEPHONENUMBER"_s, u"EQUAL"_s, u"+33 1-99 007567"_s}, 1},
                                       {{u"TELEPHONENUMBER"_s, u"EQUAL"_s, u"99007567"_s}, 0},
                                       {{u"officePhone"_s, u"BEGINS"_s, u"+33353"_s}, -1},
                                       {{u"city"_s, u"CONTAINS"_s, u"ondo"_s}, -1},
                                       {{u"misc.city"_s, u"ENDS"_s, u"LIN"_s}, -1},
                                       {{u"EMAIL"_s, u"CONTAINS"_s, u"*"_s}, 0}};
        const auto ask = [&](const QStringList &arguments) {
            Peer peer(*m_bus, arguments);
            QList<QStringList> found;
            for (const auto &[name, count] : names) {
                peer.start(byName, {name, name});
                found.append(idsOf(peer.all(name)));
            }
            for (const auto &[criterion, count] : criteria) {
                peer.start(u"udaSearch"_s,
                           {u"id"_s, u"AND"_s, criterion.mid(0, 1), criterion.mid(1, 1), criterion.mid(2)});
                found.append(idsOf(peer.all(u"id"_s)));
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
            const QString asked = criterion < 0 ? names[i].first : criteria[criterion].first.join(u' ');
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
        Peer peer(*m_bus, config.arguments() + QStringList{"--ldif", ldif});
        QCOMPARE(peer.start(byName, {"1", "zo"}), 1);
        const Peer::Packet packet = peer.next("1");
        QCOMPARE(packet.status, 2);
        const Contact expected =
            person("contactId=cn=Zo%C3%AB %5B1%5D%5C2C "
                   "Jr.,OU=people,dc=example,dc=org##|type=Remote|firstName=Zoë|name=Müller|"
                   "email=zoe@example.org|officePhone=+33 1 99 00 00 01|personalMobile=+33 6 39 98 00 01|"
                   "personalFax=4711|fax=+33 1 99 00 00 03|photo=https://example.org/zoe.jpg|"
                   "collaborationId=sip:zoe@example.org|misc.company=Example|misc.department=Design|"
                   "misc.job=Night watch|misc.address=1 Lane|misc.city=Paris|misc.zip=75099|misc.floor=7");
        QCOMPARE(packet.contacts, ListContact{expected});

        const QString id = expected.contactId;
        peer.call("udaGetContactProfile", {id, id});
        const auto profile = peer.events().next(EventName::wsContactProfile, id);
        QVERIFY(profile && profile->argument<ListContact>("result") == ListContact{expected});
        const QList<std::pair<QString, QString>> values{{u"imAddress"_s, u"sip:zoe@example.org"_s},
                                                        {u"officePhone"_s, expected.officePhone},
                                                        {u"floor"_s, u"7"_s},
                                                        {u"nothing"_s, QString()}};
        for (const auto &[attribute, value] : values) {
            const QString tag = id + u'[' + attribute + u']';
            peer.call("getAttributeTypeByContactId", {tag, id, attribute});
            const auto event = peer.events().next(EventName::wsAttributeByContactId, tag);
            QVERIFY(event && event->argument<QString>("result") == value);
            QCOMPARE(event->argument<int>("status"), value.isEmpty() ? 0 : 1);
        }
    }

    void questionsAreAnswered()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config config(urlOf(server) + "name=Brumaire, Paris");
        Peer peer(*m_bus, config.arguments());
        QVERIFY(peer.waitForAvailability(true));
        QVERIFY(peer.events().next(EventName::wsManagerAvailability));
        QVERIFY(!peer.call("getServiceRight", {"IcsCall"}).arguments().value(0).toBool());
        const QList<std::tuple<QString, QVariantList, QString, QString>> questions{
            {"udaGetAttributes", {"InitDir"}, EventName::wsAttributes, "TELEPHONENUMBER"},
            {"udaGetOperators", {"InitDir"}, EventName::wsOperators, "EQUAL"},
            {"udaGetDirectories", {"InitDir"}, EventName::wsDirectories, "Brumaire, Paris"}};
        for (const auto &[method, arguments, event, element] : questions) {
            peer.call(method, arguments);
            const auto answer = peer.events().next(event, "InitDir");
            QVERIFY2(answer, qPrintable(event));
            QCOMPARE(answer->argument<int>("status"), 1);
            QVERIFY2(answer->argument<QStringList>("result").contains(element), qPrintable(event));
        }
        const QString known = u"uid=vazhiko.mtisdzireli25,ou=people,dc=example,dc=org##"_s;
        for (const auto &[id, count] :
             QList<std::pair<QString, int>>{{known, 1}, {"uid=x," + base + "##", 0}, {"x##", 0}}) {
            peer.call("udaGetContactProfile", {id, id});
            const auto profile = peer.events().next(EventName::wsContactProfile, id);
            QVERIFY(profile && profile->argument<ListContact>("result").size() == count);
        }
        QCOMPARE(peer.start("udaSearchByIMAddress", {"im", "sip:vazhiko.mtisdzireli25@brumaire.example"}), 1);
        QCOMPARE(idsOf(peer.all("im")), QStringList{known});
        QCOMPARE(peer.start("udaSearch", {"all", "VAZHIKO.MTIS", QStringList{"email", "loginName"}}), 1);
        QCOMPARE(idsOf(peer.all("all")), QStringList{known});
        QCOMPARE(peer.start(byName, {"both", "ვაჟიკო", QStringList{"city"}, QStringList{"London"}}), 1);
        QVERIFY(!idsOf(peer.all("both")).contains(known));
        QCOMPARE(peer.call(byName, {"one"}).errorName(), u"org.freedesktop.DBus.Error.UnknownMethod"_s);
        QCOMPARE(peer.program().terminate(), 0);
        for (const QLatin1String name : {EventName::wsDirectoryAvailability, EventName::wsManagerAvailability}) {
            const auto end = peer.events().next(name);
            QVERIFY2(end, name.data());
            QCOMPARE(end->argument<int>("status"), 0);
        }
    }

    void numberIsFoundInItsCanonicalForm()
    {
        Peer peer(*m_bus, {"--ldif", sample});
        const QVariantList search{"n", "AND", QStringList{"TELEPHONENUMBER"}, QStringList{"EQUAL"},
                                  QStringList{"01 99 00 75 67"}};
        QCOMPARE(peer.start("udaSearch", search), 1);
        QCOMPARE(idsOf(peer.all("n")).size(), 0); // nobody tells that this is France
        const Config rules("");
        const QString file = rules.write("settings.ini", "[General]\nDialingRuleCountryCode=33\n");
        Program settings("kestin-settings", {"--file", file});
        Program telephony("kestin-telephony");
        QVERIFY(settings.startAndWaitForName(ModuleName::settings, m_bus->connection));
        QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, m_bus->connection));
        QCOMPARE(peer.start("udaSearch", search), 1);
        QCOMPARE(idsOf(peer.all("n")).size(), 1);
        peer.call("makeDialableCallNumber", {"d", "01 99-00 75 67"});
        const auto dialable = peer.events().next(EventName::wsCanonizeNumber, "d");
        QVERIFY(dialable && dialable->argument<QString>("result") == u"0199007567"_s);
    }

    void pagesBecomePackets_data()
    {
        const Rows<QByteArray, QByteArray, QList<int>> row("limits", "config", "sizes");
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
        QFETCH(QByteArray, limits);
        QFETCH(QByteArray, config);
        QFETCH(QList<int>, sizes);
        Slapd server("", limits);
        QVERIFY(server.start());
        const Config file(urlOf(server) + config);
        Peer peer(*m_bus, file.arguments());
        QCOMPARE(peer.start("udaSearch", {"all", "brumaire", QStringList{"EMAIL"}}), 1);
        const QList<Peer::Packet> packets = peer.all("all");
        QList<int> found;
        for (const Peer::Packet &packet : packets)
            found.append(int(packet.contacts.size()));
        QCOMPARE(found, sizes);
        QCOMPARE(packets.last().status, 2);
        QStringList ids = idsOf(packets);
        QCOMPARE(ids.removeDuplicates(), 0);
        QCOMPARE(peer.next("all").status, 2); // over
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
            Peer peer(*m_bus, config.arguments());
            QVERIFY(
                peer.program().waitForErrorOutput("<4>The password goes to " + server.plainUrl() + " in the clear"));
            if (isRight)
                QVERIFY(peer.waitForAvailability(true));
            else
                QVERIFY(peer.program().waitForErrorOutput("bind: Invalid credentials"));
            QCOMPARE(peer.hasRight(), isRight);
            QCOMPARE(peer.start(byName, {"1", "jean"}), 1);
            const Peer::Packet packet = peer.next("1");
            QCOMPARE(packet.status, isRight ? 2 : 3);
            QCOMPARE(packet.contacts.size(), isRight ? 1 : 0);
            QVERIFY(!peer.program().errorOutput().contains(QLatin1String(secret)));
        }
    }

    void tlsDecides_data()
    {
        const Rows<QByteArray, QByteArray, QString> row("settings", "config", "refusal");
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
            u"cannot be used: connect:"_s);
    }

    void tlsDecides()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QByteArray, config);
        QFETCH(QString, refusal);
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
        Peer peer(*m_bus, file.arguments());
        qunsetenv("LDAPTLS_REQCERT");
        qunsetenv("LDAPTLS_CACERT");
        if (refusal.isEmpty())
            QVERIFY(peer.waitForAvailability(true));
        else
            QVERIFY2(peer.program().waitForErrorOutput(refusal), qPrintable(peer.program().errorOutput()));
        QCOMPARE(peer.start(byName, {"1", "jean"}), 1);
        QCOMPARE(peer.next("1").status, refusal.isEmpty() ? 2 : 3);
    }

    void baseIsTheLimit()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config library("");
        qputenv("LDAPCONF", library.write("ldap.conf", "BASE ou=people,dc=example,dc=org\n").toUtf8());
        const QString id = u"cn=Ann Comma%5C2C Jr.,ou=people,dc=example,dc=org##"_s;
        // Without a base of our own that of the library holds.
        for (const auto &[ownBase, count] :
             {std::pair("", 1), std::pair("uid=pengfei.zhong,ou=people,dc=example,dc=org", 0)}) {
            Peer peer(*m_bus, {"--url", server.url(), "--base", ownBase});
            peer.start(byName, {"1", "ann comma"});
            QCOMPARE(peer.next("1").contacts.size(), count);
            peer.call("udaGetContactProfile", {id, id});
            const auto profile = peer.events().next(EventName::wsContactProfile, id);
            QVERIFY(profile && profile->argument<ListContact>("result").size() == count);
        }
        qunsetenv("LDAPCONF");
    }

    void serverThatMisbehaves()
    {
        LdapStub server;
        const Config config("url=" + server.url() + "\nretrySeconds=600");
        Peer peer(*m_bus, config.arguments());
        QVERIFY(peer.waitForAvailability(true));
        server.names = {"no name", "cn=zoe,dc=example,dc=org", ""};
        QCOMPARE(peer.start(byName, {"1", "zoe"}), 1);
        QCOMPARE(idsOf(peer.all("1")), QStringList{"cn=zoe,dc=example,dc=org##"});
        // A search that fails is looked into at once; the server still lets us in, so it stays available.
        server.names.clear();
        const int binds = server.binds;
        QCOMPARE(peer.start(byName, {"2", "zoe"}), 1);
        QCOMPARE(peer.next("2").status, 3);
        QTRY_COMPARE(server.binds, binds + 2);
        QVERIFY(peer.hasRight());
        QVERIFY(!peer.events().next(EventName::wsDirectoryAvailability, "", 0));
        QVERIFY(peer.program().errorOutput().contains("<4>A search on the directory server"));
    }

    void serverThatHangs()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config config(urlOf(server) + "pageSize=5\ntimeoutSeconds=2\nconnectSeconds=1\nretrySeconds=1");
        Peer peer(*m_bus, config.arguments());
        QVERIFY(peer.waitForAvailability(true));
        QCOMPARE(peer.start(byName, {"1", "ma"}), 1);
        QCOMPARE(peer.next("1").status, 1);

        server.freeze(true);
        peer.call("udaGetNextResults", {"1"});
        // The bus is served meanwhile: what is asked later is answered before.
        peer.call("udaGetOperators", {"meanwhile"});
        QVERIFY(peer.events().next(EventName::wsOperators, "meanwhile"));
        QVERIFY(!peer.events().next(EventName::wsNextResults, "1", 0));
        const auto event = peer.events().next(EventName::wsNextResults, "1");
        QVERIFY(event && event->argument<int>("status") == 3);
        QVERIFY(peer.waitForAvailability(false));
        QCOMPARE(peer.start(byName, {"2", "ma"}), 1);
        QCOMPARE(peer.next("2").status, 3);

        server.freeze(false);
        QVERIFY(peer.waitForAvailability(true));
        QCOMPARE(peer.start(byName, {"3", "ma"}), 1);
        QCOMPARE(peer.next("3").status, 1);
        server.freeze(true);
        peer.call("udaGetNextResults", {"3"});
        QCOMPARE(peer.program().terminate(), 0);
    }

    void serverThatGoes()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config config(urlOf(server) + "pageSize=5\nretrySeconds=1");
        Peer peer(*m_bus, config.arguments());
        QVERIFY(peer.waitForAvailability(true));
        QCOMPARE(peer.start(byName, {"1", "ma"}), 1);
        QCOMPARE(peer.next("1").status, 1);
        server.stop();
        const Peer::Packet packet = peer.next("1");
        QCOMPARE(packet.status, 3);
        QVERIFY(packet.contacts.isEmpty());
        QVERIFY(peer.waitForAvailability(false));
        QVERIFY(server.start());
        QVERIFY(peer.waitForAvailability(true));
    }

    void stopAbandonsTheOperation()
    {
        Slapd server;
        QVERIFY(server.start());
        const Config config(urlOf(server) + "pageSize=5");
        const QString asked = u"The directory server is asked for"_s;
        Peer peer(*m_bus, config.arguments());
        QCOMPARE(peer.start(byName, {"1", "ma"}), 1);
        QCOMPARE(peer.next("1").status, 1);
        server.freeze(true);
        const qsizetype sofar = peer.program().errorOutput().count(asked);
        peer.call("udaGetNextResults", {"1"});
        QTRY_COMPARE(peer.program().errorOutput().count(asked), sofar + 1);
        peer.call("udaStopSearch", {"1"});
        const auto stopped = peer.events().next(EventName::wsStopSearch, "1");
        QVERIFY(stopped && stopped->argument<int>("status") == 1);
        server.freeze(false);
        QVERIFY(server.waitForLog("ABANDON msg="));
        QCOMPARE(peer.next("1").status, 2); // answered for itself, not by what the server sent for the stopped one
    }

    void refusalsAreAnswered()
    {
        Peer peer(*m_bus, {"--ldif", sample, "--page-size", "1"});
        const auto list = [](const char *text) { return QStringList{QString::fromUtf8(text)}; };
        const QList<std::pair<QString, QVariantList>> refused{
            {byName, {"r", "  "}},
            {"udaSearch", {"r", "XOR", list("EMAIL"), list("EQUAL"), list("x")}},
            {"udaSearch", {"r", "AND", list("SHOESIZE"), list("EQUAL"), list("x")}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("LIKE"), list("x")}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("EQUAL"), QStringList{"x", "y"}}},
            {"udaSearch", {"r", "AND", list("EMAIL"), list("EQUAL"), list("")}}};
        for (const auto &[method, arguments] : refused) {
            QCOMPARE(peer.start(method, arguments), 0);
            const Peer::Packet packet = peer.next("r");
            QCOMPARE(packet.status, 2);
            QVERIFY(packet.contacts.isEmpty());
        }
        for (int i = 0; i < 16; ++i)
            QCOMPARE(peer.start(byName, {QString::number(i), "ma"}), 1);
        QCOMPARE(peer.start(byName, {"17th", "ma"}), 0);
        QCOMPARE(peer.start(byName, {"3", "jean"}), 1); // takes the place of the former "3"
        QCOMPARE(peer.next("3").contacts.value(0).firstName, u"Jean (Jeannot)"_s);
        QCOMPARE(peer.start(byName, {"17th", "ma"}), 1);
    }

    void slowDirectoryIsSlow()
    {
        {
            Peer slow(*m_bus, {"--ldif", sample, "--delay", "400"});
            QCOMPARE(slow.start(byName, {"1", "jean"}), 1);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(slow.next("1").contacts.size(), 1);
            QVERIFY(timer.elapsed() >= 400);
        }
        Peer tooSlow(*m_bus, {"--ldif", sample, "--delay", "5000", "--timeout", "1"});
        QCOMPARE(tooSlow.start(byName, {"1", "jean"}), 1);
        QCOMPARE(tooSlow.next("1").status, 3);
    }

    void mistakesInTheConfiguration_data()
    {
        const Rows<QByteArray, QString> row("text", "expected");
        row("nothing", QByteArray(), u"one of url and ldif"_s);
        row("both", "url=ldap://x\nldif=y", u"url and ldif exclude each other"_s);
        row("scheme", "url=ldaps://x/ http://a:b@y", u"\"http://y\" is no address"_s);
        row("secured twice", "url=ldaps://x\nstartTls=true", u"startTls secures ldap:// only"_s);
        row("no name", QByteArray("url=ldap://x\nsecretFile=" KESTIN_SAMPLES "/company.ldif"),
            u"a secret needs a bind name"_s);
        row("typo", "ulr=ldap://x", u"no setting \"ulr\""_s);
        row("number", "url=ldap://x\npageSize=0", u"pageSize is a number from 1 to 1000"_s);
        row("no secret", "url=ldap://x\nbindName=cn=a", u"needs a secret"_s);
        row("secret", "url=ldap://x\nsecretFile=/nowhere/at/all", u"cannot be read"_s);
        row("field", "url=ldap://x\n[attributes]\nshoeSize=x", u"no field \"shoeSize\""_s);
        row("attribute", "url=ldap://x\n[attributes]\nname=s)n", u"no name of an attribute"_s);
        row("digit", "url=ldap://x\n[attributes]\nname=9x", u"no name of an attribute"_s);
        row("no setting", "url=ldap://x\nbase", u"line 4 is neither"_s);
        row("section", "[other]\nname=x", u"no section that is known"_s);
        row("base", "url=ldap://x\nbase=example.org", u"is no DN"_s);
        row("filter", "url=ldap://x\nfilter=a=b", u"in parentheses"_s);
        row("two filters", "url=ldap://x\nfilter=(a=b)(c=d)", u"no filter"_s);
        row("no certificates", "url=ldaps://x\ncaFile=/nowhere/at/all", u"cannot be used"_s);
        row("no file", "ldif=/nowhere/at/all.ldif", u"cannot be opened"_s);
        row("twice", "url=ldap://x\n[directory]\nurl=ldap://y", u"line 5 sets \"url\" for"_s);
        for (const char *name : {"\"x", "x\"", "\"x\" y\"", "\"x\\\"", "\""})
            row(name, QByteArray("url=ldap://x\nname=") + name, u"line 4 has a double quote without"_s);
        QCOMPARE(::mkfifo(qPrintable(m_pipe), 0600), 0);
        for (const char *setting : {"", "ldif=", "secretFile="})
            row(QByteArray("pipe as ") + setting, setting + m_pipe.toUtf8(), u"it is not a regular file"_s);
        row("pipe as certificates", "url=ldaps://x\ncaFile=" + m_pipe.toUtf8(), u"cannot be used"_s);
        row("folder", "ldif=/", u"it is not a regular file"_s);
        row("no LDIF", QByteArray("ldif=" KESTIN_SAMPLES "/phone-book.vcf"), u"no well-formed LDIF"_s);
    }

    void mistakesInTheConfiguration()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, expected);
        const Config config(text);
        Program program("kestin-wsmanager", text.startsWith('/') ? QStringList{"--config", text} : config.arguments());
        QCOMPARE(program.run(), 1);
        QVERIFY2(program.errorOutput().contains(expected), qPrintable(program.errorOutput()));
    }

private:
    std::unique_ptr<PeerBus> m_bus;
    const QTemporaryDir m_folder;
    const QString m_pipe = m_folder.filePath("pipe");
};

QTEST_GUILESS_MAIN(WSManagerTest)
#include "WSManagerTest.moc"
