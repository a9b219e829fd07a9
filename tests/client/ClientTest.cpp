// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientFixture.h"

#include <csignal>
#include <sys/stat.h>

namespace {

QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\nVERSION:3.0\n" + lines + "\nEND:VCARD\n";
}

const QByteArray gif = "GIF89a\x05\x01\x07\x01;\xff";

QByteArray cardWithPhoto(const QByteArray &lines)
{
    return card(lines + "\nPHOTO;ENCODING=b:" + gif.toBase64());
}

/// The id of the new contact, or why there is none.
QString add(const QString &name, const QString &options = {}, const QStringList &more = {})
{
    const Outcome outcome = client("add " + options, QStringList{"--last-name", name} + more);
    return outcome.code == 0 ? outcome.out.trimmed() : outcome.error;
}

} // namespace

/// The client as its user runs it, against the real service and its peers on a bus of their own.
class ClientTest : public ClientFixture
{
    Q_OBJECT

private Q_SLOTS:
    void mistakesAreTold_data()
    {
        const Rows<int, QString> row;
        row("", 2, "no command is given");
        row("frobnicate", 2, "there is no command \"frobnicate\"");
        row("lsit", 2, "did you mean list? ");
        row("list --nonsense", 2, "Unknown option 'nonsense'");
        row("list --lenght 1", 2, "did you mean --length?");
        row("list --start -1", 2, "--start takes a whole number from 0 on");
        row("list --sort age", 2, "--sort takes name, first-name,");
        row("list --columns id,age", 2, "misc.KEY; not \"id,age\"");
        row("list nobody", 1, "no contact of the phone has \"nobody\"");
        row("list --type friend", 2, "--type takes local, cached, dm, manager or a number");
        row("show", 2, "quote an id");
        row("add --office 1", 2, "--first-name or --last-name is missing");
        row("add --last-name x --misc y", 2, "--misc takes KEY=VALUE");
        row("edit a", 2, "no field to change");
        row("settings set a", 2, "takes a KEY and a VALUE");
        row("preview burn", 2, "list, add or remove is taken, not \"burn\"");
        row("show #CONTACT_9#", 1, "no contact has the id #CONTACT_9#");
        row("remove #CONTACT_9#", 1, "no contact has the id");
        row("preview add #CONTACT_9#", 1, "no contact has the id");
        row("add --last-name x --office anonymous", 1, "\"anonymous\" is not accepted");
        row("who 12345", 1, "nobody on the phone has the number 12345; no company directory is running");
        row("search a --number 1", 2, "a TEXT or a --number, not both");
        row("search --number", 2, "--number");
        row("search a --limit 0", 2, "--limit takes a whole number from 1 on");
        row("search nobody", 1, "nobody on the phone is found by the name \"nobody\"; no company directory");
        row("search --number 12345 --local", 1, "nobody on the phone has the number 12345\n");
        row("show uid=bea##", 3, "the company directory cannot be reached");
        row("copy uid=bea##", 3, "the company directory cannot be reached");
        row("settings get DirMaxContcat", 1, "no setting is called DirMaxContcat; did you mean DirMaxContact?");
        row("settings set NoSuchSetting 1", 1, "settings set --force writes it all the same");
        row("settings reset NoSuchSetting", 1, "no setting is called NoSuchSetting");
        row("settings list nosuch", 1, "no setting is called nosuch");
        row("settings set DirMaxContact many", 1, "DirMaxContact is not changed");
        row("import /no/such/file.vcf", 4, "cannot be read: No such file");
        row("import /dev/zero", 4, "it is not a regular file");
        row("import /etc/passwd", 4, "holds no vCard (jCard");
        row("export /no/such/folder/a.vcf", 4, "cannot be written");
        row("photo #CONTACT_9# /etc/passwd", 4, "is no JPEG, PNG or GIF");
        row("photo #CONTACT_9# /a --wait", 2, "--wait is for an ADDRESS");
        row("sync burn a", 2, "takes export or import");
        row("sync export a --since yesterday", 2, "--since takes a date like");
        row("defaults sat", 2, "show or set is taken, not \"sat\"; did you mean set?");
    }

    void mistakesAreTold()
    {
        const auto [code, text] = currentRow<int, QString>();
        const Outcome outcome = client(QTest::currentDataTag());
        QVERIFY(outcome.ended(code, text));
        QVERIFY(outcome.error.startsWith("kestin-dir: "));
        QCOMPARE(outcome.error.count('\n'), 1);
        const QString json = client(QString::fromUtf8(QTest::currentDataTag()) + " --json").error;
        QCOMPARE(QJsonDocument::fromJson(json.toUtf8())["problem"].toString().isEmpty(), false);
    }

