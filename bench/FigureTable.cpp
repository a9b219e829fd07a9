// SPDX-License-Identifier: Apache-2.0
#include "bench/FigureTable.h"

const std::vector<FigureTitle> FigureTable::titles{
    {Figure::ContactsPerSecond, "contactsPerSecond", "`createLocalContacts`, the last 2 000", "contacts/s", 0,
     "at least 5 000", 0, 0},
    {Figure::NumbersPerSecond, "numbersPerSecond", "their numbers from the telephony service alone", "contacts/s", 0,
     "", 0, 0},
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
    {Figure::EmptyCallBesideSearches, "emptyCallBesideSearches", "empty call, beside the searches", "µs", 0, "", 0, 0},
    {Figure::BareQuery1, "bareQuery1", "query in bare SQLite, 1 hit", "µs", 0, "", 0, 0},
    {Figure::FirstResults1, "firstResults1", "search, first results, 1 hit", "µs", 0, "flat over the sizes", 0, 0},
    {Figure::FirstResultsToFloor1, "firstResultsToFloor1",
     "(first results - half an empty call) / (empty call + query), 1 hit", "", 2, "at most 3.0", 3.0, 0},
    {Figure::Completion1, "completion1", "search, completion, 1 hit", "µs", 0, "", 0, 0},
    {Figure::BareQuery20, "bareQuery20", "query in bare SQLite, 20 hits", "µs", 0, "", 0, 0},
    {Figure::FirstResults20, "firstResults20", "search, first results, 20 hits", "µs", 0, "flat over the sizes", 0, 0},
    {Figure::FirstResultsToFloor20, "firstResultsToFloor20",
     "(first results - half an empty call) / (empty call + query), 20 hits", "", 2, "at most 3.0", 3.0, 0},
    {Figure::Completion20, "completion20", "search, completion, 20 hits", "µs", 0, "", 0, 0},
    {Figure::BareQuery200, "bareQuery200", "query in bare SQLite, 200 hits", "µs", 0, "", 0, 0},
    {Figure::FirstResults200, "firstResults200", "search, first results, 200 hits", "µs", 0, "flat over the sizes", 0,
     0},
    {Figure::FirstResultsToFloor200, "firstResultsToFloor200",
     "(first results - half an empty call) / (empty call + query), 200 hits", "", 2, "at most 3.0", 3.0, 0},
    {Figure::Completion200, "completion200", "search, completion, 200 hits", "µs", 0, "", 0, 0},
    {Figure::BareQuery2000, "bareQuery2000", "query in bare SQLite, 2 000 hits", "µs", 0, "", 0, 0},
    {Figure::FirstResults2000, "firstResults2000", "search, first results, 2 000 hits", "µs", 0, "flat over the sizes",
     0, 0},
    {Figure::FirstResultsToFloor2000, "firstResultsToFloor2000",
     "(first results - half an empty call) / (empty call + query), 2 000 hits", "", 2, "at most 3.0", 3.0, 0},
    {Figure::Completion2000, "completion2000", "search, completion, 2 000 hits", "µs", 0, "", 0, 0},
    {Figure::FirstResultsPage, "firstResultsPage", "`getSearchResults` of 2 000, the first 50", "µs", 0, "", 0, 0},
    {Figure::MiddleResultsPage, "middleResultsPage", "`getSearchResults` of 2 000, 50 from the middle", "µs", 0, "", 0,
     0},
    {Figure::LastResultsPage, "lastResultsPage", "`getSearchResults` of 2 000, the last 50", "µs", 0, "", 0, 0},
    {Figure::ResidentAtEnd, "residentAtEnd", "resident after all calls", "MB", 1, "at most 25 at 10 000 contacts", 25,
     10000},
    {Figure::AnonymousAtEnd, "anonymousAtEnd", "of it anonymous", "MB", 1, "", 0, 0},
    {Figure::ProportionalAtEnd, "proportionalAtEnd", "proportional share (PSS)", "MB", 1, "", 0, 0},
    {Figure::RemoteSearch1, "remoteSearch1", "remote search, completion, 1 packet of 20", "ms", 1, "", 0, 0},
    {Figure::RemotePacket1, "remotePacket1", "of it a packet", "ms", 2, "", 0, 0},
    {Figure::RemoteSearch10, "remoteSearch10", "remote search, completion, 10 packets of 20", "ms", 1, "", 0, 0},
    {Figure::RemotePacket10, "remotePacket10", "of it a packet", "ms", 2, "", 0, 0},
    {Figure::RemoteSearch100, "remoteSearch100", "remote search, completion, 100 packets of 20", "ms", 1, "", 0, 0},
    {Figure::RemotePacket100, "remotePacket100", "of it a packet", "ms", 2, "", 0, 0},
    {Figure::PacketTaken, "packetTaken", "a packet's event to the event with its results", "ms", 2, "at most 5", 5, 0},
    {Figure::ExportsPerSecond, "exportsPerSecond", "full export", "contacts/s", 0, "", 0, 0},
    {Figure::BareExportsPerSecond, "bareExportsPerSecond", "the same in bare SQLite and XML", "contacts/s", 0, "", 0,
     0},
    {Figure::ExportToFloor, "exportToFloor", "time of an export / its floor", "", 2, "at most 2.0", 2.0, 0},
    {Figure::ExportMemory, "exportMemory", "peak memory over that before, exports", "MB", 1, "flat over the sizes", 0,
     0},
    {Figure::ImportsPerSecond, "importsPerSecond", "import into an empty store", "contacts/s", 0, "", 0, 0},
    {Figure::BareImportsPerSecond, "bareImportsPerSecond", "the same in bare SQLite and XML", "contacts/s", 0, "", 0,
     0},
    {Figure::CanonizedPerSecond, "canonizedPerSecond", "canonical numbers from the telephony service, in lists of 200",
     "contacts/s", 0, "", 0, 0},
    {Figure::ImportToFloor, "importToFloor", "time of an import / its floor", "", 2, "at most 2.0", 2.0, 0},
    {Figure::ImportToFloors, "importToFloors", "time of an import / its floor and the canonical numbers", "", 2, "", 0,
     0},
    {Figure::ImportMemory, "importMemory", "peak memory over that before, imports", "MB", 1, "flat over the sizes", 0,
     0},
    {Figure::LargePhoto, "largePhoto", "resize of a JPEG of 4000 x 3000", "ms", 1, "", 0, 0},
    {Figure::StartWithPhotos, "startWithPhotos", "start with 100 photos to resize", "ms", 1, "", 0, 0},
    {Figure::StartAfterPhotos, "startAfterPhotos", "the start after that", "ms", 1, "", 0, 0},
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
