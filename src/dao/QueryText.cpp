// SPDX-License-Identifier: Apache-2.0
#include "src/dao/QueryText.h"

#include <algorithm>
#include <array>

namespace {

// Between these pieces stands the text that is looked for.
constexpr std::array allFieldsPieces{
    QLatin1String(" WHERE contactId like '%"),
    QLatin1String("%' escape '$' OR loginName like '%"),
    QLatin1String("%' escape '$' OR salutation like '%"),
    QLatin1String("%' escape '$' OR firstName like '%"),
    QLatin1String("%' escape '$' OR name like '%"),
    QLatin1String("%' escape '$' OR latinFirstName like '%"),
    QLatin1String("%' escape '$' OR latinName like '%"),
    QLatin1String("%' escape '$' OR language like '%"),
    QLatin1String("%' escape '$' OR timezone like '%"),
    QLatin1String("%' escape '$' OR officePhone like '%"),
    QLatin1String("%' escape '$' OR officePhoneCan like '%"),
    QLatin1String("%' escape '$' OR attendant like '%"),
    QLatin1String("%' escape '$' OR colleague like '%"),
    QLatin1String("%' escape '$' OR assistant like '%"),
    QLatin1String("%' escape '$'  OR email like '%"),
    QLatin1String("%' escape '$'  OR fax like '%"),
    QLatin1String("%' escape '$' OR faxCan like '%"),
    QLatin1String("%' escape '$' OR voiceMail like '%"),
    QLatin1String("%' escape '$' OR personalHome like '%"),
    QLatin1String("%' escape '$'  OR personalHomeCan  like '%"),
    QLatin1String("%' escape '$' OR personalMobile like '%"),
    QLatin1String("%' escape '$' OR personalMobileCan like '%"),
    QLatin1String("%' escape '$' OR personalFax like '%"),
    QLatin1String("%' escape '$' OR personalFaxCan like '%"),
    QLatin1String("%' escape '$' OR personalEmail like '%"),
    QLatin1String("%' escape '$' OR collaborationId like '%"),
    QLatin1String("%' escape '$' OR isPreviewed like '%"),
    QLatin1String("%' escape '$' OR isPrivate like '%"),
    QLatin1String("%' escape '$' OR photo like '%"),
    QLatin1String("%' escape '$' OR melody like '%"),
    QLatin1String("%' escape '$' "),
};

QString withDoubledApostrophes(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("''"));
}

} // namespace

void QueryText::addCondition(QString &statement, const QString &column, const QString &value, bool exact, int &count)
{
    QString escaped = withDoubledApostrophes(value);
    if (!exact) {
        escaped.replace(QLatin1Char('$'), QLatin1String("$$"))
            .replace(QLatin1Char('%'), QLatin1String("$%"))
            .replace(QLatin1Char('_'), QLatin1String("$_"));
    }
    const QString pattern = exact ? QStringLiteral("%1 = '%2'") : QStringLiteral("%1 like '%2%' escape '$'");
    statement += count == 0 ? QLatin1String(" WHERE ") : QLatin1String(" AND ");
    statement += pattern.arg(column, escaped);
    ++count;
}

QString QueryText::allFieldsCondition(const QString &text)
{
    // The dollar signs come last, so those of the escapes are doubled too: a typed "%" becomes a literal "$" followed
    // by a wildcard. The users of this search rely on it.
    QString escaped = withDoubledApostrophes(text);
    escaped.replace(QLatin1Char('%'), QLatin1String("$%"))
        .replace(QLatin1Char('_'), QLatin1String("$_"))
        .replace(QLatin1Char('$'), QLatin1String("$$"));
    QString condition = allFieldsPieces.front();
    for (auto piece = allFieldsPieces.cbegin() + 1; piece != allFieldsPieces.cend(); ++piece)
        condition += escaped + *piece;
    return condition;
}

QString QueryText::idList(const QStringList &ids)
{
    QString list;
    for (const QString &id : ids) {
        if (!list.isEmpty())
            list += QLatin1String(", ");
        list += quoted(id);
    }
    return list + QLatin1String(" )");
}

QString QueryText::quoted(const QString &value)
{
    return QLatin1Char('\'') + withDoubledApostrophes(value) + QLatin1Char('\'');
}

QString QueryText::namePattern(const QString &name, const QString &separator)
{
    const QString source = name.isEmpty() ? QStringLiteral("%") : name;
    QString pattern;
    const QStringList pieces = source.split(separator, Qt::SkipEmptyParts);
    for (const QString &piece : pieces)
        pattern += separator + piece;
    return pattern.trimmed() + QLatin1Char('%');
}

QString QueryText::fixedPrefix(const QString &pattern)
{
    const auto isWildcard = [](QChar character) { return character == u'%' || character == u'_'; };
    return pattern.first(std::find_if(pattern.begin(), pattern.end(), isWildcard) - pattern.begin());
}
