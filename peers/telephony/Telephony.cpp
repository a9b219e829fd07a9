// SPDX-License-Identifier: Apache-2.0
#include "peers/telephony/Telephony.h"

#include "platform/framework/KestinLogger.h"
#include "platform/framework/WireSize.h"
#include "platform/records/KestinBus.h"

#include <QDBusServiceWatcher>

namespace {

QStringList canonicalList(const NumberFormatter &form, const QStringList &numbers)
{
    QStringList result;
    for (const QString &number : numbers)
        result.append(form.canonical(number));
    return result;
}

} // namespace

Telephony::Telephony(const KestinMode &mode)
    : KestinModule(ModuleName::telephony)
    , m_mode(mode)
    , m_rulesReader(*this)
{
}

bool Telephony::init()
{
    registerDBusSetting();
    registerDBusKestinMode();
    registerDBusQMapQStringQStringList();
    // A settings manager that was started again may have been given another file.
    auto *watcher = new QDBusServiceWatcher(KestinBus::serviceName(ModuleName::settings), KestinBus::connect(),
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { m_rulesReader.forget(); });
    return true;
}

bool Telephony::run()
{
    formatter(); // what is slow the first time is done before anybody waits for it
    return true;
}

QStringList Telephony::extractDialableNumberList(const QStringList &numbers)
{
    const NumberFormatter &form = formatter();
    QStringList result;
    for (const QString &number : numbers)
        result.append(form.dialable(number));
    return result;
}

QStringList Telephony::makeCanonicalNumberListWithoutPrefix(const QStringList &numbers)
{
    return canonicalList(formatter(), numbers);
}

QMapQStringQStringList Telephony::makeCanonicalNumberMapWithoutPrefix(const QMapQStringQStringList &numbers)
{
    const NumberFormatter &form = formatter();
    QMapQStringQStringList result;
    qsizetype size = 0;
    for (auto contact = numbers.cbegin(); contact != numbers.cend(); ++contact) {
        const QStringList canonical = canonicalList(form, contact.value());
        size += WireSize::of(contact.key()) + WireSize::of(canonical);
        if (size > WireSize::limit) {
            answerWithError(QStringLiteral("org.freedesktop.DBus.Error.LimitsExceeded"),
                            QStringLiteral("too many numbers for one call; ask for fewer at a time"));
            return {};
        }
        result.insert(contact.key(), canonical);
    }
    return result;
}

ListSetting Telephony::dialingRulesChanged(const Setting &setting)
{
    KestinLogger::info("The dialing rules changed: %1 is \"%2\"", setting.key, setting.getValue());
    m_rulesReader.forget();
    return {};
}

const NumberFormatter &Telephony::formatter()
{
    const DialingRules &rules = m_rulesReader.rules();
    if (!m_formatter || m_formatter->rules() != rules)
        m_formatter.emplace(rules);
    return *m_formatter;
}

#include "moc_Telephony.cpp"
