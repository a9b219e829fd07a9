// SPDX-License-Identifier: Apache-2.0
// Any bytes as the answer of a photo server: no more of them is held than the limits say, and it does not matter in
// which pieces they come. The first byte says how large these are.
#include "fuzz/Promise.h"
#include "src/download/HttpAnswer.h"

#include <algorithm>

namespace {

constexpr qint64 maxBody = 100;

HttpAnswer read(QByteArrayView bytes, qsizetype piece, HttpAnswer::State &state)
{
    HttpAnswer answer(maxBody);
    for (; !bytes.isEmpty(); bytes = bytes.sliced(std::min(piece, bytes.size())))
        answer.take(bytes.first(std::min(piece, bytes.size())));
    state = answer.end();
    return answer;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArrayView bytes(data + 1, qsizetype(size) - 1);
    HttpAnswer::State state{};
    HttpAnswer::State otherState{};
    const HttpAnswer whole = read(bytes, bytes.size(), state);
    const HttpAnswer inPieces = read(bytes, data[0] + 1, otherState);
    promise(whole.body().size() <= maxBody, "the body keeps its limit");
    promise(state == otherState && state != HttpAnswer::Reading, "the pieces do not matter");
    if (state == HttpAnswer::Complete)
        promise(whole.body() == inPieces.body() && whole.status() == inPieces.status() &&
                    whole.location() == inPieces.location(),
                "nor do they to what was read");
    return 0;
}
