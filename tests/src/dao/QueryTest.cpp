// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactRow.h"
#include "src/dao/LatinText.h"
#include "src/dao/QueryText.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Rows.h"

#include <QTest>

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
            contact.firstName = u"Zo"_s;
            contact.latinName = latinText(contact.name);
            contact.collaborationId = contact.name;
            contact.isPreviewed = contact.name == "de"_L1;
            contact.officePhoneCan = contact.name == "50%"_L1 ? u"+1"_s : QString();
            contact.personalFaxCan = contact.name == "a_b"_L1 ? u"+1"_s : QString();
            m_store.add(contact.name, contact);
        }
        m_store.run("UPDATE CONTACT SET latinName=NULL WHERE contactId='NULL'");
    }

    void conditionsAreEscaped()
    {
        QString text = u"S"_s;
        int count = 0;
        QueryText::addCondition(text, u"name"_s, u"O'$%_%1"_s, false, count);
        QCOMPARE(text, u"S WHERE name like 'O''$$$%$_$%1%' escape '$'"_s);
        QueryText::addCondition(text, u"fax"_s, u"O'$%_%2"_s, true, count);
        QVERIFY2(text.endsWith("' AND fax = 'O''$%_%2'"_L1), qPrintable(text));
        QCOMPARE(count, 2);
    }

    void allFieldsAreSearched()
    {
        QString condition = QueryText::allFieldsCondition(u"50%'_$"_s);
        condition.replace(" like '%50$$%''$$_$$%' escape '$'"_L1, "?"_L1).replace(" OR "_L1, "|"_L1);
        QCOMPARE(condition,
                 u" WHERE contactId?|loginName?|salutation?|firstName?|name?|latinFirstName?|latinName?|"
                 "language?|timezone?|officePhone?|officePhoneCan?|attendant?|colleague?|assistant? |email? |"
                 "fax?|faxCan?|voiceMail?|personalHome? |personalHomeCan ?|personalMobile?|personalMobileCan?|"
                 "personalFax?|personalFaxCan?|personalEmail?|collaborationId?|isPreviewed?|isPrivate?|photo?|"
                 "melody? "_s);
    }

    void searchesFind_data()
    {
        const Rows<QString> row("found");
        constexpr char all[] = "De La Cruz,de,O'Neil,50%,50$ off,a_b,true,NULL";
        row("name:  DE   la ", "De La Cruz");
        row("name:de", "De La Cruz,de");
        row("name:%L", "De La Cruz,O'Neil,NULL");
        row("name:O'n", "O'Neil");
        row("name:' OR '1'='1", "");
        row("name:", all);
        row("name:   ", all);
        row("latin:ddee", "De La Cruz,de");
        row("latin:ddee    ll", "De La Cruz");
        row("latin:ddee ll", "");
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
        const QString search = QString::fromLatin1(QTest::currentDataTag());
        const QString text = search.section(u':', 1);
        std::optional<ListContact> contacts;
        if (search.startsWith("name"_L1))
            contacts = m_dao.getContactsByName(text);
        else if (search.startsWith("latin"_L1))
            contacts = m_dao.getContactsByLatinName(text);
        else if (search.startsWith("fields"_L1))
            contacts = m_dao.getAllFieldsSearch(text);
        else if (const auto matches = m_dao.findContactByNameStrict(u"Zo"_s, text))
            contacts = m_dao.getContact(matches->value(0).name);
        // The searches promise no order.
        QFETCH(QString, found);
        QStringList ids = idsOf(contacts).split(u',');
        QStringList expected = found.split(u',');
        ids.sort();
        expected.sort();
        QCOMPARE(ids, expected);
    }

    void contactsToMergeAreExact_data()
    {
        const Rows<QString, QString> row("condition", "found");
        row("de||", u" collaborationId='de'"_s, u"de"_s);
        row("DE||", u" collaborationId='DE'"_s, QString());
        row("||+1", u" personalFaxCan='+1'"_s, u"a_b"_s);
        row("|+1|+2", u" officePhoneCan='+1' or  personalFaxCan='+2'"_s, u"50%"_s);
        row("de|+1|+1", u" collaborationId='de' or  officePhoneCan='+1' or  personalFaxCan='+1'"_s, u"de,50%,a_b"_s);
        row("x' OR '1'='1||", u" collaborationId='x'' OR ''1''=''1'"_s, QString());
        row("||", QString(), u"unreadable"_s);
    }

    void contactsToMergeAreExact()
    {
        QFETCH(QString, condition);
        const QStringList keys = QString::fromLatin1(QTest::currentDataTag()).split(u'|');
        const LogCapture log;
        QTEST(idsOf(m_dao.getContactToMerge(keys.at(0), keys.at(1), keys.at(2))), "found");
        QVERIFY(log.contains("<7>Final Query : "_L1 + ContactRow::selectText + " where "_L1 + condition));
        QCOMPARE(log.lines.filter(u"<3>Error while executing query "_s).size(), condition.isEmpty() ? 1 : 0);
    }

    void namesAreMatchedInLatinForm()
    {
        const std::pair<QString, QString> forms[] = {
            {QString(), QString()},
            {u"A b"_s, u"aa  bb"_s},
            {u"\u00c9t"_s, u"ee\u0301tt"_s},                 // an accent, composed
            {u"e\u0301t"_s, u"ee\u0301tt"_s},                // and not
            {u"\u1ec7"_s, u"ee\u0323\u0302"_s},              // two marks
            {u"\u0301"_s, u"\u0301"_s},                      // a mark alone
            {u"\ufb01"_s, u"ffii"_s},                        // a ligature
            {u"\U0001F600a"_s, u"\U0001F600\U0001F600aa"_s}, // surrogate pairs: a picture, a mark, a capital
            {u"\U00011366"_s, u"\U00011366"_s},
            {u"\U00010400"_s, u"\U00010428\U00010428"_s},
        };
        for (const auto &[name, form] : forms)
            QCOMPARE(latinText(name), form);
        // Whoever has no such form yet is found, so that it can be made.
        m_store.add(u"new"_s);
        const auto withoutForm = m_dao.getContactsWithNoLatinName();
        QVERIFY(m_dao.deleteContact(u"new"_s));
        QCOMPARE(idsOf(withoutForm), u"new"_s);
    }

    void lookUpsUseAnIndex()
    {
        for (const char *condition :
             {"officePhoneCan='1' OR faxCan='1' OR personalHomeCan='1' OR personalMobileCan='1' OR personalFaxCan='1'",
              "upper (collaborationId) = upper ('a') AND type !='6' ", "upper (email) = upper ('a') AND type != '6' ",
              "collaborationId='a' or  officePhoneCan='1' or  personalFaxCan='2'",
              "isPreviewed='true' ORDER BY contactId limit 0 , 10", "latinName=''"}) {
            QSqlQuery query = m_store.database.connection().executeQuery(
                "EXPLAIN QUERY PLAN "_L1 + ContactRow::selectText + " WHERE "_L1 + QLatin1String(condition));
            QString plan;
            while (query.next())
                plan += query.value(u"detail"_s).toString() + u'|';
            QVERIFY2(plan.contains("USING INDEX"_L1) && !plan.contains("SCAN"_L1) && !plan.contains("TEMP B-TREE"_L1),
                     qPrintable(plan));
        }
    }

private:
    TemporaryStore m_store;
    DaoContact &m_dao = *m_store.dao;
};

QTEST_GUILESS_MAIN(QueryTest)
#include "QueryTest.moc"
