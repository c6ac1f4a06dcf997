#include <cstdio>
#include <filesystem>
#include <map>

#include "AlsaFixture.h"
#include "platform/midi/backends.h"

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

namespace {

constexpr char kSerial[] = "Serial MIDI (UART16550A) Serial MIDI 1";
constexpr char kThrough[] = "Midi Through Port-0";

class AlsaDevices : public AlsaFixture {
protected:
    /// The identifiers of the destinations by name.
    std::map<std::string, vm::MidiId> Outputs() {
        std::map<std::string, vm::MidiId> ids;
        UINT index = 0;
        for (const std::string& name : OutputNames())
            ids[name] = m_platform->EndpointAt(vm::MidiDirection::Output, index++);
        return ids;
    }
    void ExpectWorks(HMIDIOUT out, MidiRecorder& recorder, RawDevice& raw) {
        EXPECT_EQ(midiOutShortMsg(out, 0x00403C90), 0U);
        EXPECT_EQ(raw.Read(3), (Bytes{0x90, 0x3C, 0x40}));
        const std::size_t before = recorder.WaitShort(0).size();
        raw.Write({0x80, 0x3C, 0x00});
        EXPECT_EQ(recorder.WaitShort(before + 1).back(), 0x00003C80U);
    }
};

/// Plugs one of the two virtual cards in and out.
void SetVirtualCard(bool present) {
    WriteFile(std::string("/sys/bus/platform/drivers/snd_virmidi/") + (present ? "bind" : "unbind"),
              "snd_virmidi.0");
}

/// A USB device with one MIDI port, and a socket for it: 0 or 1.
class UsbDevice {
public:
    explicit UsbDevice(const std::string& name, const std::string& serial)
        : m_folder("/sys/kernel/config/usb_gadget/" + name) {
        for (const char* folder : {"strings/0x409", "functions/midi.x", "configs/c.1"})
            fs::create_directories(m_folder / folder);
        WriteFile(m_folder / "idVendor", "0x1d6b");
        WriteFile(m_folder / "idProduct", "0x0104");
        WriteFile(m_folder / "strings/0x409/product", "UM-2");
        WriteFile(m_folder / "strings/0x409/serialnumber", serial);
        fs::create_directory_symlink(m_folder / "functions/midi.x", m_folder / "configs/c.1/midi");
    }
    ~UsbDevice() {
        PullOut();
        for (const char* each :
             {"configs/c.1/midi", "configs/c.1", "functions/midi.x", "strings/0x409", ""})
            EXPECT_TRUE(fs::remove(m_folder / each)) << each;
    }
    UsbDevice(const UsbDevice&) = delete;
    UsbDevice& operator=(const UsbDevice&) = delete;

    void PlugIn(int socket) {
        WriteFile(m_folder / "UDC", "dummy_udc." + std::to_string(socket));
        m_isIn = true;
    }
    void PullOut() {
        if (m_isIn) WriteFile(m_folder / "UDC", "\n");
        m_isIn = false;
    }

private:
    const fs::path m_folder;
    bool m_isIn = false;
};

} // namespace

TEST_F(AlsaDevices, HardwareComesFirstAndPortsAreCalledByDeviceAndPort) {
    const auto expected =
        ElementsAre(kSerial, "VirMIDI 0-0", "VirMIDI 0-1", "VirMIDI #2 1-0", kThrough);
    EXPECT_THAT(OutputNames(), expected);
    EXPECT_THAT(InputNames(), expected);
    EXPECT_STREQ(vm::ChooseMidiBackend(vm::MidiBackends(), "")->name, "alsa");
}

TEST_F(AlsaDevices, ProgramsAppearChangeTheirNamesAndGo) {
    const std::size_t count = OutputNames().size();
    {
        AlsaPeer first("Synth");
        first.AddPort("in");
        AlsaPeer second("Synth");
        second.AddPort("in");
        EXPECT_THAT(OutputNames(), IsSupersetOf({"Synth in", "Synth #2 in"}));
        EXPECT_THAT(InputNames(), IsSupersetOf({"Synth in", "Synth #2 in"}));
        const vm::MidiId id = Outputs()["Synth in"];
        first.Rename("Piano");
        EXPECT_EQ(Outputs()["Piano in"], id);
        EXPECT_EQ(midiOutShortMsg(vm::MidiHandle(id), 0x00403C90), 0U);
        EXPECT_EQ(first.Read(), (Bytes{0x90, 0x3C, 0x40}));
    }
    EXPECT_EQ(OutputNames().size(), count);
}

TEST_F(AlsaDevices, HandleOfAProgramThatEndedReachesNobodyElse) {
    auto first = std::make_unique<AlsaPeer>("First");
    first->AddPort("in");
    const HMIDIOUT out = OpenOut("First in");
    EXPECT_EQ(midiOutShortMsg(out, 0x00403C90), 0U);
    std::future<void> end = SendSysex(out, Dump(100'000, 0));
    first.reset();
    AlsaPeer second("Second"); // at the same address
    second.AddPort("in");
    end.wait();
    ExpectNotSentWhole(m_log, 1);
    EXPECT_TRUE(Eventually([&] { return midiOutShortMsg(out, 0x00403C90) != 0; }));
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C90)), vm::kMidiUnknownEndpoint);
}

