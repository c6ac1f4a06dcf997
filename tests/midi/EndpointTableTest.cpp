#include "platform/midi/endpointTable.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "midi/naming.h"

using testing::ElementsAre;
using vm::EndpointTable;
using vm::FoundEndpoint;
using vm::MidiDirection;

namespace {

FoundEndpoint Port(const std::string& key, const std::string& device, int rank = 0) {
    return {key,
            "at " + key,
            MidiDirection::Output,
            "Port",
            vm::MidiEntity{"", vm::MidiDevice{device}},
            "device " + key,
            rank};
}

std::vector<std::string> DeviceNames(const EndpointTable& table) {
    std::vector<std::string> names;
    for (const auto& each : table.All()) names.push_back(each.object.entity->device->name);
    return names;
}

TEST(EndpointTable, HardwareComesFirstThenTheKeysDecide) {
    EndpointTable table;
    EXPECT_TRUE(table.Update({Port("c", "Program", 1), Port("b", "Card"), Port("a", "Card A")}));
    EXPECT_THAT(DeviceNames(table), ElementsAre("Card A", "Card", "Program"));
    EXPECT_EQ(table.Count(MidiDirection::Output), 3);
    EXPECT_EQ(table.Count(MidiDirection::Input), 0);
    EXPECT_EQ(table.At(MidiDirection::Output, 2)->address, "at c");
    EXPECT_EQ(table.At(MidiDirection::Output, 3), nullptr);
    EXPECT_FALSE(table.Update({Port("a", "Card A"), Port("b", "Card"), Port("c", "Program", 1)}));
}

TEST(EndpointTable, IdentifiersStayWhenAPortComesBack) {
    EndpointTable table;
    FoundEndpoint input = Port("a", "Card");
    input.direction = MidiDirection::Input;
    table.Update({Port("a", "Card"), input, Port("b", "Card B")});
    const vm::MidiId out = table.At(MidiDirection::Output, 0)->id;
    EXPECT_NE(out, table.At(MidiDirection::Input, 0)->id);
    EXPECT_TRUE(table.Update({Port("b", "Card B")}));
    EXPECT_EQ(table.Find(out), nullptr);
    table.Update({Port("b", "Card B"), Port("a", "Card")});
    ASSERT_NE(table.Find(out), nullptr);
    EXPECT_EQ(table.Find(out)->address, "at a");
    EndpointTable afterRestart;
    afterRestart.Update({Port("a", "Card")});
    EXPECT_NE(afterRestart.Find(out), nullptr);
}

TEST(EndpointTable, TwinsAreNumberedAndKeepTheirNumbers) {
    EndpointTable table;
    table.Update({Port("b", "UM-2"), Port("c", "UM-2")});
    EXPECT_THAT(DeviceNames(table), ElementsAre("UM-2", "UM-2 #2"));
    table.Update({Port("c", "UM-2")});
    EXPECT_THAT(DeviceNames(table), ElementsAre("UM-2 #2"));
    table.Update({Port("a", "UM-2"), Port("b", "UM-2"), Port("c", "UM-2")});
    EXPECT_THAT(DeviceNames(table), ElementsAre("UM-2 #3", "UM-2", "UM-2 #2"));
    FoundEndpoint second = Port("d", "Card");
    second.deviceKey = "device b";
    FoundEndpoint first = Port("b", "Card");
    table.Update({first, second});
    EXPECT_THAT(DeviceNames(table), ElementsAre("Card", "Card")) << "two ports of one device";
}

TEST(EndpointTable, DeviceThatIsPluggedInIsAnExternalEndpoint) {
    EndpointTable table;
    FoundEndpoint out = Port("a", "Interface"), in = Port("b", "Interface");
    out.connectedTo = "Synth";
    in.connectedTo = "Keyboard";
    in.direction = MidiDirection::Input;
    table.Update({out, in, Port("c", "Interface")});
    const auto find = [&](vm::MidiId id) -> std::optional<vm::MidiObject> {
        const vm::MidiObject* object = table.FindObject(id);
        return object ? std::optional(*object) : std::nullopt;
    };
    const auto name = [&](const EndpointTable::Endpoint* endpoint) {
        return vm::MidiConnectedName(endpoint->object, find);
    };
    EXPECT_EQ(name(table.At(MidiDirection::Output, 0)), "Synth");
    EXPECT_EQ(name(table.At(MidiDirection::Input, 0)), "Keyboard");
    EXPECT_EQ(name(table.At(MidiDirection::Output, 1)), "Interface #3 Port");
    const auto ids = vm::ConnectedMidiIds(table.At(MidiDirection::Input, 0)->object.connections);
    ASSERT_EQ(ids.size(), 1U);
    EXPECT_EQ(table.FindObject(ids[0])->kind, vm::MidiObjectKind::ExternalSource);
    EXPECT_EQ(table.Count(MidiDirection::Output), 2);
    table.Clear();
    EXPECT_EQ(table.FindObject(ids[0]), nullptr);
}

TEST(EndpointTable, PortsThatNothingTellsApartAreTwoPorts) {
    EndpointTable table;
    table.Update({Port("a", "X"), Port("a", "X")});
    EXPECT_NE(table.All()[0].id, table.All()[1].id);
}

} // namespace
