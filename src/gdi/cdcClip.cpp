// Clipping.
#include "gdi/cdc.h"

#include <vmcore/gdi/CRgn.h>

#include "gdi/regionPath.h"
#include "platform/messagebox.h"

namespace {

constexpr int kDone = 1;
// What a null region clips to: as good as no clip, but it cannot widen one.
constexpr int kEverywhere = 10000;

} // namespace

void CDC::GetClip() {
    vm::WithContext(m_hDC, "CDC::GetClip()", [](auto& context) { context.Save(); });
}

void CDC::SetClip() {
    vm::WithContext(m_hDC, "CDC::SetClip()", [](auto& context) { context.Restore(); });
}

int CDC::SetClipRect(CRect* rect) {
    if (!rect) return 0;
    return vm::WithContext(m_hDC, "CDC::SetClipRect()", 0, [&](auto& context) {
        context.ClipToRect(vm::ToRectF(*rect));
        return kDone;
    });
}

int CDC::IntersectClipRect(int left, int top, int right, int bottom) {
    return vm::WithContext(m_hDC, "CDC::IntersectClipRect()", 0, [&](auto& context) {
        context.ClipToRect(vm::ToRectF(CRect(left, top, right, bottom)));
        return kDone;
    });
}

int CDC::IntersectClipRect(const tagRECT* rect) {
    return rect ? IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom) : 0;
}

int CDC::SelectClipRgn(CRgn* region) {
    return vm::WithContext(m_hDC, "CDC::SelectClipRgn()", 0, [&](auto& context) {
        if (region)
            vm::ClipToRegion(context, *region);
        else
            context.ClipToRect(QRectF(0, 0, kEverywhere, kEverywhere));
        return kDone;
    });
}

int CDC::SelectClipRgn(CRgn*, int) {
    vm::ShowMessageBox(nullptr, "CDC::SelectClipRgn never called - not implemented", "Msg", 0);
    return 0;
}

int CDC::GetClipBox(CRect* box) {
    if (!box) return 0;
    vm::WithContext(m_hDC, "CDC::GetClipBox()", [&](auto& context) {
        const QRectF clip = context.ClipBoundingBox();
        box->left = static_cast<LONG>(clip.left());
        box->top = static_cast<LONG>(clip.top());
        box->right = static_cast<LONG>(clip.right());
        box->bottom = static_cast<LONG>(clip.bottom());
    });
    return 0;
}
