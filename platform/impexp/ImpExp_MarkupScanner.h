// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Looks over the bytes of an XML file before a reader gets them, for what costs a reader time or memory out of all
/// proportion: tags with thousands of attributes, which readers compare with each other, and document type
/// declarations. It knows as much of XML as that takes; where the file is not well formed it may be mistaken, but
/// there the reader stops.
class ImpExp_MarkupScanner
{
public:
    /// Goes on where the last call ended. Returns how many of the bytes are fine: all, or those before the first that
    /// is refused.
    qsizetype scan(const char *bytes, qsizetype count);
    /// Why; empty as long as nothing was.
    QString refusal() const { return m_refusal; }

private:
    enum class State { Content, Opened, Declared, CommentOpened, Comment, CharacterData, Instruction, Tag, Quoted };

    bool take(char byte);
    void takeInTag(char byte);
    void endWith(char closing, int needed, char byte);
    bool isTooLong();

    State m_state = State::Content;
    char m_quote = 0;
    int m_run = 0;        ///< closing characters in a row
    int m_length = 0;     ///< bytes of the tag
    int m_attributes = 0; ///< of the tag
    QString m_refusal;
};
