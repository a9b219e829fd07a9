// SPDX-License-Identifier: Apache-2.0
#include "client/commands/CommandArguments.h"

#include "client/text/ContactTable.h"
#include "client/text/Suggestion.h"

#include <algorithm>

namespace {

CommandFailure usage(const QString &text)
{
    return {ExitCode::Usage, text};
}

} // namespace

int CommandArguments::number(const QCommandLineParser &arguments, const QString &option, int fallback, int minimum)
{
    if (!arguments.isSet(option))
        return fallback;
    bool isNumber = false;
    const int number = arguments.value(option).toInt(&isNumber);
    if (!isNumber || number < minimum)
        throw usage(QStringLiteral("--%1 takes a whole number from %2 on, not \"%3\"")
                        .arg(option, QString::number(minimum), arguments.value(option)));
    return number;
}

QCommandLineOption CommandArguments::columnsOption()
{
    return {QStringLiteral("columns"), QStringLiteral("Columns of the table, with commas between them"),
            QStringLiteral("LIST")};
}

QStringList CommandArguments::columns(const QCommandLineParser &arguments)
{
    if (!arguments.isSet(QStringLiteral("columns")))
        return {};
    const QStringList names = arguments.value(QStringLiteral("columns")).split(QLatin1Char(','));
    const bool hasUnknown =
        std::any_of(names.begin(), names.end(), [](const QString &name) { return !ContactTable::isColumn(name); });
    if (hasUnknown)
        throw usage(QStringLiteral("--columns takes names with commas between them: %1, misc.KEY; not \"%2\"")
                        .arg(ContactTable::columnNames().join(QLatin1String(", ")),
                             arguments.value(QStringLiteral("columns"))));
    return names;
}

QStringList CommandArguments::some(const QStringList &positional, const QString &what)
{
    if (!positional.isEmpty() && !positional.contains(QString()))
        return positional;
    const QString hint =
        what == QLatin1String("ID") ? QStringLiteral(" (quote an id: a shell takes # as a comment)") : QString();
    throw usage(QStringLiteral("%1 is missing").arg(what) + hint);
}

QString CommandArguments::one(const QStringList &positional, const QString &what)
{
    const QStringList all = some(positional, what);
    if (all.size() > 1)
        throw usage(QStringLiteral("only one %1 is taken, \"%2\" is too much").arg(what, all.at(1)));
    return all.first();
}

CommandFailure CommandArguments::unknownAction(const QCommandLineParser &arguments, const QStringList &actions)
{
    const QString word = arguments.positionalArguments().value(0);
    const QString all =
        actions.mid(0, actions.size() - 1).join(QLatin1String(", ")) + QLatin1String(" or ") + actions.last();
    return usage(QStringLiteral("%1 is taken, not \"%2\"").arg(all, word) + Suggestion::phrase(word, actions));
}

void CommandArguments::none(const QStringList &positional)
{
    if (!positional.isEmpty())
        throw usage(QStringLiteral("\"%1\" is too much").arg(positional.first()));
}
