// SPDX-License-Identifier: Apache-2.0
#include "platform/records/Capability.h"
#include "platform/records/Contact.h"
#include "platform/records/ImpExpStatus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/KestinPaths.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"
#include "platform/records/UpdateReport.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Rows.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

Contact fullContact()
{
    Contact contact;
    for (const Contact::TextField &field : Contact::texts)
        contact.*field.value = QLatin1String(field.name);
    contact.misc = {{u"company"_s, u"Norlan \u00e9\U0001F4DE"_s}, {QString(), u"no key"_s}, {u"no value"_s, QString()}};
    contact.isPrivate = true;
    contact.type = ContactType::Cached;
    contact.photo = u"photo"_s;
    contact.melody = u"melody"_s;
    contact.setPUID(u"puid"_s);
    contact.setLastModificationDate(QDateTime({2026, 11, 21}, {8, 1, 2, 3}, Qt::UTC));
    return contact;
}

/// The plain values of a structure as they follow each other on the bus, "*" for what is none; empty for no structure.
QString fieldsOf(const QDBusArgument &argument)
{
    QStringList fields;
    if (argument.currentType() != QDBusArgument::StructureType)
        return {};
    argument.beginStructure();
    while (!argument.atEnd()) {
        const bool isPlain = argument.currentType() == QDBusArgument::BasicType;
        const QVariant value = argument.asVariant();
        fields.append(isPlain ? value.toString() : u"*"_s);
    }
    argument.endStructure();
    return fields.join(u'|');
}

} // namespace

class RecordsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void echo(const QDBusMessage &call)
    {
        m_signature = call.signature();
        m_own.send(call.createReply(call.arguments()));
    }

private Q_SLOTS:
    void initTestCase()
    {
        registerDBusContact();
        registerDBusCapability();
        registerDBusSetting();
        registerDBusImpExpStatus();
        registerDBusContactSummary();
        registerDBusQMapQStringQStringList();
        registerDBusUpdateReport();
        registerDBusKestinMode();
        QVERIFY(m_own.registerObject(u"/"_s, this, QDBusConnection::ExportAllSlots));
    }

    void recordsCrossTheBus_data()
    {
        const Rows<QVariant, QString, QString> rows("record", "signature", "fields");
        const auto row = [&rows](const char *tag, const auto &record, const QString &signature,
                                 const QString &fields = {}) {
            rows(tag, QVariant::fromValue(record), signature, fields);
        };
        constexpr char contact[] = "(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))";
        row("default contact", Contact(), contact, QString(26, u'|') + "*|false|false|0||||*"_L1);
        row("full contact", fullContact(), contact,
            u"contactId|loginName|salutation|firstName|name|latinFirstName|latinName|language|timezone|officePhone|"
            "officePhoneCan|attendant|colleague|assistant|email|fax|faxCan|voicemail|personalHome|personalHomeCan|"
            "personalMobile|personalMobileCan|personalFax|personalFaxCan|personalEmail|collaborationId|*|false|true|6|"
            "photo|melody|puid|*"_s);
        Contact local = fullContact();
        local.setLastModificationDate(QDateTime({1969, 12, 31}, {23, 59, 59, 999}, Qt::LocalTime));
        row("contacts", ListContact{local, {}}, "a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))");
        row("summary", ContactSummary(local), "(sssssi)", u"contactId|firstName|name|officePhone|email|6"_s);
        row("summaries", ListContactSummary{local, {}}, "a(sssssi)");
        const QList<std::pair<QString, QString>> choices{{u"0"_s, u"off"_s}, {u"1"_s, {}}};
        const Setting setting{u"1"_s, u"2"_s, u"3"_s, u"4"_s,  u"5"_s, u"6"_s, u"7"_s,
                              -8,     9,      10,     choices, false,  true,   u"user"_s};
        row("setting", setting, "(sssssssiiia(ss)bbs)", u"1|2|3|4|5|6|7|-8|9|10|*|false|true|user"_s);
        row("settings", ListSetting{setting, {}}, "a(sssssssiiia(ss)bbs)");
        row("capability", Capability{u"search"_s, -1}, "(si)", u"search|-1"_s);
        row("capabilities", MapQStringCapability{{u"a"_s, {u"b"_s, 1}}}, "a{s(si)}");
        row("texts by text", QMapQStringQString{{QString(), u"a"_s}}, "a{ss}");
        row("lists by text", QMapQStringQStringList{{u"a"_s, {QString(), u"b"_s}}}, "a{sas}");
        row("status of a newer peer", ImpExpStatus(ImpExpStatus::Value(7)), "(i)", u"7"_s);
        row("report", UpdateReport{-3, u"refused"_s}, "(is)", u"-3|refused"_s);
        row("mode", KestinMode{STR_KESTIN_MODE_ADVANCED}, "(s)", u"advanced"_s);
    }

    void recordsCrossTheBus()
    {
        QFETCH(QVariant, record);
        QDBusMessage call = QDBusMessage::createMethodCall(m_own.baseService(), u"/"_s, QString(), u"echo"_s);
        call << record;
        QDBusPendingCallWatcher watcher(m_bus.connection(u"caller"_s).asyncCall(call));
        QSignalSpy finished(&watcher, &QDBusPendingCallWatcher::finished);
        QVERIFY(watcher.isFinished() || finished.wait(PrivateBus::limitMs));
        QTEST(m_signature, "signature");
        const QVariant answer = watcher.reply().arguments().value(0);
        QTEST(fieldsOf(answer.value<QDBusArgument>()), "fields");
        QVariant received(record.metaType());
        QVERIFY(QDBusMetaType::demarshall(answer.value<QDBusArgument>(), record.metaType(), received.data()));
        QCOMPARE(received, record);
    }

    void namesAreRegistered()
    {
        for (const char *name :
             {"Contact", "ListContact", "ListContactSummary", "Setting", "ListSetting", "Capability",
              "MapQStringCapability", "QMapQStringQString", "QMapQStringQStringList", "ImpExpStatus", "UpdateReport"})
            QVERIFY2(QDBusMetaType::typeToSignature(QMetaType::fromName(name)), name);
    }

    void onlyTheDataFolderIsReplaced()
    {
        qputenv("KESTIN_DATA_DIR", "/desk");
        QCOMPARE(KestinPaths::data(u"/data/a"_s), u"/desk/a"_s);
        QCOMPARE(KestinPaths::data(u"/database/data"_s), u"/database/data"_s);
        qunsetenv("KESTIN_DATA_DIR");
        QCOMPARE(KestinPaths::data(u"/data/a"_s), u"/data/a"_s);
    }

private:
    PrivateBus m_bus;
    QDBusConnection m_own = m_bus.connection(u"own"_s);
    QString m_signature;
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "RecordsTest.moc"
