// SPDX-License-Identifier: Apache-2.0
#include "client/import/ImportSource.h"

#include "client/vcard/VCardReader.h"

CardSource::CardSource(QIODevice &device, const QString &file, qint64 size)
    : m_device(device)
    , m_splitter(device)
    , m_file(file)
    , m_size(size)
{
}

std::optional<ImportCard> CardSource::next()
{
    const std::optional<RawCard> card = m_splitter.next();
    if (!card)
        return std::nullopt;
    if (card->fault)
        return ImportCard{{m_file, card->number, {}, *card->fault}, {}, {}, {}, {}};
    const VCardReader::Result result = VCardReader::read(card->text);
    if (result.refusal)
        return ImportCard{{m_file, card->number, {}, *result.refusal}, {}, {}, {}, {}};
    return ImportCard{{m_file, card->number, result.contact.displayName(), {}},
                      result.contact,
                      result.picture,
                      result.unreachable,
                      result.leftOut};
}
