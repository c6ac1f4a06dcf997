#include <vmcore/gdi/CDC.h>

#include <cstdlib>
#include <memory>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>
#include <vmcore/gdi/printing.h>
#include <vmcore/gdi/syscolors.h>

#include "gdi/Canvas.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;

TEST(DeviceContext, StartsDetachedBlackOnWhite) {
    CDC dc;
    EXPECT_EQ(dc.GetTextColor(), 0u);
    EXPECT_EQ(dc.GetBkColor(), 0xFFFFFFu);
    EXPECT_EQ(dc.GetTextAlign(), 14u);
    EXPECT_EQ(dc.GetBkMode(), 0);
    EXPECT_EQ(dc.GetSafeHdc(), nullptr);
    EXPECT_FALSE(dc.BeginDrawing());
}

TEST(DeviceContext, SettersReturnOldOrNewValuesAsHostsExpect) {
    CDC dc;
    EXPECT_EQ(dc.SetTextColor(5), 0u);
    EXPECT_EQ(dc.SetBkColor(6), 0xFFFFFFu);
    EXPECT_EQ(dc.SetTextAlign(TA_CENTER), 14u);
    EXPECT_EQ(dc.GetTextAlign(), 16u);
    EXPECT_EQ(dc.SetBkMode(OPAQUE), OPAQUE);
    EXPECT_EQ(dc.SetROP2(R2_NOT), R2_NOT);
    EXPECT_EQ(dc.SetStretchBltMode(3), 3);
    EXPECT_EQ(dc.SetMapMode(4), 4);
}

TEST(DeviceContext, CountsAReferenceWhileAttached) {
    auto* context = vm::GraphicsContext::ForImage(2, 2);
    {
        CDC dc;
        EXPECT_FALSE(dc.Attach(nullptr));
        EXPECT_FALSE(dc.Attach(reinterpret_cast<HDC>(1)));
        EXPECT_EQ(dc.GetSafeHdc(), nullptr);
        EXPECT_TRUE(dc.Attach(context));
        EXPECT_EQ(dc.GetBkMode(), TRANSPARENT);
        EXPECT_TRUE(dc.Attach(context)); // again: still one
        EXPECT_EQ(context->References(), 2);
        EXPECT_EQ(dc.Detach(), context);
        EXPECT_EQ(context->References(), 1);
        dc.Attach(context);
        EXPECT_TRUE(dc.DeleteDC());
        EXPECT_EQ(dc.GetSafeHdc(), nullptr);
        dc.Attach(context);
    }
    EXPECT_EQ(context->References(), 1);
    CDC* shared = CDC::FromHandle(context);
    EXPECT_EQ(shared->GetSafeHdc(), context);
    EXPECT_EQ(CDC::FromHandle(nullptr), shared);
    EXPECT_EQ(context->References(), 1);
    context->Release();
}

TEST(DeviceContext, DetachedCallsAreLoggedAndNeutral) {
    LogCapture log;
    CDC dc;
    CBrush brush(COLORREF{0});
    CRect box(1, 2, 3, 4);
    EXPECT_EQ(dc.MoveTo(3, 3).x, 0);
    EXPECT_FALSE(dc.LineTo(5, 5));
    dc.FillRect(CRect(0, 0, 1, 1), &brush);
    dc.FrameRect(CRect(0, 0, 1, 1), &brush);
    EXPECT_FALSE(dc.Ellipse(0, 0, 1, 1));
    EXPECT_FALSE(dc.TextOut(0, 0, "x", 1));
    EXPECT_EQ(dc.TextWidth(dc.GetSafeHdc(), "x", 1), 0);
    EXPECT_EQ(dc.GetClipBox(&box), 0);
    dc.ApplyTextColor();
    EXPECT_THAT(log.TakeLog(), ElementsAre("exception at CDC::MoveTo() - NullContext",
                                           "exception at CDC::LineTo() - NullContext",
                                           "exception at CDC::FillRect() - NullContext",
                                           "exception at CDC::FrameRect() - NullContext",
                                           "exception at CDC::Ellipse() - NullContext",
                                           "exception at CDC::TextOut() - NullContext",
                                           "exception at CDC::TextWidth() - NullContext",
                                           "exception at CDC::GetClipBox() - NullContext",
                                           "exception at CDC::TextColor() - NullContext"));
    EXPECT_EQ(box.left, 1);
}

