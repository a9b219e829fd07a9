// SPDX-License-Identifier: Apache-2.0
#pragma once

class QNetworkReply;
class QUrl;

/// Fetches photos. What does it is loaded with the first download, as a library of its own (src/download): a phone may
/// never fetch a photo, and to link Qt's network library is a good part of what a start would cost.
///
/// The library uses what the program exports to it (src/download/exports) and the program nothing of the library but
/// this.
class Downloads
{
public:
    /// Who is told of the downloads.
    class Listener
    {
    public:
        /// A download has come. Deletes the reply later.
        virtual void downloadFinished(QNetworkReply *reply) = 0;

    protected:
        ~Listener() = default;
    };

    virtual ~Downloads() = default;

    /// Starts a download. It ends in downloadFinished or fails, which only the log tells; in either case the reply is
    /// destroyed at the end. Null, after a warning, when the scheme is neither http nor https.
    virtual QNetworkReply *get(const QUrl &url) = 0;

    /// Ends a download that nobody wants any more: nobody is told, and no error line comes of it. Null is ignored.
    virtual void giveUp(QNetworkReply *reply) = 0;

    /// The function that the library exports: it makes the one object, which the caller owns. The listener outlives it.
    using Make = Downloads *(*)(Listener &listener);
    static constexpr char makeName[] = "kestin_make_downloads";
};
