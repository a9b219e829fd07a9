// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/NumberFormatter.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/UpdateReport.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"
#include "tests/support/Test.h"

#include <memory>

namespace {

const QString module = ModuleName::telephony;

DialingRules rules(const QString &country, const QString &area, const QString &prefix, const QString &exceptions = {})
{
    DialingRules rules;
    const QStringList values{country, area, prefix, "6", exceptions};
    const QStringList keys = DialingRules::settingKeys();
    for (qsizetype i = 0; i < keys.size(); ++i)
        rules.set(keys.at(i), values.at(i));
    return rules;
}

} // namespace

Q_DECLARE_METATYPE(DialingRules)

/// The forms of numbers under rules, and the telephony service as a process beside a real settings manager.
class TelephonyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void canonicalForms_data()
    {
        const Rows<DialingRules, QString, QString> row;
        // Of each country numbers, parted by "|", that have the same form; none: they stay as they are.
        const auto rows = [&row](const char *country, const DialingRules &under, const QByteArray &numbers,
                                 const QString &expected = {}) {
            for (const QByteArray &number : numbers.split('|'))
                row(country + (": " + number.left(40)), under, number, expected);
        };
        constexpr char strasbourg[] = "+33388123456", berlin[] = "+49301234567", rome[] = "+390612345678";

        const DialingRules france = rules("+33", QString(), "0", "06, 3611");
        rows("France", france,
             "0388123456|03 88 12 34 56|03.88.12.34.56|03/88-12 34 56|(03) 88 12 34 56|388123456|"
             "+33388123456|+33 (0)3 88 12 34 56|+33 0388123456|(+33) 388 12 34 56|0033388123456|"
             "00 33 (0)3 88 12 34 56|33388123456|tel:+33-3-88-12-34-56|TEL:388123456;phone-context=+33|"
             "tel:+33388123456;ext=12|０３８８１２３４５６|＋３３ ３８８１２３４５６|٠٣٨٨١٢٣٤٥٦|"
             "\u202a+33 3 88 12\u00a034\u201156\u202c|03 88 12 34 56 ext. 12|0388123456x7|0388123456,,12#|"
             "0388123456;12|03 88 12 34 56 p 12|+33388123456w1*,2|0388123456P1|0388123456;ext=12| 0388123456\t|"
             "00388123456|0 03 88 12 34 56|00033388123456|0 00 33 (0)3 88 12 34 56|0388123456" +
                 QByteArray(200, ' '),
             strasbourg);
        rows("France", france, "0 0049 30 1234567|0049301234567", berlin);
        rows("France, service", france, "0 0800 123 456", "+33800123456");
        rows("France, not assigned but possible", france, "0 0860 12 34 56", "+33860123456");
        rows("France, unchanged", france,
             "|3611|12345|12 345|112|*21*0388123456#|#31#0388123456|Zoë|Reception|bob@example.com|"
             "0388123456 home|0388123456 ou 57|03 88 12 34 56 / 57|--|+|+33|+999 123456|0+33388123456|"
             "123456789012345678901234567890|038812345|tel:|sip:0388123456@a.b|0033 0 88 12 34 56|" +
                 QByteArray(300, '3'));
        rows("France, internal", france, "3611,1|3611p", "3611");
        const DialingRules exceptions = rules("33", QString(), "9", "90;3611"); // one of which is the begin of a number
        rows("France, prefix 9", exceptions, "9 01 42 68 53 00|9 0033 1 42 68 53 00");
        rows("France, prefix 9", exceptions, "9 142 68 53 00|01 42 68 53 00", "+33142685300");

        const DialingRules germany = rules("0049", "030", "0");
        rows("Germany", germany, "030 1234567|0 030 1234567|1234567|0 1234567", berlin);
        rows("Germany", germany, "0 04421 123456", "+494421123456");
        rows("Germany", germany, "0 0033 3 88 12 34 56", strasbourg);
        rows("Germany", germany, "0030 21 0123 4567", "+302101234567"); // Athens, as written
        rows("Germany", germany, "089/636-48018", "+498963648018");
        rows("Germany, prefix 9", rules("49", "30", "9"), "9 030 1234567", berlin);

        const DialingRules newYork = rules("1", "212", "9");
        rows("USA", newYork,
             "(212) 555-0123|1-212-555-0123|9 1 212 555 0123|9-212-555-0123|555-0123|9 555 0123|+1 212 555 0123",
             "+12125550123");
        rows("USA", newYork, "912 355 0123", "+19123550123");
        rows("USA", newYork, "9 011 33 3 88 12 34 56|0033 3 88 12 34 56", strasbourg);
        rows("USA, letters", newYork, "1-800-FLOWERS", "+18003569377");
        rows("USA, letters", newYork, "212 555 HOME");

        rows("Italy", rules("39", QString(), "0"), "06 1234 5678|0 06 1234 5678|+39 (0)6 1234 5678", rome);
        rows("Spain", rules("34", QString(), "0"), "0 912 345 678", "+34912345678");
        for (const DialingRules &unknown : {DialingRules(), rules("999", QString(), QString())}) {
            rows("no country", unknown, "+33 3 88 12 34 56", strasbourg);
            rows("no country", unknown, "0033 3 88 12 34 56|0388123456");
        }
    }

    void canonicalForms()
    {
        const auto [under, raw, expected] = currentRow<DialingRules, QString, QString>();
        const NumberFormatter formatter(under);
        const QString canonical = formatter.canonical(raw);
        QCOMPARE(canonical, expected.isEmpty() ? raw : expected);
        QCOMPARE(formatter.canonical(canonical), canonical);
    }

    void dialableForms()
    {
        const NumberFormatter formatter{DialingRules()};
        const QMap<QString, QString> forms{{"03 88.12-34/56", "0388123456"},
                                           {"+33 (0)3 88 12 34 56", "+33388123456"},
                                           {"00 33 (0)3 88 12 34 56", "0033388123456"},
                                           {"+39 (0)6 1234 5678", "+390612345678"},
                                           {"(0) 388 12 34 56", "0388123456"},
                                           {"tel:+33-388-123456;ext=1", "+33388123456"},
                                           {"*21* 12 34 #", "*21*1234#"},
                                           {"１２３４", "1234"}};
        for (auto form = forms.cbegin(); form != forms.cend(); ++form)
            QCOMPARE(formatter.dialable(form.key()), form.value());
        for (const QString &raw :
             QString("4711||Zoë|1-800-FLOWERS|0388123456x12|0388123456,12|bob@example.com|12 +33").split('|'))
            QCOMPARE(formatter.dialable(raw), raw);
    }

    void rulesFollowTheSettings()
    {
        const QString number = "0388123456";
        const QString inFrance = "+33388123456";
        const QString countryCode = "DialingRuleCountryCode";
        const QTemporaryDir folder;
        Program telephony("kestin-telephony");
        QVERIFY(telephony.startAndWaitForName(module, m_bus.connection));
        QCOMPARE(canonical(number), number);
        QVERIFY(telephony.waitForErrorOutput("<4>The dialing rules cannot be read from the settings: "));

        // Nothing is waited for: who has the answer of a write, or sees the settings manager, is served by the new
        // rules.
        const auto settings = [&folder](const char *file) {
            const QStringList arguments{"--file", folder.filePath(QLatin1String(file))};
            return std::make_unique<Program>("kestin-settings", arguments);
        };
        std::unique_ptr<Program> manager = settings("one.ini");
        QVERIFY(manager->startAndWaitForName(ModuleName::settings, m_bus.connection));
        QCOMPARE(canonical(number), number);
        QCOMPARE(set(countryCode, "33"), 0);
        QCOMPARE(canonical(number), inFrance);
        QCOMPARE(set("DialingRuleMinNumberLength", "11"), 0);
        QCOMPARE(canonical(number), number);
        QCOMPARE(set("DialingRuleMinNumberLength", "10"), 0);
        QCOMPARE(canonical(number), inFrance);
        manager->kill();
        QCOMPARE(canonical(number), inFrance);
        manager = settings("two.ini");
        QVERIFY(manager->startAndWaitForName(ModuleName::settings, m_bus.connection));
        QCOMPARE(canonical(number), number);
        QCOMPARE(telephony.terminate(), 0);
    }

    void listsAndMapsKeepTheirOrder()
    {
        Program telephony("kestin-telephony");
        QVERIFY(telephony.startAndWaitForName(module, m_bus.connection));
        const QStringList raw{QString(), "+33 388123456", "Zoë", "4 7", "+33 388123456"};
        const QString e164 = "+33388123456";
        QMapQStringQStringList contacts;
        QMapQStringQStringList expected;
        for (int i = 0; i < 3000; ++i) {
            contacts.insert(QString("#CONTACT_%1#").arg(i), raw.mid(i % 6));
            expected.insert(QString("#CONTACT_%1#").arg(i), QStringList{raw[0], e164, raw[2], raw[3], e164}.mid(i % 6));
        }
        const QDBusMessage map =
            m_bus.call(module, "makeCanonicalNumberMapWithoutPrefix", {QVariant::fromValue(contacts)});
        QCOMPARE(qdbus_cast<QMapQStringQStringList>(map.arguments().value(0)), expected);
        const QDBusMessage list = m_bus.call(module, "extractDialableNumberList", {raw});
        QCOMPARE(list.arguments().value(0).toStringList(), (QStringList{raw[0], e164, raw[2], "47", e164}));
    }

    void modeIsGiven()
    {
        for (const QString mode : {"advanced", "basic"}) {
            const QStringList arguments =
                mode == STR_KESTIN_MODE_ADVANCED ? QStringList() : QStringList{"--mode", mode};
            Program telephony("kestin-telephony", arguments);
            QVERIFY(telephony.startAndWaitForName(module, m_bus.connection));
            const QDBusMessage reply = m_bus.call(module, "getKestinMode");
            QCOMPARE(qdbus_cast<KestinMode>(reply.arguments().value(0)), KestinMode{mode});
        }
        Program wrong("kestin-telephony", {"--mode", "full"});
        QCOMPARE(wrong.run(), 1);
        QVERIFY(wrong.errorOutput().contains("--mode takes basic, advanced or unknown"));
    }

private:
    QString canonical(const QString &number)
    {
        const QDBusMessage reply = m_bus.call(module, "makeCanonicalNumberListWithoutPrefix", {QStringList{number}});
        return reply.arguments().value(0).toStringList().value(0);
    }

    int set(const QString &key, const QString &value)
    {
        const QDBusMessage reply = m_bus.call(ModuleName::settings, "setSettingValue", {key, value});
        return qdbus_cast<UpdateReport>(reply.arguments().value(0)).code;
    }

    const ClientBus m_bus;
};

QTEST_GUILESS_MAIN(TelephonyTest)
#include "TelephonyTest.moc"
