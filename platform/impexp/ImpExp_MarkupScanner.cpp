// SPDX-License-Identifier: Apache-2.0
#include "platform/impexp/ImpExp_MarkupScanner.h"

#include "platform/impexp/ImpExp_Format.h"

qsizetype ImpExp_MarkupScanner::scan(const char *bytes, qsizetype count)
{
    for (qsizetype i = 0; i < count; ++i) {
        if (!take(bytes[i]) || isTooLong())
            return i;
    }
    return count;
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
        if (byte == '<')
            m_state = State::Opened;
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
    return !m_refusal.isEmpty();
}
