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
#include "tests/support/Test.h"

#include <QDBusMetaType>

namespace {

Contact fullContact()
{
    Contact contact;
    for (const Contact::TextField &field : Contact::texts)
        contact.*field.value = QLatin1String(field.name);
    contact.misc = {{"company", "Norlan \u00e9\U0001F4DE"}, {QString(), "no key"}, {"no value", QString()}};
    contact.isPrivate = true;
    contact.type = ContactType::Cached;
    contact.photo = "photo";
    contact.melody = "melody";
    contact.setPUID("puid");
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
        fields.append(isPlain ? value.toString() : "*");
    }
    argument.endStructure();
    return fields.join('|');
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
    void initTestCase() { QVERIFY(m_own.registerObject("/", this, QDBusConnection::ExportAllSlots)); }

    void recordsCrossTheBus_data()
    {
        const Rows<QVariant, QString, QString> rows;
        const auto row = [&rows](const char *tag, const auto &record, const QString &signature,
                                 const QString &fields = {}) {
            rows(tag, QVariant::fromValue(record), signature, fields);
        };
        constexpr char contact[] = "(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))";
        row("default contact", Contact(), contact, QString(26, '|') + "*|false|false|0||||*");
        row("full contact", fullContact(), contact,
            "contactId|loginName|salutation|firstName|name|latinFirstName|latinName|language|timezone|officePhone|"
            "officePhoneCan|attendant|colleague|assistant|email|fax|faxCan|voicemail|personalHome|personalHomeCan|"
            "personalMobile|personalMobileCan|personalFax|personalFaxCan|personalEmail|collaborationId|*|false|true|6|"
            "photo|melody|puid|*");
        Contact local = fullContact();
        local.setLastModificationDate(QDateTime({1969, 12, 31}, {23, 59, 59, 999}, Qt::LocalTime));
        row("contacts", ListContact{local, {}}, "a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))");
        row("summary", ContactSummary(local), "(sssssi)", "contactId|firstName|name|officePhone|email|6");
        row("summaries", ListContactSummary{local, {}}, "a(sssssi)");
        const QList<std::pair<QString, QString>> choices{{"0", "off"}, {"1", {}}};
        const Setting setting{"1", "2", "3", "4", "5", "6", "7", -8, 9, 10, choices, false, true, "user"};
        row("setting", setting, "(sssssssiiia(ss)bbs)", "1|2|3|4|5|6|7|-8|9|10|*|false|true|user");
        row("settings", ListSetting{setting, {}}, "a(sssssssiiia(ss)bbs)");
        row("capability", Capability{"search", -1}, "(si)", "search|-1");
        row("capabilities", MapQStringCapability{{"a", {"b", 1}}}, "a{s(si)}");
        row("texts by text", QMapQStringQString{{QString(), "a"}}, "a{ss}");
        row("lists by text", QMapQStringQStringList{{"a", {QString(), "b"}}}, "a{sas}");
        row("status of a newer peer", ImpExpStatus(ImpExpStatus::Value(7)), "(i)", "7");
        row("report", UpdateReport{-3, "refused"}, "(is)", "-3|refused");
        row("mode", KestinMode{STR_KESTIN_MODE_ADVANCED}, "(s)", "advanced");
    }

    void recordsCrossTheBus()
    {
        const auto [record, signature, fields] = currentRow<QVariant, QString, QString>();
        QDBusMessage call = QDBusMessage::createMethodCall(m_own.baseService(), "/", QString(), "echo");
        call << record;
        const QVariant answer = m_bus.answerTo(call, "caller").arguments().value(0);
        QCOMPARE(m_signature, signature);
        QCOMPARE(fieldsOf(answer.value<QDBusArgument>()), fields);
        QVariant received(record.metaType());
        QVERIFY(QDBusMetaType::demarshall(answer.value<QDBusArgument>(), record.metaType(), received.data()));
        QCOMPARE(received, record);
    }

    void onlyTheDataFolderIsReplaced()
    {
        qputenv("KESTIN_DATA_DIR", "/desk");
        QCOMPARE(KestinPaths::data("/data/a"), "/desk/a");
        QCOMPARE(KestinPaths::data("/database/data"), "/database/data");
        qunsetenv("KESTIN_DATA_DIR");
        QCOMPARE(KestinPaths::data("/data/a"), KestinPaths::defaultRoot() + "/a");
    }

private:
    PrivateBus m_bus;
    QDBusConnection m_own = m_bus.connection("own");
    QString m_signature;
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "RecordsTest.moc"
