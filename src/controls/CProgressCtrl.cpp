#include <vmcore/controls/CProgressCtrl.h>

#include <algorithm>
#include <cstdint>

#include <QtCore/QPoint>
#include <QtCore/QVariant>
#include <QtWidgets/QProgressBar>

#include "wnd/nativeControl.h"

namespace {

constexpr int kStep = 10;
constexpr char kStepProperty[] = "step";
constexpr char kKeptProperty[] = "range"; // and position, while the marquee runs

QProgressBar* BarOf(const CProgressCtrl& object) {
    return vm::ControlOf<QProgressBar>(object);
}

struct Progress {
    int lowest;
    int highest;
    int position;
};

// A bar without a range is one that moves without end.
bool IsMarquee(const QProgressBar& bar) {
    return bar.minimum() == 0 && bar.maximum() == 0;
}

Progress StateOf(const QProgressBar& bar) {
    const QVariantList kept = bar.property(kKeptProperty).toList();
    if (IsMarquee(bar) && kept.size() == 3)
        return {kept[0].toInt(), kept[1].toInt(), kept[2].toInt()};
    return {bar.minimum(), bar.maximum(), std::max(bar.value(), bar.minimum())};
}

// The toolkit draws a new position at once.
void Show(QProgressBar& bar, Progress state) {
    state.highest = std::max(state.highest, state.lowest + 1);
    state.position = std::clamp(state.position, state.lowest, state.highest);
    if (IsMarquee(bar)) {
        bar.setProperty(kKeptProperty, QVariantList{state.lowest, state.highest, state.position});
        return;
    }
    bar.setRange(state.lowest, state.highest);
    bar.setValue(state.position);
}

int Sum(int position, int distance) {
    const std::int64_t sum = std::int64_t{position} + distance;
    return static_cast<int>(std::clamp<std::int64_t>(sum, INT32_MIN, INT32_MAX));
}

} // namespace

BOOL CProgressCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* bar = new QProgressBar;
    bar->setTextVisible(false);
    bar->setOrientation(createStyle & PBS_VERTICAL ? Qt::Vertical : Qt::Horizontal);
    Show(*bar, {0, 100, 0});
    return vm::AdoptControl(*this, bar, parent, rect, createStyle, id);
}

void CProgressCtrl::SetRange(short lowest, short highest) {
    SetRange32(lowest, highest);
}
void CProgressCtrl::SetRange32(int lowest, int highest) {
    if (QProgressBar* bar = BarOf(*this)) Show(*bar, {lowest, highest, StateOf(*bar).position});
}
void CProgressCtrl::GetRange(int& lowest, int& highest) const {
    const QProgressBar* const bar = BarOf(*this);
    const Progress state = bar ? StateOf(*bar) : Progress{0, 0, 0};
    lowest = state.lowest;
    highest = state.highest;
}

int CProgressCtrl::GetPos() const {
    const QProgressBar* const bar = BarOf(*this);
    return bar ? StateOf(*bar).position : 0;
}

int CProgressCtrl::SetPos(int position) {
    QProgressBar* const bar = BarOf(*this);
    if (!bar) return 0;
    const Progress before = StateOf(*bar);
    Show(*bar, {before.lowest, before.highest, position});
    return before.position;
}

int CProgressCtrl::OffsetPos(int distance) {
    return SetPos(Sum(GetPos(), distance));
}

int CProgressCtrl::SetStep(int step) {
    QProgressBar* const bar = BarOf(*this);
    if (!bar) return 0;
    const QVariant before = bar->property(kStepProperty);
    bar->setProperty(kStepProperty, step);
    return before.isValid() ? before.toInt() : kStep;
}

int CProgressCtrl::StepIt() {
    const QProgressBar* const bar = BarOf(*this);
    if (!bar) return 0;
    const QVariant step = bar->property(kStepProperty);
    const Progress state = StateOf(*bar);
    const int next = Sum(state.position, step.isValid() ? step.toInt() : kStep);
    if (next > state.highest) return SetPos(Sum(state.lowest, next - state.highest));
    if (next < state.lowest) return SetPos(Sum(state.highest, next - state.lowest));
    return SetPos(next);
}

BOOL CProgressCtrl::SetMarquee(BOOL on, int) {
    QProgressBar* const bar = BarOf(*this);
    if (!bar) return FALSE;
    const Progress state = StateOf(*bar);
    if (on) {
        bar->setProperty(kKeptProperty, QVariantList{state.lowest, state.highest, state.position});
        bar->setRange(0, 0);
    } else if (IsMarquee(*bar)) {
        bar->setRange(0, 1);
        Show(*bar, state);
    }
    return TRUE;
}
