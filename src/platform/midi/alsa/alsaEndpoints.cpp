// Names and keys of the sequencer's ports.
#include "platform/midi/alsa/alsaEndpoints.h"

#include <algorithm>
#include <fstream>
#include <set>

#include <alsa/asoundlib.h>

#include "core/log.h"

namespace vm {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kSource = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
constexpr unsigned kDestination = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr int kHardwareRank = 0;
constexpr int kProgramRank = 1;

std::string FirstLine(const fs::path& file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

// The folder of the USB device that a card's device is part of; empty for other cards.
fs::path UsbDevice(fs::path folder) {
    std::error_code error;
    for (; folder.has_relative_path(); folder = folder.parent_path())
        if (fs::exists(folder / "idVendor", error)) return folder;
    return {};
}

std::string UsbKey(const fs::path& device) {
    const std::string serial = FirstLine(device / "serial");
    return "usb/" + FirstLine(device / "idVendor") + ":" + FirstLine(device / "idProduct") + "/" +
           (serial.empty() ? "at " + device.filename().string() : serial);
}

/// What the ports of one client share.
struct Device {
    std::string name;
    std::string key;
    bool isHardware;
};

Device DeviceOf(const AlsaPort& port, const AlsaCardFinder& findCard, AlsaKeys& keys) {
    const auto card = port.card >= 0 ? findCard(port.card) : std::nullopt;
    if (card) return {card->name, keys.KeyOfCard(port.card, card->key), true};
    const AlsaAddress client{port.address.client, AlsaAddress::kAllPorts};
    return {port.clientName, keys.KeyOf(client, "user/" + port.clientName), false};
}

// USB devices may change their port names with the language or the firmware.
std::string PortKey(const Device& device, const AlsaPort& port) {
    const std::string number = Format("%03d", port.address.port); // in the order of the numbers
    if (device.key.starts_with("usb/")) return device.key + "/" + number;
    if (device.isHardware) return device.key + "/" + port.portName + "/" + number;
    return device.key + "/" + port.portName;
}

bool IsForOthers(const AlsaPort& port, int self) {
    return port.address.client != SND_SEQ_CLIENT_SYSTEM && port.address.client != self &&
           (port.capabilities & SND_SEQ_PORT_CAP_NO_EXPORT) == 0;
}

bool Has(const AlsaPort& port, unsigned capabilities) {
    return (port.capabilities & capabilities) == capabilities;
}

// `wanted`, or the first of its numbered variants that is no value in `keys`.
template <typename Keys>
std::string FreeKey(const Keys& keys, const std::string& wanted) {
    std::string key = wanted;
    const auto isKey = [&](const auto& each) { return each.second == key; };
    for (int number = 2; std::ranges::any_of(keys, isKey); ++number)
        key = wanted + "~" + std::to_string(number);
    return key;
}

/// Finds the device of every port, and counts their ports.
class Devices {
public:
    Devices(std::span<const AlsaPort> ports, int self, const AlsaCardFinder& findCard,
            AlsaKeys& keys) {
        for (const AlsaPort& port : ports) {
            if (!IsForOthers(port, self)) continue;
            const int client = port.address.client;
            if (!m_devices.contains(client))
                m_devices.emplace(client, DeviceOf(port, findCard, keys));
            ++m_portCounts[m_devices.at(client).key];
        }
    }
    const Device& Of(const AlsaPort& port) const { return m_devices.at(port.address.client); }
    int PortCount(const Device& device) const { return m_portCounts.at(device.key); }

private:
    std::map<int, Device> m_devices; // by client
    std::map<std::string, int> m_portCounts;
};

} // namespace

AlsaCard IdentifyAlsaCard(int card, const AlsaCardInfo& info, const fs::path& sysFolder) {
    std::error_code error;
    const fs::path link = sysFolder / "class/sound" / ("card" + std::to_string(card)) / "device";
    const fs::path place = fs::canonical(link, error);
    const fs::path usb = UsbDevice(place);
    if (!usb.empty()) return {info.name, UsbKey(usb)};
    const std::string where = place.lexically_relative(fs::canonical(sysFolder, error)).string();
    return {info.name, "card/" + info.driver + "/" + info.id + "/" + info.longName + "/" + where};
}

std::string WithoutDeviceName(std::string_view portName, std::string_view deviceName) {
    if (deviceName.empty() || !portName.starts_with(deviceName)) return std::string(portName);
    const std::string_view rest = portName.substr(deviceName.size());
    const bool isSeparated = rest.size() > 1 && rest.find_first_of(" :-") == 0;
    return std::string(isSeparated ? rest.substr(1) : portName);
}

std::string AlsaKeys::KeyOf(AlsaAddress address, const std::string& wanted) {
    const auto known = m_keys.find(address);
    return known != m_keys.end() ? known->second : m_keys[address] = FreeKey(m_keys, wanted);
}

// Other than a client's number, a card's may have passed to another card unnoticed.
std::string AlsaKeys::KeyOfCard(int card, const std::string& wanted) {
    const auto known = m_cards.find(card);
    const auto isVariant = [&](const std::string& key) {
        return key == wanted || key.starts_with(wanted + "~");
    };
    if (known != m_cards.end() && isVariant(known->second)) return known->second;
    m_cards.erase(card);
    return m_cards[card] = FreeKey(m_cards, wanted);
}

void AlsaKeys::Forget(AlsaAddress gone) {
    std::erase_if(m_keys, [gone](const auto& each) { return gone.Includes(each.first); });
}

void AlsaKeys::KeepOnly(std::span<const AlsaPort> ports) {
    std::set<AlsaAddress> addresses;
    std::set<int> cards;
    for (const AlsaPort& port : ports) {
        addresses.insert({port.address, {port.address.client, AlsaAddress::kAllPorts}});
        cards.insert(port.card);
    }
    std::erase_if(m_keys, [&](const auto& each) { return !addresses.contains(each.first); });
    std::erase_if(m_cards, [&](const auto& each) { return !cards.contains(each.first); });
}

std::vector<FoundEndpoint> DescribeAlsaPorts(std::span<const AlsaPort> ports, int self,
                                             const AlsaCardFinder& findCard, AlsaKeys& keys) {
    keys.KeepOnly(ports);
    const Devices devices(ports, self, findCard, keys);
    std::vector<FoundEndpoint> found;
    for (const AlsaPort& port : ports) {
        if (!IsForOthers(port, self)) continue;
        const Device& device = devices.Of(port);
        FoundEndpoint endpoint;
        endpoint.key = keys.KeyOf(port.address, PortKey(device, port));
        endpoint.address = AddressText(port.address);
        endpoint.name = WithoutDeviceName(port.portName, device.name);
        endpoint.entity = MidiEntity{"", MidiDevice{device.name, devices.PortCount(device)}};
        endpoint.deviceKey = device.key;
        endpoint.rank = device.isHardware ? kHardwareRank : kProgramRank;
        endpoint.direction = MidiDirection::Output;
        if (Has(port, kDestination)) found.push_back(endpoint);
        endpoint.direction = MidiDirection::Input;
        if (Has(port, kSource)) found.push_back(endpoint);
    }
    return found;
}

} // namespace vm
