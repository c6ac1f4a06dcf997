// C++ sources as tokens, for `vmcore port`: enough of the language to tell names from comments, texts and
// directives. No preprocessing beyond that: both branches of an #if are seen, but not those of #if 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vm::tool {

enum class PortTokenKind : std::uint8_t {
    Name,        ///< an identifier or keyword
    Punctuation, ///< one character, but "::" and "->" are whole
    Other,       ///< a number, a text, a parameter's name in the body of its macro
    Header,      ///< of an #include, with its quotation marks or angle brackets
    Defined,     ///< the name that a #define makes
    Directive    ///< "if" for all kinds of it, "else" (and #elif), "endif"
};

struct PortToken {
    std::string_view text;
    std::uint32_t line; ///< from 1
    PortTokenKind kind;
    bool inDirective; ///< of the body of a macro

    bool Is(std::string_view wanted) const {
        return kind != PortTokenKind::Other && text == wanted;
    }
    bool IsName() const { return kind == PortTokenKind::Name; }
};

/// A file's tokens. The bytes are UTF-8, UTF-16 with its mark, or any 8-bit encoding; whatever they are,
/// the last token ends with them.
class PortSource {
public:
    explicit PortSource(std::string_view bytes);
    PortSource(const PortSource&) = delete;
    PortSource& operator=(const PortSource&) = delete;

    const std::vector<PortToken>& Tokens() const { return m_tokens; }

private:
    std::vector<std::size_t> m_joins; // where in the text lines were joined
    const std::string m_text;         // which the tokens point into
    std::vector<PortToken> m_tokens;
};

} // namespace vm::tool
