// The tables that portNames writes when the tool is built. portKnowledge.h reads them.
#pragma once

#include <string_view>
#include <vector>

namespace vm::tool {

/// 'c CLASS BASES', 'm CLASS::MEMBER', 'h HEADER', and plain names: 't' types, 'd' macros, 'f' functions,
/// 'k' constants.
extern const std::vector<std::string_view> kPortThere;
/// 'NAMES | what differs; what to do', and '[AREA]' lines.
extern const std::vector<std::string_view> kPortDifferences;
/// 'NAMES | what to use instead', and '[AREA]' lines.
extern const std::vector<std::string_view> kPortMissing;

} // namespace vm::tool
