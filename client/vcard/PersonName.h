// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A name written in one piece, taken apart as western names are: "Prof. Anna B. van der Berg, Jr.".
struct PersonName
{
    QString prefix;
    QString first; ///< with the middle names
    QString last;  ///< with what belongs to it ("van der"); a name of one word is a last name
    QString suffix;

    static PersonName of(const QString &fullName);
};
