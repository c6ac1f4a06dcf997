// The indexed profile against the plain one: whatever is asked in whatever order, the same answers
// and the same file.
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LinearIni.h"
#include "files/IniProfile.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

namespace {

constexpr int kOperations = 100'000;
constexpr int kOperationsPerFile = 400;

// Names of every awkward kind, few enough to meet often.
const std::vector<std::string> kSections = {"a",    "A",    "b",  "a]b",     "",
                                            "x\\y", "x\\z", "x",  "x\\y\\w", "long name",
                                            "[a",   "c=d",  "\\", "missing"};
const std::vector<std::string> kKeys = {"k", "K",  "key", "k=x", "",   "[k", "[a]k", ";c",
                                        "0", "k1", "k2",  "k3",  "k4", "k5", "k6",   "k7"};
const std::vector<std::string> kValues = {
    "",  "1",      "v; note", " lead",      "x]",
    "=", "a\tb\t", "]",       "trailing  ", "some longer text than the others"};

class Chance {
public:
    explicit Chance(unsigned seed) : m_engine(seed) {}
    std::size_t Below(std::size_t limit) { return m_engine() % limit; }
    const std::string& Of(const std::vector<std::string>& list) { return list[Below(list.size())]; }

private:
    std::mt19937 m_engine;
};

// `kinds` of 12 or more: the more, the longer the sections.
std::string RandomLine(Chance& chance, std::size_t kinds) {
    switch (chance.Below(kinds)) {
    case 0:
        return "";
    case 1:
        return "; comment";
    case 2:
    case 3:
        return "[" + chance.Of(kSections) + "]";
    case 4:
        return "[" + chance.Of(kSections) + "] tail";
    case 5:
        return std::string(250 + chance.Below(600), 'l') + "=" + chance.Of(kValues);
    default:
        return chance.Of(kKeys) + "=" + chance.Of(kValues);
    }
}

std::string RandomFile(Chance& chance) {
    std::string bytes;
    const std::size_t lines = chance.Below(120);
    const std::size_t kinds = 12 + chance.Below(3) * 30;
    for (std::size_t i = 0; i < lines; ++i)
        bytes += RandomLine(chance, kinds) + (chance.Below(2) ? "\r\n" : "\n");
    if (chance.Below(3) == 0) bytes += "[a]"; // without a line end
    return bytes;
}

std::string Described(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += "\"" + word + "\" ";
    return text;
}

void CompareLookUp(vm::IniProfile& profile, LinearIni& plain, Chance& chance) {
    const std::string& section = chance.Of(kSections);
    const std::string& key = chance.Of(kKeys);
    char buffer[300];
    const auto size = static_cast<DWORD>(chance.Below(4) ? sizeof buffer : 1 + chance.Below(8));
    const DWORD length =
        profile.GetPrivateProfileString(section.c_str(), key.c_str(), "default ", buffer, size);
    ASSERT_EQ(plain.Get(section, key, "default ", size), std::string(buffer, length))
        << Described({section, key}) << size;
}

void CompareChildren(vm::IniProfile& profile, LinearIni& plain, Chance& chance) {
    const std::string& section = chance.Of(kSections);
    const std::vector<std::string> children = plain.Children(section);
    ASSERT_EQ(profile.GetProfileSubClassCount(section), children.size()) << section;
    for (DWORD i = 0; i < children.size(); ++i) {
        char name[256];
        DWORD length = 0;
        profile.GetProfileEnumKey(section, i, name, &length);
        ASSERT_EQ(children[i], std::string(name, length));
    }
    const std::string prefix = (chance.Below(2) ? "[" : "") + chance.Of(kSections);
    ASSERT_EQ(profile.VerifyKey(prefix), plain.Verify(prefix)) << prefix;
}

void Change(vm::IniProfile& profile, LinearIni& plain, Chance& chance) {
    const std::string& section = chance.Of(kSections);
    const std::string& key = chance.Of(kKeys);
    const std::string& value = chance.Of(kValues);
    const std::size_t kind = chance.Below(24);
    if (kind == 0) {
        profile.WritePrivateProfileString(section.c_str(), nullptr, nullptr);
        plain.DeleteSection(section);
    } else if (kind < 6) {
        profile.WritePrivateProfileString(section.c_str(), key.c_str(), nullptr);
        plain.DeleteKey(section, key);
    } else {
        profile.WritePrivateProfileString(section.c_str(), key.c_str(), value.c_str());
        plain.Set(section, key, value);
    }
}

TEST(ProfileProperty, AnswersAndSavesAsALinearScanWould) {
    const TemporaryHome home;
    LogCapture log;
    for (int done = 0, file = 0; done < kOperations; done += kOperationsPerFile, ++file) {
        Chance chance(static_cast<unsigned>(file));
        const std::string bytes = RandomFile(chance);
        const std::string name = home.Write("random.ini", bytes);
        std::set<std::string> cutFiles;
        vm::IniProfile profile(name, cutFiles);
        LinearIni plain(bytes);
        for (int i = 0; i < kOperationsPerFile; ++i) {
            SCOPED_TRACE("file " + std::to_string(file) + ", operation " + std::to_string(i));
            const std::size_t kind = chance.Below(8);
            if (kind < 5)
                CompareLookUp(profile, plain, chance);
            else if (kind == 5)
                CompareChildren(profile, plain, chance);
            else
                Change(profile, plain, chance);
            if (HasFatalFailure()) return;
        }
        plain.Set("end", "k", "v"); // so that there is something to save
        profile.WritePrivateProfileString("end", "k", "v");
        profile.Write();
        ASSERT_EQ(plain.Saved(), home.Read("random.ini")) << "file " << file;
    }
    log.Ignore();
}

} // namespace
