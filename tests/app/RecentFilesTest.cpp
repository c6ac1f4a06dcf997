#include <vmcore/app/CRecentFileList.h>

#include <gtest/gtest.h>

TEST(CRecentFileList, NewestFirstEachOnceUpToTheMaximum) {
    CRecentFileList list(3);
    for (const char* path : {"/a/1.syx", "/a/2.syx", "/a/3.syx", "/a/1.syx", "/a/4.syx"})
        list.Add(path);
    ASSERT_EQ(list.GetSize(), 3);
    EXPECT_STREQ(list[0], "/a/4.syx");
    EXPECT_STREQ(list[1], "/a/1.syx");
    EXPECT_STREQ(list[2], "/a/3.syx");
    list.Add("");
    list.Add(nullptr);
    EXPECT_EQ(list.GetSize(), 3);
    list.Add(list[2]); // its own text
    EXPECT_STREQ(list[0], "/a/3.syx");
    EXPECT_STREQ(list[2], "/a/1.syx");
}

TEST(CRecentFileList, OutOfRangeIsHarmless) {
    CRecentFileList list;
    CString name("kept");
    EXPECT_STREQ(list[0], "");
    EXPECT_FALSE(list.GetDisplayName(name, 0));
    EXPECT_STREQ(name, "kept");
    list.Remove(3);
    list.Add("/banks/Brass.syx");
    EXPECT_TRUE(list.GetDisplayName(name, 0));
    EXPECT_STREQ(name, "&1 Brass.syx");
    EXPECT_STREQ(list[-1], "");
    list.Remove(0);
    EXPECT_EQ(list.GetSize(), 0);
}
