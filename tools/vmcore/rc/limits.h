// How much a script may ask for: whatever grows or nests has a limit here, beyond which the compiler
// ends with an error instead of the machine's memory.
#pragma once

#include <cstddef>

namespace vm::rc {

struct Limits {
    std::size_t sourceBytes = std::size_t{64} << 20; ///< of all files together
    std::size_t tokens = 2'000'000;                  ///< of the whole script
    std::size_t lineTokens = 100'000;                ///< of a line, those it continues on included
    std::size_t expandedTokens = 1'000'000;          ///< that come out of macros
    std::size_t tokenBytes = std::size_t{1} << 16;   ///< of a token that a macro puts together
    std::size_t findings = 100'000;                  ///< of the code pages
    int includeDepth = 32;
    int includes = 2'000;
    int conditions = 64; ///< #if in #if
    int macroDepth = 64; ///< calls in the arguments of calls
    int callLines = 200; ///< that the arguments of a call may span
};

/// Parentheses, menus in menus, blocks in blocks.
constexpr int kDeepest = 32;

} // namespace vm::rc
