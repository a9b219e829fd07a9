// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/NumberFormatter.h"
#include "platform/records/KestinBus.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/UpdateReport.h"
#include "tests/peers/PeerBus.h"
#include "tests/support/Program.h"
#include "tests/support/Rows.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString module = ModuleName::telephony;

DialingRules rules(const QString &country, const QString &area, const QString &prefix, const QString &exceptions = {})
{
    DialingRules rules;
    const QStringList values{country, area, prefix, u"6"_s, exceptions};
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
    void initTestCase()
    {
        registerDBusKestinMode();
        registerDBusUpdateReport();
        registerDBusQMapQStringQStringList();
        m_bus = std::make_unique<PeerBus>();
    }

    void canonicalForms_data()
    {
        const Rows<DialingRules, QString, QString> rows("under", "raw", "expected"); // empty: unchanged
        const auto row = [&rows](const char *country, const DialingRules &under, const QByteArray &raw,
                                 const QString &expected = {}) {
            rows(country + (": " + raw.left(40)), under, raw, expected);
        };
        constexpr char strasbourg[] = "+33388123456";

        const DialingRules france = rules(u"+33"_s, QString(), u"0"_s, u"06, 3611"_s);
        for (const QByteArray &raw :
             QByteArray("0388123456|03 88 12 34 56|03.88.12.34.56|03/88-12 34 56|(03) 88 12 34 56|388123456|"
                        "+33388123456|+33 (0)3 88 12 34 56|+33 0388123456|(+33) 388 12 34 56|0033388123456|"
                        "00 33 (0)3 88 12 34 56|33388123456|tel:+33-3-88-12-34-56|TEL:388123456;phone-context=+33|"
                        "tel:+33388123456;ext=12|０３８８１２３４５６|＋３３ ３８８１２３４５６|٠٣٨٨١٢٣٤٥٦|"
                        "\u202a+33 3 88 12\u00a034\u201156\u202c|03 88 12 34 56 ext. 12|0388123456x7| 0388123456\t")
                 .split('|'))
            row("France", france, raw, strasbourg);
        row("France, with prefix", france, "00388123456", strasbourg);
        row("France, with prefix", france, "0 03 88 12 34 56", strasbourg);
        row("France, with prefix", france, "00033388123456", strasbourg);
        row("France, with prefix", france, "0 0049 30 1234567", "+49301234567");
        row("France, with prefix", france, "0 00 33 (0)3 88 12 34 56", strasbourg);
        row("France, no prefix", france, "0049301234567", "+49301234567");
        row("France, service", france, "0 0800 123 456", "+33800123456");
        row("France, not assigned but possible", france, "0 0860 12 34 56", "+33860123456");
        row("France, too short for its zero", france, "0033 0 88 12 34 56");
        for (const QByteArray &raw :
             QByteArray("|3611|12345|12 345|112|*21*0388123456#|#31#0388123456|Zoë|Reception|bob@example.com|"
                        "0388123456 home|0388123456 ou 57|03 88 12 34 56 / 57|--|+|+33|+999 123456|0+33388123456|"
                        "123456789012345678901234567890|038812345|tel:|sip:0388123456@a.b")
                 .split('|'))
            row("France, unchanged", france, raw);
        row("France, too long", france, QByteArray(300, '3'));
        row("France, long but a number", france, "0388123456" + QByteArray(200, ' '), strasbourg);

        const DialingRules exceptions = rules(u"33"_s, QString(), u"9"_s, u"90;3611"_s);
        row("France, prefix 9", exceptions, "9 01 42 68 53 00"); // begins with an exception
        row("France, prefix 9", exceptions, "9 0033 1 42 68 53 00");
        row("France, prefix 9", exceptions, "9 142 68 53 00", "+33142685300");
        row("France, prefix 9", exceptions, "01 42 68 53 00", "+33142685300");

        const DialingRules berlin = rules(u"0049"_s, u"030"_s, u"0"_s);
        row("Germany", berlin, "030 1234567", "+49301234567");
        row("Germany", berlin, "0 030 1234567", "+49301234567");
        row("Germany", berlin, "1234567", "+49301234567");
        row("Germany", berlin, "0 1234567", "+49301234567");
        row("Germany", berlin, "0 04421 123456", "+494421123456");
        row("Germany", berlin, "0 0033 3 88 12 34 56", strasbourg);
        row("Germany", berlin, "0030 21 0123 4567", "+302101234567"); // Athens, as written
        row("Germany", berlin, "089/636-48018", "+498963648018");
        row("Germany, prefix 9", rules(u"49"_s, u"30"_s, u"9"_s), "9 030 1234567", "+49301234567");

        const DialingRules newYork = rules(u"1"_s, u"212"_s, u"9"_s);
        for (const QByteArray &raw :
             QByteArray("(212) 555-0123|1-212-555-0123|9 1 212 555 0123|9-212-555-0123|555-0123|9 555 0123|"
                        "+1 212 555 0123")
                 .split('|'))
            row("USA", newYork, raw, "+12125550123");
        row("USA", newYork, "912 355 0123", "+19123550123");
        row("USA", newYork, "9 011 33 3 88 12 34 56", strasbourg);
        row("USA", newYork, "0033 3 88 12 34 56", strasbourg);
        row("USA, letters", newYork, "1-800-FLOWERS", "+18003569377");
        row("USA, letters", newYork, "212 555 HOME");

        const DialingRules rome = rules(u"39"_s, QString(), u"0"_s);
        row("Italy", rome, "06 1234 5678", "+390612345678");
        row("Italy", rome, "0 06 1234 5678", "+390612345678");
        row("Italy", rome, "+39 (0)6 1234 5678", "+390612345678");
        row("Spain", rules(u"34"_s, QString(), u"0"_s), "0 912 345 678", "+34912345678");

        for (const DialingRules &unknown : {DialingRules(), rules(u"999"_s, QString(), QString())}) {
            row("no country", unknown, "+33 3 88 12 34 56", strasbourg);
            row("no country", unknown, "0033 3 88 12 34 56");
            row("no country", unknown, "0388123456");
        }
    }

    void canonicalForms()
    {
        QFETCH(DialingRules, under);
        QFETCH(QString, raw);
        QFETCH(QString, expected);
        const NumberFormatter formatter(under);
        const QString canonical = formatter.canonical(raw);
        QCOMPARE(canonical, expected.isEmpty() ? raw : expected);
        QCOMPARE(formatter.canonical(canonical), canonical);
    }

    void dialableForms()
    {
        const NumberFormatter formatter{DialingRules()};
        const QMap<QString, QString> forms{{u"03 88.12-34/56"_s, u"0388123456"_s},
                                           {u"+33 (0)3 88 12 34 56"_s, u"+33388123456"_s},
                                           {u"00 33 (0)3 88 12 34 56"_s, u"0033388123456"_s},
                                           {u"+39 (0)6 1234 5678"_s, u"+390612345678"_s},
                                           {u"(0) 388 12 34 56"_s, u"0388123456"_s},
                                           {u"tel:+33-388-123456;ext=1"_s, u"+33388123456"_s},
                                           {u"*21* 12 34 #"_s, u"*21*1234#"_s},
                                           {u"１２３４"_s, u"1234"_s}};
        for (auto form = forms.cbegin(); form != forms.cend(); ++form)
            QCOMPARE(formatter.dialable(form.key()), form.value());
        for (const QString &raw : u"4711||Zoë|1-800-FLOWERS|0388123456x12|bob@example.com|12 +33"_s.split(u'|'))
            QCOMPARE(formatter.dialable(raw), raw);
    }

    void rulesFollowTheSettings()
    {
        const QString number = u"0388123456"_s;
        const QString inFrance = u"+33388123456"_s;
        const QString countryCode = u"DialingRuleCountryCode"_s;
        const QTemporaryDir folder;
        Program telephony(u"kestin-telephony"_s);
        QVERIFY(telephony.startAndWaitForName(module, m_bus->connection));
        QCOMPARE(canonical(number), number);
        QVERIFY(telephony.waitForErrorOutput(u"<4>The dialing rules cannot be read from the settings: "_s));

        // Nothing is waited for: who has the answer of a write, or sees the settings manager, is served by the new
        // rules.
        const auto settings = [&folder](const char *file) {
            const QStringList arguments{u"--file"_s, folder.filePath(QLatin1String(file))};
            return std::make_unique<Program>(u"kestin-settings"_s, arguments);
        };
        std::unique_ptr<Program> manager = settings("one.ini");
        QVERIFY(manager->startAndWaitForName(ModuleName::settings, m_bus->connection));
        QCOMPARE(canonical(number), number);
        QCOMPARE(set(countryCode, u"33"_s), 0);
        QCOMPARE(canonical(number), inFrance);
        QCOMPARE(set(u"DialingRuleMinNumberLength"_s, u"11"_s), 0);
        QCOMPARE(canonical(number), number);
        QCOMPARE(set(u"DialingRuleMinNumberLength"_s, u"10"_s), 0);
        QCOMPARE(canonical(number), inFrance);
        manager->kill();
        QCOMPARE(canonical(number), inFrance);
        manager = settings("two.ini");
        QVERIFY(manager->startAndWaitForName(ModuleName::settings, m_bus->connection));
        QCOMPARE(canonical(number), number);
        QCOMPARE(telephony.terminate(), 0);
    }

    void listsAndMapsKeepTheirOrder()
    {
        Program telephony(u"kestin-telephony"_s);
        QVERIFY(telephony.startAndWaitForName(module, m_bus->connection));
        const QStringList raw{QString(), u"+33 388123456"_s, u"Zoë"_s, u"4 7"_s, u"+33 388123456"_s};
        const QString e164 = u"+33388123456"_s;
        QMapQStringQStringList contacts;
        QMapQStringQStringList expected;
        for (int i = 0; i < 3000; ++i) {
            contacts.insert(u"#CONTACT_%1#"_s.arg(i), raw.mid(i % 6));
            expected.insert(u"#CONTACT_%1#"_s.arg(i), QStringList{raw[0], e164, raw[2], raw[3], e164}.mid(i % 6));
        }
        const QDBusMessage map =
            m_bus->call(module, u"makeCanonicalNumberMapWithoutPrefix"_s, {QVariant::fromValue(contacts)});
        QCOMPARE(qdbus_cast<QMapQStringQStringList>(map.arguments().value(0)), expected);
        const QDBusMessage list = m_bus->call(module, u"extractDialableNumberList"_s, {raw});
        QCOMPARE(list.arguments().value(0).toStringList(), (QStringList{raw[0], e164, raw[2], u"47"_s, e164}));
        const QList<QVariantList> wrong{{}, {1}, {u"0388123456"_s}, {QVariant::fromValue(contacts)}};
        for (const QVariantList &arguments : wrong)
            QCOMPARE(m_bus->call(module, u"extractDialableNumberList"_s, arguments).errorName(),
                     u"org.freedesktop.DBus.Error.UnknownMethod"_s);
    }

    void modeIsGiven()
    {
        for (const QString &mode : {u"advanced"_s, u"basic"_s}) {
            const QStringList arguments =
                mode == STR_KESTIN_MODE_ADVANCED ? QStringList() : QStringList{u"--mode"_s, mode};
            Program telephony(u"kestin-telephony"_s, arguments);
            QVERIFY(telephony.startAndWaitForName(module, m_bus->connection));
            const QDBusMessage reply = m_bus->call(module, u"getKestinMode"_s);
            QCOMPARE(qdbus_cast<KestinMode>(reply.arguments().value(0)), KestinMode{mode});
        }
        Program wrong(u"kestin-telephony"_s, {u"--mode"_s, u"full"_s});
        QCOMPARE(wrong.run(), 1);
        QVERIFY(wrong.errorOutput().contains(QLatin1String("--mode takes basic, advanced or unknown")));
    }

private:
    QString canonical(const QString &number)
    {
        const QDBusMessage reply =
            m_bus->call(module, u"makeCanonicalNumberListWithoutPrefix"_s, {QStringList{number}});
        return reply.arguments().value(0).toStringList().value(0);
    }

    int set(const QString &key, const QString &value)
    {
        const QDBusMessage reply = m_bus->call(ModuleName::settings, u"setSettingValue"_s, {key, value});
        return qdbus_cast<UpdateReport>(reply.arguments().value(0)).code;
    }

    std::unique_ptr<PeerBus> m_bus;
};

QTEST_GUILESS_MAIN(TelephonyTest)
#include "TelephonyTest.moc"