    void absentServicesAreTold()
    {
        m_phone->directory.kill();
        QVERIFY(client("list").ended(3, "kestin-dir: KestinDirectory is not running on this message bus\n"));
        const Outcome import = client("import -", card("N:One") + card("N:Two"));
        QVERIFY(import.code == 3 && import.out.startsWith("created 0, refused 0"));
        qputenv("KESTIN_BUS", "unix:path=/no/such/bus");
        QVERIFY(client("watch").ended(3, "\"unix:path=/no/such/bus\" cannot be reached"));
    }

    void aSilentServiceIsNotWaitedForEver()
    {
        m_phone->directory.freeze();
        QVERIFY(client("list --timeout 1").ended(5, "KestinDirectory gave no answer in time"));
        const Outcome import = client("import - --timeout 1 --duplicates add", card("N:One").repeated(100));
        QVERIFY(import.ended(5, "it may have been created"));
        QVERIFY(import.out.startsWith("created 0, refused 64")); // what was in flight is all that was tried
    }

    void helpTeachesEveryCommand()
    {
        const Outcome program = client("--help");
        QVERIFY(program.code == 0 && program.out.contains("KESTIN_BUS"));
        const QString commands =
            "list show add edit remove who search copy preview import watch settings photo export sync defaults";
        for (const QString &command : commands.split(' ')) {
            QVERIFY2(program.out.contains("\n  " + command + ' '), qPrintable(command));
            const Outcome help = client(command + " --help");
            QVERIFY(help.code == 0 && help.out.startsWith("Usage: kestin-dir " + command));
            QVERIFY(help.out.contains("Examples:\n  "));
        }
        QCOMPARE(client("help list").out, client("list --help").out);
        QCOMPARE(client("help help").out, program.out);
        const QString narrow = onTerminal("stty rows 24 cols 60; kestin-dir help list", {}).remove('\r');
        QCOMPARE(narrow.simplified(), client("help list").out.simplified());
        for (const QString &line : narrow.split('\n'))
            QVERIFY2(line.size() <= 60 || line.startsWith("  kestin-dir "), qPrintable(line));
        QCOMPARE(client("-V").out, "kestin-dir " KESTIN_VERSION "\n");
    }

    void contactLivesFromAddToRemove()
    {
        const QString id = add("Müller", "--first-name Zoë --office 7000 --city Paris --misc floor=2 --private");
        QCOMPARE(id, "#CONTACT_1#");
        const QString shown = client("show", {id}).out;
        for (const char *line : {"firstName: Zoë\n", "name: Müller\n", "officePhone: 7000\n", "misc.city: Paris\n",
                                 "misc.floor: 2\n", "isPrivate: yes\n", "type: local\n"})
            QVERIFY2(shown.contains(line), qPrintable(line + (" in " + shown)));
        QVERIFY(!shown.contains("fax"));

        QCOMPARE(client("edit --mobile 06 --misc floor= --not-private", {id, "--office", ""}).code, 0);
        const QJsonObject changed = client("show --json", {id}).json().object();
        QCOMPARE(changed["name"].toString() + changed["personalMobile"].toString(), "Müller06");
        QCOMPARE(changed["officePhone"].toString(), "");
        QCOMPARE(changed["misc"].toObject(), QJsonObject({{"city", "Paris"}}));
        QCOMPARE(changed["isPrivate"], QJsonValue(false));

        const QString other = add("Other", "--home anonymous"); // its canonical form tells
        QVERIFY(client("edit --home 1", {other}).error.contains("\"anonymous\" is not accepted"));
        const Outcome removal = client("remove", {id, "nobody", other});
        QVERIFY(removal.code == 1 && removal.error == "kestin-dir: no contact has the id nobody\n");
        QCOMPARE(names(), "");
    }

    void aTerminalIsAskedBeforeARemoval()
    {
        const QString id = add("Müller");
        QVERIFY(onTerminal("kestin-dir remove '" + id + '\'', "n\n").contains("Remove Müller (#CONTACT_1#)? [y/N]"));
        write("a.xml", "<directory><contact duid='" + add("Kept").toUtf8() + "'/></directory>");
        QVERIFY(onTerminal("kestin-dir sync import " + path("a.xml"), "n\n").contains("Remove them? [y/N]"));
        QCOMPARE(names(), "Kept Müller");
        QVERIFY(
            onTerminal("kestin-dir remove --json '" + id + '\'', "y\n").contains("{\"refused\":[],\"removed\":[\"#"));
        QVERIFY(!onTerminal("kestin-dir remove --yes '" + add("Abel") + '\'', "").contains('?'));
        QCOMPARE(names(), "Kept");
        QVERIFY(onTerminal("kestin-dir defaults set --none", "").contains("away? [y/N]"));
    }

