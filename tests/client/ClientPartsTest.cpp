// SPDX-License-Identifier: Apache-2.0
#include "client/bus/CommandFailure.h"
#include "client/bus/ContactPages.h"
#include "client/defaults/DefaultContacts.h"
#include "client/photo/PhotoSource.h"
#include "client/photo/PictureFile.h"
#include "client/text/ContactTable.h"
#include "client/text/EventText.h"
#include "client/text/NumberReading.h"
#include "client/text/Table.h"
#include "client/text/Terminal.h"
#include "platform/records/ImpExpStatus.h"
#include "tests/support/Person.h"
#include "tests/support/Test.h"

#include <QDBusError>
#include <QJsonArray>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// What the client makes of values before it prints them, and how it reads many of them.
class ClientPartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingPrintedDrivesTheTerminal_data()
    {
        const Rows<QString, QString> row;
        row("plain", "Zoë 山田 \\n 👍", "Zoë 山田 \\n 👍");
        row("escape sequence", "\x1b[31mred", "\\x1b[31mred");
        row("eight-bit controls", "a\u009b2J\u007f", u"a\\x9b2J\\x7f"_s);
        row("line ends", "a\r\nb\tc\u2028d", "a\\r\\nb\\tc\\u2028d");
        row("direction", "\u202egnp\u2066\u200f", "\\u202egnp\\u2066\\u200f");
    }

    void nothingPrintedDrivesTheTerminal()
    {
        const auto [value, shown] = currentRow<QString, QString>();
        QCOMPARE(Printable::text(value), shown);
    }

    void tableFitsTheTerminal()
    {
        Table table({{"ID"}, {"NAME"}, {"E-MAIL", 4}, {"EMPTY"}});
        table.addRow({"#CONTACT_1#", "山田", "yamada@example.org", ""});
        table.addRow({"#CONTACT_2#", "Zoë\n", QString(), ""});
        table.addRow({"#CONTACT_3#", "e\u0301", "👍👍👍👍👍👍", ""}); // a mark takes no column, a picture two
        QString text;
        QTextStream out(&text);
        table.write(out, 30);
        QCOMPARE(text, "ID           NAME   E-MAIL\n"
                       "#CONTACT_1#  山田   yamada@ex…\n"
                       "#CONTACT_2#  Zoë\\n\n"
                       "#CONTACT_3#  e\u0301      👍👍👍👍…\n");
    }

    void columnsAreLeftOutBeforeANumberIsCut_data()
    {
        const Rows<int, QString, QString> row; // width, columns asked for, headings
        row("wide", 0, "", "ID NAME OFFICE MOBILE HOME E-MAIL TYPE");
        row("120", 120, "", "ID NAME OFFICE MOBILE HOME E-MAIL TYPE");
        row("80", 80, "", "ID NAME OFFICE MOBILE HOME");
        row("60", 60, "", "ID NAME OFFICE");
        row("asked for", 60, "home,name,fax,misc.a", "HOME NAME FAX A");
    }

    void columnsAreLeftOutBeforeANumberIsCut()
    {
        const auto [width, columns, headings] = currentRow<int, QString, QString>();
        const ListContact contacts{
            person("contactId=#CONTACT_1#|firstName=Alexandrine|name=Grandmontagne|officePhone=+33 "
                   "1 99 00 77 00|personalMobile=+33639987700|email=alexandrine@example.org"),
            person("contactId=#CONTACT_10#|name=A|personalHome=+33199007701|misc.a=b")};
        QString text;
        QTextStream out(&text);
        ContactTable::of(contacts, columns.split(',', Qt::SkipEmptyParts)).write(out, width);
        const QStringList lines = text.split('\n');
        QCOMPARE(lines.at(0).simplified(), headings);
        for (const QString &line : lines)
            QVERIFY2(width == 0 || DisplayWidth::of(line) <= width, qPrintable(line));
        QVERIFY2(!text.contains(QRegularExpression("[0-9]…")), qPrintable(text));
    }

    void readingsAreExplained_data()
    {
        const Rows<QString, QString> row; // dialled, canonical, why; the area code is 01
        row("+33612345678", "+33612345678", "it has its + already");
        row("0033612345678", "+33612345678", "an international number: 00 stands for +");
        row("33612345678", "+33612345678", "an international number without its +");
        row("0612345678", "+33612345678", "a national number: its 0 gives way to +33");
        row("612345678", "+33612345678", "a national number: +33 is put in front");
        row("55667000", "+33155667000", "a number of the area: +33 and the area code 1 are put in front");
        row("00612345678", "+33612345678", "the outside line 0 is taken off, then a national number: its 0 gives");
        row("4711", "4711", "an extension: it has fewer than 6 digits");
        row("+a", "+a", "as it stands: there is no digit in it");
        row("99999999999", "99999999999", "telephony knows no such number");
        row("12025550100", "+442025550100", "by a rule of its own");
    }

    void readingsAreExplained()
    {
        const auto [canonical, why] = currentRow<QString, QString>();
        const QString told = NumberReading::explain(QTest::currentDataTag(), canonical, {"+33", "01", "0", 6});
        QVERIFY2(told.contains(why), qPrintable(told));
    }

    void eventValuesAreRecognised()
    {
        ListContact contacts(5);
        contacts[0] = person("contactId=#1#|name=Zoë");
        const ListEventArgument arguments{{"reqId", "r"},
                                          {"contacts", QVariant::fromValue(contacts)},
                                          {"status", QVariant::fromValue(ImpExpStatus(ImpExpStatus::Failure))},
                                          {"ids", QStringList{"a", "b"}},
                                          {"flag", true}};
        QCOMPARE(EventText::arguments(arguments),
                 QStringList({"reqId=r", "contacts=[#1# Zoë, nobody, nobody, and 2 more]", "status=Failure",
                              "ids=[a, b]", "flag=true"}));
        const QJsonObject json = EventText::json(arguments);
        QCOMPARE(json.value("contacts").toArray().size(), 5);
        QCOMPARE(json.value("flag"), QJsonValue(true));
    }

    void pagesShrinkUntilTheBusCarriesThem_data()
    {
        // carried: how many contacts the bus takes at a time
        const Rows<int, int, int, int> row;
        row("all", 0, ContactPages::toTheEnd, 1000, 1200);
        row("all, in small pages", 0, ContactPages::toTheEnd, 70, 1200);
        row("one at a time", 1190, ContactPages::toTheEnd, 1, 10);
        row("some across pages", 10, 600, 1000, 600);
        row("none", 10, 0, 1000, 0);
        row("past the end", 1200, 5, 1000, 0);
    }

    void pagesShrinkUntilTheBusCarriesThem()
    {
        auto [start, length, carried, total] = currentRow<int, int, int, int>();
        ListContact stored(1200);
        for (int index = 0; index < 1200; ++index)
            stored[index].name = QString("%1").arg(9999 - index);
        ContactPages pages([&](int from, int count) {
            if (count > carried)
                throw BusFailure("m", QDBusMessage::createError(QDBusError::LimitsExceeded, "fewer"));
            return stored.mid(from, count);
        });
        ListContact expected = stored.mid(start, length);
        std::reverse(expected.begin(), expected.end());
        const ListContact read = pages.read(start, length);
        QCOMPARE(int(read.size()), total);
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
        QCOMPARE(contacts.value, "1,,Zoë,\\#1\\, \\\\#,7000,1,z@x,#"
                                 "2,Dr.,,All,,0,,https://x/y,f,m,h,p@x,e,im,Co,Jo,St 1\\, A,Ci,Zi,Fr");
        QCOMPARE(contacts.count, 2);
        QCOMPARE(contacts.leftOut, QStringList({"All: voicemail", "All: misc.note"}));
    }

    void defaultContactsAreTakenAsText()
    {
        const QString first = "1,,Zoë,M\\,\\#,7000,1,,";
        const QString second = "2,,,A,,,,";
        const DefaultContacts contacts = DefaultContacts::ofText(first + "\r\n\n" + second + '#' + first + '\n');
        QCOMPARE(contacts.value, first + '#' + second + '#' + first);
        QCOMPARE(contacts.count, 3);
        QCOMPARE(DefaultContacts::ofText(QString()).value, QString());
    }

    void whatDefaultContactsCannotCarryIsTold_data()
    {
        // name: of a contact; a record, if there is none
        const Rows<QString, QString, QString> row;
        row("mark", "escSharp", QString(), "escSharp: name holds the word escSharp");
        row("line break", "a\nb", QString(), "name holds a line break");
        row("backslash", "a\\", QString(), "name ends with a backslash");
        row("mark in a record", QString(), "1,,a escComa,b,,,,", "holds the word escComa");
        row("seven fields", QString(), "1,,a\\,,b,,,", "has 7 fields instead of 8 or 20");
        row("nothing behind the last #", QString(), "1,,,a,,,,#", "has 1 fields");
    }

    void whatDefaultContactsCannotCarryIsTold()
    {
        const auto [name, record, text] = currentRow<QString, QString, QString>();
        try {
            record.isEmpty() ? DefaultContacts::of({person(name)}) : DefaultContacts::ofText(record);
            QFAIL("it is taken");
        } catch (const CommandFailure &failure) {
            QVERIFY2(failure.text().contains(text), qPrintable(failure.text()));
        }
    }

    void addressesThatAreNeverFetchedAreToldBefore_data()
    {
        const Rows<QString> row; // the beginning of the refusal
        row("https://people.example.org/z.png", "");
        row("HTTP://128.0.0.1:8080/z.png", "");
        row("http://[2001:db8::1]/z.png", "");
        for (const char *host : {"localhost", "a.LocalHost.", "127.0.0.1", "127.1", "2130706433", "0x7f.0.0.1", "0",
                                 "[::1]", "[::]", "[::ffff:127.0.0.9]"})
            row(QByteArray("http://") + host + "/z.png", "the directory fetches no photo from the phone itself");
        row("file:///tmp/z.png", "the directory fetches photos over http and https only, not over file");
        row("http:///z.png", "the address names no host");
    }

    void addressesThatAreNeverFetchedAreToldBefore()
    {
        const auto [refusal] = currentRow<QString>();
        QVERIFY(PhotoSource::isAddress(QTest::currentDataTag()));
        const QString told = PhotoSource::refusalOf(QTest::currentDataTag()).value_or("");
        QVERIFY2(told.startsWith(refusal) && told.isEmpty() == refusal.isEmpty(), qPrintable(told));
    }

    void picturesAreKnownByTheirFirstBytes_data()
    {
        const Rows<QByteArray, QString> row;
        row("PNG", "89504e470d0a1a0a0000000d49484452000001000000000a", "PNG 256 x 10");
        row("PNG, cut", "89504e470d0a1a0a0000", "PNG 0 x 0");
        row("GIF", "4749463839610a000001", "GIF 10 x 256");
        row("JPEG, cut", "ffd8ffe00004aaaaffc0001108", "JPEG 0 x 0");
        row("JPEG, a table and a filled marker before the frame", "ffd8ffe00004aaaaffc40003aaffffffc20011080100000a03",
            "JPEG 10 x 256");
        row("text", "68656c6c6f", QString());
        row("nothing", "", "");
    }

    void picturesAreKnownByTheirFirstBytes()
    {
        const auto [hex, known] = currentRow<QByteArray, QString>();
        const std::optional<ImageHeader> header = ImageHeader::of(QByteArray::fromHex(hex));
        QCOMPARE(
            header
                ? QString("%1 %2 x %3").arg(QString::fromLatin1(header->format)).arg(header->width).arg(header->height)
                : QString(),
            known);
    }
};

QTEST_GUILESS_MAIN(ClientPartsTest)
#include "ClientPartsTest.moc"
