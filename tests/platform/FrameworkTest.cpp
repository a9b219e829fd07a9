// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"
#include "platform/framework/PlatformCalls.h"
#include "platform/framework/ProcessSignals.h"
#include "platform/records/UpdateReport.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Rows.h"
#include "tests/support/ScriptedTransport.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// A peer that answers reads with the text and writes with a report, or fails in one of the ways in which a call can.
QDBusMessage answerOf(const QString &peer, const ScriptedTransport::Call &call, const QDBusMessage &message)
{
    if (peer == "refuses"_L1)
        return ScriptedTransport::noPeer(message);
    if (peer == "raises"_L1)
        throw KestinException(u"M"_s, KestinException::RemoteCallFailed, u"no\nbus"_s);
    if (peer == "raises other"_L1)
        throw std::runtime_error("other");
    if (peer == "answers a number"_L1)
        return message.createReply(5);
    const bool isRead = call.method == "getSettingValue"_L1;
    return message.createReply(isRead ? QVariant(peer) : QVariant::fromValue(UpdateReport{7, peer}));
}

/// What a wrapper gives back, as a text.
QString result(PlatformCalls &calls, const QString &operation)
{
    const QString key = u"Key"_s;
    if (operation == "text"_L1)
        return calls.getStringSetting(key).value_or(u"nothing"_s);
    if (operation == "number"_L1) {
        const std::optional<int> value = calls.getIntSetting(key);
        return value ? QString::number(*value) : u"nothing"_s;
    }
    if (operation == "optional"_L1)
        return calls.getSetting(key);
    if (operation == "confirmed"_L1)
        return calls.setSettingConfirmed(key, u"http://me:secret@h/%1"_s) ? u"yes"_s : u"no"_s;
    if (operation == "write"_L1)
        calls.setIntSetting(key, -5);
    else
        calls.callModule(u"Other"_s, u"doIt"_s, {1, u"a"_s});
    return {};
}

/// Becomes a text only when somebody formats it.
struct Counted
{
    operator QString() const { return QString::number(++count); }
    static inline int count = 0;
};

} // namespace

class FrameworkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatIsOnIsFormattedAndWritten()
    {
        const QStringList lines{u"<3>e1"_s, u"<4>w2"_s, u"<6>i3"_s, u"<7>d4"_s};
        for (const int level : {2, 3, 4, 5, 6, 7}) {
            const LogCapture log(level);
            Counted::count = 0;
            KestinLogger::error("e%1", Counted());
            KestinLogger::warning("w%1", Counted());
            KestinLogger::info("i%1", Counted());
            KestinLogger::debug("d%1", Counted());
            QCOMPARE(log.lines, lines.first(level > 4 ? level - 3 : level - 2));
            QCOMPARE(Counted::count, log.lines.size());
        }
    }

    void noArgumentForgesALine_data()
    {
        const Rows<QString, QString> row("argument", "shown");
        row("line feed", u"a\n<3>b"_s, u"a\\n<3>b"_s);
        row("carriage return", u"\ra\t"_s, u"\\ra\\t"_s);
        row("terminal escape, NUL", u"\u001b[2J\0"_s, u"\\u001b[2J\\u0000"_s);
        row("other line ends", u"\u0085\u2028\u2029"_s, u"\\u0085\\u2028\\u2029"_s);
        row("placeholder", u"%2%1"_s, u"%2%1"_s);
        row("letters", u"\u00fc \U0001F600"_s, u"\u00fc \U0001F600"_s);
    }

    void noArgumentForgesALine()
    {
        QFETCH(QString, argument);
        QFETCH(QString, shown);
        const LogCapture log;
        KestinLogger::info("%1:\n%2", argument, argument);
        QCOMPARE(log.lines, (QStringList{"<6>"_L1 + shown + u':', "<6>"_L1 + shown}));
    }

    void aFailedCallIsLoggedOnceAndHarmless_data()
    {
        const Rows<QString, QString> row("gives", "lines"); // of the operation with a peer that does so
        row("text, abc", "abc", "");
        row("text, ", "", "");
        row("text, refuses", "nothing", "<3>ERROR: While getting value of Key, reply is invalid");
        row("text, answers a number", "nothing", "<3>ERROR: While getting value of Key, reply is invalid");
        row("text, raises", "nothing", "<3>ERROR: While getting value of Key:|<3>no\\nbus");
        row("text, raises other", "nothing", "<3>ERROR: While getting value of Key");
        row("number, -12", "-12", "");
        row("number, 12abc", "0", "");
        row("number, 0x10", "0", "");
        row("number, refuses", "nothing", "<3>ERROR: While getting value of Key, reply is invalid");
        row("number, raises", "nothing", "<3>ERROR: While getting value of Key:|<3>no\\nbus");
        row("optional, abc", "abc", "");
        row("optional, refuses", "", "<4>Can't get the setting :Key.");
        row("optional, raises", "", "<4>Can't get the setting :Key.");
        row("write, refuses", "", "");
        row("write, raises", "", "<3>ERROR: While setting value of Key:|<3>no\\nbus");
        row("write, raises other", "", "<3>ERROR: While setting value of Key");
        row("confirmed, whatever the report says", "yes", "");
        row("confirmed, refuses", "no", "<3>ERROR 1: While setting Key with value : http://h/%1");
        row("confirmed, raises", "no", "<3>ERROR 2: While setting Key with value : http://h/%1");
        row("confirmed, raises other", "no", "<3>ERROR 2: While setting Key with value : http://h/%1");
        row("call, refuses", "", "");
        row("call, raises", "", "<3>ERROR: While calling method doIt of module Other (no\\nbus)");
        row("call, raises other", "", "<3>ERROR: While calling method doIt of module Other");
    }

    void aFailedCallIsLoggedOnceAndHarmless()
    {
        const QString operation = QString(QTest::currentDataTag()).section(", ", 0, 0);
        const QString peer = QString(QTest::currentDataTag()).section(", ", 1);
        const LogCapture log;
        ScriptedTransport transport;
        transport.answer = [&peer](const auto &call, const auto &message) { return answerOf(peer, call, message); };
        PlatformCalls calls(transport);
        QTEST(result(calls, operation), "gives");
        QTEST(log.lines.join(u'|'), "lines");
    }

    void callsAreSentAsTheyAreAsked()
    {
        const LogCapture log;
        ScriptedTransport transport;
        PlatformCalls calls(transport);
        for (const char *operation : {"text", "number", "optional", "write", "confirmed", "call"})
            result(calls, QLatin1String(operation));
        QStringList sent;
        for (const ScriptedTransport::Call &call : std::as_const(transport.calls)) {
            sent.append(call.module + u' ' + call.method + (call.wantsAnswer ? u""_s : u" unanswered"_s));
            for (const QVariant &argument : call.arguments)
                sent.last() += u" %1(%2)"_s.arg(QLatin1String(argument.typeName()), argument.toString());
        }
        const QString read = u"SettingsManager getSettingValue QString(Key)"_s;
        QCOMPARE(sent, (QStringList{read, read, read,
                                    u"SettingsManager setSettingValue unanswered QString(Key) QString(-5)"_s,
                                    u"SettingsManager setSettingValue QString(Key) QString(http://me:secret@h/%1)"_s,
                                    u"Other doIt unanswered int(1) QString(a)"_s}));
    }

    void aSignalWhileAProgramEndsDoesNotBreakItOff()
    {
        {
            const ProcessSignals signals;
        }
        raise(SIGTERM);
        sigset_t pending;
        QVERIFY(sigpending(&pending) == 0 && sigismember(&pending, SIGTERM) == 1);
    }
};

QTEST_GUILESS_MAIN(FrameworkTest)
#include "FrameworkTest.moc"