    void listsByKindAndPiece()
    {
        for (const char *name : {"Delta", "Alpha", "Charlie", "Bravo"})
            QVERIFY(add(name).startsWith('#'));
        QCOMPARE(names(), "Alpha Bravo Charlie Delta");
        QCOMPARE(client("list --json --type local").names().join(' '), names());
        QCOMPARE(client("list --json --type cached").names(), QStringList());
        QCOMPARE(client("list --json --start 1 --length 2").names().join(' '), "Alpha Charlie");
        QCOMPARE(add("Zoë", "--office +33155667000 --company Abbey"), "#CONTACT_5#");
        for (const char *text : {"ZOE", "abb", "55-66", "33 1 556", "TACT_5#"})
            QCOMPARE(client("list --json", QStringList(text)).names(), QStringList("Zoë"));
        QVERIFY(client("list zoe alpha").ended(1, "has \"zoe\" and \"alpha\""));
        QCOMPARE(client("list --json --sort id --length 2").names().join(' '), "Delta Alpha");
        QCOMPARE(client("list --json --sort company").names().join(' '), "Zoë Alpha Bravo Charlie Delta");
        const QStringList lines = client("list").out.split('\n');
        QCOMPARE(lines.at(0), "ID           NAME     OFFICE        TYPE");
        QCOMPARE(lines.at(1), "#CONTACT_2#  Alpha                  local");
        QCOMPARE(client("list zoe --columns company,misc.company,fax").out, "COMPANY  COMPANY  FAX\nAbbey    Abbey\n");
    }

    void whoUnderstandsEverySpelling()
    {
        QCOMPARE(client("settings set DialingRuleCountryCode 33").code, 0);
        add("Müller", "--first-name Zoë", {"--mobile", "+33 6 12 34 56 78"});
        for (const char *spelling : {"+33612345678", "06 12 34 56 78", "0033-612345678"})
            QCOMPARE(client("who", QStringList(spelling)).out, "Zoë Müller, mobile +33612345678\n");
        add("Abel", "--home 0612345678 --fax 0612345678");
        const QString both = "Abel, home 0612345678, fax 0612345678\nZoë Müller, mobile +33612345678\n";
        const Outcome found = client("who 0612345678 --json");
        QCOMPARE(found.names(), QStringList({"Abel", "Müller"}));
        QCOMPARE(found.json()[1][u"matchedFields"].toArray(), QJsonArray{"personalMobile"});
        const Outcome explained = client("who --explain 00612345678");
        QCOMPARE(explained.out,
                 "number     00612345678\ndialled    00612345678\n"
                 "rules      country code 33, no area code, outside line 0, an extension has fewer than 6 digits\n"
                 "canonical  +33612345678: the outside line 0 is taken off, then a national number: its 0 gives way to "
                 "+33\nphone      Abel (#CONTACT_2#), home 0612345678, fax 0612345678\n"
                 "phone      Zoë Müller (#CONTACT_1#), mobile +33612345678\n");
        const Outcome near = client("who --explain +44612345678");
        QVERIFY(near.ended(1, "nobody on the phone has the number +44612345678"));
        QVERIFY(near.out.endsWith("near       Zoë Müller (#CONTACT_1#), mobile +33612345678, another number: its "
                                  "canonical form is +33612345678\n"));
        m_phone->telephony.kill();
        const Outcome asItStands = client("who +33612345678");
        QCOMPARE(asItStands.out, both);
        QVERIFY(asItStands.ended(0, "looked for as it stands: Telephony is not running"));
        QVERIFY(client("who 0612345678").ended(3, "; it was looked for as it stands: Telephony is not running"));
    }

    void searchFindsContactsOfThePhone()
    {
        for (const char *name : {"Marlow", "Abel", "Mara", "Márquez"})
            add(name, "--office +3319900000" + QString::number(qstrlen(name)));
        const Outcome found = client("search MAR --json");
        QCOMPARE(found.code, 0);
        QCOMPARE(found.names(), QStringList({"Mara", "Marlow"}));
        QCOMPARE(found.json()[0][u"contactId"].toString(), "#CONTACT_3#");
        QCOMPARE(found.json()[0][u"company"], QJsonValue(false));
        QCOMPARE(client("search --json --number", QStringList("+33 (1) 99-00-00-06")).names(), QStringList("Marlow"));
        QCOMPARE(client("search x --json").json().array(), QJsonArray());
        const Outcome cut = client("search mar --limit 1");
        QCOMPARE(cut.out, "NAME  OFFICE        FROM   ID\nMara  +33199000004  phone  #CONTACT_3#\n");
        QCOMPARE(cut.error, "kestin-dir: there are more than 1; --limit says how many are printed\n");

        // On a terminal the rows that came are taken away for the final table.
        const QStringList shown = onTerminal("stty rows 9 cols 44; kestin-dir search mar", {}).split("A\x1b[J");
        QCOMPARE(shown.size(), 3);
        QVERIFY2(shown[1].contains("#CONTACT_3#\r\n") && shown[1].endsWith("Ctrl-C ends\r\n\r\x1b[4"),
                 qPrintable(shown[1]));
        QCOMPARE(shown.at(2).count("\r\n"), 3);
    }

