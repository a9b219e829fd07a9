// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/PopupQueue.h"
#include "peers/presentation/ShownText.h"
#include "platform/records/KestinBus.h"
#include "tests/peers/presentation/ScreenUnderTest.h"
#include "tests/support/PhoneUnderTest.h"
#include "tests/support/Test.h"

#include <sys/stat.h>

/// The window, without a display, beside the real service and its peers.
class PresentationTest : public QObject
{
    Q_OBJECT

private:
    PhoneUnderTest m_phone;

    void fill(const QStringList &people)
    {
        ListContact contacts;
        for (const QString &line : people)
            contacts.append(person(line));
        m_phone.call("createLocalContacts", {"r", QVariant::fromValue(contacts)});
    }
    void showPopup(const QString &text, const QStringList &arguments = {})
    {
        m_phone.callModule(
            ModuleName::presentation, "showPopup",
            {text, 3, -1, QStringList(), QString(), arguments, QVariant::fromValue(QMap<QString, QString>())});
    }
    void forgetEvents()
    {
        m_phone.call("getContactTypeById", {""}); // those that are on their way come before the answer
        QCoreApplication::processEvents();
        m_phone.events.clear();
        m_phone.ended.clear();
    }
    void ring(const QString &number) { m_phone.raise(EventName::incomingCall, {{"phoneNumber", number}}); }

Q_SIGNALS:
    void told(const QString &number);

public Q_SLOTS:
    void takeCall(const QDBusMessage &message)
    {
        Q_EMIT told(qdbus_cast<ListEventArgument>(message.arguments().value(1)).value(0).value.toString());
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_phone.client.connect({}, {}, KestinBus::eventInterface, KestinBus::eventSignal,
                               {QString(EventName::callRequested)}, KestinBus::eventSignature, this,
                               SLOT(takeCall(QDBusMessage)));
        m_phone.startPeers();
        m_phone.set("DirMaxContact", "500");
        QVERIFY(m_phone.startDirectory());
    }
    void cleanup()
    {
        for (const Contact &contact : m_phone.contacts("getLocalContacts", {0, -1}))
            m_phone.call("deleteLocalContact", {"r", contact.contactId});
    }

    void initialsAreWholeCharacters_data()
    {
        const Rows<QString, QString> row;
        row("both names", "firstName=zoë|name=müller", "ZM");
        row("one name", "name= Atelier", "A");
        row("no name", "email=x@example.org", "X");
        row("combined", "name=e\u0301clair", "E\u0301");
        row("beyond the first plane", "firstName=\U0001F469\u200D\U0001F680|name=\U00020BB7野",
            "\U0001F469\u200D\U0001F680\U00020BB7");
    }
    void initialsAreWholeCharacters()
    {
        const auto [contact, expected] = currentRow<QString, QString>();
        QCOMPARE(initialsOf(person(contact)), expected);
    }

    void theListHasEverybodyPageByPage()
    {
        QStringList people;
        for (int i = 0; i < 410; ++i)
            people << QString("latinName=P%1|name=P%1|firstName=Al|officePhone=01990010%1").arg(i, 3, 10, QChar('0'));
        fill(people);
        ScreenUnderTest screen;
        QVERIFY(screen.shows("Phone: 410"));
        QVERIFY(screen.shown().contains("Al P000, 01990010000\nAl P001"));
        // Further than what is kept, and back; then what was kept is gone as another search was made.
        QVERIFY(screen.doesAll({"key Down", "key End", "wait Al P409", "key Home", "wait Al P000", "settle"}));
        m_phone.call("startSearchContactByName", {"somebody", "P1", 5, true});
        QTRY_VERIFY(m_phone.ended.contains("somebody"));
        QVERIFY(screen.doesAll({"key End", "wait Al P409", "key PgUp", "key PgUp", "wait Al P403"}));
        // Those who come, change and go do so on the screen, and whoever was chosen stays so.
        QVERIFY(screen.doesAll({"key Home", "key Down", "wait Al P001"}));
        m_phone.create(person("name=A first|officePhone=1"));
        QVERIFY(screen.doesAll({"wait Phone: 411", "settle", "key Return", "wait Call Office 01990010001"}));
        QVERIFY(screen.doesAll({"key Escape", "key Home", "wait A first, 1"}));
        Contact first = m_phone.contacts("getLocalContacts", {"1"}).value(0);
        first.name = "A renamed";
        first.misc.insert("company", "Example & Co");
        m_phone.call("modifyLocalContact", {"r", QVariant::fromValue(first)});
        QVERIFY(screen.shows("A renamed, Example & Co, 1"));
        m_phone.call("deleteLocalContact", {"r", first.contactId});
        QVERIFY(screen.doesAll({"wait Phone: 410", "wait Al P000"}));
        QVERIFY(!screen.shown().contains("A renamed"));
    }

