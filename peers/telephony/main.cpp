// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/Telephony.h"
#include "peers/telephony/TelephonyAdaptor.h"
#include "platform/framework/KestinApplication.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

constexpr char description[] =
    "The telephony service of a Kestin phone, as far as the directory needs it: module\n"
    "\"Telephony\" on the message bus.\n"
    "\n"
    "Brings phone numbers into the form that can be dialled, and into the canonical\n"
    "form by which they are compared (+33388123456). The dialing rules come from the\n"
    "settings manager (kestin-settings), now and whenever they change there:\n"
    "  DialingRuleCountryCode               for example 33; without it only numbers with\n"
    "                                       + have a canonical form\n"
    "  DialingRuleAreaCode                  for numbers given without area code\n"
    "  DialingRuleExternalPrefix            dialled for an outside line, for example 0\n"
    "  DialingRuleExternalPrefixExceptions  beginnings of numbers that need none\n"
    "  DialingRuleMinNumberLength           a number with fewer digits is an extension\n"
    "\n"
    "Methods of com.norlan.Kestin.KestinInterface at /com/norlan/Kestin/Telephony:\n"
    "  extractDialableNumberList(as) -> as\n"
    "  makeCanonicalNumberListWithoutPrefix(as) -> as\n"
    "  makeCanonicalNumberMapWithoutPrefix(a{sas}) -> a{sas}\n"
    "  getKestinMode() -> (s)\n"
    "  dialingRulesChanged(setting) -> a(sssssssiiia(ss)bbs)  called by the settings manager\n"
    "What is no number comes back unchanged.\n"
    "\n"
    "Environment:\n"
    "  KESTIN_BUS        system (default), session, or a bus address\n"
    "  KESTIN_DATA_DIR   has no effect here: nothing is kept\n"
    "  KESTIN_LOG_LEVEL  3 errors, 4 warnings (default), 6 changes of rules\n"
    "\n"
    "Example:\n"
    "  KESTIN_BUS=session kestin-telephony &\n"
    "  busctl --user call com.norlan.Kestin.Telephony /com/norlan/Kestin/Telephony \\\n"
    "    com.norlan.Kestin.KestinInterface makeCanonicalNumberListWithoutPrefix as 1 \\\n"
    "    \"+33 (0)3 88 12 34 56\"\n"
    "\n"
    "Exit code: 0 after SIGTERM or SIGINT, 1 when it cannot start or the bus is gone.";

} // namespace

int main(int argc, char **argv)
{
    KestinApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestin-telephony"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption mode(QStringLiteral("mode"),
                                  QStringLiteral("What getKestinMode answers: basic or unknown (no company directory), "
                                                 "or advanced."),
                                  QStringLiteral("mode"), STR_KESTIN_MODE_ADVANCED);
    parser.addOption(mode);
    parser.process(application);
    const QString text = parser.value(mode);
    const QStringList modes{STR_KESTIN_MODE_BASIC, STR_KESTIN_MODE_ADVANCED, STR_KESTIN_MODE_UNKNOWN};
    if (!modes.contains(text) || !parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "kestin-telephony: --mode takes basic, advanced or unknown, and there are no other "
                             "arguments; see --help\n");
        return EXIT_FAILURE;
    }

    Telephony module(KestinMode{text});
    return application.exec<TelephonyAdaptor>(module);
}