    void companyDirectoryIsSearchedAndCopied()
    {
        const QStringList number("+33 199 000 001");
        add("Marten");
        startCompany();
        QCOMPARE(client("who", number).out, "Bea Marlow, office +33 1 99 00 00 01 (company directory)\n"
                                            "Max Marlow, mobile +33 1 99 00 00 01 (company directory)\n");
        QCOMPARE(client("who --local", number).code, 1);
        const Outcome found = client("search mar --json");
        QCOMPARE(found.names(), QStringList({"Marten", "Marlow", "Marlow"}));
        QCOMPARE(found.json()[1][u"company"], QJsonValue(true));
        QCOMPARE(client("search mar --json --local").names(), QStringList("Marten"));
        QCOMPARE(client("search --json", QStringList("")).names(), QStringList("Marten"));
        const Outcome shown = client("show", {found.json()[1][u"contactId"].toString(), "uid=nobody##", "#CONTACT_1#"});
        QVERIFY(shown.ended(1, "no contact has the id uid=nobody##"));
        QVERIFY(shown.out.contains("\nname: Marlow\n") && shown.out.contains("\n\ncontactId: #CONTACT_1#\n"));
        QCOMPARE(client("list --json").names(), QStringList("Marten"));

        QCOMPARE(client("copy", {found.json()[1][u"contactId"].toString()}).out, "#CONTACT_2#\n");
        QCOMPARE(client("who", number).out, "Bea Marlow, office +33199000001\n");
        QVERIFY(client("copy uid=nobody##").ended(1, "gave no contact with the id uid=nobody##"));
    }

    void searchEndsInOrderBeforeItsTime()
    {
        add("Marten");
        startCompany({"--delay", "7000"});
        Program search("kestin-dir", {"search", "mar", "--json"});
        search.start();
        QVERIFY(m_phone->directory.waitForErrorOutput("1 local results sent"));
        ::kill(pid_t(search.processId()), SIGINT);
        QVERIFY(search.waitForErrorOutput("{\"exitCode\":1,\"problem\":\"interrupted\"}\n"));
        QVERIFY(m_phone->directory.waitForErrorOutput("Method purgeSearchResults called with searchId=[kestin-dir-"));
        QVERIFY2(search.output().contains("Marten"), "what had come is printed");
        QCOMPARE(client("who 12345 --timeout 1").code, 5);
        QVERIFY(client("search mar --timeout 1").ended(5, "did not end within the limit"));
        Program who("kestin-dir", {"who", "54321"});
        who.start();
        QVERIFY(m_phone->directory.waitForErrorOutput("phoneNumber=[54321]"));
        m_phone->company.kill();
        QCOMPARE(who.waitForEnd(), 3);
        QVERIFY(who.errorOutput().contains("phone has the number 54321; the company directory ended before it had"));
    }

    void previewListChanges()
    {
        const QStringList id(add("Müller"));
        QCOMPARE(client("preview add --json", id).json()["added"].toArray(), QJsonArray{id.first()});
        QCOMPARE(client("preview --json").names(), QStringList("Müller"));
        QVERIFY(client("preview add", id).ended(1, "is in the preview list already"));
        QCOMPARE(client("preview remove", id).code, 0);
        QCOMPARE(client("preview list --json").names(), QStringList());
        QVERIFY(client("preview remove", id).ended(1, "is not in the preview list"));
    }

    void hostileNamesAreEscaped()
    {
        const QString name = "\x1b]0;x\x07\u202e\nb";
        const QString id = add(name, "--misc k\x1b=v\x1b");
        for (const QString &line : {QString("list"), "show " + id, QString("list --json")}) {
            const Outcome outcome = client(line);
            QVERIFY(outcome.code == 0 && !outcome.out.contains('\x1b') && !outcome.out.contains(u'\u202e'));
        }
        QCOMPARE(client("list --json").names(), QStringList(name));
    }

