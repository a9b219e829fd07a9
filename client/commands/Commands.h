// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/commands/Command.h"
#include "client/search/SearchRun.h"
#include "platform/records/Contact.h"

/// Prints the contacts of the directory, or the contacts of a kind.
class ListCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("list"); }
    QString summary() const override { return QStringLiteral("list the contacts"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ListContact read(const QCommandLineParser &arguments, const BusSession &bus);
};

/// Prints contacts of the phone or of the company directory, every field that is set.
class ShowCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("show"); }
    QString summary() const override { return QStringLiteral("show contacts with all their fields"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Creates a contact and prints the id that the directory gave it.
class AddCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("add"); }
    QString summary() const override { return QStringLiteral("create a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Reads a contact, changes the named fields and writes it back.
class EditCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("edit"); }
    QString summary() const override { return QStringLiteral("change fields of a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Removes contacts by their ids, each by itself.
class RemoveCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("remove"); }
    QString summary() const override { return QStringLiteral("remove contacts"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Finds the contacts that a number belongs to, as the phone does for a caller. It asks the company directory only when
/// no contact of the phone has the number.
class WhoCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("who"); }
    QString summary() const override { return QStringLiteral("whose number is this?"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Searches the phone and the company directory, by name or by number.
class SearchCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("search"); }
    QString summary() const override { return QStringLiteral("search the phone and the company directory"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    struct Request;
    static Request requestOf(const QCommandLineParser &arguments);
    static EventWait::End follow(const Request &request, SearchRun &search, CommandContext &context);
    static void print(ListContactSummary contacts, const Request &request, CommandContext &context);
};

/// Takes a contact of the company directory over to the phone.
class CopyCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("copy"); }
    QString summary() const override { return QStringLiteral("copy a contact of the company directory to the phone"); }
    CommandHelp help() const override;
    int limitSeconds() const override { return companyLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Lists and changes the preview list.
class PreviewCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("preview"); }
    QString summary() const override { return QStringLiteral("the contacts that the phone shows without a search"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode list(const QCommandLineParser &arguments, CommandContext &context);
};

/// Gives a contact a photo, or takes the photo away.
class PhotoCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("photo"); }
    QString summary() const override { return QStringLiteral("set or remove the photo of a contact"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return downloadLimitSeconds; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    /// The directory ends a download after 30 s without data.
    static constexpr int downloadLimitSeconds = 40;
};

class ImportRun;

/// Creates contacts from vCard files, and updates those that are there when it is told to.
class ImportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("import"); }
    QString summary() const override { return QStringLiteral("create a contact for every card of a vCard file"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode importFile(const QString &path, ImportRun &run);
};

/// Writes the contacts of the user as vCards.
class ExportCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("export"); }
    QString summary() const override { return QStringLiteral("write the contacts of the phone as vCards"); }
    CommandHelp help() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Has the directory write a synchronisation file, or make its contacts like those of a file.
class SyncCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("sync"); }
    QString summary() const override { return QStringLiteral("export to and import from a synchronisation file"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    int limitSeconds() const override { return 60; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode exportTo(const QString &path, const QCommandLineParser &arguments, CommandContext &context);
    static ExitCode importFrom(const QString &path, const QCommandLineParser &arguments, CommandContext &context);
    /// The device whose files are meant: the one that the command line names, else this one.
    static QString deviceOf(const QCommandLineParser &arguments);
    static ExitCode tryImport(const QString &path, const QCommandLineParser &arguments, CommandContext &context);
    static void expectWanted(const QString &path, const QCommandLineParser &arguments, const CommandContext &context);
};

/// Brings back the contacts of a database that was set aside.
class RecoverCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("recover"); }
    QString summary() const override { return QStringLiteral("bring back the contacts of a damaged database"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

struct DefaultContacts;

/// Shows and replaces the contacts of device management.
class DefaultsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("defaults"); }
    QString summary() const override { return QStringLiteral("show or replace the contacts of device management"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;

private:
    static ExitCode set(const DefaultContacts &contacts, CommandContext &context);
};

/// Tells the screen of a call, as telephony does.
class RingCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("ring"); }
    QString summary() const override { return QStringLiteral("let a call come in on the screen"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    bool printsData() const override { return false; }
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Prints events until it is interrupted or has seen as many as asked for.
class WatchCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("watch"); }
    QString summary() const override { return QStringLiteral("print the directory's events as they come"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};

/// Speaks to the settings manager, from which the directory has its configuration.
class SettingsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("settings"); }
    QString summary() const override { return QStringLiteral("read, explain and change the platform's settings"); }
    CommandHelp help() const override;
    QList<QCommandLineOption> options() const override;
    ExitCode run(const QCommandLineParser &arguments, CommandContext &context) override;
};
