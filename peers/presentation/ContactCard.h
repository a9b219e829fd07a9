// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class DirectorySearch;

/// The contact that is looked at, with what one can call.
class ContactCard : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString displayName READ displayName NOTIFY changed)
    Q_PROPERTY(QString initials READ initials NOTIFY changed)
    Q_PROPERTY(QString company READ company NOTIFY changed)
    Q_PROPERTY(QString job READ job NOTIFY changed)
    Q_PROPERTY(QUrl photo READ photo NOTIFY changed)
    Q_PROPERTY(bool isOfCompany READ isOfCompany NOTIFY changed)
    Q_PROPERTY(bool isPreviewed READ isPreviewed NOTIFY changed)
    Q_PROPERTY(QVariantList numbers READ numbers NOTIFY changed)
    Q_PROPERTY(QVariantList addresses READ addresses NOTIFY changed)

public:
    ContactCard(ModuleCalls &calls, const DirectorySearch &search);

    Q_INVOKABLE void open(const QString &contactId);
    Q_INVOKABLE void close();
    /// Brings the number into the form that is dialled; `callRequested` has it.
    Q_INVOKABLE void call(const QString &number);
    /// Puts the contact into the preview list, or takes it out.
    Q_INVOKABLE void setPreviewed(bool previewed);

    bool isOpen() const { return m_contact.has_value(); }
    const Contact &contact() const;
    QString displayName() const { return contact().displayName(); }
    QString initials() const;
    QString company() const { return contact().misc.value(QStringLiteral("company")); }
    QString job() const { return contact().misc.value(QStringLiteral("job")); }
    QUrl photo() const;
    bool isOfCompany() const { return contact().isOfCompany(); }
    bool isPreviewed() const { return contact().isPreviewed; }
    /// Each {"kind", "value"}: "office", "mobile", "home", "fax", "extension".
    QVariantList numbers() const;
    /// Each {"kind", "value"}: "email", "personalEmail", "im".
    QVariantList addresses() const;

    /// How changes of the stored contacts come in.
    void takeUpdate(const ListContact &contacts);
    void takeDeletion(const QStringList &contactIds);
    /// Reads the contact again; one that is gone closes the card.
    void reload();

Q_SIGNALS:
    void changed();
    void callRequested(const QString &number);
    /// The contact cannot be shown, or the preview list not changed; `code` is what the directory answered.
    void missing();
    void refused(int code);

private:
    void show(const std::optional<Contact> &contact);

    ModuleCalls &m_calls;
    const DirectorySearch &m_search;
    QString m_wanted; ///< the id that is shown or on its way; empty: none
    std::optional<Contact> m_contact;
};
