// The line of a terminal.
#include "Progress.h"

#include <cstdio>

#include <unistd.h>

namespace vm::tool {

Progress::Progress() : m_isSeen(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    Clear();
}

void Progress::Clear() {
    if (m_isShown) std::fputs("\r\033[K", stderr);
    m_isShown = false;
}

void Progress::Show(const std::string& text) {
    const Clock::time_point now = Clock::now();
    if (!m_isSeen || now < m_next) return;
    m_next = now + std::chrono::milliseconds(100);
    Clear();
    std::fputs(text.c_str(), stderr);
    m_isShown = true;
}

} // namespace vm::tool
