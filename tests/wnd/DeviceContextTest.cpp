// Drawing into a window outside of its paint.
#include <vmcore/wnd/CWnd.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QBackingStore>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CPaintDC.h>

#include "support/LogCapture.h"

namespace {

constexpr COLORREF kGround = RGB(0, 0, 200);
constexpr COLORREF kMark = RGB(200, 0, 0);

class Painted : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_PAINT) return CWnd::MessageMap(message, wParam, lParam);
        CPaintDC dc(this);
        CRect client;
        GetClientRect(client);
        CBrush ground(kGround);
        dc.FillRect(client, &ground);
        ++paints;
        if (!inPaint) return 1;
        CDC* const second = GetDC();
        CBrush mark(kMark);
        second->FillRect(CRect(0, 0, 2, 2), &mark);
        ReleaseDC(second);
        return 1;
    }
    int paints = 0;
    bool inPaint = false;
};

class DeviceContext : public testing::Test {
protected:
    void Open() {
        m_top.Create("", "contexts", WS_VISIBLE, RECT{60, 60, 260, 210}, nullptr, 0);
        m_child.Create("", "", WS_VISIBLE, RECT{20, 10, 70, 50}, &m_top, 1);
        m_child.ShowWindow(SW_SHOW);
        m_top.ShowWindow(SW_SHOW);
        while (m_child.paints == 0) QCoreApplication::processEvents();
    }
    void TearDown() override {
        m_child.DestroyWindow();
        m_top.DestroyWindow();
    }
    // In the child's coordinates.
    QRgb Shown(int x, int y) {
        QWidget* const window = m_child.view->window();
        const auto* image = dynamic_cast<QImage*>(window->backingStore()->paintDevice());
        return image->pixel(m_child.view->mapTo(window, QPoint(x, y)));
    }

    CWnd m_top;
    Painted m_child;
};

} // namespace

TEST_F(DeviceContext, CountsInTheUnitsOfAScaledView) {
    Open();
    m_child.SetWindowScaling(2.0f);
    const int before = m_child.paints;
    while (m_child.paints == before) QCoreApplication::processEvents();
    CDC* const dc = m_child.GetDC();
    CBrush mark(kMark);
    dc->FillRect(CRect(3, 4, 5, 6), &mark);
    m_child.ReleaseDC(dc);
    EXPECT_EQ(Shown(6, 8), QRgb(0xFFC80000));
    EXPECT_EQ(Shown(9, 11), QRgb(0xFFC80000));
    EXPECT_EQ(Shown(5, 8), QRgb(0xFF0000C8));
    EXPECT_EQ(Shown(10, 11), QRgb(0xFF0000C8));
}

TEST_F(DeviceContext, DrawsIntoTheViewUntilItIsPaintedNext) {
    EXPECT_EQ(m_child.GetDC(), nullptr); // no view yet
    Open();
    const int paints = m_child.paints;
    CBrush mark(kMark);
    CDC* const dc = m_child.GetDC();
    ASSERT_TRUE(dc);
    dc->FillRect(CRect(-20, 5, 4, 9), &mark); // cut at the view's left edge
    dc->FillRect(CRect(45, 35, 900, 900), &mark);
    EXPECT_TRUE(m_child.ReleaseDC(dc));
    EXPECT_EQ(Shown(0, 5), 0xFFC80000u);
    EXPECT_EQ(Shown(3, 8), 0xFFC80000u);
    EXPECT_EQ(Shown(4, 8), 0xFF0000C8u);
    EXPECT_EQ(Shown(49, 39), 0xFFC80000u);
    EXPECT_NE(Shown(-1, 5), 0xFFC80000u);
    EXPECT_NE(Shown(50, 39), 0xFFC80000u);
    EXPECT_EQ(m_child.paints, paints);
    m_child.Invalidate();
    m_child.UpdateWindow();
    EXPECT_EQ(Shown(0, 5), 0xFF0000C8u);
    EXPECT_FALSE(m_child.ReleaseDC(nullptr));
}

TEST_F(DeviceContext, MeasuresBeforeTheViewIsOnTheScreen) {
    m_top.Create("", "contexts", 0, RECT{60, 60, 260, 210}, nullptr, 0);
    m_child.Create("", "", 0, RECT{20, 10, 70, 50}, &m_top, 1);
    CDC* const early = m_child.GetDC();
    ASSERT_TRUE(early);
    EXPECT_GT(early->GetTextExtent("Hello", 5).cx, 0);
    CBrush mark(kMark);
    early->FillRect(CRect(0, 0, 5, 5), &mark); // nowhere
    EXPECT_TRUE(m_child.ReleaseDC(early));
}

TEST_F(DeviceContext, ReleasingOneLeavesTheOthers) {
    Open();
    CBrush mark(kMark);
    CDC* const outer = m_child.GetDC();
    m_child.ReleaseDC(m_child.GetDC());
    outer->FillRect(CRect(0, 0, 5, 5), &mark);
    EXPECT_TRUE(m_child.ReleaseDC(outer));
    EXPECT_EQ(Shown(4, 4), 0xFFC80000u);
    SendMessage(m_child.view, WM_USER, 0, 0); // puts the scratch window in front
    EXPECT_TRUE(GetDC(m_child.view));
}

TEST_F(DeviceContext, BareHandlesLastUntilTheLoopRunsOrTheWindowIsPainted) {
    Open();
    LogCapture log;
    CBrush mark(kMark);
    CDC dc, second;
    EXPECT_TRUE(dc.Attach(GetDC(m_child.view)));
    EXPECT_TRUE(second.Attach(GetDC(m_child.view))); // both at a time
    dc.FillRect(CRect(0, 0, 5, 5), &mark);
    second.FillRect(CRect(5, 0, 9, 5), &mark);
    EXPECT_EQ(ReleaseDC(m_child.view, dc.GetSafeHdc()), 1);
    EXPECT_EQ(Shown(8, 4), 0xFFC80000u);
    m_child.Invalidate();
    m_child.UpdateWindow(); // the toolkit's painter takes over
    EXPECT_EQ(Shown(8, 4), 0xFF0000C8u);
    dc.FillRect(CRect(0, 0, 5, 5), &mark);
    EXPECT_EQ(log.TakeLog(),
              std::vector<std::string>{"exception at CDC::FillRect() - DeadContext"});
    EXPECT_EQ(GetDC(nullptr), nullptr);
    EXPECT_EQ(GetDC(reinterpret_cast<HWND>(2)), nullptr);
}

TEST_F(DeviceContext, InsideAPaintGoesOverItsPainter) {
    m_child.inPaint = true;
    Open();
    EXPECT_EQ(Shown(1, 1), 0xFFC80000u);
    EXPECT_EQ(Shown(2, 2), 0xFF0000C8u);
    CDC* const detached = m_child.GetWindowDC();
    EXPECT_EQ(detached->GetSafeHdc(), nullptr);
    m_child.ReleaseDC(detached);
}
