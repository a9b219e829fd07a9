// SPDX-License-Identifier: Apache-2.0
#include "src/download/KestinDirectoryNetwork.h"
#include "src/photofiles/Downloads.h"

namespace {

class LoadedDownloads : public Downloads
{
public:
    explicit LoadedDownloads(Listener &listener)
    {
        QObject::connect(&m_network, &KestinDirectoryNetwork::requestFinished,
                         [&listener](QNetworkReply *reply) { listener.downloadFinished(reply); });
    }

    QNetworkReply *get(const QUrl &url) override { return m_network.get(url); }
    void giveUp(QNetworkReply *reply) override { m_network.giveUp(reply); }

private:
    KestinDirectoryNetwork m_network;
};

} // namespace

/// Downloads::Make.
extern "C" Q_DECL_EXPORT Downloads *kestin_make_downloads(Downloads::Listener &listener)
{
    return new LoadedDownloads(listener);
}
