// DLGINIT: the bytes that its numbers are. What they mean is in dialogInit.cpp.
#include <algorithm>

#include "rc/parser.h"

namespace vm::rc {
namespace {

bool IsLong(const Token& token) {
    return token.kind == TokenKind::Number &&
           (token.text.back() == 'L' || token.text.back() == 'l');
}

void AppendNumber(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

// Editors write one for an odd byte only, "\000".
bool AppendText(std::string& bytes, const Token& token) {
    const std::string text = TextOf(token);
    const auto isAscii = [](char c) { return (c & 0x80) == 0; };
    if (token.text[0] != '"' || !std::all_of(text.begin(), text.end(), isAscii)) return false;
    bytes += text;
    return true;
}

} // namespace

bool Parser::TakeInitBytes(std::string& bytes) {
    if (m_reader.AtText()) {
        if (!AppendText(bytes, m_reader.Peek())) return false;
        m_reader.Take();
    } else if (m_reader.AtNumber()) {
        const int size = IsLong(m_reader.Peek()) ? 4 : 2;
        AppendNumber(bytes, m_reader.Bits(), size);
    } else {
        return false;
    }
    m_reader.TakeComma();
    return true;
}

void Parser::ParseDialogInit(Head head) {
    CommonStatements(head);
    if (!m_reader.AtBlock()) return ParseOther(std::move(head));
    Other init;
    init.head = std::move(head);
    init.codePage = m_reader.Peek().codePage;
    std::string& bytes = init.bytes.emplace();
    m_reader.Begin();
    while (!m_reader.TakeEnd()) {
        if (TakeInitBytes(bytes)) continue;
        LeftOut(m_reader.Here(), "rest of DLGINIT " + init.head.id.symbol,
                "expected a number or END, not " + m_reader.NextWord());
        m_reader.SkipToEnd([](const Token&) {});
        break;
    }
    m_script.resources.emplace_back(std::move(init));
}

} // namespace vm::rc
