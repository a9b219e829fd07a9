// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A photo in the directory's folder that no contact names yet: removed with this object unless it is kept.
class PhotoFile
{
public:
    PhotoFile() = default; ///< none
    explicit PhotoFile(const QString &path)
        : m_path(path)
    {
    }
    PhotoFile(PhotoFile &&other) noexcept;
    PhotoFile &operator=(PhotoFile &&other) noexcept;
    PhotoFile(const PhotoFile &) = delete;
    PhotoFile &operator=(const PhotoFile &) = delete;
    ~PhotoFile();

    /// What the contact's `photo` is to hold; empty when there is none.
    QString path() const { return m_path; }
    /// A contact names it now, so it is the directory's.
    void keep() { m_path.clear(); }

private:
    QString m_path;
};
