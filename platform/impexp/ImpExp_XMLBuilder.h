// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Item.h"

#include <QDateTime>
#include <QSaveFile>
#include <QXmlStreamWriter>

/// Writes a synchronisation file item by item. The file grows beside its target and takes the target's place when it is
/// finished, so nobody reads half a file. A file that is given up leaves the earlier file as it was.
class ImpExp_XMLBuilder
{
public:
    /// `pageSize` is the number of items in a page; 0 or less puts all items into a single page. `contacts` is the
    /// number of local contacts at the begin. It includes contacts that later cannot be written. Throws
    /// ImpExp_FatalException when the file cannot be begun.
    ImpExp_XMLBuilder(const QString &deviceId, const QString &id, const QString &path, int pageSize,
                      const QDateTime &createdDate, int contacts, int freeCapacity, const QString &moduleName,
                      const QDateTime &previousExportDate);
    /// Gives the file up unless it is finished.
    ~ImpExp_XMLBuilder();
    ImpExp_XMLBuilder(const ImpExp_XMLBuilder &) = delete;
    ImpExp_XMLBuilder &operator=(const ImpExp_XMLBuilder &) = delete;

    /// A character that XML cannot carry becomes U+FFFD; the item's attribute "replaced" names the elements concerned.
    /// Throws ImpExp_ErrorException when the item cannot be put into a file. Nothing of the item is written then.
    /// Throws ImpExp_FatalException when the file cannot be written any further.
    void putItem(const ImpExp_Item &wanted);

    /// Completes the file and puts it in place of the target. File and folder are on disk then. Throws
    /// ImpExp_FatalException when that fails.
    void finish();

private:
    void writeAttribute(QLatin1String name, const QString &value);
    void beginPage();
    void writeText(QStringView text);
    void checkWritten();
    [[noreturn]] void fail(const QString &reason);

    int m_pageSize;
    int m_pages = 0;
    int m_itemsInPage = 0;
    QSaveFile m_file;
    QXmlStreamWriter m_writer;
};