TEST(Selection, StockObjectComesBackInTheSharedOneAndCanBeSelectedAgain) {
    CDC dc;
    CPen red(PS_SOLID, 1, RGB(255, 0, 0)), empty;
    CPen* const stock = dc.SelectObject(&red);
    ASSERT_TRUE(stock);
    EXPECT_TRUE(isSystemDCObject(stock));
    EXPECT_EQ(stock->GetSafeHandle(), GetStockObject(BLACK_PEN));
    EXPECT_EQ(dc.SelectObject(static_cast<CPen*>(nullptr)), nullptr);
    EXPECT_EQ(dc.SelectObject(&empty), nullptr); // changed nothing:
    EXPECT_EQ(dc.SelectObject(stock), &red);
    EXPECT_EQ(dc.SelectObject(&red)->GetSafeHandle(), GetStockObject(BLACK_PEN));
    EXPECT_EQ(dc.SelectStockObject(WHITE_PEN), &red);
    EXPECT_TRUE(stock->DeleteObject()); // the shared record survives
    EXPECT_EQ(static_cast<tagEXTLOGPEN*>(GetStockObject(WHITE_PEN))->elpColor, 0xFFFFFFu);
}

TEST(Selection, SharedObjectsLetGoAtShutdown) {
    CDC dc;
    CBrush brush(COLORREF{1});
    CGdiObject* const shared = dc.SelectObject(&brush);
    ASSERT_TRUE(shared->GetSafeHandle());
    CDCGdiCleanup();
    EXPECT_EQ(shared->GetSafeHandle(), nullptr);
}

// What is deleted while it is selected gives way to the stock objects, in every device context.
TEST(Selection, NoneOutlivesItsObject) {
    Canvas canvas(8, 8);
    CDC other;
    CBrush kept(RGB(255, 0, 0));
    for (const bool byHandle : {false, true}) {
        auto pen = std::make_unique<CPen>(PS_SOLID, 3, RGB(255, 0, 0));
        auto brush = std::make_unique<CBrush>(RGB(0, 255, 0));
        auto font = std::make_unique<CFont>();
        font->CreatePointFont(200, "Arial");
        for (CDC* dc : {&canvas.dc, &other}) {
            dc->SelectObject(pen.get());
            dc->SelectObject(brush.get());
        }
        canvas.dc.SelectObject(font.get());
        if (byHandle)
            for (CGdiObject* object :
                 {static_cast<CGdiObject*>(pen.get()), static_cast<CGdiObject*>(brush.get()),
                  static_cast<CGdiObject*>(font.get())})
                DeleteObject(object->Detach());
        pen.reset();
        brush.reset();
        font.reset();
        EXPECT_EQ(canvas.dc.GetTextExtent("a", 1).cx, 12); // as without a font
        EXPECT_TRUE(isSystemDCObject(other.SelectObject(&kept)));
        canvas.dc.Rectangle(CRect(0, 0, 8, 8)); // black frame, nothing inside
        EXPECT_EQ(canvas.At(0, 0), 0xFF000000u);
        EXPECT_EQ(canvas.At(3, 3), 0u);
    }
}

