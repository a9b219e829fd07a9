// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "platform/records/Setting.h"

#include <QJsonObject>
#include <QStringList>

#include <optional>

/// Contacts as people read them. Nothing is escaped here: the code that writes a line does that.
namespace ContactText {

/// "local", "cached", "dm", "manager", "company", or the number of another kind.
QString typeName(qint32 type);
/// The kind of stored contact that a word of `typeName` or a number means. Nothing when it means no kind.
std::optional<qint32> typeOf(const QString &word);
/// The words, for help texts.
QStringList typeNames();

/// (field, value) of everything that is set, in the order of the record; a misc pair is called "misc.KEY".
QList<std::pair<QString, QString>> setFields(const Contact &contact);

} // namespace ContactText

/// Records as JSON objects. The keys are the names of the records' fields. Every field is there, so that a script need
/// not ask which are. The program promises the keys to scripts.
namespace RecordJson {

/// `misc` is an object. `lastModificationDate` is ISO 8601, or empty for a contact that was never stored.
QJsonObject of(const Contact &contact);
QJsonObject of(const ContactSummary &summary);
/// With one key more: "company" tells whether the contact is of the company directory.
template <typename Record>
QJsonObject ofFound(const Record &contact)
{
    QJsonObject object = of(contact);
    object.insert(QLatin1String("company"), contact.isOfCompany());
    return object;
}
/// `choices` is an array of {"value", "label"}.
QJsonObject of(const Setting &setting);

} // namespace RecordJson
