#include <vmcore/wnd/screen.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include "RecordingWindow.h"

TEST(Screen, RectanglesAreThoseOfTheDisplay) {
    const QScreen& screen = *QGuiApplication::primaryScreen();
    const QSize main = screen.size();
    EXPECT_THAT(GetScreenRect(), IsRect(screen.geometry().x(), screen.geometry().y(),
                                        screen.geometry().x() + main.width(),
                                        screen.geometry().y() + main.height()));
    const RECT all = GetVirtualScreenRect();
    EXPECT_GE(all.right - all.left, main.width());
    EXPECT_GE(all.bottom - all.top, main.height());
    RECT ofNoWindow{};
    CWnd().GetWindowRect(&ofNoWindow);
    EXPECT_EQ(ofNoWindow.right, all.right);
}

TEST(Screen, MetricsAgreeWithTheRectanglesAndTheScrollBars) {
    const RECT main = GetScreenRect();
    const RECT all = GetVirtualScreenRect();
    const struct {
        const char* what;
        int index;
        int value;
    } rows[] = {
        {"screen width", 0, static_cast<int>(main.right - main.left)},
        {"screen height", 1, static_cast<int>(main.bottom - main.top)},
        {"vertical bar", 2, 15},
        {"horizontal bar", 3, 15},
        {"mouse", 19, 1},
        {"left of all screens", 76, static_cast<int>(all.left)},
        {"top of all screens", 77, static_cast<int>(all.top)},
        {"width of all screens", 78, static_cast<int>(all.right - all.left)},
        {"height of all screens", 79, static_cast<int>(all.bottom - all.top)},
        {"screens", 80, static_cast<int>(QGuiApplication::screens().size())},
        {"negative", -1, 0},
        {"unknown", 9999, 0},
    };
    for (const auto& row : rows) EXPECT_EQ(GetSystemMetrics(row.index), row.value) << row.what;
    for (const int index : {SM_CYCAPTION, SM_CYMENU, SM_CXICON, SM_CXSMICON, SM_CXDOUBLECLK,
                            SM_CXDRAG, SM_CXFULLSCREEN, SM_CXCURSOR})
        EXPECT_TRUE(GetSystemMetrics(index) > 0) << index;
}
