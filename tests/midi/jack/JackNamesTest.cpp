#include "platform/midi/jack/jackNames.h"

#include <gmock/gmock.h>

#include "midi/naming.h"

using vm::EndpointTable;
using vm::JackPort;
using vm::MidiDirection;

namespace {

JackPort Software(const std::string& name) {
    return {name};
}
JackPort Hardware(const std::string& name, const std::string& alias = {}) {
    JackPort port{name};
    port.isPhysical = true;
    port.secondAlias = alias;
    return port;
}
JackPort Pretty(JackPort port, const std::string& name, const std::string& client = {}) {
    port.prettyName = name;
    port.clientPrettyName = client;
    return port;
}

std::vector<std::string> ShownNames(const std::vector<JackPort>& ports) {
    EndpointTable table;
    table.Update(vm::DescribeJackPorts(ports));
    std::vector<std::string> names;
    for (const EndpointTable::Endpoint& each : table.All())
        names.push_back(vm::MidiEndpointName(each.object, vm::MidiNameStyle::Internal));
    return names;
}

} // namespace

TEST(JackNames, DeviceAndPortAreWhatTheUserKnowsThemBy) {
    const struct {
        JackPort port;
        const char* name;
    } rows[] = {
        {Software("synth:in"), "synth in"},
        {Software("synth:synth-in"), "synth in"},
        {Software("synth:synth"), "synth"},
        {Software("a:b:c"), "a b:c"},
        {Pretty(Software("synth:in"), "Main In"), "synth Main In"},
        {Pretty(Software("synth:in"), "", "Great Synth"), "Great Synth in"},
        {Pretty(Software("synth:in"), "Great Synth In", "Great Synth"), "Great Synth In"},
        {Hardware("system:midi_playback_1"), "system midi_playback_1"},
        {Hardware("system:midi_playback_1", "no colon"), "system midi_playback_1"},
        {Hardware("system:midi_playback_1", "UM-2:midi/playback_1"), "UM-2 midi/playback_1"},
        {Pretty(Hardware("system:midi_playback_1"), "UM-2 MIDI 1"), "UM-2 MIDI 1"},
        {Pretty(Hardware("system:midi_playback_1", "UM-2:midi/playback_1"), "UM-2 MIDI 1"),
         "UM-2 MIDI 1"},
        {Pretty(Hardware("system:midi_playback_1", "UM-2:midi/playback_1"), "UM-2"), "UM-2"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(ShownNames({row.port}), testing::ElementsAre(row.name)) << row.port.name;
}

TEST(JackNames, SecondPortOfTheSameNameIsATwinsPort) {
    JackPort input = Hardware("system:midi_capture_1", "UM-2:1");
    input.direction = MidiDirection::Input;
    EXPECT_THAT(
        ShownNames({Software("client:in"), Hardware("system:midi_playback_1", "UM-2:1"),
                    Hardware("system:midi_playback_2", "UM-2:2"),
                    Hardware("system:midi_playback_3", "UM-2:1"), input}),
        testing::UnorderedElementsAre("UM-2 1", "UM-2 2", "UM-2 #2 1", "UM-2 1", "client in"));
}

TEST(JackNames, HardwareIsKnownAgainWhateverNumberTheServerGivesIt) {
    EndpointTable table;
    table.Update(vm::DescribeJackPorts(
        std::vector{Software("a:in"), Hardware("system:midi_playback_1", "UM-2:1")}));
    const vm::MidiId id = table.At(MidiDirection::Output, 0)->id;
    EXPECT_EQ(table.Find(id)->address, "system:midi_playback_1") << "hardware comes first";
    table.Update(vm::DescribeJackPorts(std::vector{Hardware("system:midi_playback_7", "UM-2:1")}));
    ASSERT_NE(table.Find(id), nullptr);
    EXPECT_EQ(table.Find(id)->address, "system:midi_playback_7");
}
