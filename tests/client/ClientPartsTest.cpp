// SPDX-License-Identifier: Apache-2.0
#include "client/bus/BusFailure.h"
#include "client/bus/ContactPages.h"
#include "client/text/DisplayWidth.h"
#include "client/text/EventText.h"
#include "client/text/Printable.h"
#include "client/text/RecordJson.h"
#include "client/text/Table.h"
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

QTEST_GUILESS_MAIN(ClientPartsTest)
#include "ClientPartsTest.moc"