    void importTellsWhatItRefused()
    {
        QByteArray cards;
        for (int number = 1; number <= 50; ++number)
            cards +=
                card("N:Name" + QByteArray::number(number) + ";First\nTEL;TYPE=WORK:70" + QByteArray::number(number));
        write("people.vcf", cards + card("N:Nobody\nTEL;TYPE=WORK:anonymous") + card("TEL:1") + card("N:Last") +
                                "BEGIN:VCARD\nN:Cut");
        const Outcome outcome = client("import --json", {path("people.vcf")});
        QVERIFY(outcome.ended(1, "people.vcf: card 51 (Nobody): a contact whose"));
        QCOMPARE(outcome.json()["created"].toInt(), 51);
        QStringList reasons;
        for (const QJsonValue &refused : outcome.json()["refused"].toArray()) {
            QCOMPARE(refused["file"].toString(), path("people.vcf"));
            reasons.append(QString::number(refused["card"].toInt()) + ' ' + refused["name"].toString() + ": " +
                           refused["reason"].toString());
        }
        reasons.sort();
        QCOMPARE(reasons, (QStringList{"51 Nobody: a contact whose number is \"anonymous\" is not accepted",
                                       "52 : holds no name", "54 : has no END:VCARD"}));
        QVERIFY(!outcome.error.contains('\r')); // no bar is drawn into a pipe
        QCOMPARE(client("list --json").names().size(), 51);
    }

    void importTellsWhatItCouldNotKeep()
    {
        QByteArray numbers = "\nKEY:a\nX-A:b\nKEY:c\nPHOTO:d\nREV:e";
        for (int number = 1; number <= 6; ++number)
            numbers += "\nTEL:4" + QByteArray::number(number);
        const Outcome outcome = client("import - --json", card("N:X" + numbers));
        QVERIFY(outcome.ended(0, "-: card 1 (X): no call finds 46"));
        QCOMPARE(outcome.json()["leftOut"].toObject(), QJsonObject({{"KEY", 2}, {"X-A", 1}, {"PHOTO", 1}}));
        QCOMPARE(outcome.json()["unreachable"].toArray().size(), 1);
        QCOMPARE(client("who 45").code, 0);
    }

    void oneThatIsRefusedCostsNoOtherOfItsList()
    {
        write("a.vcf", card("N:A") + card("N:B\nNOTE:" + QByteArray(70000, 'x')) + card("N:C"));
        QProcess::execute("mkfifo", {path("pipe")});
        QProcess pipe;
        pipe.start("sh", {"-c", "printf 'BEGIN:VCARD\\nN:B\\nEND:VCARD\\n' >" + path("pipe")});
        const Outcome outcome = client("import", {path("a.vcf"), path("pipe")});
        QVERIFY(outcome.ended(1, "is longer than 64 KiB") && outcome.out.startsWith("created 3, refused 1, "));
        QCOMPARE(names(), "A B C");
        pipe.waitForFinished();
    }

    void anInterruptedImportTellsWhatItDid()
    {
        QByteArray cards;
        for (int number = 0; number < 900; ++number)
            cards += card("N:Name" + QByteArray::number(number));
        write("people.vcf", cards);
        Program import("kestin-dir", {"import", "--json", path("people.vcf")});
        import.start();
        QVERIFY(m_phone->directory.waitForErrorOutput("createLocalContacts called"));
        ::kill(pid_t(import.processId()), SIGINT);
        QVERIFY(import.waitForErrorOutput("stopped before the end: interrupted"));
        QTRY_VERIFY_WITH_TIMEOUT(!import.isRunning(), Program::limitMs);
        const int created = QJsonDocument::fromJson(import.output().toUtf8())["created"].toInt();
        QCOMPARE(client("list --json").names().size(), created);
        QVERIFY(created < 900);
    }

    void importStopsAtAFullDirectory()
    {
        QCOMPARE(client("settings set DirMaxContact 3").code, 0);
        m_phone->directory.kill();
        QVERIFY(m_phone->startDirectory());
        const Outcome outcome = client("import - --duplicates add", card("N:Name").repeated(500));
        QVERIFY(outcome.ended(1, "kestin-dir: stopped before the end: the directory is full: remove contacts or raise "
                                 "the setting DirMaxContact\n"));
        QVERIFY(outcome.out.startsWith("created 3, ") && outcome.error.count('\n') < 20);
        QVERIFY2(QRegularExpression(", [1-9][0-9]* not tried, ").match(outcome.out).hasMatch(),
                 qPrintable(outcome.out));
        QCOMPARE(names(), "Name Name Name");
    }

