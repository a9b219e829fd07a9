// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinBus.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Test.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QRegularExpression>

#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <memory>

namespace {

const QStringList modules{ModuleName::directory, ModuleName::settings, ModuleName::telephony,
                          ModuleName::webServiceManager, ModuleName::presentation};
const QString somebodyElse = "daemon"; // a user and a group that every system has

} // namespace

/// The shipped policy and activation files on a real bus daemon. The user and the group that the policy names are
/// replaced so that the test's own user is a stranger, a member of the group or the service's user, whichever a test
/// asks for: the policy knows users by name only, so no account has to be made.
class PackagingTest : public QObject
{
    Q_OBJECT

public:
    PackagingTest()
    {
        const QDir activation(QStringLiteral(KESTIN_ACTIVATION_DIR));
        const QRegularExpression execLine("(?<=\\nExec=)/.*/kestin-[a-z]+(?=\\n)");
        for (const QString &name : activation.entryList(QDir::Files))
            m_activationFiles.insert(name,
                                     QString(contentOf(activation.filePath(name))).replace(execLine, "/bin/false"));
        if (geteuid() == 0) { // the policy lets root call; a stranger has to be somebody else
            const passwd *nobody = getpwnam("nobody");
            if (setgroups(0, nullptr) != 0 || setgid(nobody->pw_gid) != 0 || setuid(nobody->pw_uid) != 0)
                qFatal("cannot become nobody");
            prctl(PR_SET_DUMPABLE, 1); // the leak check of a sanitizer build looks at the process from outside
            QDir::setCurrent("/");
        }
        m_me = QString::fromLocal8Bit(getpwuid(getuid())->pw_name);
        m_myGroup = QString::fromLocal8Bit(getgrgid(getgid())->gr_name);
        m_folder = std::make_unique<QTemporaryDir>();
    }

private Q_SLOTS:
    void nobodyButTheServiceMayBeAModule_data()
    {
        const Rows<QString, QString, bool, QString> row;
        const QString refused = "org.freedesktop.DBus.Error.AccessDenied";
        const QString started = "org.freedesktop.DBus.Error.Spawn.ChildExited";
        row("a stranger", somebodyElse, somebodyElse, false, refused);
        row("a member of the group", somebodyElse, m_myGroup, false, started);
        row("the service's user", m_me, m_myGroup, true, started);
    }

    void nobodyButTheServiceMayBeAModule()
    {
        const auto [user, group, mayOwn, answer] = currentRow<QString, QString, bool, QString>();
        const auto bus = startBus(user, group);
        QDBusConnection connection = bus->connection(QString::fromUtf8(QTest::currentDataTag()));
        for (const QString &module : modules) {
            const QString name = KestinBus::serviceName(module);
            // Nobody has the name, so the daemon starts the program: it fails, but only after the policy let the call
            // in.
            const QDBusMessage call = KestinBus::methodCall(module, "any");
            if (m_activationFiles.contains(name + ".service"))
                QCOMPARE(connection.call(call).errorName(), answer);
            QCOMPARE(connection.registerService(name), mayOwn);
        }
        QVERIFY(!connection.registerService(KestinBus::serviceName("Another")));
    }

    void eventsStayInTheGroup_data()
    {
        const Rows<QString, QString, bool> row;
        const QString maySend = "<allow send_interface=\"com.norlan.Kestin.KestinEvent\"/>";
        const QString mayReceive = "<allow receive_interface=\"com.norlan.Kestin.KestinEvent\"/>";
        row("between members", m_myGroup, QString(), true);
        row("from a stranger to a member", somebodyElse, mayReceive, false);
        row("from a member to a stranger", somebodyElse, maySend, false);
        row("the rule of the two rows above is what counts", somebodyElse, mayReceive + maySend, true);
    }

