// SPDX-License-Identifier: Apache-2.0
#include "src/contacts/DefaultContactsText.h"
#include "tests/src/contacts/ContactsFixture.h"

class DefaultContactsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsAreReadByTheirFields_data()
    {
        const Rows<QString, QStringList, int> row;
        row("short", "7,Mr,Al,Bo,12,1,a@b,", {"7 Mr Al Bo 12 1 a@b "}, 0);
        row("previewed only by 1", "7,Mr,Al,Bo,12,true,a@b,p", {"7 Mr Al Bo 12 0 a@b p"}, 0);
        row("long", "7,,,,,0,,,f,m,h,e,x,i,co,jo,ad,ci,zi,ct",
            {"7     0   f m h e x i address=ad city=ci company=co country=ct job=jo zip=zi"}, 0);
        row("escaped, and a word that is taken for one", R"(7,,a\,b,c\#d,,escComa,escSharp,\\,#8,,,,,,,)",
            {R"(7  a,b c#d  0 # \,)", "8     0  "}, 0);
        row("wrong counts and an empty record", "a,b,c#8,,,,,,,#1,2,3,4,5,6,7,8,9#", {"8     0  "}, 3);
        row("an address that breaks its record", "8,,,,,,,http://me:sec,ret@a", QStringList(), 1);
        row("empty", "", QStringList(), 1);
    }

    void recordsAreReadByTheirFields()
    {
        const auto [text, expected, warnings] = currentRow<QString, QStringList, int>();
        const LogCapture log;
        QStringList lines;
        for (const Contact &contact : DefaultContactsText::contacts(text)) {
            QStringList fields{contact.contactId, contact.salutation,  contact.firstName,
                               contact.name,      contact.officePhone, QString::number(contact.isPreviewed),
                               contact.email,     contact.photo};
            if (!contact.misc.isEmpty())
                fields << contact.fax << contact.personalMobile << contact.personalHome << contact.personalEmail
                       << contact.personalFax << contact.collaborationId;
            for (auto pair = contact.misc.cbegin(); pair != contact.misc.cend(); ++pair)
                fields.append(pair.key() + '=' + pair.value());
            lines.append(fields.join(' '));
        }
        QCOMPARE(lines, expected);
        QCOMPARE(int(log.lines.filter("Number of arguments incorrect (8 or 20)").size()), warnings);
        QVERIFY(log.lines.filter("sec,ret").isEmpty());
    }

    void theWholeSetIsReplaced()
    {
        ContactsFixture store;
        store.fields.maxContacts = 0;
        store.put(withType(ContactType::Cached, "#DM_3#")); // gives way; of two with the same id the first counts
        store.contacts.defaultContacts.setDefaultContacts("1,,,A,,1,,#2,,,B,anonymous,0,,#3,,,C,,0,,#3,,,D,,0,,");
        store.fields.lastLocalChangeDate = {}; // of the copy
        QCOMPARE(store.takeNews(), "anonymous|deleted CACHED_REQID #DM_3#|created DM #DM_1# #DM_3#");
        store.contacts.defaultContacts.setDefaultContacts(R"(3,,,C,,0,,http://me:sec\,ret@a/p)");
        store.dao._nbContactsUsingThisPhotoQuery(store.stored("#DM_3#").photo);
        QVERIFY(store.log.lines.filter("using photo http://a/p").size() == 1 &&
                store.log.lines.filter("ret@").isEmpty());
        QCOMPARE(store.takeNews(), "deleted DM #DM_1# #DM_3#|created DM #DM_3#");
        QCOMPARE(store.stored("#DM_3#").latinName, "cc");
        store.contacts.defaultContacts.setDefaultContacts("");
        QCOMPARE(store.takeNews(), "dropped http://me:sec,ret@a/p|deleted DM #DM_3#");
        QVERIFY(!store.fields.lastLocalChangeDate.isValid());
    }

    void whatCannotBeReplacedStays_data()
    {
        const Rows<QByteArray> row;
        row("read-only mode", "");
        row("at the commit", "commit");
        // The database undoes everything by itself, after the first of them is gone.
        row("at the second", "CREATE TEMP TRIGGER fault BEFORE DELETE ON CONTACT WHEN OLD.contactId='#DM_3#' "
                             "BEGIN SELECT RAISE(ROLLBACK,'full'); END");
    }

    void whatCannotBeReplacedStays()
    {
        const auto [fault] = currentRow<QByteArray>();
        ContactsFixture store;
        store.contacts.defaultContacts.setDefaultContacts("1,,,A,,0,,#3,,,C,,0,,");
        store.takeNews();
        store.fields.readOnlyMode = fault.isEmpty();
        if (fault == "commit")
            store.failCommits();
        else
            store.run(fault);
        store.contacts.defaultContacts.setDefaultContacts("2,,,B,,0,,");
        QCOMPARE(store.takeNews(), "");
        QCOMPARE(store.dao.getContactByType(ContactType::DeviceManagement)->size(), 2);
        QCOMPARE(store.stored("#DM_1#").name, "A");
    }
};

QTEST_GUILESS_MAIN(DefaultContactsTest)
#include "DefaultContactsTest.moc"
