// Formatting and the choice of the outlet; what is written to it stands where it is written.
#include "core/log.h"

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>

#include <QtCore/QLoggingCategory>
#include <QtCore/QMessageLogger>

namespace vm {
namespace {

constexpr std::array<const char*, 10> kCategories = {
    "vmcore.core", "vmcore.platform", "vmcore.app", "vmcore.files",    "vmcore.midi",
    "vmcore.net",  "vmcore.wnd",      "vmcore.gdi", "vmcore.controls", "vmcore.dialogs"};

struct LogState {
    std::mutex lock;
    LineSink sink;                     // guarded by lock
    std::atomic<bool> hasSink = false; // spares the lock when there is none
    std::array<QLoggingCategory*, kCategories.size()> categories;
    QLoggingCategory midiEvents{"vmcore.midi.events", QtWarningMsg};
    std::atomic<bool> midiEventsOn{midiEvents.isInfoEnabled()};

    LogState() {
        for (std::size_t i = 0; i < categories.size(); ++i)
            categories[i] = new QLoggingCategory(kCategories[i]);
    }
};

// Leaked on purpose: lines are written until the last destructor of the process.
LogState& State() {
    static LogState* const s_state = new LogState;
    return *s_state;
}

[[gnu::format(printf, 1, 0)]] std::string FormatList(const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

bool GiveToSink(Outlet outlet, const std::string& text) {
    LogState& state = State();
    if (!state.hasSink.load(std::memory_order_acquire)) return false;
    LineSink sink;
    {
        std::lock_guard guard(state.lock);
        sink = state.sink;
    }
    if (!sink) return false;
    sink(outlet, text);
    return true;
}

} // namespace

std::string Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = FormatList(format, arguments);
    va_end(arguments);
    return text;
}

void LogText(LogModule module, std::string_view text) {
    const std::string line(text);
    if (GiveToSink(Outlet::Log, line)) return;
    QLoggingCategory& category = *State().categories[static_cast<std::size_t>(module)];
    if (!category.isInfoEnabled()) return;
    QMessageLogger(nullptr, 0, nullptr, category.categoryName()).info("%s", line.c_str());
}

void Log(LogModule module, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = FormatList(format, arguments);
    va_end(arguments);
    LogText(module, text);
}

bool MidiEventLogEnabled() {
    return State().midiEventsOn.load(std::memory_order_relaxed);
}

void SetMidiEventLog(bool enabled) {
    State().midiEvents.setEnabled(QtInfoMsg, enabled);
    State().midiEventsOn = enabled;
}

void PrintError(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = FormatList(format, arguments);
    va_end(arguments);
    if (!GiveToSink(Outlet::StandardError, text)) std::fputs(text.c_str(), stderr);
}

LineSink SetLineSink(LineSink sink) {
    LogState& state = State();
    std::lock_guard guard(state.lock);
    state.hasSink = static_cast<bool>(sink);
    std::swap(state.sink, sink);
    return sink;
}

} // namespace vm
