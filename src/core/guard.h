// How an operation survives what the platform reports: adapters throw PlatformError, the operation
// runs inside Guarded(), which logs the operation's text and returns its neutral value. Every other
// exception passes on.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "core/log.h"

namespace vm {

/// What an adapter of the toolkit or the system reports: a short name, and why.
class PlatformError : public std::exception {
public:
    explicit PlatformError(std::string name, std::string reason = {})
        : m_name(std::move(name)), m_reason(std::move(reason)) {}

    const char* what() const noexcept override { return m_name.c_str(); }
    const std::string& Name() const noexcept { return m_name; }
    const std::string& Reason() const noexcept { return m_reason; }

private:
    std::string m_name;
    std::string m_reason;
};

/// Runs `body` and returns what it returns; after a PlatformError, logs "exception at <operation> -
/// <name>" and returns `neutral`. `operation` is for example "CWnd::GetParent()".
template <class T, class Body>
T Guarded(LogModule module, const char* operation, T neutral, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (const PlatformError& error) {
        Log(module, "exception at %s - %s", operation, error.what());
        return neutral;
    }
}

/// The same for an operation without a result.
template <class Body>
void Guarded(LogModule module, const char* operation, Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const PlatformError& error) {
        Log(module, "exception at %s - %s", operation, error.what());
    }
}

} // namespace vm
