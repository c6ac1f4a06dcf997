#include <vmcore/gdi/CImage.h>

#include <utility>

#include <QtCore/QFile>

#include <vmcore/gdi/CBitmap.h>

#include "gdi/blitRule.h"
#include "gdi/cdc.h"
#include "platform/Image.h"
#include "platform/pngImage.h"

namespace {

vm::BlitRects SameSize(int x, int y, int width, int height, int sourceX, int sourceY) {
    return {QRectF(x, y, width, height), QRectF(sourceX, sourceY, width, height)};
}

} // namespace

HRESULT CImage::Load(const char* path) {
    Destroy();
    if (path) m_image = vm::Image::Make(vm::ReadPng(QFile::decodeName(path)));
    return IsNull() ? E_FAIL : S_OK;
}

BOOL CImage::LoadFromResource(HINSTANCE, unsigned int id) {
    Destroy();
    CBitmap bitmap;
    tagBITMAP record{};
    if (bitmap.LoadBitmap(id) && bitmap.GetBitmap(&record) && record.bmBits)
        m_image = record.bmBits->Retain();
    return !IsNull();
}

void CImage::Destroy() {
    if (m_image) std::exchange(m_image, nullptr)->Release();
}

int CImage::GetWidth() const {
    return m_image ? m_image->Pixels().width() : 0;
}

int CImage::GetHeight() const {
    return m_image ? m_image->Pixels().height() : 0;
}

int CImage::GetBPP() const {
    return m_image ? m_image->Pixels().depth() : 0;
}

vm::BlitRects CImage::WholeAt(int x, int y) const {
    return SameSize(x, y, GetWidth(), GetHeight(), 0, 0);
}

BOOL CImage::Draw(HDC dc, const vm::BlitRects& rects) const {
    if (!m_image || !vm::IsContext(dc)) return FALSE;
    return vm::WithContext(dc, "CImage::BitBlt()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        return vm::DrawPart(context, m_image->Pixels(), rects);
    });
}

BOOL CImage::Blend(HDC dc, const vm::BlitRects& rects, BYTE alpha) const {
    if (!m_image || !vm::IsContext(dc)) return FALSE;
    dc->SetAlpha(alpha / 255.0);
    const BOOL drawn = Draw(dc, rects);
    dc->SetAlpha(1);
    return drawn;
}

BOOL CImage::BitBlt(HDC dc, int x, int y, DWORD) const {
    return Draw(dc, WholeAt(x, y));
}

BOOL CImage::BitBlt(HDC dc, const POINT& at, DWORD rop) const {
    return BitBlt(dc, at.x, at.y, rop);
}

BOOL CImage::BitBlt(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                    DWORD) const {
    return Draw(dc, SameSize(x, y, width, height, sourceX, sourceY));
}

BOOL CImage::BitBlt(HDC dc, const RECT& target, const POINT& source, DWORD) const {
    const QRectF area = vm::ToRectF(target);
    return Draw(dc, {area, QRectF(QPointF(source.x, source.y), area.size())});
}

BOOL CImage::AlphaBlend(HDC dc, int x, int y, BYTE alpha, BYTE) const {
    return Blend(dc, WholeAt(x, y), alpha);
}

BOOL CImage::AlphaBlend(HDC dc, const POINT& at, BYTE alpha, BYTE) const {
    return Blend(dc, WholeAt(at.x, at.y), alpha);
}

BOOL CImage::AlphaBlend(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                        int sourceWidth, int sourceHeight, BYTE alpha, BYTE) const {
    const QRectF source(sourceX, sourceY, sourceWidth, sourceHeight);
    return Blend(dc, {QRectF(x, y, width, height), source}, alpha);
}

BOOL CImage::AlphaBlend(HDC dc, const RECT& target, const RECT& source, BYTE alpha, BYTE) const {
    return Blend(dc, {vm::ToRectF(target), vm::ToRectF(source)}, alpha);
}