    void importFindsWhoIsThere()
    {
        const QByteArray zoe = card("N:Müller;Zoë\nTEL:+33 (0)3 88 12 34 56\nUID:urn:uuid:A1\nTITLE:Chief");
        const QByteArray cards = zoe + card("N:Mum") + card("N:Bob\nEMAIL:b@x");
        const auto counts = [](const QString &options, const QByteArray &text) {
            const QJsonDocument report = client("import - --json " + options, text).json();
            return QStringList{QString::number(report["created"].toInt()), QString::number(report["updated"].toInt()),
                               QString::number(report["skipped"].toInt())}
                .join(' ');
        };
        QCOMPARE(counts("--dry-run", cards), "3 0 0");
        QCOMPARE(names(), "");
        QCOMPARE(counts("", cards + cards), "3 0 3");
        QCOMPARE(counts("", cards + card("N:Mum\nTEL:1")), "1 0 3");
        const QByteArray renamed = card("N:Marlow;Zoë\nUID:a1\nTEL;CELL:06");
        const QByteArray respelled = card("N:müller;zoë\nTEL;TYPE=HOME:0388123456\nNOTE:new");
        QCOMPARE(counts("", renamed + respelled), "0 0 2");
        QCOMPARE(counts("--duplicates update --dry-run", renamed + zoe), "0 1 1");
        QCOMPARE(counts("--duplicates update", respelled + renamed), "0 2 0");
        const QJsonObject updated = client("show #CONTACT_1# --json").json().object();
        QCOMPARE(updated["name"].toString() + updated["personalMobile"].toString(), "Marlow06");
        QCOMPARE(updated["misc"]["job"].toString() + updated["misc"]["note"].toString(), "Chiefnew");
        QCOMPARE(counts("--duplicates add", zoe), "1 0 0");
    }

    void photosArePutWhereTheDirectoryKeepsThem()
    {
        const QString id = add("Müller");
        write("zoe.gif", gif);
        const Outcome outcome = client("photo", {id, path("zoe.gif")});
        const QString photo = client("show --json", {id}).value("photo");
        QCOMPARE(outcome.out, photo + " (261 x 263 pixels, 12 bytes)\n");
        QVERIFY2(photo.startsWith(photos() + "photo_"), qPrintable(photo));
        QCOMPARE(contentOf(photo), gif);

        QCOMPARE(client("photo #CONTACT_9#", {path("zoe.gif")}).code, 1);
        QCOMPARE(photoFiles().size(), 1);
        QCOMPARE(client("photo", {id, "https://photos.invalid/z.png"}).out, "https://photos.invalid/z.png\n");
        QVERIFY(client("photo --wait", {id, "http://127.1/z.png"})
                    .ended(1, "phone itself (127.0.0.1); nothing is changed"));
        QCOMPARE(client("show --json", {id}).value("photo"), "https://photos.invalid/z.png");
        QCOMPARE(client("photo --none", {id}).error, "");
        QCOMPARE(client("show --json", {id}).value("photo"), "");
    }

    void aPhotoThatCannotBeKeptKeepsNoContactAway()
    {
        QCOMPARE(client("import -", cardWithPhoto("N:Refused\nTEL;TYPE=CELL:anonymous")).code, 1);
        QCOMPARE(photoFiles(), QStringList());
        const auto importLosesPhoto = [](const QByteArray &text, const QString &reason) {
            const Outcome outcome = client("import -", text);
            QVERIFY(outcome.ended(0, reason));
            QVERIFY2(outcome.out.startsWith("created 1, refused 0, 1 without their photo"), qPrintable(outcome.out));
        };
        importLosesPhoto(card("N:A\nPHOTO;ENCODING=b:AAAA"), "(A): the photo is left out: it is no JPEG");
        const qint64 almostFull = 1024 * 1024 - gif.size() + 1;
        write("KestinDirectory/photos/UserPhoto", QByteArray(almostFull, 'x'));
        QCOMPARE(client("settings set FileDiskUserQuota 1").code, 0);
        importLosesPhoto(cardWithPhoto("N:B"), "the photos may take 1 MiB");
        QVERIFY(QFile::resize(photos() + "UserPhoto", almostFull - 1));
        QCOMPARE(client("import -", cardWithPhoto("N:C")).error, "");
        QVERIFY(QDir(photos()).removeRecursively());
        importLosesPhoto(cardWithPhoto("N:D"), "cannot be written");
        QCOMPARE(names(), "A B C D");
    }

