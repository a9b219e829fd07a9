// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ContactMap_Item.h"
#include "platform/impexp/Contact_Item.h"
#include "platform/impexp/ImpExp_Exception.h"
#include "platform/impexp/ImpExp_XMLBuilder.h"
#include "platform/impexp/ImpExp_XMLParser.h"
#include "tests/support/Test.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

QStringList synced; ///< in this order
bool isDiskBroken = false;

Contact_Item contact(const QString &duid, const QString &name)
{
    Contact_Item::Values values;
    values.duid = duid;
    values.puid = "p<&>\"'\t\r\n\u20ac";
    values.lastModificationDate = QDateTime({2026, 11, 21}, {8, 0, 0, 250}, Qt::UTC);
    values.firstName = " \u00e9 \U0001F4DE ]]> ";
    values.lastName = name;
    values.photo = "AAEC";
    return Contact_Item(values);
}

QByteArray inRoot(const QByteArray &content)
{
    return "<directory>" + content + "</directory>";
}

/// One line an item: its ids and elements, or after "!" why not; "fatal" with the reason ends them.
QStringList readAll(const QString &path, bool withElements)
{
    QStringList lines;
    try {
        ImpExp_XMLParser parser(path, 4096);
        ImpExp_Item item("contact");
        for (;;) {
            try {
                if (!parser.getItem(item, withElements))
                    return lines;
                QString line = item.getAttribute("duid") + '/' + item.getAttribute("puid");
                for (const auto &[name, text] : item.elements())
                    line += ' ' + name + '=' + text;
                lines.append(item.hasElements() ? line : line + " map");
            } catch (const ImpExp_ErrorException &error) {
                lines.append(item.getAttribute("duid") + '!' + error.message());
            }
        }
    } catch (const ImpExp_FatalException &error) {
        lines.append("fatal " + error.message());
    }
    return lines;
}

} // namespace

/// Takes the place of the C library's.
extern "C" int fsync(int descriptor)
{
    synced.append(QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(descriptor)));
    return isDiskBroken ? -1 : int(::syscall(SYS_fsync, descriptor));
}

class ImpExpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsPutIsRead()
    {
        const QList<ImpExp_Item> items{contact("#CONTACT_1#", "a\rb\r\nc\nd"), ContactMap_Item("#CONTACT_2#", "p2"),
                                       contact("", QString(65535, 'x') + "\U0001F4DE" + QString(70000, u'\u20ac'))};
        for (const auto &[pageSize, pages] : {std::pair(1, 3), {2, 2}, {3, 1}, {-1, 1}}) {
            ImpExp_XMLBuilder writing = builder(pageSize);
            for (const ImpExp_Item &item : items)
                writing.putItem(item);
            writing.finish();
            QCOMPARE(contentOf(target()).count("<page "), pages);
        }
        QVERIFY(synced.value(0).startsWith(m_folder.path() + '/')); // the file, before its folder
        QCOMPARE(synced.last(), m_folder.path());
        ImpExp_XMLParser parser(target());
        ImpExp_Item item("contact");
        for (const ImpExp_Item &put : items) {
            QVERIFY(parser.getItem(item, true));
            QCOMPARE(item.attributes(), put.attributes());
            QCOMPARE(item.elements(), put.elements());
            QCOMPARE(item.hasElements(), put.hasElements());
        }
        QVERIFY(!parser.getItem(item, true));
        QCOMPARE(QProcess::execute("xmllint", {"--noout", "--schema", KESTIN_SYNC_SCHEMA, target()}), 0);
    }

    void contactsAreReadOneByOne_data()
    {
        const Rows<QByteArray, bool, QStringList> row;
        const QByteArray two = "<page><contact duid='1' puid='2'/></page><x><contact duid='no'/></x>"
                               "<contact duid='3'><firstName>A</firstName><photo>AAEC</photo></contact>";
        row("with elements", two, true, {"1/2 map", "3/ firstName=A photo=AAEC"});
        row("ids only", two, false, {"1/2 map", "3/"});
        const QByteArray ids = "<contact><duid>1</duid><puid>2</puid></contact>";
        row("ids in elements", ids, true, {"1/2 duid=1 puid=2"});
        row("ids in elements, only those", ids, false, {"1/2"});
        row("unknown elements do not make a whole contact", QByteArray("<contact duid='1'><x>a<y/></x>text</contact>"),
            true, {"1/ map"});
        const QByteArray bad = "<contact duid='1'><email>a</email><email>b</email></contact>"
                               "<contact duid='2'><duid>3</duid></contact>"
                               "<contact duid='4'><email>a<b/></email></contact><contact duid='5'/>";
        row("bad ones", bad, true,
            {"1!its element \"email\" is repeated", "2!its attribute and its element \"duid\" differ",
             "4!its element \"email\" holds another one", "5/ map"});
        row("bad ones, only their ids", bad, false, {"1/", "2/", "4/", "5/ map"});
        row("one text in pieces",
            QByteArray("<contact><email>a<!-- -> <!b '> --><![CDATA[]><!c>\">]]]>&#x20AC;"
                       "<?x ? > <!d> ?></email></contact>"),
            true, {"/ email=a]><!c>\">]\u20ac"});
        const QByteArray wide = "x" + QByteArray("\xc3\xa9").repeated(9999) + "</email></contact>";
        row("texts that are too large",
            "<contact duid='1'><photo>" + QByteArray("AA&#10;").repeated(3000) + "</photo><email>e</email></contact>" +
                "<contact duid='2'><email>" + wide + "<contact duid='3'/>",
            true, {"1/ photo=\u2026 email=e", "2!its element \"email\" is too large", "3/ map"});
        QByteArray attributes;
        for (char i = 0; i < 32; ++i)
            attributes += " a" + QByteArray::number(i) + "='>'";
        const QByteArray large = "<contact" + attributes + "><x>" + QByteArray(3500, 'x') + "</x></contact>";
        row("as deep, wide and large as may be, and a file beyond that",
            QByteArray("<x>").repeated(31) + QByteArray("</x>").repeated(31) + large.repeated(9), true,
            QStringList(9, "/ map"));
    }

    void contactsAreReadOneByOne()
    {
        const auto [content, withElements, lines] = currentRow<QByteArray, bool, QStringList>();
        QCOMPARE(readAll(file("\xef\xbb\xbf<?xml version='1.0' encoding='utf-8'?>" + inRoot(content)), withElements),
                 lines);
    }

    void hostileFilesAreRefused_data()
    {
        const Rows<QByteArray, QString> row;
        const QByteArray contact = "<contact duid='1'>";
        const char *doctype = "document type declaration";
        row("entities in entities",
            "<!DOCTYPE d [<!ENTITY a 'x'><!ENTITY b '&a;&a;'>]>" + inRoot("<contact><email>&b;</email></contact>"),
            doctype);
        row("external entity", "<!DOCTYPE d [<!ENTITY a SYSTEM 'file:///etc/passwd'>]>" + inRoot("&a;"), doctype);
        row("undeclared entity", inRoot("<contact><email>&a;</email></contact>"), "Entity 'a' not declared");
        row("endless nesting", inRoot(QByteArray("<a>").repeated(32)), "more than 32 elements");
        row("text without end", inRoot(contact + "<email>" + QByteArray(20000, '\n')), "larger than 4096 bytes");
        row("comment without end", inRoot("<!--" + QByteArray(20000, 'x')), "larger than 4096 bytes");
        row("a text in many pieces", inRoot(contact + "<x>" + QByteArray("a<!---->").repeated(3000)),
            "larger than 4096");
        row("many attributes", inRoot("<contact " + QByteArray("a='\">' ").repeated(33)), "more than 32 attributes");
        for (const char *piece : {"<x/>", "<?a b?>", "<!---->", "\n"})
            row(QByteArray("between contacts, without end: ") + piece, inRoot(QByteArray(piece).repeated(20000)),
                "larger than 4096 bytes");
        row("many elements", inRoot(contact + QByteArray("<x/>").repeated(5000) + "</contact>"), "larger than 4096");
        row("bad UTF-8", inRoot("<contact><email>\xc3(</email></contact>"), "incorrectly encoded");
        row("UTF-16", QByteArray("\xff\xfe<\0d\0", 6), "not UTF-8");
        row("other encoding", "<?xml version='1.0' encoding='ISO-8859-1'?>" + inRoot({}), "not UTF-8");
        row("NUL behind the end", inRoot({}) + '\0', "not UTF-8");
        row("control character", inRoot("<contact><email>&#1;</email></contact>"), "line 1, column");
        row("cut off", "<directory><page>\n<contact duid='1'>", "line 2, column 18: Premature end");
        row("mismatch", "<directory></page>", "mismatch");
        row("two roots", inRoot({}) + inRoot({}), "Extra content");
        row("wrong root", "<contact duid='1'/>", "the root element is \"contact\" and not \"directory\"");
        row("empty", "", "Premature end");
        row("a declaration behind the end", inRoot({}) + QByteArray("<!-- -->").repeated(400) + "<!DOCTYPE d>",
            doctype);
    }

    void hostileFilesAreRefused()
    {
        const auto [content, reason] = currentRow<QByteArray, QString>();
        const QString path = file(content);
        for (const bool withElements : {true, false}) {
            const QString last = readAll(path, withElements).value(0);
            QVERIFY2(last.startsWith("fatal ") && last.contains(reason), qPrintable(last));
        }
    }

    void charactersThatXmlCannotCarryAreReplaced()
    {
        ImpExp_XMLBuilder writing = builder();
        writing.putItem(contact("1", QString("a\u0001\t\U0001F4DE") + QChar(0xd83d) + QChar(0xfffe) + QChar(0)));
        writing.finish();
        QCOMPARE(QProcess::execute("xmllint", {"--noout", "--schema", KESTIN_SYNC_SCHEMA, target()}), 0);
        ImpExp_XMLParser parser(target());
        ImpExp_Item item("contact");
        QVERIFY(parser.getItem(item, true));
        QCOMPARE(item.getElement("lastName"), "a\ufffd\t\U0001F4DE\ufffd\ufffd\ufffd");
        QCOMPARE(item.getAttribute("replaced"), "lastName");
    }

    void aContactThatXmlCannotCarryIsLeftOut()
    {
        const QStringList texts{"a\u0001",
                                QChar(0),
                                QString("a") + QChar(0xd83d),
                                QChar(0xdcde) + QString("a"),
                                QChar(0xfffe),
                                QString(17 << 20, 'x')};
        ImpExp_XMLBuilder writing = builder();
        for (const QString &text : texts) {
            QVERIFY_EXCEPTION_THROWN(writing.putItem(contact(text, "x")), ImpExp_ErrorException);
            QVERIFY_EXCEPTION_THROWN(writing.putItem(ContactMap_Item("1", text)), ImpExp_ErrorException);
            QVERIFY_EXCEPTION_THROWN(builder(0, text), ImpExp_FatalException);
        }
        writing.putItem(ContactMap_Item("2", "p"));
        writing.finish();
        QCOMPARE(readAll(target(), true), QStringList{"2/p map"});
    }

    void aFileThatCannotBeWrittenLeavesTheTarget()
    {
        const QString missing = m_folder.filePath("missing/file.xml");
        const QString database = file("SQLite format 3");
        for (const QString &path : QStringList{missing, m_folder.path(), "/dev/full", database})
            QVERIFY_EXCEPTION_THROWN(ImpExp_XMLBuilder({}, {}, path, 0, {}, 0, 0, {}, {}), ImpExp_FatalException);
        QFile::remove(target());
        QVERIFY(QFile::rename(file("\xef\xbb\xbf \n<earlier"), target()));
        builder().putItem(ContactMap_Item("1", "p"));
        signal(SIGXFSZ, SIG_IGN);
        const rlimit small{10000, RLIM_INFINITY};
        const rlimit any{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &small); // as good as a full disk
        QVERIFY_EXCEPTION_THROWN(builder().putItem(contact("1", QString(50000, 'x'))), ImpExp_FatalException);
        setrlimit(RLIMIT_FSIZE, &any);
        isDiskBroken = true;
        QVERIFY_EXCEPTION_THROWN(builder().finish(), ImpExp_FatalException);
        isDiskBroken = false;
        QVERIFY(contentOf(target()).endsWith("<earlier"));
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"target.xml"});
    }

    void whatIsNoFileIsNotRead()
    {
        for (const QString &path : QStringList{m_folder.path(), "/dev/zero", m_folder.filePath("missing.xml")})
            QVERIFY(readAll(path, false).value(0).startsWith("fatal " + path + " cannot be read: "));
    }

private:
    QString file(const QByteArray &content) { return writeFile(m_folder.filePath("file.xml"), content); }
    QString target() const { return m_folder.filePath("target.xml"); }
    ImpExp_XMLBuilder builder(int pageSize = 0, const QString &id = {}) const
    {
        return {"device", id, target(), pageSize, {}, 3, 97, "KestinDirectory", QDateTime()};
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(ImpExpTest)
#include "ImpExpTest.moc"
