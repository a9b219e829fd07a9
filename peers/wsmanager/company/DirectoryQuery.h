// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/LdapAttribute.h"

#include <optional>

/// One condition on an entry: any value of any of the attributes compares with any of the texts. Comparisons disregard
/// case; those of numbers disregard blanks and hyphens as well.
struct DirectoryCriterion
{
    enum Operator {
        Equal,
        Begins,
        Contains,
        Ends,
        BeginsWord ///< the text begins the value or a word in it
    };

    QList<LdapAttribute> attributes;
    Operator comparison = Equal;
    QStringList texts;
    bool isNumber = false;
};

/// What is asked of a company directory: one entry by its DN, or all that fulfil the criteria.
struct DirectoryQuery
{
    QString dn;
    QList<DirectoryCriterion> criteria;
    bool needsAll = true;           ///< all criteria, or any of them
    std::optional<QString> problem; ///< why the query cannot be asked, when it cannot
};
