#include "librarian/Settings.h"

#include <ostream>

#include "SettingsHome.h"

bool operator==(const tagRECT& a, const tagRECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

void PrintTo(const tagRECT& rect, std::ostream* out) {
    *out << rect.left << "," << rect.top << " to " << rect.right << "," << rect.bottom;
}

namespace {

class Settings : public SettingsHome {};

std::string Text(std::size_t length) {
    return std::string(length, 'x');
}

// "Folder=" leaves 248 of a line's 255 characters.
const struct {
    std::string value;
    bool fits;
} kValues[] = {
    {"/home/anna/banks", true},  {"  leading blanks", true}, {"[section]", true},   {"a=b", true},
    {"\xC3\xA9t\xC3\xA9", true}, {Text(248), true},          {Text(249), false},    {"a;b", false},
    {"trailing ", false},        {"trailing\t", false},      {"two\nlines", false}, {"", false},
};

} // namespace

TEST_F(Settings, TextComesBackAsItWasOrNotAtAll) {
    for (const auto& row : kValues) {
        StoreSetting(setting::kFolder, "/before");
        StoreSetting(setting::kFolder, row.value);
        Reload();
        EXPECT_EQ(FitsProfile(setting::kFolder, row.value), row.fits) << row.value;
        EXPECT_EQ(LoadSetting(setting::kFolder), row.fits ? row.value : "") << row.value;
    }
    EXPECT_THAT(m_home.Read(kProfile), testing::StartsWith("[Other]\r\nKey=1\r\n"));
}

TEST_F(Settings, PlaceComesBack) {
    CRect place;
    EXPECT_FALSE(LoadPlace(place));
    StorePlace(CRect(-1200, 46, -400, 646));
    Reload();
    EXPECT_TRUE(LoadPlace(place));
    EXPECT_EQ(tagRECT(place), (tagRECT{-1200, 46, -400, 646}));
    for (const char* key : {"Left", "Width"})
        for (const char* edited : {"-2147483648", "2147483647"}) {
            StorePlace(CRect(1, 2, 3, 4));
            ::WriteProfileString("Librarian", key, edited);
            EXPECT_FALSE(LoadPlace(place)) << key << "=" << edited;
        }
}

TEST(WindowPlace, IsMovedAndShrunkAsFarAsNeeded) {
    constexpr tagRECT kScreen = {0, 0, 1280, 900};
    constexpr tagRECT kLeftScreen = {-800, 0, -100, 900};
    const struct {
        const char* what;
        tagRECT place;
        tagRECT screen;
        tagRECT fitted;
    } rows[] = {
        {"as it was", {10, 20, 770, 580}, kScreen, {10, 20, 770, 580}},
        {"in the corner", {520, 340, 1280, 900}, kScreen, {520, 340, 1280, 900}},
        {"beyond the corner", {700, 800, 1460, 1360}, kScreen, {520, 340, 1280, 900}},
        {"on a screen that is gone", {-900, -50, -140, 510}, kScreen, {0, 0, 760, 560}},
        {"on a screen to the left", {-900, 10, -140, 510}, kLeftScreen, {-800, 10, -100, 510}},
        {"larger than the screen", {40, 40, 2040, 1540}, kScreen, {0, 0, 1280, 900}},
        {"too small", {40, 40, 45, 45}, kScreen, {40, 40, 640, 420}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(tagRECT(FitOnScreen(row.place, row.screen)), row.fitted) << row.what;
}
