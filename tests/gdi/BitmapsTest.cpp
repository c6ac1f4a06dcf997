#include <vmcore/gdi/CBitmap.h>

#include <gmock/gmock.h>

#include <vmcore/app/CWinApp.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>

#include "gdi/Artwork.h"
#include "gdi/Canvas.h"
#include "platform/Image.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;

namespace {

tagBITMAP RecordOf(CBitmap& bitmap) {
    tagBITMAP record{};
    EXPECT_EQ(bitmap.GetBitmap(&record), static_cast<int>(sizeof record));
    return record;
}

const QImage& PixelsOf(CBitmap& bitmap) {
    return RecordOf(bitmap).bmBits->Pixels();
}

} // namespace

TEST(Bitmap, BlankOnesHaveTheRecordOfTheirSizeAndAnImageWhenItFits) {
    struct Row {
        int width, height, rowBytes;
        bool made;
    };
    for (const Row& row :
         {Row{3, 2, 12, true}, Row{0, 10, 0, false}, Row{10, 0, 40, false}, Row{-7, 5, -28, false},
          Row{1 << 30, 4, 0, false}, Row{0x7FFFFFFF, 0x7FFFFFFF, -4, false},
          Row{40000, 40000, 160000, false}}) {
        SCOPED_TRACE(row.width);
        CBitmap bitmap;
        EXPECT_EQ(bitmap.CreateBitmap(row.width, row.height, 7, 1, "bits") != 0, row.made);
        EXPECT_EQ(bitmap.CreateCompatibleBitmap(nullptr, row.width, row.height) != 0, row.made);
        const tagBITMAP record = RecordOf(bitmap);
        EXPECT_EQ(record.bmType, 0);
        EXPECT_EQ(record.bmWidth, row.width);
        EXPECT_EQ(record.bmHeight, row.height);
        EXPECT_EQ(record.bmWidthBytes, row.rowBytes);
        EXPECT_EQ(record.bmPlanes, 1);
        EXPECT_EQ(record.bmBitsPixel, 32);
        EXPECT_EQ(record.bmBits != nullptr, row.made);
        if (row.made) {
            EXPECT_EQ(Inked(PixelsOf(bitmap)), "nothing");
            EXPECT_EQ(static_cast<tagBITMAPRECORD*>(bitmap.m_hObject)->owner, &bitmap);
        }
    }
    CBitmap none;
    tagBITMAP record;
    EXPECT_EQ(none.GetBitmap(&record), 0);
}

TEST(Bitmap, ArtworkComesFromTheBundleInTheFormatsThatDrawFastest) {
    const Artwork art;
    QImage seeThrough(5, 4, QImage::Format_RGBA64);
    seeThrough.fill(QColor(255, 0, 0, 128));
    QImage palette(9, 3, QImage::Format_Indexed8);
    palette.setColorTable({qRgb(1, 2, 3)});
    palette.fill(0);
    QImage allOpaque = Gradient(6, 6).convertToFormat(QImage::Format_RGBA8888);
    allOpaque.setDotsPerMeterX(9999);
    art.Add(1, seeThrough);
    art.Add(2, palette);
    art.Add(-3, allOpaque);
    struct Row {
        int id, width, height;
        QImage::Format format;
        QRgb first;
    };
    for (const Row& row : {Row{1, 5, 4, QImage::Format_ARGB32_Premultiplied, qRgba(128, 0, 0, 128)},
                           Row{2, 9, 3, QImage::Format_RGB32, qRgb(1, 2, 3)},
                           Row{-3, 6, 6, QImage::Format_RGB32, qRgb(10, 10, 99)}}) {
        SCOPED_TRACE(row.id);
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.LoadBitmap(static_cast<unsigned>(row.id)));
        const tagBITMAP record = RecordOf(bitmap);
        EXPECT_EQ(record.bmWidth, row.width);
        EXPECT_EQ(record.bmHeight, row.height);
        EXPECT_EQ(record.bmWidthBytes, 4 * row.width);
        EXPECT_EQ(record.bmBitsPixel, 32);
        EXPECT_EQ(PixelsOf(bitmap).format(), row.format);
        EXPECT_EQ(PixelsOf(bitmap).pixel(0, 0), row.first);
        CBitmap byName;
        EXPECT_TRUE(byName.LoadBitmap(MAKEINTRESOURCE(static_cast<unsigned>(row.id))));
        EXPECT_EQ(PixelsOf(byName), PixelsOf(bitmap));
    }
}

