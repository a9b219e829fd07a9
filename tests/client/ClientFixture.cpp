// SPDX-License-Identifier: Apache-2.0
#include "tests/client/ClientFixture.h"

QStringList Outcome::names() const
{
    QStringList names;
    for (const QJsonValue &contact : json().array())
        names.append(contact[u"name"].toString());
    return names;
}

bool Outcome::ended(int expectedCode, const QString &told) const
{
    const bool isSo = code == expectedCode && error.contains(told);
    if (!isSo)
        qWarning("code %d, told \"%s\", printed \"%s\"", code, qPrintable(error), qPrintable(out));
    return isSo;
}

Outcome client(const QString &line, const QStringList &more, const QByteArray &input)
{
    Program program("kestin-dir", line.split(' ', Qt::SkipEmptyParts) + more);
    const int code = program.run(input);
    return {code, program.output(), program.errorOutput()};
}

Outcome client(const QString &line, const QByteArray &input)
{
    return client(line, QStringList(), input);
}

void ClientFixture::init()
{
    m_phone = std::make_unique<PhoneUnderTest>();
    m_phone->directory.setEnvironment("KESTIN_LOG_LEVEL", "7"); // what a test waits for stands in the log
    m_phone->directory.setEnvironment("http_proxy", m_proxy);
    m_phone->startPeers();
    QVERIFY(m_phone->startDirectory());
}

#include "moc_ClientFixture.cpp"
