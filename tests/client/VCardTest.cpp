// SPDX-License-Identifier: Apache-2.0
#include "client/text/ContactText.h"
#include "client/vcard/VCardReader.h"
#include "client/vcard/VCardSplitter.h"
#include "client/vcard/VCardWriter.h"
#include "tests/support/Person.h"
#include "tests/support/Test.h"

#include <QBuffer>
#include <QStringEncoder>

// The library loses a few hundred bytes at each line whose parameters are malformed, which a leak checker would hold
// against the test. Only with whole stacks can it tell the library's allocations from the client's.
extern "C" const char *__asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libebook-contacts\n";
}

namespace {

QByteArray card(const char *version, const QByteArray &lines)
{
    return QByteArray("BEGIN:VCARD\nVERSION:") + version + '\n' + lines + "END:VCARD\n";
}

/// "field: value" of all that is set, a line each, without the type.
QString fieldsOf(const Contact &contact)
{
    QStringList lines;
    for (const auto &[field, value] : ContactText::setFields(contact)) {
        if (field != u"type")
            lines.append(field + ": " + value);
    }
    return lines.join('\n');
}

QList<RawCard> split(const QByteArray &file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    VCardSplitter splitter(buffer);
    QList<RawCard> cards;
    while (const std::optional<RawCard> next = splitter.next())
        cards.append(*next);
    return cards;
}

const char trickyCard[] = "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;Zo=EB;;Dr.\n"
                          "TEL;WORK;VOICE:102\nTEL;WORK:+33 1 55\nTEL;CELL;PREF:06\n"
                          "NOTE;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:caf=C3=A9 =\nand=3B more\n"
                          "PHOTO;ENCODING=BASE64;TYPE=JPEG:\n AAAA\n BBBB\n\n";

} // namespace