TEST(Bitmap, MissingArtworkIsNoErrorBrokenArtworkIsBothHaveNoImage) {
    const Artwork art;
    const std::string whole = PngOf(Gradient(50, 50));
    std::string wrongSum = whole, huge = whole;
    wrongSum[40] ^= 1;
    huge.replace(16, 8, std::string("\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF", 8));
    art.Add(1, std::string());
    art.Add(2, whole.substr(0, whole.size() / 2));
    art.Add(3, whole.substr(0, 20));
    art.Add(4, "GIF89a" + whole);
    art.Add(5, huge);
    art.Add(6, "P6 1 1 255 abc"); // another format, behind a PNG's name
    LogCapture log;
    for (unsigned id = 1; id <= 6; ++id) {
        SCOPED_TRACE(id);
        CBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadBitmap(id));
        EXPECT_FALSE(RecordOf(bitmap).bmBits);
    }
    CBitmap missing;
    EXPECT_TRUE(missing.LoadBitmap(42));
    EXPECT_FALSE(RecordOf(missing).bmBits);
    Canvas canvas(4, 4);
    CDC memory;
    EXPECT_EQ(memory.SelectObject(&missing), nullptr);
    EXPECT_FALSE(memory.BeginDrawing());
    EXPECT_FALSE(canvas.dc.BitBlt(0, 0, 4, 4, &memory, 0, 0, SRCCOPY));
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}

TEST(Bitmap, LoadingByHandleKnowsBitmapsOnlyAndKeepsTheResourceHandle) {
    const Artwork art;
    art.Add(7, Gradient(8, 4));
    art.Add(8, "broken");
    LogCapture log;
    MessageBoxRecorder boxes;
    int before = 0;
    AfxSetResourceHandle(&before);
    EXPECT_EQ(LoadImage(nullptr, MAKEINTRESOURCE(7), IMAGE_ICON, 0, 0, 0), nullptr);
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(ShownBox{"LoadImage: request to load undefined image type", "VM Core", 0}));
    EXPECT_EQ(LoadBitmap(&log, MAKEINTRESOURCE(8)), nullptr);
    HBITMAP handle = LoadBitmap(nullptr, MAKEINTRESOURCE(7));
    EXPECT_EQ(AfxGetResourceHandle(), &before);
    AfxSetResourceHandle(nullptr);
    CBitmap* shared = CBitmap::FromHandle(handle);
    EXPECT_EQ(RecordOf(*shared).bmWidth, 8);
    vm::Image* const image = RecordOf(*shared).bmBits->Retain();
    EXPECT_EQ(CBitmap::FromHandle(nullptr), shared);
    EXPECT_TRUE(DeleteObject(handle)); // with the image: a bare handle does not say what it is
    EXPECT_EQ(image->Pixels().width(), 8);
    image->Release();
}

TEST(MemoryContext, DrawsIntoTheBitmapWithAllPrimitivesAtOnce) {
    Canvas canvas(40, 30);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&canvas.dc, 40, 30);
    CDC memory;
    EXPECT_TRUE(memory.CreateCompatibleDC(&canvas.dc));
    EXPECT_EQ(memory.SelectObject(&bitmap), nullptr);
    EXPECT_TRUE(memory.BeginDrawing());
    CBrush brush(RGB(200, 30, 10));
    CPen pen(PS_SOLID, 2, RGB(0, 90, 200));
    for (CDC* dc : {&memory, &canvas.dc}) {
        dc->SelectObject(&brush);
        dc->SelectObject(&pen);
        dc->Rectangle(CRect(1, 1, 12, 9));
        dc->MoveTo(2, 20);
        dc->LineTo(30, 12);
        dc->Ellipse(20, 2, 36, 12);
        dc->TextOut(3, 15, "Text", 4); // in the face that every context starts with
        dc->SetPixel(39, 29, RGB(1, 2, 3));
    }
    EXPECT_EQ(PixelsOf(bitmap), canvas.Pixels());
    Canvas view(40, 30);
    EXPECT_TRUE(view.dc.BitBlt(0, 0, 40, 30, &memory, 0, 0, SRCCOPY));
    EXPECT_EQ(view.Pixels(), canvas.Pixels());
    EXPECT_TRUE(memory.EndDrawing());
    EXPECT_TRUE(memory.RefreshImage());
    EXPECT_FALSE(view.dc.EndDrawing());
    EXPECT_FALSE(view.dc.RefreshImage());
}

