// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/PrivateBus.h"
#include "tests/support/Program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// What one run of the client did.
struct Outcome
{
    int code;
    QString out;
    QString error;

    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
    QStringList names() const;
};

Outcome client(const QStringList &arguments, const QByteArray &input = {});

/// The real service and its peers on a bus and with data of their own, made anew for each test function.
class ClientDesk : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    void startDirectory();
    QString path(const QString &name) const { return m_data->filePath(name); }
    void write(const QString &name, const QByteArray &content) const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_data;
    QString m_photos; ///< the folder of photos
    QString m_proxy;  ///< by which the service fetches them, if any
    std::unique_ptr<Program> m_settings;
    std::unique_ptr<Program> m_telephony;
    std::unique_ptr<Program> m_company;
    std::unique_ptr<Program> m_directory;
};
