// SPDX-License-Identifier: Apache-2.0
#include "client/commands/HelpText.h"

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
    QString text = QStringLiteral("Usage: kestin-dir COMMAND [options] [arguments]\n\n"
                                  "Works with the contact directory of the phone over the message bus.\n\n"
                                  "Commands (kestin-dir COMMAND --help tells more of each):\n");
    for (const auto &command : commands)
        text += aligned(command->name(), commandColumn, command->summary());
    return text +
           QStringLiteral(
               "\nOptions:\n"
               "  --help, -h               This text\n"
               "  --version                The version of the program\n"
               "\nEnvironment:\n"
               "  KESTIN_BUS       The message bus: \"system\" (default), \"session\", or an address\n"
               "  KESTIN_DATA_DIR  The folder in the place of /data, as for the directory (photos)\n"
               "\nExit codes:\n"
               "  0  done\n"
               "  1  refused by the directory or the settings manager, all or a part; nobody found; interrupted\n"
               "  2  the command line makes no sense\n"
               "  3  the bus or the service cannot be reached\n"
               "  4  a file cannot be read, or the output cannot be written\n"
               "  5  a service gave no answer in time\n"
               "\nExamples:\n"
               "  kestin-dir add --first-name Zoë --last-name Müller --office '+33 1 55 66 70 00'\n"
               "  kestin-dir list\n"
               "  kestin-dir show '#CONTACT_1#'        (quote ids: a shell takes # as a comment)\n"
               "  kestin-dir who '+33 1 55 66 70 00'\n"
               "  kestin-dir search mül\n"
               "  kestin-dir import people.vcf\n");
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
