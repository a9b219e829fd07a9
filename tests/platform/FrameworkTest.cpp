// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinException.h"
#include "platform/framework/PlatformCalls.h"
#include "platform/framework/ProcessSignals.h"
#include "platform/records/UpdateReport.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScriptedTransport.h"
#include "tests/support/Test.h"

#include <csignal>

namespace {

/// A peer that answers reads with the text and writes with a report, or fails in one of the ways in which a call can.
QDBusMessage answerOf(const QString &peer, const ScriptedTransport::Call &call, const QDBusMessage &message)
{
    if (peer == "refuses")
        return ScriptedTransport::noPeer(message);
    if (peer == "raises")
        throw KestinException("M", KestinException::RemoteCallFailed, "no\nbus");
    if (peer == "raises other")
        throw std::runtime_error("other");
    if (peer == "answers a number")
        return message.createReply(5);
    const bool isRead = call.method == "getSettingValue";
    return message.createReply(isRead ? QVariant(peer) : QVariant::fromValue(UpdateReport{7, peer}));
}

/// What a wrapper gives back, as a text.
QString result(PlatformCalls &calls, const QString &operation)
{
    const QString key = "Key";
    if (operation == "text")
        return calls.getStringSetting(key).value_or("nothing");
    if (operation == "number") {
        const std::optional<int> value = calls.getIntSetting(key);
        return value ? QString::number(*value) : "nothing";
    }
    if (operation == "optional")
        return calls.getSetting(key);
    if (operation == "confirmed")
        return calls.setSettingConfirmed(key, "http://me:secret@h/%1") ? "yes" : "no";
    if (operation == "write")
        calls.setIntSetting(key, -5);
    else
        calls.callModule("Other", "doIt", {1, "a"});
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
        const QStringList lines{"<3>e1", "<4>w2", "<6>i3", "<7>d4"};
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
        const Rows<QString, QString> row;
        row("line feed", "a\n<3>b", "a\\n<3>b");
        row("carriage return", "\ra\t", "\\ra\\t");
        row("terminal escape, NUL", QString("\u001b[2J") + QChar(0), "\\u001b[2J\\u0000");
        row("other line ends", "\u0085\u2028\u2029", "\\u0085\\u2028\\u2029");
        row("placeholder", "%2%1", "%2%1");
        row("letters", "\u00fc \U0001F600", "\u00fc \U0001F600");
    }

    void noArgumentForgesALine()
    {
        const auto [argument, shown] = currentRow<QString, QString>();
        const LogCapture log;
        KestinLogger::info("%1:\n%2", argument, argument);
        QCOMPARE(log.lines, (QStringList{"<6>" + shown + ':', "<6>" + shown}));
    }

    void aFailedCallIsLoggedOnceAndHarmless_data()
    {
        const Rows<QString, QString> row; // of the operation with a peer that does so
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
        const auto [gives, lines] = currentRow<QString, QString>();
        const QString operation = QString(QTest::currentDataTag()).section(", ", 0, 0);
        const QString peer = QString(QTest::currentDataTag()).section(", ", 1);
        const LogCapture log;
        ScriptedTransport transport;
        transport.answer = [&peer](const auto &call, const auto &message) { return answerOf(peer, call, message); };
        PlatformCalls calls(transport);
        QCOMPARE(result(calls, operation), gives);
        QCOMPARE(log.lines.join('|'), lines);
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
            sent.append(call.module + ' ' + call.method + (call.wantsAnswer ? "" : " unanswered"));
            for (const QVariant &argument : call.arguments)
                sent.last() += QString(" %1(%2)").arg(QLatin1String(argument.typeName()), argument.toString());
        }
        const QString read = "SettingsManager getSettingValue QString(Key)";
        QCOMPARE(sent,
                 (QStringList{read, read, read, "SettingsManager setSettingValue unanswered QString(Key) QString(-5)",
                              "SettingsManager setSettingValue QString(Key) QString(http://me:secret@h/%1)",
                              "Other doIt unanswered int(1) QString(a)"}));
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
