#include "platform/midi/alsa/alsaEndpoints.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gmock/gmock.h>

#include "support/TemporaryHome.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using vm::AlsaPort;

namespace {

constexpr unsigned kBoth = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ |
                           SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr unsigned kOut = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr int kSelf = 140;

/// What an enumeration would find, with cards by number.
class AlsaEndpoints : public testing::Test {
protected:
    /// "key device+port (ports of the device)" of the destinations, in the order of the table.
    std::vector<std::string> Describe(const std::vector<AlsaPort>& ports) {
        const auto find = [this](int card) -> std::optional<vm::AlsaCard> {
            const auto found = m_cards.find(card);
            return found == m_cards.end() ? std::nullopt : std::optional(found->second);
        };
        std::vector<std::string> texts;
        for (const auto& each : vm::DescribeAlsaPorts(ports, kSelf, find, m_keys))
            if (each.direction == vm::MidiDirection::Output)
                texts.push_back(each.key + " " + each.entity->device->name + "+" + each.name +
                                " (" + std::to_string(each.entity->device->entityCount) + ")");
        return texts;
    }

    std::map<int, vm::AlsaCard> m_cards;
    vm::AlsaKeys m_keys;
};

} // namespace

TEST_F(AlsaEndpoints, PortsAreDescribedByDevicePortAndKey) {
    m_cards = {{0, {"UM-2", "usb/1:2/S"}}, {1, {"VirMIDI", "card/VirMIDI"}}};
    EXPECT_THAT(Describe({{{0, 0}, -1, "System", "Timer", kBoth},
                          {{14, 0}, -1, "Midi Through", "Midi Through Port-0", kBoth},
                          {{20, 0}, 0, "UM-2", "UM-2 MIDI 1", kBoth},
                          {{20, 1}, 0, "UM-2", "UM-2 MIDI 2", kOut},
                          {{24, 0}, 1, "Virtual Raw MIDI 1-0", "VirMIDI 1-0", kBoth},
                          {{28, 0}, 1, "Virtual Raw MIDI 1-1", "VirMIDI 1-1", kBoth},
                          {{128, 0}, -1, "Synth", "in", kOut},
                          {{129, 0}, -1, "Hidden", "port", kOut | SND_SEQ_PORT_CAP_NO_EXPORT},
                          {{130, 0}, -1, "Closed", "port", SND_SEQ_PORT_CAP_WRITE},
                          {{kSelf, 0}, -1, "We", "MIDI OUT Port", kBoth}}),
                ElementsAre("user/Midi Through/Midi Through Port-0 Midi Through+Port-0 (1)",
                            "usb/1:2/S/000 UM-2+MIDI 1 (2)", "usb/1:2/S/001 UM-2+MIDI 2 (2)",
                            "card/VirMIDI/VirMIDI 1-0/000 VirMIDI+1-0 (2)",
                            "card/VirMIDI/VirMIDI 1-1/000 VirMIDI+1-1 (2)",
                            "user/Synth/in Synth+in (1)"));
}

TEST_F(AlsaEndpoints, BothDirectionsAreListedWithHardwareFirst) {
    m_cards = {{0, {"Card", "card/x"}}};
    const auto find = [this](int card) { return std::optional(m_cards.at(card)); };
    const std::vector<AlsaPort> ports = {
        {{20, 0}, 0, "Card", "Card", kBoth},
        {{128, 0}, -1, "Keys", "out", SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ}};
    const auto found = vm::DescribeAlsaPorts(ports, kSelf, find, m_keys);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].direction, vm::MidiDirection::Output);
    EXPECT_EQ(found[1].direction, vm::MidiDirection::Input);
    EXPECT_EQ(found[1].name, "Card");
    EXPECT_LT(found[1].rank, found[2].rank);
    EXPECT_EQ(found[2].address, "128:0");
}

TEST_F(AlsaEndpoints, WhoHadAKeyFirstKeepsIt) {
    const AlsaPort first{{128, 0}, -1, "Synth", "in", kOut};
    const AlsaPort second{{129, 0}, -1, "Synth", "in", kOut};
    EXPECT_THAT(Describe({first, second}),
                ElementsAre("user/Synth/in Synth+in (1)", "user/Synth~2/in Synth+in (1)"));
    EXPECT_THAT(Describe({second}), ElementsAre("user/Synth~2/in Synth+in (1)"));
    EXPECT_THAT(Describe({first, second}),
                ElementsAre("user/Synth/in Synth+in (1)", "user/Synth~2/in Synth+in (1)"));
    EXPECT_THAT(Describe({{{128, 0}, -1, "Piano", "main", kOut}}),
                ElementsAre("user/Synth/in Piano+main (1)"))
        << "renamed";
    m_keys.Forget({128, vm::AlsaAddress::kAllPorts});
    EXPECT_THAT(Describe({{{128, 0}, -1, "Piano", "main", kOut}}),
                ElementsAre("user/Piano/main Piano+main (1)"))
        << "another program";
}

