// SPDX-License-Identifier: Apache-2.0
#include "peers/settings/SettingsAdaptor.h"
#include "peers/settings/SettingsManager.h"
#include "platform/framework/KestinApplication.h"
#include "platform/records/KestinPaths.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

constexpr char description[] =
    R"(The settings manager of a Kestin phone: module "SettingsManager" on the message bus.

Keeps the settings in an INI file, answers with the default where the file has
none, and tells the module that owns a setting when its value changes: over the
bus, or because the file was edited while this runs.

Methods of com.norlan.Kestin.KestinInterface at /com/norlan/Kestin/SettingsManager:
  getSettingValue(s key) -> s              an error for a key nobody knows
  setSettingValue(s key, s value) -> (is)  0 once the value is on the disk; else
                                           1 bad key, 2 value refused, 3 too long,
                                           4 file not writable, with a text
  getSetting(s key) -> (sssssssiiia(ss)bbs)
  getSettings() -> a(sssssssiiia(ss)bbs)   every setting, described

In the file, under [General], a line is key=value. Put a value with commas,
semicolons or quotes in double quotes and double each backslash in it.
Comments do not survive a write.

Environment:
  KESTIN_BUS        system (default), session, or a bus address
  KESTIN_DATA_DIR   stands for %1 in the file's default path, which is
                    %1/KestinApplication/SettingsManager/settings.ini
  KESTIN_LOG_LEVEL  3 errors, 4 warnings (default), 6 changes, 7 everything

Example:
  KESTIN_BUS=session kestin-settings --file ./settings.ini &
  busctl --user call com.norlan.Kestin.SettingsManager \
    /com/norlan/Kestin/SettingsManager com.norlan.Kestin.KestinInterface \
    setSettingValue ss DialingRuleCountryCode 33

Exit code: 0 after SIGTERM or SIGINT, 1 when it cannot start or the bus is gone.)";

} // namespace

int main(int argc, char **argv)
{
    KestinApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestin-settings"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description).arg(KestinPaths::defaultRoot()));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption file(
        QStringLiteral("file"), QStringLiteral("The INI file; it and its folder are made when they are missing."),
        QStringLiteral("path"),
        KestinPaths::data(QStringLiteral("/data/KestinApplication/SettingsManager/settings.ini")));
    parser.addOption(file);
    parser.process(application);
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "kestin-settings: no arguments are expected; see --help\n");
        return EXIT_FAILURE;
    }

    SettingsManager module(parser.value(file));
    return application.exec<SettingsAdaptor>(module);
}
