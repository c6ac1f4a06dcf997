// What sources check and say of themselves while they are developed, and the marks of their texts.
//
// Checks and traces are there in builds with _DEBUG defined, as by target_compile_definitions(... PRIVATE
// $<$<CONFIG:Debug>:_DEBUG>). In others ASSERT and TRACE are nothing: what stands in them is not
// evaluated; VERIFY evaluates it and no more. Any thread.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <vmcore/app/messages.h>

namespace vm {

/// To OutputDebugString, at most 1,023 characters and without the line feed at the end.
[[gnu::format(printf, 1, 2)]] inline void Trace(const char* format, ...) {
    char line[1024];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    const std::size_t length = std::strlen(line);
    if (length > 0 && line[length - 1] == '\n') line[length - 1] = 0;
    OutputDebugString(line);
}

/// Says "<file>(<line>): assertion failed: <condition>" and aborts, which stops a debugger.
[[noreturn]] inline void FailAssertion(const char* file, int line, const char* condition) {
    Trace("%s(%d): assertion failed: %s", file, line, condition);
    std::abort();
}

} // namespace vm

#ifdef _DEBUG
#define ASSERT(condition)                                                                          \
    ((condition) ? static_cast<void>(0) : vm::FailAssertion(__FILE__, __LINE__, #condition))
#define VERIFY(condition) ASSERT(condition)
#define TRACE(...) vm::Trace(__VA_ARGS__)
#else
#define ASSERT(condition) static_cast<void>(0)
#define VERIFY(condition) static_cast<void>(condition)
#define TRACE(...) static_cast<void>(0)
#endif

#define ASSERT_VALID(object) ASSERT((object) != nullptr) ///< there is nothing else to look at
#define TRACE0(text) TRACE("%s", text)
#define TRACE1(format, a) TRACE(format, a)
#define TRACE2(format, a, b) TRACE(format, a, b)
#define TRACE3(format, a, b, c) TRACE(format, a, b, c)

// Texts are 8-bit, whatever they are marked as.
#define _T(text) text
#define TEXT(text) text
