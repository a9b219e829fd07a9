// SPDX-License-Identifier: Apache-2.0
#include "src/dao/Database.h"

#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinPaths.h"
#include "src/dao/DoubledIds.h"
#include "src/dao/Transaction.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace {

constexpr std::array schema{
    QLatin1String("CREATE TABLE IF NOT EXISTS CONTACT (contactId VARCHAR,loginName VARCHAR,salutation "
                  "VARCHAR,firstName VARCHAR,name VARCHAR,latinFirstName VARCHAR,latinName VARCHAR,language "
                  "VARCHAR,timezone VARCHAR,officePhone VARCHAR,officePhoneCan VARCHAR,attendant VARCHAR,colleague "
                  "VARCHAR,assistant VARCHAR,email VARCHAR,fax VARCHAR,faxCan VARCHAR,voicemail "
                  "VARCHAR,personalHome VARCHAR,personalHomeCan VARCHAR,personalMobile VARCHAR,personalMobileCan "
                  "VARCHAR,personalFax VARCHAR,personalFaxCan VARCHAR,personalEmail VARCHAR,collaborationId "
                  "VARCHAR,isPreviewed BOOLEAN,isPrivate BOOLEAN,type INTEGER,photo VARCHAR,melody VARCHAR,puid "
                  "varchar(256), lastModificationDate datetime)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS contact_id_idx ON CONTACT(contactId)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS type_idx ON CONTACT(type)"),
    QLatin1String("CREATE TABLE IF NOT EXISTS MISC (contactId VARCHAR,keyName VARCHAR,value VARCHAR)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS misc_id_idx ON MISC(contactId,keyName)"),
    QLatin1String("CREATE TRIGGER IF NOT EXISTS del_on_cascade_trg BEFORE DELETE ON CONTACT FOR EACH ROW BEGIN "
                  "DELETE from MISC WHERE contactId = OLD.contactId; END"),
    QLatin1String("CREATE TRIGGER IF NOT EXISTS update_on_cascade_trg UPDATE OF lastModificationDate ON contact FOR"
                  " EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END"),
    QLatin1String("CREATE TRIGGER IF NOT EXISTS insert_local_MA_contact_trg AFTER INSERT ON CONTACT BEGIN update "
                  "CONTACT set contactId=('#CONTACT_' || (last_insert_rowid()) || '#') where "
                  "rowid=last_insert_rowid() and (type='0' or type='5'); end")};

const QString contactProbe =
    QStringLiteral("SELECT contactId, loginName, salutation, firstName, name, latinFirstName, latinName, language, "
                   "timezone, officePhone, officePhoneCan, attendant, colleague, assistant, email, fax, voicemail, "
                   "personalHome, personalHomeCan, personalMobile, personalMobileCan, personalFax, personalFaxCan, "
                   "personalEmail, collaborationId, isPreviewed, isPrivate, type, photo, melody, puid, "
                   "lastModificationDate FROM Contact LIMIT 1");
const QString miscProbe = QStringLiteral("SELECT contactId, keyName, value FROM Misc LIMIT 1");

// Each serves a statement that would read the whole table without it: the look-up by number (one index a number), by
// e-mail and instant-messaging address whatever the letter case, by the exact one of the latter, the pages of the
// preview list, the names still to be filled at start, the search by a prefix of the latin name, which LIKE makes
// whatever the letter case, and what is asked about photos.
constexpr std::array lookUpIndexes{
    QLatin1String("CREATE INDEX IF NOT EXISTS office_phone_can_idx ON CONTACT(officePhoneCan)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS fax_can_idx ON CONTACT(faxCan)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS personal_home_can_idx ON CONTACT(personalHomeCan)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS personal_mobile_can_idx ON CONTACT(personalMobileCan)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS personal_fax_can_idx ON CONTACT(personalFaxCan)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS email_idx ON CONTACT(upper(email))"),
    QLatin1String("CREATE INDEX IF NOT EXISTS collaboration_id_idx ON CONTACT(upper(collaborationId))"),
    QLatin1String("CREATE INDEX IF NOT EXISTS exact_collaboration_id_idx ON CONTACT(collaborationId)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS preview_idx ON CONTACT(isPreviewed, contactId)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS latin_name_idx ON CONTACT(latinName COLLATE NOCASE)"),
    QLatin1String("CREATE INDEX IF NOT EXISTS no_latin_name_idx ON CONTACT(latinName) WHERE latinName=''"),
    QLatin1String("CREATE INDEX IF NOT EXISTS photo_idx ON CONTACT(photo)"),
};

