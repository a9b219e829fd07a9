// SPDX-License-Identifier: Apache-2.0
// Any file at all as a database of the directory. Its reading ends, changes nothing in the file, and what it counts is
// what it answers.
#include "client/recover/StoreRecovery.h"
#include "fuzz/MemoryFile.h"

namespace {

void check(const RecoveredStore &store)
{
    promise(store.read.value(ContactType::Local) == store.contacts.size(), "the contacts that are counted are there");
    for (const Contact &contact : store.contacts) {
        promise(contact.type == ContactType::Local, "only the user's own come back");
        for (const Contact::TextField &field : Contact::texts)
            promise(!(contact.*field.value).contains(QChar::Null), "the bus can carry each text");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static MemoryFile file;
    file.setContent(data, size);
    RecoveryProgress progress;
    try {
        check(StoreRecovery(file.path(), progress).read());
    } catch (const CommandFailure &failure) {
        promise(failure.code() == ExitCode::FileError, "only the file is to blame");
    }
    QFile after(file.path());
    promise(after.open(QIODevice::ReadOnly) &&
                after.readAll() == QByteArrayView(reinterpret_cast<const char *>(data), qsizetype(size)),
            "the file is as it was");
    return 0;
}
