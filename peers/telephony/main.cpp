// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/Telephony.h"
#include "peers/telephony/TelephonyAdaptor.h"
#include "platform/framework/KestinApplication.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

constexpr char description[] =
    R"(The telephony service of a Kestin phone, as far as the directory needs it: module
"Telephony" on the message bus.

Brings phone numbers into the form that can be dialled, and into the canonical
form by which they are compared (+33388123456). The dialing rules come from the
settings manager (kestin-settings), now and whenever they change there:
  DialingRuleCountryCode               for example 33; without it only numbers with
                                       + have a canonical form
  DialingRuleAreaCode                  for numbers given without area code
  DialingRuleExternalPrefix            dialled for an outside line, for example 0
  DialingRuleExternalPrefixExceptions  beginnings of numbers that need none
  DialingRuleMinNumberLength           a number with fewer digits is an extension

Methods of com.norlan.Kestin.KestinInterface at /com/norlan/Kestin/Telephony:
  extractDialableNumberList(as) -> as
  makeCanonicalNumberListWithoutPrefix(as) -> as
  makeCanonicalNumberMapWithoutPrefix(a{sas}) -> a{sas}
  getKestinMode() -> (s)
  dialingRulesChanged(setting) -> a(sssssssiiia(ss)bbs)  called by the settings manager
What is no number comes back unchanged.

Environment:
  KESTIN_BUS        system (default), session, or a bus address
  KESTIN_DATA_DIR   has no effect here: nothing is kept
  KESTIN_LOG_LEVEL  3 errors, 4 warnings (default), 6 changes of rules

Example:
  KESTIN_BUS=session kestin-telephony &
  busctl --user call com.norlan.Kestin.Telephony /com/norlan/Kestin/Telephony \
    com.norlan.Kestin.KestinInterface makeCanonicalNumberListWithoutPrefix as 1 \
    "+33 (0)3 88 12 34 56"

Exit code: 0 after SIGTERM or SIGINT, 1 when it cannot start or the bus is gone.)";

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
