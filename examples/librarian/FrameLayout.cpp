#include "FrameLayout.h"

#include <algorithm>

#include "FindBar.h"
#include "FontScale.h"
#include "HeaderBand.h"

namespace {

constexpr int kStatusHeight = 20;
constexpr int kTreeWidth = 230;
constexpr int kMonitorHeight = 120;
constexpr int kHexWidth = 590;        // of a whole line
constexpr int kLeastDetail = 200;     // wide
constexpr int kLeastBesideTree = 480; // for the list
constexpr int kEditorBesideTree = 770;
constexpr int kLeastAboveMonitor = 300;
constexpr int kLeastList = 60; // what an editor leaves of it
constexpr int kHexShare = 45;  // per cent of the space of list and hex pane

// Takes a strip of the size away from the rectangle; nothing when `isShown` is false.
CRect TakeTop(CRect& space, int size, bool isShown) {
    if (!isShown) return {};
    const CRect strip(space.left, space.top, space.right, space.top + size);
    space.top += size;
    return strip;
}

CRect TakeBottom(CRect& space, int size, bool isShown) {
    if (!isShown) return {};
    const CRect strip(space.left, space.bottom - size, space.right, space.bottom);
    space.bottom -= size;
    return strip;
}

CRect TakeLeft(CRect& space, int size, bool isShown) {
    if (!isShown) return {};
    const CRect strip(space.left, space.top, space.left + size, space.bottom);
    space.left += size;
    return strip;
}

} // namespace

FrameRects LayOutFrame(int width, int height, const FrameParts& shown) {
    FrameRects rects;
    CRect space(0, 0, width, height);
    rects.status = TakeBottom(space, std::min(Scaled(kStatusHeight), height), true);
    rects.header = TakeTop(space, Scaled(HeaderBand::kHeight), shown.header);
    rects.find = TakeTop(space, Scaled(FindBar::kHeight), shown.find);
    const bool fitsMonitor =
        space.bottom - space.top >= Scaled(kLeastAboveMonitor + kMonitorHeight);
    rects.monitor = TakeBottom(space, Scaled(kMonitorHeight), shown.monitor && fitsMonitor);
    const bool isEditing = shown.editorHeight > 0;
    const int beside = isEditing ? kEditorBesideTree : kLeastBesideTree;
    const bool fitsTree = width >= Scaled(kTreeWidth + beside);
    rects.tree = TakeLeft(space, Scaled(kTreeWidth), shown.tree && fitsTree);

    const int room = std::max(0, static_cast<int>(space.bottom - space.top));
    const int share = room * kHexShare / 100;
    const int most = std::max(0, room - Scaled(kLeastList));
    const int lower = isEditing ? std::min(std::max(share, shown.editorHeight), most) : share;
    CRect panes = TakeBottom(space, lower, isEditing || shown.hex || shown.detail);
    rects.list = space;
    if (isEditing) {
        rects.editor = panes;
        return rects;
    }
    const bool fitsBoth = panes.right - panes.left >= Scaled(kHexWidth + kLeastDetail);
    const bool showsDetail = shown.detail && (fitsBoth || !shown.hex);
    const int hexWidth =
        showsDetail ? Scaled(kHexWidth) : static_cast<int>(panes.right - panes.left);
    rects.hex = TakeLeft(panes, hexWidth, shown.hex);
    if (showsDetail) rects.detail = panes;
    return rects;
}
