// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// How numbers are dialled where the phone stands.
struct DialingRules
{
    QString countryCode;          ///< digits of the country calling code ("33"); empty: not known
    QString areaCode;             ///< digits
    QString externalPrefix;       ///< digits, * or #, dialled for an outside line; empty: none
    int minNumberLength = 0;      ///< a number with fewer digits is an internal extension
    QStringList prefixExceptions; ///< beginnings of numbers that are dialled without the outside-line prefix

    /// The settings that hold the rules.
    static QStringList settingKeys();
    /// Takes the value of any of these settings, in any usual spelling: "+33" or "0033" for the country code, commas,
    /// semicolons or blanks between the exceptions. What is no number counts as 0 or as nothing.
    void set(const QString &settingKey, const QString &value);

    bool operator==(const DialingRules &) const = default;
};
