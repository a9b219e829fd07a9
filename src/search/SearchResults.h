// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QString>

/// What a search has found, in the order in which it is paged through.
struct SearchResults
{
    QString searchId;
    ListContact contacts;
    /// How many, from the beginning, are the phone's own found by name: of these only what a summary holds is here.
    qsizetype summaries = 0;

    /// Up to `count` summaries from `start` on; to the end when `count` is -1.
    static ListContactSummary summariesOf(const ListContact &contacts, qsizetype start, qsizetype count);
};
