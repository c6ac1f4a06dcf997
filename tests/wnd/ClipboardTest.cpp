#include <vmcore/wnd/clipboard.h>

#include <stdexcept>

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtGui/QClipboard>
#include <QtGui/QImage>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPaintDC.h>
#include <vmcore/gdi/CPen.h>

#include "RecordingWindow.h"
#include "platform/GraphicsContext.h"
#include "support/TemporaryHome.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

// What other programs make of the clipboard's page.
class CopiedPage {
public:
    CopiedPage() {
        const QMimeData* data = GetPasteboard()->mimeData();
        EXPECT_EQ(data->formats(), QStringList("application/pdf"));
        m_file = m_home.Write("page.pdf", data->data("application/pdf").toStdString());
    }
    std::string Info() const { return Run("pdfinfo", {m_file.c_str()}); }
    std::string Fonts() const { return Run("pdffonts", {m_file.c_str()}); }
    /// The words with their places, in points.
    std::string Words() const { return Run("pdftotext", {"-bbox", m_file.c_str(), "-"}); }
    /// The page at `scale` pixels a point.
    QImage Picture(int scale) const {
        const std::string base = (m_home.Path() / "page").string();
        const std::string density = std::to_string(72 * scale);
        Run("pdftoppm",
            {"-r", density.c_str(), "-png", "-singlefile", m_file.c_str(), base.c_str()});
        return QImage(QString::fromStdString(base + ".png")).convertToFormat(QImage::Format_RGB32);
    }

private:
    static std::string Run(const char* program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished()) << program << " (package poppler-utils)";
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        EXPECT_EQ(process.readAllStandardError().toStdString(), "");
        return process.readAllStandardOutput().toStdString();
    }
    TemporaryHome m_home;
    std::string m_file;
};

class Clipboard : public WindowFixture {};

} // namespace

