#include "midi/naming.h"

#include <gmock/gmock.h>

using vm::MidiDevice;
using vm::MidiEntity;
using vm::MidiNameStyle;
using vm::MidiObject;
using vm::MidiObjectKind;

namespace {

MidiObject Endpoint(std::string name, std::optional<MidiEntity> entity = {}) {
    return {1, MidiObjectKind::Destination, std::move(name), std::move(entity), {}};
}

MidiEntity EntityOf(std::string name, std::string device, int entities = 1) {
    return {std::move(name), MidiDevice{std::move(device), entities}};
}

const MidiObject kStudio[] = {
    {10, MidiObjectKind::ExternalDestination, "In", EntityOf("", "Synth A"), {}},
    {11, MidiObjectKind::ExternalSource, "Out", EntityOf("", "Synth B"), {}},
    {12, MidiObjectKind::ExternalSource, "Two", EntityOf("", "Rack", 2), {}},
    {13, MidiObjectKind::ExternalDevice, "Sampler", {}, {}},
    {14, MidiObjectKind::Destination, "Port", EntityOf("", "Interface"), {}},
    {15, MidiObjectKind::ExternalDevice, "", {}, {}},
    {0x01020304, MidiObjectKind::Device, "Far", {}, {}},
};

std::optional<MidiObject> FindInStudio(vm::MidiId id) {
    for (const MidiObject& object : kStudio)
        if (object.id == id) return object;
    return std::nullopt;
}

} // namespace

TEST(Naming, EndpointNameJoinsDeviceAndPort) {
    struct {
        MidiObject endpoint;
        const char* internal;
        const char* external;
    } const cases[] = {
        {Endpoint(""), "", ""},
        {Endpoint("Port 1"), "Port 1", "Port 1"},
        {Endpoint("Port 1", MidiEntity{"Entity"}), "Port 1", "Port 1"},
        {Endpoint("", MidiEntity{"Entity"}), "Entity", "Entity"},
        {Endpoint("Port 1", EntityOf("Entity", "")), "Port 1", "Port 1"},
        {Endpoint("Port 1", EntityOf("Entity", "Interface")), "Interface Port 1", "Interface"},
        {Endpoint("Port 1", EntityOf("Entity", "Interface", 2)), "Interface Port 1",
         "Interface Port 1"},
        {Endpoint("", EntityOf("Entity", "Interface")), "Interface Entity", "Interface"},
        {Endpoint("", EntityOf("", "Interface", 0)), "Interface", "Interface"},
        {Endpoint("", EntityOf("", "Interface", 2)), "Interface", "Interface"},
        {Endpoint("Synth", EntityOf("", "Synth", 2)), "Synth", "Synth"},
        {Endpoint("Synth Port", EntityOf("", "Synth", 2)), "Synth Synth Port", "Synth Synth Port"},
        {Endpoint("Port\xC3", EntityOf("", "\xFFSynth", 2)), "Synth Port", "Synth Port"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(std::string(test.internal) + " or " + test.external);
        EXPECT_EQ(vm::MidiEndpointName(test.endpoint, MidiNameStyle::Internal), test.internal);
        EXPECT_EQ(vm::MidiEndpointName(test.endpoint, MidiNameStyle::External), test.external);
    }
}

TEST(Naming, ConnectedNamePrefersWhatIsPluggedIn) {
    using Data = std::vector<std::uint8_t>;
    struct {
        vm::MidiConnections connections;
        const char* name;
    } const cases[] = {
        {{}, "Interface Port 1"},
        {Data{}, "Interface Port 1"},
        {Data{0, 0, 0, 10}, "Synth A"},
        {Data{0, 0, 0, 10, 0, 0, 0, 11}, "Synth A, Synth B"},
        {Data{0, 0, 0, 11, 0, 0, 0, 99, 0, 0, 0, 10}, "Synth B, Synth A"},
        {Data{0, 0, 0, 12}, "Rack Two"},
        {Data{0, 0, 0, 13, 0, 0, 0, 14}, "Sampler, Port"},
        {Data{0, 0, 0, 15, 0, 0, 0, 13}, "Sampler"},
        {Data{0, 0, 0, 15}, "Interface Port 1"},
        {Data{1, 2, 3, 4}, "Far"},
        {Data{0, 0, 0, 10, 0, 0, 0}, "Synth A"},
        {Data{0, 0, 10}, "Interface Port 1"},
        {std::int32_t{10}, "Interface Port 1"},
    };
    for (const auto& test : cases) {
        MidiObject endpoint = Endpoint("Port 1", EntityOf("", "Interface"));
        endpoint.connections = test.connections;
        EXPECT_EQ(vm::MidiConnectedName(endpoint, FindInStudio), test.name);
    }
}

TEST(Naming, CleanNameDropsWhatTheEncodingCannotHold) {
    EXPECT_EQ(vm::CleanMidiName("Fl\xC3\xBCgel"), "Fl\xC3\xBCgel");
    EXPECT_EQ(vm::CleanMidiName("cut \xE3\x81"), "cut ");
    EXPECT_EQ(vm::CleanMidiName(std::string_view("a\0b", 3)), "a");
    EXPECT_EQ(vm::CleanMidiName("\xFF\xFE"), "");
}

TEST(Naming, CapabilitiesHoldAtMost255Bytes) {
    EXPECT_EQ(vm::NameForCaps("Synth A"), "Synth A");
    EXPECT_EQ(vm::NameForCaps(std::string(300, 'x')), std::string(255, 'x'));
}
