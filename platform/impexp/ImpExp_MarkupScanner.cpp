// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_MarkupScanner.h"

#include "platform/impexp/ImpExp_Format.h"

ImpExp_MarkupScanner::ImpExp_MarkupScanner(qint64 textLimit)
    : m_textLimit(textLimit)
{
}

qsizetype ImpExp_MarkupScanner::scan(char *bytes, qsizetype count)
{
    qsizetype kept = 0;
    for (qsizetype i = 0; i < count; ++i) {
        const char byte = bytes[i];
        if (!take(byte) || isTooLong())
            break;
        if (!m_isCutting || byte == '\n')
            bytes[kept++] = byte;
    }
    return kept;
}

/// False when the byte is refused.
bool ImpExp_MarkupScanner::take(char byte)
{
    if (byte == 0) {
        m_refusal = QStringLiteral("the file is not UTF-8");
        return false;
    }
    switch (m_state) {
    case State::Content:
        takeInText(byte);
        break;
    case State::Opened:
        m_length = m_attributes = m_run = 0;
        m_state = byte == '!' ? State::Declared : byte == '?' ? State::Instruction : State::Tag;
        if (m_state == State::Tag)
            takeInTag(byte);
        break;
    case State::Declared:
        if (byte != '-' && byte != '[') {
            m_refusal = QStringLiteral("a document type declaration is not accepted");
            return false;
        }
        m_state = byte == '-' ? State::CommentOpened : State::CharacterData;
        break;
    case State::CommentOpened:
        m_state = State::Comment;
        break;
    case State::Comment:
        endWith('-', 2, byte);
        break;
    case State::CharacterData:
        endWith(']', 2, byte);
        break;
    case State::Instruction:
        ++m_length;
        endWith('?', 1, byte);
        break;
    case State::Tag:
        takeInTag(byte);
        break;
    case State::Quoted:
        ++m_length;
        if (byte == m_quote)
            m_state = State::Tag;
        break;
    }
    return true;
}

/// Cuts between two characters, of which a reference is one too.
void ImpExp_MarkupScanner::takeInText(char byte)
{
    if (byte == '<') {
        m_state = State::Opened;
        m_textLength = 0;
        m_isInReference = m_isCutting = false;
        return;
    }
    const bool isInsideCharacter = (byte & 0xc0) == 0x80 || m_isInReference;
    if (++m_textLength > m_textLimit && !isInsideCharacter)
        m_isCutting = m_hasCut = true;
    m_isInReference = byte == '&' || (m_isInReference && byte != ';');
}

void ImpExp_MarkupScanner::takeInTag(char byte)
{
    ++m_length;
    if (byte == '>') {
        m_state = State::Content;
    } else if (byte == '"' || byte == '\'') {
        m_state = State::Quoted;
        m_quote = byte;
        ++m_attributes;
    }
}

/// Such a section ends with so many closing characters and ">".
void ImpExp_MarkupScanner::endWith(char closing, int needed, char byte)
{
    if (byte == '>' && m_run >= needed)
        m_state = State::Content;
    m_run = byte == closing ? m_run + 1 : 0;
}

bool ImpExp_MarkupScanner::isTooLong()
{
    if (m_length > ImpExp_Format::tagBytes)
        m_refusal = QStringLiteral("a tag is longer than %1 bytes").arg(ImpExp_Format::tagBytes);
    else if (m_attributes > ImpExp_Format::tagAttributes)
        m_refusal = QStringLiteral("a tag has more than %1 attributes").arg(ImpExp_Format::tagAttributes);
    return m_refusal.has_value();
}
