// SPDX-License-Identifier: Apache-2.0
#include "platform/records/KestinBus.h"
#include "tests/client/ClientDesk.h"

#include <QDir>
#include <QFile>

#include <csignal>

using namespace Qt::StringLiterals;

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

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.exists() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The client as its user runs it, against the real service and its peers on a bus of their own.
class ClientTest : public ClientDesk
{
    Q_OBJECT

private Q_SLOTS:
    void mistakesAreTold_data();
    void mistakesAreTold();
    void absentServicesAreTold();
    void aSilentServiceIsNotWaitedForEver();
    void helpTeachesEveryCommand();
    void contactLivesFromAddToRemove();
    void listsByKindAndPiece();
    void whoUnderstandsEverySpelling();
    void searchFindsContactsOfThePhone();
    void companyDirectoryIsSearchedAndCopied();
    void searchEndsInOrderBeforeItsTime();
    void previewListChanges();
    void hostileNamesAreEscaped();
    void importTellsWhatItRefused();
    void importStopsAtAFullDirectory();
    void photosArePutWhereTheDirectoryKeepsThem();
    void aPhotoThatCannotBeKeptKeepsNoContactAway();
    void exportIsTakenBackByImport();
    void watchPrintsEvents();
    void settingsAreReadAndChanged();
    void completionOffersCommandsOptionsAndIds_data();
    void completionOffersCommandsOptionsAndIds();

private:
    void startCompany(const QStringList &options = {});
    QString add(const QStringList &fields);
    QStringList photoFiles() { return QDir(m_photos).entryList(QDir::Files | QDir::Hidden); }
    QStringList allNames() { return client({u"list"_s, u"--json"_s}).names(); }
};

void ClientTest::startCompany(const QStringList &options)
{
    write(u"company.ldif"_s,
          "dn: uid=bea,dc=example\nobjectClass: inetOrgPerson\nuid: bea\ncn: Bea Marlow\ngivenName: Bea\n"
          "sn: Marlow\ntelephoneNumber: +33 1 99 00 00 01\n");
    m_company =
        std::make_unique<Program>(u"kestin-wsmanager"_s, QStringList{u"--ldif"_s, path(u"company.ldif"_s)} + options);
    QVERIFY(m_company->startAndWaitForName(ModuleName::webServiceManager, m_bus->connection(u"test"_s)));
    QVERIFY(m_directory->waitForErrorOutput(u"ICS services availability : 1"_s));
}

QString ClientTest::add(const QStringList &fields)
{
    const Outcome outcome = client(QStringList{u"add"_s} + fields);
    return outcome.code == 0 ? outcome.out.trimmed() : outcome.error;
}

void ClientTest::mistakesAreTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *arguments, int code, const char *text) {
        QTest::newRow(arguments) << QString::fromUtf8(arguments).split(u' ', Qt::SkipEmptyParts) << code
                                 << QString::fromUtf8(text);
    };
    row("", 2, "no command is given");
    row("frobnicate", 2, "there is no command \"frobnicate\"");
    row("list --nonsense", 2, "Unknown option 'nonsense'");
    row("list 5", 2, "\"5\" is too much");
    row("list --start -1", 2, "--start takes a whole number from 0 on");
    row("list --type friend", 2, "--type takes local, cached, dm, manager or a number");
    row("show", 2, "quote an id");
    row("show a b", 2, "only one ID");
    row("add --office 1", 2, "--first-name or --last-name is missing");
    row("add --last-name x --misc y", 2, "--misc takes KEY=VALUE");
    row("edit a", 2, "no field to change");
    row("settings set a", 2, "takes a KEY and a VALUE");
    row("preview burn", 2, "takes list, add or remove");
    row("show #CONTACT_9#", 1, "no contact has the id #CONTACT_9#");
    row("edit #CONTACT_9# --home 1", 1, "no contact has the id");
    row("remove #CONTACT_9#", 1, "no contact has the id");
    row("preview add #CONTACT_9#", 1, "no contact has the id");
    row("add --last-name x --office anonymous", 1, "\"anonymous\" is not accepted");
    row("who 12345", 1, "nobody has the number 12345");
    row("search a --number 1", 2, "a TEXT or a --number, not both");
    row("search --number", 2, "--number");
    row("search a --limit 0", 2, "--limit takes a whole number from 1 on");
    row("search nobody", 1, "nobody is found by the name \"nobody\"");
    row("search --number 12345 --local", 1, "nobody has the number 12345");
    row("copy uid=bea##", 3, "the company directory cannot be reached");
    row("settings get NoSuchSetting", 1, "NoSuchSetting");
    row("settings set DirMaxContact many", 1, "DirMaxContact is not changed");
    row("import /no/such/file.vcf", 4, "cannot be read: No such file");
    row("import /dev/zero", 4, "it is not a regular file");
    row("import /etc/passwd", 4, "holds no vCard");
    row("export /no/such/folder/a.vcf", 4, "cannot be written");
    row("photo #CONTACT_9# --none", 1, "no contact has the id #CONTACT_9#");
    row("photo #CONTACT_9# /no/such/file", 4, "cannot be read: No such file");
    row("photo #CONTACT_9# /dev/zero", 4, "it is not a regular file");
    row("photo #CONTACT_9# /etc/passwd", 4, "is no JPEG, PNG or GIF");
    row("photo #CONTACT_9# /a --wait", 2, "--wait is for an ADDRESS");
    row("photo #CONTACT_9# /a --none", 2, "\"/a\" is too much");
    row("sync burn a", 2, "takes export or import");
    row("sync export a --since yesterday", 2, "--since takes a date like");
    row("defaults burn", 2, "takes show or set");
    row("defaults set /dev/zero", 4, "it is not a regular file");
}

