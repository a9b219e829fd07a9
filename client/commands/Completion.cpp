// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Completion.h"

#include "client/bus/ContactPages.h"
#include "client/bus/DirectoryService.h"
#include "client/bus/PeerServices.h"
#include "client/commands/Dispatcher.h"
#include "client/text/ContactSelection.h"
#include "client/text/ContactTable.h"
#include "client/text/ContactText.h"
#include "client/text/Terminal.h"

#include <QDeadlineTimer>

#include <array>
#include <chrono>

namespace {

using Candidates = QList<Completion::Candidate>;

constexpr QLatin1String files(":files");

/// Milliseconds; a shell stands still meanwhile.
std::chrono::milliseconds patience()
{
    constexpr int usual = 1000;
    const int wanted = qEnvironmentVariableIntValue("KESTIN_COMPLETION_LIMIT");
    return std::chrono::milliseconds(wanted > 0 ? wanted : usual);
}

Candidates words(const QStringList &texts)
{
    Candidates candidates;
    for (const QString &text : texts)
        candidates.append({text, {}});
    return candidates;
}

using Page = ListContact (DirectoryService::*)(int, int) const;

Candidates contacts(Page page)
{
    const BusSession bus(patience());
    const DirectoryService directory(bus);
    const QDeadlineTimer limit(patience());
    ContactPages pages(
        [&](int from, int count) { return limit.hasExpired() ? ListContact() : (directory.*page)(from, count); });
    Candidates candidates;
    for (const Contact &contact : pages.read(0, ContactPages::toTheEnd))
        candidates.append({contact.contactId, contact.displayName()});
    return candidates;
}

Candidates storedContacts()
{
    return contacts(&DirectoryService::page);
}

Candidates previewedContacts()
{
    return contacts(&DirectoryService::previewPage);
}

Candidates settings()
{
    const BusSession bus(patience());
    Candidates candidates;
    for (const Setting &setting : SettingsService(bus).all())
        candidates.append({setting.key, setting.label});
    return candidates;
}

Candidates filesOfShell()
{
    return words({files});
}

/// What a command takes as arguments: behind `action`, where it has actions, else behind its name.
struct Place
{
    const char *command;
    const char *action;
    int first; ///< the first argument of this kind, from 0, and how many there may be
    int count;
    Candidates (*candidates)();
};

constexpr int any = 1000;
constexpr std::array<Place, 19> places{{
    {"show", "", 0, any, storedContacts},       {"edit", "", 0, 1, storedContacts},
    {"remove", "", 0, any, storedContacts},     {"photo", "", 0, 1, storedContacts},
    {"photo", "", 1, 1, filesOfShell},          {"import", "", 0, any, filesOfShell},
    {"export", "", 0, 1, filesOfShell},         {"preview", "list", 0, 0, nullptr},
    {"preview", "add", 0, any, storedContacts}, {"preview", "remove", 0, any, previewedContacts},
    {"settings", "list", 0, 0, nullptr},        {"settings", "get", 0, 1, settings},
    {"settings", "set", 0, 1, settings},        {"settings", "reset", 0, 1, settings},
    {"sync", "export", 0, 1, filesOfShell},     {"sync", "import", 0, 1, filesOfShell},
    {"recover", "", 0, 1, filesOfShell},        {"defaults", "show", 0, 0, nullptr},
    {"defaults", "set", 0, 1, filesOfShell},
}};

QStringList actionsOf(const QString &command)
{
    QStringList actions;
    for (const Place &place : places) {
        if (command == QLatin1String(place.command) && place.action[0] != '\0')
            actions.append(QLatin1String(place.action));
    }
    return actions;
}

/// `before` are the arguments that stand there already.
Candidates argumentsOf(const QString &command, QStringList before)
{
    const QStringList actions = actionsOf(command);
    if (!actions.isEmpty() && before.isEmpty())
        return words(actions);
    const QString action = actions.isEmpty() ? QString() : before.takeFirst();
    for (const Place &place : places) {
        const bool isMeant = command == QLatin1String(place.command) && action == QLatin1String(place.action) &&
                             before.size() >= place.first && before.size() < place.first + place.count;
        if (isMeant)
            return place.candidates();
    }
    return {};
}

/// What stands behind an option; names with commas between them go on behind the last comma.
Candidates optionValues(const QString &option, const QString &word)
{
    if (option == QLatin1String("photo") || option == QLatin1String("melody"))
        return filesOfShell();
    if (option == QLatin1String("type"))
        return words(ContactText::typeNames());
    if (option == QLatin1String("duplicates"))
        return words({QStringLiteral("skip"), QStringLiteral("update"), QStringLiteral("add")});
    if (option == QLatin1String("sort"))
        return words(ContactSelection::orders());
    if (option != QLatin1String("columns"))
        return {};
    QStringList lists;
    for (const QString &name : ContactTable::columnNames())
        lists.append(word.left(word.lastIndexOf(QLatin1Char(',')) + 1) + name);
    return words(lists);
}

Candidates optionsOf(const QList<QCommandLineOption> &options)
{
    Candidates candidates;
    for (const QCommandLineOption &option : options)
        candidates.append({QLatin1String("--") + option.names().last(), option.description()});
    return candidates;
}

/// The option that takes a value and stands last; empty when none does.
QString openOption(const QString &word, const QList<QCommandLineOption> &options)
{
    for (const QCommandLineOption &option : options) {
        if (!option.valueName().isEmpty() && word == QLatin1String("--") + option.names().last())
            return option.names().last();
    }
    return {};
}

} // namespace

QList<Completion::Candidate> Completion::ofCommand(const Command &command, const QStringList &words)
{
    const QList<QCommandLineOption> options = Dispatcher::optionsOf(command);
    QStringList arguments;
    QString option;
    for (const QString &word : words.mid(0, words.size() - 1)) {
        if (option.isEmpty() && !word.startsWith(QLatin1String("--")))
            arguments.append(word);
        option = option.isEmpty() ? openOption(word, options) : QString();
    }
    if (!option.isEmpty())
        return optionValues(option, words.last());
    return words.last().startsWith(QLatin1Char('-')) ? optionsOf(options) : argumentsOf(command.name(), arguments);
}

QList<Completion::Candidate> Completion::candidates(const QStringList &words) const
{
    Candidates names;
    for (const auto &command : m_commands) {
        if (words.size() > 1 && words.first() == command->name())
            return ofCommand(*command, words.mid(1));
        names.append({command->name(), command->summary()});
    }
    const bool isForHelp = words.size() == 2 && words.first() == QLatin1String("help");
    if (words.size() == 1)
        names += Candidates{{QStringLiteral("help"), QStringLiteral("tell more of a command")},
                            {QStringLiteral("--help"), {}},
                            {QStringLiteral("--version"), {}}};
    return words.size() == 1 || isForHelp ? names : Candidates();
}

void Completion::print(const QStringList &words, QTextStream &out) const
{
    if (words.isEmpty())
        return;
    try {
        for (const Candidate &candidate : candidates(words)) {
            // What a shell could not be given on a line is not offered.
            const bool isTypable = Printable::text(candidate.text) == candidate.text;
            if (candidate.text == files || (isTypable && candidate.text.startsWith(words.last())))
                out << candidate.text << '\t' << Printable::text(candidate.description) << '\n';
        }
    } catch (const CommandFailure &) {
        // A shell that completes a line has no place for a complaint.
    }
}
