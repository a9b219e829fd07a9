// SPDX-License-Identifier: Apache-2.0
#include "src/photo/Photos.h"

#include "src/fields/DirectoryFields.h"

Photos::Photos(DaoContact &dao, PhotoFiles &files, DirectoryFields &fields, const QString &mark, LongWork &longWork)
    : resizing(dao, files, pictures, mark)
    , ofContacts(network, pictures, dao, files, longWork)
    , ofUser(network, pictures, files, fields)
    , downloads(ofContacts, ofUser)
{
    // A photo that came after an export is a change to be exported.
    QObject::connect(&ofContacts, &ContactPhotos::contactsUpdated, &ofContacts,
                     [&fields] { fields.noteLocalChange(); });
}
