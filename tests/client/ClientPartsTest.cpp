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
#include "tests/support/Person.h"
#include "tests/support/Rows.h"

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
    void nothingPrintedDrivesTheTerminal_data()
    {
        const Rows<QString, QString> row("value", "shown");
        row("plain", u"Zoë 山田 \\n 👍"_s, u"Zoë 山田 \\n 👍"_s);
        row("escape sequence", u"\x1b[31mred"_s, u"\\x1b[31mred"_s);
        row("eight-bit controls", u"a\u009b2J\u007f"_s, u"a\\x9b2J\\x7f"_s);
        row("line ends", u"a\r\nb\tc\u2028d"_s, u"a\\r\\nb\\tc\\u2028d"_s);
        row("direction", u"\u202egnp\u2066\u200f"_s, u"\\u202egnp\\u2066\\u200f"_s);
    }

    void nothingPrintedDrivesTheTerminal()
    {
        QFETCH(QString, value);
        QTEST(Printable::text(value), "shown");
    }

    void jsonEscapesAndKeepsTheValue()
    {
        const QJsonObject object{{u"a"_s, u"\u009b\u202e\x1b\"\\u\nZoë"_s}};
        const QByteArray text = Printable::json(object);
        QCOMPARE(text, QByteArray("{\"a\":\"\\u009b\\u202e\\u001b\\\"\\\\u\\nZoë\"}"));
        QCOMPARE(QJsonDocument::fromJson(text).object(), object);
    }

    void textIsCutByColumns_data()
    {
        const Rows<QString, int, QString> row("text", "width", "shown");
        row("fits", u"Müller"_s, 6, u"Müller"_s);
        row("cut", u"Müller"_s, 4, u"Mül…"_s);
        row("wide characters", u"山田太郎"_s, 6, u"山田…"_s);
        row("combining marks take no column", u"e\u0301e\u0301e\u0301e\u0301"_s, 3, u"e\u0301e\u0301…"_s);
        row("beyond the basic plane", u"👍👍👍"_s, 5, u"👍👍…"_s);
    }

    void textIsCutByColumns()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        const QString shown = DisplayWidth::cut(text, width);
        QTEST(shown, "shown");
        QVERIFY(DisplayWidth::of(shown) <= width);
    }

    void tableFitsTheTerminal()
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

    void eventValuesAreRecognised()
    {
        ListContact contacts(5);
        contacts[0] = person("contactId=#1#|name=Zoë");
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

    void pagesShrinkUntilTheBusCarriesThem_data()
    {
        // carried: how many contacts the bus takes at a time
        const Rows<int, int, int, int> row("start", "length", "carried", "count");
        row("all", 0, ContactPages::toTheEnd, 1000, 1200);
        row("all, in small pages", 0, ContactPages::toTheEnd, 70, 1200);
        row("one at a time", 1190, ContactPages::toTheEnd, 1, 10);
        row("some across pages", 10, 600, 1000, 600);
        row("none", 10, 0, 1000, 0);
        row("past the end", 1200, 5, 1000, 0);
    }

    void pagesShrinkUntilTheBusCarriesThem()
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
        carried = 0; // not even one
        QVERIFY_EXCEPTION_THROWN(pages.read(0, ContactPages::toTheEnd), BusFailure);
    }

    void defaultContactsAreWrittenAsTheSettingWantsThem()
    {
        Contact few = person("firstName=Zoë|name=#1, \\#|officePhone=7000|email=z@x");
        few.isPreviewed = true;
        const Contact all = person(
            "salutation=Dr.|name=All|photo=https://x/"
            "y|fax=f|personalMobile=m|personalHome=h|personalEmail=p@x|personalFax=e|collaborationId=im|voicemail=v|"
            "misc.company=Co|misc.job=Jo|misc.address=St 1, A|misc.city=Ci|misc.zip=Zi|misc.note=no|misc.country=Fr");
        const DefaultContacts contacts = DefaultContacts::of({few, all});
        QCOMPARE(contacts.value, u"1,,Zoë,\\#1\\, \\\\#,7000,1,z@x,#"
                                 "2,Dr.,,All,,0,,https://x/y,f,m,h,p@x,e,im,Co,Jo,St 1\\, A,Ci,Zi,Fr"_s);
        QCOMPARE(contacts.count, 2);
        QCOMPARE(contacts.leftOut, QStringList({u"All: voicemail"_s, u"All: misc.note"_s}));
    }

    void defaultContactsAreTakenAsText()
    {
        const QString first = u"1,,Zoë,M\\,\\#,7000,1,,"_s;
        const QString second = u"2,,,A,,,,"_s;
        const DefaultContacts contacts = DefaultContacts::ofText(first + u"\r\n\n"_s + second + u'#' + first + u'\n');
        QCOMPARE(contacts.value, first + u'#' + second + u'#' + first);
        QCOMPARE(contacts.count, 3);
        QCOMPARE(DefaultContacts::ofText(QString()).value, QString());
    }

    void whatDefaultContactsCannotCarryIsTold_data()
    {
        // name: of a contact; a record, if there is none
        const Rows<QString, QString, QString> row("name", "record", "text");
        row("mark", u"escSharp"_s, QString(), u"escSharp: name holds the word escSharp"_s);
        row("line break", u"a\nb"_s, QString(), u"name holds a line break"_s);
        row("backslash", u"a\\"_s, QString(), u"name ends with a backslash"_s);
        row("mark in a record", QString(), u"1,,a escComa,b,,,,"_s, u"holds the word escComa"_s);
        row("seven fields", QString(), u"1,,a\\,,b,,,"_s, u"has 7 fields instead of 8 or 20"_s);
        row("nothing behind the last #", QString(), u"1,,,a,,,,#"_s, u"has 1 fields"_s);
    }

    void whatDefaultContactsCannotCarryIsTold()
    {
        QFETCH(QString, name);
        QFETCH(QString, record);
        QFETCH(QString, text);
        try {
            record.isEmpty() ? DefaultContacts::of({person(name)}) : DefaultContacts::ofText(record);
            QFAIL("it is taken");
        } catch (const CommandFailure &failure) {
            QVERIFY2(failure.text().contains(text), qPrintable(failure.text()));
        }
    }

    void picturesAreKnownByTheirFirstBytes_data()
    {
        const Rows<QByteArray, QString> row("hex", "known");
        row("PNG", "89504e470d0a1a0a0000000d49484452000001000000000a", u"PNG 256 x 10"_s);
        row("PNG, cut", "89504e470d0a1a0a0000", u"PNG 0 x 0"_s);
        row("GIF", "4749463839610a000001", u"GIF 10 x 256"_s);
        row("JPEG, cut", "ffd8ffe00004aaaaffc0001108", u"JPEG 0 x 0"_s);
        row("JPEG, a table and a filled marker before the frame", "ffd8ffe00004aaaaffc40003aaffffffc20011080100000a03",
            u"JPEG 10 x 256"_s);
        row("text", "68656c6c6f", QString());
        row("nothing", "", "");
    }

    void picturesAreKnownByTheirFirstBytes()
    {
        QFETCH(QByteArray, hex);
        const std::optional<ImageHeader> header = ImageHeader::of(QByteArray::fromHex(hex));
        QTEST(header ? u"%1 %2 x %3"_s.arg(QString::fromLatin1(header->format)).arg(header->width).arg(header->height)
                     : QString(),
              "known");
    }
};

QTEST_GUILESS_MAIN(ClientPartsTest)
#include "ClientPartsTest.moc"
