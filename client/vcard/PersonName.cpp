// SPDX-License-Identifier: Apache-2.0
#include "client/vcard/VCardReader.h"

#include <libebook-contacts/libebook-contacts.h>

#include <memory>

namespace {

struct FreeName
{
    void operator()(ENameWestern *name) const { e_name_western_free(name); }
};

} // namespace

PersonName PersonName::of(const QString &fullName)
{
    const std::unique_ptr<ENameWestern, FreeName> parsed(e_name_western_parse(fullName.toUtf8().constData()));
    const QString middle = QString::fromUtf8(parsed->middle);
    PersonName name{QString::fromUtf8(parsed->prefix),
                    (QString::fromUtf8(parsed->first) + QLatin1Char(' ') + middle).trimmed(),
                    QString::fromUtf8(parsed->last), QString::fromUtf8(parsed->suffix)};
    if (name.last.isEmpty() && middle.isEmpty())
        std::swap(name.first, name.last);
    return name.last.isEmpty() ? PersonName{{}, {}, fullName, {}} : name;
}
