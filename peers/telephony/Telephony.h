// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/telephony/DialingRulesReader.h"
#include "peers/telephony/NumberFormatter.h"
#include "platform/framework/KestinModule.h"
#include "platform/records/KestinMode.h"
#include "platform/records/RecordMaps.h"
#include "platform/records/Setting.h"

#include <optional>

/// The module "Telephony", as far as the directory needs it: the forms of numbers under the phone's dialing rules,
/// which it reads from the settings manager, and the mode in which the phone runs.
class Telephony : public KestinModule
{
    Q_OBJECT

public:
    explicit Telephony(const KestinMode &mode);

    bool init() override;
    bool run() override;

    // The bus methods. Every list comes back with as many elements in the same order.
    QStringList extractDialableNumberList(const QStringList &numbers);
    QStringList makeCanonicalNumberListWithoutPrefix(const QStringList &numbers);
    QMapQStringQStringList makeCanonicalNumberMapWithoutPrefix(const QMapQStringQStringList &numbers);
    KestinMode getKestinMode() const { return m_mode; }
    /// The settings manager tells of a changed rule; the settings this changes in turn: none.
    ListSetting dialingRulesChanged(const Setting &setting);

private:
    const NumberFormatter &formatter();

    KestinMode m_mode;
    DialingRulesReader m_rulesReader;
    std::optional<NumberFormatter> m_formatter;
};
