#include "files/pathTranslation.h"

#include <gmock/gmock.h>

namespace vm {
static void PrintTo(const TranslatedPath& path, std::ostream* out) {
    *out << '"' << path.path << (path.failed ? "\" (too long)" : "\"");
}
static void PrintTo(const FindPattern& pattern, std::ostream* out) {
    *out << '"' << pattern.directory << "\" "
         << (pattern.filtered ? "only ." + pattern.extension : "everything");
}
} // namespace vm

using vm::TranslatedPath;
using vm::TranslatePath;

TEST(PathTranslation, Names) {
    const struct {
        const char* name;
        const char* path;
    } cases[] = {
        {"", ""},
        {"/Users/me/a\\b:c.bmp", "/Users/me/a/b/c.png"},
        {"/config:Velmora Win.ini", "/config/Velmora Win.ini"},
        {"Folder\\Sub/File.txt", "Folder/Sub/File.txt"},
        {"\\\\server\\share", "//server/share"},
        {"C:\\Temp\\x.syx", "/vol/C/Temp/x.syx"},
        {"Disk:Music:Song One.mid", "/vol/Disk/Music/Song One.mid"},
        {"C:\\Temp\\", "/vol/C/Temp"},
        {"C:/a/../b", "/vol/C/a/../b"},
        {":a::b", "/vol/a/b"},
        {"/\xC3\xA4\xFF\\b", "/\xC3\xA4\xFF/b"},
        {"D:\xC3\xA4\xFF", "/vol/D/\xC3\xA4\xFF"},
        {":", ":"}, // names no volume
        {"\\:/", ":::"},
        {".BMP", ".BMP"},
        {"a.BmP", "a.png"},
        {"C:.bmp", "/vol/C/.png"},
        {"bmp", "bmp"},
        {"a.bmp.txt", "a.bmp.txt"},
        {"MiXed", "MiXed"},
    };
    for (const auto& row : cases)
        for (bool isDirectory : {false, true})
            EXPECT_EQ(TranslatePath(row.name, isDirectory, "/vol"), TranslatedPath{row.path})
                << row.name;
}

TEST(PathTranslation, VolumePathHasAtMost255Bytes) {
    const std::string fits(255 - std::string("/vol/C/").size(), 'x');
    EXPECT_EQ(TranslatePath("C:\\" + fits, false, "/vol"), TranslatedPath{"/vol/C/" + fits});
    EXPECT_EQ(TranslatePath("C:\\" + fits + "x", false, "/vol"),
              (TranslatedPath{"C::" + fits + "x", true}));
}

TEST(PathTranslation, FindPatterns) {
    using vm::FindPattern;
    const struct {
        const char* pattern;
        FindPattern result;
    } cases[] = {
        {"/Data/*.*", {"/Data", false, ""}},
        {"/Data/*.syx", {"/Data", true, "syx"}},
        {"/Data/", {"/Data/", false, ""}},
        {"/Data", {"/Data", false, ""}},
        {"/Da*ta/x", {"/Da*ta/x", false, ""}},
        {"/*.syx", {"/", true, "syx"}},
        {"*.syx", {".", true, "syx"}},
        {"/Data/*", {"/Data", false, ""}},
        {"/Data/*.", {"/Data", true, ""}},
        {"/Data/*.longerthan7", {"/Data", true, "longert"}},
        {"/Data/ab*.syx", {"/Data", true, "*.syx"}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(vm::ParseFindPattern(row.pattern), row.result) << row.pattern;
}

TEST(PathTranslation, NameBesideTheExecutable) {
    EXPECT_EQ(vm::ModuleFileName("/opt/App.app/Contents/MacOS/App", "Help.txt"),
              "\\opt\\App.app\\Contents\\MacOS\\Help.txt");
    EXPECT_EQ(vm::ModuleFileName("/App", "sub/x"), "\\sub/x");
}
