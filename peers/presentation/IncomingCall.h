// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

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
    /// How the end of the search in the company comes in.
    void takeCompletion(const KestinEvent &event);

    bool isRinging() const { return m_isRinging; }
    const QString &number() const { return m_number; }
    bool isWithheld() const;
    bool isKnown() const { return !m_caller.contactId.isEmpty(); }
    bool isOfCompany() const { return m_caller.isOfCompany(); }
    QString displayName() const { return m_caller.displayName(); }
    QString initials() const;
    QString company() const { return m_caller.misc.value(QStringLiteral("company")); }
    QUrl photo() const;

Q_SIGNALS:
    void changed();

private:
    void lookUp(const QString &canonical);
    void searchCompany(const QString &canonical);
    void show(const Contact &caller);

    ModuleCalls &m_calls;
    const QString m_name; ///< what the ids of this process' searches begin with
    int m_serial = 0;     ///< of the call; an answer about an earlier one is dropped
    bool m_isRinging = false;
    QString m_number;
    Contact m_caller;
};
