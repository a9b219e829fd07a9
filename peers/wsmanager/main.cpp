// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/DirectoryCheck.h"
#include "peers/wsmanager/bus/WSManager.h"
#include "peers/wsmanager/bus/WSManagerAdaptor.h"
#include "platform/framework/KestinApplication.h"
#include "platform/framework/KestinLogger.h"
#include "platform/framework/ProcessSignals.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

constexpr char description[] =
    R"(The web-service manager of a Kestin phone, as far as the directory needs it: module
"WSManager" on the message bus.

Searches in the company directory: an LDAP server, or an LDIF file on a desk without
one. A question is answered by an event; a server that is slow or gone holds up
nobody.

Without --config, --url and --ldif the configuration is
)" KESTIN_WSMANAGER_CONF R"(
Samples for OpenLDAP and for Active Directory are in
)" KESTIN_WSMANAGER_SAMPLES R"(
kestin-wsmanager --check tries the configuration and tells what is seen: the server
and its certificate, how many people (maxResults at most), and which fields they have.

Configuration (INI; every key but url or ldif may be left out):
  [directory]
  url=ldaps://ldap.example.org  or ldap://HOST:PORT, or ldapi://%2Fpath%2Fof%2Fsocket
  ldif=/path/of/company.ldif    in place of url; read at the start and at SIGHUP
  name=Company directory        what it is called
  base=dc=example,dc=org        where people stand; contacts elsewhere are unknown
  objectClass=inetOrgPerson     what they are
  filter=(departmentNumber=12)  narrows them further (servers only)
  bindName=cn=phone,dc=example,dc=org   otherwise anonymous
  secretFile=/path              its first line is the password
  startTls=false                true: secures an ldap:// connection
  caFile=/path                  trusted in place of the system's certificates
  pageSize=20 maxResults=500    entries a packet, and a search
  timeoutSeconds=8              for a packet; the phone waits for 10
  connectSeconds=5 retrySeconds=30  to reach the server; until the next attempt
  delayMs=0                     as --delay
  [attributes]                  field of a contact = attributes, the first set counts;
                                attribute#label: the values with this label behind them
  officePhone=telephoneNumber   personalMobile=mobile      personalHome=homePhone
  fax=facsimileTelephoneNumber  email=mail                 loginName=uid
  firstName=givenName           name=sn,cn                 language=preferredLanguage
  photo=labeledURI#photo        collaborationId=labeledURI#im
  misc.company=o                misc.department=ou         misc.job=title
  misc.address=street           misc.zip=postalCode        misc.city=l
  misc.country=c,co
A line is one setting, and its value is what stands behind the =. One that begins or
ends with a blank, or has an odd double quote, stands in double quotes, with a
backslash before each " and \. No setting stands twice.
SIGHUP has it, the secret and the LDIF file read again. Searches that run end with
what they began with. What makes no sense changes nothing, and the log says why.
So does one with another caFile: that, and other certificates in it, need a new start.

Methods of com.norlan.Kestin.KestinInterface at /com/norlan/Kestin/WSManager, and the
events that answer them (each with reqId, status, response and most with result):
  getServiceRight(s) -> b              "IcsUda": the directory can be asked
  udaSearchByFullName(ss)              WS_DIRECTORY_SEARCH_BY_FULL_NAME
  udaSearch(ssasasas)                  WS_DIRECTORY_SEARCH: id, AND or OR, attributes,
                                       operators, values
  udaSearchByIMAddress(ss)             WS_DIRECTORY_SEARCH
  udaGetNextResults(s)                 WS_DIRECTORY_GET_NEXT_RESULTS: status 1 more,
                                       2 finished, 3 no answer in time
  udaStopSearch(s)                     WS_DIRECTORY_STOP_SEARCH
  udaGetContactProfile(ss)             WS_DIRECTORY_GET_CONTACT_PROFILE
  getAttributeTypeByContactId(sss)     WS_DIRECTORY_GETATTRIBUTEBYCONTACTID
  udaGetAttributes(s)                  WS_DIRECTORY_GET_ATTRIBUTES
  udaGetAttributeProperties(ss)        WS_DIRECTORY_GET_ATTRIBUTE_PROPERTIES
  udaGetOperators(s)                   WS_DIRECTORY_GET_OPERATORS
  udaGetDirectories(s)                 WS_DIRECTORY_GET_DIRECTORIES
  makeDialableCallNumber(ss)           WS_DIRECTORY_CANONIZE_NUMBER
UDAAvailabilityEvent tells when the directory can be reached (1), or no longer (0);
WSManagerAvailabilityEvent that this program is there (1), or ends (0).

Environment:
  KESTIN_BUS        system (default), session, or a bus address
  KESTIN_DATA_DIR   has no effect here: nothing is kept
  KESTIN_LOG_LEVEL  3 errors, 4 what the server refuses (default), 6 availability,
                    7 every event
For a server, /etc/ldap/ldap.conf holds where nothing else is said here (BASE,
TLS_CACERT). A server's certificate must be good, and TLS 1.2 or later.

Example:
  KESTIN_BUS=session kestin-wsmanager --ldif samples/company.ldif &
  dbus-monitor --session interface=com.norlan.Kestin.KestinEvent &
  ws() { busctl --user call com.norlan.Kestin.WSManager /com/norlan/Kestin/WSManager \
    com.norlan.Kestin.KestinInterface "$@"; }
  ws udaSearchByFullName ss demo Zo; ws udaGetNextResults s demo

Exit code: 0 after SIGTERM or SIGINT, 1 when it cannot start or the bus is gone. With
--check: 0 when people are found, otherwise 1, and standard error says why.)";

