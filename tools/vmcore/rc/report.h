// What became of every statement of a script. Nothing is dropped in silence: whoever passes something
// over says so here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rc/script.h"

namespace vm::rc {

enum class Outcome { Converted, Approximated, LeftOut };

struct Finding {
    Place place;
    Outcome outcome = Outcome::Converted;
    std::string what;       ///< "DIALOGEX IDD_ABOUT", "CONTROL IDC_SPEED"
    std::string how;        ///< where it went, how it differs, or why it was left out
    bool isMissing = false; ///< a file that the script names is not there: the compiler says no
};

class Report {
public:
    void Add(Finding finding);
    const std::vector<Finding>& Findings() const { return m_findings; }
    bool IsFileMissing() const;
    /// In the order of the script (by the first file's lines; files in the order of their first
    /// finding), one line each: "sketch.rc:12:1: approximated: CONTROL IDC_SPEED: ...".
    std::string Text() const;
    /// "41 converted, 3 approximated, 1 left out"
    std::string Summary() const;

private:
    std::vector<Finding> m_findings;
};

/// Without control characters: a text of the script must not look like a line of its own.
std::string OneLine(std::string text);

/// A mistake in the script; the compiler ends with "FILE:LINE:COLUMN: error: TEXT" and status 1.
struct SyntaxError {
    Place place;
    std::string text;
};

} // namespace vm::rc
