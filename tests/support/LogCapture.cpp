#include "support/LogCapture.h"

#include <utility>

#include <gtest/gtest.h>

LogCapture::LogCapture() {
    m_before = vm::SetLineSink([this](vm::Outlet outlet, const std::string& text) {
        std::lock_guard guard(m_lock);
        (outlet == vm::Outlet::Log ? m_log : m_errors).push_back(text);
    });
}

LogCapture::~LogCapture() {
    vm::SetLineSink(std::move(m_before));
    for (const std::string& line : m_log) ADD_FAILURE() << "unexpected log line: " << line;
    for (const std::string& line : m_errors) ADD_FAILURE() << "unexpected error text: " << line;
}

std::vector<std::string> LogCapture::TakeLog() {
    std::lock_guard guard(m_lock);
    return std::exchange(m_log, {});
}

std::vector<std::string> LogCapture::TakeErrors() {
    std::lock_guard guard(m_lock);
    return std::exchange(m_errors, {});
}

void LogCapture::Ignore() {
    TakeLog();
    TakeErrors();
}