/// vCard files as they come from other programs, good and broken.
class VCardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void becomesContact_data()
    {
        const Rows<QByteArray, QString> row;

        row("2.1, quoted-printable in two character sets", card("2.1", trickyCard),
            "salutation: Dr.\nfirstName: Zoë\nname: Müller\nofficePhone: +33 1 55\npersonalMobile: 06\n"
            "personalFax: 102\nmisc.note: café and; more");
        row("2.1, bytes of character sets named and unnamed, folded",
            card("2.1", "N;CHARSET=SHIFT_JIS:\x8e\x52\x93\x63;Taro\nORG:Caf\xe9\n  Dupr\xe9\n"),
            "firstName: Taro\nname: 山田\nmisc.company: Café Dupré");
        row("2.1, quoted-printable without a character set", card("2.1", "N;Quoted-Printable:Gr=F6=\n=DFe\n"),
            "name: Größe");
        row("3.0, groups, escapes, folding",
            card("3.0", "N:O\\;Hara\\, sr;Zoë;Ann,Bea;;Jr.\nitem1.TEL;TYPE=WORK,VOICE;TYPE=pref:+33 1\n"
                        "EMAIL;TYPE=HOME:zoe@ho\n me.org\nEMAIL:zoe@work.org\nNOTE:a;b\\nc\nX-JABBER:zoe@im.org\n"
                        "CATEGORIES:friends,golf\nCLASS:PRIVATE\nX-OTHER:x\nREV:1\n"),
            "firstName: Zoë Ann Bea\nname: O;Hara, sr\nofficePhone: +33 1\nemail: zoe@work.org\n"
            "personalEmail: zoe@home.org\ncollaborationId: zoe@im.org\nmisc.categories: friends, golf\n"
            "misc.note: a;b\nc\nmisc.suffix: Jr.\nisPrivate: yes");
        row("4.0, addresses as URIs",
            card("4.0", "FN:Zoë Müller\nN:Müller;Zoë;;;\nTEL;VALUE=uri;TYPE=\"voice,work\":tel:+1-555;ext=102\n"
                        "TEL;VALUE=uri;TYPE=\"cell\":tel:+1-556\nIMPP:xmpp:zoe@im.org\nLANG;PREF=1:fr\nTZ:+01:00\n"
                        "PHOTO:data:image/png;base64,AAAA\nPHOTO:https://example.org/zoe.png\n"),
            "firstName: Zoë\nname: Müller\nlanguage: fr\ntimezone: +01:00\nofficePhone: +1-555\n"
            "personalMobile: +1-556\npersonalFax: 102\ncollaborationId: zoe@im.org\n"
            "photo: https://example.org/zoe.png");
        row("more of everything than there are fields",
            card("3.0",
                 "N:X\nTEL:1111111\nTEL;TYPE=HOME:2\nTEL;TYPE=FAX,WORK:3\nTEL;TYPE=WORK:4444444\nTEL;TYPE=WORK:55\n"
                 "TEL;TYPE=CELL:6\nTEL;TYPE=CELL:7\nEMAIL:a\nEMAIL:b\nEMAIL:c\nEMAIL:a\nIMPP:i\nIMPP:j\n"),
            "name: X\nofficePhone: 4444444\nemail: a\nfax: 3\npersonalHome: 2\npersonalMobile: 6\npersonalFax: 55\n"
            "personalEmail: b\ncollaborationId: i\nmisc.email: c\nmisc.im: j\nmisc.phone2: 7\nmisc.phone3: 1111111");
        row("the preferred first, others where a call finds them",
            card("4.0", "N:X\nTEL;TYPE=cell:1111111\nTEL;TYPE=cell;PREF=2:2\nTEL;TYPE=cell;PREF=1:33,,4\n"
                        "TEL:sip:x@y\nTEL:55;6\nTEL;TYPE=pref,home:7\nTEL;TYPE=home:33,,4\n"),
            "name: X\nofficePhone: 55;6\nfax: 2\npersonalHome: 7\npersonalMobile: 33,,4\npersonalFax: 1111111\n"
            "collaborationId: sip:x@y");
        row("addresses, organisation, title",
            card("3.0", "N:X\nADR;TYPE=WORK:PO 1;Floor 2;Main St 3;Paris;IdF;75001;France\nADR:;;Sea;Nice;;;\n"
                        "ORG:ACME;R&D;Lab\nTITLE:Chief\nBDAY:1980-01-02\nURL:http\\://x.org/;a\n"),
            "name: X\nmisc.address: Main St 3, Floor 2, PO 1\nmisc.birthday: 1980-01-02\nmisc.city: Paris\n"
            "misc.company: ACME\nmisc.country: France\nmisc.department: R&D, Lab\nmisc.job: Chief\n"
            "misc.otherAddress: Sea, Nice\nmisc.region: IdF\nmisc.url: http://x.org/;a\nmisc.zip: 75001");
        row("addresses by type and preference",
            card("4.0",
                 "N:X\nEMAIL:c\nEMAIL;TYPE=work;PREF=2:b\nEMAIL;PREF=1;TYPE=work:a\nIMPP:sip:i@j\nIMPP;PREF=1:skype:k\n"
                 "ADR;TYPE=home:;;Sea;Nice;;;\nADR;TYPE=work;PREF=9:;;Main;Paris;;;\nADR;PREF=1:;;;Rome;;;\n"
                 "GEO:geo:48.1,2.3\nUID:urn:1\nGENDER:F;girl\nANNIVERSARY:20000101\n"),
            "name: X\nemail: a\npersonalEmail: b\ncollaborationId: skype:k\nmisc.anniversary: 20000101\nmisc.city: "
            "Rome\n"
            "misc.email: c\nmisc.gender: F;girl\nmisc.geo: 48.1;2.3\nmisc.homeAddress: Sea\nmisc.homeCity: Nice\n"
            "misc.im: sip:i@j\nmisc.otherAddress: Main, Paris\nmisc.uid: urn:1");
        row("a company has one name", card("3.0", "FN:Bar du Coin\nORG:Bar du Coin\n"),
            "name: Bar du Coin\nmisc.company: Bar du Coin");
        row("a company's department", card("3.0", "FN:Bar du Coin – Lab\nN:;;;;\nORG:Bar du Coin;Lab\n"),
            "name: Bar du Coin – Lab\nmisc.company: Bar du Coin\nmisc.department: Lab");
        row("a person whose name begins like the company's", card("3.0", "FN:Barlow Smith\nORG:Barl\n"),
            "firstName: Barlow\nname: Smith\nmisc.company: Barl");
        row("one who says to be a company", card("4.0", "FN:Zoë Müller\nKIND:org\n"), "name: Zoë Müller");
        row("shown as a company", card("3.0", "N:Müller;Zoë\nFN:Bar\nORG:Bar\nX-ABShowAs:COMPANY\n"),
            "name: Bar\nmisc.company: Bar\nmisc.person: Zoë Müller");
        row("a given name alone", card("3.0", "N:;Mum;;;\nORG:Family\n"), "name: Mum\nmisc.company: Family");
        row("lines that are none", card("3.0", "N:only\nTEL\n:::\n=\nFOO;=:x\n\n"), "name: only");
        row("parameters that are no token",
            card("2.1", "N:X\nTEL;X-CUSTOM(CHARSET=UTF-8,ENCODING=QUOTED-PRINTABLE,=E5):1=\nTEL;Home Phone:2\n"
                        "TEL;TYPE=\"work:3\nTEL;WORK/MOBILE:4\nPHOTO;X(=:AAAA\nEMAIL;=;é;Work:a@b\nNOTE:n\n"),
            "name: X\nofficePhone: 3\nemail: a@b\nfax: 1=\npersonalHome: 2\npersonalMobile: 4\nmisc.note: n");
    }

    void becomesContact()
    {
        const auto [text, fields] = currentRow<QByteArray, QString>();
        // Line ends of either kind.
        for (const QByteArray &variant : {text, QByteArray(text).replace("\n", "\r\n")}) {
            const VCardReader::Result result = VCardReader::read(variant);
            QCOMPARE(result.refusal, std::nullopt);
            QCOMPARE(fieldsOf(result.contact), fields);
        }
    }

    void fullNameAloneIsTakenApart_data()
    {
        const Rows<QString, QString> row;
        row("two words", "Zoë Müller", "firstName: Zoë\nname: Müller");
        row("particles", "Ludwig van Beethoven", "firstName: Ludwig\nname: van Beethoven");
        row("comma", "Müller\\, Zoë", "firstName: Zoë\nname: Müller");
        row("titles", "Dr. Anna B. Smith", "salutation: Dr.\nfirstName: Anna B.\nname: Smith");
        row("one word", "山田太郎", "name: 山田太郎");
        row("a title only", "Mr.", "name: Mr.");
    }

    void fullNameAloneIsTakenApart()
    {
        const auto [fullName, fields] = currentRow<QString, QString>();
        QCOMPARE(fieldsOf(VCardReader::read(card("3.0", "FN:" + fullName.toUtf8() + '\n')).contact), fields);
    }

    void comesBackAsItWas_data()
    {
        const Rows<Contact> row;
        const QString keys = "company job address city zip country region note url birthday nickname suffix role "
                             "phone2 email im anything department";
        for (const QString &value :
             QStringList{"%1", "%1; \\, \"a\": 100% =3D\\n%41", " \t%1\r\n two\n", "\x1b\u2028%1\u0085", "tel:%1;ext=5",
                         QString("Ünï %1 👍 ").repeated(60)}) {
            Contact contact;
            for (const Contact::TextField &field : Contact::texts) {
                const QString name = QString::fromLatin1(field.name);
                if (name != u"contactId" && !name.startsWith(u"latin") && !name.endsWith(u"Can"))
                    contact.*field.value = value.arg(name);
            }
            contact.melody = value;
            for (const QString &key : keys.split(' '))
                contact.misc.insert(key, value.arg(key));
            contact.misc.insert(value, value);
            contact.isPreviewed = contact.isPrivate = true;
            row("every field as " + value.left(7).toUtf8().toPercentEncoding(), contact);
        }
        row("nothing", Contact());
        row("no name", person("misc.company=ACME|officePhone=1"));
        row("an address that reads like a name", person("email=Dr. Bea Marlow, Jr."));
        row("empty pairs", person("misc.=x|misc.y=|misc.city=|name=X"));
        row("long extension", person("name=X|officePhone=12|personalFax=+331"));
        row("one address twice", person("name=X|email=a@b|personalEmail=a@b"));
        row("private address alone", person("name=X|personalEmail=a@b"));
        row("web photo", person("name=X|photo=https://example.org/a;b,c?d=1#e"));
    }

    void comesBackAsItWas()
    {
        const auto [contact] = currentRow<Contact>();
        Contact stored = contact;
        stored.contactId = "#CONTACT_1#";
        stored.latinName = stored.officePhoneCan = "derived";
        const QByteArray text = VCardWriter::write(stored);
        const VCardReader::Result result = VCardReader::read(text);
        QCOMPARE(result.refusal, std::nullopt);
        QCOMPARE(fieldsOf(result.contact), fieldsOf(contact));
        QCOMPARE(result.contact, contact);
        QCOMPARE(split(text + text).size(), 2);
        for (const QByteArray &line : text.split('\n')) {
            QVERIFY2(line.size() <= 76, line.constData());
            QVERIFY2(line.isEmpty() || line.endsWith('\r'), line.constData());
            QVERIFY2(line.isValidUtf8(), line.constData());
        }
    }

    void usualContactsNeedNoPropertiesOfOurOwn()
    {
        // So every program understands them, and what a person edits there counts.
        const Contact contact = person("name=Müller, sr|firstName=Zoë|officePhone=+33 1 99|personalMobile=+33 6 "
                                       "39|personalFax=4711|collaborationId=zoe@im.org|misc.company=A & B; "
                                       "C|misc.city=Paris|misc.note=a\nb|photo=/var/zoe.png");
        QCOMPARE(VCardWriter::write(contact),
                 QByteArray("BEGIN:VCARD\r\nVERSION:3.0\r\nN:Müller\\, sr;Zoë;;;\r\nFN:Zoë Müller\\, sr\r\n"
                            "ORG:A & B\\; C;\r\nTEL;TYPE=WORK,VOICE:+33 1 99\r\nTEL;TYPE=CELL,VOICE:+33 6 39\r\n"
                            "TEL;TYPE=WORK,X-EXTENSION:4711\r\nIMPP:im:zoe@im.org\r\nADR;TYPE=WORK:;;;Paris;;;\r\n"
                            "NOTE:a\\nb\r\nPHOTO;VALUE=uri:file:///var/zoe.png\r\nEND:VCARD\r\n"));
        const QByteArray full = VCardWriter::write(person(
            "X|officePhone=1111111|personalMobile=2|personalHome=3|fax=4|personalFax=5|misc.phone2=6|misc.phone3=7|"
            "email=a|personalEmail=b|misc.email=c|misc.email2=d|collaborationId=sip:i@j|misc.im=k|misc.city=Paris|"
            "misc.homeCity=Nice|misc.homeZip=06|misc.birthday=--0102|misc.gender=F;girl|misc.geo=48.1;2.3|"
            "misc.categories=a b, c;d|misc.uid=urn:1|misc.anniversary=20000101"));
        QVERIFY2(!full.contains("X-KESTIN"), full.constData());
        QVERIFY(full.contains("ADR;TYPE=HOME:;;;Nice;;06;\r\n") && full.contains("CATEGORIES:a b,c\\;d\r\n"));
        QVERIFY2(VCardReader::read(VCardWriter::write(contact)).contact.photo.isEmpty(), "a path of another machine");
    }

    void embeddedPictureComesBack()
    {
        const QByteArray picture = "\x89PNG\r\n\x1a\n" + QByteArray(300, '\0') + "\xff;,";
        const Contact contact = person("X");
        const VCardReader::Result result = VCardReader::read(VCardWriter::write(contact, picture));
        QCOMPARE(result.picture, picture);
        QCOMPARE(result.contact, contact);
        QCOMPARE(
            VCardReader::read(card("4.0", "FN:X\nPHOTO:data:image/png;base64," + picture.toBase64() + '\n')).picture,
            picture);
        QByteArray lines = picture.toBase64();
        for (const char *type : {"ENCODING=BASE64;PNG:", "PNG;BASE64:\n"}) {
            const QByteArray photo = QByteArray("N:X\nPHOTO;") + type + lines + "\n\nNOTE:n\n";
            const VCardReader::Result read = VCardReader::read(card("2.1", photo));
            QVERIFY2(read.picture == picture, type);
            QCOMPARE(read.contact.misc.value("note"), "n");
            lines.insert(76, '\n').insert(153, '\n'); // not indented
        }
    }

    void isRefused_data()
    {
        const Rows<QByteArray, QString> row;
        row("NUL", card("3.0", QByteArray("N:a\0b\n", 6)), "NUL");
        row("not UTF-8", card("3.0", "N:M\xfcller\n"), "not valid UTF-8");
        row("no name", card("3.0", "N:;;;;\nFN: \nTEL:1\n"), "holds no name");
        row("group", card("4.0", "KIND:group\nFN:All\n"), "is a group");
        row("group of 3.0", card("3.0", "X-ADDRESSBOOKSERVER-KIND:group\nFN:All\n"), "is a group");
        row("no card", QByteArray("hello"), "holds no name");
    }

    void isRefused()
    {
        const auto [text, reason] = currentRow<QByteArray, QString>();
        const QString refusal = VCardReader::read(text).refusal.value_or(QString());
        QVERIFY2(refusal.contains(reason), qPrintable(refusal));
    }

    void fileIsTakenApart_data()
    {
        // cards: the name or the fault of each
        const Rows<QByteArray, QStringList> row;
        const QByteArray one = card("3.0", "N:One\n");
        const QByteArray two = card("3.0", "N:Two\n");
        const QString noEnd = "has no END:VCARD";
        row("nothing", QByteArray(), QStringList());
        row("no card", QByteArray("a\nb\n"), QStringList());
        row("byte order mark, text between, lower case", "\xef\xbb\xbf" + one + "\n--\n" + two.toLower(),
            {"One", "two"});
        row("joined without a line end", one.chopped(1) + two.chopped(1) + "\r\xef\xbb\xbf" + one,
            {"One", "Two", "One"});
        row("cut off and joined", "BEGIN:VCARD\nTEL:1" + two.chopped(1) + one, {noEnd, "Two", "One"});
        row("a text like a begin", card("3.0", "NOTE:aBEGIN:VCARD\nN:One\n") + two, {"One", "Two"});
        const QString plain = QString::fromUtf8(one + card("2.1", "N:\u0a0a\U0001f40a\n")).replace('\n', "\r\n");
        for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
            QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
            const QByteArray utf16 = encoder(plain);
            row("UTF-16 " + QByteArray::number(encoding), utf16, {"One", "\u0a0a\U0001f40a"});
            row("without its mark " + QByteArray::number(encoding), utf16.mid(2), {"One", "\u0a0a\U0001f40a"});
        }
        const QByteArray many = (one + two).repeated(2000);
        row("line ends of three kinds",
            two + QByteArray(many).replace('\n', '\r') + card("3.0", "N:A\rB\n") +
                QByteArray(one).replace("\n", "\r\n"),
            QStringList("Two") + QString("One Two ").repeated(2000).split(' ', Qt::SkipEmptyParts) +
                QStringList{"A B", "One"});
        row("no END in the middle", "BEGIN:VCARD\nN:Cut\n" + two, {noEnd, "Two"});
        row("no END at the end", one + "BEGIN:VCARD\nN:Cu", {"One", noEnd});
        row("a card inside a card", card("2.1", "AGENT:\nBEGIN:VCARD\nN:Inner\nEND:VCARD\nN:Outer\n") + two,
            {"Outer", "Two"});
        row("the same in one line", card("2.1", "N:Outer\nAGENT:BEGIN:VCARD\nVERSION:2.1\nEND:VCARD\n") + two,
            {"Outer", "Two"});
        row("END behind an overlong line",
            card("3.0", "N:One\nNOTE:" + QByteArray(200000, 'x') + "END:VCARD\nX:y\n") + two, {"One", "Two"});
        row("larger than may be", card("3.0", "NOTE:" + QByteArray(VCardSplitter::largestCard, 'x') + '\n') + two,
            {"is larger than 16 MiB", "Two"});
    }

    void fileIsTakenApart()
    {
        const auto [file, cards] = currentRow<QByteArray, QStringList>();
        QStringList found;
        for (const RawCard &raw : split(file))
            found.append(raw.fault ? *raw.fault : VCardReader::read(raw.text).contact.name);
        QCOMPARE(found, cards);
    }

    void damageNeverCrashesNorMakesANamelessContact()
    {
        const QByteArray whole = card("2.1", trickyCard);
        int contacts = 0;
        for (qsizetype place = 0; place < whole.size(); ++place) {
            for (const char damage : {'\0', '\n', ':', ';', '=', '"', '\\', '\x80', '\xff'}) {
                QByteArray damaged = whole;
                damaged[place] = damage;
                for (const RawCard &raw : split(damaged + damaged.left(place))) {
                    const VCardReader::Result result = VCardReader::read(raw.text);
                    const bool named = !(result.contact.firstName + result.contact.name).isEmpty();
                    QCOMPARE(!result.refusal, named);
                    contacts += int(named);
                }
            }
        }
        QVERIFY(contacts > whole.size());
    }
};

QTEST_GUILESS_MAIN(VCardTest)
#include "VCardTest.moc"
