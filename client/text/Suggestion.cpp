// SPDX-License-Identifier: Apache-2.0
#include "client/text/Suggestion.h"

#include <algorithm>
#include <vector>

namespace {

qsizetype distance(const QString &from, const QString &to)
{
    const auto width = std::size_t(to.size() + 1);
    std::vector<qsizetype> beforeLast(width);
    std::vector<qsizetype> last(width);
    std::vector<qsizetype> current(width);
    for (std::size_t column = 0; column < width; ++column)
        last[column] = qsizetype(column);
    for (qsizetype row = 1; row <= from.size(); ++row) {
        current[0] = row;
        for (qsizetype column = 1; column <= to.size(); ++column) {
            const auto place = std::size_t(column);
            const bool isSame = from.at(row - 1) == to.at(column - 1);
            current[place] = std::min({last[place] + 1, current[place - 1] + 1, last[place - 1] + (isSame ? 0 : 1)});
            const bool isSwapped =
                row > 1 && column > 1 && from.at(row - 1) == to.at(column - 2) && from.at(row - 2) == to.at(column - 1);
            if (isSwapped)
                current[place] = std::min(current[place], beforeLast[place - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(current);
    }
    return last.back();
}

} // namespace

QString Suggestion::closest(const QString &word, const QStringList &candidates)
{
    constexpr qsizetype lettersForAMistake = 3;
    QString closest;
    qsizetype least = 1 + std::max(qsizetype(1), word.size() / lettersForAMistake);
    for (const QString &candidate : candidates) {
        const qsizetype changes = distance(word.toLower(), candidate.toLower());
        if (changes >= least)
            continue;
        least = changes;
        closest = candidate;
    }
    return closest;
}

QString Suggestion::phrase(const QString &word, const QStringList &candidates)
{
    const QString meant = closest(word, candidates);
    return meant.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(meant);
}
