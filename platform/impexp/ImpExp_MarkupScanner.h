// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>
#include <utility>

/// Looks over the bytes of an XML file before a reader gets them, for what costs a reader time or memory out of all
/// proportion. It refuses tags with thousands of attributes, which readers compare with each other, and document type
/// declarations. It cuts off texts without end. It knows as much of XML as that takes. It may be mistaken where the
/// file is not well formed, but there the reader stops.
class ImpExp_MarkupScanner
{
public:
    /// A text has at most `textLimit` bytes, and its line feeds.
    explicit ImpExp_MarkupScanner(qint64 textLimit);

    /// Goes on where the last call ended. Returns how many of the bytes are fine; they are moved to the front. Bytes
    /// beyond the limit of a text are left out. The first byte that is refused ends them.
    qsizetype scan(char *bytes, qsizetype count);
    /// Why a byte was refused, once a byte was.
    std::optional<QString> refusal() const { return m_refusal; }
    /// Whether a text was cut since the last call.
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
    bool m_isCutting = false; ///< the rest of the text is left out
    bool m_hasCut = false;
    std::optional<QString> m_refusal;
};
