#include <vmcore/controls/CSliderCtrl.h>

#include <algorithm>
#include <numeric>

#include <QtCore/QVariant>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>

#include "wnd/ControlActions.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace {

constexpr char kSideProperty[] = "tickSide";

QAbstractSlider* SliderOf(const CSliderCtrl& object) {
    auto* slider = vm::ControlOf<QAbstractSlider>(object);
    return qobject_cast<QScrollBar*>(slider) ? nullptr : slider;
}

QSlider::TickPosition SideOf(DWORD style) {
    if (style & TBS_BOTH) return QSlider::TicksBothSides;
    return style & TBS_TOP ? QSlider::TicksAbove : QSlider::TicksBelow;
}

// Where a slider that shows no ticks now has them.
QSlider::TickPosition SideOf(const QSlider& slider) {
    if (slider.tickPosition() != QSlider::NoTicks) return slider.tickPosition();
    const QVariant side = slider.property(kSideProperty);
    return side.isValid() ? static_cast<QSlider::TickPosition>(side.toInt()) : QSlider::TicksBelow;
}

void ShowTicks(QSlider& slider, int interval) {
    slider.setTickInterval(interval);
    slider.setTickPosition(SideOf(slider));
}

int LengthOf(const QAbstractSlider& slider) {
    return slider.maximum() - slider.minimum();
}

} // namespace

BOOL CSliderCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* slider = new QSlider(createStyle & TBS_VERT ? Qt::Vertical : Qt::Horizontal);
    slider->setRange(0, 100);
    slider->setProperty(kSideProperty, static_cast<int>(SideOf(createStyle)));
    if (createStyle & TBS_AUTOTICKS && !(createStyle & TBS_NOTICKS)) ShowTicks(*slider, 1);
    if (!vm::AdoptControl(*this, slider, parent, rect, createStyle, id)) return FALSE;
    SetPos(0);
    return TRUE;
}

void CSliderCtrl::GetRange(int& lowest, int& highest) const {
    lowest = GetRangeMin();
    highest = GetRangeMax();
}
int CSliderCtrl::GetRangeMin() const {
    const QAbstractSlider* const slider = SliderOf(*this);
    return slider ? slider->minimum() : 0;
}
int CSliderCtrl::GetRangeMax() const {
    const QAbstractSlider* const slider = SliderOf(*this);
    return slider ? slider->maximum() : 0;
}

// The position stays, as far as the range goes; a vertical slider counts it from the other end than the
// toolkit does.
void CSliderCtrl::SetRange(int lowest, int highest, BOOL) {
    QAbstractSlider* const slider = SliderOf(*this);
    if (!slider) return;
    const vm::ProgramChange change;
    const int position = GetPos();
    slider->setRange(lowest, highest);
    SetPos(position);
}
void CSliderCtrl::SetRangeMin(int lowest, BOOL) {
    SetRange(lowest, std::max(lowest, GetRangeMax()));
}
void CSliderCtrl::SetRangeMax(int highest, BOOL) {
    SetRange(std::min(highest, GetRangeMin()), highest);
}

int CSliderCtrl::GetPos() const {
    const QAbstractSlider* const slider = SliderOf(*this);
    return slider ? vm::PositionOf(*slider) : 0;
}

void CSliderCtrl::SetPos(int position) {
    QAbstractSlider* const slider = SliderOf(*this);
    if (!slider) return;
    const vm::ProgramChange change;
    const bool isVertical = slider->orientation() == Qt::Vertical;
    slider->setValue(isVertical ? slider->maximum() - position : position);
}

int CSliderCtrl::GetPageSize() const {
    const QAbstractSlider* const slider = SliderOf(*this);
    return slider ? slider->pageStep() : 0;
}
int CSliderCtrl::SetPageSize(int size) {
    const int before = GetPageSize();
    if (QAbstractSlider* slider = SliderOf(*this)) slider->setPageStep(size);
    return before;
}
int CSliderCtrl::GetLineSize() const {
    const QAbstractSlider* const slider = SliderOf(*this);
    return slider ? slider->singleStep() : 0;
}
int CSliderCtrl::SetLineSize(int size) {
    const int before = GetLineSize();
    if (QAbstractSlider* slider = SliderOf(*this)) slider->setSingleStep(size);
    return before;
}

void CSliderCtrl::SetTicFreq(int frequency) {
    auto* slider = vm::ControlOf<QSlider>(*this);
    if (slider && frequency > 0) ShowTicks(*slider, frequency);
}

BOOL CSliderCtrl::SetTic(int position) {
    auto* slider = vm::ControlOf<QSlider>(*this);
    if (!slider) return FALSE;
    const bool isVertical = slider->orientation() == Qt::Vertical;
    const int value = isVertical ? slider->maximum() - position : position;
    if (value < slider->minimum() || value > slider->maximum()) return FALSE;
    const bool shown = slider->tickPosition() != QSlider::NoTicks;
    const int others = shown ? slider->tickInterval() : LengthOf(*slider);
    const int interval = std::gcd(value - slider->minimum(), others);
    if (interval > 0) ShowTicks(*slider, interval);
    return TRUE;
}

void CSliderCtrl::ClearTics(BOOL) {
    auto* slider = vm::ControlOf<QSlider>(*this);
    if (!slider) return;
    slider->setProperty(kSideProperty, static_cast<int>(SideOf(*slider)));
    slider->setTickPosition(QSlider::NoTicks);
}

UINT CSliderCtrl::GetNumTics() const {
    const QAbstractSlider* const any = SliderOf(*this);
    if (!any) return 0;
    const auto* slider = qobject_cast<const QSlider*>(any);
    if (!slider || slider->tickPosition() == QSlider::NoTicks || slider->tickInterval() < 1)
        return 2;
    const int interval = slider->tickInterval();
    return static_cast<UINT>(LengthOf(*slider) / interval + 1 +
                             (LengthOf(*slider) % interval != 0));
}
