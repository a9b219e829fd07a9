// SPDX-License-Identifier: Apache-2.0
#include "client/recover/StoreRecovery.h"

#include "client/recover/ContactColumns.h"
#include "client/recover/WriteAheadLog.h"
#include "platform/records/ContactIds.h"

#include <algorithm>
#include <utility>

namespace {

const QString contactTable = QStringLiteral("CONTACT");
const QString miscTable = QStringLiteral("MISC");

CommandFailure failure(const QString &name, const QString &reason)
{
    return {ExitCode::FileError, QStringLiteral("%1 %2").arg(name, reason)};
}

QStringList miscColumns()
{
    return {QStringLiteral("contactId"), QStringLiteral("keyName"), QStringLiteral("value")};
}

/// Of the columns of a table those that hold something of a contact.
QStringList wanted(const QStringList &columns)
{
    QStringList known = ContactColumns::all();
    known.removeIf([&columns](const QString &column) { return !columns.contains(column, Qt::CaseInsensitive); });
    return known;
}

QMap<int, int> countsOf(const QHash<qint64, QString> &types)
{
    QMap<int, int> counts;
    for (const QString &type : types)
        ++counts[type.toInt()];
    return counts;
}

/// Whether there is nothing by which anybody would know the contact: a row that became zeros looks like that.
bool isBlank(const Contact &contact)
{
    const auto isSet = [&contact](const Contact::TextField &field) {
        return field.value != &Contact::contactId && !(contact.*field.value).isEmpty();
    };
    return contact.misc.isEmpty() && std::none_of(Contact::texts.begin(), Contact::texts.end(), isSet);
}

} // namespace

bool StoreRecovery::Table::lacks(qint64 row) const
{
    const bool isBetween = !walk.isWhole && row > walk.after && row < walk.before;
    return isBetween && !read.contains(row) && (!listed || listed->contains(row));
}

StoreRecovery::StoreRecovery(const QString &path, RecoveryProgress &progress)
    : m_name(path)
    , m_progress(progress)
    , m_copy(path, progress)
    , m_isLogWhole(WriteAheadLog::isWhole(m_copy.path() + QLatin1String("-wal")))
    , m_pages(m_copy.path())
{
    if (!m_pages.isDatabase())
        throw failure(path, QStringLiteral("is no database, and nothing in it looks like a part of one"));
}

RecoveredStore StoreRecovery::read()
{
    bool isReadable = !m_pages.contradictsHeader() && readTables();
    if (!isReadable) {
        m_isMended = true;
        isReadable = m_pages.mendHeader() && readTables();
    }
    m_pages.refresh();
    if (!m_contactTable.walk.isWhole || !m_miscTable.walk.isWhole)
        readPages();
    if (!isReadable && m_contacts.isEmpty())
        throw failure(m_name, QStringLiteral("is damaged, and no contact can be read in it"));
    return result();
}

/// False when SQLite cannot tell which tables there are.
bool StoreRecovery::readTables()
{
    SqliteTables tables(m_copy.path(), m_progress);
    if (!tables.isReadable())
        return false;
    m_contactTable.columns = tables.columns(contactTable);
    const QStringList columns = wanted(m_contactTable.columns);
    if (!tables.has(contactTable) || !columns.contains(QLatin1String("contactId")) ||
        !columns.contains(QLatin1String("type")))
        throw failure(m_name, QStringLiteral("is no database of the directory: it has no table of contacts"));
    const auto takeContact = [this, columns](const StoredRow &row) {
        if (const auto contact = ContactColumns::contactOf(columns, row))
            add(*contact, row.id);
    };
    readTable(tables, contactTable, columns, QStringLiteral("type_idx"), QStringLiteral("type"), m_contactTable,
              takeContact);
    if (tables.has(miscTable))
        readTable(tables, miscTable, miscColumns(), QStringLiteral("misc_id_idx"), QStringLiteral("contactId"),
                  m_miscTable, [this](const StoredRow &row) { takeMisc(row); });
    else
        m_miscTable.walk.isWhole = true;
    return true;
}

