// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/dao/Statement.h"

/// The fixed statements on the CONTACT table, prepared once.
struct ContactStatements
{
    explicit ContactStatements(Connection &connection);

    Statement remove;
    Statement removeCached;
    Statement oldestCached;
    Statement cachedByNumber;
    Statement updateId;
    Statement updatePuid;
    Statement updatePhoto;
    Statement insert;
    Statement update;
    Statement updateFromImport;
    Statement fillLatinNames;
    Statement updatePreview;
    Statement count;
    Statement countDM;
    Statement countLocal;
    Statement countCached;
    Statement countPhoto;
    Statement puids;
    Statement byId;
    Statement typeById;
    Statement all;
    Statement page;
    Statement pageFrom;
    Statement countId;
    Statement dataVersion;
    Statement byNumber;
    Statement byIMAddress;
    Statement byEmail;
    Statement byType;
    Statement byName;
    Statement byLatinName;
    Statement byLatinPrefix;
    Statement withoutLatinName;
    Statement previewPage;
    Statement fullExport;
    Statement mappingExport;
    Statement changedSince;
    Statement photos;
    Statement unresizedPhotos;
};
