// The library, through the public calls of CDC.
#include <vmcore/app/lifecycle.h>
#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CDC.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include "Drawer.h"
#include "platform/GraphicsContext.h"

namespace bench {
namespace {

// The sheets as artwork of a bundle, each selected into a memory context.
struct Sheets {
    Sheets() {
        const QTemporaryDir folder;
        const QString resources = folder.filePath("Art.app/Contents/Resources");
        QDir().mkpath(resources);
        AfxSetDVBundle(VMBundleWithPath(folder.filePath("Art.app").toUtf8().constData()));
        for (unsigned int i = 0; i < contexts.size(); ++i) {
            SheetPixels(static_cast<Sheet>(i))
                .save(resources + QString("/Bitmap_%1.png").arg(i + 1), "png");
            bitmaps[i].LoadBitmap(i + 1);
            contexts[i].SelectObject(&bitmaps[i]);
        }
        AfxSetDVBundle(nullptr);
    }
    std::array<CBitmap, 3> bitmaps;
    std::array<CDC, 3> contexts;
};

// The objects that a program keeps for as long as it runs.
struct Objects {
    Objects() {
        for (std::size_t i = 0; i < kPalette.size(); ++i) {
            const std::uint32_t rgb = kPalette[i];
            const COLORREF color = RGB(rgb >> 16 & 255, rgb >> 8 & 255, rgb & 255);
            colors[i] = color;
            brushes[i].CreateSolidBrush(color);
            pens[i].CreatePen(PS_SOLID, 1, color);
        }
        font.CreateFont(kTextSize, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    }
    std::array<COLORREF, kPalette.size()> colors;
    std::array<CBrush, kPalette.size()> brushes;
    std::array<CPen, kPalette.size()> pens;
    CFont font;
    Sheets sheets;
};

Objects& Kept() {
    static auto* const s_objects = new Objects;
    return *s_objects;
}

class Ours : public Drawer {
public:
    explicit Ours(CDC& dc) : m_dc(dc), m_kept(Kept()) { m_dc.SelectObject(&m_kept.font); }

    void Fill(const Mark& mark) override {
        m_dc.FillRect(CRect(mark.left, mark.top, mark.right, mark.bottom),
                      &m_kept.brushes[mark.color]);
    }
    void Line(const Mark& mark) override {
        m_dc.SelectObject(&m_kept.pens[mark.color]);
        m_dc.MoveTo(mark.left, mark.top);
        m_dc.LineTo(mark.right, mark.bottom);
    }
    void Frame(const Mark& mark) override {
        m_dc.FrameRect(CRect(mark.left, mark.top, mark.right, mark.bottom),
                       &m_kept.brushes[mark.color]);
    }
    void Ellipse(const Mark& mark) override {
        m_dc.SelectObject(&m_kept.brushes[mark.color]);
        m_dc.SelectObject(&m_kept.pens[(mark.color + 1) % kPalette.size()]);
        m_dc.Ellipse(mark.left, mark.top, mark.right, mark.bottom);
    }
    void Text(const Mark& mark, std::string_view text) override {
        m_dc.SetTextColor(m_kept.colors[mark.color]);
        m_dc.TextOut(mark.left, mark.top, text.data(), static_cast<int>(text.size()));
    }
    int TextWidth(std::string_view text) override {
        return m_dc.TextWidth(m_dc.GetSafeHdc(), text.data(), static_cast<int>(text.size()));
    }

    void Blit(const Mark& mark, const Piece& piece) override {
        CDC* const sheet = &m_kept.sheets.contexts[static_cast<std::size_t>(piece.sheet)];
        const int width = mark.right - mark.left, height = mark.bottom - mark.top;
        if (piece.sheet == Sheet::Keyed)
            m_dc.BitBltTransparent(mark.left, mark.top, width, height, sheet, piece.x, piece.y,
                                   RGB(kKey >> 16, kKey >> 8 & 255, kKey & 255));
        else if (piece.half)
            m_dc.BitBltX2(mark.left, mark.top, width, height, sheet, piece.x, piece.y, SRCCOPY);
        else
            m_dc.BitBlt(mark.left, mark.top, width, height, sheet, piece.x, piece.y, SRCCOPY);
    }

private:
    CDC& m_dc;
    Objects& m_kept;
};

// Holds what a window's paint would hold.
class OnImage {
protected:
    explicit OnImage(QImage& image)
        : m_target(std::make_shared<vm::PaintTarget>(&image)),
          m_context(vm::GraphicsContext::ForView(m_target, {}, QRegion(image.rect()))) {
        m_ownDC.Attach(m_context);
    }
    ~OnImage() {
        m_ownDC.Detach();
        m_target->End();
        m_context->Release();
    }
    std::shared_ptr<vm::PaintTarget> m_target;
    vm::GraphicsContext* m_context;
    CDC m_ownDC;
};

class OursOnImage : private OnImage, public Ours {
public:
    explicit OursOnImage(QImage& image) : OnImage(image), Ours(m_ownDC) {}
};

} // namespace

std::unique_ptr<Drawer> OursOn(QImage& image) {
    return std::make_unique<OursOnImage>(image);
}

std::unique_ptr<Drawer> OursWith(CDC& dc) {
    return std::make_unique<Ours>(dc);
}

} // namespace bench
