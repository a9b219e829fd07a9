// SPDX-License-Identifier: Apache-2.0
#include "bench/Options.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr char description[] =
    R"(Measures the directory service over a message bus of its own, with the settings manager and the telephony
service beside it, all found beside this program. Every size begins with an empty data folder.
Run it on a quiet machine, with a release build, on the kind of disk that counts.

The store is filled with createLocalContacts; then single calls are made one after the other, and the median
and the 99th percentile of their times are printed in microseconds, as a table in Markdown, with what is wanted
of them. Groups of figures (--only):
  creates   single createLocalContact, and beside it what it cannot do without: an empty call, the two calls of
            the telephony service, a durable insert in bare SQLite
  starts    from the start of the process to its name on the bus
  lookups   by number and by id, and pages of 50, beside an empty call
  searches  by name, from the call to the first results and to the completion, for prefixes that 1, 20, 200 and
            2000 contacts have (2000 in a store of 10000 or more), and pages of 50 of the longest list; beside them
            an empty call and the query in bare SQLite
  flash     bytes written to the disk by a creation, a modification, a deletion and a start
  photos    the resizing of a large photo, and a start with 100 photos to resize
  sync      exports and imports of the whole store, in stores of up to 10000; beside them the same rows in bare
            SQLite and the XML; look-ups meanwhile; vCards with kestin-dir
  screen    the phone book in a window without a display, when kestin-presentation is there: from a call to its
            banner, from first results to the frame that shows them, the slowest frame while scrolling
  remote    searches by name in a company directory of 1, 10 and 100 packets of 20, when kestin-wsmanager is there
The contacts created per second and the memory are always measured.

Example:
  kestin-bench --sizes 1000,10000 --only lookups --work-dir /var/tmp

Exit codes: 0 measured, whatever the figures; 1 something could not be measured (the reason is on standard
error), or the command line is wrong.)";

[[noreturn]] void refuse(const QString &reason)
{
    std::fprintf(stderr, "kestin-bench: %s; see --help\n", qPrintable(reason));
    std::exit(EXIT_FAILURE);
}

int positive(const QString &text, const QString &what)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1)
        refuse(QStringLiteral("\"%1\" is no number for %2").arg(text, what));
    return number;
}

QList<int> sizesOf(const QString &text)
{
    QList<int> sizes;
    for (const QString &size : text.split(QLatin1Char(',')))
        sizes.append(positive(size, QStringLiteral("--sizes")));
    std::sort(sizes.begin(), sizes.end());
    return sizes;
}

QStringList groupsOf(const QString &text, const QStringList &known)
{
    const QStringList groups = text.split(QLatin1Char(','));
    for (const QString &group : groups) {
        if (!known.contains(group))
            refuse(QStringLiteral("there is no group \"%1\"").arg(group));
    }
    return groups;
}

} // namespace

Options Options::fromCommandLine()
{
    const QString allGroups = QStringLiteral("creates,starts,lookups,searches,photos,sync,flash,screen,remote");
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    parser.addHelpOption();
    parser.addVersionOption();
    const auto add = [&parser](const char *name, const char *text, const char *value, const QString &usual) {
        const QString help = QStringLiteral("%1 (%2).").arg(QLatin1String(text), usual);
        QCommandLineOption option(QLatin1String(name), help, QLatin1String(value));
        option.setDefaultValue(usual);
        parser.addOption(option);
    };
    add("sizes", "Contacts in the store", "list", QStringLiteral("1000,10000,100000"));
    add("only", "Groups to measure", "list", allGroups);
    add("work-dir", "Folder in which a temporary one is made for the data", "folder", QStringLiteral("."));
    add("calls", "Calls of each look-up", "number", QStringLiteral("2000"));
    add("creates", "Single creates, at most half of the store", "number", QStringLiteral("300"));
    add("searches", "Searches for each number of hits; a tenth as many remote ones", "number", QStringLiteral("300"));
    add("starts", "Starts of the service", "number", QStringLiteral("10"));
    add("batch", "Contacts in one createLocalContacts", "number", QStringLiteral("200"));
    parser.addOption({QStringLiteral("json"), QStringLiteral("Print the figures as JSON instead of a table.")});
    parser.process(*QCoreApplication::instance());
    if (!parser.positionalArguments().isEmpty())
        refuse(QStringLiteral("no arguments are expected"));

    const auto number = [&parser](const QString &name) { return positive(parser.value(name), name); };
    Options options;
    options.sizes = sizesOf(parser.value(QStringLiteral("sizes")));
    options.groups = groupsOf(parser.value(QStringLiteral("only")), allGroups.split(QLatin1Char(',')));
    options.workDirectory = QDir(parser.value(QStringLiteral("work-dir"))).absolutePath();
    options.json = parser.isSet(QStringLiteral("json"));
    options.calls = number(QStringLiteral("calls"));
    options.creates = number(QStringLiteral("creates"));
    options.searches = number(QStringLiteral("searches"));
    options.starts = number(QStringLiteral("starts"));
    options.batch = number(QStringLiteral("batch"));
    return options;
}