TEST_F(Clipboard, WindowBecomesAPageThatIsUprightWithTextThatIsText) {
    CFont font;
    font.CreateFont(20, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial Bold");
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        CPaintDC dc(&child);
        EXPECT_EQ(dc.m_ps.rcPaint.right, 320);
        CBrush red(RGB(255, 0, 0));
        dc.FillRect(CRect(10, 20, 60, 40), &red);
        dc.SetAlphaTransparency(100);
        dc.FillRect(CRect(0, 0, 500, 1), &red);
        dc.SetAlphaTransparency(0);
        dc.SelectObject(&font);
        dc.TextOut(100, 50, "Tempo caf\x8E", 10); // Roman for an e with an acute accent
        dc.SetAlphaTransparency(100);             // does not count for the white paper
        dc.EraseRect(CRect(10, 20, 20, 30));
        return 1;
    };
    AfxCopyWindowToClipboard(&child, 320, 100);
    EXPECT_EQ(child.paintContext, nullptr);
    const CopiedPage page;
    EXPECT_THAT(page.Info(), HasSubstr("Page size:       320 x 100 pts"));
    EXPECT_THAT(page.Info(), HasSubstr("Pages:           1\n"));
    EXPECT_THAT(page.Fonts(),
                MatchesRegex("(.|\n)*LiberationSans-Bold +CID.* yes +[a-z]+ +yes (.|\n)*"));
    EXPECT_THAT(page.Words(), HasSubstr("xMin=\"100.000000\""));
    EXPECT_THAT(page.Words(), HasSubstr(">Tempo</word>"));
    EXPECT_THAT(page.Words(), HasSubstr(">caf\xC3\xA9</word>"));
    const QImage picture = page.Picture(1);
    ASSERT_EQ(picture.size(), QSize(320, 100));
    EXPECT_EQ(picture.pixel(50, 30), qRgb(255, 0, 0));
    EXPECT_EQ(picture.pixel(15, 25), qRgb(255, 255, 255));
    EXPECT_EQ(picture.pixel(50, 70), qRgb(255, 255, 255));
    EXPECT_NEAR(qGreen(picture.pixel(300, 0)), 100, 2);
    QRect ink;
    for (int y = 41; y < 100; ++y)
        for (int x = 0; x < 320; ++x)
            if (qGray(picture.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    EXPECT_NEAR(ink.left(), 100, 2);
    EXPECT_NEAR(ink.top(), 53, 3);
    EXPECT_NEAR(ink.bottom(), 72, 3);
}

TEST_F(Clipboard, BitmapKeepsItsPixels) {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(nullptr, 24, 12);
    CDC memory;
    memory.SelectObject(&bitmap);
    for (int i = 0; i < 24; ++i) memory.SetPixel(i, i / 2, RGB(10 * i, 255 - i, 3 * i));
    AfxCopyBitmapToClipboard(&bitmap);
    const CopiedPage page;
    EXPECT_THAT(page.Info(), HasSubstr("Page size:       24 x 12 pts"));
    const QImage picture = page.Picture(10);
    ASSERT_EQ(picture.size(), QSize(240, 120));
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(picture.pixel(10 * i + 5, 10 * (i / 2) + 5), qRgb(10 * i, 255 - i, 3 * i)) << i;
    EXPECT_EQ(picture.pixel(5, 115), qRgb(255, 255, 255));
}

TEST_F(Clipboard, PageHasTheClientAreaSizeWithoutOneAndNothingHappensWithoutAPicture) {
    RECT client;
    child.GetClientRect(&client);
    AfxCopyWindowToClipboard(&child, 70, 0);
    EXPECT_THAT(CopiedPage().Info(), HasSubstr("Page size:       " + std::to_string(client.right) +
                                               " x " + std::to_string(client.bottom) + " pts"));
    GetPasteboard()->setText("kept");
    CBitmap empty, blank;
    blank.CreateCompatibleBitmap(nullptr, 0, 3);
    AfxCopyWindowToClipboard(nullptr, 10, 10);
    AfxCopyWindowToClipboard(&child, -10, 10);
    AfxCopyBitmapToClipboard(nullptr);
    AfxCopyBitmapToClipboard(&empty);
    AfxCopyBitmapToClipboard(&blank);
    EXPECT_EQ(GetPasteboard()->text(), "kept");
}

TEST_F(Clipboard, HandlerThatThrowsOrDestroysTheWindowLeavesNoContext) {
    child.on[WM_PAINT] = [](WPARAM, LPARAM) -> int { throw std::runtime_error("handler"); };
    EXPECT_THROW(AfxCopyWindowToClipboard(&child, 10, 10), std::runtime_error);
    EXPECT_EQ(child.paintContext, nullptr);
    HDC kept = nullptr;
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        kept = child.GetPaintContext()->Retain();
        return child.DestroyWindow();
    };
    AfxCopyWindowToClipboard(&child, 10, 10);
    EXPECT_EQ(child.paintContext, nullptr);
    LogCapture inner;
    CDC dc;
    dc.Attach(kept);
    dc.LineTo(9, 9); // the page is finished
    EXPECT_THAT(inner.TakeLog(), ElementsAre("exception at CDC::LineTo() - DeadContext"));
    dc.Detach();
    kept->Release();
}

TEST_F(Clipboard, PageIsWrittenToAFileOrNotAtAll) {
    TemporaryHome home;
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        CPaintDC(&child).TextOut(10, 10, "sheet", 5);
        return 1;
    };
    const std::string path = (home.Path() / "page.pdf").string();
    EXPECT_TRUE(AfxSaveWindowAsPDF(&child, 595, 842, path.c_str()));
    EXPECT_THAT(home.Read("page.pdf"), testing::StartsWith("%PDF-"));

    const std::string nowhere = (home.Path() / "none/page.pdf").string();
    EXPECT_FALSE(AfxSaveWindowAsPDF(&child, 595, 842, nowhere.c_str()));
    EXPECT_THAT(log.TakeLog(), ElementsAre("Couldnt write '" + nowhere + "'"));
    EXPECT_FALSE(AfxSaveWindowAsPDF(&child, -1, 842, path.c_str()));
    EXPECT_FALSE(AfxSaveWindowAsPDF(&child, 595, 842, nullptr));
    EXPECT_FALSE(AfxSaveWindowAsPDF(nullptr, 595, 842, path.c_str()));
}
