// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/TelephonyAdaptor.h"

#include "peers/telephony/Telephony.h"

TelephonyAdaptor::TelephonyAdaptor(Telephony &module)
    : QDBusAbstractAdaptor(&module)
    , m_telephony(module)
{
}

QStringList TelephonyAdaptor::extractDialableNumberList(const QStringList &numbers)
{
    return m_telephony.extractDialableNumberList(numbers);
}

QStringList TelephonyAdaptor::makeCanonicalNumberListWithoutPrefix(const QStringList &numbers)
{
    return m_telephony.makeCanonicalNumberListWithoutPrefix(numbers);
}

QMapQStringQStringList TelephonyAdaptor::makeCanonicalNumberMapWithoutPrefix(const QMapQStringQStringList &numbers)
{
    return m_telephony.makeCanonicalNumberMapWithoutPrefix(numbers);
}

KestinMode TelephonyAdaptor::getKestinMode()
{
    return m_telephony.getKestinMode();
}

ListSetting TelephonyAdaptor::dialingRulesChanged(const Setting &setting)
{
    return m_telephony.dialingRulesChanged(setting);
}

#include "moc_TelephonyAdaptor.cpp"
