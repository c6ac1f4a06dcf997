// The set-up file at work: when it is read, what hosts notice.
#include <filesystem>
#include <fstream>
#include <future>

#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>

#include "MidiRecorder.h"

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string OutName(UINT index = 0) {
    MIDIOUTCAPS caps = {};
    EXPECT_EQ(midiOutGetDevCaps(index, &caps, sizeof caps), 0U);
    return caps.szPname;
}

std::string InName(UINT index = 0) {
    MIDIINCAPS caps = {};
    EXPECT_EQ(midiInGetDevCaps(index, &caps, sizeof caps), 0U);
    return caps.szPname;
}

class MidiSetupFile : public MidiSystemTest {
protected:
    MidiSetupFile() {
        GetUserPreferencesPath(m_folder, sizeof m_folder);
        m_file = fs::path(m_folder) / "VMCore MIDI.ini";
        fs::remove(m_file);
    }
    ~MidiSetupFile() override {
        unsetenv("VMCORE_MIDI_SETUP");
        fs::remove(m_file);
    }

    /// As an editor saves: the time of each save is another one.
    void Write(const std::string& text) {
        std::ofstream(m_file, std::ios::binary) << text;
        m_time += std::chrono::seconds(1);
        fs::last_write_time(m_file, m_time);
    }
    std::uint32_t Speed(HMIDIOUT out) const {
        return m_platform->MaxSysexSpeed(vm::MidiReference(out));
    }

    char m_folder[MAX_PATH] = {};
    fs::path m_file;
    fs::file_time_type m_time = fs::file_time_type::clock::now();
};

} // namespace

TEST_F(MidiSetupFile, NamesFollowTheFile) {
    Start();
    EXPECT_EQ(OutName(), "Loopback");
    Write("[Port Loopback]\nConnected=DX7, TX81Z\n[Port Loopback|in]\nConnected=Keys\n");
    EXPECT_EQ(OutName(), "DX7, TX81Z");
    EXPECT_EQ(InName(), "Keys");
    Write("[Port Loopback]\nConnected=DX7\n");
    EXPECT_EQ(OutName(), "DX7");
    EXPECT_EQ(InName(), "DX7");
    fs::remove(m_file);
    EXPECT_EQ(OutName(), "Loopback");
}

TEST_F(MidiSetupFile, NamesWithBracketsAndSemicolonsHaveTheirSections) {
    Start({{{1, vm::MidiObjectKind::Destination, "Synth [A] 1;2", {}, {}},
            {2, vm::MidiObjectKind::Destination, "Synth [A]", {}, {}},
            {3, vm::MidiObjectKind::Destination, std::string(300, 'x'), {}, {}}},
           {}});
    Write("[Port Synth [A] 1;2]\nConnected=One\n[Port Synth [A]]\nConnected=Two\n[Port " +
          std::string(244, 'x') + "]\nConnected=Three\n");
    EXPECT_EQ(OutName(0), "One");
    EXPECT_EQ(OutName(1), "Two");
    EXPECT_EQ(OutName(2), "Three");
}

