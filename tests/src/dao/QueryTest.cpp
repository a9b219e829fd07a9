// SPDX-License-Identifier: Apache-2.0
#include "platform/records/LatinText.h"
#include "src/dao/ContactRow.h"
#include "src/dao/QueryText.h"
#include "tests/src/dao/TemporaryStore.h"

/// Texts put together at run time, and whom they find among a few contacts with awkward names, each its own id.
class QueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const char *name : {"De La Cruz", "de", "O'Neil", "50%", "50$ off", "a_b", "true", "NULL"}) {
            Contact contact;
            contact.name = QLatin1String(name);
            contact.firstName = "Zo";
            contact.latinName = latinText(contact.name);
            contact.collaborationId = contact.name;
            contact.isPreviewed = contact.name == "de";
            contact.officePhoneCan = contact.name == "50%" ? "+1" : QString();
            contact.personalFaxCan = contact.name == "a_b" ? "+1" : QString();
            m_store.add(contact.name, contact);
        }
        m_store.run("UPDATE CONTACT SET latinName=NULL WHERE contactId='NULL'");
    }

    void allFieldsAreSearched()
    {
        QString condition = QueryText::allFieldsCondition("50%'_$");
        condition.replace(" like '%50$$%''$$_$$%' escape '$'", "?").replace(" OR ", "|");
        QCOMPARE(condition,
                 " WHERE contactId?|loginName?|salutation?|firstName?|name?|latinFirstName?|latinName?|"
                 "language?|timezone?|officePhone?|officePhoneCan?|attendant?|colleague?|assistant? |email? |"
                 "fax?|faxCan?|voiceMail?|personalHome? |personalHomeCan ?|personalMobile?|personalMobileCan?|"
                 "personalFax?|personalFaxCan?|personalEmail?|collaborationId?|isPreviewed?|isPrivate?|photo?|"
                 "melody? ");
    }

    void searchesFind_data()
    {
        const Rows<QString> row;
        constexpr char all[] = "De La Cruz,de,O'Neil,50%,50$ off,a_b,true,NULL";
        row("name:  DE   la ", "De La Cruz");
        row("name:de", "De La Cruz,de");
        row("name:%L", "De La Cruz,O'Neil,NULL");
        row("name:O'n", "O'Neil");
        row("name:' OR '1'='1", "");
        row("name:50$", "50$ off");
        row("name:50%", "50%,50$ off"); // it stands for anything
        row("name:a_", "a_b");
        row("name:", all);
        row("name:   ", all);
        row("latin:ddee", "De La Cruz,de");
        row("latin:ddee    ll", "De La Cruz");
        row("latin:ddee ll", "");
        row("latin:DDEE", "De La Cruz,de");
        row("latin:d_e", "De La Cruz,de");
        row("latin:__ee", "De La Cruz,de");
        row("latin:", "De La Cruz,de,O'Neil,50%,50$ off,a_b,true");
        row("fields:CRUZ", "De La Cruz");
        row("fields:50%", "50$ off");
        row("fields:0_o", "50$ off");
        row("fields:e_L", "");
        row("fields:'Neil", "O'Neil");
        row("fields:true", "de,true");
        row("fields:' OR '1'='1", "");
        row("strict:O'Neil", "O'Neil");
        row("strict:o'neil", "");
        row("strict:50%", "50%");
    }

    void searchesFind()
    {
        const auto [found] = currentRow<QString>();
        const QString search = QString::fromLatin1(QTest::currentDataTag());
        const QString text = search.section(':', 1);
        std::optional<ListContact> contacts;
        if (search.startsWith("name"))
            contacts = m_dao.getContactsByName(text);
        else if (search.startsWith("latin"))
            contacts = m_dao.getContactsByLatinName(text);
        else if (search.startsWith("fields"))
            contacts = m_dao.getAllFieldsSearch(text);
        else if (const auto matches = m_dao.findContactByNameStrict("Zo", text))
            contacts = m_dao.getContact(matches->value(0).name);
        // The searches promise no order.
        QStringList ids = idsOf(contacts).split(',');
        QStringList expected = found.split(',');
        ids.sort();
        expected.sort();
        QCOMPARE(ids, expected);
    }

    void contactsToMergeAreExact_data()
    {
        const Rows<QString> row;
        row("de||", "de");
        row("DE||", QString());
        row("||+1", "a_b");
        row("|+1|+2", "50%");
        row("de|+1|+1", "de,50%,a_b");
        row("x' OR '1'='1||", QString());
        row("||", "unreadable");
    }

    void contactsToMergeAreExact()
    {
        const auto [found] = currentRow<QString>();
        const QStringList keys = QString(QTest::currentDataTag()).split('|');
        QCOMPARE(idsOf(m_dao.getContactToMerge(keys.at(0), keys.at(1), keys.at(2))), found);
    }

    void namesAreMatchedInLatinForm()
    {
        const std::pair<QString, QString> forms[] = {
            {QString(), QString()},
            {"A b", "aa  bb"},
            {"@AZ[az", "@@aazz[[aazz"},
            {"\u00c9t", "ee\u0301tt"},                 // an accent, composed
            {"e\u0301t", "ee\u0301tt"},                // and not
            {"\u1ec7", "ee\u0323\u0302"},              // two marks
            {"\u0301", "\u0301"},                      // a mark alone
            {"\ufb01", "ffii"},                        // a ligature
            {"\U0001F600a", "\U0001F600\U0001F600aa"}, // surrogate pairs: a picture, a mark, a capital
            {"\U00011366", "\U00011366"},
            {"\U00010400", "\U00010428\U00010428"},
        };
        for (const auto &[name, form] : forms)
            QCOMPARE(latinText(name), form);
        // Whoever has no such form yet is found, so that it can be made.
        m_store.add("new");
        const auto withoutForm = m_dao.getContactsWithNoLatinName();
        QVERIFY(m_dao.deleteContact("new"));
        QCOMPARE(idsOf(withoutForm), "new");
    }

    void lookUpsUseAnIndex()
    {
        for (const char *condition :
             {"officePhoneCan='1' OR faxCan='1' OR personalHomeCan='1' OR personalMobileCan='1' OR personalFaxCan='1'",
              "upper (collaborationId) = upper ('a') AND type !='6' ", "upper (email) = upper ('a') AND type != '6' ",
              "collaborationId='a' or  officePhoneCan='1' or  personalFaxCan='2'",
              "isPreviewed='true' ORDER BY contactId limit 0 , 10", "latinName=''", ContactRow::latinPrefixCondition}) {
            QSqlQuery query =
                m_store.database.connection().executeQuery("EXPLAIN QUERY PLAN " + ContactRow::selectText + " WHERE " +
                                                           QString(condition).replace(":prefix", "'a'"));
            QString plan;
            while (query.next())
                plan += query.value("detail").toString() + '|';
            QVERIFY2(plan.contains("USING INDEX") && !plan.contains("SCAN") && !plan.contains("TEMP B-TREE"),
                     qPrintable(plan));
        }
    }

private:
    TemporaryStore m_store;
    DaoContact &m_dao = *m_store.dao;
};

QTEST_GUILESS_MAIN(QueryTest)
#include "QueryTest.moc"
