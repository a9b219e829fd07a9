// SPDX-License-Identifier: Apache-2.0
// Any file at all as a synchronisation file. Both ways of reading it must come to the same end over the same contacts
// (an import relies on that: the first decides what goes, the second what comes), and what was read can be written.
#include "fuzz/MemoryFile.h"
#include "platform/impexp/ImpExp_Exception.h"
#include "platform/impexp/ImpExp_Text.h"
#include "platform/impexp/ImpExp_XMLParser.h"

#include <QStringList>

namespace {

QString idsOf(const ImpExp_Item &item)
{
    return item.getAttribute(ImpExp_Format::duid) + QLatin1Char('\n') + item.getAttribute(ImpExp_Format::puid);
}

void checkTexts(const ImpExp_Item::Texts &texts)
{
    for (const auto &text : texts)
        promise(ImpExp_Text::encodedSize(text.second).has_value(), "a text that was read can be written");
}

/// The ids of all contacts, and the end.
QStringList read(const QString &path, bool withElements)
{
    constexpr qint64 limit = 8192; // small enough to be reached
    QStringList found;
    try {
        ImpExp_XMLParser parser(path, limit);
        ImpExp_Item item(ImpExp_Format::contact);
        for (;;) {
            try {
                if (!parser.getItem(item, withElements))
                    return found;
                promise(withElements || item.elements().isEmpty(), "no element is kept when none is asked for");
                checkTexts(item.attributes());
                checkTexts(item.elements());
            } catch (const ImpExp_ErrorException &) {
                promise(withElements, "the ids alone are never refused");
            }
            found.append(idsOf(item));
            found.append(item.hasElements() ? QStringLiteral("whole") : QStringLiteral("mapping"));
        }
    } catch (const ImpExp_FatalException &exception) {
        found.append(exception.message());
    }
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static MemoryFile file;
    file.setContent(data, size);
    promise(read(file.path(), false) == read(file.path(), true), "both ways of reading agree");
    return 0;
}
