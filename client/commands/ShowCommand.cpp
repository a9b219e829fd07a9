// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Commands.h"

#include "client/bus/DirectoryService.h"
#include "client/commands/Command.h"
#include "client/commands/CommandArguments.h"
#include "client/commands/Interruption.h"
#include "client/commands/Report.h"
#include "client/search/CompanyLookUp.h"
#include "client/text/ContactText.h"
#include "platform/records/ContactIds.h"

namespace {

std::optional<Contact> ofCompany(const QString &id, const BusSession &bus)
{
    const Interruption interruption;
    CompanyLookUp lookUp(bus);
    QObject::connect(&interruption, &Interruption::interrupted, &lookUp, &CompanyLookUp::interrupt);
    return lookUp.find(id);
}

Contact find(const QString &id, const BusSession &bus)
{
    std::optional<Contact> contact = DirectoryService(bus).byId(id);
    if (!contact && ContactIds::isRemote(id))
        contact = ofCompany(id, bus);
    if (!contact)
        throw CommandFailure(ExitCode::Refused, QStringLiteral("no contact has the id %1").arg(id));
    return *contact;
}

void print(const Contact &contact, QTextStream &out)
{
    for (const auto &[field, value] : ContactText::setFields(contact))
        out << Printable::text(field) << ": " << Printable::text(value) << '\n';
}

} // namespace

CommandHelp ShowCommand::help() const
{
    return {{QStringLiteral("show ID [ID...]")},
            QStringLiteral(
                R"(Prints every field that is set, one a line. Attributes of the misc map are called misc.KEY. Several
contacts have an empty line between them; with --json they are an array, a single one is an object.
An id that ends with ## is of the company directory, which is asked; kestin-dir search tells such ids.
An id that is nobody's is told, the others are printed, and it ends with 1.)"),
            {QStringLiteral("kestin-dir show '#CONTACT_12#'"),
             QStringLiteral("kestin-dir show 'uid=zoe.muller,ou=people,dc=example,dc=org##'"),
             QStringLiteral("kestin-dir show '#CONTACT_12#' --json | jq .misc")}};
}

ExitCode ShowCommand::run(const QCommandLineParser &arguments, CommandContext &context)
{
    const QStringList ids = CommandArguments::some(arguments.positionalArguments(), QStringLiteral("ID"));
    if (ids.size() == 1 && context.json) {
        Report::json(context.out, RecordJson::of(find(ids.first(), context.bus)));
        return ExitCode::Done;
    }
    ListContact contacts;
    ExitCode result = ExitCode::Done;
    for (const QString &id : ids) {
        try {
            contacts.append(find(id, context.bus));
        } catch (const CommandFailure &failure) {
            Report::problem(failure.text());
            result = failure.code();
            // Where nobody answers, the next id would be waited for in vain as well.
            if (result != ExitCode::Refused)
                break;
        }
    }
    if (context.json)
        Report::json(context.out, contacts);
    for (qsizetype index = 0; !context.json && index < contacts.size(); ++index) {
        context.out << (index > 0 ? "\n" : "");
        print(contacts.at(index), context.out);
    }
    return result;
}
