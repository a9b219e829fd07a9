// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/PeerServices.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Report.h"
#include "client/text/Suggestion.h"
#include "client/text/Terminal.h"

#include <algorithm>

namespace {

/// Whether the settings manager knows more of it than that somebody wrote it.
bool isDescribed(const Setting &setting)
{
    return !setting.label.isEmpty() || !setting.description.isEmpty();
}

QStringList keysOf(const ListSetting &settings)
{
    QStringList keys;
    for (const Setting &setting : settings) {
        if (isDescribed(setting))
            keys.append(setting.key);
    }
    return keys;
}

CommandFailure unknown(const QString &key, const ListSetting &settings, const QString &more = {})
{
    return {ExitCode::Refused,
            QStringLiteral("no setting is called %1%2%3").arg(key, Suggestion::phrase(key, keysOf(settings)), more)};
}

Setting described(const QString &key, const BusSession &bus, const QString &otherWay = {})
{
    const ListSetting settings = SettingsService(bus).all();
    for (const Setting &setting : settings) {
        if (setting.key == key && isDescribed(setting))
            return setting;
    }
    throw unknown(key, settings, otherWay);
}

void tell(const QString &key, const QString &value, bool inText, CommandContext &context)
{
    if (context.json)
        Report::json(context.out, {{QStringLiteral("key"), key}, {QStringLiteral("value"), value}});
    else if (inText)
        context.out << Printable::text(value) << '\n';
}

void get(const QString &key, CommandContext &context)
{
    const SettingsService service(context.bus);
    QString value;
    try {
        value = service.value(key);
    } catch (const CommandFailure &failure) {
        if (failure.code() != ExitCode::Refused)
            throw;
        throw unknown(key, service.all());
    }
    tell(key, value, true, context);
}

void set(const QStringList &keyAndValue, bool isForced, CommandContext &context)
{
    if (keyAndValue.size() != 2)
        throw CommandFailure(ExitCode::Usage, QStringLiteral("settings set takes a KEY and a VALUE"));
    if (!isForced)
        described(keyAndValue.first(), context.bus, QStringLiteral(" (settings set --force writes it all the same)"));
    SettingsService(context.bus).setValue(keyAndValue.first(), keyAndValue.last());
    tell(keyAndValue.first(), keyAndValue.last(), false, context);
}

void reset(const QString &key, CommandContext &context)
{
    const Setting setting = described(key, context.bus);
    SettingsService(context.bus).setValue(key, setting.defaultValue);
    tell(key, setting.defaultValue, true, context);
}

QString valueText(const QString &value)
{
    return value.isEmpty() ? QStringLiteral("\"\"") : value;
}

/// "0 to 100000 contacts; default 1000", as far as there is something to say.
QString limitsOf(const Setting &setting)
{
    QStringList parts;
    QStringList choices;
    for (const auto &[value, label] : setting.choices)
        choices.append(QStringLiteral("%1 (%2)").arg(value, label));
    if (setting.minimum < setting.maximum && choices.isEmpty())
        parts.append(
            QStringLiteral("%1 to %2 %3").arg(setting.minimum).arg(setting.maximum).arg(setting.unit).trimmed());
    if (!choices.isEmpty())
        parts.append(choices.join(QLatin1String(" or ")));
    if (setting.value != setting.defaultValue)
        parts.append(QStringLiteral("default %1").arg(valueText(setting.defaultValue)));
    if (setting.rebootRequired)
        parts.append(QStringLiteral("counts from the next start"));
    if (setting.readOnly)
        parts.append(QStringLiteral("cannot be changed"));
    return parts.join(QLatin1String("; "));
}

void explain(const Setting &setting, QTextStream &out)
{
    const QString indent(4, QLatin1Char(' '));
    const int columns = Terminal::outputWidth();
    const int width = columns == 0 ? 0 : std::max(1, columns - int(indent.size()));
    out << Printable::text(setting.key) << " = " << Printable::text(valueText(setting.value)) << '\n';
    const QString text =
        isDescribed(setting) ? setting.description : QStringLiteral("Not described by the settings manager");
    for (const QString &paragraph : {text, limitsOf(setting)}) {
        for (const QString &line : DisplayWidth::wrapped(Printable::text(paragraph), width))
            out << (line.isEmpty() ? QString() : indent + line + QLatin1Char('\n'));
    }
}

void list(const QStringList &texts, CommandContext &context)
{
    ListSetting settings = SettingsService(context.bus).all();
    const ListSetting all = settings;
    settings.removeIf([&texts](const Setting &setting) {
        const QString place = setting.key + QLatin1Char(' ') + setting.label + QLatin1Char(' ') + setting.description;
        return std::any_of(texts.begin(), texts.end(),
                           [&place](const QString &text) { return !place.contains(text, Qt::CaseInsensitive); });
    });
    if (context.json)
        Report::json(context.out, settings);
    if (settings.isEmpty() && !texts.isEmpty())
        throw unknown(texts.join(QLatin1Char(' ')), all);
    for (const Setting &setting : std::as_const(settings)) {
        if (!context.json)
            explain(setting, context.out);
    }
}

} // namespace

CommandHelp SettingsCommand::help() const
{
    return {
        {QStringLiteral("settings [list [TEXT...]]"), QStringLiteral("settings get KEY"),
         QStringLiteral("settings set KEY VALUE [--force]"), QStringLiteral("settings reset KEY")},
        QStringLiteral(
            R"(Reads and changes the platform's settings. The settings manager tells the modules that a setting
concerns when it changes. List explains every setting, or those with the TEXT in their key or
explanation. Reset gives a setting its default again and prints that. A setting that the settings
manager does not describe is written only with --force: nobody would read it.)"),
        {QStringLiteral("kestin-dir settings list dialing"), QStringLiteral("kestin-dir settings get DirMaxContact"),
         QStringLiteral("kestin-dir settings set DirMaxContact 500"),
         QStringLiteral("kestin-dir settings reset DirMaxContact"), QStringLiteral("kestin-dir settings list --json")}};
}

QList<QCommandLineOption> SettingsCommand::options() const
{
    return {
        {QStringLiteral("force"), QStringLiteral("Set: also a setting that the settings manager does not describe")}};
}

ExitCode SettingsCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    QStringList rest = arguments.positionalArguments();
    const QString action = rest.isEmpty() ? QStringLiteral("list") : rest.takeFirst();
    if (action == QLatin1String("get"))
        get(CommandArguments::one(rest, QStringLiteral("KEY")), context);
    else if (action == QLatin1String("set"))
        set(rest, arguments.isSet(QStringLiteral("force")), context);
    else if (action == QLatin1String("reset"))
        reset(CommandArguments::one(rest, QStringLiteral("KEY")), context);
    else if (action == QLatin1String("list"))
        list(rest, context);
    else
        throw CommandArguments::unknownAction(
            arguments, {QStringLiteral("list"), QStringLiteral("get"), QStringLiteral("set"), QStringLiteral("reset")});
    return ExitCode::Done;
}