    void aSearchFillsAsOneTypes()
    {
        for (const char *line : {"name=Marchbanks|firstName=Silas", "name=Mopp", "name=Q"})
            m_phone.create(person(line));
        m_phone.company.setArguments({"--ldif", KESTIN_SAMPLES "/company.ldif", "--delay", "1500"});
        QVERIFY(m_phone.company.startAndWaitForName(ModuleName::webServiceManager, m_phone.client));
        ScreenUnderTest screen;
        QVERIFY(screen.doesAll({"settle", "type m", "wait Mopp", "type ar", "wait Searching"}));
        QVERIFY(screen.shows("Silas Marchbanks")); // while the company is asked
        QVERIFY2(screen.play("print").contains("Searching"), "the company was faster than 1.5 s");
        QVERIFY(screen.shows("Phone: 1, company: 1"));
        QString shown = screen.shown();
        QVERIFY2(shown.contains("Silas Marchbanks\nMarijke Coöperman, Company directory"), qPrintable(shown));
        QVERIFY(!shown.contains("Searching"));
        QVERIFY(screen.doesAll({"key Down", "key Down", "key Return", "wait Call Office"}));
        QVERIFY2(screen.shown().contains("Receptionist"), qPrintable(screen.shown()));
        QVERIFY(screen.doesAll(
            {"key Escape", "key Up", "key Up", "type zzz", "wait Nobody found", "key Escape", "wait Phone: 3"}));
        m_phone.company.terminate();
    }

    void aCardShowsWhatCanBeCalled()
    {
        m_phone.create(person("name=Ada|firstName=B|officePhone=+33 1 99 00 00 "
                              "01|personalMobile=4711|email=b@example.org|misc.job=Sailor"));
        ScreenUnderTest screen;
        QVERIFY(screen.doesAll({"wait B Ada", "key Down", "key Return", "wait Call Office +33199000001"}));
        const QString shown = screen.shown();
        for (const char *line : {"\nSailor\n", "\nCall Mobile 4711\n", "\nE-mail b@example.org"})
            QVERIFY2(shown.contains(line), qPrintable(shown));
        QSignalSpy calls(this, &PresentationTest::told);
        m_phone.telephony.freeze();
        QVERIFY(screen.doesAll({"key Return", "key Down", "key Return", "key Return"})); // the first is taken back
        m_phone.telephony.thaw();
        QTRY_COMPARE(calls.size(), 1);
        QCOMPARE(calls.first().first().toString(), "4711");
        QVERIFY(screen.doesAll({"key Up", "key Return", "key Return"}));
        QTRY_COMPARE(calls.size(), 2);
        QCOMPARE(calls.last().first().toString(), "+33199000001");
        m_phone.telephony.freeze();
        QVERIFY(screen.doesAll({"key Down", "key Return", "key Escape", "key Return", "wait Call Mobile"}));
        m_phone.telephony.thaw();
        // The star is the one button before the lines.
        QVERIFY(screen.doesAll({"key Backtab", "key Space", "wait Take off the preview keys"}));
        QCOMPARE(m_phone.contacts("getAllContactsInPreview", {0, -1}).size(), 1);
        m_phone.call("deleteLocalContact", {"r", m_phone.contacts("getLocalContacts", {"4711"}).value(0).contactId});
        QVERIFY(screen.shows("Nobody found"));
        QCOMPARE(calls.size(), 2);
    }

