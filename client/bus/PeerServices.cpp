// SPDX-License-Identifier: Apache-2.0
#include "client/bus/PeerServices.h"

#include "platform/records/KestinBus.h"
#include "platform/records/WebServiceCalls.h"

#include <QStringList>

QString SettingsService::value(const QString &key) const
{
    return m_bus.call<QString>(ModuleName::settings, QStringLiteral("getSettingValue"), {key});
}

QString SettingsService::valueOrNothing(const QString &key) const
{
    try {
        return value(key);
    } catch (const CommandFailure &failure) {
        if (failure.code() != ExitCode::Refused)
            throw;
        return {};
    }
}

void SettingsService::setValue(const QString &key, const QString &value) const
{
    const auto report = m_bus.call<UpdateReport>(ModuleName::settings, QStringLiteral("setSettingValue"), {key, value});
    if (report.code != 0)
        throw CommandFailure(
            ExitCode::Refused,
            QStringLiteral("%1 is not changed: %2 (code %3)").arg(key, report.message, QString::number(report.code)));
}

ListSetting SettingsService::all() const
{
    return m_bus.call<ListSetting>(ModuleName::settings, QStringLiteral("getSettings"), {});
}

TelephonyService::Canonical TelephonyService::canonical(const QString &number) const
{
    return form(QStringLiteral("makeCanonicalNumberListWithoutPrefix"), number);
}

TelephonyService::Canonical TelephonyService::dialable(const QString &number) const
{
    return form(QStringLiteral("extractDialableNumberList"), number);
}

TelephonyService::Canonical TelephonyService::form(const QString &method, const QString &number) const
{
    // Telephony takes and answers the five numbers of a contact.
    constexpr qsizetype numbersOfContact = 5;
    QStringList numbers(numbersOfContact);
    numbers.first() = number;
    try {
        const auto forms = m_bus.call<QStringList>(ModuleName::telephony, method, {numbers});
        if (forms.size() >= numbersOfContact)
            return {forms.first(), {}};
        return {number, CommandFailure(ExitCode::Refused, QStringLiteral("%1 answered only %2 of %3 numbers")
                                                              .arg(ModuleName::telephony)
                                                              .arg(forms.size())
                                                              .arg(numbersOfContact))};
    } catch (const CommandFailure &failure) {
        return {number, failure};
    }
}

std::optional<CommandFailure> CompanyService::fault() const
{
    if (!m_bus.isReachable(ModuleName::webServiceManager))
        return CommandFailure(
            ExitCode::Refused,
            QStringLiteral("no company directory is running (%1)").arg(ModuleName::webServiceManager));
    try {
        if (m_bus.call<bool>(ModuleName::webServiceManager, WebServiceMethod::getServiceRight,
                             {WebServiceTerm::companyDirectory}))
            return std::nullopt;
        return CommandFailure(ExitCode::Refused, QStringLiteral("this phone may not use the company directory"));
    } catch (const CommandFailure &failure) {
        return failure;
    }
}

void CompanyService::requireReachable() const
{
    if (!m_bus.isReachable(ModuleName::webServiceManager))
        throw CommandFailure(ExitCode::NoService, QStringLiteral("the company directory cannot be reached: %1 is not "
                                                                 "running on this message bus")
                                                      .arg(ModuleName::webServiceManager));
}

void CompanyService::askProfile(const QString &requestId, const QString &contactId) const
{
    const QDBusMessage call = KestinBus::methodCall(ModuleName::webServiceManager, WebServiceMethod::getContactProfile,
                                                    {requestId, contactId});
    m_bus.connection().send(call);
}
