// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ModuleCalls.h"
#include "platform/framework/KestinEvent.h"
#include "platform/records/Contact.h"

#include <QElapsedTimer>
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
    Q_PROPERTY(bool isPreviewed READ isPreviewed NOTIFY previewChanged)
    Q_PROPERTY(QVariantList numbers READ numbers NOTIFY changed)
    Q_PROPERTY(QVariantList addresses READ addresses NOTIFY changed)

public:
    ContactCard(ModuleCalls &calls, DirectorySearch &search);

    Q_INVOKABLE void open(const QString &contactId);
    Q_INVOKABLE void close();
    /// Brings the number into the form that is dialled; `callRequested` has it. Another number that is asked for
    /// before, or the end of the card, takes it back. The same number counts once a second.
    Q_INVOKABLE void call(const QString &number);
    /// Puts the contact into the preview list, or takes it out.
    Q_INVOKABLE void setPreviewed(bool previewed);

    bool isOpen() const { return m_contact.has_value(); }
    const Contact &contact() const;
    QString displayName() const;
    QString initials() const;
    QString company() const;
    QString job() const;
    QUrl photo() const;
    bool isOfCompany() const { return contact().isOfCompany(); }
    bool isPreviewed() const { return contact().isPreviewed; }
    /// What can be called, each {"kind", "value"}: "office", "mobile", "home", "extension".
    QVariantList numbers() const;
    /// The rest, each {"kind", "value"}: "fax", "email", "personalEmail", "im".
    QVariantList addresses() const;

    /// How changes of the stored contacts come in.
    void takeUpdate(const ListContact &contacts);
    void takeDeletion(const QStringList &contactIds);
    /// Reads the contact again; one that is gone closes the card.
    void reload();

Q_SIGNALS:
    void changed();
    void previewChanged();
    void callRequested(const QString &number);
    /// The contact that is to be shown is not there any more.
    void missing();
    /// The directory does not answer.
    void unreachable();
    /// The preview list is not changed.
    void refused();

private:
    enum class Place { Phone, Results };
    void read(Place place);
    void take(Place place, const std::optional<ListContact> &contacts);
    void takeNobody(Place place);
    void show(const Contact &contact);

    ModuleCalls &m_calls;
    DirectorySearch &m_search;
    QString m_wanted;            ///< the id that is shown or on its way; empty: none
    bool m_awaitsSearch = false; ///< whose results were gone
    bool m_isSearchedAgain = false;
    QString m_called;     ///< whose form to dial is on its way; empty: none
    QString m_calledLast; ///< at `m_sinceCall`
    QElapsedTimer m_sinceCall;
    std::optional<Contact> m_contact;
};
