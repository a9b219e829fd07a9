// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/PhoneUnderTest.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

/// What one run of the client did.
struct Outcome
{
    int code;
    QString out;
    QString error;

    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
    /// A text of the object that was printed.
    QString value(const char *key) const { return json()[QLatin1String(key)].toString(); }
    QStringList names() const;
    /// Whether it ended with this code and told this on the standard error; a warning says what it did instead.
    bool ended(int expectedCode, const QString &told) const;
};

/// Runs the client with the words of a line, and what follows them.
Outcome client(const QString &line, const QStringList &more = {}, const QByteArray &input = {});
Outcome client(const QString &line, const QByteArray &input);

/// A phone with its service made anew for each test function, and files beside its data.
class ClientFixture : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup() { m_phone.reset(); }

protected:
    QString path(const QString &name) const { return m_phone->data.filePath(name); }
    void write(const QString &name, const QByteArray &content) const { writeFile(path(name), content); }
    /// The names of all contacts in their order.
    static QString names() { return client("list --json").names().join(' '); }

    std::unique_ptr<PhoneUnderTest> m_phone;
    QString m_proxy; ///< by which the service fetches photos, if any
};
