// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryQuery.h"

/// Whether entries fulfil a query's criteria, for a directory that is a file: texts compare as a server compares names,
/// without regard to case, width and repeated blanks.
class EntryMatcher
{
public:
    /// Only entries of the class fulfil the query; an empty class means any.
    EntryMatcher(const DirectoryQuery &query, const QString &objectClass);

    bool matches(const DirectoryEntry &entry) const;

private:
    static bool holds(const DirectoryCriterion &criterion, const DirectoryEntry &entry);

    DirectoryQuery m_query; // its texts are folded
    QString m_objectClass;
};
