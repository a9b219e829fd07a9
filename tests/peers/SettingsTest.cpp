// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsStore.h"
#include "platform/records/KestinBus.h"
#include "tests/peers/PeerBus.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"
#include "tests/support/Rows.h"

#include <QDBusVirtualObject>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString module = ModuleName::settings;
const QString defaultContacts = u"DirectoryDefaultContacts"_s;

/// Takes every call that the settings manager makes to one module.
class Owner : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return QString(); }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const auto setting = qdbus_cast<Setting>(message.arguments().value(0));
        told.append(message.member() + QLatin1Char(' ') + setting.key + QLatin1Char('=') + setting.getValue() +
                    QLatin1String(" by ") + setting.lastWriter);
        return connection.send(message.createReply(QVariant::fromValue(ListSetting())));
    }

    QStringList told;
};

/// As an editor does that writes beside the file and renames.
void replaceFile(const QString &path, const QByteArray &content)
{
    const QString beside = path + QLatin1String(".new");
    writeFile(beside, content);
    QCOMPARE(::rename(QFile::encodeName(beside).constData(), QFile::encodeName(path).constData()), 0);
}

} // namespace

/// The settings manager as a process on a bus, and the store behind it where a fault has to be made.
class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        registerDBusSetting();
        registerDBusUpdateReport();
        m_bus = std::make_unique<PeerBus>();
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"made/when/missing/settings.ini"_s);
        m_program = std::make_unique<Program>(u"kestin-settings"_s, QStringList{u"--file"_s, m_path});
        QVERIFY(m_program->startAndWaitForName(module, m_bus->connection));
    }

    void cleanup() { m_program.reset(); }

    void defaultsAreAnswered()
    {
        QCOMPARE(value(u"ComLogSize"_s), u"40"_s);
        QCOMPARE(value(u"DirSearchMode"_s), u"1"_s);
        QCOMPARE(value(u"DialingRuleAreaCodeSave"_s), QString());
        QCOMPARE(value(u"Nobody"_s), u"com.norlan.Kestin.KestinException: there is no setting \"Nobody\""_s);

        QCOMPARE(set(u"site.note"_s, u"x"_s).code, 0);
        const auto all = qdbus_cast<ListSetting>(m_bus->call(module, u"getSettings"_s).arguments().value(0));
        QCOMPARE(all.size(), SettingsCatalogue().all().size() + 1);
        QCOMPARE(all.last().key, u"site.note"_s);
        for (const Setting &setting : all)
            QVERIFY2(!SettingsCatalogue::refusal(setting, setting.defaultValue), qPrintable(setting.key));
        const auto mode =
            qdbus_cast<Setting>(m_bus->call(module, u"getSetting"_s, {u"DirSearchMode"_s}).arguments().value(0));
        QCOMPARE(mode.choices.size(), 2);
        QVERIFY(all.contains(mode));
    }

    void whatIsAnsweredZeroSurvivesAKill()
    {
        QMap<QString, QString> values{
            {defaultContacts, u"7,Mr,Zoë,O\\,Hara,+33 1,1,,#8,Ms,\\#,a\\\\,,0,\"q\"; 'x',#"_s},
            {u"DialingRuleExternalPrefixExceptions"_s, u"15, 112;, 08"_s},
            {u"FileDiskUserQuota"_s, u"5"_s},
            {u"a key % with = ; [signs] é"_s, u"v"_s},
        };
        const QStringList texts{
            u"  blanks "_s,    u"line\nfeed\ttab\r"_s, u"%20 \\x41 \\"_s, u"@Invalid()"_s, u"日本 😀"_s,
            u"; no comment"_s, u"# neither"_s,         u"[General]"_s,    QString(),       u"a, b"_s};
        for (const QString &text : texts)
            values.insert(u"text %1"_s.arg(values.size()), text);
        for (auto pair = values.cbegin(); pair != values.cend(); ++pair)
            QCOMPARE(set(pair.key(), pair.value()), UpdateReport());
        m_program->kill();
        QVERIFY(m_program->startAndWaitForName(module, m_bus->connection));
        for (auto pair = values.cbegin(); pair != values.cend(); ++pair)
            QCOMPARE(value(pair.key()), pair.value());
    }

    void refusals_data()
    {
        const Rows<QString, QString, int, QString> row("key", "value", "code", "message");
        const QString badKey = u"a key is 1 to 100 printable characters without / and \\"_s;
        row("empty key", QString(), u"x"_s, 1, badKey);
        row("line feed in key", u"a\nb=c"_s, u"x"_s, 1, badKey);
        row("group in key", u"a/b"_s, u"x"_s, 1, badKey);
        row("long key", QString(101, u'k'), u"x"_s, 1, badKey);
        row("no number", u"DirMaxContact"_s, u"12abc"_s, 2, u"DirMaxContact must be a whole number"_s);
        row("empty number", u"DirMaxContact"_s, QString(), 2, u"DirMaxContact must be a whole number"_s);
        row("below", u"DirMaxContact"_s, u"-1"_s, 2, u"DirMaxContact must be between 0 and 100000"_s);
        row("above", u"DirSearchMode"_s, u"3"_s, 2, u"DirSearchMode must be between 1 and 2"_s);
        row("no choice", u"RemoveHttpsFromPhotoUrl"_s, u"True"_s, 2,
            u"RemoveHttpsFromPhotoUrl must be one of false, true"_s);
        row("long value", u"UserPhoto"_s, QString(250'001, u'p'), 3,
            u"the value of UserPhoto is longer than 250000 characters"_s);
    }

    void refusals()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        const QString before = this->value(key);
        const UpdateReport report = set(key, value);
        QTEST(int(report.code), "code");
        QTEST(report.message, "message");
        QCOMPARE(this->value(key), before);
        QVERIFY(!QFile::exists(m_path));
    }

    void ownerIsToldOfRealChanges()
    {
        m_program->kill();
        m_program->setEnvironment(u"KESTIN_LOG_LEVEL"_s, u"6"_s);
        QVERIFY(m_program->startAndWaitForName(module, m_bus->connection));
        Owner owner;
        QDBusConnection connection = m_bus->bus.connection(u"owner"_s);
        QVERIFY(connection.registerVirtualObject(KestinBus::objectPath(ModuleName::directory), &owner));
        QVERIFY(connection.registerService(KestinBus::serviceName(ModuleName::directory)));
        const QList<std::array<QString, 3>> writes{
            {u"DirMaxContact"_s, u"1000"_s}, // its default
            {u"DirMaxContact"_s, u"7"_s, u"dirMaxContactChanged"_s},
            {u"DirMaxContact"_s, u"7"_s},
            {u"ComLogSize"_s, u"7"_s},
            {u"DirSearchMode"_s, u"2"_s, u"dirSearchModeChanged"_s},
            {u"RemoveHttpsFromPhotoUrl"_s, u"true"_s, u"removeHttpsFromPhotoUrlChanged"_s},
            {defaultContacts, u"1,2"_s, u"defaultContactsChanged"_s},
            {u"UserPhoto"_s, QString(101, u'p'), u"userPhotoChanged"_s},
            {u"UserPhoto"_s, u"http://me:secret@h/p"_s, u"userPhotoChanged"_s},
        };
        QStringList expected;
        for (const auto &[key, value, method] : writes) {
            QCOMPARE(set(key, value), UpdateReport());
            if (!method.isEmpty())
                expected.append(u"%1 %2=%3 by bus"_s.arg(method, key, value));
        }
        QTRY_COMPARE(owner.told, expected);
        QVERIFY(m_program->waitForErrorOutput(u"<6>UserPhoto changed to %1... (101 characters)\n"
                                              "<6>UserPhoto changed to http://h/p\n"_s.arg(QString(100, u'p'))));
    }

    void editsOfTheFileReachTheOwner()
    {
        Owner owner;
        QDBusConnection connection = m_bus->bus.connection(u"owner"_s);
        connection.unregisterObject(KestinBus::objectPath(ModuleName::directory));
        QVERIFY(connection.registerVirtualObject(KestinBus::objectPath(ModuleName::directory), &owner));
        const QString told = u"dirMaxContactChanged DirMaxContact=%1 by file"_s;

        replaceFile(m_path, "[General]\nDirMaxContact=1\n");
        QTRY_COMPARE(owner.told, QStringList{told.arg(1)});
        writeFile(m_path, "[General]\nDirMaxContact=22\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QTRY_COMPARE(owner.told.size(), 3);
        QCOMPARE(owner.told.at(1), told.arg(22));
        QCOMPARE(owner.told.at(2), u"defaultContactsChanged DirectoryDefaultContacts=7,Mr,Zoë by file"_s);
        replaceFile(m_path, "[General]\nDirMaxContact=http://me:secret@h\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QTRY_COMPARE(owner.told.size(), 4);
        QCOMPARE(owner.told.at(3), told.arg(1000));
        QVERIFY(m_program->waitForErrorOutput(u"DirMaxContact must be a whole number, not \"http://h\""_s));
        // A write right behind an edit keeps the edit.
        replaceFile(m_path, "[General]\nDirMaxContact=333\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QCOMPARE(set(u"ComLogSize"_s, u"3"_s).code, 0);
        QCOMPARE(value(u"DirMaxContact"_s), u"333"_s);
        QTRY_COMPARE(owner.told.size(), 5);
        QVERIFY(QFile::remove(m_path));
        QTRY_COMPARE(owner.told.size(), 7);
        QCOMPARE(value(u"ComLogSize"_s), u"40"_s);
    }

    void aDamagedFileLosesNothing_data()
    {
        const Rows<QByteArray> row("line");
        for (const char *line : {"some text", "=x", "[General", "a=\"x\\\"", "DirectoryDefaultContacts=1,O\\,Hara",
                                 "a=C:\\\\\\", "a=\xff\xfe"})
            row(line, QByteArray(line));
    }

    void aDamagedFileLosesNothing()
    {
        QFETCH(QByteArray, line);
        const QByteArray damaged = "; mine\n[General]\nComLogSize=9\n" + line + "\n";
        QCOMPARE(set(u"UserPhoto"_s, u"/mine"_s).code, 0);
        replaceFile(m_path, damaged);
        const UpdateReport report = set(u"ComLogSize"_s, u"8"_s);
        QCOMPARE(report, (UpdateReport{4, m_path + QLatin1String(" is not a well-formed INI file (line 4)")}));
        QVERIFY(m_program->waitForErrorOutput(QLatin1String("<3>") + report.message));
        QCOMPARE(value(u"UserPhoto"_s), u"/mine"_s);
        QCOMPARE(contentOf(m_path), damaged);
        replaceFile(m_path, "[General]\nUserPhoto=/other\n");
        QCOMPARE(set(u"ComLogSize"_s, u"8"_s).code, 0);
        QCOMPARE(value(u"UserPhoto"_s), u"/other"_s);
    }

    void aValueThatCannotBeWrittenIsNotStored()
    {
        const QString blocked = m_folder->filePath(u"blocked"_s);
        writeFile(blocked, "a file where the folder should be");
        SettingsStore store(blocked + QLatin1String("/settings.ini"));
        store.load();
        QCOMPARE(store.set(u"UserPhoto"_s, u"/lost"_s).code, int(SettingsStore::NotWritable));
        QCOMPARE(*store.value(u"UserPhoto"_s), QString());
        QVERIFY(QFile::remove(blocked));
        QCOMPARE(store.set(u"ComLogSize"_s, u"5"_s), UpdateReport());
        store.load();
        QCOMPARE(*store.value(u"UserPhoto"_s), QString());
        QCOMPARE(*store.value(u"ComLogSize"_s), u"5"_s);
        QVERIFY(QFile::remove(store.path()));
        QCOMPARE(::mkfifo(qPrintable(store.path()), 0600), 0); // nobody will ever write into it
        QCOMPARE(store.set(u"ComLogSize"_s, u"6"_s).code, int(SettingsStore::NotWritable));
        QCOMPARE(*store.value(u"ComLogSize"_s), u"5"_s);
    }

    void valuesTogetherFitACall()
    {
        const QString large(249'000, u'x');
        for (int i = 0; i < 4; ++i)
            QCOMPARE(set(u"large %1"_s.arg(i), large), UpdateReport());
        QCOMPARE(set(u"large 4"_s, large).code, 3);
        QCOMPARE(set(u"large 3"_s, large + QLatin1Char('.')), UpdateReport());
        const QDBusMessage reply = m_bus->call(module, u"getSettings"_s);
        QCOMPARE(qdbus_cast<ListSetting>(reply.arguments().value(0)).last().value.size(), large.size() + 1);
    }

    void wrongCallsAndASecondInstanceDoNoHarm()
    {
        const QList<QVariantList> wrong{{}, {1, 2}, {u"ComLogSize"_s}, {QStringList{u"a"_s}, true}};
        for (const QVariantList &arguments : wrong)
            QCOMPARE(m_bus->call(module, u"setSettingValue"_s, arguments).errorName(),
                     u"org.freedesktop.DBus.Error.UnknownMethod"_s);
        Program second(u"kestin-settings"_s, {u"--file"_s, m_path});
        QCOMPARE(second.run(), 1);
        QCOMPARE(second.errorOutput(),
                 u"<3>SettingsManager cannot start: the name com.norlan.Kestin.SettingsManager is already taken\n"_s);
        QCOMPARE(value(u"ComLogSize"_s), u"40"_s);
        QCOMPARE(m_program->terminate(), 0);
        QCOMPARE(m_program->errorOutput(), QString());
    }

private:
    QString value(const QString &key) { return text(m_bus->call(module, u"getSettingValue"_s, {key})); }

    UpdateReport set(const QString &key, const QString &value)
    {
        const QDBusMessage reply = m_bus->call(module, u"setSettingValue"_s, {key, value});
        return reply.type() == QDBusMessage::ReplyMessage ? qdbus_cast<UpdateReport>(reply.arguments().value(0))
                                                          : UpdateReport{-1, reply.errorMessage()};
    }

    static QString text(const QDBusMessage &reply)
    {
        return reply.type() == QDBusMessage::ErrorMessage
                   ? reply.errorName() + QLatin1String(": ") + reply.errorMessage()
                   : reply.arguments().value(0).toString();
    }

    std::unique_ptr<PeerBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Program> m_program;
    QString m_path;
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
