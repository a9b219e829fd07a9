// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsStore.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"
#include "tests/support/Test.h"

#include <QDBusVirtualObject>

#include <sys/stat.h>

#include <array>
#include <memory>

namespace {

const QString module = ModuleName::settings;
const QString defaultContacts = "DirectoryDefaultContacts";

/// The directory as the settings manager sees it: takes every call.
class Owner : public QDBusVirtualObject
{
public:
    explicit Owner(QDBusConnection connection)
    {
        connection.unregisterObject(KestinBus::objectPath(ModuleName::directory)); // that of the test before
        if (!connection.registerVirtualObject(KestinBus::objectPath(ModuleName::directory), this) ||
            !connection.registerService(KestinBus::serviceName(ModuleName::directory)))
            qFatal("the directory's name is taken");
    }
    QString introspect(const QString &) const override { return QString(); }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const auto setting = qdbus_cast<Setting>(message.arguments().value(0));
        told.append(message.member() + ' ' + setting.key + '=' + setting.getValue() + " by " + setting.lastWriter);
        return connection.send(message.createReply(QVariant::fromValue(ListSetting())));
    }

    QStringList told;
};

/// As an editor does that writes beside the file and renames.
void replaceFile(const QString &path, const QByteArray &content)
{
    const QString beside = path + ".new";
    writeFile(beside, content);
    QCOMPARE(::rename(QFile::encodeName(beside).constData(), QFile::encodeName(path).constData()), 0);
}

} // namespace

