// SPDX-License-Identifier: Apache-2.0
#include "src/photo/ContactPhotos.h"
#include "src/photo/KestinDirectoryNetwork.h"
#include "src/photo/PhotoDownloads.h"
#include "src/photo/PhotoResizing.h"
#include "src/photo/UserPhoto.h"
#include "src/photofiles/PhotoAddress.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Files.h"
#include "tests/support/Person.h"
#include "tests/support/Program.h"
#include "tests/support/Rows.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QDir>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QProcess>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <dlfcn.h>
#include <netdb.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

QStringList synced; ///< by the program, in this order

constexpr int limitMs = 20000;
const QByteArray phoneName = "phone.example";
const QString secret = "me:secret@", site = "http://" + secret + "photos.example";
const QString suffix = "_100x100";

QString writeScript(const QString &path, const QByteArray &commands)
{
    QFile(writeFile(path, "#!/bin/sh\n" + commands + "\n")).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    return path;
}

QByteArray encoded(const QImage &image, const char *format)
{
    QBuffer buffer;
    return image.save(&buffer, format) ? buffer.data() : QByteArray();
}

/// A JPEG of a camera that was held upright: what is at its left belongs to the top, and a mark says so.
QByteArray onItsSide(const QImage &image)
{
    const char *mark = "ffe100224578696600004d4d002a00000008000101120003000000010006000000000000";
    return encoded(image, "jpg").insert(2, QByteArray::fromHex(mark));
}

QByteArray progressiveJpeg(const QImage &image)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpg");
    writer.setProgressiveScanWrite(true);
    return writer.write(image) ? buffer.data() : QByteArray();
}

/// With its last scan so many times.
QByteArray withScans(const QByteArray &jpeg, int count)
{
    const qsizetype last = jpeg.lastIndexOf("\xff\xda");
    return jpeg.left(last) + jpeg.mid(last).chopped(2).repeated(count) + jpeg.right(2);
}

/// Says that it has 7000 x 7000 pixels, and no less of colour than of brightness.
[[maybe_unused]] QByteArray inflated(QByteArray jpeg)
{
    const qsizetype frame = jpeg.indexOf("\xff\xc2");
    return jpeg.replace(frame + 5, 4, "\x1b\x58\x1b\x58").replace(frame + 11, 1, "\x11");
}

/// Red; a centred square over the shorter side is blue in its left half and green in the right.
QImage colored(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    const int side = std::min(width, height);
    QPainter painter(&image);
    painter.fillRect((width - side) / 2, (height - side) / 2, side, side, Qt::green);
    painter.fillRect((width - side) / 2, (height - side) / 2, side / 2, side, Qt::blue);
    return image;
}

/// Near the upper left, upper right and lower right corner: "b" blue, "g" green, "w" white, "?" another colour.
QString colorsOf(const QString &path)
{
    const QImage image(path, "jpg");
    QString colors = image.size() == QSize(100, 100) ? "" : "not square";
    for (const QPoint point : {QPoint(2, 2), QPoint(97, 2), QPoint(97, 97)}) {
        const QRgb rgb = image.pixel(point) & 0xc0c0c0;
        colors += rgb == 0xc0c0c0 ? 'w' : rgb == 0xc000 ? 'g' : rgb == 0xc0 ? 'b' : '?';
    }
    return colors;
}

