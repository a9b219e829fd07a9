// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/LatinText.h"
#include "platform/records/PlatformEvents.h"
#include "src/numbers/CanonicalNumbers.h"
#include "src/search/ContactSearch.h"
#include "src/search/RemoteSearchThreads.h"
#include "tests/support/UseCaseFixture.h"

#include <functional>

/// A search over a database of its own, with a company directory that is a script: `remote` is given what a worker asks
/// for ("search", "next", "stop") on the main thread and puts answers into the mailbox.
struct SearchFixture : UseCaseFixture
{
    SearchFixture()
    {
        registerDBusContact();
        search.emplace(fields, *dao, numbers);
        QObject::connect(&*search, &ContactSearch::workerCreated, &context,
                         [this](SearchThread *worker) { connect(worker); });
        QObject::connect(&*search, &ContactSearch::searchResults, &context, note("results"));
        QObject::connect(&*search, &ContactSearch::completedByName, &context, note("completed"));
        QObject::connect(
            &*search, &ContactSearch::completedByPhoneNumber, &context,
            [this](const QString &id, const Contact &contact) { told.append("number " + id + ' ' + contact.name); });
    }

    void connect(SearchThread *worker)
    {
        QObject::connect(worker, &SearchThread::signal_addContactsToMap, &*search, &ContactSearch::addContacts);
        QObject::connect(worker, &SearchThread::signal_storeDamaged, &context, [this] { told.append("damaged"); });
        QObject::connect(worker, &SearchThread::signal_threadSearchFinished, &*search,
                         [this, worker](const QString &id) { search->finishWorker(worker, id); });
        QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
        const auto ask = [this](const char *what) {
            return [this, what](const QString &id, auto...) {
                asked.append(QString(what) + ' ' + id);
                if (remote)
                    remote(what, id);
            };
        };
        if (auto *thread = qobject_cast<RemoteSearchThread *>(worker)) {
            QObject::connect(thread, &RemoteSearchThread::signal_getNextResults, &context, ask("next"));
            QObject::connect(thread, &RemoteSearchThread::signal_stopSearch, &context, ask("stop"));
        }
        if (auto *thread = qobject_cast<RemoteSearchByNameThread *>(worker))
            QObject::connect(thread, &RemoteSearchByNameThread::signal_searchByFullName, &context, ask("search"));
        if (auto *thread = qobject_cast<RemoteSearchByPhoneNumberThread *>(worker))
            QObject::connect(thread, &RemoteSearchByPhoneNumberThread::signal_searchByPhoneNumber, &context,
                             ask("search"));
    }

    std::function<void(const QString &, int, const ListContactSummary &)> note(const char *what)
    {
        return [this, what](const QString &id, int count, const ListContactSummary &summaries) {
            told.append((QStringList{what, id, QString::number(count)} + namesOf(summaries)).join(' '));
        };
    }

    static Contact person(const QString &firstName, const QString &name)
    {
        return ::person("firstName=" + firstName + "|name=" + name + "|contactId=" + firstName + name + "##");
    }
    void put(const QString &firstName, const QString &name, const QString &number = {})
    {
        Contact contact = person(firstName, name);
        contact.latinName = latinText(name);
        contact.officePhoneCan = number;
        if (!dao->insertContact(contact, false))
            qFatal("the contact cannot be put into the database");
    }
    /// A company directory that answers with these packets, the last with FINISH.
    void answerWith(const QList<ListContact> &packets)
    {
        fields.icsLogin = true;
        remote = [this, packets, next = 0](const QString &what, const QString &id) mutable {
            if (what == "search") {
                next = 0;
                search->mailbox().setStarted(id);
            } else if (what == "next") {
                const int status = next + 1 < packets.size() ? int(PacketStatus::More) : int(PacketStatus::Finished);
                search->mailbox().put(id, {packets.value(next++), status});
            }
        };
    }
    QString page(const QString &id) const { return namesOf(search->getSearchResults(id, 0, -1)).join(' '); }
    static QStringList namesOf(const ListContactSummary &summaries)
    {
        QStringList names;
        for (const ContactSummary &summary : summaries)
            names.append(summary.firstName + summary.name);
        return names;
    }

    QStringList told;
    QStringList asked;
    std::function<void(const QString &what, const QString &searchId)> remote;
    QObject context;
    CanonicalNumbers numbers{transport};
    std::optional<ContactSearch> search;
};
