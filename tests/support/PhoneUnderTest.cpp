// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

namespace {

/// Before any of the programs takes over the environment.
QString exported(const QTemporaryDir &folder)
{
    qputenv("KESTIN_DATA_DIR", folder.path().toUtf8());
    static int count = 0;
    return QString("client%1").arg(++count);
}

} // namespace

PhoneUnderTest::PhoneUnderTest()
    : company("kestin-wsmanager", {"--ldif", KESTIN_SAMPLES "/company.ldif", "--page-size", "5"})
    , client(bus.connection(exported(data)))
{
    for (Program *program : {&settings, &telephony, &company, &directory})
        program->setEnvironment("KESTIN_DATA_DIR", data.path());
    client.connect(QString(), QString(), KestinBus::eventInterface, KestinBus::eventSignal, this,
                   SLOT(note(QDBusMessage)));
}

void PhoneUnderTest::startPeers()
{
    QVERIFY(settings.startAndWaitForName(ModuleName::settings, client));
    set("DialingRuleCountryCode", "33");
    set("DialingRuleExternalPrefix", "0");
    set("DialingRuleMinNumberLength", "6");
    QVERIFY(telephony.startAndWaitForName(ModuleName::telephony, client));
}

bool PhoneUnderTest::startDirectory()
{
    return directory.startAndWaitForName(ModuleName::directory, client);
}

QDBusMessage PhoneUnderTest::callModule(const QString &module, const QString &method, const QVariantList &arguments)
{
    return client.call(KestinBus::methodCall(module, method, arguments), QDBus::Block, Program::limitMs);
}

QDBusPendingCall PhoneUnderTest::asyncCall(const QString &method, const QVariantList &arguments)
{
    return client.asyncCall(KestinBus::methodCall(ModuleName::directory, method, arguments), Program::limitMs);
}

void PhoneUnderTest::set(const QString &key, const QString &value)
{
    QCOMPARE(callModule(ModuleName::settings, "setSettingValue", {key, value}).type(), QDBusMessage::ReplyMessage);
}

void PhoneUnderTest::raise(const QString &event, const ListEventArgument &arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal("/test", KestinBus::eventInterface, KestinBus::eventSignal);
    signal << event << QVariant::fromValue(arguments);
    client.send(signal);
}

QString PhoneUnderTest::databasePath() const
{
    return data.filePath("KestinApplication/KestinDirectory/kestindirectory.data");
}

void PhoneUnderTest::note(const QDBusMessage &message)
{
    const QString event = message.arguments().value(0).toString();
    events.append(event);
    if (!event.startsWith("DIR_SEARCH"))
        return;
    const auto arguments = qdbus_cast<ListEventArgument>(message.arguments().value(1));
    const QString searchId = arguments.value(0).value.toString();
    if (event == EventName::searchResults)
        firstResults[searchId] += qdbus_cast<ListContactSummary>(arguments.value(2).value);
    else
        ended.append(searchId);
    nbResults = arguments.value(1).value.toInt();
}

#include "moc_PhoneUnderTest.cpp"
