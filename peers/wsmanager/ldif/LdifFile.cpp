// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldif/LdifFile.h"

#include "peers/wsmanager/company/DnText.h"
#include "peers/wsmanager/company/LdapMemory.h"
#include "platform/records/RegularFile.h"

#include <ldif.h>

#include <cstdlib>
#include <memory>

namespace {

QString textOf(const berval &value)
{
    return QString::fromUtf8(value.bv_val, qsizetype(value.bv_len));
}

/// What a record holds.
using LdifRecord = std::unique_ptr<LDIFRecord, LdapDeleter<ldap_ldif_record_done>>;

/// What the library reads a record into, and grows as it needs.
struct RecordText
{
    RecordText() = default;
    RecordText(const RecordText &) = delete;
    RecordText &operator=(const RecordText &) = delete;
    ~RecordText() { ber_memfree(text); }

    char *text = nullptr;
    int size = 0;
};

/// The line "version: 1" may stand alone at the beginning.
bool isVersion(const berval &record)
{
    return QByteArrayView(record.bv_val, qsizetype(record.bv_len)).startsWith("version:");
}

DirectoryEntry entryOf(const LDIFRecord &record)
{
    DirectoryEntry entry;
    entry.dn = DnText::normalized(QByteArray(record.lr_dn.bv_val, qsizetype(record.lr_dn.bv_len)));
    for (LDAPMod **attribute = record.lrop_mods; attribute && *attribute; ++attribute) {
        for (berval **value = (*attribute)->mod_bvalues; value && *value; ++value)
            entry.add(QString::fromUtf8((*attribute)->mod_type), textOf(**value));
    }
    return entry;
}

} // namespace

LdifFile LdifFile::read(const QString &path)
{
    LdifFile result;
    QFile regular(path);
    std::optional<QString> reason = RegularFile::open(regular);
    const QByteArray name = "/proc/self/fd/" + QByteArray::number(regular.handle()); // the library opens by name only
    const std::unique_ptr<LDIFFP, decltype(&ldif_close)> file(ldif_open(name.constData(), "r"), &ldif_close);
    if (!reason && !file)
        reason = qt_error_string();
    if (reason) {
        result.problem = QStringLiteral("%1 cannot be opened: %2").arg(path, *reason);
        return result;
    }
    RecordText buffer;
    unsigned long line = 0;
    int state = 0;
    while (!result.problem && (state = ldif_read_record(file.get(), &line, &buffer.text, &buffer.size)) > 0) {
        LDIFRecord record{};
        const LdifRecord owned(&record);
        berval text{ber_len_t(buffer.size), buffer.text};
        const bool isVersionLine = isVersion(text); // the text is gone once it has been parsed
        const int rc = ldap_parse_ldif_record(&text, line, &record, "kestin-wsmanager",
                                              LDIF_DEFAULT_ADD | LDIF_ENTRIES_ONLY | LDIF_NO_CONTROLS);
        const DirectoryEntry entry = rc == LDAP_SUCCESS ? entryOf(record) : DirectoryEntry();
        if (!entry.dn.isEmpty())
            result.entries.append(entry);
        else if (!isVersionLine)
            result.problem = QStringLiteral("%1 is no well-formed LDIF near line %2").arg(path, QString::number(line));
    }
    if (state < 0)
        result.problem = QStringLiteral("%1 cannot be read").arg(path);
    return result;
}