    void exportIsTakenBackByImport()
    {
        add("Müller", "--melody bell --assistant Bea --private", {"--misc", " k;= v\t"});
        const Outcome import = client("import -", cardWithPhoto("N:Photo\nTEL;TYPE=CELL:06"));
        QVERIFY2(import.code == 0 && import.out.startsWith("created 1, refused 0, "), qPrintable(import.error));
        const QString file = path("all.vcf");
        QCOMPARE(client("export", {file}).out, "exported 2 contacts to " + file + '\n');
        QCOMPARE(client("export -").out.toUtf8(), contentOf(file));

        QCOMPARE(::mkfifo(qPrintable(path("pipe")), 0600), 0);
        QProcess reader;
        reader.start("cat", {path("pipe")});
        QCOMPARE(client("export", {path("pipe")}).code, 0);
        QVERIFY(QFileInfo(path("pipe")).exists() && !QFileInfo(path("pipe")).isFile());
        QVERIFY(reader.waitForFinished());
        QCOMPARE(reader.readAllStandardOutput(), contentOf(file));

        const auto contacts = [] {
            QList<QVariantMap> all;
            for (const QJsonValue &value : client("list --json").json().array()) {
                QVariantMap contact = value.toObject().toVariantMap();
                contact["photo"] = contentOf(contact["photo"].toString());
                contact.remove("contactId");
                contact.remove("lastModificationDate");
                all.append(contact);
            }
            return all;
        };
        const QList<QVariantMap> before = contacts();
        QCOMPARE(before.last().value("photo"), gif);
        QCOMPARE(client("remove #CONTACT_1# #CONTACT_2#").code, 0);
        QCOMPARE(client("import", {file}).code, 0);
        QCOMPARE(contacts(), before);
    }

    void watchPrintsEvents()
    {
        Program counted("kestin-dir", {"watch", "--count", "2", "--json"});
        Program endless("kestin-dir", {"watch"});
        for (Program *watch : {&counted, &endless}) {
            watch->start();
            QVERIFY(watch->waitForErrorOutput("watching; Ctrl-C ends"));
        }
        const QString id = add("Müller");
        QCOMPARE(client("remove", {id}).code, 0);
        QTRY_VERIFY_WITH_TIMEOUT(!counted.isRunning(), Program::limitMs);
        QCOMPARE(counted.errorOutput(), "{\"note\":\"watching; Ctrl-C ends\"}\n");
        const QStringList lines = counted.output().split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        const QJsonDocument created = QJsonDocument::fromJson(lines.at(0).toUtf8());
        QCOMPARE(created["event"].toString(), "DIR_CONTACTS_CREATED");
        QCOMPARE(created["arguments"]["contacts"][0]["name"].toString(), "Müller");
        const QJsonDocument deleted = QJsonDocument::fromJson(lines.at(1).toUtf8());
        QCOMPARE(deleted["arguments"]["contactIds"].toArray(), QJsonArray{id});
        QTRY_VERIFY_WITH_TIMEOUT(endless.output().contains("contactIds=[" + id + ']'), Program::limitMs);
        QVERIFY(endless.output().contains("contacts=[" + id + " Müller]"));
        QCOMPARE(endless.terminate(), 0);
    }

    void settingsAreReadAndChanged()
    {
        QCOMPARE(client("settings set DirMaxContact 250").code, 0);
        QCOMPARE(client("settings get DirMaxContact").out, "250\n");
        const QString listed = client("settings list --json").out;
        QVERIFY(listed.contains("\"DirMaxContact\"") && listed.contains("\"defaultValue\":\"1000\""));
        QCOMPARE(client("settings list maxcontact").out,
                 "DirMaxContact = 250\n    How many contacts the user may create\n"
                 "    0 to 100000 contacts; default 1000\n");
        QCOMPARE(client("settings reset DirMaxContact --json").value("value"), "1000");
        QCOMPARE(client("settings set Own value --force").code, 0);
        QCOMPARE(client("settings get Own").out, "value\n");
    }

    void completionOffersWhatCanStandThere_data()
    {
        const Rows<QString, QString> row; // the last word is being completed
        row("commands", "s", "show search sync settings");
        row("help", "help rem", "remove");
        row("options", "list --t", "--type --timeout");
        row("kinds", "list --type c", "cached");
        row("columns", "list --columns id,h", "id,home");
        row("ids", "show --json #", "#CONTACT_2# #CONTACT_1#");
        row("ids of the preview list", "preview remove ", "#CONTACT_1#");
        row("a second id", "remove #CONTACT_1# #CONTACT_2", "#CONTACT_2#");
        row("no second id", "edit #CONTACT_1# ", "");
        row("keys", "settings reset DirMaxC", "DirMaxContact");
        row("actions", "sync e", "export");
        row("files", "photo #CONTACT_1# a", ":files");
        row("nothing known", "add --office ", "");
    }

