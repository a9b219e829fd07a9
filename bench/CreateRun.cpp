// SPDX-License-Identifier: Apache-2.0
#include "bench/CreateRun.h"

#include "bench/BareStore.h"
#include "bench/BenchError.h"
#include "bench/BusClient.h"
#include "bench/MadeUpContacts.h"
#include "bench/Rounds.h"
#include "platform/records/ContactIds.h"

namespace {
constexpr int perRound = 10;
}

CreateRun::CreateRun(const BusClient &client, const QString &bareDatabase, int stored)
    : m_client(client)
    , m_bareDatabase(bareDatabase)
    , m_stored(stored)
{
}

qint64 CreateRun::create(int index) const
{
    const QVariant contact = QVariant::fromValue(MadeUpContacts::contact(index));
    const auto answer =
        m_client.callDirectory(QStringLiteral("createLocalContact"), {QStringLiteral("bench"), contact});
    if (answer.value<int>() != 0)
        throw BenchError(QStringLiteral("createLocalContact answered %1").arg(answer.value<int>()));
    return answer.nanoseconds;
}

void CreateRun::measure(int creates, int size, FigureTable &table, Progress &progress) const
{
    BareStore bare(m_bareDatabase);
    const auto telephony = [this](const QString &method) {
        return [this, method](int i) {
            return m_client.callTelephony(method, MadeUpContacts::rawNumbers(m_stored + i)).nanoseconds;
        };
    };
    // What the service stored of a contact is what goes into the bare store, so both write the same.
    const auto insert = [this, &bare](int i) {
        const QString id = ContactIds::ofRow(m_stored + i + 1);
        const auto stored = m_client.callDirectory(QStringLiteral("getContactById"), {id}).value<ListContact>();
        if (stored.isEmpty())
            throw BenchError(QStringLiteral("a contact that was created is not there"));
        return bare.insert(stored.first());
    };
    Rounds rounds;
    const std::size_t create = rounds.add([this](int i) { return this->create(m_stored + i); });
    const std::size_t bareInsert = rounds.add(insert);
    const std::size_t dialable = rounds.add(telephony(QStringLiteral("extractDialableNumberList")));
    const std::size_t canonical = rounds.add(telephony(QStringLiteral("makeCanonicalNumberListWithoutPrefix")));
    const std::size_t empty = rounds.add([this](int) { return m_client.emptyCall().nanoseconds; });
    rounds.run(warmUp, creates, perRound, progress);

    double floors = 0;
    const auto put = [&](Figure figure, std::size_t kind) {
        const Samples &samples = rounds.samples(kind);
        table.put(size, figure, {samples.median(), samples.percentile99()});
        floors += kind == create ? 0 : samples.median();
    };
    put(Figure::Create, create);
    put(Figure::BareInsert, bareInsert);
    put(Figure::DialableNumbers, dialable);
    put(Figure::CanonicalNumbers, canonical);
    put(Figure::EmptyCallBesideCreates, empty);
    table.put(size, Figure::CreateToFloors, {rounds.samples(create).median() / floors, {}});
}
