// How the ports of the sequencer are described to hosts: which of them count, what they are called,
// and what makes them the same port again after a device was unplugged or the computer restarted.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/midi/alsa/alsaEvents.h"
#include "platform/midi/alsa/alsaKernel.h"
#include "platform/midi/endpointTable.h"

namespace vm {

/// A port as the sequencer lists it.
struct AlsaPort {
    AlsaAddress address;
    int card = -1; ///< -1 for the ports of programs
    std::string clientName;
    std::string portName;
    unsigned capabilities = 0;
};

struct AlsaCard {
    std::string name;
    std::string key; ///< the same for the same hardware, wherever it is counted
};

/// A USB device is known by its maker's numbers and its serial number, so that it is the same at
/// another socket; without a serial number it is the socket that counts. Cards that do not come and
/// go are known by what the driver says and by their place in the machine.
AlsaCard IdentifyAlsaCard(int card, const AlsaCardInfo& info,
                          const std::filesystem::path& sysFolder = "/sys");

/// `portName` without the name of its device in front: device and port are shown together.
std::string WithoutDeviceName(std::string_view portName, std::string_view deviceName);

/// Keys while their owners exist: whoever had a key first keeps it, though its name changes or
/// another one of that name disappears.
class AlsaKeys {
public:
    /// The key at this address: `wanted`, with a number where another address has that.
    std::string KeyOf(AlsaAddress address, const std::string& wanted);
    std::string KeyOfCard(int card, const std::string& wanted);
    void Forget(AlsaAddress gone);
    void KeepOnly(std::span<const AlsaPort> ports); ///< all others have gone

private:
    std::map<AlsaAddress, std::string> m_keys;
    std::map<int, std::string> m_cards;
};

using AlsaCardFinder = std::function<std::optional<AlsaCard>(int card)>;

/// The endpoints among `ports`, one for each direction of a port. The system's own ports, those of
/// client `self` and those that are not meant for others are none.
std::vector<FoundEndpoint> DescribeAlsaPorts(std::span<const AlsaPort> ports, int self,
                                             const AlsaCardFinder& findCard, AlsaKeys& keys);

} // namespace vm
