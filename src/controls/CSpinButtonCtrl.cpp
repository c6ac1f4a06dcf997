#include <vmcore/controls/CSpinButtonCtrl.h>

#include <algorithm>
#include <utility>

#include <QtWidgets/QSpinBox>

#include "wnd/SpinArrows.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"
#include "wnd/views.h"

using vm::SpinArrows;

namespace {

SpinArrows* ArrowsOf(const CSpinButtonCtrl& object) {
    return vm::ControlOf<SpinArrows>(object);
}
QSpinBox* FieldOf(const CSpinButtonCtrl& object) {
    return vm::ControlOf<QSpinBox>(object);
}

SpinArrows::BuddyUse UseOf(DWORD style) {
    SpinArrows::BuddyUse use;
    use.showsNumber = (style & UDS_SETBUDDYINT) != 0;
    use.takesKeys = (style & UDS_ARROWKEYS) != 0;
    if (style & UDS_ALIGNLEFT) use.align = SpinArrows::Align::Left;
    if (style & UDS_ALIGNRIGHT) use.align = SpinArrows::Align::Right;
    return use;
}

std::vector<vm::SpinAcceleration> AccelerationsOf(const CSpinButtonCtrl& object) {
    if (const SpinArrows* arrows = ArrowsOf(object)) return arrows->Accelerations();
    if (const QSpinBox* field = FieldOf(object)) return {{0, field->singleStep()}};
    return {};
}

} // namespace

BOOL CSpinButtonCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* arrows = new SpinArrows;
    arrows->SetHorizontal((createStyle & UDS_HORZ) != 0);
    arrows->SetWraps((createStyle & UDS_WRAP) != 0);
    arrows->SetUse(UseOf(createStyle));
    return vm::AdoptControl(*this, arrows, parent, rect, createStyle, id);
}

void CSpinButtonCtrl::SetRange(int lowest, int highest) {
    const vm::ProgramChange change;
    if (SpinArrows* arrows = ArrowsOf(*this)) arrows->SetRange(lowest, highest);
    if (QSpinBox* field = FieldOf(*this))
        field->setRange(std::min(lowest, highest), std::max(lowest, highest));
}
void CSpinButtonCtrl::SetRange32(int lowest, int highest) {
    SetRange(lowest, highest);
}

void CSpinButtonCtrl::GetRange(int& lowest, int& highest) const {
    const SpinArrows* const arrows = ArrowsOf(*this);
    const QSpinBox* const field = FieldOf(*this);
    lowest = arrows ? arrows->First() : field ? field->minimum() : 0;
    highest = arrows ? arrows->Last() : field ? field->maximum() : 0;
}
void CSpinButtonCtrl::GetRange32(int& lowest, int& highest) const {
    GetRange(lowest, highest);
}
DWORD CSpinButtonCtrl::GetRange() const {
    int lowest = 0;
    int highest = 0;
    GetRange(lowest, highest);
    return static_cast<DWORD>(MAKELONG(highest, lowest));
}

int CSpinButtonCtrl::SetPos(int position) {
    const vm::ProgramChange change;
    const int before = GetPos();
    if (SpinArrows* arrows = ArrowsOf(*this)) arrows->SetPosition(position);
    if (QSpinBox* field = FieldOf(*this)) field->setValue(position);
    return before;
}
int CSpinButtonCtrl::SetPos32(int position) {
    return SetPos(position);
}

int CSpinButtonCtrl::GetPos32(BOOL* error) const {
    SpinArrows* const arrows = ArrowsOf(*this);
    const QSpinBox* const field = FieldOf(*this);
    const bool isGood = arrows ? arrows->ReadBuddy() : field != nullptr;
    if (error) *error = !isGood;
    if (arrows) return arrows->Position();
    return field ? field->value() : 0;
}
int CSpinButtonCtrl::GetPos() const {
    return GetPos32();
}

CWnd* CSpinButtonCtrl::GetBuddy() const {
    const SpinArrows* const arrows = ArrowsOf(*this);
    return arrows && arrows->Buddy() ? vm::ObjectOf(arrows->Buddy()) : nullptr;
}

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* buddy) {
    CWnd* const before = GetBuddy();
    SpinArrows* const arrows = ArrowsOf(*this);
    if (arrows) arrows->SetBuddy(buddy ? vm::ControlOf<QWidget>(*buddy) : nullptr);
    return before;
}

BOOL CSpinButtonCtrl::SetAccel(int count, const UDACCEL* accelerations) {
    if (count <= 0 || !accelerations) return FALSE;
    std::vector<vm::SpinAcceleration> steps;
    for (int i = 0; i < count; ++i)
        steps.push_back({accelerations[i].nSec, static_cast<int>(accelerations[i].nInc)});
    SpinArrows* const arrows = ArrowsOf(*this);
    QSpinBox* const field = FieldOf(*this);
    if (field) field->setSingleStep(steps[0].step);
    if (arrows) arrows->SetAccelerations(std::move(steps));
    return arrows || field;
}

UINT CSpinButtonCtrl::GetAccel(int count, UDACCEL* accelerations) const {
    const std::vector<vm::SpinAcceleration> steps = AccelerationsOf(*this);
    const std::size_t wanted = accelerations && count > 0 ? static_cast<std::size_t>(count) : 0;
    for (std::size_t i = 0; i < std::min(wanted, steps.size()); ++i)
        accelerations[i] = {steps[i].seconds, static_cast<UINT>(steps[i].step)};
    return static_cast<UINT>(steps.size());
}

UINT CSpinButtonCtrl::GetBase() const {
    if (const SpinArrows* arrows = ArrowsOf(*this)) return static_cast<UINT>(arrows->Base());
    const QSpinBox* const field = FieldOf(*this);
    return field ? static_cast<UINT>(field->displayIntegerBase()) : 0;
}

int CSpinButtonCtrl::SetBase(int base) {
    if (base != 10 && base != 16) return 0;
    const vm::ProgramChange change;
    const int before = static_cast<int>(GetBase());
    if (SpinArrows* arrows = ArrowsOf(*this)) arrows->SetBase(base);
    if (QSpinBox* field = FieldOf(*this)) field->setDisplayIntegerBase(base);
    return before;
}
