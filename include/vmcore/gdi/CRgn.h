// Regions. A region is no set of pixels but the list of shapes it was made from, in that order; a
// device context replays it as a path.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

/// What a shape record begins with. All its words are 32-bit.
enum {
    RGNSHAPE_RECT = 0,      ///< then left, top, right, bottom
    RGNSHAPE_ROUNDRECT = 1, ///< then left, top, right, bottom, corner width, corner height
    RGNSHAPE_POLYGON = 2,   ///< then the number of points, then x and y of each
    RGNSHAPE_ELLIPSE = 3,   ///< then left, top, right, bottom
    RGNSHAPE_COMBINE = 4    ///< the shapes so far are to be intersected with those that follow
};

class VM_API CRgn : public CGdiObject {
public:
    CRgn();
    ~CRgn();

    // Each appends one shape: creating twice on the same region adds up, which hosts rely on to
    // build a region from several shapes. All return 1 (0 without memory).
    BOOL CreateRectRgn(int left, int top, int right, int bottom);
    BOOL CreateRectRgnIndirect(const tagRECT* rect);
    BOOL CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height);
    BOOL CreateEllipticRgn(int left, int top, int right, int bottom);
    BOOL CreatePolygonRgn(tagPOINT* points, int count, int fillMode); ///< the fill mode is ignored
    /// Clears the list and appends one rectangle.
    void SetRectRgn(int left, int top, int right, int bottom);

    /// This region becomes the two combined, and `a` is empty then. RGN_OR and any other mode: the
    /// shapes of both. RGN_AND: the same with a combine mark between them. RGN_COPY: those of `a`.
    /// RGN_XOR, RGN_DIFF: rectangles of the pixels that are in only one of the two, or in `a` and
    /// not in `b`. 0 when either is null, and nothing changes.
    int CombineRgn(CRgn* a, CRgn* b, int mode);

    /// Not supported: 0, with a message box unless the region is empty.
    BOOL RectInRegion(const tagRECT* rect) const;

    /// Empties the region. FALSE when it is empty.
    BOOL DeleteObject();
    void ClearCommandList();

    int GetShapeCount() const;
    /// The words of a shape record; null beyond the list.
    const LONG* GetShape(int index) const;

    operator HRGN() const { return m_hObject; }

private:
    bool Append(const LONG* words, int count);
    bool AppendCopies(const CRgn& source);
    bool AppendLists(const CRgn& a, const CRgn& b, int mode);
    bool AppendPixels(const CRgn& a, const CRgn& b, int mode);
    vm::RegionRecord* Record() const;
};
