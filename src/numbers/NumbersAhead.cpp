// SPDX-License-Identifier: Apache-2.0
#include "src/numbers/NumbersAhead.h"

#include <QElapsedTimer>

#include <algorithm>

NumbersAhead::NumbersAhead(CanonicalNumbers &numbers, const ListContact &contacts, Wanted wanted)
    : m_numbers(numbers)
    , m_pause(numbers)
    , m_contacts(contacts)
    , m_wanted(wanted)
{
}

const Contact *NumbersAhead::next() const
{
    constexpr qsizetype largest = 1024 * 1024; // characters under way, were the numbers ever so long
    const bool hasRoom = m_asked.size() < m_numbers.m_askedAhead && m_size < largest && !m_numbers.isSilent();
    return hasRoom && m_next < m_contacts.size() ? &m_contacts.at(m_next) : nullptr;
}

void NumbersAhead::settle(bool isAskedFor)
{
    if (isAskedFor) {
        m_asked.push_back(ask(m_next));
        m_size += m_asked.back().size;
    }
    ++m_next;
}

NumbersAhead::Asked NumbersAhead::ask(qsizetype position) const
{
    Asked asked{position, CanonicalNumbers::rawNumbers(m_contacts.at(position)), 0, false, {}};
    for (const QString &number : asked.raw)
        asked.size += number.size();
    if (m_wanted == Wanted::DialableAndCanonical)
        asked.call = m_numbers.begin(CanonicalNumbers::dialable, asked.raw);
    else
        askForCanonical(asked);
    return asked;
}

void NumbersAhead::askForCanonical(Asked &asked) const
{
    if (asked.isCanonicalAsked)
        return;
    asked.raw = m_numbers.numbers(asked.call).value_or(asked.raw);
    asked.call = m_numbers.begin(CanonicalNumbers::canonical, asked.raw);
    asked.isCanonicalAsked = true;
}

/// Asks for the canonical numbers of those whose dialable ones are there.
void NumbersAhead::goOn()
{
    for (Asked &asked : m_asked) {
        if (!asked.isCanonicalAsked && asked.call && !asked.call->isFinished())
            return; // nor are those behind it
        askForCanonical(asked);
    }
}

/// What was asked for this contact, now if not before. Those before it were refused in the meantime.
NumbersAhead::Asked NumbersAhead::takeOut(qsizetype position)
{
    m_next = std::max(m_next, position + 1);
    while (!m_asked.empty() && m_asked.front().position <= position) {
        const Asked asked = std::move(m_asked.front());
        m_asked.pop_front();
        m_size -= asked.size;
        if (asked.position == position)
            return asked;
    }
    return ask(position);
}

void NumbersAhead::fill(qsizetype position, Contact &contact)
{
    QElapsedTimer timer;
    timer.start();
    goOn();
    Asked asked = takeOut(position);
    askForCanonical(asked);
    const std::optional<QStringList> canonical = m_numbers.numbers(asked.call);
    adapt(timer.elapsed());
    goOn();
    CanonicalNumbers::setDialableNumbers(contact, asked.raw);
    CanonicalNumbers::setCanonicalNumbers(contact, canonical.value_or(asked.raw));
}

void NumbersAhead::adapt(qint64 waitedMs)
{
    constexpr qint64 slowMs = 250; // a small part of the time limit of a call
    std::size_t &limit = m_numbers.m_askedAhead;
    if (m_numbers.isSilent())
        limit = 1;
    else
        limit = waitedMs < slowMs ? std::min(limit * 2, most) : std::max(limit / 2, std::size_t(1));
}
