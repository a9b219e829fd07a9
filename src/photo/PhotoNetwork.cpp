// SPDX-License-Identifier: Apache-2.0
#include "src/photo/PhotoNetwork.h"

#include "platform/framework/KestinLogger.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

#include <utility>

PhotoNetwork::PhotoNetwork(const QString &library)
    : m_library(library)
{
}

QString PhotoNetwork::path()
{
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1String("/kestin-download.so");
    return QFileInfo::exists(beside) ? beside : QStringLiteral(KESTIN_DOWNLOAD_LIBRARY);
}

bool PhotoNetwork::isReady()
{
    if (!std::exchange(m_isLoaded, true))
        load();
    return m_downloads != nullptr;
}

void PhotoNetwork::load()
{
    QLibrary library(m_library);
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    if (const auto make = reinterpret_cast<Downloads::Make>(library.resolve(Downloads::makeName)))
        m_downloads.reset(make(*this));
    else
        KestinLogger::error("Photos cannot be fetched: %1", library.errorString());
}

QNetworkReply *PhotoNetwork::get(const QUrl &url)
{
    return isReady() ? m_downloads->get(url) : nullptr;
}

void PhotoNetwork::giveUp(QNetworkReply *reply)
{
    if (m_downloads)
        m_downloads->giveUp(reply);
}

// What moc makes of the class is compiled alone, where QNetworkReply is a name: it would want Qt Network otherwise,
// which is loaded only to download.
