// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "platform/records/Setting.h"

#include <QJsonObject>

/// Records as JSON objects. The keys are the names of the records' fields and every field is there, so that a script
/// need not ask which are; they are part of what the program promises.
namespace RecordJson {

/// `misc` is an object; `lastModificationDate` is ISO 8601, or empty for a contact that was never stored.
QJsonObject of(const Contact &contact);
QJsonObject of(const ContactSummary &summary);
/// `choices` is an array of {"value", "label"}.
QJsonObject of(const Setting &setting);

} // namespace RecordJson
