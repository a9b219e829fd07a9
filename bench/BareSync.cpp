// SPDX-License-Identifier: Apache-2.0
#include "bench/BareStore.h"

#include "bench/BenchError.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <array>

namespace {

constexpr std::array elements{"duid",         "puid",           "date",          "firstName",
                              "lastName",     "email",          "personalEmail", "officePhone",
                              "personalHome", "personalMobile", "photo",         "collaborationId",
                              "officePhone2", "otherPhone",     "assistant"};

SqliteHandles::Statement prepared(sqlite3 *database, const char *text)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(database, text, -1, &statement, nullptr) != SQLITE_OK)
        throw BenchError(QString::fromUtf8(sqlite3_errmsg(database)));
    return SqliteHandles::Statement(statement);
}

QString text(sqlite3_stmt *statement, int column)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)));
}

void writePairs(sqlite3_stmt *pairs, const QString &contactId, QXmlStreamWriter &writer)
{
    const QByteArray id = contactId.toUtf8();
    sqlite3_bind_text(pairs, 1, id.constData(), int(id.size()), SQLITE_STATIC);
    while (sqlite3_step(pairs) == SQLITE_ROW)
        writer.writeTextElement(text(pairs, 0), text(pairs, 1));
    sqlite3_reset(pairs);
}

/// The next contact of the file; false at its end.
bool readContact(QXmlStreamReader &reader, Contact &contact)
{
    constexpr std::pair<const char *, QString Contact::*> fields[] = {
        {"firstName", &Contact::firstName},
        {"lastName", &Contact::name},
        {"email", &Contact::email},
        {"personalEmail", &Contact::personalEmail},
        {"officePhone", &Contact::officePhone},
        {"personalHome", &Contact::personalHome},
        {"personalMobile", &Contact::personalMobile},
        {"collaborationId", &Contact::collaborationId},
        {"officePhone2", &Contact::personalFax},
        {"otherPhone", &Contact::fax},
    };
    contact = Contact();
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement() && reader.name() == QLatin1String("contact"))
            return true;
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("company"))
            contact.misc.insert(QStringLiteral("company"), reader.readElementText());
        for (const auto &[name, field] : fields) {
            if (reader.isStartElement() && reader.name() == QLatin1String(name))
                contact.*field = reader.readElementText();
        }
    }
    return false;
}

/// What the service derives, so that both fill the same columns and indexes.
void complete(Contact &contact)
{
    contact.officePhoneCan = contact.officePhone;
    contact.faxCan = contact.fax;
    contact.personalHomeCan = contact.personalHome;
    contact.personalMobileCan = contact.personalMobile;
    contact.personalFaxCan = contact.personalFax;
    contact.latinName = contact.name + contact.name;
    contact.latinFirstName = contact.firstName + contact.firstName;
}

} // namespace

qint64 BareSync::exportTo(const QString &database, const QString &path)
{
    sqlite3 *opened = nullptr;
    sqlite3_open_v2(QFile::encodeName(database).constData(), &opened, SQLITE_OPEN_READONLY, nullptr);
    const SqliteHandles::Database handle(opened);
    const auto contacts = prepared(opened, "SELECT contactId, puid, lastModificationDate, firstName, name, email, "
                                           "personalEmail, officePhone, personalHome, personalMobile, photo, "
                                           "collaborationId, personalFax, fax, assistant FROM CONTACT where type='0'");
    const auto pairs = prepared(opened, "SELECT keyName, value FROM MISC WHERE contactId=?");
    QElapsedTimer timer;
    timer.start();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw BenchError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    QXmlStreamWriter writer(&file);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("directory"));
    while (sqlite3_step(contacts.get()) == SQLITE_ROW) {
        writer.writeStartElement(QStringLiteral("contact"));
        int column = 0;
        for (const char *element : elements)
            writer.writeTextElement(QLatin1String(element), text(contacts.get(), column++));
        writePairs(pairs.get(), text(contacts.get(), 0), writer);
        writer.writeEndElement();
    }
    writer.writeEndDocument();
    if (!file.commit())
        throw BenchError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    return timer.nsecsElapsed();
}

qint64 BareSync::importFrom(const QString &path, const QString &database, int contacts)
{
    BareStore store(database);
    QElapsedTimer timer;
    timer.start();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw BenchError(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
    QXmlStreamReader reader(&file);
    Contact contact;
    int count = 0;
    store.begin();
    for (; readContact(reader, contact); ++count) {
        complete(contact);
        store.add(contact);
    }
    store.commit();
    const qint64 nanoseconds = timer.nsecsElapsed();
    if (count != contacts)
        throw BenchError(QStringLiteral("%1 holds %2 contacts, not %3").arg(path).arg(count).arg(contacts));
    return nanoseconds;
}
