#include "Instruments.h"

#include <algorithm>

#include "BankFile.h"
#include "Settings.h"

namespace {

constexpr const char* kInstruments = "Software\\VMCore\\Librarian\\Instruments";
constexpr const char* kMaker = "Maker";
constexpr const char* kMessages = "Messages";
constexpr const char* kLastBank = "LastBank";

// One open key of the registry.
class Key {
public:
    // The key of one instrument, for writing.
    explicit Key(const std::string& instrument) {
        const std::string path = std::string(kInstruments) + "\\" + instrument;
        RegCreateKey(HKEY_CURRENT_USER, path.c_str(), &m_key);
    }
    // The key of all instruments, for reading; it is missing before the first one.
    Key() { RegOpenKeyEx(HKEY_CURRENT_USER, kInstruments, 0, KEY_READ, &m_key); }
    ~Key() {
        if (m_key) RegCloseKey(m_key);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    std::vector<std::string> SubKeys() const {
        DWORD count = 0;
        if (m_key)
            RegQueryInfoKey(m_key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr);
        std::vector<std::string> names;
        for (DWORD i = 0; i < count; ++i) {
            char name[256] = {};
            DWORD length = sizeof name;
            RegEnumKeyEx(m_key, i, name, &length, nullptr, nullptr, nullptr, nullptr);
            names.emplace_back(name);
        }
        return names;
    }

    std::string Text(const char* name) const {
        Value value;
        return Read(name, value) == REG_SZ ? value.text : "";
    }
    DWORD Number(const char* name) const {
        Value value;
        return Read(name, value) == REG_DWORD ? value.number : 0;
    }

    void Set(const char* name, const std::string& text) {
        RegSetValueEx(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                      static_cast<DWORD>(text.size() + 1));
    }
    void Set(const char* name, DWORD number) {
        RegSetValueEx(m_key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                      sizeof number);
    }

private:
    union Value {
        char text[256];
        DWORD number;
    };

    // The stored type; somebody may have edited the file.
    DWORD Read(const char* name, Value& value) const {
        DWORD type = 0;
        DWORD size = sizeof value.text;
        RegQueryValueEx(m_key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
        return type;
    }

    HKEY m_key = nullptr;
};

Instrument Load(const std::string& name) {
    const Key key(name);
    return {name, key.Text(kMaker), key.Number(kMessages), key.Text(kLastBank)};
}

void Store(const Instrument& instrument) {
    Key key(instrument.name);
    key.Set(kMaker, instrument.maker);
    key.Set(kMessages, instrument.messages);
    if (!instrument.lastBank.empty()) key.Set(kLastBank, instrument.lastBank);
}

Instrument& EntryOf(std::vector<Instrument>& instruments, const std::string& name) {
    const auto found = std::find_if(instruments.begin(), instruments.end(),
                                    [&](const Instrument& each) { return each.name == name; });
    if (found != instruments.end()) return *found;
    return instruments.emplace_back(Instrument{name, {}, 0, {}});
}

} // namespace

std::vector<Instrument> LoadInstruments() {
    std::vector<Instrument> instruments;
    for (const std::string& name : Key().SubKeys()) instruments.push_back(Load(name));
    return instruments;
}

std::vector<Instrument> InstrumentsOf(const Bank& bank, const std::string& path) {
    std::vector<Instrument> instruments;
    for (const BankMessage& message : bank.messages) {
        const std::string name = InstrumentOf(message.bytes);
        if (name.empty()) continue;
        Instrument& entry = EntryOf(instruments, name);
        entry.maker = message.info.manufacturer;
        ++entry.messages;
        if (FitsProfile(kLastBank, path)) entry.lastBank = path;
    }
    return instruments;
}

BOOL RememberInstruments(std::vector<Instrument>& known, const Bank& bank,
                         const std::string& path) {
    const std::vector<Instrument> seen = InstrumentsOf(bank, path);
    for (const Instrument& each : seen) {
        Instrument& entry = EntryOf(known, each.name);
        const std::string before = entry.lastBank;
        entry = each;
        if (entry.lastBank.empty()) entry.lastBank = before;
        Store(entry);
    }
    return !seen.empty();
}
