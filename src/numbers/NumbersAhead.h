// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/numbers/CanonicalNumbers.h"

#include <deque>

/// The numbers of the contacts of a list. Telephony works on those of the next contacts while earlier ones are written.
/// Each contact costs the calls that a single one costs, in their order, and their failures mean what they mean there;
/// a telephony that is silent costs the list one wait.
///
/// At first one contact is asked for; with each that is answered at once twice as many, up to `most`. It is one again
/// after a silence. So a telephony that stays silent holds few of the calls that the bus allows a connection, and a
/// slow one is given no more than it answers in time.
class NumbersAhead
{
public:
    enum class Wanted { Canonical, DialableAndCanonical };

    /// Contacts asked for, each with one call under way, of the 128 that the system bus allows.
    static constexpr std::size_t most = 64;

    /// `contacts` must outlive this object.
    NumbersAhead(CanonicalNumbers &numbers, const ListContact &contacts, Wanted wanted);

    /// The next contact that can be asked for ahead; null when enough are, and behind the last.
    const Contact *next() const;
    /// Asks for it, or leaves it to `fill`.
    void settle(bool isAskedFor);

    /// Fills in a copy of the contact at this position, which is larger than at the last call. Waits for the answers.
    void fill(qsizetype position, Contact &contact);

private:
    struct Asked
    {
        qsizetype position;
        QStringList raw;    ///< dialable once `isCanonicalAsked`
        qsizetype size = 0; ///< characters
        bool isCanonicalAsked = false;
        std::optional<QDBusPendingCall> call = {}; ///< none when it could not be made
    };

    Asked ask(qsizetype position) const;
    void askForCanonical(Asked &asked) const;
    void goOn();
    Asked takeOut(qsizetype position);
    void adapt(qint64 waitedMs);

    CanonicalNumbers &m_numbers;
    NumbersOfMany m_pause;
    const ListContact &m_contacts;
    Wanted m_wanted;
    qsizetype m_next = 0;
    std::deque<Asked> m_asked; ///< by position
    qsizetype m_size = 0;      ///< their characters
};
