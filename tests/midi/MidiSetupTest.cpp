// The rules of the set-up file, on texts.
#include <map>
#include <sstream>

#include <gmock/gmock.h>

#include "midi/loopbackSetup.h"
#include "midi/portSetup.h"

using vm::MidiDirection;
using vm::MidiObjectKind;
using vm::PortSetup;
using vm::SetupProblems;
using vm::SysexGap;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The entries of a text in the shape of the file.
vm::SetupLookUp In(const std::string& text) {
    std::map<std::pair<std::string, std::string>, std::string> entries;
    std::istringstream lines(text);
    std::string section;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find('=');
        if (line.starts_with('['))
            section = line.substr(1, line.size() - 2);
        else
            entries[{section, line.substr(0, equals)}] = line.substr(equals + 1);
    }
    return [entries](const std::string& name, const std::string& key) {
        const auto found = entries.find({name, key});
        return found == entries.end() ? std::nullopt : std::optional(found->second);
    };
}

std::string Text(const SetupProblems& problems) {
    std::string text;
    for (const vm::SetupProblem& each : problems)
        text += "[" + each.section + "] " + each.key + ": " + each.text + "\n";
    return text;
}

std::vector<std::string> Names(const vm::LoopbackSetup& setup) {
    std::vector<std::string> names;
    const auto find = [&](vm::MidiId id) -> std::optional<vm::MidiObject> {
        for (const vm::MidiObject& each : setup.objects)
            if (each.id == id) return each;
        return std::nullopt;
    };
    for (const vm::MidiObject& each : setup.objects)
        names.push_back(vm::MidiConnectedName(each, find));
    return names;
}

using List = std::vector<std::string>;
constexpr auto kOut = MidiDirection::Output;
constexpr auto kIn = MidiDirection::Input;
constexpr std::size_t kNoLimit = 0x7FFFFFFF;

} // namespace

