// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QList>

/// A number of a contact under the name by which people know it.
struct ContactNumber
{
    QLatin1String label; ///< "office", "mobile", "home", "fax" or "extension"
    QLatin1String field; ///< the name in the record
    QString value;
    QString canonical;
};

/// The five numbers by which a caller is known.
namespace ContactNumbers {

/// Those that are set.
QList<ContactNumber> of(const Contact &contact);

/// Those that are this number. Two empty numbers are not equal.
QList<ContactNumber> equalTo(const Contact &contact, const QString &canonical);

/// "mobile 06 12 34 56 78, home 06 12 34 56 78"
QString toString(const QList<ContactNumber> &numbers);

} // namespace ContactNumbers
