// SPDX-License-Identifier: Apache-2.0
#include "client/bus/CommandFailure.h"
#include "client/bus/ContactPages.h"
#include "client/defaults/DefaultContacts.h"
#include "client/photo/PictureFile.h"
#include "client/text/ContactText.h"
#include "client/text/EventText.h"
#include "client/text/Table.h"
#include "client/text/Terminal.h"
#include "platform/records/ImpExpStatus.h"

#include <QDBusError>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

/// What the client makes of values before it prints them, and how it reads many of them.
class ClientPartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingPrintedDrivesTheTerminal_data();
    void nothingPrintedDrivesTheTerminal();
    void jsonEscapesAndKeepsTheValue();
    void jsonKeysAreThoseOfTheRecord();
    void textIsCutByColumns_data();
    void textIsCutByColumns();
    void tableFitsTheTerminal();
    void eventValuesAreRecognised();
    void pagesShrinkUntilTheBusCarriesThem_data();
    void pagesShrinkUntilTheBusCarriesThem();
    void aContactTooLargeForTheBusIsAFailure();
    void defaultContactsAreWrittenAsTheSettingWantsThem();
    void defaultContactsAreTakenAsText();
    void whatDefaultContactsCannotCarryIsTold_data();
    void whatDefaultContactsCannotCarryIsTold();
    void picturesAreKnownByTheirFirstBytes_data();
    void picturesAreKnownByTheirFirstBytes();
};

void ClientPartsTest::nothingPrintedDrivesTheTerminal_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << u"Zoë 山田 \\n 👍"_s << u"Zoë 山田 \\n 👍"_s;
    QTest::newRow("escape sequence") << u"\x1b[31mred"_s << u"\\x1b[31mred"_s;
    QTest::newRow("eight-bit controls") << u"a\u009b2J\u007f"_s << u"a\\x9b2J\\x7f"_s;
    QTest::newRow("line ends") << u"a\r\nb\tc\u2028d"_s << u"a\\r\\nb\\tc\\u2028d"_s;
    QTest::newRow("direction") << u"\u202egnp\u2066\u200f"_s << u"\\u202egnp\\u2066\\u200f"_s;
}

void ClientPartsTest::nothingPrintedDrivesTheTerminal()
{
    QFETCH(QString, value);
    QTEST(Printable::text(value), "shown");
}

void ClientPartsTest::jsonEscapesAndKeepsTheValue()
{
    const QJsonObject object{{u"a"_s, u"\u009b\u202e\x1b\"\\u\nZoë"_s}};
    const QByteArray text = Printable::json(object);
    QCOMPARE(text, QByteArray("{\"a\":\"\\u009b\\u202e\\u001b\\\"\\\\u\\nZoë\"}"));
    QCOMPARE(QJsonDocument::fromJson(text).object(), object);
}

void ClientPartsTest::jsonKeysAreThoseOfTheRecord()
{
    QStringList keys{u"misc"_s,  u"isPreviewed"_s, u"isPrivate"_s, u"type"_s,
                     u"photo"_s, u"melody"_s,      u"puid"_s,      u"lastModificationDate"_s};
    for (const Contact::TextField &field : Contact::texts)
        keys.append(QString::fromLatin1(field.name));
    keys.sort();
    QCOMPARE(RecordJson::of(Contact()).keys(), keys);
}

void ClientPartsTest::textIsCutByColumns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("shown");
    QTest::newRow("fits") << u"Müller"_s << 6 << u"Müller"_s;
    QTest::newRow("cut") << u"Müller"_s << 4 << u"Mül…"_s;
    QTest::newRow("wide characters") << u"山田太郎"_s << 6 << u"山田…"_s;
    QTest::newRow("combining marks take no column") << u"e\u0301e\u0301e\u0301e\u0301"_s << 3 << u"e\u0301e\u0301…"_s;
    QTest::newRow("beyond the basic plane") << u"👍👍👍"_s << 5 << u"👍👍…"_s;
}

void ClientPartsTest::textIsCutByColumns()
{
    QFETCH(QString, text);
    QFETCH(int, width);
    const QString shown = DisplayWidth::cut(text, width);
    QTEST(shown, "shown");
    QVERIFY(DisplayWidth::of(shown) <= width);
}

