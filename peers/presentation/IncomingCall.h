// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

/// Who is calling. The number is there at once, whoever has it on the phone after a look-up; when nobody there has it
/// the company is searched.
class IncomingCall : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool isRinging READ isRinging NOTIFY changed)
    Q_PROPERTY(QString number READ number NOTIFY changed)
    Q_PROPERTY(bool isWithheld READ isWithheld NOTIFY changed)
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(bool isOfCompany READ isOfCompany NOTIFY changed)
    Q_PROPERTY(QString displayName READ displayName NOTIFY changed)
    Q_PROPERTY(QString initials READ initials NOTIFY changed)
    Q_PROPERTY(QString company READ company NOTIFY changed)
    Q_PROPERTY(QUrl photo READ photo NOTIFY changed)

public:
    explicit IncomingCall(ModuleCalls &calls);

    void ring(const QString &number);
    Q_INVOKABLE void dismiss();
    // How the ends of searches come in.
    /// False when the event is about a search that is not of this object.
    bool takeCompletion(const KestinEvent &event);
    /// It may have taken the place of the one for the caller.
    void takeOtherCompletion();
    /// The phone may know now who is calling.
    void lookUpAgain();

    bool isRinging() const { return m_isRinging; }
    QString number() const;
    bool isWithheld() const;
    bool isKnown() const { return !m_caller.contactId.isEmpty(); }
    bool isOfCompany() const { return m_caller.isOfCompany(); }
    QString displayName() const;
    QString initials() const;
    QString company() const;
    QUrl photo() const;

Q_SIGNALS:
    void changed();
    /// The company is searched for the caller from now on, or no longer. The phone has one search at a time.
    void searching(bool isSearching);

private:
    void ask();
    void lookUp(int serial, const QString &canonical);
    void lookUpAsItCame();
    void endLookUp(int serial);
    void searchCompany();
    void setSearching(bool isSearching);
    void show(const Contact &caller);

    ModuleCalls &m_calls;
    const QString m_name;    ///< what the ids of this object's searches begin with
    int m_serial = 0;        ///< of the call; an answer about an earlier one is dropped
    bool m_isAsking = false; ///< of many calls in a row only the last is looked up, when the one before is
    QString m_canonical;
    QString m_searchId; ///< empty when no search goes on
    int m_searches = 0; ///< for this call
    QTimer m_limit;     ///< of the search
    QTimer m_patience;  ///< with telephony
    bool m_isRinging = false;
    QString m_number;
    Contact m_caller;
};