TEST_F(AlsaEndpoints, CardsWithOneSerialNumberAreTwoDevices) {
    m_cards = {{0, {"UM-2", "usb/1:2/0"}}, {1, {"UM-2", "usb/1:2/0"}}};
    const AlsaPort first{{20, 0}, 0, "UM-2", "UM-2 MIDI 1", kOut};
    const AlsaPort second{{24, 0}, 1, "UM-2", "UM-2 MIDI 1", kOut};
    EXPECT_THAT(Describe({first, second}),
                ElementsAre("usb/1:2/0/000 UM-2+MIDI 1 (1)", "usb/1:2/0~2/000 UM-2+MIDI 1 (1)"));
    m_cards[1] = {"Other", "usb/3:4/0"}; // the number went to another card
    m_keys.Forget({24, vm::AlsaAddress::kAllPorts});
    EXPECT_THAT(Describe({{{24, 0}, 1, "Other", "Other", kOut}}),
                ElementsAre("usb/3:4/0/000 Other+Other (1)"));
}

TEST_F(AlsaEndpoints, PortNamesLoseTheirDevicesName) {
    const std::array<const char*, 3> cases[] = {
        {"UM-2 MIDI 1", "UM-2", "MIDI 1"},
        {"UM-2:MIDI 1", "UM-2", "MIDI 1"},
        {"UM-2-1", "UM-2", "1"},
        {"UM-2", "UM-2", "UM-2"},
        {"UM-2 ", "UM-2", "UM-2 "},
        {"UM-2X 1", "UM-2", "UM-2X 1"},
        {"My UM-2 MIDI", "UM-2", "My UM-2 MIDI"},
        {"Port", "", "Port"},
    };
    for (const auto& [port, device, expected] : cases)
        EXPECT_EQ(vm::WithoutDeviceName(port, device), expected);
}

namespace {

/// A picture of the system's device folder: cards, and links to the devices they are on.
class SysFolder {
public:
    void AddCard(int number, const std::string& device) {
        const fs::path card = m_root / "class/sound" / ("card" + std::to_string(number));
        fs::create_directories(card);
        fs::create_directories(m_root / device);
        fs::remove(card / "device");
        fs::create_directory_symlink(m_root / device, card / "device");
    }
    void AddUsbDevice(const std::string& device, const std::string& serial) {
        fs::create_directories(m_root / device);
        std::ofstream(m_root / device / "idVendor") << "0582\n";
        std::ofstream(m_root / device / "idProduct") << "0005\n";
        if (!serial.empty()) std::ofstream(m_root / device / "serial") << serial << "\n";
    }
    std::string KeyOf(int card, const vm::AlsaCardInfo& info) const {
        return vm::IdentifyAlsaCard(card, info, m_root).key;
    }

private:
    TemporaryHome m_home;
    fs::path m_root = m_home.Path() / "sys";
};

} // namespace

TEST(AlsaCards, UsbDeviceIsKnownByItsNumbersAtAnySocket) {
    SysFolder sys;
    sys.AddUsbDevice("devices/pci0/usb1/1-1", "A0017");
    sys.AddUsbDevice("devices/pci0/usb1/1-2/1-2.4", "");
    sys.AddCard(1, "devices/pci0/usb1/1-1/1-1:1.0");
    sys.AddCard(2, "devices/pci0/usb1/1-2/1-2.4/1-2.4:1.0");
    EXPECT_EQ(sys.KeyOf(1, {"UM2", "USB-Audio", "UM-2", "at 1-1"}), "usb/0582:0005/A0017");
    EXPECT_EQ(sys.KeyOf(2, {"UM2_1", "USB-Audio", "UM-2", "at 1-2"}), "usb/0582:0005/at 1-2.4");
}

TEST(AlsaCards, FixedCardIsKnownByDriverAndPlace) {
    SysFolder sys;
    sys.AddCard(0, "devices/platform/snd_virmidi.0");
    const vm::AlsaCardInfo info{"VirMIDI", "VirMIDI", "VirMIDI", "Virtual MIDI Card 1"};
    EXPECT_EQ(sys.KeyOf(0, info),
              "card/VirMIDI/VirMIDI/Virtual MIDI Card 1/devices/platform/snd_virmidi.0");
    EXPECT_EQ(sys.KeyOf(7, info), "card/VirMIDI/VirMIDI/Virtual MIDI Card 1/") << "no such place";
}
