// SPDX-License-Identifier: Apache-2.0
#include "bench/FlashRun.h"

#include "bench/BenchError.h"
#include "bench/MadeUpContacts.h"
#include "bench/ServiceProcess.h"
#include "bench/Stand.h"

#include <functional>

namespace {

constexpr int writes = 100;

} // namespace

FlashRun::FlashRun(Stand &stand, int size)
    : m_stand(stand)
    , m_size(size)
{
}

void FlashRun::measure(FigureTable &table) const
{
    const auto perWrite = [this](const QString &method, const std::function<QVariant(int)> &argument) {
        const qint64 before = writtenBytes(m_stand.directory().processId());
        for (int i = 0; i < writes; ++i) {
            const auto answer = m_stand.client().callDirectory(method, {QStringLiteral("bench"), argument(i)});
            if (answer.value<int>() != 0)
                throw BenchError(QStringLiteral("%1 answered %2").arg(method).arg(answer.value<int>()));
        }
        return double(writtenBytes(m_stand.directory().processId()) - before) / 1000 / writes;
    };
    const ListContact stored =
        m_stand.client().callDirectory(QStringLiteral("getLocalContacts"), {0, writes}).value<ListContact>();
    if (stored.size() != writes)
        throw BenchError(QStringLiteral("there are fewer than %1 contacts").arg(writes));
    const auto id = [&stored](int i) { return QVariant(stored.at(i).contactId); };
    const auto modified = [&stored](int i) {
        Contact contact = stored.at(i);
        contact.melody = QStringLiteral("bells");
        return QVariant::fromValue(contact);
    };
    const auto again = [&stored](int i) { return QVariant::fromValue(stored.at(i)); };
    table.put(m_size, Figure::ModificationBytes, {perWrite(QStringLiteral("modifyLocalContact"), modified), {}});
    table.put(m_size, Figure::DeletionBytes, {perWrite(QStringLiteral("deleteLocalContact"), id), {}});
    table.put(m_size, Figure::CreationBytes, {perWrite(QStringLiteral("createLocalContact"), again), {}});
    m_stand.directory().stop();
    m_stand.directory().start();
    table.put(m_size, Figure::StartBytes, {double(writtenBytes(m_stand.directory().processId())) / 1000, {}});
}
