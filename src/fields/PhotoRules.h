// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QString>

/// What all who handle photos agree on.
namespace PhotoRules {

/// One limit for what is fetched, imported and exported: what can come in can also go out.
constexpr qint64 maxBytes = 10 * 1024 * 1024;

/// What the names of the directory's own photo files begin with.
constexpr QLatin1String prefix("photo_");

/// Whether a contact's photo is the path of such a file; `directory` ends with a slash.
inline bool isOurs(const QString &photo, const QString &directory)
{
    return photo.startsWith(directory) && QStringView(photo).sliced(directory.size()).startsWith(prefix) &&
           photo.indexOf(QLatin1Char('/'), directory.size()) < 0;
}

} // namespace PhotoRules
