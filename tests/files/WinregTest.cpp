// The registry functions and the file behind them.
#include <vmcore/files/winreg.h>

#include <cstring>
#include <string>

#include <gmock/gmock.h>

#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>

#include "files/profile.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

using testing::ElementsAre;

namespace {

const HKEY kRoot = HKEY_CURRENT_USER;

class Registry : public testing::Test {
protected:
    Registry() {
        InitProfileManager();
        *UserPreferencesPath = 0;
    }
    ~Registry() override {
        m_log.Ignore(); // the file is missing at first
        vm::ClearProfiles();
        *UserPreferencesPath = 0;
    }

    static HKEY Key(const char* path, HKEY parent = kRoot) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKey(parent, path, &key), 0);
        return key;
    }
    static LONG SetText(HKEY key, const char* name, const char* text, DWORD size = 0) {
        return RegSetValueEx(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), size);
    }
    static LONG SetNumber(HKEY key, const char* name, int number) {
        return RegSetValueEx(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), 4);
    }
    std::string Saved() const {
        ServiceProfile();
        return m_home.Read("XDG_CONFIG_HOME/Velmora Preferences.ini");
    }

    const TemporaryHome m_home;
    LogCapture m_log;
    MessageBoxRecorder m_boxes;
};

TEST_F(Registry, ValuesAreEntriesWithTheirType) {
    const HKEY key = Key("Software\\A\\B");
    SetNumber(key, "Port", -7);
    SetText(key, nullptr, "text");
    SetText(key, "Cut", "abcdef", 3);
    SetText(key, "Long", std::string(300, 'x').c_str(), 300);
    EXPECT_EQ(Saved(), "\r\n[Software\\A\\B]\r\nPort=-7\r\nPortType=1\r\n"
                       "Default=text\r\nDefaultType=2\r\nCut=abc\r\nCutType=2\r\nLong=" +
                           std::string(255, 'x') + "\r\nLongType=2\r\n");
    RegCloseKey(key);
}

TEST_F(Registry, ValuesComeBackWithTypeAndSize) {
    const HKEY key = Key("K");
    SetNumber(key, "Number", -7);
    SetText(key, "Text", "hello");
    const struct {
        const char* name;
        DWORD room;
        DWORD type;
        DWORD size;
        std::string text;
    } rows[] = {
        {"Number", 4, REG_DWORD, 4, std::string("\xF9\xFF\xFF\xFF", 4)},
        {"Text", 100, REG_SZ, 6, std::string("hello\0", 6)},
        {"Text", 4, REG_SZ, 4, std::string("hel\0", 4)},
        {"Missing", 100, REG_SZ, 1, std::string("\0", 1)},
        {nullptr, 100, REG_SZ, 1, std::string("\0", 1)},
    };
    for (const auto& row : rows) {
        BYTE data[100] = "????";
        DWORD type = 99;
        DWORD size = row.room;
        EXPECT_EQ(RegQueryValueEx(key, row.name, nullptr, &type, data, &size), 0);
        EXPECT_EQ(type, row.type) << row.text;
        EXPECT_EQ(size, row.size) << row.text;
        EXPECT_EQ(std::memcmp(data, row.text.data(), row.text.size()), 0) << row.text;
    }
    RegCloseKey(key);
}

TEST_F(Registry, UndefinedTypesAreReportedAndStored) {
    const HKEY key = Key("K");
    const BYTE bytes[4] = {};
    EXPECT_EQ(RegSetValueEx(key, "v", 0, 3, bytes, 4), 0);
    EXPECT_THAT(m_boxes.Take(),
                ElementsAre(ShownBox{"RegSetValueEx - undefined storage type", "Error", 1}));
    EXPECT_EQ(Saved(), "\r\n[K]\r\nv=\r\nvType=3\r\n");
    BYTE data[10] = "????";
    DWORD type = 0;
    DWORD size = sizeof data;
    EXPECT_EQ(RegQueryValueEx(key, "v", nullptr, &type, data, &size), 0);
    EXPECT_EQ(type, 3u);
    EXPECT_EQ(data[0], 0);
    EXPECT_EQ(size, sizeof data);
    RegCloseKey(key);
}