TEST(MemoryContext, SelectedFontIsUsedAndClipAndAlphaStartAnew) {
    CFont font;
    font.CreateFont(20, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Verdana");
    CBitmap one, two;
    one.CreateCompatibleBitmap(nullptr, 60, 30);
    two.CreateCompatibleBitmap(nullptr, 60, 30);
    CDC memory;
    memory.SelectObject(&one);
    memory.SelectObject(&font);
    memory.TextOut(0, 0, "Wide", 4);
    memory.IntersectClipRect(0, 0, 1, 1);
    memory.SetAlphaTransparency(200);
    memory.SelectObject(&two);
    memory.TextOut(0, 0, "Wide", 4);
    EXPECT_EQ(PixelsOf(two), PixelsOf(one));
    memory.EraseRect(CRect(0, 0, 60, 30));
    memory.SelectObject(&one);
    memory.EraseRect(CRect(0, 0, 60, 30));
    EXPECT_EQ(Inked(PixelsOf(one)), "nothing");
}

TEST(MemoryContext, OutlivesItsBitmapAndTheBitmapItsContext) {
    CBrush brush(COLORREF{0});
    CBitmap kept;
    kept.CreateCompatibleBitmap(nullptr, 4, 4);
    Canvas canvas(4, 4);
    CDC memory, second;
    {
        CBitmap gone;
        gone.CreateCompatibleBitmap(nullptr, 4, 4);
        memory.SelectObject(&gone);
        memory.FillRect(CRect(0, 0, 2, 2), &brush);
    }
    EXPECT_FALSE(canvas.dc.BitBlt(0, 0, 4, 4, &memory, 0, 0, SRCCOPY));
    memory.FillRect(CRect(0, 0, 2, 2), &brush);
    EXPECT_THAT(canvas.log.TakeLog(), ElementsAre("exception at CDC::FillRect() - DeadContext"));
    memory.SelectObject(&kept);
    second.SelectObject(&kept); // both draw into it
    memory.FillRect(CRect(0, 0, 2, 2), &brush);
    memory.DeleteDC();
    second.FillRect(CRect(2, 2, 4, 4), &brush);
    second.CreateCompatibleDC(nullptr);
    EXPECT_EQ(second.GetSafeHdc(), nullptr);
    EXPECT_THAT(PixelGrid(PixelsOf(kept)), ElementsAre("##..", "##..", "..##", "..##"));
    memory.SelectObject(&kept);
    HDC handle = memory.Detach(); // good while the bitmap lives
    CDC::FromHandle(handle)->FillRect(CRect(0, 2, 2, 4), &brush);
    CDC::FromHandle(nullptr);
    EXPECT_THAT(PixelGrid(PixelsOf(kept)), ElementsAre("##..", "##..", "####", "####"));
}

TEST(PatternBrush, KeepsThePictureThatTheBitmapHadThenAndFillsWithItsColour) {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(nullptr, 2, 1);
    CDC memory;
    memory.SelectObject(&bitmap);
    memory.SetPixel(0, 0, 0);
    CBrush brush(&bitmap);
    memory.SetPixel(1, 0, 0);
    tagLOGBRUSH record{};
    ASSERT_TRUE(brush.GetLogBrush(&record));
    EXPECT_EQ(record.lbStyle, unsigned{BS_NULL});
    EXPECT_THAT(PixelGrid(reinterpret_cast<vm::Image*>(record.lbHatch)->Pixels()),
                ElementsAre("#."));
    Canvas canvas(2, 1);
    canvas.dc.FillRect(CRect(0, 0, 2, 1), &brush);
    EXPECT_THAT(canvas.Picture(), ElementsAre("##"));
}