void ClientTest::mistakesAreTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    const Outcome outcome = client(arguments);
    QTEST(outcome.code, "code");
    QVERIFY2(outcome.error.contains(text), qPrintable(outcome.error));
    QVERIFY(outcome.error.startsWith(u"kestin-dir: "));
    QCOMPARE(outcome.error.count(u'\n'), 1);
}

void ClientTest::absentServicesAreTold()
{
    m_directory.reset();
    const Outcome noService = client({u"list"_s});
    QCOMPARE(noService.code, 3);
    QCOMPARE(noService.error, u"kestin-dir: KestinDirectory is not running on this message bus\n"_s);
    const Outcome import = client({u"import"_s, u"-"_s}, card("N:One") + card("N:Two"));
    QCOMPARE(import.code, 3);
    QVERIFY2(import.out.startsWith(u"created 0, refused 2"), qPrintable(import.out));

    qputenv("KESTIN_BUS", "unix:path=/no/such/bus");
    const Outcome noBus = client({u"watch"_s});
    QCOMPARE(noBus.code, 3);
    QVERIFY2(noBus.error.contains(u"\"unix:path=/no/such/bus\" cannot be reached"), qPrintable(noBus.error));
}

void ClientTest::aSilentServiceIsNotWaitedForEver()
{
    m_directory->freeze();
    const Outcome list = client({u"list"_s, u"--timeout"_s, u"1"_s});
    QCOMPARE(list.code, 5);
    QVERIFY2(list.error.contains(u"KestinDirectory gave no answer in time"), qPrintable(list.error));
    const Outcome import = client({u"import"_s, u"-"_s, u"--timeout"_s, u"1"_s}, card("N:One").repeated(100));
    QCOMPARE(import.code, 5);
    // What was in flight is all that was tried.
    QVERIFY2(import.out.startsWith(u"created 0, refused 8"), qPrintable(import.out));
    QVERIFY(import.error.contains(u"it may have been created"));
}

void ClientTest::helpTeachesEveryCommand()
{
    const Outcome program = client({u"--help"_s});
    QCOMPARE(program.code, 0);
    QVERIFY(program.out.contains(u"KESTIN_BUS"));
    const QStringList commands{u"list"_s,   u"show"_s,   u"add"_s,     u"edit"_s,    u"remove"_s, u"who"_s,
                               u"search"_s, u"copy"_s,   u"preview"_s, u"import"_s,  u"watch"_s,  u"settings"_s,
                               u"photo"_s,  u"export"_s, u"sync"_s,    u"defaults"_s};
    for (const QString &command : commands) {
        QVERIFY2(program.out.contains(u"\n  "_s + command + u' '), qPrintable(command));
        const Outcome help = client({command, u"--help"_s});
        QCOMPARE(help.code, 0);
        QVERIFY(help.out.startsWith(u"Usage: kestin-dir "_s + command));
        QVERIFY(help.out.contains(u"Examples:\n  "));
    }
    QCOMPARE(client({u"--version"_s}).out, u"kestin-dir " KESTIN_VERSION "\n"_s);
}

