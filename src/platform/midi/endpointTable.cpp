// Identifiers and names that stay.
#include "platform/midi/endpointTable.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace vm {
namespace {

// FNV-1a, 32 bits.
MidiId Hash(const std::string& text) {
    MidiId hash = 2166136261U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

// Ports that cannot be told apart are numbered in the order in which they are reported.
void TellKeysApart(std::vector<FoundEndpoint>& found) {
    std::map<std::string, int> count;
    for (FoundEndpoint& each : found) {
        each.key += each.direction == MidiDirection::Output ? "|out" : "|in";
        const int number = ++count[each.key];
        if (number > 1) each.key += "#" + std::to_string(number);
    }
}

bool IsSame(const EndpointTable::Endpoint& a, const EndpointTable::Endpoint& b) {
    const auto device = [](const EndpointTable::Endpoint& each) {
        const auto& entity = each.object.entity;
        return entity && entity->device ? entity->device->name : std::string();
    };
    return std::tie(a.id, a.address, a.object.name) == std::tie(b.id, b.address, b.object.name) &&
           device(a) == device(b) && a.object.connections == b.object.connections;
}

} // namespace

bool EndpointTable::Update(std::vector<FoundEndpoint> found) {
    TellKeysApart(found);
    std::ranges::stable_sort(
        found, {}, [](const FoundEndpoint& each) { return std::tie(each.rank, each.key); });
    NumberTwins(found);
    m_externals.clear();
    std::vector<Endpoint> endpoints;
    for (const FoundEndpoint& each : found) {
        const MidiId id = IdOf(each.key);
        const auto kind = each.direction == MidiDirection::Output ? MidiObjectKind::Destination
                                                                  : MidiObjectKind::Source;
        endpoints.push_back(
            {id, each.address, each.direction, {id, kind, each.name, each.entity, {}}});
        DescribeConnection(endpoints.back().object, each);
    }
    const bool same = std::ranges::equal(endpoints, m_endpoints, IsSame);
    m_endpoints = std::move(endpoints);
    return !same;
}

// The device is the only thing known about what is plugged in.
void EndpointTable::DescribeConnection(MidiObject& endpoint, const FoundEndpoint& found) {
    if (found.connectedTo.empty()) return;
    const MidiId id = IdOf(found.key + "|connected");
    const auto kind = found.direction == MidiDirection::Output ? MidiObjectKind::ExternalDestination
                                                               : MidiObjectKind::ExternalSource;
    m_externals.push_back({id, kind, {}, MidiEntity{{}, MidiDevice{found.connectedTo}}, {}});
    std::vector<std::uint8_t> bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(id >> shift));
    endpoint.connections = std::move(bytes);
}

void EndpointTable::NumberTwins(std::vector<FoundEndpoint>& found) {
    for (FoundEndpoint& each : found) {
        if (!each.entity || !each.entity->device || each.deviceKey.empty()) continue;
        std::string& name = each.entity->device->name;
        const int number = TwinNumber(name, each.deviceKey);
        if (number > 1) name += " #" + std::to_string(number);
    }
}

// A device keeps its number while the process lives, whatever is plugged in or out.
int EndpointTable::TwinNumber(const std::string& name, const std::string& deviceKey) {
    std::vector<std::string>& twins = m_twins[name];
    auto at = std::ranges::find(twins, deviceKey);
    if (at == twins.end()) at = twins.insert(twins.end(), deviceKey);
    return static_cast<int>(at - twins.begin()) + 1;
}

// The hash of the key; the next free number for the rare key whose hash another one has.
MidiId EndpointTable::IdOf(const std::string& key) {
    MidiId id = std::max<MidiId>(1, Hash(key));
    for (;;) {
        const auto [known, isNew] = m_keys.try_emplace(id, key);
        if (isNew || known->second == key) return id;
        id = std::max<MidiId>(1, id + 1);
    }
}

int EndpointTable::Count(MidiDirection direction) const {
    return static_cast<int>(std::ranges::count(m_endpoints, direction, &Endpoint::direction));
}

const EndpointTable::Endpoint* EndpointTable::At(MidiDirection direction,
                                                 std::uint32_t index) const {
    for (const Endpoint& each : m_endpoints)
        if (each.direction == direction && index-- == 0) return &each;
    return nullptr;
}

const EndpointTable::Endpoint* EndpointTable::Find(MidiId id) const {
    const auto found = std::ranges::find(m_endpoints, id, &Endpoint::id);
    return found == m_endpoints.end() ? nullptr : &*found;
}

const MidiObject* EndpointTable::FindObject(MidiId id) const {
    if (const Endpoint* endpoint = Find(id)) return &endpoint->object;
    const auto found = std::ranges::find(m_externals, id, &MidiObject::id);
    return found == m_externals.end() ? nullptr : &*found;
}

} // namespace vm
