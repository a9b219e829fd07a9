// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

#include <QObject>

/// Reads the events with which the web-service manager answers, and tells what they mean. An event that lacks an
/// argument, or carries an argument of another type, counts as an event with an empty value.
class WebServiceEvents : public QObject
{
    Q_OBJECT

public:
    void searchAccepted(const KestinEvent &event);
    void nextResults(const KestinEvent &event);
    void attributes(const KestinEvent &event);
    void managerAvailability(const KestinEvent &event);
    void directoryAvailability(const KestinEvent &event);
    void attributeByContactId(const KestinEvent &event);
    void contactProfile(const KestinEvent &event);
    /// Answers nothing waits for: only logged.
    void operators(const KestinEvent &event);
    void stopSearch(const KestinEvent &event);
    void canonizeNumber(const KestinEvent &event);

Q_SIGNALS:
    void searchStarted(const QString &searchId);
    void packetReceived(const QString &searchId, const ListContact &contacts, int status);
    void attributesReceived(bool areInitialised);
    /// The right to use the directory has to be asked for again.
    void availabilityChanged();
    void imAddressReceived(const QString &contactId, const QString &imAddress);
    /// None when the directory does not know the contact, or did not answer.
    void profileReceived(const QString &reqId, const ListContact &contacts);
};
