#include "librarian/RecentBanks.h"

#include "SettingsHome.h"

using testing::ElementsAre;

namespace {

class RecentBankList : public SettingsHome {
protected:
    // The list as the next run of the program finds it.
    std::vector<std::string> Stored() const {
        Reload();
        RecentBanks banks;
        banks.Load();
        std::vector<std::string> paths;
        for (int i = 0; i < banks.Count(); ++i) paths.push_back(banks.Path(i));
        return paths;
    }
};

} // namespace

TEST_F(RecentBankList, KeepsTheNewestEightInOrder) {
    RecentBanks banks;
    for (char name = 'a'; name <= 'j'; ++name) EXPECT_TRUE(banks.Add(std::string("/") + name));
    EXPECT_FALSE(banks.Add("/j"));
    EXPECT_TRUE(banks.Add("/e"));
    EXPECT_THAT(Stored(), ElementsAre("/e", "/j", "/i", "/h", "/g", "/f", "/d", "/c"));
}

TEST_F(RecentBankList, RemovedBankIsGoneFromTheProfileToo) {
    RecentBanks banks;
    for (const char* path : {"/a", "/b", "/c"}) banks.Add(path);
    banks.Remove(1);
    EXPECT_THAT(Stored(), ElementsAre("/c", "/a"));
    banks.Remove(1);
    EXPECT_THAT(Stored(), ElementsAre("/c"));
}

// "Bank1=" leaves 249 characters.
TEST_F(RecentBankList, LeavesOutWhatTheProfileCannotHold) {
    const std::string longest = "/" + std::string(248, 'x');
    RecentBanks banks;
    for (const std::string& path : {longest + "x", std::string("/a;b.syx"), std::string("/a "),
                                    std::string("relative.syx"), std::string()})
        EXPECT_FALSE(banks.Add(path)) << path;
    EXPECT_EQ(banks.Count(), 0);
    EXPECT_TRUE(banks.Add("/ a.syx"));
    EXPECT_TRUE(banks.Add(longest));
    EXPECT_THAT(Stored(), ElementsAre(longest, "/ a.syx"));
}

TEST_F(RecentBankList, EditedProfileIsReadWithCare) {
    Reload();
    m_home.Write(kProfile, "[Librarian Recent Banks]\r\nBank1=\r\nBank2=no path\r\n"
                           "Bank4=/b ; mine\r\nBank8=/h\r\nBank9=/i\r\n");
    EXPECT_THAT(Stored(), ElementsAre("/b", "/h"));
}

TEST_F(RecentBankList, TextsNameFileAndFolder) {
    const struct {
        const char* path;
        const char* text;
    } rows[] = {
        {"/banks/voices.syx", "voices.syx - /banks"},
        {"/voices.syx", "voices.syx - /"},
        {"/home/anna/instruments/synthesizers/banks/from others/a.syx",
         "a.syx - .../synthesizers/banks/from others"},
        {"/one-folder-with-a-name-that-is-longer-than-the-menu-shows/a.syx", "a.syx - ..."},
    };
    RecentBanks banks;
    for (const auto& row : rows) {
        banks.Add(row.path);
        EXPECT_EQ(banks.Text(0), row.text);
    }
}
