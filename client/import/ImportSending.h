// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/RefusalText.h"
#include "client/import/ImportRun.h"

/// A contact on its way to the directory.
struct ImportRun::Sending
{
    RefusedCard identity;
    Contact contact;
    QStringList unreachable;
    bool isUpdate = false;
    PhotoFile photo = {};

    QString refusal(int code) const
    {
        return isUpdate ? RefusalText::ofModify(code, contact) : RefusalText::ofCreate(code, contact);
    }
};