    void aCallerIsShown_data()
    {
        const Rows<QString, QString> row;
        row("known", "0 01 99 00 77 00", "Incoming call: Zoë Müller, 0 01 99 00 77 00, Example & Co");
        row("with a percent sign", "0199007701", "Incoming call: 100 %2 Ltd, 0199007701");
        row("nobody", "+49 30 2312 5999", "Incoming call: +49 30 2312 5999");
        row("no number", "who?", "Incoming call: who?");
        row("withheld", "", "Incoming call: Withheld number");
        row("withheld by name", "anonymous", "Incoming call: Withheld number");
        row("of the company", "+33199007147",
            "Incoming call: Marijke Coöperman, +33199007147, Atelier Brumaire, Company directory");
    }
    void aCallerIsShown()
    {
        const auto [number, banner] = currentRow<QString, QString>();
        m_phone.create(person("name=Müller|firstName=Zoë|officePhone=0199007700|misc.company=Example & Co"));
        m_phone.create(person("name=100 %2 Ltd|officePhone=0199007701"));
        m_phone.company.setArguments({"--ldif", KESTIN_SAMPLES "/company.ldif"});
        QVERIFY(m_phone.company.startAndWaitForName(ModuleName::webServiceManager, m_phone.client));
        ScreenUnderTest screen;
        QVERIFY(screen.shows("Zoë Müller"));
        ring("+33 9");
        ring(number);
        m_phone.create(person("name=Noted")); // the list is read again while the company is searched
        QVERIFY(screen.shows(banner));
        m_phone.raise(EventName::callEnded, {});
        QVERIFY(screen.shows("Noted"));
        QVERIFY(screen.doesAll({"type mü", "wait Phone: 1"})); // the list is there as before
        QVERIFY(!screen.shown().contains("Incoming call"));
        m_phone.company.terminate();
    }

    void aCallerIsShownWithoutTelephony()
    {
        m_phone.create(person("name=Müller|firstName=Zoë|officePhone=0199007700"));
        ScreenUnderTest screen;
        QVERIFY(screen.shows("Zoë Müller, 0199007700"));
        m_phone.telephony.freeze();
        QElapsedTimer clock;
        clock.start();
        ring("+33199007700");
        const bool isShown = screen.shows("Incoming call: Zoë Müller, +33199007700");
        const qint64 time = clock.elapsed();
        m_phone.telephony.thaw();
        QVERIFY(isShown);
        QVERIFY2(time < 4000, "the call of the telephony service fails after 5 s");
    }

    void oneSearchIsSharedWithOthers_data()
    {
        const Rows<QString> row;
        row("the list at once", "1");
        row("per directory", "2");
    }
    void oneSearchIsSharedWithOthers()
    {
        const auto [mode] = currentRow<QString>();
        m_phone.set("DirSearchMode", mode);
        m_phone.create(person("name=Marchbanks|firstName=Silas"));
        m_phone.company.setArguments({"--ldif", KESTIN_SAMPLES "/company.ldif", "--delay", "300"});
        QVERIFY(m_phone.company.startAndWaitForName(ModuleName::webServiceManager, m_phone.client));
        ScreenUnderTest screen;
        QVERIFY(screen.doesAll({"settle", "type mar", "wait Phone: 1, company: 1", "settle", "key Down", "key Down"}));
        // The results go, and the contact of the company is shown all the same; the other search is not disturbed.
        forgetEvents();
        m_phone.call("startSearchContactByName", {"other", "mar", 5, false});
        QVERIFY(screen.doesAll({"key Return", "wait Call Office +33 1 99 00 71 47"}));
        QTRY_COMPARE(m_phone.ended.value(0), "other");
        // Who goes is counted no more.
        m_phone.call("deleteLocalContact", {"r", m_phone.contacts("getLocalContacts", {0, 1}).value(0).contactId});
        QVERIFY(screen.doesAll({"key Escape", "wait Phone: 0, company: 1", "settle"}));
        QVERIFY2(screen.shown().contains("Contacts\nMarijke Coöperman"), qPrintable(screen.shown()));
        m_phone.company.terminate();
    }