/// An empty store and photo directory, and the downloads put together as the module object does it.
struct Stand : TemporaryStore
{
    Stand()
    {
        fields.photoDirectory = folder.path() + "/photos/";
        fields.fileDiskUserQuota = 1 << 20;
        QDir().mkpath(fields.photoDirectory);
        QObject::connect(&files, &PhotoFiles::quotaExceeded, [this] { told.append("popup"); });
        QObject::connect(&network, &KestinDirectoryNetwork::requestFinished,
                         [this](QNetworkReply *reply) { downloads.requestFinished(reply); });
        QObject::connect(&contacts, &ContactPhotos::contactsUpdated,
                         [this](auto &list, bool only) { tell(list, only); });
        QObject::connect(&user, &UserPhoto::userPhotoChanged, [this](const QString &name) { told.append(name); });
    }
    void tell(const ListContact &list, bool onlyPhotoHasChanged)
    {
        for (const Contact &contact : list)
            told.append(contact.contactId + (onlyPhotoHasChanged ? " only " : " ") + contact.photo);
    }
    void add(const QString &id, const QString &photo, int type = ContactType::Cached)
    {
        TemporaryStore::add(id, person("photo=" + photo), type);
    }
    QString photoOf(const QString &id) { return dao->getContact(id)->value(0).photo; }
    QString photo(const QString &name) const { return fields.photoDirectory + name; }
    QStringList names() const { return QDir(fields.photoDirectory).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
    QStringList takeTold() { return std::exchange(told, {}); }
    void refuseUpdates()
    {
        run("CREATE TRIGGER fault BEFORE UPDATE OF photo ON CONTACT BEGIN SELECT RAISE(FAIL, 'no'); END");
    }

    LogCapture log;
    DirectoryFields fields;
    PhotoFiles files{*dao, fields};
    KestinDirectoryNetwork network;
    PictureProgram pictures;
    PhotoResizing resizing{*dao, files, pictures, folder.filePath("mark")};
    ContactPhotos contacts{network, pictures, *dao, files};
    UserPhoto user{network, pictures, files, fields};
    PhotoDownloads downloads{contacts, user};
    QStringList told;
};

} // namespace

/// Takes the place of the C library's.
extern "C" int fsync(int descriptor)
{
    synced.append(QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(descriptor)).section('/', -1));
    return int(::syscall(SYS_fsync, descriptor));
}

/// The same; a name leads to this machine.
extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **result)
{
    static const auto original = reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return original(name == phoneName ? "localhost" : name, service, hints, result);
}

class PhotoTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_served;
    QProcess m_server;
    QString m_http, m_https, m_expired;

