// Waiting for what arrives, and what is done with it.
#include "midiReceive.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "MidiInbox.h"
#include "Progress.h"
#include "command.h"
#include "midiSend.h"

namespace vm::tool {
namespace {

/// Holds whole messages only, whatever happens.
class SyxAppender {
public:
    explicit SyxAppender(const std::string& file)
        : m_file(file),
          m_descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)) {
        if (m_descriptor < 0) Throw();
    }
    ~SyxAppender() { close(m_descriptor); }
    SyxAppender(const SyxAppender&) = delete;
    SyxAppender& operator=(const SyxAppender&) = delete;

    void Append(const MidiBytes& message) {
        struct stat before = {};
        fstat(m_descriptor, &before);
        for (std::size_t done = 0; done < message.size();) {
            const ssize_t count = write(m_descriptor, message.data() + done, message.size() - done);
            if (count < 0) TakeBack(before.st_size);
            done += static_cast<std::size_t>(count);
        }
    }
    void Save() {
        if (fdatasync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS) Throw();
    }

private:
    [[noreturn]] void TakeBack(off_t size) const {
        const int error = errno;
        if (ftruncate(m_descriptor, size) != 0) {
        } // a pipe, whose reader has what it has
        errno = error;
        Throw();
    }
    [[noreturn]] void Throw() const {
        throw Exit{kTrouble, "cannot write " + m_file + ": " + std::strerror(errno)};
    }

    const std::string m_file;
    const int m_descriptor;
};

Deadline DeadlineOf(const ReceiveLimits& limits) {
    if (!limits.seconds) return std::nullopt;
    const std::chrono::duration<double> time(*limits.seconds);
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
}

void SayReady(const Port& port, const char* what) {
    std::fprintf(stderr, "vmcore: %s '%s', Ctrl-C ends\n", what, port.name.c_str());
}

class Receiver {
public:
    Receiver(const std::string& file, const ReceiveLimits& limits)
        : m_appender(file), m_limits(limits) {}

    void Take(const MidiEvent& event) {
        if (event.sysex.empty() || IsFull()) return;
        if (!IsWholeSysex(event.sysex)) {
            std::fprintf(stderr, "vmcore: not kept, because it is incomplete: %s\n",
                         AbbreviatedHex(event.sysex).c_str());
            return;
        }
        m_appender.Append(event.sysex);
        ++m_count;
        m_bytes += event.sysex.size();
        m_progress.Show(FormatCount(m_count, "message") + ", " + FormatCount(m_bytes, "byte"));
    }

    void TakeAll(MidiInbox& inbox, Deadline until) {
        while (!IsFull()) {
            const std::optional<MidiEvent> event = inbox.Next(until);
            if (!event) break;
            Take(*event);
        }
        for (const MidiEvent& event : inbox.Close()) Take(event);
        m_appender.Save();
    }

    void CheckCount() const {
        if (m_limits.count && m_count < *m_limits.count)
            throw Exit{kNo, std::to_string(m_count) + " of " +
                                FormatCount(*m_limits.count, "message") + " received"};
    }

private:
    bool IsFull() const { return m_limits.count && m_count >= *m_limits.count; }

    SyxAppender m_appender;
    const ReceiveLimits m_limits;
    Progress m_progress;
    std::size_t m_count = 0;
    std::size_t m_bytes = 0;
};

void Print(const MidiEvent& event, Clock::time_point start) {
    const bool isShort = event.sysex.empty();
    const MidiBytes bytes = isShort ? BytesOf(event.message) : event.sysex;
    const std::string text = isShort ? Described(event.message) : DescribedSysex(event.sysex);
    const std::chrono::duration<double> time = event.time - start;
    std::printf("%10.3f  %-37s %s\n", time.count(), AbbreviatedHex(bytes).c_str(), text.c_str());
    std::fflush(stdout);
}

} // namespace

void Receive(const std::string& port, const std::string& file, const ReceiveLimits& limits,
             const DumpRequest& request) {
    std::optional<SyxFile> sent;
    if (!request.file.empty()) sent.emplace(request.file);
    Receiver receiver(file, limits);
    StopSignal stop;
    MidiOutput output;
    const MidiSession session;
    const Port input = FindPort(PortDirection::In, port);
    MidiInbox inbox(input, stop);
    SayReady(input, "receiving from");
    if (sent) {
        const Port destination = FindPort(PortDirection::Out, request.port);
        output.Open(destination, request.speed);
        SendMessages(output, destination, *sent, stop);
    }
    receiver.TakeAll(inbox, DeadlineOf(limits));
    receiver.CheckCount();
}

void Monitor(const std::string& port, const ReceiveLimits& limits) {
    StopSignal stop;
    const MidiSession session;
    const Port input = FindPort(PortDirection::In, port);
    const Clock::time_point start = Clock::now();
    MidiInbox inbox(input, stop);
    SayReady(input, "listening to");
    const Deadline until = DeadlineOf(limits);
    for (std::size_t count = 0; !limits.count || count < *limits.count; ++count) {
        const std::optional<MidiEvent> event = inbox.Next(until);
        if (!event) break;
        Print(*event, start);
    }
}

} // namespace vm::tool
