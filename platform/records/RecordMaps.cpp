// SPDX-License-Identifier: Apache-2.0
#include "platform/records/RecordMaps.h"

#include <QDBusMetaType>

void registerDBusQMapQStringQStringList()
{
    qDBusRegisterMetaType<QMapQStringQString>();
    qRegisterMetaType<QMapQStringQString>("QMapQStringQString");
    qDBusRegisterMetaType<QMapQStringQStringList>();
    qRegisterMetaType<QMapQStringQStringList>("QMapQStringQStringList");
}
