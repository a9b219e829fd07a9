// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/framework/RemoteCaller.h"

#include <QString>
#include <QVariantList>

/// The calls into other modules that every part of a module makes, settings above all. No error leaves them: a
/// failure is logged once and shows as an empty text, a 0, a false. Nothing is cached, each read asks anew.
/// Main thread only; the synchronous ones wait 5 s at most.
class PlatformCalls
{
public:
    explicit PlatformCalls(RemoteCaller &caller)
        : m_caller(caller)
    {
    }

    /// `success`, where given, tells a setting that is empty from one that cannot be read.
    QString getStringSetting(const QString &key, bool *success = nullptr);
    /// Base 10; 0 also for a text that is no number.
    int getIntSetting(const QString &key, bool *success = nullptr);
    /// Empty when it cannot be read, which is only a warning in the log.
    QString getSetting(const QString &key);

    /// These two do not wait and never learn of a refusal.
    void setStringSetting(const QString &key, const QString &value);
    void setIntSetting(const QString &key, int value);
    /// Waits; true when the settings manager answered without an error.
    bool setSettingConfirmed(const QString &key, const QString &value);

    /// Calls without waiting for an answer or asking for one.
    void callModule(const QString &module, const QString &method, const QVariantList &arguments);

private:
    RemoteCaller &m_caller;
};
