// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardLines.h"

#include <QByteArray>

#include <optional>

/// A card of a file as it stands there.
struct RawCard
{
    int number = 0;               ///< position in the file, from 1
    QByteArray text;              ///< from BEGIN:VCARD to END:VCARD; empty when there is a fault
    std::optional<QString> fault; ///< why the card cannot be used, for people, when it cannot
};

/// Takes a file of vCards apart, card by card, so that a file of any size needs the memory of its largest card. Text
/// between cards is skipped. A card that ends and a card that begins may share a line, as in files that were joined. A
/// card that begins before the one above has ended makes a fault of that one and is taken itself.
class VCardSplitter
{
public:
    /// The device is open and outlives this object.
    explicit VCardSplitter(QIODevice &device);

    /// The next card; none at the end.
    std::optional<RawCard> next();

    /// Larger cards are refused without being read in.
    static constexpr qsizetype largestCard = 16 * 1024 * 1024;

private:
    enum class Kind;

    QByteArray readLine();
    bool findBegin();
    Kind kindOf(const QByteArray &line);
    bool isNextCard(Kind kind, const QByteArray &line);
    void follow(Kind kind);
    void append(RawCard &card, const QByteArray &line) const;

    VCardLines m_lines;
    int m_count = 0;
    int m_depth = 0;              ///< cards that are open inside each other
    bool m_beginSeen = false;     ///< of the next card
    bool m_innerMayBegin = false; ///< the line before said so
    bool m_mayHideBegin = false;  ///< the line before ends like one that begins a card
    QByteArray m_again;           ///< a line that was read and belongs to the next card
};
