// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/fields/DirectoryFields.h"
#include "tests/src/dao/TemporaryStore.h"
#include "tests/support/Person.h"
#include "tests/support/ScriptedTransport.h"

/// What a use case is made with: an empty store, fields with room for a thousand contacts and 100 MiB of photos, and a
/// telephony service that takes the blanks out of numbers and puts "+" before canonical ones.
struct UseCaseFixture : TemporaryStore
{
    UseCaseFixture()
    {
        fields.maxContacts = 1000;
        fields.comLogSize = 40;
        fields.searchMode = DirectoryFields::fullList;
        fields.photoDirectory = folder.filePath("photos/");
        fields.fileDiskUserQuota = 100 << 20;
        QDir().mkpath(fields.photoDirectory);
        transport.answer = ScriptedTransport::answerAsTelephony;
    }

    Contact stored(const QString &id) { return dao->getContact(id)->value(0); }
    QStringList photoFiles() const
    {
        return QDir(fields.photoDirectory).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    LogCapture log;
    DirectoryFields fields;
    ScriptedTransport transport;
};
