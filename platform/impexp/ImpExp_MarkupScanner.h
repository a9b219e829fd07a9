// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <utility>

/// Looks over the bytes of an XML file before a reader gets them, for what costs a reader time or memory out of all
/// proportion: tags with thousands of attributes, which readers compare with each other, document type declarations,
/// and texts without end, which it cuts off. It knows as much of XML as that takes; where the file is not well formed
/// it may be mistaken, but there the reader stops.
class ImpExp_MarkupScanner
{
public:
    /// A text has at most `textLimit` bytes, and its line feeds.
    explicit ImpExp_MarkupScanner(qint64 textLimit);

    /// Goes on where the last call ended. Returns how many of the bytes are fine, which are the first ones now: all but
    /// what is beyond the limit of a text, or those before the first that is refused.
    qsizetype scan(char *bytes, qsizetype count);
    /// Why; empty as long as nothing was.
    QString refusal() const { return m_refusal; }
    /// Whether a text was cut since this was asked last.
    bool takeCut() { return std::exchange(m_hasCut, false); }

private:
    enum class State { Content, Opened, Declared, CommentOpened, Comment, CharacterData, Instruction, Tag, Quoted };

    bool take(char byte);
    void takeInText(char byte);
    void takeInTag(char byte);
    void endWith(char closing, int needed, char byte);
    bool isTooLong();

    State m_state = State::Content;
    char m_quote = 0;
    int m_run = 0;        ///< closing characters in a row
    int m_length = 0;     ///< bytes of the tag
    int m_attributes = 0; ///< of the tag
    qint64 m_textLimit;
    qint64 m_textLength = 0;
    bool m_isInReference = false;
    bool m_isCutting = false; ///< what comes of the text is left out
    bool m_hasCut = false;
    QString m_refusal;
};
