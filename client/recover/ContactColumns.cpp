// SPDX-License-Identifier: Apache-2.0
#include "client/recover/ContactColumns.h"

#include <algorithm>

namespace {

constexpr QLatin1String lateColumn("faxCan"); // that older versions did not have

bool isFlag(const QString &value)
{
    const QStringList flags{QString(), QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("true"),
                            QStringLiteral("false")};
    return flags.contains(value, Qt::CaseInsensitive);
}

bool isSet(const QString &flag)
{
    return flag == QLatin1String("1") || flag.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

/// False when the column cannot hold such a value. A column of somebody else holds anything.
bool take(Contact &contact, const QString &column, const QString &value)
{
    const auto text = std::find_if(Contact::texts.begin(), Contact::texts.end(), [&column](const auto &field) {
        return column.compare(QLatin1String(field.name), Qt::CaseInsensitive) == 0;
    });
    const auto is = [&column](const char *name) {
        return column.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    if (text != Contact::texts.end())
        contact.*text->value = value;
    else if (is("photo"))
        contact.photo = value;
    else if (is("melody"))
        contact.melody = value;
    else if (is("puid"))
        contact.setPUID(value);
    else if (is("isPreviewed") || is("isPrivate")) {
        (is("isPrivate") ? contact.isPrivate : contact.isPreviewed) = isSet(value);
        return isFlag(value);
    } else if (is("type")) {
        bool isNumber = false;
        contact.type = value.toInt(&isNumber);
        constexpr int mostTypes = 100;
        return isNumber && contact.type >= 0 && contact.type < mostTypes;
    } else if (is("lastModificationDate")) {
        contact.setLastModificationDate(QDateTime::fromString(value, Qt::ISODateWithMs));
        return value.isEmpty() || contact.getLastModificationDate().isValid();
    }
    return true;
}

} // namespace

QStringList ContactColumns::all()
{
    QStringList columns;
    for (const Contact::TextField &field : Contact::texts)
        columns.append(QLatin1String(field.name));
    for (const char *name : {"isPreviewed", "isPrivate", "type", "photo", "melody", "puid", "lastModificationDate"})
        columns.append(QLatin1String(name));
    return columns;
}

QList<QStringList> ContactColumns::orders(const QStringList &ofTable)
{
    QStringList old = all();
    old.removeOne(lateColumn);
    const QStringList completed = old + QStringList{lateColumn};
    return ofTable.isEmpty() ? QList<QStringList>{all(), completed, old} : QList<QStringList>{ofTable, old};
}

std::optional<Contact> ContactColumns::contactOf(const QStringList &columns, const StoredRow &row)
{
    Contact contact;
    if (row.values.size() != columns.size())
        return std::nullopt;
    for (qsizetype column = 0; column < columns.size(); ++column) {
        if (!take(contact, columns.at(column), row.values.at(column)))
            return std::nullopt;
    }
    return contact;
}
