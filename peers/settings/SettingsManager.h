// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/settings/SettingsStore.h"
#include "platform/framework/KestinModule.h"

/// The module "SettingsManager": gives and takes the platform's settings, and tells the module that owns a setting
/// when its value changes, whoever changed it. The owner is told before the writer has its answer, so who then asks the
/// owner finds it told.
class SettingsManager : public KestinModule
{
    Q_OBJECT

public:
    /// The values are kept in the INI file at `path`.
    explicit SettingsManager(const QString &path);

    bool check() override;
    bool deploy() override; ///< makes the folder of the file
    bool init() override;

    // The bus methods. A setting that is neither known nor stored is answered with an error.
    QString getSettingValue(const QString &key);
    Setting getSetting(const QString &key);
    ListSetting getSettings() const { return m_store.settings(); }
    UpdateReport setSettingValue(const QString &key, const QString &value) { return m_store.set(key, value); }

private:
    void tellOwner(const Setting &setting);
    void answerUnknown(const QString &key);

    SettingsStore m_store;
};
