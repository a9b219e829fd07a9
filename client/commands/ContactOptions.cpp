// SPDX-License-Identifier: Apache-2.0
#include "client/commands/CommandArguments.h"

#include "client/bus/CommandFailure.h"

#include <array>

namespace {

struct FieldOption
{
    const char *name;
    QString Contact::*field;
    const char *description;
};

const std::array<FieldOption, 20> fieldOptions{{
    {"first-name", &Contact::firstName, "First name"},
    {"last-name", &Contact::name, "Last name"},
    {"salutation", &Contact::salutation, "Salutation or title (Dr.)"},
    {"office", &Contact::officePhone, "Office number"},
    {"mobile", &Contact::personalMobile, "Mobile number"},
    {"home", &Contact::personalHome, "Home number"},
    {"fax", &Contact::fax, "Fax or other number"},
    {"extension", &Contact::personalFax, "Internal extension"},
    {"voicemail", &Contact::voicemail, "Voice-mail number"},
    {"email", &Contact::email, "Office e-mail address"},
    {"private-email", &Contact::personalEmail, "Private e-mail address"},
    {"im", &Contact::collaborationId, "Instant-messaging address"},
    {"login", &Contact::loginName, "Login in the corporate directory"},
    {"language", &Contact::language, "Language"},
    {"timezone", &Contact::timezone, "Time zone"},
    {"attendant", &Contact::attendant, "Attendant"},
    {"colleague", &Contact::colleague, "Colleague"},
    {"assistant", &Contact::assistant, "Assistant"},
    {"photo", &Contact::photo, "Photo: a file's path or a web address"},
    {"melody", &Contact::melody, "Ring melody"},
}};

/// Pairs of the contact's misc map that deserve an option of their own; it is named as the key.
struct MiscOption
{
    const char *name;
    const char *description;
};

constexpr std::array<MiscOption, 6> miscOptions{{
    {"company", "Company"},
    {"job", "Job title"},
    {"address", "Street and number"},
    {"city", "City"},
    {"zip", "Postal code"},
    {"country", "Country"},
}};

void setMisc(Contact &contact, const QString &key, const QString &value)
{
    if (value.isEmpty())
        contact.misc.remove(key);
    else
        contact.misc.insert(key, value);
}

void applyPair(const QString &pair, Contact &contact)
{
    const qsizetype separator = pair.indexOf(QLatin1Char('='));
    if (separator < 1)
        throw CommandFailure(ExitCode::Usage, QStringLiteral("--misc takes KEY=VALUE, not \"%1\"").arg(pair));
    setMisc(contact, pair.left(separator), pair.mid(separator + 1));
}

} // namespace

QList<QCommandLineOption> ContactOptions::all()
{
    QList<QCommandLineOption> options;
    const QString text = QStringLiteral("TEXT");
    for (const FieldOption &option : fieldOptions)
        options.append({QLatin1String(option.name), QLatin1String(option.description), text});
    for (const MiscOption &option : miscOptions)
        options.append({QLatin1String(option.name), QLatin1String(option.description), text});
    options.append({QStringLiteral("misc"), QStringLiteral("Any further attribute; may be given several times"),
                    QStringLiteral("KEY=VALUE")});
    options.append({QStringLiteral("private"), QStringLiteral("Mark as private")});
    options.append({QStringLiteral("not-private"), QStringLiteral("Take the private mark away")});
    return options;
}

bool ContactOptions::apply(const QCommandLineParser &arguments, Contact &contact)
{
    for (const FieldOption &option : fieldOptions) {
        if (arguments.isSet(QLatin1String(option.name)))
            contact.*option.field = arguments.value(QLatin1String(option.name));
    }
    for (const MiscOption &option : miscOptions) {
        if (arguments.isSet(QLatin1String(option.name)))
            setMisc(contact, QLatin1String(option.name), arguments.value(QLatin1String(option.name)));
    }
    for (const QString &pair : arguments.values(QStringLiteral("misc")))
        applyPair(pair, contact);
    const bool isPrivate = arguments.isSet(QStringLiteral("private"));
    if (isPrivate || arguments.isSet(QStringLiteral("not-private")))
        contact.isPrivate = isPrivate;
    const QList<QCommandLineOption> options = all();
    return std::any_of(options.begin(), options.end(),
                       [&arguments](const QCommandLineOption &option) { return arguments.isSet(option); });
}
