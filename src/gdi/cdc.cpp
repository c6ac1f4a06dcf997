// Life and state of the device context. Selection is in cdcObjects.cpp and cdcBitmaps.cpp, drawing in
// cdcShapes.cpp, cdcText.cpp and cdcBlits.cpp, clipping in cdcClip.cpp.
#include "gdi/cdc.h"

#include <cmath>
#include <utility>

#include <vmcore/gdi/syscolors.h>

#include "gdi/selection.h"
#include "platform/Image.h"

namespace {

constexpr unsigned int kFirstAlignment = TA_NOUPDATECP | TA_TOP | TA_LEFT;

} // namespace

CDC::CDC()
    : m_hDC(nullptr), m_contextKind(BorrowedContext), m_textAlign(kFirstAlignment), m_rop2(0),
      m_stretchBltMode(0), m_bkMode(0), m_mapMode(0), m_textColor(RGB(0, 0, 0)),
      m_bkColor(RGB(255, 255, 255)), m_hFont(nullptr), m_pFont(nullptr),
      m_hBrush(GetStockObject(WHITE_BRUSH)), m_pBrush(nullptr), m_hPen(nullptr), m_pPen(nullptr),
      m_faceNumber(0), m_metrics{}, m_x(0), m_y(0), m_imageSlot(nullptr), m_pixelBuffer(nullptr),
      m_pixelBufferSize(0), m_colorSpace(GetColorSpaceRef()), m_flag(0) {
    SelectStockObject(BLACK_PEN);
    ResetColors();
    vm::AddDeviceContext(*this);
}

CDC::~CDC() {
    vm::RemoveDeviceContext(*this);
    LetGo();
    delete[] m_pixelBuffer;
}

void CDC::ResetColors() {
    m_textWinColor.SetColorRef(m_textColor);
    m_bkWinColor.SetColorRef(m_bkColor);
    m_penWinColor.SetColorRef(m_hPen ? PenRecord()->elpColor : 0);
    m_brushWinColor.SetColorRef(m_hBrush ? BrushRecord()->lbColor : 0);
    m_transparent.MakeTransparent();
}

BOOL CDC::Attach(HDC handle) {
    if (!vm::IsContext(handle)) return FALSE;
    return vm::WithContext(handle, "CDC::Attach()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        context.Retain();
        LetGo();
        m_hDC = handle;
        m_contextKind = BorrowedContext;
        context.SetFont(vm::FirstFace());
        context.SetTextMode(vm::TextMode::Fill);
        context.SetLineWidth(1);
        context.SetFillColor(WinColor().GetPlatformColor());
        context.SetStrokeColor(WinColor().GetPlatformColor());
        ResetColors();
        m_bkMode = TRANSPARENT;
        return TRUE;
    });
}

HDC CDC::Detach() {
    if (m_hDC) m_hDC->Release();
    return std::exchange(m_hDC, nullptr);
}

CDC* CDC::FromHandle(HDC handle) {
    static auto* const s_shared = new CDC;
    if (!s_shared->Attach(handle)) s_shared->Detach();
    return s_shared;
}

HDC CDC::GetSafeHdc() const {
    return m_hDC;
}

// A bitmap that nobody draws into any more needs no context.
void CDC::LetGo() {
    vm::Image* const bitmap = m_hDC ? m_hDC->Bitmap() : nullptr;
    Detach();
    if (bitmap) bitmap->CloseUnusedContext();
    m_imageSlot = nullptr;
}

BOOL CDC::CreateCompatibleDC(CDC*) {
    LetGo();
    return TRUE;
}

BOOL CDC::DeleteDC() {
    LetGo();
    delete[] std::exchange(m_pixelBuffer, nullptr);
    m_pixelBufferSize = 0;
    return TRUE;
}

COLORREF CDC::SetTextColor(COLORREF color) {
    m_textWinColor.SetColorRef(color);
    return std::exchange(m_textColor, color);
}

COLORREF CDC::SetBkColor(COLORREF color) {
    m_bkWinColor.SetColorRef(color);
    return std::exchange(m_bkColor, color);
}

int CDC::SetBkMode(int mode) {
    return m_bkMode = mode;
}

int CDC::SetROP2(int mode) {
    return m_rop2 = mode;
}

int CDC::SetStretchBltMode(int mode) {
    return m_stretchBltMode = mode;
}

int CDC::SetMapMode(int mode) {
    return m_mapMode = mode;
}

unsigned int CDC::SetTextAlign(unsigned int flags) {
    return std::exchange(m_textAlign, flags);
}

void CDC::SetAlphaTransparency(int transparency) {
    vm::WithContext(m_hDC, "CDC::SetAlphaTransparency()",
                    [&](auto& context) { context.SetAlpha(1 - transparency / 255.0); });
}
