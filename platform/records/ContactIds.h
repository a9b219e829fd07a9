// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegularExpression>
#include <QString>

/// The forms of contacts' ids. The directory gives "#CONTACT_7#" (the database makes it of the row) and "#DM_x#" for
/// the contact that device management calls x; an id that ends with "##" is the company directory's. Any other id was
/// given by a caller.
namespace ContactIds {

inline QString ofRow(qint64 rowId)
{
    return QStringLiteral("#CONTACT_%1#").arg(rowId);
}

inline QString ofDeviceManagement(const QString &given)
{
    return QStringLiteral("#DM_%1#").arg(given);
}

/// Whether an id has one of these forms, given or still to be given.
inline bool isOfDirectory(const QString &id)
{
    static const QRegularExpression form(QStringLiteral("\\A#(CONTACT_[0-9]+|DM_.*)#\\z"),
                                         QRegularExpression::DotMatchesEverythingOption);
    return form.match(id).hasMatch();
}

inline constexpr QLatin1String remoteEnd("##");

inline bool isRemote(const QString &id)
{
    return id.endsWith(remoteEnd);
}

} // namespace ContactIds
