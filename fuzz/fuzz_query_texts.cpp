// SPDX-License-Identifier: Apache-2.0
// Any text at all where a statement is put together from texts: it stays one statement, and finds what the text says
// and nothing else. The lines of the input are the texts.
#include "fuzz/MemoryDatabase.h"
#include "fuzz/Promise.h"
#include "src/dao/QueryText.h"

#include <algorithm>
#include <optional>

namespace {

const QString bystander = QStringLiteral("nobody's id");

void createTable(MemoryDatabase &database)
{
    database.run(QStringLiteral(
        "CREATE TABLE CONTACT(contactId, loginName, salutation, firstName, name, latinFirstName, latinName, language, "
        "timezone, officePhone, officePhoneCan, attendant, colleague, assistant, email, fax, faxCan, voicemail, "
        "personalHome, personalHomeCan, personalMobile, personalMobileCan, personalFax, personalFaxCan, personalEmail, "
        "collaborationId, isPreviewed, isPrivate, photo, melody)"));
}

QString lowered(QString text)
{
    for (QChar &character : text) {
        if (character >= u'A' && character <= u'Z')
            character = character.toLower(); // what LIKE takes for equal
    }
    return text;
}

void checkConditions(MemoryDatabase &database, const QStringList &names)
{
    for (const bool isExact : {true, false}) {
        QString statement = QStringLiteral("SELECT name FROM CONTACT");
        int count = 0;
        QueryText::addCondition(statement, QStringLiteral("name"), names.first(), isExact, count);
        QueryText::addCondition(statement, QStringLiteral("name"), names.first(), isExact, count);
        QStringList expected;
        std::copy_if(names.cbegin(), names.cend(), std::back_inserter(expected), [&](const QString &name) {
            return isExact ? name == names.first() : lowered(name).startsWith(lowered(names.first()));
        });
        promise(database.run(statement) == expected, "a condition finds the names that it says");
    }
}

void checkSearches(MemoryDatabase &database, const QStringList &names)
{
    const QString &text = names.first();
    const QStringList found =
        database.run(QStringLiteral("SELECT name FROM CONTACT") + QueryText::allFieldsCondition(text));
    const bool isPlain =
        std::none_of(text.cbegin(), text.cend(), [](QChar c) { return QStringLiteral("%_$").contains(c); });
    promise(!isPlain || found.contains(text), "a search in all fields finds a plain text");
    const QString pattern = QueryText::namePattern(text, QStringLiteral(" "));
    promise(pattern.endsWith(QLatin1Char('%')), "a name is the begin of another");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t longest = 2000; // a pattern has a limit in the database
    static std::optional<MemoryDatabase> database;
    if (!database)
        createTable(database.emplace());
    QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(std::min(size, longest)));
    input.remove(QChar(0)); // no text from the bus has one
    // The database itself reads these two back as another one.
    input.replace(QChar(0xfffe), QChar(0xfffd)).replace(QChar(0xffff), QChar(0xfffd));
    QStringList names = input.split(QLatin1Char('\n'));

    promise(database->run(QLatin1String("SELECT ") + QueryText::quoted(input)) == QStringList{input},
            "a quoted text is that text");
    database->run(QStringLiteral("DELETE FROM CONTACT"));
    const QStringList asked = names;
    // Besides the texts those that an escape forgotten would find, too.
    QString similar = names.first();
    similar.replace(QLatin1Char('%'), QLatin1Char('x')).replace(QLatin1Char('_'), QLatin1Char('x'));
    for (const QString &other : {bystander, similar}) {
        if (!names.contains(other))
            names.append(other);
    }
    for (const QString &name : std::as_const(names))
        database->run(QStringLiteral("INSERT INTO CONTACT(contactId, name) VALUES(?1, ?1)"), {name});
    promise(database->run(QLatin1String("SELECT contactId FROM CONTACT WHERE contactId IN (") +
                          QueryText::idList(asked)) == asked,
            "a list of ids finds these ids");
    checkConditions(*database, names);
    checkSearches(*database, names);
    return 0;
}
