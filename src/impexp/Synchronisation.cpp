// SPDX-License-Identifier: Apache-2.0
#include "src/impexp/Synchronisation.h"

#include <algorithm>
#include <array>

namespace {

constexpr QByteArrayView importing("importFromXml");
constexpr std::array changing{
    QByteArrayView("createLocalContact"),
    QByteArrayView("createLocalContacts"),
    QByteArrayView("modifyLocalContact"),
    QByteArrayView("modifyLocalContacts"),
    QByteArrayView("deleteLocalContact"),
    QByteArrayView("addContactToPreview"),
    QByteArrayView("removeContactFromPreview"),
    QByteArrayView("updateContactsPreview"),
    QByteArrayView("exportToXml"),
    importing,
};

} // namespace

bool Synchronisation::mustWait(const QByteArray &method) const
{
    const bool isRefused = method == importing && m_fields.importOngoing;
    return !isRefused && std::find(changing.begin(), changing.end(), method) != changing.end();
}