/// The settings manager as a process on a bus, and the store behind it where a fault has to be made.
class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("made/when/missing/settings.ini");
        m_program = std::make_unique<Program>("kestin-settings", QStringList{"--file", m_path});
        QVERIFY(m_program->startAndWaitForName(module, m_bus.connection));
    }

    void cleanup() { m_program.reset(); }

    void defaultsAreAnswered()
    {
        QCOMPARE(value("ComLogSize"), "40");
        QCOMPARE(value("DirSearchMode"), "1");
        QCOMPARE(value("DialingRuleAreaCodeSave"), QString());
        QCOMPARE(value("Nobody"), "com.norlan.Kestin.KestinException: there is no setting \"Nobody\"");

        QCOMPARE(set("site.note", "x").code, 0);
        const auto all = qdbus_cast<ListSetting>(m_bus.call(module, "getSettings").arguments().value(0));
        QCOMPARE(all.size(), SettingsCatalogue().all().size() + 1);
        QCOMPARE(all.last().key, "site.note");
        for (const Setting &setting : all)
            QVERIFY2(!SettingsCatalogue::refusal(setting, setting.defaultValue), qPrintable(setting.key));
        const auto mode = qdbus_cast<Setting>(m_bus.call(module, "getSetting", {"DirSearchMode"}).arguments().value(0));
        QCOMPARE(mode.choices.size(), 2);
        QVERIFY(all.contains(mode));
    }

    void whatIsAnsweredZeroSurvivesAKill()
    {
        QMap<QString, QString> values{
            {defaultContacts, "7,Mr,Zoë,O\\,Hara,+33 1,1,,#8,Ms,\\#,a\\\\,,0,\"q\"; 'x',#"},
            {"DialingRuleExternalPrefixExceptions", "15, 112;, 08"},
            {"FileDiskUserQuota", "5"},
            {"a key % with = ; [signs] é", "v"},
        };
        const QStringList texts{"  blanks ",    "line\nfeed\ttab\r", "%20 \\x41 \\", "@Invalid()", "日本 😀",
                                "; no comment", "# neither",         "[General]",    QString(),    "a, b"};
        for (const QString &text : texts)
            values.insert(QString("text %1").arg(values.size()), text);
        for (auto pair = values.cbegin(); pair != values.cend(); ++pair)
            QCOMPARE(set(pair.key(), pair.value()), UpdateReport());
        m_program->kill();
        QVERIFY(m_program->startAndWaitForName(module, m_bus.connection));
        for (auto pair = values.cbegin(); pair != values.cend(); ++pair)
            QCOMPARE(value(pair.key()), pair.value());
    }

    void refusals_data()
    {
        const Rows<QString, QString, int, QString> row;
        const QString badKey = "a key is 1 to 100 printable characters without / and \\";
        row("empty key", QString(), "x", 1, badKey);
        row("line feed in key", "a\nb=c", "x", 1, badKey);
        row("group in key", "a/b", "x", 1, badKey);
        row("long key", QString(101, 'k'), "x", 1, badKey);
        row("no number", "DirMaxContact", "12abc", 2, "DirMaxContact must be a whole number");
        row("empty number", "DirMaxContact", QString(), 2, "DirMaxContact must be a whole number");
        row("below", "DirMaxContact", "-1", 2, "DirMaxContact must be between 0 and 100000");
        row("above", "DirSearchMode", "3", 2, "DirSearchMode must be between 1 and 2");
        row("no choice", "RemoveHttpsFromPhotoUrl", "True", 2, "RemoveHttpsFromPhotoUrl must be one of false, true");
        row("long value", "UserPhoto", QString(250'001, 'p'), 3,
            "the value of UserPhoto is longer than 250000 characters");
    }

    void refusals()
    {
        const auto [key, value, code, message] = currentRow<QString, QString, int, QString>();
        const QString before = this->value(key);
        const UpdateReport report = set(key, value);
        QCOMPARE(int(report.code), code);
        QCOMPARE(report.message, message);
        QCOMPARE(this->value(key), before);
        QVERIFY(!QFile::exists(m_path));
    }

    void ownerIsToldOfRealChanges()
    {
        m_program->kill();
        m_program->setEnvironment("KESTIN_LOG_LEVEL", "6");
        QVERIFY(m_program->startAndWaitForName(module, m_bus.connection));
        Owner owner(m_bus.bus.connection("owner"));
        const QList<std::array<QString, 3>> writes{
            {"DirMaxContact", "1000"}, // its default
            {"DirMaxContact", "7", "dirMaxContactChanged"},
            {"DirMaxContact", "7"},
            {"ComLogSize", "7"},
            {"DirSearchMode", "2", "dirSearchModeChanged"},
            {"RemoveHttpsFromPhotoUrl", "true", "removeHttpsFromPhotoUrlChanged"},
            {defaultContacts, "1,2", "defaultContactsChanged"},
            {"UserPhoto", QString(101, 'p'), "userPhotoChanged"},
            {"UserPhoto", "http://me:secret@h/p", "userPhotoChanged"},
        };
        QStringList expected;
        for (const auto &[key, value, method] : writes) {
            QCOMPARE(set(key, value), UpdateReport());
            if (!method.isEmpty())
                expected.append(QString("%1 %2=%3 by bus").arg(method, key, value));
        }
        QTRY_COMPARE(owner.told, expected);
        QVERIFY(m_program->waitForErrorOutput(QString("<6>UserPhoto changed to %1... (101 characters)\n"
                                                      "<6>UserPhoto changed to http://h/p\n")
                                                  .arg(QString(100, 'p'))));
    }

    void editsOfTheFileReachTheOwner()
    {
        Owner owner(m_bus.bus.connection("owner"));
        const QString told = "dirMaxContactChanged DirMaxContact=%1 by file";

        replaceFile(m_path, "[General]\nDirMaxContact=1\n");
        QTRY_COMPARE(owner.told, QStringList{told.arg(1)});
        writeFile(m_path, "[General]\nDirMaxContact=22\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QTRY_COMPARE(owner.told.size(), 3);
        QCOMPARE(owner.told.at(1), told.arg(22));
        QCOMPARE(owner.told.at(2), "defaultContactsChanged DirectoryDefaultContacts=7,Mr,Zoë by file");
        replaceFile(m_path, "[General]\nDirMaxContact=http://me:secret@h\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QTRY_COMPARE(owner.told.size(), 4);
        QCOMPARE(owner.told.at(3), told.arg(1000));
        QVERIFY(m_program->waitForErrorOutput("DirMaxContact must be a whole number, not \"http://h\""));
        // A write right behind an edit keeps the edit.
        replaceFile(m_path, "[General]\nDirMaxContact=333\nDirectoryDefaultContacts=7,Mr,Zoë\n");
        QCOMPARE(set("ComLogSize", "3").code, 0);
        QCOMPARE(value("DirMaxContact"), "333");
        QTRY_COMPARE(owner.told.size(), 5);
        QVERIFY(QFile::remove(m_path));
        QTRY_COMPARE(owner.told.size(), 7);
        QCOMPARE(value("ComLogSize"), "40");
    }

    void aDamagedFileLosesNothing_data()
    {
        const Rows<QByteArray> row;
        for (const char *line : {"some text", "=x", "[General", "a=\"x\\\"", "DirectoryDefaultContacts=1,O\\,Hara",
                                 "a=C:\\\\\\", "a=\xff\xfe"})
            row(line, QByteArray(line));
    }

    void aDamagedFileLosesNothing()
    {
        const auto [line] = currentRow<QByteArray>();
        const QByteArray damaged = "; mine\n[General]\nComLogSize=9\n" + line + "\n";
        QCOMPARE(set("UserPhoto", "/mine").code, 0);
        replaceFile(m_path, damaged);
        const UpdateReport report = set("ComLogSize", "8");
        QCOMPARE(report, (UpdateReport{4, m_path + " is not a well-formed INI file (line 4)"}));
        QVERIFY(m_program->waitForErrorOutput("<3>" + report.message));
        QCOMPARE(value("UserPhoto"), "/mine");
        QCOMPARE(contentOf(m_path), damaged);
        replaceFile(m_path, "[General]\nUserPhoto=/other\n");
        QCOMPARE(set("ComLogSize", "8").code, 0);
        QCOMPARE(value("UserPhoto"), "/other");
    }

    void aValueThatCannotBeWrittenIsNotStored()
    {
        const QString blocked = m_folder->filePath("blocked");
        writeFile(blocked, "a file where the folder should be");
        SettingsStore store(blocked + "/settings.ini");
        store.load();
        QCOMPARE(store.set("UserPhoto", "/lost").code, int(SettingsStore::NotWritable));
        QCOMPARE(*store.value("UserPhoto"), QString());
        QVERIFY(QFile::remove(blocked));
        QCOMPARE(store.set("ComLogSize", "5"), UpdateReport());
        store.load();
        QCOMPARE(*store.value("UserPhoto"), QString());
        QCOMPARE(*store.value("ComLogSize"), "5");
        QVERIFY(QFile::remove(store.path()));
        QCOMPARE(::mkfifo(qPrintable(store.path()), 0600), 0); // nobody will ever write into it
        QCOMPARE(store.set("ComLogSize", "6").code, int(SettingsStore::NotWritable));
        QCOMPARE(*store.value("ComLogSize"), "5");
    }

    void valuesTogetherFitACall()
    {
        const QString large(249'000, 'x');
        for (int i = 0; i < 4; ++i)
            QCOMPARE(set(QString("large %1").arg(i), large), UpdateReport());
        QCOMPARE(set("large 4", large).code, 3);
        QCOMPARE(set("large 3", large + '.'), UpdateReport());
        const QDBusMessage reply = m_bus.call(module, "getSettings");
        QCOMPARE(qdbus_cast<ListSetting>(reply.arguments().value(0)).last().value.size(), large.size() + 1);
    }

private:
    QString value(const QString &key) { return text(m_bus.call(module, "getSettingValue", {key})); }

    UpdateReport set(const QString &key, const QString &value)
    {
        const QDBusMessage reply = m_bus.call(module, "setSettingValue", {key, value});
        return reply.type() == QDBusMessage::ReplyMessage ? qdbus_cast<UpdateReport>(reply.arguments().value(0))
                                                          : UpdateReport{-1, reply.errorMessage()};
    }

    static QString text(const QDBusMessage &reply)
    {
        return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName() + ": " + reply.errorMessage()
                                                          : reply.arguments().value(0).toString();
    }

    const ClientBus m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Program> m_program;
    QString m_path;
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
