// SPDX-License-Identifier: Apache-2.0
#include "client/text/ContactTable.h"

#include "client/text/ContactText.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr QLatin1String miscPrefix("misc.");

struct NamedColumn
{
    const char *name;
    const char *heading;
    QString (*cell)(const Contact &);
    int least = Table::uncut;
    int rank = 0;
};

template <auto Field>
QString text(const Contact &contact)
{
    return contact.*Field;
}

QString company(const Contact &contact)
{
    return contact.misc.value(QStringLiteral("company"));
}

QString id(const Contact &contact)
{
    return contact.contactId;
}

QString displayName(const Contact &contact)
{
    return contact.displayName();
}

QString type(const Contact &contact)
{
    return ContactText::typeName(contact.type);
}

QString date(const Contact &contact)
{
    return contact.getLastModificationDate().toString(Qt::ISODate);
}

constexpr int least = 16;

// What a table shows that is not told its columns comes first.
constexpr std::size_t usual = 7;
constexpr std::array<NamedColumn, 17> namedColumns{{
    {"id", "ID", id},
    {"name", "NAME", displayName, least},
    {"office", "OFFICE", text<&Contact::officePhone>, Table::uncut, 1},
    {"mobile", "MOBILE", text<&Contact::personalMobile>, Table::uncut, 2},
    {"home", "HOME", text<&Contact::personalHome>, Table::uncut, 3},
    {"email", "E-MAIL", text<&Contact::email>, least, 4},
    {"type", "TYPE", type, Table::uncut, 5},
    {"first-name", "FIRST NAME", text<&Contact::firstName>, least},
    {"last-name", "LAST NAME", text<&Contact::name>, least},
    {"fax", "FAX", text<&Contact::fax>},
    {"extension", "EXTENSION", text<&Contact::personalFax>},
    {"voicemail", "VOICE-MAIL", text<&Contact::voicemail>},
    {"private-email", "PRIVATE E-MAIL", text<&Contact::personalEmail>, least},
    {"im", "IM", text<&Contact::collaborationId>, least},
    {"company", "COMPANY", company, least},
    {"photo", "PHOTO", text<&Contact::photo>, least},
    {"date", "CHANGED", date},
}};

std::optional<NamedColumn> columnOf(const QString &name)
{
    const auto named = std::find_if(namedColumns.begin(), namedColumns.end(),
                                    [&name](const NamedColumn &column) { return name == QLatin1String(column.name); });
    return named == namedColumns.end() ? std::nullopt : std::optional(*named);
}

Table::Column headingOf(const QString &name, bool isAsked)
{
    const std::optional<NamedColumn> column = columnOf(name);
    if (!column)
        return {name.mid(miscPrefix.size()).toUpper(), least, 0, isAsked};
    return {QLatin1String(column->heading), column->least, isAsked ? 0 : column->rank, isAsked};
}

QString cellOf(const Contact &contact, const QString &name)
{
    const std::optional<NamedColumn> column = columnOf(name);
    return column ? column->cell(contact) : contact.misc.value(name.mid(miscPrefix.size()));
}

} // namespace

QStringList ContactTable::columnNames()
{
    QStringList names;
    for (const NamedColumn &column : namedColumns)
        names.append(QLatin1String(column.name));
    return names;
}

bool ContactTable::isColumn(const QString &name)
{
    const bool isMisc = name.startsWith(miscPrefix) && name.size() > miscPrefix.size();
    return isMisc || columnOf(name);
}

Table ContactTable::of(const ListContact &contacts, const QStringList &names)
{
    const QStringList shown = names.isEmpty() ? columnNames().mid(0, usual) : names;
    QList<Table::Column> headings;
    for (const QString &name : shown)
        headings.append(headingOf(name, !names.isEmpty()));
    Table table(headings);
    for (const Contact &contact : contacts) {
        QStringList cells;
        for (const QString &name : shown)
            cells.append(cellOf(contact, name));
        table.addRow(cells);
    }
    return table;
}