TEST(PortSetup, EntriesOfAPort) {
    struct {
        const char* file;
        MidiDirection direction;
        PortSetup setup;
        const char* problems = "";
    } const rows[] = {
        {"", kOut, {}},
        {"[Port B]\nSpeed=9", kOut, {}},
        {"[Port A]\nConnected=DX7, TX81Z", kOut, {List{"DX7", "TX81Z"}, {}, {}}},
        {"[Port A]\nConnected=DX7, TX81Z", kIn, {List{"DX7", "TX81Z"}, {}, {}}},
        {"[Port A]\nConnected= ,DX7,, \t", kOut, {List{"DX7"}, {}, {}}},
        {"[Port A]\nConnected=", kOut, {List{}, {}, {}}},
        {"[Port A]\nSpeed= 31250 ", kOut, {{}, 31250, {}}},
        {"[Port A]\nSpeed=9\nChunkDelay=5", kIn, {}},
        {"[Port A]\nChunkSize=256\nChunkDelay=40", kOut, {{}, {}, {256, 40ms}}},
        {"[Port A]\nChunkDelay=40", kOut, {{}, {}, {kNoLimit, 40ms}}},
        {"[Port A]\nChunkSize=256", kOut, {}},
        // one direction
        {"[Port A]\nConnected=B\nSpeed=1\n[Port A|out]\nConnected=C", kOut, {List{"C"}, 1, {}}},
        {"[Port A]\nConnected=B\nSpeed=1\n[Port A|out]\nConnected=C", kIn, {List{"B"}, {}, {}}},
        {"[Port A|in]\nConnected=C", kIn, {List{"C"}, {}, {}}},
        {"[Port A|in]\nConnected=C", kOut, {}},
        // what is refused
        {"[Port A]\nSpeed=0",
         kOut,
         {},
         "[Port A] Speed: \"0\" is no number from 1 to 4294967295\n"},
        {"[Port A]\nSpeed=fast\n[Port A|out]\nSpeed=9 kB",
         kOut,
         {},
         "[Port A|out] Speed: \"9 kB\" is no number from 1 to 4294967295\n"},
        {"[Port A]\nSpeed=4294967296",
         kOut,
         {},
         "[Port A] Speed: \"4294967296\" is no number from 1 to 4294967295\n"},
        {"[Port A]\nChunkSize=-1\nChunkDelay=10001",
         kOut,
         {},
         "[Port A] ChunkDelay: \"10001\" is no number from 0 to 10000\n"
         "[Port A] ChunkSize: \"-1\" is no number from 1 to 2147483647\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        SetupProblems problems;
        EXPECT_EQ(vm::ReadPortSetup(In(row.file), "A", row.direction, problems), row.setup);
        EXPECT_EQ(Text(problems), row.problems);
    }
}

TEST(PortSetup, SectionsFitInALine) {
    EXPECT_EQ(vm::PortSectionName("Synth [A] 1;2"), "Port Synth [A] 1;2");
    EXPECT_EQ(vm::PortSectionName(std::string(300, 'x')), "Port " + std::string(244, 'x'));
    std::string wide;
    for (int i = 0; i < 200; ++i) wide += "\xE2\x99\xAA"; // three bytes a character: 244 is no end
    EXPECT_EQ(vm::PortSectionName(wide), "Port " + wide.substr(0, 243));
}

TEST(PortSetup, WhatTheUserSaysIsPluggedInNamesThePort) {
    const vm::MidiEntity entity{"", vm::MidiDevice{"UM-2", 2}};
    const vm::MidiObject reported{9, MidiObjectKind::Destination, "MIDI 1", entity,
                                  std::vector<std::uint8_t>{0, 0, 0, 1}};
    const auto find = [](vm::MidiId id) -> std::optional<vm::MidiObject> {
        return vm::MidiObject{id, MidiObjectKind::ExternalDevice, "Reported"};
    };
    const auto name = [&](std::optional<List> connected) {
        return vm::NameWithSetup(reported, {std::move(connected), {}, {}}, find);
    };
    EXPECT_EQ(name(std::nullopt), "Reported");
    EXPECT_EQ(name(List{"DX7"}), "DX7");
    EXPECT_EQ(name(List{"DX7", "TX81Z", "Fl\xC3\xBCgel"}), "DX7, TX81Z, Fl\xC3\xBCgel");
    EXPECT_EQ(name(List{}), "UM-2 MIDI 1");
}

// Every naming rule, described in a file.
TEST(LoopbackSetup, DescribesNamesAndWires) {
    SetupProblems problems;
    const auto setup = vm::ReadLoopbackSetup(In("[Loopback]\n"
                                                "Wires=1>2, 1 > 12\n"
                                                "[Loopback Device 1]\nName=Interface\nEntities=2\n"
                                                "[Loopback Device 7]\nName=Synth\n"
                                                "[Loopback Device 8]\nName=Rack\nEntities=2\n"
                                                "[Loopback Port 1]\nKind=out\nName=1\nDevice=1\n"
                                                "[Loopback Port 2]\nKind=IN\nName=1\nDevice=1\n"
                                                "Connected=20, 21,99,22\n"
                                                "[Loopback Port 3]\nKind=out\nName=Synth\n"
                                                "Device=7\n"
                                                "[Loopback Port 4]\nKind=out\nEntity=Left\n"
                                                "Device=1\n"
                                                "[Loopback Port 5]\nKind=out\nEntity=Alone\n"
                                                "[Loopback Port 6]\nKind=out\nName=Bare\n"
                                                "ConnectedNumber=20\n"
                                                "[Loopback Port 12]\nKind=in\n"
                                                "[Loopback Port 20]\nKind=external out\n"
                                                "Name=In\nDevice=7\n"
                                                "[Loopback Port 21]\nKind=external in\nName=B\n"
                                                "Device=8\n"
                                                "[Loopback Port 22]\nKind=external device\n"
                                                "Name=Box\nDevice=8\n"),
                                             problems);
    ASSERT_TRUE(setup);
    EXPECT_EQ(Text(problems), "");
    EXPECT_THAT(Names(*setup),
                ElementsAre("Interface 1", "Synth, Rack B, Box", "Synth", "Interface Left", "Alone",
                            "Bare", "", "Synth In", "Rack B", "Rack Box"));
    ASSERT_EQ(setup->wires.size(), 2U);
    EXPECT_EQ(setup->wires[1].destination, 1U);
    EXPECT_EQ(setup->wires[1].source, 12U);
}

TEST(LoopbackSetup, NeedsWiresOrAPort) {
    SetupProblems problems;
    EXPECT_FALSE(vm::ReadLoopbackSetup(In("[Port A]\nSpeed=9\n[Loopback]\nWire=1>2"), problems));
    const auto none = vm::ReadLoopbackSetup(In("[Loopback]\nWires="), problems);
    ASSERT_TRUE(none);
    EXPECT_THAT(none->objects, IsEmpty());
    EXPECT_TRUE(vm::ReadLoopbackSetup(In("[Loopback Port 1]\nKind=in"), problems));
    EXPECT_EQ(Text(problems), "");
}

TEST(LoopbackSetup, LeavesOutWhatItCannotUnderstand) {
    SetupProblems problems;
    const auto setup =
        vm::ReadLoopbackSetup(In("[Loopback]\nWires=1>2, 2>1, 1, 1>2>2, >, 3>2\n"
                                 "[Loopback Device 1]\nName=Box\nEntities=many\n"
                                 "[Loopback Port 1]\nKind=out\nName=A\nDevice=2\n"
                                 "[Loopback Port 2]\nKind=in\nName=B\nDevice=1\nConnected=1,x,100\n"
                                 "[Loopback Port 3]\nKind=hole\n"
                                 "[Loopback Port 4]\nName=C\n"
                                 "[Loopback Port 100]\nKind=in\n"),
                              problems);
    ASSERT_TRUE(setup);
    EXPECT_THAT(Names(*setup), ElementsAre("A", "A"));
    EXPECT_EQ(setup->wires.size(), 1U);
    EXPECT_EQ(setup->objects[1].entity->device->entityCount, 1);
    constexpr const char* kWire =
        " does not lead from a port of kind out to one of kind in, like \"1>2\"\n";
    std::string wires;
    for (const char* wire : {"2>1", "1", "1>2>2", ">", "3>2"})
        wires += "[Loopback] Wires: \"" + std::string(wire) + "\"" + kWire;
    EXPECT_EQ(Text(problems),
              "[Loopback Device 1] Entities: \"many\" is no number from 0 to 999\n"
              "[Loopback Port 1] Device: there is no [Loopback Device 2]\n"
              "[Loopback Port 2] Connected: \"x\" is no number of a port\n"
              "[Loopback Port 2] Connected: \"100\" is no number of a port\n"
              "[Loopback Port 3] Kind: \"hole\" is neither out, in, external out, external in "
              "nor external device\n"
              "[Loopback Port 4] Kind: is missing\n" +
                  wires);
}
