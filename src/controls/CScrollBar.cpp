#include <vmcore/controls/CScrollBar.h>

#include <algorithm>
#include <limits>

#include <QtCore/QVariant>
#include <QtWidgets/QScrollBar>

#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace {

// The toolkit's bar has a page always, a host's may have none.
constexpr char kPageProperty[] = "page";

QScrollBar* BarOf(const CScrollBar& object) {
    return vm::ControlOf<QScrollBar>(object);
}

int PageOf(const QScrollBar& bar) {
    return bar.property(kPageProperty).toInt();
}

// What of the range is never a position, because the page reaches to its end.
int Covered(int page) {
    return std::max(page - 1, 0);
}

struct Extent {
    int lowest;
    int highest;
    int page;
};

Extent ExtentOf(const QScrollBar& bar) {
    return {bar.minimum(), bar.maximum() + Covered(PageOf(bar)), PageOf(bar)};
}

void SetExtent(QScrollBar& bar, const Extent& extent) {
    const vm::ProgramChange change;
    const long long length = std::max(0LL, static_cast<long long>(extent.highest) - extent.lowest);
    const int page =
        static_cast<int>(std::clamp<long long>(extent.page, 0, std::min(length + 1, 0x7FFFFFFFLL)));
    bar.setProperty(kPageProperty, page);
    bar.setRange(extent.lowest, std::max(extent.lowest, extent.highest) - Covered(page));
    if (page > 0) bar.setPageStep(page);
}

void SetPosition(QScrollBar& bar, int position) {
    const vm::ProgramChange change;
    bar.setValue(position);
}

} // namespace

BOOL CScrollBar::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* bar = new QScrollBar(createStyle & SBS_VERT ? Qt::Vertical : Qt::Horizontal);
    bar->setRange(0, 100);
    return vm::AdoptControl(*this, bar, parent, rect, createStyle, id);
}

int CScrollBar::GetScrollPos() const {
    const QScrollBar* const bar = BarOf(*this);
    return bar ? bar->value() : 0;
}

int CScrollBar::SetScrollPos(int position, BOOL) {
    const int before = GetScrollPos();
    if (QScrollBar* bar = BarOf(*this)) SetPosition(*bar, position);
    return before;
}

void CScrollBar::GetScrollRange(int* lowest, int* highest) const {
    const QScrollBar* const bar = BarOf(*this);
    const Extent extent = bar ? ExtentOf(*bar) : Extent{0, 0, 0};
    if (lowest) *lowest = extent.lowest;
    if (highest) *highest = extent.highest;
}

void CScrollBar::SetScrollRange(int lowest, int highest, BOOL) {
    if (QScrollBar* bar = BarOf(*this)) SetExtent(*bar, {lowest, highest, PageOf(*bar)});
}

BOOL CScrollBar::SetScrollInfo(const SCROLLINFO* info, BOOL) {
    QScrollBar* const bar = BarOf(*this);
    if (!bar || !info) return FALSE;
    Extent extent = ExtentOf(*bar);
    if (info->fMask & SIF_RANGE) {
        extent.lowest = info->nMin;
        extent.highest = info->nMax;
    }
    if (info->fMask & SIF_PAGE)
        extent.page =
            static_cast<int>(std::min<UINT>(info->nPage, std::numeric_limits<int>::max()));
    SetExtent(*bar, extent);
    if (info->fMask & SIF_POS) SetPosition(*bar, info->nPos);
    if (info->fMask & SIF_DISABLENOSCROLL) bar->setEnabled(bar->minimum() < bar->maximum());
    return TRUE;
}

BOOL CScrollBar::GetScrollInfo(SCROLLINFO* info, UINT mask) const {
    const QScrollBar* const bar = BarOf(*this);
    if (!bar || !info) return FALSE;
    const Extent extent = ExtentOf(*bar);
    info->fMask = mask;
    if (mask & SIF_RANGE) {
        info->nMin = extent.lowest;
        info->nMax = extent.highest;
    }
    if (mask & SIF_PAGE) info->nPage = static_cast<UINT>(extent.page);
    if (mask & SIF_POS) info->nPos = bar->value();
    if (mask & SIF_TRACKPOS) info->nTrackPos = bar->sliderPosition();
    return TRUE;
}

int CScrollBar::GetScrollLimit() const {
    const QScrollBar* const bar = BarOf(*this);
    return bar ? bar->maximum() : 0;
}

void CScrollBar::ShowScrollBar(BOOL show) {
    if (QScrollBar* bar = BarOf(*this)) bar->setVisible(show != 0);
}

BOOL CScrollBar::EnableScrollBar(UINT arrows) {
    QScrollBar* const bar = BarOf(*this);
    if (!bar || (arrows != ESB_ENABLE_BOTH && arrows != ESB_DISABLE_BOTH)) return FALSE;
    bar->setEnabled(arrows == ESB_ENABLE_BOTH);
    return TRUE;
}
