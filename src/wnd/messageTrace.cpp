#include "wnd/messageTrace.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include <fcntl.h>
#include <unistd.h>

#include <vmcore/wnd/CWnd.h>

#include "core/log.h"
#include "core/typeName.h"
#include "wnd/messageNames.h"

namespace vm {
namespace {

constexpr std::size_t kLongestClass = 500; // templates: a line stays below what a pipe takes whole

struct Trace {
    std::mutex lock;
    int file = -1; // standard error
    std::unordered_map<std::type_index, std::string> classes;
};

Trace& State() {
    static auto* const s_trace = new Trace; // leaked: threads may outlive everything
    return *s_trace;
}

thread_local TracedMessage* s_innermost = nullptr;

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

// The dynamic type: hosts' classes rarely have a class record of their own.
const char* ClassOf(const CWnd& wnd) {
    const std::type_info& type = typeid(wnd);
    std::lock_guard guard(State().lock);
    const auto [entry, isNew] = State().classes.try_emplace(type);
    if (isNew) entry->second = Escaped(TypeName(type).substr(0, kLongestClass));
    return entry->second.c_str();
}

const char* NameOf(Sender sender) {
    constexpr const char* kNames[] = {"direct", "event", "timer", "menu", "send", "post"};
    return kNames[static_cast<int>(sender)];
}

bool WriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// One write a line, at the file's end at that moment: lines of other processes stay whole, too.
void WriteLine(const std::string& line) {
    if (!MessagesAreTraced()) return; // stopped while the message was handled
    std::unique_lock guard(State().lock);
    if (State().file < 0) {
        guard.unlock();
        return PrintError("%s", line.c_str());
    }
    if (WriteAll(State().file, line)) return;
    const std::string why = std::strerror(errno);
    guard.unlock();
    StopMessageTrace();
    Log(LogModule::Wnd, "the message trace ends: its file cannot be written: %s", why.c_str());
}

long long Nanoseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
}

// The beginning that all lines share. Parameters are signed numbers: -1 reads as it was written.
std::string Beginning(std::chrono::steady_clock::time_point begin, HWND window, const char* type,
                      UINT message, WPARAM wParam, LPARAM lParam) {
    return Format(
        R"({"pid":%d,"at":%lld,"window":"0x%llx","class":"%s","message":"%s","number":%u,)"
        R"("wParam":%lld,"lParam":%lld,)",
        getpid(), Nanoseconds(begin.time_since_epoch()),
        static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(window)), type,
        MessageName(message).c_str(), message, static_cast<long long>(wParam),
        static_cast<long long>(lParam));
}

std::string ThreadOf(const MessageOrigin& origin) {
    return origin.thread ? Format(R"(,"thread":%ld)", origin.thread) : std::string();
}

// Where a message that is delivered now comes from.
MessageOrigin CurrentOrigin() {
    const MessageThread& here = ThisMessageThread();
    return here.origin.depth == here.depth ? here.origin : MessageOrigin{};
}

int OpenTrace(const std::string& file) {
    if (file.empty()) return -1;
    const int opened = open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (opened < 0)
        Log(LogModule::Wnd, "VMCORE_TRACE_FILE: %s: %s", file.c_str(), std::strerror(errno));
    return opened;
}

bool StartAsEnvironmentSays() {
    const char* what = std::getenv("VMCORE_TRACE");
    if (!what || !*what) return false;
    if (std::strcmp(what, "messages") != 0) {
        Log(LogModule::Wnd, "VMCORE_TRACE: \"%s\" is unknown; \"messages\" traces messages", what);
        return false;
    }
    const char* file = std::getenv("VMCORE_TRACE_FILE");
    StartMessageTrace(file ? file : "");
    return true;
}

[[maybe_unused]] const bool s_startedByEnvironment = StartAsEnvironmentSays();

} // namespace

void StartMessageTrace(const std::string& file) {
    StopMessageTrace();
    const int opened = OpenTrace(file);
    std::lock_guard guard(State().lock);
    State().file = opened;
    traceIsOn = true;
}

void StopMessageTrace() {
    traceIsOn = false;
    std::lock_guard guard(State().lock);
    if (State().file >= 0) close(State().file);
    State().file = -1;
}

TracedMessage::TracedMessage(const CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam)
    : m_object(&wnd), m_message(message), m_wParam(wParam), m_lParam(lParam) {
    m_outer = s_innermost;
    m_isUpCall = IsUpCallOf(m_outer);
    if (m_isUpCall) return;
    m_window = wnd.view;
    m_class = ClassOf(wnd);
    m_origin = CurrentOrigin();
    s_innermost = this;
    ++ThisMessageThread().depth;
    m_begin = std::chrono::steady_clock::now();
}

TracedMessage::~TracedMessage() {
    if (m_isUpCall) return;
    const std::string line = Line();
    --ThisMessageThread().depth;
    s_innermost = m_outer;
    WriteLine(line);
}

// The same message again, and nobody has said since that it is another one.
bool TracedMessage::IsUpCallOf(const TracedMessage* outer) const {
    const MessageThread& here = ThisMessageThread();
    return outer && outer->m_object == m_object && outer->m_message == m_message &&
           outer->m_wParam == m_wParam && outer->m_lParam == m_lParam &&
           here.origin.depth != here.depth;
}

std::string TracedMessage::Line() const {
    const auto taken = std::chrono::steady_clock::now() - m_begin;
    const std::string result =
        m_result ? Format("%lld", static_cast<long long>(*m_result)) : R"(null,"threw":true)";
    return Beginning(m_begin, m_window, m_class, m_message, m_wParam, m_lParam) +
           Format(R"("result":%s,"ns":%lld,"sender":"%s"%s,"depth":%d})", result.c_str(),
                  Nanoseconds(taken), NameOf(m_origin.sender), ThreadOf(m_origin).c_str(),
                  ThisMessageThread().depth - 1) +
           "\n";
}

long ThisThread() {
    return static_cast<long>(gettid());
}

void TraceUndelivered(HWND window, UINT message, WPARAM wParam, LPARAM lParam, const char* why) {
    if (!MessagesAreTraced()) return;
    const MessageOrigin origin = CurrentOrigin();
    WriteLine(Beginning(std::chrono::steady_clock::now(), window, "", message, wParam, lParam) +
              Format(R"("undelivered":"%s","sender":"%s"%s,"depth":%d})", why,
                     NameOf(origin.sender), ThreadOf(origin).c_str(), ThisMessageThread().depth) +
              "\n");
}

} // namespace vm
