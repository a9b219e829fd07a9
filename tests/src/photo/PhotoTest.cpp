// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/LongWork.h"
#include "src/photo/ContactPhotos.h"
#include "src/photo/PhotoDownloads.h"
#include "src/photo/PhotoNetwork.h"
#include "src/photo/PhotoResizing.h"
#include "src/photo/UserPhoto.h"
#include "src/photofiles/PhotoAddress.h"
#include "src/photofiles/PhotoFiles.h"
#include "src/photofiles/PictureProgram.h"
#include "tests/src/download/PhotoServer.h"
#include "tests/support/Program.h"
#include "tests/support/UseCaseFixture.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QImage>
#include <QImageWriter>
#include <QNetworkReply>
#include <QPainter>
#include <QThread>

#include <csignal>
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

/// A sanitizer takes any memory that it wants, and so does QEMU's user mode.
bool isMemoryBounded()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return !qEnvironmentVariableIsSet("QEMU_LD_PREFIX");
#endif
}

QStringList synced; ///< by the program, in this order

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
struct PhotoFixture : UseCaseFixture
{
    PhotoFixture()
    {
        QObject::connect(&files, &PhotoFiles::quotaExceeded, [this] { told.append("popup"); });
        QObject::connect(&network, &PhotoNetwork::requestFinished,
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
    QString photoOf(const QString &id) { return stored(id).photo; }
    QString photo(const QString &name) const { return fields.photoDirectory + name; }
    QStringList takeTold() { return std::exchange(told, {}); }
    void refuseUpdates()
    {
        run("CREATE TRIGGER fault BEFORE UPDATE OF photo ON CONTACT BEGIN SELECT RAISE(FAIL, 'no'); END");
    }

    PhotoFiles files{*dao, fields};
    PhotoNetwork network;
    PictureProgram pictures;
    PhotoResizing resizing{*dao, files, pictures, folder.filePath("mark")};
    LongWork longWork;
    ContactPhotos contacts{network, pictures, *dao, files, longWork};
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

class PhotoTest : public QObject
{
    Q_OBJECT

    PhotoServer m_server;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_server.start());
        writeFile(m_server.folder.filePath("a.jpg"), encoded(colored(300, 200), "jpg"));
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
        const Rows<QByteArray, QString> row;
        QImage clear(30, 20, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        const QByteArray png = encoded(colored(300, 200), "png");
        const char *gif = "4749463837610100010080000000ff000000002c00000000010001000002024401003b";
        const char *bomb = "89504e470d0a1a0a0000000d494844520000ea600000ea6008020000000fb0e215";
        row("png", png, "bgg");
        row("jpeg, tall", encoded(colored(200, 301), "jpg"), "bgg");
        for (const int side : {99, 100, 101}) {
            row(QByteArray::number(side) + " wide", encoded(colored(side, 140), "png"), "bgg");
            row(QByteArray::number(side) + " high", encoded(colored(140, side), "jpg"), "bgg");
        }
        row("100 x 100", encoded(colored(100, 100), "jpg"), "bgg");
        row("webp", encoded(colored(300, 200), "webp"), "bgg");
        row("one pixel", encoded(colored(1, 1), "bmp"), "ggg");
        row("very wide", encoded(colored(9000, 50), "png"), "bgg");
        row("12 megapixels", encoded(colored(4000, 3000), "jpg"), "bgg");
        row("large png", encoded(colored(1601, 1200), "png"), "bgg");
        row("on its side", onItsSide(colored(300, 200)), "bbg");
        row("large, on its side", onItsSide(colored(1601, 1200)), "bbg");
        row("transparent", encoded(clear, "png"), "www");
        row("gif", QByteArray::fromHex(gif), "ggg");
        for (const char *format : {"ico", "pbm", "xpm", "xbm"})
            row(format, encoded(colored(30, 20), format), "");
        row("svg", QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"), "");
        const QByteArray progressive = progressiveJpeg(colored(300, 200));
        row("progressive", progressive, "bgg");
        row("thousands of scans", withScans(progressive, 5000), "");
        if (isMemoryBounded())
            row("legal, but 300 MB of memory", inflated(progressive), "");
        row("text", QByteArray("<html>photo</html>"), "");
        row("half a png", png.left(png.size() / 2), "");
        row("60000 x 60000", QByteArray::fromHex(bomb) + png.mid(33), "");
        row("missing", QByteArray(), "");
        row("pipe", QByteArray(), "");
        row("relative", png, "");
    }

    void picturesBecomeSquareAndUprightOrAreRefused()
    {
        const auto [picture, colors] = currentRow<QByteArray, QString>();
        PhotoFixture store;
        const QByteArray tag = QTest::currentDataTag();
        const QString target = writeFile(store.folder.filePath("target"), "before"),
                      full = store.folder.filePath("source.ico");
        if (tag == "pipe")
            QCOMPARE(::mkfifo(qPrintable(full), 0600), 0);
        else if (tag != "missing")
            writeFile(full, picture);
        const QString source = tag == "relative" ? QDir().relativeFilePath(full) : full;
        QCOMPARE(store.resizing.resizeAndCropToSquare(source, 100, target), !colors.isEmpty());
        if (colors.isEmpty()) {
            QVERIFY(store.log.contains("<3>KestinDirectory::resizeAndCropToSquare, failed to load image: " + source));
            QCOMPARE(contentOf(target), "before");
        } else {
            QCOMPARE(colorsOf(target), colors);
            QVERIFY(store.resizing.resizeAndCropToSquare(source, 100, QString())); // onto itself
            QCOMPARE(colorsOf(source), colors);
        }
    }

    void theStartPassResizesWhatItMay()
    {
        for (const int logLevel : {KestinLogger::Debug, KestinLogger::Warning}) { // which decides what is read
            PhotoFixture store;
            KestinLogger::setLevel(logLevel);
            const QByteArray picture = encoded(colored(30, 20), "png");
            const QString own = writeFile(store.photo("photo_1"), picture),
                          shared = writeFile(store.folder.filePath("s"), picture),
                          managed = writeFile(store.folder.filePath("m"), picture);
            store.add("7", managed, ContactType::DeviceManagement);
            int id = 'a';
            for (const QString &photo : {own, shared, shared, managed, QString("/no"), site, "/x" + suffix, QString()})
                store.add(QChar(id++), photo);
            PhotoResizing &pass = store.resizing;
            connect(&pass, &PhotoResizing::contactsUpdated, this,
                    [&](auto &list, bool only) { store.tell(list, only); });
            for (int start = 0; start < 2; ++start) // the second finds nothing more to do
                pass.resizeContactPhotosIfNeeded();
            QStringList expected;
            for (const QString &photo : {"a " + own, "b " + shared, "c " + shared, "d " + managed})
                expected.append(photo + suffix);
            QCOMPARE(store.takeTold(), expected);
            QCOMPARE(store.photoFiles(), QStringList{"photo_1" + suffix});
            QVERIFY(QFile::exists(managed) && !QFile::exists(shared) && colorsOf(shared + suffix) == "bgg");
            QCOMPARE(store.photoOf("#DM_7#"), managed);

            store.add("y", writeFile(own, encoded(colored(20, 30), "png"))); // its name comes again
            const QString colors = colorsOf(own + suffix);
            pass.resizeContactPhotosIfNeeded();
            QCOMPARE(store.photoOf("y"), own + "_2" + suffix);
            QVERIFY(store.photoOf("a") == own + suffix && colorsOf(own + suffix) == colors);

            store.add("z", writeFile(own, picture));
            store.refuseUpdates();
            pass.resizeContactPhotosIfNeeded();
            QVERIFY(QFile::exists(own) && store.photoOf("z") == own);
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
        QStringList limits{"Max cpu time 5 5 ", "Max open files 16 16 ", "Max core file size 0 0 ",
                           "Max file size 1048576 1048576 "};
        if (isMemoryBounded())
            limits.append("Max data size 134217728 134217728 ");
        for (const QString &limit : limits)
            QVERIFY2(shown("limits").contains(limit.toUtf8()), qPrintable(limit));
    }

    void aProgramThatFailsCostsThePictureOnly_data()
    {
        const Rows<QByteArray, QString> row;
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
        auto [program, line] = currentRow<QByteArray, QString>();
        PhotoFixture store;
        const QString path = store.folder.filePath("program");
        if (!program.isEmpty())
            writeScript(path, program);
        const bool hangs = program.endsWith("99");
        PictureProgram pictures(path, hangs ? 300ms : 10s);
        const QByteArray content = encoded(colored(30, 20), "png");
        const QString source = writeFile(store.photo("photo_1"), content);
        const QString expected = line.contains("%2") ? line.replace("%2", path) : line.arg(source);
        store.add("a", source);
        PhotoResizing(*store.dao, store.files, pictures, store.folder.filePath("mark")).resizeContactPhotosIfNeeded();
        QVERIFY(!store.log.lines.filter(expected).isEmpty());
        QVERIFY(store.photoOf("a") == source && store.photoFiles() == QStringList{"photo_1"});

        store.log.lines.clear();
        QSignalSpy answered(&pictures, &PictureProgram::answered);
        for (int i = 0; i < 2; ++i)
            pictures.ask({source, content, 100});
        QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 2, limitMs);
        QVERIFY(!store.log.lines.filter(expected).isEmpty() && answered.last().value(1).toByteArray().isNull());
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
        PhotoFixture store;
        for (const QString name : {"a", "b", "c", "d"})
            store.add(name, writeFile(store.photo("photo_" + name), encoded(colored(30, 20), "png")));
        const QString hanging = writeScript(store.folder.filePath("hanging"), "exec sleep 99"),
                      mark = store.folder.filePath("mark");
        const PictureProgram hangs(hanging, 400ms);
        PhotoResizing hanged(*store.dao, store.files, hangs, mark, 1s);
        const auto tried = [&store] {
            QString ids;
            for (const QString &line : std::exchange(store.log.lines, {}).filter("failed to load image"))
                ids += line.back();
            return ids;
        };
        for (const char *ids : {"ab", "cd", "", ""}) { // what ran over is passed over
            hanged.resizeContactPhotosIfNeeded();
            QCOMPARE(tried(), ids);
        }
        const QString passedOver = "<3>KestinDirectory::resizeContactPhotosIfNeeded: failed while trying to resize ";
        hanged.resizeContactPhotosIfNeeded();
        QCOMPARE(store.log.lines.filter(passedOver).size(), 4);
        writeFile(store.photo("photo_b"), encoded(colored(31, 20), "png"));
        hanged.resizeContactPhotosIfNeeded();
        QCOMPARE(tried(), "b");
        for (const QString name : {"a", "c", "d"})
            writeFile(store.photo("photo_" + name), encoded(colored(32, 20), "png"));
        writeFile(mark, QByteArray("\xff\0%zz\n\n", 7) + QByteArray(100'000, 'x')); // whatever became of it
        PhotoResizing(*store.dao, store.files, store.pictures, mark, 60s).resizeContactPhotosIfNeeded();
        QVERIFY(store.photoOf("a").endsWith(suffix) && store.photoOf("d").endsWith(suffix) && !QFile::exists(mark));
    }

    void filesAreKeptUnderTheQuotaAndRemovedWhenUnused()
    {
        PhotoFixture store;
        writeFile(store.photo("UserPhoto_1"), QByteArray(300, 'x'));
        store.fields.fileDiskUserQuota = 1000;
        synced.clear();
        const QString used = store.files.keep(QByteArray(400, 'x')).value();
        const QString unused = store.files.keep(QByteArray(300, 'x')).value();
        QVERIFY(used.startsWith(store.photo("photo_")) && !unused.isNull() && store.takeTold().isEmpty());
        QVERIFY(synced.size() == 4 && synced[1] == "photos" && synced[3] == "photos");
        QVERIFY(!store.files.keep("x") && store.takeTold() == QStringList{"popup"});
        store.files.removeIfUnused(writeFile(store.photo("photo_2"), QByteArray(500, 'x'))); // was never counted
        QVERIFY(!store.files.keep("x") && !store.files.keep("xx", 1));
        store.files.removeIfUnused(store.files.keep("x", 1).value());
        QCOMPARE(store.takeTold().size(), 2);
        QDir().mkpath(store.photo("photo_"));
        store.add("a", used);
        writeFile(store.folder.filePath("photo_1"), "x");
        for (const QString &path : {used, unused, store.folder.filePath("photo_1"), store.photo("../photo_1"),
                                    store.photo("photo_/../../photo_1"), store.photo("UserPhoto_1"), QString()})
            store.files.removeIfUnused(path);
        const QStringList kept = {"UserPhoto_1", QFileInfo(used).fileName()};
        QCOMPARE(store.photoFiles(), kept);
        QVERIFY(QFile::exists(store.folder.filePath("photo_1")) && store.files.keep(QByteArray(300, 'y')));

        QVERIFY(
            store.dao->updatePhotoContact("a", QString(used).replace("/photos/", "/./photos//"))); // another spelling
        writeFile(store.photo("UserPhoto_3" + suffix + ".AbCdEf"), "x");
        store.run("ALTER TABLE CONTACT RENAME TO AWAY");
        store.files.sweep(); // who names what cannot be known
        QCOMPARE(store.photoFiles().size(), 4);
        store.run("ALTER TABLE AWAY RENAME TO CONTACT");
        store.files.sweep();
        QCOMPARE(store.photoFiles(), kept);

        store.fields.fileDiskUserQuota = 100 << 20;
        const QByteArray largest(10 << 20, 'x');
        QVERIFY(store.files.keep(largest) && !store.files.keep(largest + 'x'));
        QVERIFY(store.files.keep(encoded(colored(100, 100), "jpg")).value().endsWith(suffix));
        for (const QByteArray &other :
             {encoded(colored(100, 100), "png"), encoded(colored(100, 99), "jpg"), onItsSide(colored(100, 100))})
            QVERIFY(!store.files.keep(other).value().endsWith(suffix));
        QDir(store.fields.photoDirectory).removeRecursively();
        QVERIFY(!store.files.keep("x") && store.takeTold().isEmpty()); // it cannot be written
    }

    void answersAreTakenWhereTheyStillFit_data()
    {
        const Rows<QString, QString, std::function<void(PhotoFixture &)>> row;
        const char *good = "/file/a.jpg";
        row("kept", good, "a only ", [](PhotoFixture &) {});
        row("kept once", good, "a only ", [](PhotoFixture &store) { store.contacts.want("a", site + "/file/a.jpg"); });
        row("kept from elsewhere", "/once/302/Location:/file/a.jpg", "a only ", [](PhotoFixture &) {});
        row("contact gone", good, "", [](PhotoFixture &store) { QVERIFY(store.dao->deleteContact("a")); });
        row("other photo", good, "", [](PhotoFixture &store) { QVERIFY(store.dao->updatePhotoContact("a", "/x")); });
        row("id dropped", good, "", [](PhotoFixture &store) { store.contacts.forget({"a"}); });
        row("id dropped at the end", good, "", [](PhotoFixture &store) {
            QObject::connect(&store.network, &PhotoNetwork::requestFinished,
                             [&store] { store.contacts.forget({"a"}); });
        });
        row("no address", good, "", [](PhotoFixture &store) { store.contacts.want("a", "/x"); });
        row("no room", good, "popup", [](PhotoFixture &store) { store.fields.fileDiskUserQuota = 0; });
        row("cannot be stored", good, "", [](PhotoFixture &store) { store.refuseUpdates(); });
        row("no picture", "/once/200", "", [](PhotoFixture &) {});
        row("not there", "/once/404", "", [](PhotoFixture &) {});
    }

    void answersAreTakenWhereTheyStillFit()
    {
        const auto [path, told, meanwhile] = currentRow<QString, QString, std::function<void(PhotoFixture &)>>();
        PhotoFixture store;
        store.add("a", site + path);
        QVERIFY(store.contacts.want("a", site + path) != 0 && store.contacts.want("b", "/local") == 0);
        meanwhile(store);
        for (int i = 0; i < 9; ++i)
            store.contacts.want(QString::number(i), site + "/once/404");
        QCOMPARE(store.log.lines.filter("<7>GET ").size() - store.log.lines.filter("nobody wants it").size(), 4);
        QTRY_COMPARE_WITH_TIMEOUT(store.contacts.pendingCount(), 0, limitMs);
        const QString photo = told.startsWith("a") ? store.photoOf("a") : QString();
        QCOMPARE(store.told.join(","), told + photo);
        QCOMPARE(store.photoFiles().size(), photo.isEmpty() ? 0 : 1);
        QVERIFY(photo.isEmpty() || (photo.endsWith(suffix) && colorsOf(photo) == "bgg"));
        QVERIFY(store.log.lines.filter("secret").isEmpty());
    }

    void withoutTheLibraryNothingIsFetched()
    {
        PhotoFixture store;
        PhotoNetwork none(store.folder.filePath("none.so"));
        ContactPhotos contacts(none, store.pictures, *store.dao, store.files, store.longWork);
        UserPhoto(none, store.pictures, store.files, store.fields).setUserPhoto(site);
        QVERIFY(contacts.want("a", site) == 0 && contacts.pendingCount() == 0);
        QCOMPARE(store.log.lines.filter("<3>Photos cannot be fetched: ").size(), 1);
    }

    void whatNobodyWantsGivesItsPlaceBack()
    {
        PhotoFixture store;
        for (const char *gone : {"0", "1", "2", "3"})
            store.contacts.want(gone, site + "/once/302/Location:/hold/200");
        QTRY_COMPARE_WITH_TIMEOUT(store.log.lines.filter("sent on to").size(), 4, limitMs);
        store.add("a", site + "/file/a.jpg");
        store.contacts.want("a", site + "/file/a.jpg");
        store.contacts.giveUpUnfitting();
        store.run("ALTER TABLE CONTACT RENAME TO AWAY");
        store.contacts.giveUpUnfitting(); // who has which photo cannot be known
        store.run("ALTER TABLE AWAY RENAME TO CONTACT");
        QVERIFY(store.log.lines.removeIf([](auto &line) { return line.startsWith("<3>"); }) > 0);
        QTRY_COMPARE_WITH_TIMEOUT(store.told, QStringList{"a only " + store.photoOf("a")}, limitMs);
        QVERIFY(store.log.lines.filter("<3>").isEmpty() && store.contacts.pendingCount() == 0);
    }

    void theUserPhotoFollowsTheSetting()
    {
        PhotoFixture store;
        const QString address = site + "/once/302/Location:/file/changing",
                      local = writeFile(store.folder.filePath("local"), encoded(colored(20, 30), "png"));
        const QString served = writeFile(m_server.folder.filePath("changing"), encoded(colored(30, 20), "png"));
        const auto ended = [&store] { return store.log.lines.filter("GET request ").size(); };
        const auto judged = [&store] { return store.log.lines.filter("loaded image: ").size(); };

        store.user.setUserPhoto(local);
        QTRY_COMPARE(judged(), 1);
        const QString first = store.takeTold().value(0);
        QVERIFY(first.startsWith(store.photo("UserPhoto_")) && first.endsWith(suffix) && colorsOf(first) == "bgg");
        QFile::remove(local);
        store.user.setUserPhoto(local);
        QTRY_COMPARE(store.told, QStringList{first}); // kept from when it could be read
        store.told.clear();
        for (const QString &bad : {QString("/nowhere"), QString("local"), m_server.http, site + "/once/404"}) {
            store.user.setUserPhoto(bad);
            QTRY_VERIFY(store.log.contains("<3>KestinDirectory::resizeAndCropToSquare, failed to load image: " + bad) ||
                        bad.startsWith("http"));
        }
        QTRY_COMPARE(ended(), 1);
        QVERIFY(store.takeTold().isEmpty() && QFile::exists(first));

        store.user.setUserPhoto(address);
        QTRY_COMPARE(judged(), 2);
        const QString second = store.takeTold().value(0);
        QCOMPARE(store.photoFiles(), QStringList{QFileInfo(second).fileName()});
        store.user.setUserPhoto(address);
        QCOMPARE(store.told, QStringList{second}); // at once
        QTRY_COMPARE(judged(), 3);
        QCOMPARE(store.takeTold(), QStringList{second}); // and not again, being the same
        writeFile(served, encoded(colored(300, 200).copy(0, 0, 99, 99), "png"));
        store.user.setUserPhoto(address);
        QTRY_COMPARE(judged(), 4);
        QCOMPARE(store.photoFiles(), QStringList{QFileInfo(store.takeTold().value(1)).fileName()});
        store.user.setUserPhoto(address);
        store.user.setUserPhoto(QString()); // before the answer came
        QVERIFY(store.log.lines.filter("nobody wants it any more").size() == 1 && ended() == 4);
        QVERIFY(store.takeTold().last().isEmpty() && store.photoFiles().isEmpty());
        store.user.setUserPhoto(served);
        store.user.setUserPhoto(QString()); // before it was made square
        QSignalSpy answered(&store.pictures, &PictureProgram::answered);
        store.pictures.ask({served, std::nullopt, 100});
        QVERIFY(answered.wait(limitMs) && answered.size() == 1);
        QVERIFY(store.takeTold() == QStringList{QString()} && store.photoFiles().isEmpty());
    }
};

QTEST_GUILESS_MAIN(PhotoTest)
#include "PhotoTest.moc"
