// What the commands called 'check' find in a file, and how they print it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vm::tool {

enum class Severity {
    Note,    ///< as the format has it, but not what everybody expects
    Warning, ///< something is never found, or does nothing
    Error    ///< something is not read, or will be lost when the file is saved
};
const char* SeverityName(Severity severity);

struct Finding {
    std::size_t line; ///< from 1
    Severity severity;
    const char* kind;
    std::string text;
};

void PrintLine(const std::string& file, std::size_t line, const std::string& text);
/// 'FILE:LINE: SEVERITY: KIND: TEXT' each, notes only when `withNotes`. Returns whether there is
/// nothing but notes.
bool PrintFindings(const std::string& file, const std::vector<Finding>& findings, bool withNotes);

} // namespace vm::tool
