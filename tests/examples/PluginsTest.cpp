#include "librarian/Plugins.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "librarian/BankFile.h"
#include "librarian/PatchSheet.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A PlugIns folder with links to what was built.
class PluginFolder : public testing::Test {
protected:
    void Add(const char* plugin) {
        std::filesystem::create_directories(m_home.Path() / "PlugIns");
        const std::string file = std::string(plugin) + ".so";
        std::filesystem::create_symlink(std::filesystem::path(LIBRARIAN_PLUGINS) / file,
                                        m_home.Path() / "PlugIns" / file);
    }
    // The log lines of loading.
    std::vector<std::string> Load() {
        m_plugins.LoadAll((m_home.Path() / "PlugIns").string());
        return m_log.TakeLog();
    }
    std::string TextOf(const SysexBytes& message) {
        Bank bank = SplitBank(message);
        m_plugins.Describe(bank);
        const BankMessage& described = bank.messages.at(0);
        return described.info.kind + " | " + described.patch;
    }

    TemporaryHome m_home;
    LogCapture m_log;
    Plugins m_plugins;
};

// One six-operator voice dump whose name is `name`.
SysexBytes VoiceDump(const std::string& name) {
    std::string text("\xF0\x43\0\0\x01\x1B", 6);
    text += std::string(145, 'x') + name + "0\xF7";
    return {text.begin(), text.end()};
}

// A patch in the memory of model 16, at an address.
SysexBytes Patch(unsigned offset, BYTE group, BYTE timbre) {
    const auto high = static_cast<BYTE>(offset >> 7);
    const auto low = static_cast<BYTE>(offset & 0x7F);
    return {0xF0,  0x41,   0x10, 0x16, 0x12, 5, high, low, //
            group, timbre, 24,   50,   2,    0, 1,    0,   0, 0xF7};
}

} // namespace

TEST_F(PluginFolder, LoadsWhatIsThereInOrder) {
    Add("SixOp");
    Add("PatchMemory");
    m_home.Write("PlugIns/readme.txt", "no plug-in");
    EXPECT_THAT(Load(),
                ElementsAre("Plug-in loaded: Patch memory", "Plug-in loaded: Six-operator voices"));
    EXPECT_EQ(m_plugins.Names(), "Patch memory, Six-operator voices");
}

TEST_F(PluginFolder, MissingFolderHasNone) {
    EXPECT_THAT(Load(), IsEmpty());
    EXPECT_EQ(m_plugins.Names(), "");
    EXPECT_EQ(TextOf(Patch(0, 0, 0)), "Data set | ");
}

TEST_F(PluginFolder, DescribesTheBanksOfTheProgram) {
    Add("SixOp");
    Add("PatchMemory");
    Load();
    std::string error;
    Bank voices;
    Bank patches;
    ASSERT_TRUE(ReadBank(LIBRARIAN_DATA "/voices.syx", voices, error)) << error;
    ASSERT_TRUE(ReadBank(LIBRARIAN_DATA "/patches.syx", patches, error)) << error;
    m_plugins.Describe(voices);
    m_plugins.Describe(patches);
    EXPECT_EQ(voices.messages[0].info.kind, "32 six-operator voices");
    EXPECT_EQ(voices.messages[0].patch, "BRASS 1 to LEAD 4");
    const std::vector<std::string> lines = SheetLines(voices, 33);
    EXPECT_EQ(lines.size(), 33u);
    EXPECT_EQ(lines.front(), "1  32 six-operator voices");
    EXPECT_EQ(lines[1], "    01  BRASS 1");
    EXPECT_EQ(lines.back(), "    32  LEAD 4");
    EXPECT_EQ(SheetLines(voices, 32).back(), "and 2 more");
    EXPECT_EQ(patches.messages[0].info.kind, "Patch A11");
    EXPECT_EQ(patches.messages[63].info.kind, "Patch A88");
    EXPECT_EQ(patches.messages[63].patch, "Timbre A64");
}