void ClientTest::contactLivesFromAddToRemove()
{
    const QString id = add({u"--first-name"_s, u"Zoë"_s, u"--last-name"_s, u"Müller"_s, u"--office"_s, u"7000"_s,
                            u"--city"_s, u"Paris"_s, u"--misc"_s, u"floor=2"_s, u"--private"_s});
    QCOMPARE(id, u"#CONTACT_1#"_s);
    const QString shown = client({u"show"_s, id}).out;
    for (const QString &line : {u"firstName: Zoë"_s, u"name: Müller"_s, u"officePhone: 7000"_s, u"misc.city: Paris"_s,
                                u"misc.floor: 2"_s, u"isPrivate: yes"_s, u"type: local"_s})
        QVERIFY2(shown.contains(line + u'\n'), qPrintable(line + u" in "_s + shown));
    QVERIFY(!shown.contains(u"fax"));

    QCOMPARE(client({u"edit"_s, id, u"--mobile"_s, u"06"_s, u"--office"_s, QString(), u"--misc"_s, u"floor="_s,
                     u"--not-private"_s})
                 .code,
             0);
    const QJsonObject changed = client({u"show"_s, id, u"--json"_s}).json().object();
    QCOMPARE(changed.value(u"name"_s), u"Müller"_s);
    QCOMPARE(changed.value(u"personalMobile"_s), u"06"_s);
    QCOMPARE(changed.value(u"officePhone"_s), QString());
    QCOMPARE(changed.value(u"misc"_s), QJsonObject({{u"city"_s, u"Paris"_s}}));
    QCOMPARE(changed.value(u"isPrivate"_s), false);

    const QString other = add({u"--last-name"_s, u"Other"_s, u"--home"_s, u"anonymous"_s}); // its canonical form tells
    QVERIFY(client({u"edit"_s, other, u"--home"_s, u"1"_s}).error.contains(u"\"anonymous\" is not accepted"));
    const Outcome removal = client({u"remove"_s, id, u"nobody"_s, other});
    QCOMPARE(removal.code, 1);
    QCOMPARE(removal.error, u"kestin-dir: no contact has the id nobody\n"_s);
    QCOMPARE(allNames(), QStringList());
}

void ClientTest::listsByKindAndPiece()
{
    for (const char *name : {"Delta", "Alpha", "Charlie", "Bravo"})
        QVERIFY(add({u"--last-name"_s, QString::fromUtf8(name)}).startsWith(u'#'));
    QCOMPARE(allNames(), QStringList({u"Alpha"_s, u"Bravo"_s, u"Charlie"_s, u"Delta"_s}));
    QCOMPARE(client({u"list"_s, u"--json"_s, u"--type"_s, u"local"_s}).names(), allNames());
    QCOMPARE(client({u"list"_s, u"--json"_s, u"--type"_s, u"cached"_s}).names(), QStringList());
    QCOMPARE(client({u"list"_s, u"--json"_s, u"--start"_s, u"1"_s, u"--length"_s, u"2"_s}).names(),
             QStringList({u"Alpha"_s, u"Charlie"_s}));
    const QStringList lines = client({u"list"_s}).out.split(u'\n');
    QVERIFY(lines.at(0).startsWith(u"ID           NAME     OFFICE"));
    QCOMPARE(lines.at(1), u"#CONTACT_2#  Alpha                                  local"_s);
}

void ClientTest::whoUnderstandsEverySpelling()
{
    QCOMPARE(client({u"settings"_s, u"set"_s, u"DialingRuleCountryCode"_s, u"33"_s}).code, 0);
    add({u"--first-name"_s, u"Zoë"_s, u"--last-name"_s, u"Müller"_s, u"--mobile"_s, u"+33 6 12 34 56 78"_s});
    for (const QString &spelling : {u"+33612345678"_s, u"06 12 34 56 78"_s, u"0033-612345678"_s})
        QCOMPARE(client({u"who"_s, spelling}).out, u"Zoë Müller\n"_s);
    QCOMPARE(client({u"who"_s, u"0612345678"_s, u"--json"_s}).names(), QStringList{u"Müller"_s});
    m_telephony.reset();
    QCOMPARE(client({u"who"_s, u"+33612345678"_s}).out, u"Zoë Müller\n"_s);
    QCOMPARE(client({u"who"_s, u"0612345678"_s}).code, 1);
}