TEST(Selection, SharedObjectsForgetABareHandleThatIsDeleted) {
    CDC dc;
    CPen other(PS_SOLID, 1, 0);
    HPEN bare;
    {
        CPen pen(PS_SOLID, 3, 0);
        dc.SelectObject(&pen);
        bare = pen.Detach();
    }
    CGdiObject* const shared = dc.SelectObject(&other);
    EXPECT_EQ(shared->GetSafeHandle(), bare);
    DeleteObject(bare);
    EXPECT_EQ(shared->GetSafeHandle(), nullptr); // else selecting it back reads freed memory
}

TEST(Printing, AnswersThatThereIsNoPrinterAndHowLargePaperIs) {
    MessageBoxRecorder boxes;
    EXPECT_EQ(CreateDC(nullptr, nullptr, nullptr, nullptr), nullptr);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"CreateDC - printing is not supported", "Msg", 0}));
    EXPECT_EQ(StartDoc(nullptr, nullptr) + StartPage(nullptr) + EndPage(nullptr) + EndDoc(nullptr) +
                  Escape(nullptr, 1, 0, nullptr, nullptr) + MacPageSetup() + DeleteDC(HDC{}),
              0);
    setenv("LC_ALL", "C", 1); // A4
    EXPECT_EQ(GetDeviceCaps(nullptr, PAPER_LEFT), 18);
    EXPECT_EQ(GetDeviceCaps(nullptr, PAPER_TOP), 18);
    EXPECT_EQ(GetDeviceCaps(nullptr, PAPER_WIDTH), 595);
    EXPECT_EQ(GetDeviceCaps(nullptr, PAPER_HEIGHT), 841);
    unsetenv("LC_ALL");
    for (const int index : {-1, 4, 88}) EXPECT_EQ(GetDeviceCaps(nullptr, index), 0);
    EXPECT_TRUE(boxes.Take().empty());
}

TEST(Selection, StockIndexOutOfRangeIsReported) {
    MessageBoxRecorder boxes;
    CDC dc;
    for (const int index : {-1, 9, 12}) {
        EXPECT_EQ(dc.SelectStockObject(index), nullptr);
        EXPECT_THAT(
            boxes.Take(),
            ElementsAre(ShownBox{"CDC::SelectStockObject out of range selection", "VMError", 0}));
    }
}

TEST(Selection, RegionsAreOnlyLookedAt) {
    CDC dc;
    CRgn region;
    EXPECT_FALSE(dc.SelectObject(&region));
    region.CreateRectRgn(0, 0, 1, 1);
    EXPECT_TRUE(dc.SelectObject(&region));
}

TEST(Selection, UnknownBrushStyleIsReportedAndKeepsTheColour) {
    Canvas canvas(2, 2);
    MessageBoxRecorder boxes;
    CBrush brush(RGB(255, 0, 0));
    static_cast<tagLOGBRUSH*>(brush.m_hObject)->lbStyle = 3;
    canvas.dc.SelectObject(&brush);
    canvas.dc.ApplyBrush();
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(ShownBox{"CDC::SelectObject() - undefined BRUSH style = 3", "VM Core", 1}));
    EXPECT_EQ(canvas.context->FillColor(), 0xFF000000u);
}

TEST(Selection, PenAppliesWidthAndColourAndTheNullPenNothingVisible) {
    Canvas canvas(2, 2);
    CPen wide(PS_SOLID, 3, RGB(0, 0, 255)), none(PS_NULL, 7, 0);
    canvas.dc.SelectObject(&wide);
    canvas.dc.ApplyPen();
    EXPECT_EQ(canvas.context->StrokeColor(), 0xFF0000FFu);
    EXPECT_EQ(canvas.context->LineWidth(), 3);
    canvas.dc.SelectObject(&none);
    canvas.dc.ApplyPen();
    EXPECT_EQ(canvas.context->StrokeColor(), 0u);
    EXPECT_EQ(canvas.context->LineWidth(), 3);
    canvas.dc.SelectStockObject(BLACK_PEN);
    canvas.dc.ApplyPen();
    EXPECT_EQ(canvas.context->LineWidth(), 1); // the low half of the record's width
}
