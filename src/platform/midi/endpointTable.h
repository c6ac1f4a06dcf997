// The endpoints of a back end, with identifiers and names that stay: pure bookkeeping, fed with what
// the system reports whenever that changes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/midi/midiRecords.h"

namespace vm {

/// An endpoint as the system reports it.
struct FoundEndpoint {
    std::string key;     ///< the same for the same port after it was unplugged, and after a restart
    std::string address; ///< how the back end reaches it now
    MidiDirection direction = MidiDirection::Output;
    std::string name = {};
    std::optional<MidiEntity> entity = {};
    std::string deviceKey = {};   ///< what tells two devices of one name apart; empty for none
    int rank = 0;                 ///< lower ones come first: hardware before programs
    std::string connectedTo = {}; ///< the device plugged in, as the system knows it; often empty
};

class EndpointTable {
public:
    struct Endpoint {
        MidiId id;
        std::string address;
        MidiDirection direction;
        MidiObject object; ///< its device's name tells it from others: "UM-2", "UM-2 #2"
    };

    /// Replaces what is there. True when that was not the same.
    bool Update(std::vector<FoundEndpoint> found);
    void Clear() { Update({}); }

    /// By rank and key.
    const std::vector<Endpoint>& All() const { return m_endpoints; }
    int Count(MidiDirection direction) const;
    const Endpoint* At(MidiDirection direction, std::uint32_t index) const; ///< null for none
    const Endpoint* Find(MidiId id) const; ///< null when it is gone
    /// An endpoint, or the pseudo object behind one that stands for the device plugged in.
    const MidiObject* FindObject(MidiId id) const;

private:
    MidiId IdOf(const std::string& key);
    void NumberTwins(std::vector<FoundEndpoint>& found);
    int TwinNumber(const std::string& name, const std::string& deviceKey);

    void DescribeConnection(MidiObject& endpoint, const FoundEndpoint& found);

    std::vector<Endpoint> m_endpoints;
    std::vector<MidiObject> m_externals;
    std::map<MidiId, std::string> m_keys; ///< every identifier that was ever given
    /// The devices that were ever seen of each name, in the order of their numbers.
    std::map<std::string, std::vector<std::string>> m_twins;
};

} // namespace vm
