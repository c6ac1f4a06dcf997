// A host's MIDI callback that records what it is given, and a running MIDI system around a test.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <vmcore/midi/mmsystem.h>

#include "midi/midisystem.h"
#include "platform/midi/loopback/LoopbackPlatform.h"
#include "support/LogCapture.h"
#include "support/Watchdog.h"

using Bytes = std::vector<std::uint8_t>;

/// Give `&recorder` as the instance of midiInOpen, and Callback() as the callback.
class MidiRecorder {
public:
    struct Call {
        HMIDIIN handle;
        UINT message;
        DWORD shortMessage = 0;
        Bytes sysex = {};
        std::thread::id thread = std::this_thread::get_id();
    };

    static DWORD_PTR Callback() { return reinterpret_cast<DWORD_PTR>(&MidiRecorder::OnMidi); }
    DWORD_PTR Instance() { return reinterpret_cast<DWORD_PTR>(this); }

    /// Waits for that many calls and returns all so far; fewer after ten seconds.
    std::vector<Call> Wait(std::size_t count) {
        std::unique_lock lock(m_lock);
        m_called.wait_for(lock, std::chrono::seconds(10), [&] { return m_calls.size() >= count; });
        return m_calls;
    }
    std::vector<DWORD> WaitShort(std::size_t count) {
        std::vector<DWORD> messages;
        for (const Call& call : Wait(count)) messages.push_back(call.shortMessage);
        return messages;
    }
    std::vector<Bytes> WaitSysex(std::size_t count) {
        std::vector<Bytes> messages;
        for (const Call& call : Wait(count)) messages.push_back(call.sysex);
        return messages;
    }

private:
    static void OnMidi(HMIDIIN handle, UINT message, DWORD_PTR instance, DWORD_PTR param1,
                       DWORD_PTR) {
        Call call{handle, message};
        if (message == MIM_LONGDATA) {
            const auto* header = reinterpret_cast<const MIDIHDR*>(param1);
            EXPECT_EQ(header->dwBytesRecorded, header->dwBufferLength);
            call.sysex.assign(header->lpData, header->lpData + header->dwBytesRecorded);
        } else {
            call.shortMessage = static_cast<DWORD>(param1);
        }
        auto* self = reinterpret_cast<MidiRecorder*>(instance);
        std::lock_guard guard(self->m_lock);
        self->m_calls.push_back(std::move(call));
        self->m_called.notify_all();
    }

    std::mutex m_lock;
    std::condition_variable m_called;
    std::vector<Call> m_calls;
};

/// A System Exclusive message whose inside tells it from others.
inline Bytes Dump(std::size_t length, unsigned seed) {
    Bytes bytes(length);
    for (std::size_t i = 0; i < length; ++i)
        bytes[i] = static_cast<std::uint8_t>((i * 7 + i / 128 + seed) & 0x7F);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    return bytes;
}

inline MIDIHDR HeaderFor(Bytes& bytes) {
    MIDIHDR header = {};
    header.lpData = bytes.data();
    header.dwBufferLength = static_cast<DWORD>(bytes.size());
    return header;
}

inline bool IsDone(MIDIHDR& header) {
    return (std::atomic_ref<DWORD>(header.dwFlags).load(std::memory_order_acquire) & MHDR_DONE) !=
           0;
}

/// Nothing but this has been logged, of so many messages.
inline void ExpectNotSentWhole(LogCapture& log, std::size_t count) {
    EXPECT_THAT(log.TakeLog(),
                testing::AllOf(testing::SizeIs(count),
                               testing::Each(testing::HasSubstr(" bytes was not sent whole: "))));
}

inline void WaitUntilDone(MIDIHDR& header) {
    while (!IsDone(header)) std::this_thread::yield(); // the watchdog ends it
}

/// A test with the MIDI system up on a loopback of its own. Lines logged by start-up are dropped.
class MidiSystemTest : public testing::Test {
protected:
    void Start(vm::LoopbackSetup setup = vm::LoopbackSetup::Default()) {
        Start(std::make_shared<vm::LoopbackPlatform>(std::move(setup)));
    }
    void Start(std::shared_ptr<vm::LoopbackPlatform> platform) {
        m_platform = std::move(platform);
        vm::UseMidiPlatform(m_platform);
        initCoreMIDI();
        m_log.Ignore();
    }
    void TearDown() override {
        destroyCoreMIDI();
        vm::SetMidiEventLog(false);
    }

    HMIDIOUT OpenOut(UINT index = 0) {
        HMIDIOUT handle = nullptr;
        EXPECT_EQ(midiOutOpen(&handle, index, 0, 0, 0), 0U);
        return handle;
    }
    HMIDIIN OpenIn(MidiRecorder& recorder, UINT index = 0) {
        HMIDIIN handle = nullptr;
        EXPECT_EQ(midiInOpen(&handle, index, recorder.Callback(), recorder.Instance(), 0), 0U);
        m_log.Ignore();
        return handle;
    }

    Watchdog m_watchdog;
    LogCapture m_log;
    std::shared_ptr<vm::LoopbackPlatform> m_platform;
};
