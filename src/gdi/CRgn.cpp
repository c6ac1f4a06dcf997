// The list of shapes; how it is drawn and clipped to is regionPath's.
#include <vmcore/gdi/CRgn.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>
#include <vector>

#include "gdi/records.h"
#include "gdi/regionPath.h"
#include "platform/messagebox.h"

namespace {

int WordsOf(const LONG* shape) {
    switch (shape[0]) {
    case RGNSHAPE_ROUNDRECT:
        return 7;
    case RGNSHAPE_POLYGON:
        return 2 + 2 * shape[1];
    case RGNSHAPE_COMBINE:
        return 1;
    default:
        return 5;
    }
}

void FreeList(vm::RegionRecord* list) {
    if (!list) return;
    for (int i = 0; i < list->count; ++i) std::free(list->shapes[i]);
    std::free(list->shapes);
    std::free(list);
}

bool Grow(vm::RegionRecord& list) {
    if (list.count < list.capacity) return true;
    const int capacity = std::max(4, 2 * list.capacity);
    void* const grown =
        std::realloc(list.shapes, static_cast<std::size_t>(capacity) * sizeof(LONG*));
    if (!grown) return false;
    list.shapes = static_cast<LONG**>(grown);
    list.capacity = capacity;
    return true;
}

} // namespace

CRgn::CRgn() : CGdiObject(RegionKind) {}

CRgn::~CRgn() {
    ClearCommandList();
}

vm::RegionRecord* CRgn::Record() const {
    return static_cast<vm::RegionRecord*>(m_hObject);
}

bool CRgn::Append(const LONG* words, int count) {
    if (!m_hObject) Attach(vm::NewRecord<vm::RegionRecord>());
    if (!m_hObject || !Grow(*Record())) return false;
    const auto size = static_cast<std::size_t>(count) * sizeof(LONG);
    auto* shape = static_cast<LONG*>(std::malloc(size));
    if (!shape) return false;
    std::copy_n(words, count, shape);
    Record()->shapes[Record()->count++] = shape;
    return true;
}

bool CRgn::AppendCopies(const CRgn& source) {
    for (int i = 0; i < source.GetShapeCount(); ++i)
        if (!Append(source.GetShape(i), WordsOf(source.GetShape(i)))) return false;
    return true;
}

BOOL CRgn::CreateRectRgn(int left, int top, int right, int bottom) {
    const LONG words[] = {RGNSHAPE_RECT, left, top, right, bottom};
    return Append(words, std::size(words));
}

BOOL CRgn::CreateRectRgnIndirect(const tagRECT* rect) {
    return rect ? CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom) : FALSE;
}

BOOL CRgn::CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height) {
    const LONG words[] = {RGNSHAPE_ROUNDRECT, left, top, right, bottom, width, height};
    return Append(words, std::size(words));
}

BOOL CRgn::CreateEllipticRgn(int left, int top, int right, int bottom) {
    const LONG words[] = {RGNSHAPE_ELLIPSE, left, top, right, bottom};
    return Append(words, std::size(words));
}

BOOL CRgn::CreatePolygonRgn(tagPOINT* points, int count, int) {
    std::vector<LONG> words = {RGNSHAPE_POLYGON, points ? std::max(count, 0) : 0};
    for (int i = 0; i < words[1]; ++i) {
        words.push_back(points[i].x);
        words.push_back(points[i].y);
    }
    return Append(words.data(), static_cast<int>(words.size()));
}

void CRgn::SetRectRgn(int left, int top, int right, int bottom) {
    ClearCommandList();
    CreateRectRgn(left, top, right, bottom);
}

int CRgn::CombineRgn(CRgn* a, CRgn* b, int mode) {
    if (!a || !b) return 0;
    CRgn result;
    const bool complete = mode == RGN_XOR || mode == RGN_DIFF ? result.AppendPixels(*a, *b, mode)
                                                              : result.AppendLists(*a, *b, mode);
    if (a != this) a->ClearCommandList();
    std::swap(m_hObject, result.m_hObject);
    return complete;
}

bool CRgn::AppendLists(const CRgn& a, const CRgn& b, int mode) {
    const LONG mark = RGNSHAPE_COMBINE;
    if (!AppendCopies(a)) return false;
    if (mode == RGN_COPY) return true;
    return (mode != RGN_AND || Append(&mark, 1)) && AppendCopies(b);
}

// A list of shapes has no way to say "not": what is left are rectangles of whole pixels.
bool CRgn::AppendPixels(const CRgn& a, const CRgn& b, int mode) {
    const QRegion first = vm::RegionPixels(a), second = vm::RegionPixels(b);
    for (const QRect& rect : mode == RGN_XOR ? first.xored(second) : first.subtracted(second))
        if (!CreateRectRgn(rect.left(), rect.top(), rect.left() + rect.width(),
                           rect.top() + rect.height()))
            return false;
    return true;
}

BOOL CRgn::RectInRegion(const tagRECT*) const {
    if (GetShapeCount() == 0) return FALSE;
    vm::ShowMessageBox(nullptr, "CRgn::RectInRegion call not implemented", "Internal error", 0);
    return FALSE;
}

BOOL CRgn::DeleteObject() {
    if (!m_hObject) return FALSE;
    ClearCommandList();
    return TRUE;
}

void CRgn::ClearCommandList() {
    FreeList(static_cast<vm::RegionRecord*>(Detach()));
}

int CRgn::GetShapeCount() const {
    return m_hObject ? Record()->count : 0;
}

const LONG* CRgn::GetShape(int index) const {
    return index >= 0 && index < GetShapeCount() ? Record()->shapes[index] : nullptr;
}