private Q_SLOTS:
    void initTestCase()
    {
        m_server.start("python3", {KESTIN_PHOTO_SERVER, m_served.path()});
        while (!m_server.canReadLine() && m_server.waitForReadyRead(limitMs)) {
        }
        const QStringList ports = QString::fromLatin1(m_server.readLine().trimmed()).split(' ');
        QCOMPARE(ports.size(), 3);
        m_http = "http://localhost:" + ports[0];
        m_https = "https://localhost:" + ports[1];
        m_expired = "https://localhost:" + ports[2];
        writeFile(m_served.filePath("a.jpg"), encoded(colored(300, 200), "jpg"));
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(QSslCertificate::fromPath(m_served.filePath("ca.pem")));
        QSslConfiguration::setDefaultConfiguration(configuration);
        qputenv("http_proxy", m_http.toLatin1());
        qputenv("no_proxy", "localhost,127.0.0.1," + phoneName);
    }

    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished(limitMs);
    }

    void onlyAddressesElsewhereAreDownloaded()
    {
        for (const char *photo : {"http://photos.example/a", "HTTPS://10.0.0.1:8443/a", "http://128.0.0.1/a",
                                  "https://[2001:db8::1]/a", "http://localhost.example/a"})
            QVERIFY2(PhotoAddress::isToDownload(photo), photo);
        for (const char *photo : {"", "/data/a.jpg", "ftp://photos.example/a", "file:///a", "http:", "http:///a"})
            QVERIFY2(!PhotoAddress::isToDownload(photo), photo);
        for (const char *host : {"localhost", "LocalHost.", "a.localhost", "127.9.9.9:80", "u:p@127.1", "127.0.0.1.",
                                 "2130706433", "0x7f.1", "0177.0.0.1", "[::1]", "[::ffff:127.0.0.1]", "[::ffff:7f00:1]",
                                 "0.0.0.0", "[::]", "%31%32%37.0.0.1"})
            QVERIFY2(!PhotoAddress::isToDownload(QString("http://%1/a").arg(host)), host);
    }

    void picturesBecomeSquareAndUprightOrAreRefused_data()
    {
        const Rows<QByteArray, QString, QString> row("picture", "size", "colors");
        QImage clear(30, 20, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        const QByteArray png = encoded(colored(300, 200), "png");
        const char *gif = "4749463837610100010080000000ff000000002c00000000010001000002024401003b";
        const char *bomb = "89504e470d0a1a0a0000000d494844520000ea600000ea6008020000000fb0e215";
        row("png", png, "300 x 200", "bgg");
        row("jpeg, tall", encoded(colored(200, 301), "jpg"), "200 x 301", "bgg");
        for (const int side : {99, 100, 101}) {
            row(QByteArray::number(side) + " wide", encoded(colored(side, 140), "png"), QString("%1 x 140").arg(side),
                "bgg");
            row(QByteArray::number(side) + " high", encoded(colored(140, side), "jpg"), QString("140 x %1").arg(side),
                "bgg");
        }
        row("100 x 100", encoded(colored(100, 100), "jpg"), "100 x 100", "bgg");
        row("webp", encoded(colored(300, 200), "webp"), "300 x 200", "bgg");
        row("one pixel", encoded(colored(1, 1), "bmp"), "1 x 1", "ggg");
        row("very wide", encoded(colored(9000, 50), "png"), "9000 x 50", "bgg");
        row("12 megapixels", encoded(colored(4000, 3000), "jpg"), "4000 x 3000", "bgg");
        row("large png", encoded(colored(1601, 1200), "png"), "1601 x 1200", "bgg");
        row("on its side", onItsSide(colored(300, 200)), "200 x 300", "bbg");
        row("large, on its side", onItsSide(colored(1601, 1200)), "1200 x 1601", "bbg");
        row("transparent", encoded(clear, "png"), "30 x 20", "www");
        row("gif", QByteArray::fromHex(gif), "1 x 1", "ggg");
        for (const char *format : {"ico", "pbm", "xpm", "xbm"})
            row(format, encoded(colored(30, 20), format), "0 x 0", "");
        row("svg", QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"), "0 x 0", "");
        const QByteArray progressive = progressiveJpeg(colored(300, 200));
        row("progressive", progressive, "300 x 200", "bgg");
        row("thousands of scans", withScans(progressive, 5000), "0 x 0", "");
#ifndef __SANITIZE_ADDRESS__ // which takes any memory that it wants
        row("legal, but 300 MB of memory", inflated(progressive), "0 x 0", "");
#endif
        row("text", QByteArray("<html>photo</html>"), "0 x 0", "");
        row("half a png", png.left(png.size() / 2), "0 x 0", "");
        row("60000 x 60000", QByteArray::fromHex(bomb) + png.mid(33), "0 x 0", "");
        row("missing", QByteArray(), "0 x 0", "");
        row("pipe", QByteArray(), "0 x 0", "");
        row("relative", png, "0 x 0", "");
    }

    void picturesBecomeSquareAndUprightOrAreRefused()
    {
        QFETCH(QByteArray, picture);
        QFETCH(QString, size);
        QFETCH(QString, colors);
        Stand stand;
        const QByteArray tag = QTest::currentDataTag();
        const QString target = writeFile(stand.folder.filePath("target"), "before"),
                      full = stand.folder.filePath("source.ico");
        if (tag == "pipe")
            QCOMPARE(::mkfifo(qPrintable(full), 0600), 0);
        else if (tag != "missing")
            writeFile(full, picture);
        const QString source = tag == "relative" ? QDir().relativeFilePath(full) : full;
        QCOMPARE(stand.resizing.resizeAndCropToSquare(source, 100, target), !colors.isEmpty());
        const QString begin = "KestinDirectory::resizeAndCropToSquare, ";
        QVERIFY(stand.log.contains("<7>" + begin + "size of image is: " + size));
        if (colors.isEmpty()) {
            QVERIFY(stand.log.contains("<3>" + begin + "failed to load image: " + source));
            QCOMPARE(QFileInfo(target).size(), 6);
        } else {
            QVERIFY(stand.log.contains("<7>" + begin + "about to write new image with size: 100 x 100"));
            QCOMPARE(colorsOf(target), colors);
            QVERIFY(stand.resizing.resizeAndCropToSquare(source, 100, QString())); // onto itself
            QCOMPARE(colorsOf(source), colors);
        }
    }

    void theStartPassResizesWhatItMay()
    {
        for (const int logLevel : {7, 4}) {
            Stand stand;
            KestinLogger::setLevel(logLevel);
            const QByteArray picture = encoded(colored(30, 20), "png");
            const QString own = writeFile(stand.photo("photo_1"), picture),
                          shared = writeFile(stand.folder.filePath("s"), picture);
            const QString managed = writeFile(stand.folder.filePath("m"), picture);
            stand.add("7", managed, ContactType::DeviceManagement);
            int id = 'a';
            for (const QString &photo : {own, shared, shared, managed, QString("/no"), site, "/x" + suffix, QString()})
                stand.add(QChar(id++), photo);
            PhotoResizing &pass = stand.resizing;
            connect(&pass, &PhotoResizing::contactsUpdated, this,
                    [&](auto &list, bool only) { stand.tell(list, only); });
            for (int start = 0; start < 2; ++start) // the second finds nothing more to do
                pass.resizeContactPhotosIfNeeded();
            QStringList expected;
            for (const QString &photo : {"a " + own, "b " + shared, "c " + shared, "d " + managed})
                expected.append(photo + suffix);
            QCOMPARE(stand.takeTold(), expected);
            QCOMPARE(stand.names(), QStringList{"photo_1" + suffix});
            QVERIFY(QFile::exists(managed) && !QFile::exists(shared) && colorsOf(shared + suffix) == "bgg");
            QCOMPARE(stand.photoOf("#DM_7#"), managed);
            const QString begin = "KestinDirectory::resizeContactPhotosIfNeeded";
            QVERIFY(stand.log.contains("<3>" + begin + ": failed while trying to resize photo: /no to /no" + suffix));
            for (const char *line : {"#DM_7# is from DM => we don't touch the photo!", "h, no photo, nothing to do.",
                                     "f, photo is not local, nothing to do.",
                                     "g, photo already resized, nothing to do.", "a, photo will be resized!"})
                QCOMPARE(stand.log.contains("<7>" + begin + " - contact " + line), logLevel == 7);

            stand.add("y", writeFile(own, encoded(colored(20, 30), "png"))); // its name comes again
            const QString colors = colorsOf(own + suffix);
            pass.resizeContactPhotosIfNeeded();
            QCOMPARE(stand.photoOf("y"), own + "_2" + suffix);
            QVERIFY(stand.photoOf("a") == own + suffix && colorsOf(own + suffix) == colors);

            stand.add("z", writeFile(own, picture));
            stand.refuseUpdates();
            pass.resizeContactPhotosIfNeeded();
            QVERIFY(stand.log.contains("<3>" + begin + " : local contact id z could NOT be updated. Res=-1"));
            QVERIFY(QFile::exists(own) && stand.photoOf("z") == own);
        }
    }

    void thePictureProgramBindsItselfBeforeItReads()
    {
        Program program("kestin-picture", {"100"});
        program.start(); // nothing comes on its standard input
        const auto shown = [&program](const char *name) {
            return contentOf(QString("/proc/%1/%2").arg(program.processId()).arg(name)).simplified();
        };
        QTRY_VERIFY(shown("status").contains("NoNewPrivs: 1"));
        for (const char *limit : {"Max cpu time 5 5 ", "Max open files 16 16 ", "Max core file size 0 0 ",
#ifndef __SANITIZE_ADDRESS__
                                  "Max data size 134217728 134217728 ",
#endif
                                  "Max file size 1048576 1048576 "})
            QVERIFY2(shown("limits").contains(limit), limit);
    }

    void aProgramThatFailsCostsThePictureOnly_data()
    {
        const Rows<QByteArray, QString> row("program", "line");
        const QString unusable = "<4>Picture %1 cannot be used: ";
        row("hangs", QByteArray("exec sleep 99"), unusable + "it takes too long");
        row("crashes", QByteArray("kill -SEGV $$"), unusable + "the program for pictures ended by signal 11");
        row("floods", QByteArray("exec cat /dev/zero"), unusable + "the answer is too large");
        row("answers something else", QByteArray("echo square"),
            unusable + "the program for pictures answers something else");
        row("says why not", QByteArray("echo reason >&2; exit 1"), unusable + "reason");
        row("missing", QByteArray(), "<3>The program for pictures cannot be started: %2: ");
    }

    void aProgramThatFailsCostsThePictureOnly()
    {
        QFETCH(QByteArray, program);
        QFETCH(QString, line);
        Stand stand;
        const QString path = stand.folder.filePath("program");
        if (!program.isEmpty())
            writeScript(path, program);
        const bool hangs = program.endsWith("99");
        PictureProgram pictures(path, hangs ? 300ms : 10s);
        const QByteArray content = encoded(colored(30, 20), "png");
        const QString source = writeFile(stand.photo("photo_1"), content);
        const QString expected = line.contains("%2") ? line.replace("%2", path) : line.arg(source);
        stand.add("a", source);
        PhotoResizing(*stand.dao, stand.files, pictures, stand.folder.filePath("mark")).resizeContactPhotosIfNeeded();
        QVERIFY(!stand.log.lines.filter(expected).isEmpty());
        QVERIFY(stand.photoOf("a") == source && stand.names() == QStringList{"photo_1"});

        stand.log.lines.clear();
        QSignalSpy answered(&pictures, &PictureProgram::answered);
        for (int i = 0; i < 2; ++i)
            pictures.ask({source, content, 100});
        QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 2, limitMs);
        QVERIFY(!stand.log.lines.filter(expected).isEmpty() && answered.last().value(1).toByteArray().isNull());
    }

    void aPictureIsNotLostWhileTheServiceIsBusy()
    {
        PictureProgram pictures(PictureProgram::path(), 1ms);
        QSignalSpy answered(&pictures, &PictureProgram::answered);
        pictures.ask({"a", encoded(colored(300, 200), "bmp"), 100}); // more than a pipe holds
        QCoreApplication::sendPostedEvents(&pictures);               // which starts it
        siginfo_t end = {};
        for (const QDeadlineTimer limit(limitMs); end.si_pid == 0 && !limit.hasExpired(); QThread::yieldCurrentThread())
            QCOMPARE(::waitid(P_ALL, 0, &end, WEXITED | WNOWAIT | WNOHANG | __WALL), 0);
        QTRY_COMPARE(answered.size(), 1);
        QVERIFY(!answered.first().value(1).toByteArray().isNull());
    }

    void theProgramEndsWithWhoAskedIt()
    {
        QTemporaryDir folder;
        const QString path = writeScript(folder.filePath("program"), "echo $$ > \"$0.pid\"\nexec sleep 99");
        QByteArray number;
        {
            PictureProgram pictures(path, 60s);
            pictures.ask({"a", "BM", 100});
            QTRY_VERIFY_WITH_TIMEOUT((number = contentOf(path + ".pid")).endsWith('\n'), limitMs);
        }
        QVERIFY(::kill(number.trimmed().toInt(), 0) != 0 && errno == ESRCH);
    }

    void aPassThatTakesTooLongGoesOnAtTheNextStart()
    {
        Stand stand;
        for (const char *name : {"a", "b", "c", "d"})
            stand.add(name, writeFile(stand.photo(QLatin1String("photo_") + name), encoded(colored(30, 20), "png")));
        const QString hanging = writeScript(stand.folder.filePath("hanging"), "exec sleep 99"),
                      mark = stand.folder.filePath("mark");
        const PictureProgram hangs(hanging, 400ms);
        PhotoResizing hanged(*stand.dao, stand.files, hangs, mark, 1s);
        const auto tried = [&stand] {
            QString ids;
            for (const QString &line : std::exchange(stand.log.lines, {}).filter("failed to load image"))
                ids += line.back();
            return ids;
        };
        for (const char *ids : {"ab", "cd", "", ""}) { // what ran over is passed over
            hanged.resizeContactPhotosIfNeeded();
            QCOMPARE(tried(), ids);
        }
        const QString passedOver = "<3>KestinDirectory::resizeContactPhotosIfNeeded: failed while trying to resize ";
        hanged.resizeContactPhotosIfNeeded();
        QCOMPARE(stand.log.lines.filter(passedOver).size(), 4);
        writeFile(stand.photo("photo_b"), encoded(colored(31, 20), "png"));
        hanged.resizeContactPhotosIfNeeded();
        QCOMPARE(tried(), "b");
        for (const char *name : {"a", "c", "d"})
            writeFile(stand.photo(QLatin1String("photo_") + name), encoded(colored(32, 20), "png"));
        writeFile(mark, QByteArray("\xff\0%zz\n\n", 7) + QByteArray(100'000, 'x')); // whatever became of it
        PhotoResizing(*stand.dao, stand.files, stand.pictures, mark, 60s).resizeContactPhotosIfNeeded();
        QVERIFY(stand.photoOf("a").endsWith(suffix) && stand.photoOf("d").endsWith(suffix) && !QFile::exists(mark));
    }

    void filesAreKeptUnderTheQuotaAndRemovedWhenUnused()
    {
        Stand stand;
        writeFile(stand.photo("UserPhoto_1"), QByteArray(300, 'x'));
        stand.fields.fileDiskUserQuota = 1000;
        synced.clear();
        const QString used = stand.files.keep(QByteArray(400, 'x')).value();
        const QString unused = stand.files.keep(QByteArray(300, 'x')).value();
        QVERIFY(used.startsWith(stand.photo("photo_")) && !unused.isNull() && stand.takeTold().isEmpty());
        QVERIFY(synced.size() == 4 && synced[1] == "photos" && synced[3] == "photos");
        QVERIFY(!stand.files.keep("x") && stand.takeTold() == QStringList{"popup"});
        stand.files.removeIfUnused(writeFile(stand.photo("photo_2"), QByteArray(500, 'x'))); // was never counted
        QVERIFY(!stand.files.keep("x") && !stand.files.keep("xx", 1));
        stand.files.removeIfUnused(stand.files.keep("x", 1).value());
        QCOMPARE(stand.takeTold().size(), 2);
        QDir().mkpath(stand.photo("photo_"));
        stand.add("a", used);
        writeFile(stand.folder.filePath("photo_1"), "x");
        for (const QString &path : {used, unused, stand.folder.filePath("photo_1"), stand.photo("../photo_1"),
                                    stand.photo("photo_/../../photo_1"), stand.photo("UserPhoto_1"), QString()})
            stand.files.removeIfUnused(path);
        const QStringList kept = {"UserPhoto_1", QFileInfo(used).fileName()};
        QCOMPARE(stand.names(), kept);
        QVERIFY(QFile::exists(stand.folder.filePath("photo_1")) && stand.files.keep(QByteArray(300, 'y')));

        QVERIFY(
            stand.dao->updatePhotoContact("a", QString(used).replace("/photos/", "/./photos//"))); // another spelling
        writeFile(stand.photo("UserPhoto_3" + suffix + ".AbCdEf"), "x");
        stand.run("ALTER TABLE CONTACT RENAME TO AWAY");
        stand.files.sweep(); // who names what cannot be known
        QCOMPARE(stand.names().size(), 4);
        stand.run("ALTER TABLE AWAY RENAME TO CONTACT");
        stand.files.sweep();
        QCOMPARE(stand.names(), kept);

        stand.fields.fileDiskUserQuota = 100 << 20;
        const QByteArray largest(10 << 20, 'x');
        QVERIFY(stand.files.keep(largest) && !stand.files.keep(largest + 'x'));
        QVERIFY(stand.files.keep(encoded(colored(100, 100), "jpg")).value().endsWith(suffix));
        for (const QByteArray &other :
             {encoded(colored(100, 100), "png"), encoded(colored(100, 99), "jpg"), onItsSide(colored(100, 100))})
            QVERIFY(!stand.files.keep(other).value().endsWith(suffix));
        QDir(stand.fields.photoDirectory).removeRecursively();
        QVERIFY(!stand.files.keep("x") && stand.takeTold().isEmpty()); // it cannot be written
    }

    void downloadsEndWellOrInTheLog_data()
    {
        const Rows<QString, QString> row("address", "failure");
        const QString canceled = "(5) OperationCanceledError", noTls = "(6) SslHandshakeFailedError";
        const QString redirect = "/once/302/Location:", good = "/file/a.jpg", never = "/file/never";
        row("https", m_https + good, "");
        row("through the proxy", site + good, "");
        row("expired", m_expired + good, noTls);
        row("wrong host", QString(m_https).replace("localhost", "127.0.0.1"), noTls);
        row("five redirects", m_http + redirect.repeated(5) + good, "");
        row("six redirects", m_http + redirect.repeated(6) + good, "(10) TooManyRedirectsError");
        row("http to https", m_http + redirect + m_https + good, "");
        row("https to http", m_https + redirect + m_http + never, "(11) InsecureRedirectError");
        row("to the phone", site + redirect + m_http + never, "(11) InsecureRedirectError");
        row("to a file", m_http + redirect + "file:///etc/passwd", "(301) ProtocolUnknownError");
        row("missing", m_http + "/once/404", "(203) ContentNotFoundError");
        row("refused", "http://localhost:1/", "(1) ConnectionRefusedError");
        row("stops half-way", m_http + "/once/200/Content-Length:99", "(2) RemoteHostClosedError");
        row("a part", m_http + "/once/206/Content-Length:4", "(299) UnknownContentError");
        row("name of the phone", QString(m_http + never).replace("localhost", phoneName), canceled);
        row("announces too much", m_http + "/hold/200/Content-Length:2000000", canceled);
        row("endless", m_https + "/endless/200", canceled);
        row("endless error", m_http + "/endless/500", "(401) InternalServerError");
        row("endless redirect", m_http + "/endless/302/Location:" + good, "");
        const QString raw = m_http + "/raw/", ok = raw + "HTTP%2F1.1+200+OK%0D%0A",
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
        row("silent", m_http + "/hold/200/Content-Length:99", canceled);
        row("long", m_http + "/hold/200/Content-Length:99", canceled);
        row("long way", m_http + QString("/slow/302/Location:").repeated(5) + good, canceled);
        row("not unpacked", m_http + "/once/200/Content-Encoding:gzip", "");
    }

    void downloadsEndWellOrInTheLog()
    {
        QFETCH(QString, address);
        QFETCH(QString, failure);
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
        const QByteArray requests = contentOf(m_served.filePath("seen"));
        QVERIFY(!requests.contains("\n/file/never") &&
                (!address.contains(secret) || requests.contains(" Basic bWU6c2VjcmV0\n")));
    }

    void answersAreTakenWhereTheyStillFit_data()
    {
        const Rows<QString, QString, std::function<void(Stand &)>> row("path", "told", "meanwhile");
        const char *good = "/file/a.jpg";
        row("kept", good, "a only ", [](Stand &) {});
        row("kept once", good, "a only ", [](Stand &stand) { stand.contacts.want("a", site + "/file/a.jpg"); });
        row("kept from elsewhere", "/once/302/Location:/file/a.jpg", "a only ", [](Stand &) {});
        row("contact gone", good, "", [](Stand &stand) { QVERIFY(stand.dao->deleteContact("a")); });
        row("other photo", good, "", [](Stand &stand) { QVERIFY(stand.dao->updatePhotoContact("a", "/x")); });
        row("id dropped", good, "", [](Stand &stand) { stand.contacts.forget({"a"}); });
        row("id dropped at the end", good, "", [](Stand &stand) {
            QObject::connect(&stand.network, &KestinDirectoryNetwork::requestFinished,
                             [&stand] { stand.contacts.forget({"a"}); });
        });
        row("no address", good, "", [](Stand &stand) { stand.contacts.want("a", "/x"); });
        row("no room", good, "popup", [](Stand &stand) { stand.fields.fileDiskUserQuota = 0; });
        row("cannot be stored", good, "", [](Stand &stand) { stand.refuseUpdates(); });
        row("no picture", "/once/200", "", [](Stand &) {});
        row("not there", "/once/404", "", [](Stand &) {});
    }

    void answersAreTakenWhereTheyStillFit()
    {
        QFETCH(QString, path);
        QFETCH(std::function<void(Stand &)>, meanwhile);
        QFETCH(QString, told);
        Stand stand;
        stand.add("a", site + path);
        QVERIFY(stand.contacts.want("a", site + path) != 0 && stand.contacts.want("b", "/local") == 0);
        meanwhile(stand);
        for (int i = 0; i < 9; ++i)
            stand.contacts.want(QString::number(i), site + "/once/404");
        QCOMPARE(stand.log.lines.filter("<7>GET ").size() - stand.log.lines.filter("nobody wants it").size(), 4);
        QTRY_COMPARE_WITH_TIMEOUT(stand.contacts.pendingCount(), 0, limitMs);
        const QString photo = told.startsWith("a") ? stand.photoOf("a") : QString();
        QCOMPARE(stand.told.join(","), told + photo);
        QCOMPARE(stand.names().size(), photo.isEmpty() ? 0 : 1);
        QVERIFY(photo.isEmpty() || (photo.endsWith(suffix) && colorsOf(photo) == "bgg"));
        const QString noPicture =
            "<3>KestinDirectory::resizeAndCropToSquare, failed to load image: http://photos.example" + path;
        QCOMPARE(stand.log.contains(noPicture), path == "/once/200");
        QVERIFY(stand.log.lines.filter("secret").isEmpty());
    }

    void whatNobodyWantsGivesItsPlaceBack()
    {
        Stand stand;
        for (const char *gone : {"0", "1", "2", "3"})
            stand.contacts.want(gone, site + "/once/302/Location:/hold/200");
        QTRY_COMPARE_WITH_TIMEOUT(stand.log.lines.filter("sent on to").size(), 4, limitMs);
        stand.add("a", site + "/file/a.jpg");
        stand.contacts.want("a", site + "/file/a.jpg");
        stand.contacts.giveUpUnfitting();
        stand.run("ALTER TABLE CONTACT RENAME TO AWAY");
        stand.contacts.giveUpUnfitting(); // who has which photo cannot be known
        stand.run("ALTER TABLE AWAY RENAME TO CONTACT");
        QVERIFY(stand.log.lines.removeIf([](auto &line) { return line.startsWith("<3>"); }) > 0);
        QTRY_COMPARE_WITH_TIMEOUT(stand.told, QStringList{"a only " + stand.photoOf("a")}, limitMs);
        QVERIFY(stand.log.lines.filter("<3>").isEmpty() && stand.contacts.pendingCount() == 0);
    }

    void theUserPhotoFollowsTheSetting()
    {
        Stand stand;
        const QString address = site + "/once/302/Location:/file/changing",
                      local = writeFile(stand.folder.filePath("local"), encoded(colored(20, 30), "png"));
        const QString served = writeFile(m_served.filePath("changing"), encoded(colored(30, 20), "png"));
        const auto ended = [&stand] { return stand.log.lines.filter("GET request ").size(); };
        const auto judged = [&stand] { return stand.log.lines.filter("loaded image: ").size(); };

        stand.user.setUserPhoto(local);
        QTRY_COMPARE(judged(), 1);
        const QString first = stand.takeTold().value(0);
        QVERIFY(first.startsWith(stand.photo("UserPhoto_")) && first.endsWith(suffix) && colorsOf(first) == "bgg");
        QFile::remove(local);
        stand.user.setUserPhoto(local);
        QTRY_COMPARE(stand.told, QStringList{first}); // kept from when it could be read
        stand.told.clear();
        for (const QString &bad : {QString("/nowhere"), QString("local"), m_http, site + "/once/404"}) {
            stand.user.setUserPhoto(bad);
            QTRY_VERIFY(stand.log.contains("<3>KestinDirectory::resizeAndCropToSquare, failed to load image: " + bad) ||
                        bad.startsWith("http"));
        }
        QTRY_COMPARE(ended(), 1);
        QVERIFY(stand.takeTold().isEmpty() && QFile::exists(first));

        stand.user.setUserPhoto(address);
        QTRY_COMPARE(judged(), 2);
        const QString second = stand.takeTold().value(0);
        QCOMPARE(stand.names(), QStringList{QFileInfo(second).fileName()});
        stand.user.setUserPhoto(address);
        QCOMPARE(stand.told, QStringList{second}); // at once
        QTRY_COMPARE(judged(), 3);
        QCOMPARE(stand.takeTold(), QStringList{second}); // and not again, being the same
        writeFile(served, encoded(colored(300, 200).copy(0, 0, 99, 99), "png"));
        stand.user.setUserPhoto(address);
        QTRY_COMPARE(judged(), 4);
        QCOMPARE(stand.names(), QStringList{QFileInfo(stand.takeTold().value(1)).fileName()});
        stand.user.setUserPhoto(address);
        stand.user.setUserPhoto(QString()); // before the answer came
        QVERIFY(stand.log.lines.filter("nobody wants it any more").size() == 1 && ended() == 4);
        QVERIFY(stand.takeTold().last().isEmpty() && stand.names().isEmpty());
        stand.user.setUserPhoto(served);
        stand.user.setUserPhoto(QString()); // before it was made square
        QSignalSpy answered(&stand.pictures, &PictureProgram::answered);
        stand.pictures.ask({served, std::nullopt, 100});
        QVERIFY(answered.wait(limitMs) && answered.size() == 1);
        QVERIFY(stand.takeTold() == QStringList{QString()} && stand.names().isEmpty());
    }
};

QTEST_GUILESS_MAIN(PhotoTest)
#include "PhotoTest.moc"