void ClientPartsTest::tableFitsTheTerminal()
{
    Table table({u"ID"_s, u"NAME"_s, u"E-MAIL"_s});
    table.addRow({u"#CONTACT_1#"_s, u"山田"_s, u"yamada@example.org"_s});
    table.addRow({u"#CONTACT_2#"_s, u"Zoë\n"_s, QString()});
    QString text;
    QTextStream out(&text);
    table.write(out, 30);
    QCOMPARE(text, u"ID           NAME   E-MAIL\n"
                   "#CONTACT_1#  山田   yamada@ex…\n"
                   "#CONTACT_2#  Zoë\\n\n"_s);
}

void ClientPartsTest::eventValuesAreRecognised()
{
    ListContact contacts(5);
    contacts[0].contactId = u"#1#"_s;
    contacts[0].name = u"Zoë"_s;
    const ListEventArgument arguments{{u"reqId"_s, u"r"_s},
                                      {u"contacts"_s, QVariant::fromValue(contacts)},
                                      {u"status"_s, QVariant::fromValue(ImpExpStatus(ImpExpStatus::Failure))},
                                      {u"ids"_s, QStringList{u"a"_s, u"b"_s}},
                                      {u"flag"_s, true}};
    QCOMPARE(EventText::arguments(arguments),
             QStringList({u"reqId=r"_s, u"contacts=[#1# Zoë, nobody, nobody, and 2 more]"_s, u"status=Failure"_s,
                          u"ids=[a, b]"_s, u"flag=true"_s}));
    const QJsonObject json = EventText::json(arguments);
    QCOMPARE(json.value(u"contacts"_s).toArray().size(), 5);
    QCOMPARE(json.value(u"flag"_s), QJsonValue(true));
}

void ClientPartsTest::pagesShrinkUntilTheBusCarriesThem_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("carried"); // how many contacts the bus takes at a time
    QTest::addColumn<int>("count");
    QTest::newRow("all") << 0 << ContactPages::toTheEnd << 1000 << 1200;
    QTest::newRow("all, in small pages") << 0 << ContactPages::toTheEnd << 70 << 1200;
    QTest::newRow("one at a time") << 1190 << ContactPages::toTheEnd << 1 << 10;
    QTest::newRow("some across pages") << 10 << 600 << 1000 << 600;
    QTest::newRow("none") << 10 << 0 << 1000 << 0;
    QTest::newRow("past the end") << 1200 << 5 << 1000 << 0;
}

void ClientPartsTest::pagesShrinkUntilTheBusCarriesThem()
{
    QFETCH(int, start);
    QFETCH(int, length);
    QFETCH(int, carried);
    ListContact stored(1200);
    for (int index = 0; index < 1200; ++index)
        stored[index].name = u"%1"_s.arg(9999 - index);
    ContactPages pages([&](int from, int count) {
        if (count > carried)
            throw BusFailure(u"m"_s, QDBusMessage::createError(QDBusError::LimitsExceeded, u"fewer"_s));
        return stored.mid(from, count);
    });
    ListContact expected = stored.mid(start, length);
    std::reverse(expected.begin(), expected.end());
    const ListContact read = pages.read(start, length);
    QTEST(int(read.size()), "count");
    QCOMPARE(read, expected);
}

void ClientPartsTest::aContactTooLargeForTheBusIsAFailure()
{
    ContactPages pages([](int, int) -> ListContact {
        throw BusFailure(u"m"_s, QDBusMessage::createError(QDBusError::LimitsExceeded, u"fewer"_s));
    });
    QVERIFY_EXCEPTION_THROWN(pages.read(0, ContactPages::toTheEnd), BusFailure);
}

