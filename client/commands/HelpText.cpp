// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Dispatcher.h"

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

} // namespace

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
  KESTIN_DATA_DIR  The folder in the place of /data, as for the directory (photos)

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
)");
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
