// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QtGlobal>

/// The synchronisation file (docs/sync-format.md): its names, and the limits that both its writer and its reader keep.
namespace ImpExp_Format {

constexpr QLatin1String root("directory");
constexpr QLatin1String page("page");
constexpr QLatin1String contact("contact");
constexpr QLatin1String duid("duid");         ///< the phone's id of a contact
constexpr QLatin1String puid("puid");         ///< the provisioning side's id of it
constexpr QLatin1String replaced("replaced"); ///< the elements in which characters stand for others
constexpr QLatin1String photo("photo");       ///< the image in base64

/// A contact with all that it holds, or anything between two contacts. Room for a photo of 10 MiB.
constexpr qint64 contactBytes = 16 * 1024 * 1024;
/// A text of a contact that has at most so many bytes. Some are left for its other texts.
constexpr qint64 textBytes(qint64 all)
{
    return all - all / 16;
}
constexpr int tagBytes = 16 * 1024; ///< a tag with its attributes
constexpr int tagAttributes = 32;
constexpr int depth = 32; ///< elements inside each other

} // namespace ImpExp_Format