void ClientTest::searchFindsContactsOfThePhone()
{
    for (const char *name : {"Marlow", "Abel", "Mara", "Márquez"})
        add({u"--last-name"_s, QString::fromUtf8(name), u"--office"_s,
             u"+3319900000"_s + QString::number(qstrlen(name))});
    const Outcome found = client({u"search"_s, u"MAR"_s, u"--json"_s});
    QCOMPARE(found.code, 0);
    QCOMPARE(found.names(), QStringList({u"Mara"_s, u"Marlow"_s}));
    QCOMPARE(found.json()[0][u"contactId"], u"#CONTACT_3#"_s);
    QCOMPARE(found.json()[0][u"company"], false);
    QCOMPARE(client({u"search"_s, u"--number"_s, u"+33 (1) 99-00-00-06"_s, u"--json"_s}).names(),
             QStringList{u"Marlow"_s});
    QCOMPARE(client({u"search"_s, u"x"_s, u"--json"_s}).json().array(), QJsonArray());

    const Outcome cut = client({u"search"_s, u"mar"_s, u"--limit"_s, u"1"_s});
    QCOMPARE(cut.out, u"NAME  OFFICE        FROM   E-MAIL  ID\nMara  +33199000004  phone          #CONTACT_3#\n"_s);
    QCOMPARE(cut.error, u"kestin-dir: there are more than 1; --limit says how many are printed\n"_s);

    // On a terminal the rows that came are taken away for the final table.
    QProcess terminal;
    terminal.start(u"script"_s,
                   {u"-qec"_s,
                    u"stty rows 9 cols 40; '%1/kestin-dir' search mar"_s.arg(QCoreApplication::applicationDirPath()),
                    u"/dev/null"_s});
    QVERIFY(terminal.waitForFinished());
    const QStringList shown = QString::fromUtf8(terminal.readAllStandardOutput()).split(u"A\x1b[J"_s);
    QCOMPARE(shown.size(), 3);
    QVERIFY2(shown.at(1).contains(u"#CONTACT_3#\r\n") && shown.at(1).endsWith(u"Ctrl-C ends\r\n\x1b[4"),
             qPrintable(shown.at(1)));
    QCOMPARE(shown.at(2).count(u"\r\n"_s), 3);
}

void ClientTest::companyDirectoryIsSearchedAndCopied()
{
    const QString number = u"+33 199 000 001"_s;
    add({u"--last-name"_s, u"Marten"_s});
    startCompany();
    QCOMPARE(client({u"who"_s, number}).out, u"Bea Marlow (company directory)\n"_s);
    QCOMPARE(client({u"who"_s, number, u"--local"_s}).code, 1);
    const Outcome found = client({u"search"_s, u"mar"_s, u"--json"_s});
    QCOMPARE(found.names(), QStringList({u"Marten"_s, u"Marlow"_s}));
    QCOMPARE(found.json()[1][u"company"], true);
    QCOMPARE(client({u"search"_s, u"mar"_s, u"--json"_s, u"--local"_s}).names(), QStringList{u"Marten"_s});

    QCOMPARE(client({u"copy"_s, found.json()[1][u"contactId"].toString()}).out, u"#CONTACT_2#\n"_s);
    QCOMPARE(client({u"who"_s, number}).out, u"Bea Marlow\n"_s);
    const Outcome unknown = client({u"copy"_s, u"uid=nobody##"_s});
    QCOMPARE(unknown.code, 1);
    QVERIFY2(unknown.error.contains(u"gave no contact with the id uid=nobody##"), qPrintable(unknown.error));
}

void ClientTest::searchEndsInOrderBeforeItsTime()
{
    add({u"--last-name"_s, u"Marten"_s});
    startCompany({u"--delay"_s, u"7000"_s});
    Program search(u"kestin-dir"_s, {u"search"_s, u"mar"_s, u"--json"_s});
    search.start();
    QVERIFY(m_directory->waitForErrorOutput(u"1 local results sent"_s));
    ::kill(pid_t(search.processId()), SIGINT);
    QVERIFY(search.waitForErrorOutput(u"kestin-dir: interrupted\n"_s));
    QVERIFY(m_directory->waitForErrorOutput(u"Method purgeSearchResults called with searchId=[kestin-dir-"_s));
    QVERIFY2(search.output().contains(u"Marten"), "what had come is printed");

    QCOMPARE(client({u"who"_s, u"12345"_s, u"--timeout"_s, u"1"_s}).code, 5);
    const Outcome late = client({u"search"_s, u"mar"_s, u"--timeout"_s, u"1"_s});
    QCOMPARE(late.code, 5);
    QVERIFY2(late.error.contains(u"did not end within the limit"), qPrintable(late.error));
}

