// SPDX-License-Identifier: Apache-2.0
#include "bench/FigureTable.h"

const std::vector<FigureTitle> FigureTable::titles{
    {Figure::ContactsPerSecond, "contactsPerSecond", "`createLocalContacts`", "contacts/s", 0, "", 0, 0},
    {Figure::EmptyCallBesideCreates, "emptyCallBesideCreates", "empty call, beside the creates", "µs", 0, "", 0, 0},
    {Figure::DialableNumbers, "dialableNumbers", "`extractDialableNumberList`, five numbers", "µs", 0, "", 0, 0},
    {Figure::CanonicalNumbers, "canonicalNumbers", "`makeCanonicalNumberListWithoutPrefix`, five numbers", "µs", 0, "",
     0, 0},
    {Figure::BareInsert, "bareInsert", "durable insert in bare SQLite", "µs", 0, "", 0, 0},
    {Figure::Create, "create", "`createLocalContact`", "µs", 0, "", 0, 0},
    {Figure::CreateToFloors, "createToFloors", "`createLocalContact` / sum of the four above it", "", 2, "at most 2.0",
     2.0, 0},
    {Figure::Start, "start", "start of the process to its name on the bus", "ms", 1, "at most 100 at 1 000 contacts",
     100, 1000},
    {Figure::ResidentAfterStart, "residentAfterStart", "resident after the start", "MB", 1,
     "at most 25 at 10 000 contacts", 25, 10000},
    {Figure::AnonymousAfterStart, "anonymousAfterStart", "of it anonymous", "MB", 1, "", 0, 0},
    {Figure::ProportionalAfterStart, "proportionalAfterStart", "proportional share (PSS)", "MB", 1, "", 0, 0},
    {Figure::EmptyCall, "emptyCall", "empty call, beside the look-ups", "µs", 0, "", 0, 0},
    {Figure::LookUpByNumber, "lookUpByNumber", "`getLocalContacts(number)`, a stored number", "µs", 0,
     "flat over the sizes", 0, 0},
    {Figure::LookUpToEmptyCall, "lookUpToEmptyCall", "`getLocalContacts(number)` / empty call", "", 2, "at most 1.3",
     1.3, 0},
    {Figure::LookUpOfUnknownNumber, "lookUpOfUnknownNumber", "`getLocalContacts(number)`, nobody's number", "µs", 0, "",
     0, 0},
    {Figure::LookUpById, "lookUpById", "`getContactById`", "µs", 0, "", 0, 0},
    {Figure::FirstPage, "firstPage", "`getLocalContacts`, the first 50", "µs", 0, "", 0, 0},
    {Figure::MiddlePage, "middlePage", "`getLocalContacts`, 50 from the middle", "µs", 0, "", 0, 0},
    {Figure::LastPage, "lastPage", "`getLocalContacts`, the last 50", "µs", 0, "", 0, 0},
    {Figure::ResidentAtEnd, "residentAtEnd", "resident after all calls", "MB", 1, "at most 25 at 10 000 contacts", 25,
     10000},
    {Figure::AnonymousAtEnd, "anonymousAtEnd", "of it anonymous", "MB", 1, "", 0, 0},
    {Figure::ProportionalAtEnd, "proportionalAtEnd", "proportional share (PSS)", "MB", 1, "", 0, 0},
};

bool FigureTable::isWithinBound(const FigureTitle &title, int size, const Value &value)
{
    const bool holdsHere = title.bound > 0 && (title.boundSize == 0 || title.boundSize == size);
    return !holdsHere || value.value <= title.bound;
}

QList<int> FigureTable::sizes() const
{
    QMap<int, bool> sizes;
    for (const auto &values : m_values) {
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            sizes.insert(value.key(), true);
    }
    return sizes.keys();
}