    void popupsComeOneAfterTheOther()
    {
        m_phone.create(person("name=Zoë"));
        ScreenUnderTest screen({"--language", "de"});
        QVERIFY(screen.doesAll({"wait Zoë", "key Down"}));
        QCOMPARE(m_phone.create(person("name=X|officePhone=anonymous")), -1);
        QVERIFY(screen.shows("Ein anonymer Kontakt kann nicht angelegt werden."));
        showPopup("<b>%1</b> &amp; %2", {"50 %2", "x"});
        showPopup("");
        QVERIFY(screen.doesAll({"wait Weiter (noch 1)", "key Return", "wait <b>50 %2</b> &amp; x", "key Escape"}));
        QVERIFY(!screen.shown().contains("&amp;"));
        QVERIFY(screen.doesAll({"key Return", "wait Zurück", "key Escape"})); // the list has the focus again
        const QString zoe = m_phone.contacts("getLocalContacts", {0, 1}).value(0).contactId;
        m_phone.call("addContactToPreview", {"r", zoe});
        QVERIFY(screen.doesAll({"settle", "key Tab"}));
        showPopup("y");
        m_phone.call("removeContactFromPreview", {"r", zoe});
        QVERIFY(screen.doesAll({"wait y", "settle", "key Return", "type q", "wait Niemand gefunden"}));

        PopupQueue popups;
        for (int i = 0; i < PopupQueue::most + 5; ++i)
            popups.add(QString::number(i), 1);
        QCOMPARE(popups.waiting(), PopupQueue::most - 1);
        QTRY_COMPARE(popups.text(), "1"); // the first is over
    }

    void photosAreShown()
    {
        QImage red(300, 200, QImage::Format_RGB32);
        red.fill(QColor(250, 0, 0));
        const QString path = m_phone.data.filePath("a b%20#?.png");
        QVERIFY(red.save(path));
        m_phone.create(person("name=Ada|photo=" + path));
        m_phone.create(person("name=Bea|photo=" + writeFile(m_phone.data.filePath("none.png"), "no picture")));
        const QString pipe = m_phone.data.filePath("pipe");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        m_phone.create(person("name=Cid|photo=" + pipe));
        ScreenUnderTest screen;
        QVERIFY(screen.doesAll({"wait Cid", "settle"}));
        const QImage picture = screen.picture();
        QCOMPARE(picture.size(), QSize(480, 272));
        QCOMPARE(picture.pixelColor(25, 46 + 23), QColor(250, 0, 0));
        QVERIFY(picture.pixelColor(9, 46 + 7) != QColor(250, 0, 0));              // outside of the circle
        QVERIFY(picture.pixelColor(15, 92 + 23) != picture.pixelColor(200, 270)); // initials
        const QByteArray told = screen.errorOutput();
        QVERIFY2(told.contains("/none.png is not shown: it is no picture"), told.constData());
    }

    void peersThatGoAndComeAreLivedWith()
    {
        m_phone.create(person("name=Ada|officePhone=0199009900"));
        m_phone.set("UserPhoto", KESTIN_SAMPLES "/portrait.png");
        forgetEvents();
        ScreenUnderTest screen;
        QVERIFY(screen.doesAll({"wait Your photo", "wait Ada"}));
        QTRY_COMPARE(m_phone.events.count(EventName::presentationLoaded), 1);
        m_phone.directory.kill();
        QVERIFY(screen.doesAll({"wait The directory does not answer", "type b", "frame"}));
        QVERIFY(!screen.shown().contains("Ada"));
        ring("+33199009900");
        QVERIFY(screen.shows("Incoming call: +33199009900"));
        QVERIFY(m_phone.startDirectory());
        QVERIFY(screen.shows("Incoming call: Ada, +33199009900"));
        m_phone.raise(EventName::callEnded, {});
        QVERIFY(screen.doesAll({"wait Nobody found", "key Escape", "wait Ada"}));
        QTRY_COMPARE(m_phone.events.count(EventName::presentationLoaded), 2);
    }

    void whatMakesNoSenseIsRefused_data()
    {
        const Rows<QStringList, QByteArray> row;
        row("size", {"--size", "479x272"}, "--size takes 480x272 or more, not 479x272");
        row("language", {"--language", "xx-yy"}, "no language is called xx-yy");
        row("colours", {"--dark"}, "--dark and --light exclude each other");
        row("arguments", {"x"}, "there are no arguments but the options");
    }
    void whatMakesNoSenseIsRefused()
    {
        const auto [options, reason] = currentRow<QStringList, QByteArray>();
        Program program("kestin-presentation", QStringList{"--light"} + options);
        QCOMPARE(program.run(), 1);
        QVERIFY2(program.errorOutput().contains(reason), qPrintable(program.errorOutput()));
    }
};

QTEST_GUILESS_MAIN(PresentationTest)
#include "PresentationTest.moc"
