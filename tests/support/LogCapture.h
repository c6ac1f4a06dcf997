// Captures the system log and standard error for the life of the object. Lines that the test did
// not take fail it at the end.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "core/log.h"

class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> TakeLog();    ///< the log lines so far, in order; forgets them
    std::vector<std::string> TakeErrors(); ///< the same for standard error
    void Ignore();                         ///< forgets everything so far

private:
    std::mutex m_lock;
    std::vector<std::string> m_log;
    std::vector<std::string> m_errors;
    vm::LineSink m_before;
};
