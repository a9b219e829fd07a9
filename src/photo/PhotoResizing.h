// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"
#include "src/photo/ResizingMarks.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <optional>

class DaoContact;
class PhotoFiles;
class PictureProgram;

/// Brings the photos that contacts have as files to the form in which the phone shows them.
class PhotoResizing : public QObject
{
    Q_OBJECT

public:
    /// Of the pass; each picture in it may take as long as PictureProgram lets it.
    static constexpr std::chrono::milliseconds longest = std::chrono::seconds(20);

    /// `mark` is the file that keeps what a pass of `limit` leaves to the next.
    PhotoResizing(DaoContact &dao, PhotoFiles &files, const PictureProgram &pictures, const QString &mark,
                  std::chrono::milliseconds limit = longest);

    /// Writes the centred square of the picture in `source`, scaled to `side`, as JPEG to `destination`; a null
    /// destination means `source` itself. False, with an error line, when `source` is not the absolute path of a
    /// regular file that holds a picture (PictureProgram), or when the result cannot be written; the destination is
    /// then as before.
    bool resizeAndCropToSquare(const QString &source, int side, const QString &destination) const;

    /// The pass at start: every photo file of a contact whose name does not say that it has the form already is
    /// replaced by a file that has it, named after it. Addresses and contacts of device management are left alone. A
    /// file that several contacts name is resized once and removed when none of them names it any more. When its time
    /// is over it stops, and the next start goes on where it stopped, so that pictures that fail hold up no others. A
    /// picture that ran over its time is passed over like a picture that cannot be resized, as long as its file stays
    /// the same.
    void resizeContactPhotosIfNeeded();

Q_SIGNALS:
    void contactsUpdated(const ListContact &contacts, bool onlyPhotoHasChanged);

private:
    static bool needsResizing(const Contact &contact);
    std::optional<ListContact> candidates(const QString &first) const;
    std::optional<QString> resized(const QString &photo);
    std::optional<QString> squarePathFor(const QString &photo) const;
    bool isMade(const QString &photo, const QString &square);
    void resizePhoto(const Contact &contact);

    DaoContact &m_dao;
    PhotoFiles &m_files;
    const PictureProgram &m_pictures;
    QString m_markPath;
    std::optional<ResizingMarks> m_marks; ///< during the pass
    std::chrono::milliseconds m_limit;
    QHash<QString, std::optional<QString>> m_resized; ///< by old path, during the pass; nothing where it failed
};
