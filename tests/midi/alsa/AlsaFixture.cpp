#include "AlsaFixture.h"

#include <algorithm>
#include <fstream>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int kLimit = 10'000; // milliseconds

std::string OutputName(UINT index) {
    MIDIOUTCAPS caps = {};
    midiOutGetDevCaps(index, &caps, sizeof caps);
    return caps.szPname;
}

std::string InputName(UINT index) {
    MIDIINCAPS caps = {};
    midiInGetDevCaps(index, &caps, sizeof caps);
    return caps.szPname;
}

struct SysexRequest {
    const Bytes message;
    std::promise<void> done;
};

void EndRequest(void* reference) {
    const std::unique_ptr<SysexRequest> request(static_cast<SysexRequest*>(reference));
    request->done.set_value();
}

UINT IndexOf(const std::vector<std::string>& names, const std::string& name) {
    const auto found = std::ranges::find(names, name);
    EXPECT_NE(found, names.end()) << name;
    return static_cast<UINT>(found - names.begin());
}

} // namespace

AlsaFixture::AlsaFixture() {
    vm::UseMidiPlatform(m_platform);
    initCoreMIDI();
    m_log.Ignore();
}

AlsaFixture::~AlsaFixture() {
    destroyCoreMIDI();
}

std::vector<std::string> AlsaFixture::OutputNames() {
    std::vector<std::string> names;
    const UINT count = midiOutGetNumDevs();
    for (UINT i = 0; i < count; ++i) names.push_back(OutputName(i));
    return names;
}

std::vector<std::string> AlsaFixture::InputNames() {
    std::vector<std::string> names;
    const UINT count = midiInGetNumDevs();
    for (UINT i = 0; i < count; ++i) names.push_back(InputName(i));
    return names;
}

HMIDIOUT AlsaFixture::OpenOut(const std::string& name) {
    HMIDIOUT handle = nullptr;
    EXPECT_EQ(midiOutOpen(&handle, IndexOf(OutputNames(), name), 0, 0, 0), 0U);
    SetSpeed(handle, kUnlimited);
    return handle;
}

HMIDIIN AlsaFixture::OpenIn(const std::string& name, MidiRecorder& recorder) {
    return OpenIn(name, recorder.Callback(), recorder.Instance());
}

HMIDIIN AlsaFixture::OpenIn(const std::string& name, DWORD_PTR callback, DWORD_PTR instance) {
    HMIDIIN handle = nullptr;
    EXPECT_EQ(midiInOpen(&handle, IndexOf(InputNames(), name), callback, instance, 0), 0U);
    m_log.Ignore();
    return handle;
}

void AlsaFixture::SetSpeed(HMIDIOUT out, DWORD bytesPerSecond) {
    EXPECT_EQ(midiOutSetMaxSysExSpeed(out, bytesPerSecond), 0U);
}

std::future<void> AlsaFixture::SendSysex(HMIDIOUT out, const Bytes& message) {
    auto* request = new SysexRequest{message, {}};
    std::future<void> future = request->done.get_future();
    const Bytes& bytes = request->message;
    const int result = m_platform->SendSysex(
        {vm::MidiReference(out), bytes.data(), bytes.size(), EndRequest, request});
    EXPECT_EQ(result, vm::kMidiOk);
    if (result != vm::kMidiOk) EndRequest(request);
    return future;
}

RawDevice::RawDevice(const std::string& path)
    : m_descriptor(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) {
    EXPECT_GE(m_descriptor, 0) << path;
    std::uint8_t none;
    EXPECT_EQ(read(m_descriptor, &none, 1), -1) << "the first read begins the listening";
}

RawDevice::~RawDevice() {
    close(m_descriptor);
}

void RawDevice::Write(const Bytes& bytes) {
    constexpr std::size_t kLargestPiece = 1024;
    std::size_t written = 0;
    pollfd descriptor = {m_descriptor, POLLOUT, 0};
    while (written < bytes.size() && poll(&descriptor, 1, kLimit) > 0) {
        const std::size_t piece = std::min(kLargestPiece, bytes.size() - written);
        const ssize_t count = write(m_descriptor, bytes.data() + written, piece);
        if (count > 0) written += static_cast<std::size_t>(count);
        poll(nullptr, 0, 1); // no wire is without a limit
    }
    EXPECT_EQ(written, bytes.size());
}

Bytes RawDevice::Read(std::size_t count) {
    Bytes bytes(count);
    std::size_t length = 0;
    pollfd descriptor = {m_descriptor, POLLIN, 0};
    while (length < count && poll(&descriptor, 1, kLimit) > 0) {
        const ssize_t more = read(m_descriptor, bytes.data() + length, count - length);
        if (more <= 0) break;
        length += static_cast<std::size_t>(more);
    }
    bytes.resize(length);
    return bytes;
}

bool Eventually(const std::function<bool()>& condition) {
    constexpr int kInterval = 50;
    for (int waited = 0; waited < kLimit; waited += kInterval) {
        if (condition()) return true;
        poll(nullptr, 0, kInterval);
    }
    return false;
}

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream file(path);
    file << text << std::flush;
    EXPECT_TRUE(file.good()) << path;
}
