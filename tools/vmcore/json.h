// What the commands that print JSON share.
#pragma once

#include <string>
#include <string_view>

namespace vm::tool {

/// A string literal. Bytes that are not UTF-8 become \u00XX.
std::string JsonString(std::string_view text);

} // namespace vm::tool
