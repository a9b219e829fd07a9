// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QMap>

#include <optional>
#include <vector>

/// Every figure there is. The order is that of the table.
enum class Figure {
    ContactsPerSecond,
    NumbersPerSecond,
    EmptyCallBesideCreates,
    DialableNumbers,
    CanonicalNumbers,
    BareInsert,
    Create,
    CreateToFloors,
    FirstStart,
    Start,
    ResidentAfterStart,
    AnonymousAfterStart,
    ProportionalAfterStart,
    EmptyCall,
    LookUpByNumber,
    LookUpToEmptyCall,
    LookUpOfUnknownNumber,
    LookUpById,
    FirstPage,
    MiddlePage,
    LastPage,
    EmptyCallBesideSearches,
    BareQuery1,
    FirstResults1,
    FirstResultsToFloor1,
    Completion1,
    BareQuery20,
    FirstResults20,
    FirstResultsToFloor20,
    Completion20,
    BareQuery200,
    FirstResults200,
    FirstResultsToFloor200,
    Completion200,
    BareQuery2000,
    FirstResults2000,
    FirstResultsToFloor2000,
    Completion2000,
    BareQueryAll,
    FirstResultsAll,
    FirstResultsToQueryAll,
    SearchMemory,
    PurgedMemory,
    FirstResultsPage,
    MiddleResultsPage,
    LastResultsPage,
    ResidentAtEnd,
    AnonymousAtEnd,
    ProportionalAtEnd,
    RemoteSearch1,
    RemotePacket1,
    RemoteSearch10,
    RemotePacket10,
    RemoteSearch100,
    RemotePacket100,
    PacketTaken,
    ExportsPerSecond,
    BareExportsPerSecond,
    ExportToFloor,
    ExportMemory,
    LookUpBesideExports,
    ExportsBesideLookUps,
    ImportsPerSecond,
    BareImportsPerSecond,
    CanonizedPerSecond,
    ImportToFloor,
    ImportToFloors,
    ImportMemory,
    LookUpBesideImports,
    ImportsBesideLookUps,
    CardsPerSecond,
    CreationBytes,
    ModificationBytes,
    DeletionBytes,
    StartBytes,
    LargePhoto,
    StartWithPhotos,
    StartAfterPhotos,
    ScreenCaller,
    ScreenFirstResults,
    ScreenScrolling,
    ScreenSlowestFrame,
    ScreenFrameWork,
    ScreenResident,
};

/// What the table says of a figure beside its values.
struct FigureTitle
{
    Figure figure;
    const char *key; ///< in JSON
    const char *text;
    const char *unit;
    int decimals;
    const char *wanted; ///< empty when nothing is
    double bound;       ///< the wanted value; a value is within it when it is not larger
    int boundSize;      ///< contacts in the store for which it holds; 0: any number
};

/// The figures that were measured.
class FigureTable
{
public:
    struct Value
    {
        double value = 0;
        std::optional<double> percentile99;
    };

    static const std::vector<FigureTitle> titles;
    static bool isWithinBound(const FigureTitle &title, int size, const Value &value);

    /// `size` is the number of contacts in the store.
    void put(int size, Figure figure, const Value &value) { m_values[figure].insert(size, value); }
    /// By size; empty when it was not measured.
    QMap<int, Value> values(Figure figure) const { return m_values.value(figure); }
    QList<int> sizes() const;

private:
    QMap<Figure, QMap<int, Value>> m_values;
};
