// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Format.h"
#include "platform/impexp/ImpExp_GuardedFile.h"
#include "platform/impexp/ImpExp_Item.h"

#include <QXmlStreamReader>

/// Reads a synchronisation file item by item. Nothing but the given file is read, nothing in it is expanded, and the
/// memory is bounded whatever the file holds. After an ImpExp_FatalException it is of no more use.
class ImpExp_XMLParser
{
public:
    /// ImpExp_FatalException when the file cannot be opened. `limit`: bytes of one contact.
    explicit ImpExp_XMLParser(const QString &path, qint64 limit = ImpExp_Format::contactBytes);

    /// The next item of the item's name, wherever it stands in a page or directly under the root; false at the end of
    /// the file, which has been found well formed by then. An id that only an element names is an attribute too.
    ///
    /// Of a photo that takes nearly the limit or more an ellipsis is left.
    ///
    /// ImpExp_ErrorException: this one is no good; its attributes are set, and the next call goes on behind it. Never
    /// without elements: then only the ids are kept, and nothing else is looked at. ImpExp_FatalException: the file is
    /// not well formed, no synchronisation file, or beyond the limits.
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
