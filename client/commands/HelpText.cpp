// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Dispatcher.h"
#include "client/text/Terminal.h"
#include "platform/records/KestinPaths.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int commandColumn = 11;
constexpr int optionColumn = 24;

QString aligned(const QString &left, int width, const QString &right)
{
    return QStringLiteral("  %1 %2\n").arg(left.leftJustified(width), right);
}

QString optionLine(const QCommandLineOption &option)
{
    const QStringList names = option.names();
    QString left = QLatin1String("--") + names.last();
    if (!option.valueName().isEmpty())
        left += QLatin1Char(' ') + option.valueName();
    if (names.size() > 1)
        left += QLatin1String(", -") + names.first();
    return aligned(left, optionColumn, option.description());
}

/// Where the text begins that stands behind a name, for the lines that go on with it.
qsizetype hangingIndent(const QString &line)
{
    static const QRegularExpression named(QStringLiteral("^(Usage: +kestin-dir|       kestin-dir| +\\S.*?  +| *)"));
    const qsizetype indent = named.match(line).capturedLength();
    return line.contains(QLatin1String("kestin-dir ")) ? indent + 1 : indent;
}

QString broken(const QString &line, int width)
{
    constexpr qsizetype roomForText = 20;
    const qsizetype indent = hangingIndent(line);
    const bool isExample = line.startsWith(QLatin1String("  kestin-dir "));
    if (DisplayWidth::of(line) <= width || isExample || width < indent + roomForText)
        return line + QLatin1Char('\n');
    QString text = line.left(indent);
    const QStringList lines = DisplayWidth::wrapped(line.mid(indent), width - int(indent));
    for (qsizetype index = 0; index < lines.size(); ++index)
        text += (index > 0 ? QString(indent, QLatin1Char(' ')) : QString()) + lines.at(index) + QLatin1Char('\n');
    return text;
}

} // namespace

QString HelpText::fitted(const QString &page, int terminalWidth)
{
    constexpr int widest = 100;
    if (terminalWidth <= 0)
        return page;
    const int width = std::min(terminalWidth, widest);
    QString result;
    QString paragraph;
    const auto end = [&] {
        result += paragraph.isEmpty() ? QString() : broken(paragraph, width);
        paragraph.clear();
    };
    for (const QString &line : page.split(QLatin1Char('\n'))) {
        const bool goesOn = !paragraph.isEmpty() && !line.isEmpty() && !line.startsWith(QLatin1Char(' ')) &&
                            !paragraph.startsWith(QLatin1Char(' ')) && !paragraph.endsWith(QLatin1Char(':'));
        if (goesOn) {
            paragraph += QLatin1Char(' ') + line;
            continue;
        }
        end();
        paragraph = line;
        if (line.isEmpty())
            result += QLatin1Char('\n');
    }
    end();
    result.chop(1); // the end of the last line
    return result;
}

QString HelpText::ofProgram(const std::vector<std::unique_ptr<Command>> &commands)
{
    QString text = QStringLiteral(R"(Usage: kestin-dir COMMAND [options] [arguments]

Works with the contact directory of the phone over the message bus.

Commands (kestin-dir help COMMAND tells more of each):
)");
    for (const auto &command : commands)
        text += aligned(command->name(), commandColumn, command->summary());
    text += aligned(QStringLiteral("help"), commandColumn, QStringLiteral("tell more of a COMMAND"));
    return text + QStringLiteral(
                      R"(
Options:
  --help, -h               This text
  --version, -V            The version of the program

Environment:
  KESTIN_BUS       The message bus: "system" (default), "session", or an address
  KESTIN_DATA_DIR  The folder in the place of %1, as for the directory (photos)

Exit codes:
  0  done
  1  refused by the directory or the settings manager, all or a part; nobody found; interrupted
  2  the command line makes no sense
  3  the bus or the service cannot be reached
  4  a file cannot be read, or the output cannot be written
  5  a service gave no answer in time

With --json data are printed as JSON, whose keys are the names of the fields, and each problem is an
object on a line of standard error: {"problem": "..."}, that which ended the command with "exitCode"
beside. What is no problem is a {"note": "..."} there.

Examples:
  kestin-dir add --first-name Zoë --last-name Müller --office '+33 1 55 66 70 00'
  kestin-dir list
  kestin-dir show '#CONTACT_1#'        (quote ids: a shell takes # as a comment)
  kestin-dir who '+33 1 55 66 70 00'
  kestin-dir search mül
  kestin-dir import people.vcf
)")
                      .arg(KestinPaths::defaultRoot());
}

QString HelpText::ofCommand(const Command &command, const QList<QCommandLineOption> &options)
{
    const CommandHelp help = command.help();
    QString text;
    for (const QString &usage : help.usage)
        text += (text.isEmpty() ? QLatin1String("Usage: kestin-dir ") : QLatin1String("       kestin-dir ")) + usage +
                QLatin1Char('\n');
    text += QLatin1Char('\n') + help.text + QLatin1String("\n\nOptions:\n");
    for (const QCommandLineOption &option : options)
        text += optionLine(option);
    text += QLatin1String("\nExamples:\n");
    for (const QString &example : help.examples)
        text += QLatin1String("  ") + example + QLatin1Char('\n');
    return text;
}
