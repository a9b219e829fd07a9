// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

/// The directory's ResultCodes as sentences. The same number means different things in different calls, so each call
/// has a function. `code` is not ResultCode::done.
namespace RefusalText {

/// Whether the code says that no further contact can be created for now: the directory is full or read-only.
bool isFinal(int createCode);

/// That there is no room for another contact.
QString ofFullDirectory();

QString ofCreate(int code, const Contact &contact);
QString ofModify(int code, const Contact &contact);
QString ofRemove(int code, const QString &id);
QString ofAddToPreview(int code, const QString &id);
QString ofRemoveFromPreview(int code, const QString &id);

} // namespace RefusalText
