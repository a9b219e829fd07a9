// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QHash>
#include <QObject>

class DaoContact;
class PhotoFiles;

/// Brings the photos that contacts have as files to the form in which the phone shows them. Main thread only.
class PhotoResizing : public QObject
{
    Q_OBJECT

public:
    PhotoResizing(DaoContact &dao, PhotoFiles &files);

    /// Writes the centred square of the picture in `source`, scaled to `side`, as JPEG to `destination`; a null one
    /// means `source` itself. False, with an error line, when `source` is not the absolute path of a regular file that
    /// holds a picture (SquarePicture::make), or when the result cannot be written; the destination is then as before.
    static bool resizeAndCropToSquare(const QString &source, int side, const QString &destination);

    /// The pass at start: every photo file of a contact whose name does not say that it has the form already is
    /// replaced by one that has it, named after it. Addresses and contacts of device management are left alone. A file
    /// that several contacts name is resized once and removed when none of them names it any more.
    void resizeContactPhotosIfNeeded();

Q_SIGNALS:
    void contactsUpdated(const ListContact &contacts, bool onlyPhotoHasChanged);

private:
    static bool needsResizing(const Contact &contact);
    QString resized(const QString &photo);
    void resizePhoto(const Contact &contact);

    DaoContact &m_dao;
    PhotoFiles &m_files;
    QHash<QString, QString> m_resized; ///< by old path, during the pass; null where it failed
};
