// The header that ports begin with, as their sources use it.
#include <port/Compat.h>

#include <unistd.h>

#include <cstring>
#include <thread>

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include "../wnd/RecordingWindow.h"
#include "support/TemporaryHome.h"

namespace {

std::string Std(const CString& text) {
    return static_cast<const char*>(text);
}

} // namespace

TEST(Compat, Texts) {
    CString text;
    Format(text, "%d/%s", 7, std::string(3000, 'x').c_str());
    EXPECT_EQ(text.GetLength(), 3002);
    Format(text, "%s%s", "ab", "cd");
    Format(text, "%s!", static_cast<LPCTSTR>(text));
    EXPECT_EQ(Std(text), "abcd!");
    EXPECT_EQ(Std(Mid(text, 1, 2)), "bc");
    EXPECT_EQ(Std(Mid(text, 3)), "d!");
    EXPECT_EQ(Std(Mid(text, 5)) + Std(Mid(text, 9, 2)), "");
    EXPECT_TRUE(ReverseFind("a.b.c", '.') == 3 && ReverseFind("abc", '.') == -1);
    EXPECT_EQ(Std("<" + text + ">" + text + '.'), "<abcd!>abcd!.");
    EXPECT_EQ(std::strlen(text + 1), 4u); // a pointer, as ever
}

TEST(Compat, SizesAreTakenAndMadeWherePlainOnesAre) {
    CPoint point;
    point.Offset(CSize(3, 4));
    EXPECT_TRUE(point == CPoint(3, 4));
    const CSize size = CRect(1, 2, 11, 22).Size();
    EXPECT_TRUE(size == CSize(10, 20) && (size != tagSIZE{10, 21}));
}

TEST(Compat, ArrayAndLock) {
    CArray<CString, LPCTSTR> names;
    EXPECT_EQ(names.Add("b"), 0);
    names.Add("c");
    names.InsertAt(0, "a");
    names.RemoveAt(1);
    EXPECT_EQ(names.GetSize(), 2);
    EXPECT_EQ(Std(names.GetAt(0)) + Std(names[1]), "ac");

    CCriticalSection section;
    {
        CSingleLock lock(&section, TRUE);
        lock.Lock();
    }
    bool isFree = false;
    std::thread([&] {
        CSingleLock lock(&section, TRUE); // would wait for ever
        isFree = true;
    }).join();
    EXPECT_TRUE(isFree);
}

using CompatWindow = WindowFixture;

TEST_F(CompatWindow, TextGoesToTheClipboard) {
    CopyTextToClipboard(&child, "Lead 1\r\nPad 2");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Lead 1\nPad 2");
}

TEST(Compat, SettingsAreTheProgramsOwn) {
    const TemporaryHome home;
    LogCapture log;
    const CString ini = SettingsFile("PatchKeeper");
    EXPECT_EQ(GetPrivateProfileInt("Settings", "Channel", 3, ini), 3u);
    log.TakeLog(); // the file is not there yet
    WriteSettingsInt("Settings", "Channel", 12, ini);
    ServiceProfile();
    EXPECT_EQ(GetPrivateProfileInt("Settings", "Channel", 3, ini), 12u);
    EXPECT_EQ(access(ini, R_OK), 0) << ini;
}
