// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/bus/NumberService.h"

#include "platform/records/KestinBus.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

void convert(RemoteCaller &caller, QObject &receiver, const char *method, const QStringList &numbers,
             const std::function<void(const QStringList &converted)> &answer)
{
    const QDBusPendingCall call = caller.asyncRemoteCall(ModuleName::telephony, QLatin1String(method), {numbers});
    auto *watcher = new QDBusPendingCallWatcher(call, &receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &receiver, [watcher, numbers, answer] {
        watcher->deleteLater();
        const QDBusPendingReply<QStringList> reply = *watcher;
        const QStringList converted = reply.isError() ? QStringList() : reply.value();
        answer(converted.size() == numbers.size() ? converted : numbers);
    });
}

} // namespace

void NumberService::addCanonicalForms(RemoteCaller &caller, QObject &receiver, const DirectoryQuery &query,
                                      const std::function<void(const DirectoryQuery &complete)> &answer)
{
    QStringList numbers;
    for (const DirectoryCriterion &criterion : query.criteria) {
        if (criterion.isNumber && criterion.comparison == DirectoryCriterion::Equal)
            numbers += criterion.texts;
    }
    if (numbers.isEmpty()) {
        answer(query);
        return;
    }
    convert(caller, receiver, "makeCanonicalNumberListWithoutPrefix", numbers,
            [query, numbers, answer](const QStringList &canonical) {
                DirectoryQuery complete = query;
                for (DirectoryCriterion &criterion : complete.criteria) {
                    if (!criterion.isNumber || criterion.comparison != DirectoryCriterion::Equal)
                        continue;
                    criterion.texts.append(canonical.at(numbers.indexOf(criterion.texts.first())));
                    criterion.texts.removeDuplicates();
                }
                answer(complete);
            });
}

void NumberService::makeDialable(RemoteCaller &caller, QObject &receiver, const QString &number,
                                 const std::function<void(const QString &dialable)> &answer)
{
    convert(caller, receiver, "extractDialableNumberList", {number},
            [answer](const QStringList &dialable) { answer(dialable.first()); });
}