TEST_F(PluginFolder, LeavesWhatNoneKnows) {
    Add("SixOp");
    Add("PatchMemory");
    Load();
    SysexBytes shortened = VoiceDump("LEAD 1    ");
    shortened.erase(shortened.begin() + 10);
    const struct {
        SysexBytes message;
        const char* text;
    } rows[] = {
        {VoiceDump("  LEAD  1 "), "Six-operator voice | LEAD 1"},
        {VoiceDump("A\x01\x7F"
                   "B      "),
         "Six-operator voice | A??B"},
        {VoiceDump("          "), "Six-operator voice | "},
        {shortened, "Voice dump | "},
        {Patch(64 * 8, 1, 63), "Patch B11 | Timbre B64"},
        {Patch(127 * 8, 3, 0), "Patch B88 | Timbre rhythm 1"},
        {Patch(128 * 8, 0, 0), "Data set | "},
        {Patch(4, 0, 0), "Data set | "},
        {Patch(0, 4, 0), "Data set | "},
        {Patch(0, 0, 64), "Data set | "},
        {{0xF0, 0x41, 0x10, 0x16, 0x12, 0xF7}, "Data set | "},
        {{0xF0, 0x43, 0xF7}, "Message | "},
        {{0xF0, 0x43}, "Message (cut short) | "},
    };
    for (const auto& row : rows) EXPECT_EQ(TextOf(row.message), row.text);
}

TEST_F(PluginFolder, RefusesWhatIsWrongAndLoadsTheRest) {
    MessageBoxRecorder boxes;
    Add("Incomplete");
    Add("IncompleteEditor");
    Add("NoEntry");
    Add("NoRecord");
    Add("SixOp");
    Add("WrongVersion");
    m_home.Write("PlugIns/Broken.so", "no shared object");
    EXPECT_THAT(
        Load(),
        ElementsAre(HasSubstr("Dylib open failure for: "), HasSubstr("Dylib error = "),
                    "Plug-in not loaded: Broken.so: it cannot be opened",
                    "Plug-in not loaded: Incomplete.so: its record is incomplete",
                    "Plug-in not loaded: IncompleteEditor.so: its record is incomplete",
                    "Plug-in not loaded: NoEntry.so: it has no entry LibrarianPlugin",
                    "Plug-in not loaded: NoRecord.so: its entry returned nothing",
                    "Plug-in loaded: Six-operator voices",
                    "Plug-in not loaded: WrongVersion.so: it has version 9, which is none of "
                    "1 to 3"));
    EXPECT_EQ(boxes.Take().size(), 1u); // of the missing entry
    EXPECT_EQ(m_plugins.Names(), "Six-operator voices");
    EXPECT_EQ(m_plugins.Refused(), "Broken.so, Incomplete.so, IncompleteEditor.so, NoEntry.so, "
                                   "NoRecord.so, WrongVersion.so");
}

TEST_F(PluginFolder, CheckedBeforeTheyAreLoadedAndAgainLater) {
    Add("SixOp");
    Add("PatchMemory");
    const std::string folder = (m_home.Path() / "PlugIns").string();
    m_plugins.LoadAll(folder, [](const std::string& path) {
        return path.find("SixOp") == std::string::npos ? "" : "it is ill";
    });
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("Plug-in loaded: Patch memory",
                                             "Plug-in not loaded: SixOp.so: it is ill"));
    EXPECT_THAT(Load(), ElementsAre("Plug-in loaded: Six-operator voices"));
    EXPECT_EQ(m_plugins.Files().size(), 2u);
    EXPECT_EQ(m_plugins.Refused(), "");
}

TEST_F(PluginFolder, TextsWithoutAnEndStopAtTheirRoom) {
    Add("Greedy");
    Load();
    EXPECT_EQ(TextOf({0xF0, 0x7D, 0xF7}), std::string(64, 'k') + " | " + std::string(64, 'p'));
}