// Write-ahead logging lets a search read while a contact is written; FULL makes a committed write survive a power
// cut. The log is cut back after a large import, so that it does not keep flash that nothing uses; not
// below the size at which it begins anew, or it would be cut and grow in turn. What a statement with a trigger or a
// savepoint may have to undo is kept in memory: in a temporary file it would be as many bytes again for each write.
constexpr std::array pragmas{
    QLatin1String("PRAGMA journal_mode=WAL"),
    QLatin1String("PRAGMA synchronous=FULL"),
    QLatin1String("PRAGMA journal_size_limit=8388608"),
    QLatin1String("PRAGMA temp_store=MEMORY"),
};

/// Whether the database answered that its content is not what it should be, rather than that it cannot be read now.
bool isAboutContent(const QSqlError &error)
{
    const int code = error.nativeErrorCode().toInt() & 0xff;
    return code == SQLITE_ERROR /* no such table or column */ || code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

/// Of what SQLite allocates it would keep the sum, under a lock, and nobody asks for it. To be called before it is
/// first used; later it changes nothing.
void countNoMemory()
{
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

} // namespace

Database::~Database()
{
    m_connection.reset();
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
}

bool Database::openDatabase(const QString &folder)
{
    m_connection.reset();
    QSqlDatabase handle = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    m_folder = folder.isEmpty() ? KestinPaths::data(QStringLiteral("/data/KestinApplication/KestinDirectory")) : folder;
    m_filePath = m_folder + QLatin1String("/kestindirectory.data");
    KestinLogger::debug("Connecting to database at %1...", m_filePath);
    if (!QDir(m_folder).exists())
        QDir().mkpath(QDir(m_folder).absolutePath());
    handle.setDatabaseName(m_filePath);
    countNoMemory();
    const auto refusal = m_lock.take(m_folder);
    const bool opened = !refusal && handle.open();
    m_connection = std::make_unique<Connection>(handle);
    if (!opened)
        return refuse(refusal ? QSqlError(*refusal, {}, QSqlError::ConnectionError) : handle.lastError());
    prepare(handle);
    return true;
}

void Database::prepare(const QSqlDatabase &handle)
{
    for (const QLatin1String pragma : pragmas)
        QSqlQuery(handle).exec(pragma); // a file that is no database refuses; checkTables says so
}

bool Database::refuse(const QSqlError &reason)
{
    m_checkError = reason;
    KestinLogger::error("The database %1 cannot be opened: %2", m_filePath, reason.text());
    return false;
}

bool Database::checkTables()
{
    m_checkError = m_connection->handle().isOpen() ? QSqlError() : m_checkError;
    return probe(contactProbe, "Table Contact is not correct. Check fails") &&
           probe(miscProbe, "Table Misc is not correct. Check fails") && checkTriggers();
}

bool Database::probe(const QString &statement, const char *failure)
{
    const QSqlQuery query = m_connection->executeQuery(statement);
    if (query.isActive())
        return true;
    if (m_connection->handle().isOpen())
        m_checkError = query.lastError();
    KestinLogger::info(failure);
    return false;
}

bool Database::checkTriggers()
{
    QStringList expected{QStringLiteral("insert_local_MA_contact_trg"), QStringLiteral("update_on_cascade_trg"),
                         QStringLiteral("del_on_cascade_trg")};
    QSqlQuery query = m_connection->executeQuery(QStringLiteral("SELECT name FROM sqlite_master WHERE type='trigger'"));
    while (query.next()) {
        const QString name = query.value(0).toString();
        if (!expected.removeOne(name)) {
            KestinLogger::info("Trigger %1 is unknown!", name);
            return false;
        }
    }
    m_checkError = query.lastError(); // a list that could not be read tells nothing about the triggers
    if (expected.isEmpty())
        return true;
    KestinLogger::info("Missing trigger(s) : %2", expected.join(QLatin1String(" / ")));
    return false;
}

bool Database::dropTables()
{
    if (!m_connection->executeQuery(QStringLiteral("DROP TABLE IF EXISTS CONTACT")).isActive())
        return false;
    return m_connection->executeQuery(QStringLiteral("DROP TABLE IF EXISTS MISC")).isActive();
}

bool Database::createTables()
{
    Transaction transaction(*m_connection); // one write to the disk, and all or nothing
    bool created = transaction.isActive() && dropTables();
    for (auto statement = schema.cbegin(); statement != schema.cend() && created; ++statement)
        created = m_connection->executeQuery(*statement).isActive();
    created = created && createLookUpIndexes();
    m_connection->beginEpoch();
    return created && transaction.commit();
}

void Database::completeTables()
{
    if (!addMissingColumn())
        KestinLogger::error("No contact can be read or written: the column faxCan is missing and cannot be added");
    if (!createLookUpIndexes())
        KestinLogger::warning("The look-ups are slow: an index could not be made");
    if (!DoubledIds::removeCopies(*m_connection))
        KestinLogger::warning("Cached copies with the ids of other contacts could not be removed");
}

bool Database::addMissingColumn()
{
    QSqlQuery column =
        m_connection->executeQuery(QStringLiteral("SELECT 1 FROM pragma_table_info('CONTACT') WHERE name='faxCan'"));
    if (column.next())
        return true;
    column.finish(); // a table that is being read cannot be changed
    Transaction transaction(*m_connection);
    return m_connection->executeQuery(QStringLiteral("ALTER TABLE CONTACT ADD COLUMN faxCan VARCHAR")).isActive() &&
           m_connection->executeQuery(QStringLiteral("UPDATE CONTACT SET faxCan=ifnull(fax, '')")).isActive() &&
           m_connection->setUserVersion(Connection::numbersStale) && transaction.commit();
}

bool Database::createLookUpIndexes()
{
    return std::all_of(lookUpIndexes.cbegin(), lookUpIndexes.cend(),
                       [this](QLatin1String statement) { return m_connection->executeQuery(statement).isActive(); });
}

/// Whether there is nothing in it to be kept. No when that could not be read.
bool Database::isEmpty()
{
    if (QFileInfo(m_filePath).size() == 0)
        return true;
    QSqlQuery query = m_connection->executeQuery(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"));
    const bool isRead = query.next();
    if (!isRead && !m_checkError.isValid())
        m_checkError = query.lastError();
    return isRead && query.value(0).toInt() == 0;
}

/// Whether the check failed for another reason than the content.
bool Database::isUnreadable() const
{
    return m_checkError.isValid() && !isAboutContent(m_checkError);
}

bool Database::setAside()
{
    const bool isNothingLost = !isUnreadable() && isEmpty();
    if (isUnreadable()) {
        KestinLogger::error("The database %1 cannot be read and is left as it is: %2", m_filePath, m_checkError.text());
        return false;
    }
    if (isNothingLost)
        return true;
    m_connection.reset();
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
    const auto keptAs = setAsideFiles().add();
    if (!keptAs) {
        KestinLogger::error("The database %1 failed the check and cannot be set aside", m_filePath);
        return false;
    }
    KestinLogger::warning("The database %1 failed the check. It is kept as %2 and an empty one takes its place. What "
                          "can be read of it is brought back by: kestin-dir recover %2",
                          m_filePath, *keptAs);
    return openDatabase(m_folder);
}
