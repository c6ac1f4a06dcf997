#include "librarian/LocalFiles.h"

#include <gmock/gmock.h>

#include "support/TemporaryHome.h"

namespace fs = std::filesystem;

using testing::IsEmpty;
using testing::Not;

TEST(LocalFiles, OldFileIsLostOnlyToTheNewOne) {
    const struct {
        const char* fresh; // "" for none, so that it cannot be moved
        bool mayReplace;
        const char* after;
    } rows[] = {{"new", true, "new"}, {"new", false, "old"}, {"", true, "old"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.fresh) + (row.mayReplace ? " replaces" : ""));
        TemporaryHome home;
        const std::string path = home.Write("banks/a.syx", "old");
        const std::string fresh = (home.Path() / "a.new").string();
        if (*row.fresh) home.Write("a.new", row.fresh);
        const bool works = row.after == std::string("new");
        EXPECT_EQ(PutInPlace(fresh, path, row.mayReplace).empty(), works);
        EXPECT_EQ(home.Read("banks/a.syx"), row.after);
        const auto files = fs::directory_iterator(home.Path() / "banks");
        EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "something is left over";
    }
}

TEST(LocalFiles, FolderIsNotReplaced) {
    TemporaryHome home;
    home.Write("a.syx/b.syx", "old");
    const std::string fresh = home.Write("fresh", "new");
    EXPECT_THAT(PutInPlace(fresh, (home.Path() / "a.syx").string(), true), Not(IsEmpty()));
    EXPECT_EQ(home.Read("a.syx/b.syx"), "old");
}

TEST(LocalFiles, JobsDoNotShareFiles) {
    EXPECT_NE(PathForJob("/banks/a.syx", ".new"), PathForJob("/banks/a.syx", ".new"));
}