    void eventsStayInTheGroup()
    {
        const auto [group, extraRule, arrives] = currentRow<QString, QString, bool>();
        const auto bus = startBus(somebodyElse, group, extraRule);
        const QString tag = QString::fromUtf8(QTest::currentDataTag());
        QDBusConnection sender = bus->connection(tag + ", sender");
        QDBusConnection receiver = bus->connection(tag + ", receiver");
        const QString path = KestinBus::objectPath(modules.first());
        const QString event = QLatin1String(KestinBus::eventSignal);
        const QString eventInterface = QLatin1String(KestinBus::eventInterface);
        const QString last = "last";
        const QString otherInterface = "any.other";
        m_received.clear();
        for (const QString &interface : {eventInterface, otherInterface})
            QVERIFY(receiver.connect(QString(), path, interface, QString(), this, SLOT(noteSignal(QDBusMessage))));
        receiver.interface()->registeredServiceNames(); // once this is answered, the daemon knows the match

        QVERIFY(sender.send(QDBusMessage::createSignal(path, eventInterface, event)));
        QVERIFY(sender.send(QDBusMessage::createSignal(path, otherInterface, last)));

        QTRY_VERIFY_WITH_TIMEOUT(m_received.contains(last), PrivateBus::limitMs); // in order: what was to come has come
        QCOMPARE(m_received.contains(event), arrives);
    }

    /// Decoders of pictures are loaded by a program of their own only, with their faults, their memory and their time;
    /// the network library with the first download.
    void theServiceKnowsNoPicturesAndBeginsWithoutANetwork()
    {
        qputenv("LD_TRACE_LOADED_OBJECTS", "1"); // what ldd does, which knows only programs of its own machine
        QProcess linker;
        linker.start(QCoreApplication::applicationDirPath() + "/kestin-directory", QStringList());
        qunsetenv("LD_TRACE_LOADED_OBJECTS");
        QVERIFY(linker.waitForFinished());
        const QByteArray libraries = linker.readAll();
        QVERIFY(libraries.contains("libQt6Core.so"));
        for (const char *library : {"libQt6Gui", "libQt6Network", "libjpeg", "libpng", "libwebp"})
            QVERIFY2(!libraries.contains(library), library);
    }

    void manualPagesTellWhatHelpTells_data()
    {
        const Rows<QString, QString> row; // the page, what the program is asked
        row("client", "kestin-dir.1", "--help");
        row("a command", "kestin-dir.1", "help who");
        row("company directory", "kestin-wsmanager.8", "--help");
        row("pictures", "kestin-picture.8", "--help");
    }

    void manualPagesTellWhatHelpTells()
    {
        const auto [page, question] = currentRow<QString, QString>();
        QString text = QString::fromUtf8(contentOf(QStringLiteral(KESTIN_MAN_DIR "/") + page));
        text.replace("\\-", "-").replace("\\e", "\\").remove("\\&");
        QVERIFY(text.contains("\n.SH NAME\n" + page.section('.', 0, 0) + " - "));
        QProcess program;
        program.start(QCoreApplication::applicationDirPath() + '/' + page.section('.', 0, 0), question.split(' '));
        QVERIFY(program.waitForFinished());
        const QRegularExpression marks("^[Uu]sage: ([^ ]*/)?|^Exit codes?: |( \\(.*\\))?:$");
        for (QString line : QString::fromUtf8(program.readAll()).split('\n', Qt::SkipEmptyParts))
            QVERIFY2(text.contains(line.remove(marks).trimmed(), Qt::CaseInsensitive), qPrintable(line));
    }

public Q_SLOTS:
    void noteSignal(const QDBusMessage &message) { m_received.append(message.member()); }

private:
    std::unique_ptr<PrivateBus> startBus(const QString &user, const QString &group, const QString &extraRule = {})
    {
        const auto write = [this](const QString &name, const QString &content) {
            writeFile(m_folder->filePath(name), content.toUtf8());
        };
        QString policy = m_policy;
        policy.replace("user=\"kestin\"", "user=\"" + user + '"').replace("group=\"kestin\"", "group=\"" + group + '"');
        write("policy.conf", policy);
        for (auto file = m_activationFiles.cbegin(); file != m_activationFiles.cend(); ++file)
            write(file.key(), file.value());
        write("bus.conf", m_systemBus.arg(m_folder->path(), m_me, extraRule));
        return std::make_unique<PrivateBus>(m_folder->filePath("bus.conf"));
    }

    const QString m_policy = contentOf(KESTIN_POLICY_FILE), m_systemBus = contentOf(KESTIN_SYSTEM_BUS);
    QMap<QString, QString> m_activationFiles;
    QString m_me;
    QString m_myGroup;
    std::unique_ptr<QTemporaryDir> m_folder;
    QStringList m_received;
};

QTEST_GUILESS_MAIN(PackagingTest)

#include "PackagingTest.moc"