TEST_F(MidiSetupFile, SpeedHoldsUntilTheHostSetsItsOwn) {
    Write("[Port Loopback]\nSpeed=5000\n");
    Start();
    const HMIDIOUT out = OpenOut();
    EXPECT_EQ(Speed(out), 5000U);
    Write("[Port Loopback]\nSpeed=6000\n");
    OpenOut();
    EXPECT_EQ(Speed(out), 6000U);
    Write("[Port Loopback]\nConnected=DX7\n");
    OpenOut();
    EXPECT_EQ(Speed(out), 3125U) << "an entry that is gone";
    EXPECT_EQ(midiOutSetMaxSysExSpeed(out, 100'000), 0U);
    Write("[Port Loopback]\nSpeed=7000\n");
    OpenOut();
    EXPECT_EQ(Speed(out), 100'000U);
    EXPECT_EQ(destroyCoreMIDI(), 0);
    m_log.Ignore();
    Start();
    OpenOut();
    EXPECT_EQ(Speed(out), 7000U) << "a new start";
}

TEST_F(MidiSetupFile, SpeedAndPausesHoldForLongMessages) {
    Start();
    const HMIDIOUT out = OpenOut();
    Write("[Port Loopback]\nSpeed=1000000\nChunkSize=4\nChunkDelay=10\n");
    BYTE dump[] = {0xF0, 1, 2, 3, 4, 5, 6, 0xF7};
    MIDIHDR header = {};
    header.lpData = dump;
    header.dwBufferLength = sizeof dump;
    const auto begin = std::chrono::steady_clock::now();
    midiOutLongMsg(out, &header, sizeof header);
    WaitUntilDone(header);
    EXPECT_EQ(Speed(out), 1'000'000U);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(20));
}

TEST_F(MidiSetupFile, ReceiveThreadGetsWhatIsKnown) {
    Start();
    struct Names {
        std::promise<std::string> seen;
        static void OnMidi(HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
            reinterpret_cast<Names*>(instance)->seen.set_value(OutName() + "/" + InName());
        }
    } names;
    EXPECT_EQ(OutName(), "Loopback");
    Write("[Port Loopback]\nConnected=DX7\n");
    EXPECT_EQ(InName(), "DX7");
    Write("[Port Loopback]\nConnected=TX81Z\n");
    HMIDIIN in = nullptr;
    EXPECT_EQ(midiInOpen(&in, 0, reinterpret_cast<DWORD_PTR>(&Names::OnMidi),
                         reinterpret_cast<DWORD_PTR>(&names), 0),
              0U);
    m_log.Ignore();
    EXPECT_EQ(midiOutShortMsg(OpenOut(), 0xFA), 0U);
    EXPECT_EQ(names.seen.get_future().get(), "TX81Z/DX7") << "the output was just opened";
    EXPECT_EQ(InName(), "TX81Z");
}

TEST_F(MidiSetupFile, BadEntryIsLoggedOnce) {
    Write("[Port Loopback]\nSpeed=fast\n");
    Start();
    const HMIDIOUT out = OpenOut();
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("Warning! " + m_file.string() +
                                             ": [Port Loopback] Speed: \"fast\" is no number "
                                             "from 1 to 4294967295"));
    OutName();
    Write("[Port Loopback]\nSpeed=fast\nConnected=DX7\n");
    EXPECT_EQ(OutName(), "DX7");
    EXPECT_EQ(Speed(out), 3125U);
}

TEST_F(MidiSetupFile, EnvironmentNamesAnotherFile) {
    Write("[Port Loopback]\nConnected=DX7\n");
    const fs::path other = fs::path(m_folder) / "other.ini";
    std::ofstream(other) << "[Port Loopback]\nConnected=TX81Z\n";
    const struct {
        std::string value;
        std::string name;
        std::string line = "";
    } rows[] = {
        {other.string(), "TX81Z"},
        {"", "Loopback"},
        {"/dev/null", "Loopback"},
        {other.string() + ".none", "Loopback", "VMCORE_MIDI_SETUP names no file: "},
        {std::string(m_folder) + "/a:b.ini", "Loopback", "MIDI set-up files can't have such"},
    };
    std::ofstream(rows[4].value) << "[Port Loopback]\nConnected=TX802\n";
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        setenv("VMCORE_MIDI_SETUP", row.value.c_str(), 1);
        vm::UseMidiPlatform(std::make_shared<vm::LoopbackPlatform>());
        initCoreMIDI();
        std::string lines;
        for (const std::string& line : m_log.TakeLog())
            if (line.starts_with("Warning!")) lines += line;
        EXPECT_EQ(lines.empty(), row.line.empty());
        EXPECT_THAT(lines, HasSubstr(row.line));
        EXPECT_EQ(OutName(), row.name);
        destroyCoreMIDI();
    }
}

TEST_F(MidiSetupFile, DescribesTheLoopbackWithoutDelayingTheStart) {
    Write("[Loopback]\nWires=1>2,1>4\n"
          "[Loopback Port 1]\nKind=out\nName=To both\n"
          "[Loopback Port 2]\nKind=in\nName=First\n"
          "[Loopback Port 4]\nKind=in\nName=Second\n"
          "[Port Second]\nConnected=Keys\n");
    InitProfileManager();
    std::promise<void> isLocked, mayRead;
    std::thread locker([&] { // the file cannot be read yet
        EnterCriticalSection(&profileCS);
        isLocked.set_value();
        mayRead.get_future().wait();
        LeaveCriticalSection(&profileCS);
    });
    isLocked.get_future().wait();
    initCoreMIDI(); // would hang
    mayRead.set_value();
    locker.join();
    m_log.Ignore();
    ASSERT_EQ(midiInGetNumDevs(), 2U);
    EXPECT_EQ(OutName(0), "To both");
    EXPECT_EQ(InName(1), "Keys");
    MidiRecorder second;
    OpenIn(second, 1);
    EXPECT_EQ(midiOutShortMsg(OpenOut(0), 0x00403C90), 0U);
    EXPECT_THAT(second.WaitShort(1), ElementsAre(0x00403C90));
}