void StoreRecovery::readTable(SqliteTables &tables, const QString &name, const QStringList &columns,
                              const QString &index, const QString &indexed, Table &table,
                              const SqliteTables::Take &take)
{
    const auto takeOnce = [&](const StoredRow &row) {
        table.read.insert(row.id);
        take(row);
    };
    table.walk = tables.walk(name, columns, takeOnce);
    if (table.walk.isWhole)
        return;
    table.listed = tables.listed(name, index, indexed);
    const auto isListed = [&table](qint64 row) { return table.listed->contains(row); };
    if (table.listed && !std::all_of(table.read.cbegin(), table.read.cend(), isListed))
        table.listed.reset();
    if (!table.listed)
        return;
    for (auto row = table.listed->cbegin(); row != table.listed->cend(); ++row) {
        if (table.lacks(row.key()))
            tables.read(name, columns, row.key(), takeOnce);
    }
}

void StoreRecovery::takeMisc(const StoredRow &row)
{
    m_misc[row.values.at(0)].insert(row.id, {row.values.at(1), row.values.at(2)});
}

void StoreRecovery::readPages()
{
    const std::optional<QSet<quint32>> free = m_pages.freePages();
    m_isFreeListKnown = free.has_value();
    m_orders = ContactColumns::orders(m_contactTable.columns);
    m_encodings = m_pages.encodings();
    LeafRows rows(m_pages);
    for (quint32 page = 1; page <= m_pages.pageCount(); ++page) {
        m_progress.advance(page, m_pages.pageCount());
        if (free && free->contains(page))
            continue;
        for (const LeafRows::Row &row : rows.of(page))
            takeRow(row);
    }
}

void StoreRecovery::takeRow(const LeafRows::Row &row)
{
    const bool isMisc = row.values.size() == miscColumns().size() && row.isText() && m_miscTable.lacks(row.id);
    if (!isMisc && !m_contactTable.lacks(row.id))
        return;
    for (const PageFile::Encoding encoding : std::as_const(m_encodings)) {
        const StoredRow decoded = row.decoded(encoding);
        if (isMisc && (m_encodings.size() == 1 || ContactIds::isOfDirectory(decoded.values.first())))
            return takeMisc(decoded);
        for (const QStringList &columns : std::as_const(m_orders)) {
            if (const auto contact = ContactColumns::contactOf(columns, decoded))
                return add(*contact, row.id);
        }
    }
}

void StoreRecovery::add(const Contact &contact, qint64 id)
{
    const auto found = m_contacts.constFind(id);
    if (found != m_contacts.cend() && found->getLastModificationDate() > contact.getLastModificationDate())
        return; // an older form of the row, on a page that is not in use
    Contact kept;
    kept.type = contact.type;
    m_contacts.insert(id, contact.type == ContactType::Local ? contact : kept);
}

/// With its pairs.
Contact StoreRecovery::contactAt(qint64 row) const
{
    Contact contact = m_contacts.value(row);
    // An id that is damaged was made of the row.
    const bool isOwnId = ContactIds::isOfDirectory(contact.contactId);
    const auto pairs = m_misc.value(isOwnId ? contact.contactId : ContactIds::ofRow(row));
    for (const auto &[key, value] : pairs)
        contact.misc.insert(key, value);
    return contact;
}

RecoveredStore StoreRecovery::result() const
{
    RecoveredStore store;
    QMap<int, int> rows;
    for (auto row = m_contacts.cbegin(); row != m_contacts.cend(); ++row) {
        ++rows[row->type];
        const bool isLocal = row->type == ContactType::Local;
        const Contact contact = isLocal ? contactAt(row.key()) : *row;
        if (isLocal && isBlank(contact))
            continue;
        ++store.read[contact.type];
        if (isLocal)
            store.contacts.append(contact);
    }
    const bool isWhole = m_contactTable.walk.isWhole && m_contactTable.read.size() == m_contacts.size();
    if (isWhole)
        store.held = rows;
    else if (m_contactTable.listed)
        store.held = countsOf(*m_contactTable.listed);
    store.isDamaged = m_isMended || !m_isLogWhole || !isWhole || !m_miscTable.walk.isWhole || rows != store.read;
    const auto isAllKnown = [](const Table &table) { return table.walk.isWhole || table.listed; };
    store.mayHoldRemoved =
        !m_isLogWhole || (!m_isFreeListKnown && !(isAllKnown(m_contactTable) && isAllKnown(m_miscTable)));
    store.mayLackPairs = !m_miscTable.walk.isWhole;
    return store;
}
