// What is selected into a device context, and how it is applied to the graphics context.
#include "gdi/cdc.h"

#include <initializer_list>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>
#include <vmcore/gdi/syscolors.h>

#include "core/log.h"
#include "gdi/faceRules.h"
#include "gdi/selection.h"
#include "platform/messagebox.h"

namespace {

constexpr UINT kOkCancel = 1;

// They stand for a bare handle that was selected, until the next one of the kind is asked for.
struct TemporaryObjects {
    CPen pen;
    CBrush brush;
    CFont font;
};

TemporaryObjects& Temporary() {
    static auto* const s_objects = new TemporaryObjects;
    return *s_objects;
}

template <class Object>
Object* ObjectFor(Object* object, void* handle, Object& temporary) {
    if (object || !handle) return object;
    temporary.Attach(handle);
    return &temporary;
}

// Stores the new selection and returns the object that stands for the old one. The new handle is
// read first: loading the shared object may change what it holds.
template <class Object>
Object* Exchange(void*& handle, Object*& object, void* newHandle, Object* newObject,
                 Object& temporary) {
    Object* const before = ObjectFor(object, handle, temporary);
    handle = newHandle;
    object = newObject;
    return before;
}

bool IsEmpty(const CGdiObject* object) {
    return !object || !object->m_hObject;
}

} // namespace

CPen* CDC::SelectObject(CPen* pen) {
    if (IsEmpty(pen)) return nullptr;
    return Exchange(m_hPen, m_pPen, pen->m_hObject, pen, Temporary().pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    if (IsEmpty(brush)) return nullptr;
    return Exchange(m_hBrush, m_pBrush, brush->m_hObject, brush, Temporary().brush);
}

CFont* CDC::SelectObject(CFont* font) {
    if (IsEmpty(font)) return nullptr;
    CFont* const before = Exchange(m_hFont, m_pFont, font->m_hObject, font, Temporary().font);
    ApplyFont();
    return before;
}

int CDC::SelectObject(CRgn* region) {
    return !IsEmpty(region);
}

void* CDC::SelectObject(void*) {
    return nullptr;
}

CGdiObject* CDC::SelectStockObject(int index) {
    if (index >= WHITE_BRUSH && index <= NULL_BRUSH)
        return Exchange<CBrush>(m_hBrush, m_pBrush, GetStockObject(index), nullptr,
                                Temporary().brush);
    if (index >= WHITE_PEN && index <= NULL_PEN)
        return Exchange<CPen>(m_hPen, m_pPen, GetStockObject(index), nullptr, Temporary().pen);
    vm::ShowMessageBox(nullptr, "CDC::SelectStockObject out of range selection", "VMError", 0);
    return nullptr;
}

CFont* CDC::GetCurrentFont() const {
    return ObjectFor(m_pFont, m_hFont, Temporary().font);
}

void CDC::ApplyPen() {
    vm::WithContext(m_hDC, "CDC::ApplyPen()", [&](auto& context) { UsePen(context); });
}

void CDC::ApplyBrush() {
    vm::WithContext(m_hDC, "CDC::ApplyBrush()", [&](auto& context) { UseBrush(context); });
}

void CDC::UsePen(vm::GraphicsContext& context) {
    const tagEXTLOGPEN* const pen = PenRecord();
    if (!pen) return;
    if (pen->elpPenStyle == PS_NULL)
        return context.SetStrokeColor(m_transparent.GetPlatformColor());
    if (pen->elpPenStyle != PS_SOLID)
        vm::PrintError("CDC::ApplyPen() Internal error! undefined pen style = %ld. Setting Pen to "
                       "PS_SOLID\n",
                       static_cast<long>(pen->elpPenStyle));
    if (m_penWinColor.GetColorRef() != pen->elpColor) m_penWinColor.SetColorRef(pen->elpColor);
    context.SetStrokeColor(m_penWinColor.GetPlatformColor());
    context.SetLineWidth(LOWORD(pen->elpWidth)); // stock pens hold two 16-bit values
}

void CDC::UseBrush(vm::GraphicsContext& context) {
    const tagLOGBRUSH* const brush = BrushRecord();
    if (!brush || brush->lbStyle == BS_NULL) return;
    if (brush->lbStyle != BS_SOLID) {
        const std::string text = vm::Format("CDC::SelectObject() - undefined BRUSH style = %d",
                                            static_cast<int>(brush->lbStyle));
        vm::ShowMessageBox(nullptr, text.c_str(), "VM Core", kOkCancel);
        return;
    }
    if (m_brushWinColor.GetColorRef() != brush->lbColor)
        m_brushWinColor.SetColorRef(brush->lbColor);
    context.SetFillColor(m_brushWinColor.GetPlatformColor());
}

// The face is found again for a record without a platform font: a stock font, or one made before
// the application object.
void CDC::ApplyFont() {
    if (!m_hFont) return;
    vm::Guarded(vm::LogModule::Gdi, "CDC::ApplyFont()", [&] {
        const tagFONTRECORD& record = *FontRecord();
        m_faceNumber = vm::FaceNumberOf(record.lfFaceName);
        if (record.font) GetTextMetrics(&m_metrics);
        vm::GraphicsContext& context = vm::ContextOf(m_hDC);
        if (const vm::FontFace* face = SelectedFace()) context.SetFont(face);
    });
}

void CDC::ApplyTextColor() {
    vm::WithContext(m_hDC, "CDC::TextColor()", [&](auto& context) {
        context.SetFillColor(m_textWinColor.GetPlatformColor());
    });
}

// An object may go while its record stays: then the record's handle stays selected.
void CDC::Deselect(const void* record, const void* object) {
    if (record && m_hPen == record) m_hPen = GetStockObject(BLACK_PEN);
    if (record && m_hBrush == record) m_hBrush = GetStockObject(WHITE_BRUSH);
    if (record && m_hFont == record) m_hFont = nullptr;
    if (m_pPen == object) m_pPen = nullptr;
    if (m_pBrush == object) m_pBrush = nullptr;
    if (m_pFont == object) m_pFont = nullptr;
}

void vm::ForgetHandle(const void* record) {
    TemporaryObjects& objects = Temporary();
    for (CGdiObject* object :
         std::initializer_list<CGdiObject*>{&objects.pen, &objects.brush, &objects.font})
        if (object->m_hObject == record) object->Detach();
}

void CDCGdiCleanup() {
    Temporary().pen.Detach();
    Temporary().brush.Detach();
    Temporary().font.Detach();
}

BOOL isSystemDCObject(void* object) {
    const TemporaryObjects& objects = Temporary();
    return object == &objects.pen || object == &objects.brush || object == &objects.font;
}