void ClientTest::previewListChanges()
{
    const QString id = add({u"--last-name"_s, u"Müller"_s});
    QCOMPARE(client({u"preview"_s, u"add"_s, id}).code, 0);
    QCOMPARE(client({u"preview"_s, u"--json"_s}).names(), QStringList{u"Müller"_s});
    const Outcome again = client({u"preview"_s, u"add"_s, id});
    QCOMPARE(again.code, 1);
    QVERIFY(again.error.contains(u"is in the preview list already"));
    QCOMPARE(client({u"preview"_s, u"remove"_s, id}).code, 0);
    QCOMPARE(client({u"preview"_s, u"list"_s, u"--json"_s}).names(), QStringList());
    QVERIFY(client({u"preview"_s, u"remove"_s, id}).error.contains(u"is not in the preview list"));
}

void ClientTest::hostileNamesAreEscaped()
{
    const QString name = u"\x1b]0;x\x07\u202e\nb"_s;
    const QString id = add({u"--last-name"_s, name, u"--misc"_s, u"k\x1b=v\x1b"_s});
    for (const QStringList &arguments : {QStringList{u"list"_s}, {u"show"_s, id}, {u"list"_s, u"--json"_s}}) {
        const Outcome outcome = client(arguments);
        QCOMPARE(outcome.code, 0);
        QVERIFY(!outcome.out.contains(u'\x1b') && !outcome.out.contains(u'\u202e'));
    }
    QCOMPARE(allNames(), QStringList{name});
}

