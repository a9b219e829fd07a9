// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArrayList>
#include <QString>

/// What a pass over the photos leaves to the next: the contact that it stopped before, and the pictures that took
/// too long, which need not be tried again while they stay as they are. A small text file.
class ResizingMarks
{
public:
    /// `path` is the file. One that is missing or holds something else means that there is nothing to know.
    explicit ResizingMarks(const QString &path);

    /// The contact to begin with, or empty.
    const QString &first() const { return m_first; }
    /// Whether the picture in this file took too long and is still the same.
    bool isPassedOver(const QString &photo);
    /// Remembers a picture that took too long; of too many the oldest are forgotten.
    void passOver(const QString &photo);

    /// To be called at the end of the pass. An empty `next` means that it saw everything: pictures that it did not
    /// come across are forgotten. Nothing is written when nothing changed; a failure is logged.
    void keep(const QString &next);

private:
    QString m_path;
    QByteArray m_stored; ///< what the file holds
    QString m_first;
    QByteArrayList m_known; ///< states of files, the oldest first
    QByteArrayList m_seen;  ///< those of them that this pass came across
};
