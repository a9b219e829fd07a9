// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/import/ImportReport.h"
#include "client/vcard/VCardSplitter.h"
#include "platform/records/Contact.h"

#include <QStringList>

#include <optional>

/// A contact that is to come to the phone.
struct ImportCard
{
    RefusedCard identity; ///< its reason says why the card cannot be used; empty when it can
    Contact contact;
    QByteArray picture;         ///< is to become the contact's photo; empty when the contact names its photo itself
    QStringList unreachable;    ///< numbers by which no caller is recognised, for want of a field
    QMap<QString, int> leftOut; ///< properties that the contact has no place for: how many of each name
};

/// From where an import takes contacts, one after the other.
class ImportSource
{
public:
    ImportSource() = default;
    virtual ~ImportSource() = default;
    Q_DISABLE_COPY_MOVE(ImportSource)

    /// None at the end.
    virtual std::optional<ImportCard> next() = 0;

    /// How far it is read, of how much; the latter is 0 when it is not known.
    virtual qint64 done() const = 0;
    virtual qint64 total() const = 0;
};

/// The cards of a file.
class CardSource : public ImportSource
{
public:
    /// The device is open and outlives this object. `file` is what the file is called. `size` is its bytes, 0 when not
    /// known.
    CardSource(QIODevice &device, const QString &file, qint64 size);

    std::optional<ImportCard> next() override;
    qint64 done() const override { return m_device.pos(); }
    qint64 total() const override { return m_size; }

private:
    QIODevice &m_device;
    VCardSplitter m_splitter;
    QString m_file;
    qint64 m_size;
};
