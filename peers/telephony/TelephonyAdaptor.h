// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"

#include <QDBusAbstractAdaptor>

class Telephony;

/// The bus methods of the module "Telephony".
class TelephonyAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    /// A child of the module.
    explicit TelephonyAdaptor(Telephony &module);

public Q_SLOTS:
    QStringList extractDialableNumberList(const QStringList &numbers);
    QStringList makeCanonicalNumberListWithoutPrefix(const QStringList &numbers);
    QMapQStringQStringList makeCanonicalNumberMapWithoutPrefix(const QMapQStringQStringList &numbers);
    KestinMode getKestinMode();
    ListSetting dialingRulesChanged(const Setting &setting);

private:
    Telephony &m_telephony;
};
