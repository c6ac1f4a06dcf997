#include "finding.h"

#include <cstdio>

namespace vm::tool {

const char* SeverityName(Severity severity) {
    switch (severity) {
    case Severity::Note:
        return "note";
    case Severity::Warning:
        return "warning";
    default:
        return "error";
    }
}

void PrintLine(const std::string& file, std::size_t line, const std::string& text) {
    const std::string whole = file + ":" + std::to_string(line) + ": " + text + "\n";
    std::fwrite(whole.data(), 1, whole.size(), stdout); // the texts may have NUL bytes
}

bool PrintFindings(const std::string& file, const std::vector<Finding>& findings, bool withNotes) {
    bool isClean = true;
    for (const Finding& finding : findings) {
        const bool isNote = finding.severity == Severity::Note;
        if (!isNote) isClean = false;
        if (isNote && !withNotes) continue;
        PrintLine(file, finding.line,
                  std::string(SeverityName(finding.severity)) + ": " + finding.kind + ": " +
                      finding.text);
    }
    return isClean;
}

} // namespace vm::tool
