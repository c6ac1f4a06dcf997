// The MIDI system up on the sequencer, and the devices of the machine that the tests run in: two
// virtual cards, whose other side are files of raw bytes, and a port that returns what it gets.
#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "../MidiRecorder.h"
#include "AlsaPeer.h"
#include "platform/midi/alsa/AlsaPlatform.h"

class AlsaFixture : public testing::Test {
protected:
    AlsaFixture();
    ~AlsaFixture() override;

    std::vector<std::string> OutputNames();
    std::vector<std::string> InputNames();
    /// The device of that name, without a limit for its speed; a failure when there is none.
    HMIDIOUT OpenOut(const std::string& name);
    HMIDIIN OpenIn(const std::string& name, MidiRecorder& recorder);
    HMIDIIN OpenIn(const std::string& name, DWORD_PTR callback, DWORD_PTR instance);

    static void SetSpeed(HMIDIOUT out, DWORD bytesPerSecond);
    /// The future is ready when the message is done.
    std::future<void> SendSysex(HMIDIOUT out, const Bytes& message);

    static constexpr DWORD kUnlimited = 0xFFFFFFFF;

    Watchdog m_watchdog{std::chrono::seconds(100)};
    LogCapture m_log;
    std::shared_ptr<vm::AlsaPlatform> m_platform = std::make_shared<vm::AlsaPlatform>();
};

/// The other side of a virtual card's port, or of a USB device.
class RawDevice {
public:
    explicit RawDevice(const std::string& path);
    ~RawDevice();
    RawDevice(const RawDevice&) = delete;
    RawDevice& operator=(const RawDevice&) = delete;

    void Write(const Bytes& bytes);
    Bytes Read(std::size_t count); ///< waits for as many; fewer after ten seconds

private:
    const int m_descriptor;
};

/// Calls `condition` until it is true; false when it is not within ten seconds.
bool Eventually(const std::function<bool()>& condition);

/// Writes to one of the files that steer drivers.
void WriteFile(const std::string& path, const std::string& text);
