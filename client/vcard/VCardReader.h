// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/vcard/VCardParser.h"
#include "platform/records/Contact.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>

#include <optional>

/// A name written in a single piece, taken apart as western names are: "Prof. Anna B. van der Berg, Jr.".
struct PersonName
{
    QString prefix;
    QString first; ///< with the middle names
    QString last;  ///< with what belongs to it ("van der"); a name of a single word is a last name
    QString suffix;

    static PersonName of(const QString &fullName);
};

/// Makes a contact of a vCard (2.1, 3.0, 4.0). Fields of the directory are filled first. What has no field becomes a
/// misc pair: company, department, job, address, city, region, zip, country, note, url, birthday, uid and the like.
/// What OwnProperties say stands above that. A company, and a person with a given name alone, has a last name only, by
/// which it is searched. Sounds and keys, and what only the writing program understands, are left out.
class VCardReader
{
public:
    struct Result
    {
        Contact contact;    ///< its photo is the web address that the card names
        QByteArray picture; ///< the embedded photo, which the contact does not name; whatever the card held as such
        QStringList unreachable;    ///< numbers by which no caller is recognised, for want of a field
        QMap<QString, int> leftOut; ///< properties that the contact has no place for: how many of each name
        /// Why the card makes no contact, as a sentence's end ("holds no name"), when it makes none.
        std::optional<QString> refusal;
    };

    static Result read(const QByteArray &card);
    /// What `read` answers when there is nothing to be read.
    static Result refused(const QString &reason);

private:
    void take(const VCardProperty &property);
    void takeKind(const QString &kind);
    void takeName(const VCardProperty &property);
    bool takeDetail(const VCardProperty &property);
    void leaveOut(const QString &name);
    QStringList place();
    void takeOrganisation(const VCardProperty &property);
    void takePhoto(const VCardProperty &property);
    bool isCompany() const;
    void completeName();
    void takeCompanyName();
    void addMisc(const QString &kind, const QString &value);

    Contact m_contact;
    QHash<QString, VCardProperties> m_lists; ///< what is given its places together
    QMap<QString, int> m_leftOut;
    VCardProperties m_own;
    QByteArray m_picture;
    QString m_fullName;
    bool m_isGroup = false;
    bool m_saysCompany = false;
};
