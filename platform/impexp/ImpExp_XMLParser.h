// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_GuardedFile.h"
#include "platform/impexp/ImpExp_Item.h"

#include <QXmlStreamReader>

/// Reads a synchronisation file item by item. It reads nothing but the given file, expands nothing in it, and needs a
/// bounded amount of memory whatever the file holds. After an ImpExp_FatalException the parser is of no more use.
class ImpExp_XMLParser
{
public:
    /// Throws ImpExp_FatalException when the file cannot be opened. `limit` is the number of bytes that a contact may
    /// have.
    explicit ImpExp_XMLParser(const QString &path, qint64 limit = ImpExp_Format::contactBytes);

    /// Reads the next item that has the name of `item`. The item stands in a page or directly under the root. False at
    /// the end of the file, which has been found well formed by then. An id that only an element names becomes an
    /// attribute too. Of a photo that takes nearly the limit or more an ellipsis is left.
    ///
    /// Without elements only the ids are kept, and nothing else is looked at.
    ///
    /// Throws ImpExp_ErrorException when this item is no good. Its attributes are set, and the next call goes on behind
    /// it. Never thrown without elements. Throws ImpExp_FatalException when the file is not well formed, is no
    /// synchronisation file, or is beyond the limits.
    bool getItem(ImpExp_Item &item, bool withElements);

private:
    QXmlStreamReader::TokenType next();
    void checkToken(QXmlStreamReader::TokenType token);
    void enterElement();
    [[noreturn]] void fail(const QString &reason) const;

    void readItem(ImpExp_Item &item, bool withElements);
    QString readElement(ImpExp_Item &item, const QString &name);
    QString readText(QString &problem);
    void skipElement();

    ImpExp_GuardedFile m_file;
    QXmlStreamReader m_reader;
    int m_depth = 0; ///< open elements
};