TEST_F(AlsaDevices, CardThatComesBackWorksAgain) {
    MidiRecorder recorder;
    OpenIn("VirMIDI 0-1", recorder);
    const HMIDIOUT out = OpenOut("VirMIDI 0-1");
    const auto before = Outputs();
    const Bytes message = Dump(100'000, 0);
    SetSpeed(out, 1);
    std::future<void> first, second;
    {
        RawDevice raw("/dev/snd/midiC0D1");
        ExpectWorks(out, recorder, raw);
        first = SendSysex(out, message);
        second = SendSysex(out, message);
        EXPECT_EQ(raw.Read(1), (Bytes{0xF0})); // the next byte is due in a second
    }
    const auto begin = std::chrono::steady_clock::now();
    SetVirtualCard(false);
    first.wait();
    second.wait();
    ExpectNotSentWhole(m_log, 2);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C90)), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midiThruShortMsg(out, 0x00403C90), 0U);
    EXPECT_THAT(OutputNames(), ElementsAre(kSerial, "VirMIDI #2 1-0", kThrough));
    SetVirtualCard(true);
    EXPECT_EQ(Outputs(), before);
    RawDevice raw("/dev/snd/midiC0D1");
    ExpectWorks(out, recorder, raw);
}

TEST_F(AlsaDevices, InputComesBackWithoutBeingAskedFor) {
    MidiRecorder recorder;
    OpenIn("VirMIDI 0-0", recorder);
    SetVirtualCard(false);
    SetVirtualCard(true);
    RawDevice raw("/dev/snd/midiC0D0");
    EXPECT_TRUE(Eventually([&] {
        raw.Write({0x90, 0x3C, 0x40}); // lost as long as nobody listens
        return !recorder.WaitShort(0).empty();
    }));
}

TEST_F(AlsaDevices, UsbTwinsKeepTheirNamesAtAnySocket) {
    UsbDevice first("first", "A001"), second("second", "A002");
    first.PlugIn(0);
    ASSERT_TRUE(Eventually([&] { return Outputs().contains("UM-2 MIDI 1"); }));
    second.PlugIn(1);
    ASSERT_TRUE(Eventually([&] { return Outputs().contains("UM-2 #2 MIDI 1"); }));
    const auto before = Outputs();
    first.PullOut();
    ASSERT_TRUE(Eventually([&] { return !Outputs().contains("UM-2 MIDI 1"); }));
    EXPECT_TRUE(Outputs().contains("UM-2 #2 MIDI 1"));
    second.PullOut();
    second.PlugIn(0);
    ASSERT_TRUE(Eventually([&] { return Outputs().contains("UM-2 #2 MIDI 1"); }));
    first.PlugIn(1);
    ASSERT_TRUE(Eventually([&] { return Outputs().contains("UM-2 MIDI 1"); }));
    EXPECT_EQ(Outputs(), before);
}

TEST_F(AlsaDevices, UsbDeviceIsPulledOutAndPluggedInElsewhere) {
    UsbDevice device("first", "A001");
    device.PlugIn(0);
    ASSERT_TRUE(Eventually([&] { return Outputs().contains("UM-2 MIDI 1"); }));
    MidiRecorder recorder;
    OpenIn("UM-2 MIDI 1", recorder);
    const HMIDIOUT out = OpenOut("UM-2 MIDI 1");
    {
        RawDevice raw("/dev/snd/midiC3D0");
        ExpectWorks(out, recorder, raw);
    }
    const Bytes message = Dump(100'000, 0);
    std::future<void> end = SendSysex(out, message);
    device.PullOut();
    end.wait();
    ExpectNotSentWhole(m_log, 1);
    EXPECT_TRUE(Eventually([&] { return !Outputs().contains("UM-2 MIDI 1"); }));
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C90)), vm::kMidiUnknownEndpoint);
    device.PlugIn(1);
    ASSERT_TRUE(Eventually([&] { return midiOutShortMsg(out, 0x00403C90) == 0; }));
    RawDevice raw("/dev/snd/midiC3D0");
    ExpectWorks(out, recorder, raw);
}

TEST_F(AlsaDevices, ComeAndGoWhileEverythingIsInUse) {
    MidiRecorder recorder;
    OpenIn("VirMIDI 0-0", recorder);
    const HMIDIOUT out = OpenOut("VirMIDI 0-0"), through = OpenOut(kThrough);
    for (int i = 0; i < 20; ++i) {
        SetVirtualCard(i % 2 != 0);
        midiOutShortMsg(out, 0x00403C90);
        EXPECT_EQ(midiOutShortMsg(through, 0x00403C90), 0U);
        OutputNames();
    }
    EXPECT_THAT(OutputNames(), Contains("VirMIDI 0-0"));
    EXPECT_EQ(midiOutShortMsg(out, 0x00403C90), 0U);
}