/// An option, and the setting of the configuration that it replaces.
struct Option
{
    const char *name;
    const char *setting;
    const char *valueName;
    const char *text;
};

constexpr Option options[]{
    {"url", "url", "url", "The directory server."},
    {"ldif", "ldif", "path", "An LDIF file in place of a server."},
    {"base", "base", "dn", "Where people stand in the directory."},
    {"page-size", "pageSize", "n", "Entries a packet."},
    {"timeout", "timeoutSeconds", "seconds", "A packet that takes longer is given up."},
    {"delay", "delayMs", "ms", "Holds each packet back by that long, for trying out a slow directory."},
};

/// Reads the configuration and what replaces it on the command line. Answers what is wrong, if anything is.
std::optional<QString> configure(DirectoryConfig &config, const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("no arguments are expected; see --help");
    std::optional<QString> problem;
    const bool isNamed = parser.isSet(QStringLiteral("url")) || parser.isSet(QStringLiteral("ldif"));
    if (parser.isSet(QStringLiteral("config")) || !isNamed)
        problem = config.read(parser.value(QStringLiteral("config")));
    for (const Option &option : options) {
        if (!problem && parser.isSet(QLatin1String(option.name)))
            problem = config.set(QLatin1String(option.setting), parser.value(QLatin1String(option.name)));
    }
    return problem ? problem : config.problem();
}

void readAgain(WSManager &module, const QCommandLineParser &parser)
{
    DirectoryConfig config;
    const auto problem = configure(config, parser);
    if (problem)
        KestinLogger::error("The configuration makes no sense: %1", *problem);
    if (!problem && module.reload(config))
        KestinLogger::info("The configuration has been read again");
    else
        KestinLogger::warning("The configuration before stays as it is");
}

} // namespace

int main(int argc, char **argv)
{
    KestinApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestin-wsmanager"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("config"), QStringLiteral("The configuration."), QStringLiteral("path"),
                      QStringLiteral(KESTIN_WSMANAGER_CONF)});
    parser.addOption({QStringLiteral("check"), QStringLiteral("Tries the configuration, and ends.")});
    for (const Option &option : options)
        parser.addOption({QLatin1String(option.name), QLatin1String(option.text), QLatin1String(option.valueName)});
    parser.process(application);

    DirectoryConfig config;
    if (const auto problem = configure(config, parser)) {
        std::fprintf(stderr, "kestin-wsmanager: %s\n", qPrintable(*problem));
        return EXIT_FAILURE;
    }
    if (parser.isSet(QStringLiteral("check")))
        return DirectoryCheck(config).run();
    WSManager module(config);
    const ProcessSignals reload(ProcessSignals::Kind::Reload);
    QObject::connect(&reload, &ProcessSignals::reloadRequested, &module, [&] { readAgain(module, parser); });
    return application.exec<WSManagerAdaptor>(module);
}
