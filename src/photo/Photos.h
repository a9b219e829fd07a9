// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/photo/ContactPhotos.h"
#include "src/photo/PhotoDownloads.h"
#include "src/photo/PhotoNetwork.h"
#include "src/photo/PhotoResizing.h"
#include "src/photo/UserPhoto.h"
#include "src/photofiles/PictureProgram.h"

/// The photos of contacts and of the user: fetched, made square, given up.
struct Photos
{
    /// `mark` is the file in which the pass at start keeps what it leaves to the next.
    Photos(DaoContact &dao, PhotoFiles &files, DirectoryFields &fields, const QString &mark, LongWork &longWork);

    PhotoNetwork network;
    PictureProgram pictures;
    PhotoResizing resizing;
    ContactPhotos ofContacts;
    UserPhoto ofUser;
    PhotoDownloads downloads;
};