void ClientTest::importTellsWhatItRefused()
{
    QFile file(m_data->filePath(u"people.vcf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (int number = 1; number <= 50; ++number)
        file.write(
            card("N:Name" + QByteArray::number(number) + ";First\nTEL;TYPE=WORK:70" + QByteArray::number(number)));
    file.write(card("N:Nobody\nTEL;TYPE=WORK:anonymous") + card("TEL:1") + card("N:Last") + "BEGIN:VCARD\nN:Cut");
    file.close();

    const Outcome outcome = client({u"import"_s, file.fileName(), u"--json"_s});
    QCOMPARE(outcome.code, 1);
    const QJsonObject report = outcome.json().object();
    QCOMPARE(report.value(u"created"_s), 51);
    QMap<int, QString> reasons;
    for (const QJsonValue &refused : report.value(u"refused"_s).toArray()) {
        QCOMPARE(refused[u"file"].toString(), file.fileName());
        reasons.insert(refused[u"card"].toInt(), refused[u"name"].toString() + u": "_s + refused[u"reason"].toString());
    }
    QCOMPARE(reasons, (QMap<int, QString>{{51, u"Nobody: a contact whose number is \"anonymous\" is not accepted"_s},
                                          {52, u": holds no name"_s},
                                          {54, u": has no END:VCARD"_s}}));
    QVERIFY2(outcome.error.contains(u"people.vcf: card 51 (Nobody): a contact whose"), qPrintable(outcome.error));
    // No bar is drawn into a pipe.
    QVERIFY(!outcome.error.contains(u'\r'));
    QCOMPARE(allNames().size(), 51);
}

void ClientTest::importStopsAtAFullDirectory()
{
    QCOMPARE(client({u"settings"_s, u"set"_s, u"DirMaxContact"_s, u"3"_s}).code, 0);
    m_directory.reset();
    startDirectory();
    const Outcome outcome = client({u"import"_s, u"-"_s}, card("N:Name").repeated(500));
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.error.endsWith(u"kestin-dir: stopped before the end: the directory is full: remove contacts or "
                                    "raise the setting DirMaxContact\n"),
             qPrintable(outcome.error));
    QVERIFY(outcome.error.count(u'\n') < 20);
    QCOMPARE(allNames().size(), 3);
}

void ClientTest::photosArePutWhereTheDirectoryKeepsThem()
{
    const QString id = add({u"--last-name"_s, u"Müller"_s});
    write(u"zoe.gif"_s, gif);
    const Outcome outcome = client({u"photo"_s, id, path(u"zoe.gif"_s)});
    QCOMPARE(outcome.code, 0);
    const QString photo = client({u"show"_s, id, u"--json"_s}).json()[u"photo"].toString();
    QCOMPARE(outcome.out, photo + u" (261 x 263 pixels, 12 bytes)\n"_s);
    QVERIFY2(photo.startsWith(m_photos + u"photo_"_s), qPrintable(photo));
    QCOMPARE(contentOf(photo), gif);

    QCOMPARE(client({u"photo"_s, u"#CONTACT_9#"_s, path(u"zoe.gif"_s)}).code, 1);
    QCOMPARE(photoFiles().size(), 1);
    const Outcome address = client({u"photo"_s, id, u"https://photos.invalid/z.png"_s});
    QCOMPARE(address.out, u"https://photos.invalid/z.png\n"_s);
    QCOMPARE(client({u"photo"_s, id, u"--none"_s}).error, QString());
    QCOMPARE(client({u"show"_s, id, u"--json"_s}).json()[u"photo"], QString());
}

void ClientTest::aPhotoThatCannotBeKeptKeepsNoContactAway()
{
    QCOMPARE(client({u"import"_s, u"-"_s}, cardWithPhoto("N:Refused\nTEL;TYPE=CELL:anonymous")).code, 1);
    QCOMPARE(photoFiles(), QStringList());
    const auto importLosesPhoto = [](const QByteArray &text, const QString &reason) {
        const Outcome outcome = client({u"import"_s, u"-"_s}, text);
        QCOMPARE(outcome.code, 0);
        QVERIFY2(outcome.error.contains(reason), qPrintable(outcome.error));
        QVERIFY2(outcome.out.startsWith(u"created 1, refused 0, 1 without their photo"), qPrintable(outcome.out));
    };
    importLosesPhoto(card("N:A\nPHOTO;ENCODING=b:AAAA"), u"(A): the photo is left out: it is no JPEG"_s);
    const qint64 almostFull = 1024 * 1024 - gif.size() + 1;
    write(u"KestinDirectory/photos/UserPhoto"_s, QByteArray(almostFull, 'x'));
    QCOMPARE(client({u"settings"_s, u"set"_s, u"FileDiskUserQuota"_s, u"1"_s}).code, 0);
    importLosesPhoto(cardWithPhoto("N:B"), u"the photos may take 1 MiB"_s);
    QVERIFY(QFile::resize(m_photos + u"UserPhoto"_s, almostFull - 1));
    QCOMPARE(client({u"import"_s, u"-"_s}, cardWithPhoto("N:C")).error, QString());
    QVERIFY(QDir(m_photos).removeRecursively());
    importLosesPhoto(cardWithPhoto("N:D"), u"cannot be written"_s);
    QCOMPARE(allNames(), QStringList({u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
}

void ClientTest::exportIsTakenBackByImport()
{
    add({u"--last-name"_s, u"Müller"_s, u"--melody"_s, u"bell"_s, u"--assistant"_s, u"Bea"_s, u"--private"_s,
         u"--misc"_s, u" k;= v\t"_s});
    const Outcome import = client({u"import"_s, u"-"_s}, cardWithPhoto("N:Photo\nTEL;TYPE=CELL:06"));
    QVERIFY2(import.code == 0 && import.out.startsWith(u"created 1, refused 0, "), qPrintable(import.error));
    const QString file = path(u"all.vcf"_s);
    QCOMPARE(client({u"export"_s, file}).out, u"exported 2 contacts to %1\n"_s.arg(file));
    QCOMPARE(client({u"export"_s, u"-"_s}).out.toUtf8(), contentOf(file));

    const auto contacts = [this] {
        QList<QVariantMap> all;
        for (const QJsonValue &value : client({u"list"_s, u"--json"_s}).json().array()) {
            QVariantMap contact = value.toObject().toVariantMap();
            contact[u"photo"_s] = contentOf(contact[u"photo"_s].toString());
            contact.remove(u"contactId"_s);
            contact.remove(u"lastModificationDate"_s);
            all.append(contact);
        }
        return all;
    };
    const QList<QVariantMap> before = contacts();
    QCOMPARE(before.last().value(u"photo"_s), gif);
    QCOMPARE(client({u"remove"_s, u"#CONTACT_1#"_s, u"#CONTACT_2#"_s}).code, 0);
    QCOMPARE(client({u"import"_s, file}).code, 0);
    QCOMPARE(contacts(), before);
}

void ClientTest::watchPrintsEvents()
{
    Program counted(u"kestin-dir"_s, {u"watch"_s, u"--count"_s, u"2"_s, u"--json"_s});
    Program endless(u"kestin-dir"_s, {u"watch"_s});
    for (Program *watch : {&counted, &endless}) {
        watch->start();
        QVERIFY(watch->waitForErrorOutput(u"watching; Ctrl-C ends"_s));
    }
    const QString id = add({u"--last-name"_s, u"Müller"_s});
    QCOMPARE(client({u"remove"_s, id}).code, 0);

    QTRY_VERIFY_WITH_TIMEOUT(!counted.isRunning(), Program::limitMs);
    const QStringList lines = counted.output().split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    const QJsonObject created = QJsonDocument::fromJson(lines.at(0).toUtf8()).object();
    QCOMPARE(created.value(u"event"_s), u"DIR_CONTACTS_CREATED"_s);
    QCOMPARE(created[u"arguments"_s][u"contacts"_s][0][u"name"_s].toString(), u"Müller"_s);
    const QJsonObject deleted = QJsonDocument::fromJson(lines.at(1).toUtf8()).object();
    QCOMPARE(deleted[u"arguments"_s][u"contactIds"_s], QJsonArray{id});

    QTRY_VERIFY_WITH_TIMEOUT(endless.output().contains(u"contactIds=["_s + id + u']'), Program::limitMs);
    QVERIFY(endless.output().contains(u"contacts=["_s + id + u" Müller]"_s));
    QCOMPARE(endless.terminate(), 0);
}

void ClientTest::settingsAreReadAndChanged()
{
    QCOMPARE(client({u"settings"_s, u"set"_s, u"DirMaxContact"_s, u"250"_s}).code, 0);
    QCOMPARE(client({u"settings"_s, u"get"_s, u"DirMaxContact"_s}).out, u"250\n"_s);
    const QJsonArray all = client({u"settings"_s, u"list"_s, u"--json"_s}).json().array();
    const bool listed = std::any_of(all.begin(), all.end(), [](const QJsonValue &setting) {
        return setting[u"key"] == u"DirMaxContact"_s && setting[u"value"] == u"250"_s &&
               setting[u"defaultValue"] != u"250"_s;
    });
    QVERIFY(listed);
}

void ClientTest::completionOffersCommandsOptionsAndIds_data()
{
    QTest::addColumn<QString>("typed"); // the last word is being completed
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("commands") << u"s"_s << QStringList{u"show"_s, u"search"_s, u"sync"_s, u"settings"_s};
    QTest::newRow("options") << u"list --t"_s << QStringList{u"--type"_s, u"--timeout"_s};
    QTest::newRow("options of a search") << u"search --l"_s << QStringList{u"--local"_s, u"--limit"_s};
    QTest::newRow("kinds") << u"list --type c"_s << QStringList{u"cached"_s};
    QTest::newRow("ids, quoted") << u"show --json ''"_s << QStringList{u"\\#CONTACT_1#"_s};
    QTest::newRow("keys") << u"settings get DirMaxC"_s << QStringList{u"DirMaxContact"_s};
    QTest::newRow("actions") << u"sync e"_s << QStringList{u"export"_s};
    QTest::newRow("files") << u"defaults set --text /proc/cpuinf"_s << QStringList{u"/proc/cpuinfo"_s};
    QTest::newRow("nothing known") << u"add --office ''"_s << QStringList();
}

void ClientTest::completionOffersCommandsOptionsAndIds()
{
    QFETCH(QString, typed);
    add({u"--last-name"_s, u"Müller"_s});
    QProcess bash;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, QCoreApplication::applicationDirPath() + u':' + qEnvironmentVariable("PATH"));
    environment.insert(u"KESTIN_COMPLETION_LIMIT"_s, u"20"_s);
    bash.setProcessEnvironment(environment);
    const QString script = u"source '" KESTIN_COMPLETION "'; COMP_WORDS=(kestin-dir %1);"
                           "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _kestin_dir; printf '%s\\n' \"${COMPREPLY[@]}\""_s;
    bash.start(u"bash"_s, {u"-c"_s, script.arg(typed)});
    QVERIFY(bash.waitForFinished());
    QTEST(QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts), "offered");
}

QTEST_GUILESS_MAIN(ClientTest)
#include "ClientTest.moc"
