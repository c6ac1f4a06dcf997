// The two outlets of the library's texts: the system log and standard error. Both can be redirected
// to a sink, which is how tests read them. Any thread may write.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vm {

/// The logging category: "vmcore.<module>" in the rules of QT_LOGGING_RULES.
enum class LogModule { Core, Platform, App, Files, Midi, Net, Wnd, Gdi, Controls, Dialogs };

/// Writes one line to the system log.
[[gnu::format(printf, 2, 3)]] void Log(LogModule module, const char* format, ...);
void LogText(LogModule module, std::string_view text);

/// True when the category "vmcore.midi.events" is on: the lines written for every packet and event.
bool MidiEventLogEnabled();
/// Turns that category on or off. It starts as QT_LOGGING_RULES says, off without a rule.
void SetMidiEventLog(bool enabled);

/// Writes `format` to standard error exactly as it stands (texts bring their own line ends).
[[gnu::format(printf, 1, 2)]] void PrintError(const char* format, ...);

enum class Outlet { Log, StandardError };
using LineSink = std::function<void(Outlet, const std::string& text)>;

/// Sends everything to `sink` instead (an empty one restores the outlets) and returns the old sink.
LineSink SetLineSink(LineSink sink);

/// `format` filled in, of any length.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

} // namespace vm
