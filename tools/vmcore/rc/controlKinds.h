// The control statements of dialogs: the window class and the styles that each stands for.
#pragma once

#include <cstdint>
#include <string_view>

namespace vm::rc {

struct ControlKind {
    std::string_view keyword;
    std::string_view windowClass;
    std::uint32_t style;    ///< in addition to child and visible
    bool hasText;           ///< or a picture, before the number
    std::uint32_t unstyled; ///< bits only of statements without styles of their own
};

/// Null for a word that begins no control. CONTROL itself is not among them.
const ControlKind* ControlKindOf(std::string_view keyword);

/// The class that CONTROL names by a number, as templates do: 0x80 is "button". Empty for none.
std::string_view ClassOfAtom(int atom);

} // namespace vm::rc
