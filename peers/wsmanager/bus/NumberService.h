// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/wsmanager/company/DirectoryQuery.h"
#include "platform/framework/RemoteCaller.h"

#include <QObject>

#include <functional>

/// What the module "Telephony" is asked about numbers. The answer comes later (or at once), and not at all once the
/// receiver is gone; a module that is not there leaves everything as it was. Main thread only.
namespace NumberService {

/// Gives the criteria on numbers a second text, the number's canonical form: a directory holds numbers as they are
/// dialled from abroad, a caller's may have come in the form used at home.
void addCanonicalForms(RemoteCaller &caller, QObject &receiver, const DirectoryQuery &query,
                       const std::function<void(const DirectoryQuery &complete)> &answer);

void makeDialable(RemoteCaller &caller, QObject &receiver, const QString &number,
                  const std::function<void(const QString &dialable)> &answer);

} // namespace NumberService