TEST_F(Registry, TextWithALineEndChangesNothing) {
    const HKEY key = Key("K");
    SetNumber(key, "v", 1);
    EXPECT_EQ(SetText(key, "v", "a\nb=c"), 0);
    EXPECT_EQ(Saved(), "\r\n[K]\r\nv=1\r\nvType=1\r\n");
    RegCloseKey(key);
}

TEST_F(Registry, KeysExistByTheirSectionOrOneBelow) {
    const HKEY made = Key("X\\Y");
    SetNumber(made, "n", 1);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyEx(kRoot, "x", 0, 0, &key), -1) << "spelled exactly";
    EXPECT_EQ(RegOpenKeyEx(kRoot, "X\\", 0, 0, &key), -1);
    EXPECT_EQ(key, nullptr);
    ASSERT_EQ(RegOpenKeyEx(kRoot, "X", 0, KEY_READ, &key), 0);
    const HKEY below = Key("\\Y", key);
    DWORD size = 4;
    DWORD number = 0;
    RegQueryValueEx(below, "n", nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size);
    EXPECT_EQ(number, 1u) << "parent and child are joined as they are";
    for (const HKEY each : {made, key, below}) EXPECT_EQ(RegCloseKey(each), 0);
}

TEST_F(Registry, SubKeysAreCountedAndNamed) {
    for (const char* path : {"A\\one", "A\\two", "A\\two\\deep", "B"}) {
        const HKEY key = Key(path);
        SetNumber(key, "n", 1);
        RegCloseKey(key);
    }
    const HKEY key = Key("A");
    char below[] = "two";
    DWORD count = 0;
    DWORD longest = 0;
    const auto info = [&](LPSTR keyClass) {
        return RegQueryInfoKey(key, keyClass, nullptr, nullptr, &count, &longest, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr);
    };
    EXPECT_EQ(info(nullptr), 0);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(longest, 256u);
    info(below);
    EXPECT_EQ(count, 1u);
    char name[256] = "kept";
    DWORD length = 0;
    const auto next = [&](DWORD index, LPSTR keyClass) {
        EXPECT_EQ(RegEnumKeyEx(key, index, name, &length, nullptr, keyClass, nullptr, nullptr), 0);
        return std::string(name);
    };
    EXPECT_EQ(next(2, nullptr), "kept");
    EXPECT_EQ(next(1, nullptr), "two");
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(next(0, below), "deep");
    RegCloseKey(key);
}

TEST_F(Registry, RootsAreRejectedByTheirTwoBounds) {
    const auto root = [](UINT_PTR value) { return reinterpret_cast<HKEY>(value); };
    BYTE data[4] = "abc";
    DWORD size = 4;
    for (const UINT_PTR value : {UINT_PTR{0}, UINT_PTR{5}, UINT_PTR{127}}) {
        EXPECT_EQ(RegQueryValueEx(root(value), "v", nullptr, nullptr, data, &size), 1);
        EXPECT_EQ(data[0], 0) << "set before anything else";
        EXPECT_EQ(SetNumber(root(value), "v", 1), 1);
        EXPECT_EQ(
            RegEnumKeyEx(root(value), 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
        EXPECT_EQ(RegQueryInfoKey(root(value), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, nullptr),
                  1);
        EXPECT_EQ(RegCloseKey(root(value)), 0);
    }
    EXPECT_EQ(SetNumber(root(128), "v", 1), 0) << "a root, but not rejected";
    EXPECT_EQ(RegCloseKey(root(128)), 0);
    EXPECT_EQ(Saved(), "\r\n[]\r\nv=1\r\nvType=1\r\n");
}

TEST_F(Registry, HostsMayMoveTheFile) {
    const CString before = VelmoraPreferences;
    VelmoraPreferences = "/Other.ini";
    const HKEY key = Key("K");
    SetNumber(key, "n", 1);
    RegCloseKey(key);
    ServiceProfile();
    VelmoraPreferences = before;
    EXPECT_EQ(m_home.Read("XDG_CONFIG_HOME/Other.ini"), "\r\n[K]\r\nn=1\r\nnType=1\r\n");
}

} // namespace
