// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <optional>

/// A card of a file as it stands there.
struct RawCard
{
    int number = 0;               ///< position in the file, from 1
    QByteArray text;              ///< from BEGIN:VCARD to END:VCARD; empty when there is a fault
    std::optional<QString> fault; ///< why the card cannot be used, for people, when it cannot
};

/// Takes a file of vCards apart, card by card, so that a file of any size needs the memory of its largest card. Text
/// between cards is skipped.
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
    QByteArray readLine();
    bool findBegin();
    void append(RawCard &card, const QByteArray &line) const;

    QIODevice &m_device;
    int m_count = 0;
    bool m_beginSeen = false;
};
