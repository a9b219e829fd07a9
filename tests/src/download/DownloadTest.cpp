// SPDX-License-Identifier: Apache-2.0
#include "src/download/KestinDirectoryNetwork.h"
#include "tests/src/download/PhotoServer.h"
#include "tests/support/LogCapture.h"

#include <QSslCertificate>

#include <dlfcn.h>
#include <netdb.h>

using namespace std::chrono_literals;

/// Takes the place of the C library's; a name leads to this machine.
extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **result)
{
    static const auto original = reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return original(name == phoneName ? "localhost" : name, service, hints, result);
}

class DownloadTest : public QObject
{
    Q_OBJECT

    PhotoServer m_server;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_server.start());
        writeFile(m_server.folder.filePath("a.jpg"), "body");
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(QSslCertificate::fromPath(m_server.folder.filePath("ca.pem")));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    void downloadsEndWellOrInTheLog_data()
    {
        const Rows<QString, QString> row;
        const QString canceled = "(5) OperationCanceledError", noTls = "(6) SslHandshakeFailedError";
        const QString redirect = "/once/302/Location:", good = "/file/a.jpg", never = "/file/never";
        row("https", m_server.https + good, "");
        row("through the proxy", site + good, "");
        row("expired", m_server.expired + good, noTls);
        row("wrong host", QString(m_server.https).replace("localhost", "127.0.0.1"), noTls);
        row("five redirects", m_server.http + redirect.repeated(5) + good, "");
        row("six redirects", m_server.http + redirect.repeated(6) + good, "(10) TooManyRedirectsError");
        row("http to https", m_server.http + redirect + m_server.https + good, "");
        row("https to http", m_server.https + redirect + m_server.http + never, "(11) InsecureRedirectError");
        row("to the phone", site + redirect + m_server.http + never, "(11) InsecureRedirectError");
        row("to a file", m_server.http + redirect + "file:///etc/passwd", "(301) ProtocolUnknownError");
        row("missing", m_server.http + "/once/404", "(203) ContentNotFoundError");
        row("refused", "http://localhost:1/", "(1) ConnectionRefusedError");
        row("stops half-way", m_server.http + "/once/200/Content-Length:99", "(2) RemoteHostClosedError");
        row("a part", m_server.http + "/once/206/Content-Length:4", "(299) UnknownContentError");
        row("name of the phone", QString(m_server.http + never).replace("localhost", phoneName), canceled);
        row("announces too much", m_server.http + "/hold/200/Content-Length:2000000", canceled);
        row("endless", m_server.https + "/endless/200", canceled);
        row("endless error", m_server.http + "/endless/500", "(401) InternalServerError");
        row("endless redirect", m_server.http + "/endless/302/Location:" + good, "");
        const QString raw = m_server.http + "/raw/", ok = raw + "HTTP%2F1.1+200+OK%0D%0A",
                      chunked = ok + "Transfer-Encoding: chunked%0D%0A%0D%0A";
        row("endless headers", ok + "/a:b%0D%0A", canceled);
        row("endless header line", ok + "a:/b", canceled);
        row("endless status line", raw + "HTTP%2F1.1+200/O", canceled);
        row("endless interim answers", raw + "%0D%0A/HTTP%2F1.1+100+Go%0D%0A%0D%0A", canceled);
        row("endless chunks", chunked + "/1%0D%0Aa%0D%0A", canceled);
        row("endless chunk head", chunked + "1;/x", canceled);
        row("endless trailers", chunked + "0%0D%0A/a:b%0D%0A", canceled);
        row("chunks", chunked + "2;a=b%0D%0Abo%0D%0A2%0D%0Ady%0D%0A0%0D%0Aa:b%0D%0A%0D%0A/", "");
        row("no HTTP", raw + "SSH-2.0%0D%0A/", "(399) ProtocolFailure");
        row("silent", m_server.http + "/hold/200/Content-Length:99", canceled);
        row("long", m_server.http + "/hold/200/Content-Length:99", canceled);
        row("long way", m_server.http + QString("/slow/302/Location:").repeated(5) + good, canceled);
        row("not unpacked", m_server.http + "/once/200/Content-Encoding:gzip", "");
    }

    void downloadsEndWellOrInTheLog()
    {
        const auto [address, failure] = currentRow<QString, QString>();
        LogCapture log;
        const QByteArray tag = QTest::currentDataTag(); // some end in no other way
        KestinDirectoryNetwork network(
            {100'000, tag == "silent" ? 300ms : 20s, tag.startsWith("long") ? 700ms : 30s, 5});
        QByteArray body;
        connect(&network, &KestinDirectoryNetwork::requestFinished, this, [&body](QNetworkReply *reply) {
            body = reply->readAll();
            reply->deleteLater();
        });
        QVERIFY(QSignalSpy(network.get(QUrl(address)), &QObject::destroyed).wait(limitMs)); // in either case
        QCOMPARE(log.contains("<3>KestinDirectoryNetwork::finished : GET request failed : " + failure),
                 !failure.isEmpty());
        QCOMPARE(body.isEmpty(), !failure.isEmpty());
        QVERIFY(body == "body" || !address.endsWith(":gzip"));
        QVERIFY(log.contains("<7>GET " + QString(address).remove(secret)));
        QVERIFY(log.lines.filter("secret").isEmpty());
        const QByteArray requests = contentOf(m_server.folder.filePath("seen"));
        QVERIFY(!requests.contains("\n/file/never") &&
                (!address.contains(secret) || requests.contains(" Basic bWU6c2VjcmV0\n")));
    }
};

QTEST_GUILESS_MAIN(DownloadTest)
#include "DownloadTest.moc"