    void completionOffersWhatCanStandThere()
    {
        const auto [typed, offered] = currentRow<QString, QString>();
        add("Müller");
        add("Abel");
        QCOMPARE(client("preview add #CONTACT_1#").code, 0);
        qputenv("KESTIN_COMPLETION_LIMIT", "20000");
        QStringList texts, lines = client("complete", typed.split(' ')).out.split('\n', Qt::SkipEmptyParts);
        for (const QString &line : lines)
            texts.append(line.section('\t', 0, 0));
        QCOMPARE(texts.join(' '), offered);
        QVERIFY(!offered.endsWith("#CONTACT_1#") || lines.join(' ').contains("\tMüller"));
    }

    void shellsCompleteToAnIdThatWorks_data()
    {
        const Rows<QString, QByteArray> row; // the shell, what is typed
        row("bash, no quotes", "bash --noprofile --rcfile .zshrc -i", "#CON\t\r");
        row("bash, single quotes", "bash --noprofile --rcfile .zshrc -i", "'#CON\t\r");
        row("bash, double quotes", "bash --noprofile --rcfile .zshrc -i", "\"#CON\t\r");
        row("zsh, no quotes", "ZDOTDIR=. zsh -d -i", "#CON\t\r");
        row("zsh, single quotes", "ZDOTDIR=. zsh -d -i", "'#CON\t\r");
        row("fish, single quotes", "fish --no-config -C 'source .zshrc' -i", "'#CON\t\r");
    }

    void shellsCompleteToAnIdThatWorks()
    {
        const auto [shell, typed] = currentRow<QString, QByteArray>();
        add("Müller");
        const QString name = shell.section(' ', 0, 0) == "ZDOTDIR=." ? "zsh" : shell.section(' ', 0, 0);
        const QByteArray prompt = name == "fish" ? "function fish_prompt; echo -n READY; end" : "PS1=READY";
        const QByteArray load = name == "zsh" ? "autoload -U compinit; compinit -u -D\n" : "";
        write(".zshrc", load + ". '" KESTIN_COMPLETION + name.toUtf8() + "'\n" + prompt + '\n');
        QProcess terminal;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", QCoreApplication::applicationDirPath() + ':' + qEnvironmentVariable("PATH"));
        environment.insert("KESTIN_COMPLETION_LIMIT", "20000");
        environment.insert("TERM", "xterm");
        terminal.setProcessEnvironment(environment);
        terminal.setWorkingDirectory(m_phone->data.path());
        terminal.start("script", {"-qec", "stty rows 24 cols 80; " + shell, "/dev/null"});
        QByteArray shown;
        const auto shows = [&](const QByteArray &text) {
            return (shown += terminal.readAllStandardOutput()).contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(shows("READY"), Program::limitMs);
        terminal.write("kestin-dir show " + typed);
        QTRY_VERIFY2_WITH_TIMEOUT(shows("name: Müller"), shown.constData(), Program::limitMs);
        terminal.write("exit\r");
        QVERIFY(terminal.waitForFinished(Program::limitMs));
    }

private:
    /// What a shell's command, which may name the client, shows on a terminal with this typed ahead.
    static QString onTerminal(const QString &command, const QByteArray &typed)
    {
        QProcess terminal;
        const QString path = "PATH=" + QCoreApplication::applicationDirPath() + ":$PATH; ";
        terminal.start("script", {"-qec", path + command, "/dev/null"});
        terminal.write(typed);
        terminal.closeWriteChannel();
        return terminal.waitForFinished(Program::limitMs) ? QString::fromUtf8(terminal.readAllStandardOutput()) : "";
    }

    void startCompany(const QStringList &options = {})
    {
        write("company.ldif",
              "dn: uid=bea,dc=example\nobjectClass: inetOrgPerson\nuid: bea\ncn: Bea Marlow\ngivenName: Bea\n"
              "sn: Marlow\ntelephoneNumber: +33 1 99 00 00 01\n\n"
              "dn: uid=max,dc=example\nobjectClass: inetOrgPerson\nuid: max\ncn: Max Marlow\ngivenName: Max\n"
              "sn: Marlow\nmobile: +33 1 99 00 00 01\n");
        m_phone->company.setArguments(QStringList{"--ldif", path("company.ldif")} + options);
        QVERIFY(m_phone->company.startAndWaitForName(ModuleName::webServiceManager, m_phone->client));
        QVERIFY(m_phone->directory.waitForErrorOutput("ICS services availability : 1"));
    }
    QString photos() const { return path("KestinDirectory/photos/"); }
    QStringList photoFiles() const { return QDir(photos()).entryList(QDir::Files | QDir::Hidden); }
};

QTEST_GUILESS_MAIN(ClientTest)
#include "ClientTest.moc"
