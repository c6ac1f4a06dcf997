// A line on standard error that tells how far a command is, if somebody is looking.
#pragma once

#include <string>

#include "StopSignal.h"

namespace vm::tool {

class Progress {
public:
    Progress();
    ~Progress(); ///< takes the line away
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Replaces the line, a few times a second at most. Nothing when standard error is no terminal.
    void Show(const std::string& text);

private:
    void Clear();

    const bool m_isSeen;
    bool m_isShown = false;
    Clock::time_point m_next{};
};

} // namespace vm::tool