void ClientPartsTest::defaultContactsAreWrittenAsTheSettingWantsThem()
{
    Contact few;
    few.firstName = u"Zoë"_s;
    few.name = u"#1, \\#"_s;
    few.officePhone = u"7000"_s;
    few.isPreviewed = true;
    few.email = u"z@x"_s;
    Contact all;
    all.salutation = u"Dr."_s;
    all.name = u"All"_s;
    all.photo = u"https://x/y"_s;
    all.fax = u"f"_s;
    all.personalMobile = u"m"_s;
    all.personalHome = u"h"_s;
    all.personalEmail = u"p@x"_s;
    all.personalFax = u"e"_s;
    all.collaborationId = u"im"_s;
    all.voicemail = u"v"_s;
    all.misc = {{u"company"_s, u"Co"_s}, {u"job"_s, u"Jo"_s},  {u"address"_s, u"St 1, A"_s}, {u"city"_s, u"Ci"_s},
                {u"zip"_s, u"Zi"_s},     {u"note"_s, u"no"_s}, {u"country"_s, u"Fr"_s}};
    const DefaultContacts contacts = DefaultContacts::of({few, all});
    QCOMPARE(contacts.value, u"1,,Zoë,\\#1\\, \\\\#,7000,1,z@x,#"
                             "2,Dr.,,All,,0,,https://x/y,f,m,h,p@x,e,im,Co,Jo,St 1\\, A,Ci,Zi,Fr"_s);
    QCOMPARE(contacts.count, 2);
    QCOMPARE(contacts.leftOut, QStringList({u"All: voicemail"_s, u"All: misc.note"_s}));
}

void ClientPartsTest::defaultContactsAreTakenAsText()
{
    const QString first = u"1,,Zoë,M\\,\\#,7000,1,,"_s;
    const QString second = u"2,,,A,,,,"_s;
    const DefaultContacts contacts = DefaultContacts::ofText(first + u"\r\n\n"_s + second + u'#' + first + u'\n');
    QCOMPARE(contacts.value, first + u'#' + second + u'#' + first);
    QCOMPARE(contacts.count, 3);
    QCOMPARE(DefaultContacts::ofText(QString()).value, QString());
}

void ClientPartsTest::whatDefaultContactsCannotCarryIsTold_data()
{
    QTest::addColumn<QString>("name"); // of a contact; a record, if there is none
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("text");
    QTest::newRow("mark") << u"escSharp"_s << QString() << u"escSharp: name holds the word escSharp"_s;
    QTest::newRow("line break") << u"a\nb"_s << QString() << u"name holds a line break"_s;
    QTest::newRow("backslash") << u"a\\"_s << QString() << u"name ends with a backslash"_s;
    QTest::newRow("mark in a record") << QString() << u"1,,a escComa,b,,,,"_s << u"holds the word escComa"_s;
    QTest::newRow("seven fields") << QString() << u"1,,a\\,,b,,,"_s << u"has 7 fields instead of 8 or 20"_s;
    QTest::newRow("nothing behind the last #") << QString() << u"1,,,a,,,,#"_s << u"has 1 fields"_s;
}

void ClientPartsTest::whatDefaultContactsCannotCarryIsTold()
{
    QFETCH(QString, name);
    QFETCH(QString, record);
    QFETCH(QString, text);
    Contact contact;
    contact.name = name;
    try {
        record.isEmpty() ? DefaultContacts::of({contact}) : DefaultContacts::ofText(record);
        QFAIL("it is taken");
    } catch (const CommandFailure &failure) {
        QVERIFY2(failure.text().contains(text), qPrintable(failure.text()));
    }
}

void ClientPartsTest::picturesAreKnownByTheirFirstBytes_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("known");
    QTest::newRow("PNG") << QByteArray("89504e470d0a1a0a0000000d49484452000001000000000a") << u"PNG 256 x 10"_s;
    QTest::newRow("PNG, cut") << QByteArray("89504e470d0a1a0a0000") << u"PNG 0 x 0"_s;
    QTest::newRow("GIF") << QByteArray("4749463839610a000001") << u"GIF 10 x 256"_s;
    QTest::newRow("JPEG, cut") << QByteArray("ffd8ffe00004aaaaffc0001108") << u"JPEG 0 x 0"_s;
    QTest::newRow("JPEG, a table and a filled marker before the frame")
        << QByteArray("ffd8ffe00004aaaaffc40003aaffffffc20011080100000a03") << u"JPEG 10 x 256"_s;
    QTest::newRow("text") << QByteArray("68656c6c6f") << QString();
    QTest::newRow("nothing") << QByteArray() << QString();
}

void ClientPartsTest::picturesAreKnownByTheirFirstBytes()
{
    QFETCH(QByteArray, hex);
    const std::optional<ImageHeader> header = ImageHeader::of(QByteArray::fromHex(hex));
    QTEST(header ? u"%1 %2 x %3"_s.arg(QString::fromLatin1(header->format)).arg(header->width).arg(header->height)
                 : QString(),
          "known");
}

QTEST_GUILESS_MAIN(ClientPartsTest)
#include "ClientPartsTest.moc"
