#include <vmcore/controls/CButton.h>

#include <QtCore/QVariant>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include <vmcore/app/messages.h>

#include "controls/bitmapPicture.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"
#include "wnd/tabStops.h"

namespace {

constexpr char kManualProperty[] = "changesNothing";

// A click changes its state unless the style leaves that to the program.
template <class Button>
class Checked : public Button {
public:
    using Button::Button;

protected:
    void nextCheckState() override {
        if (!this->property(kManualProperty).toBool()) Button::nextCheckState();
    }
};

// The radio buttons from one with WS_GROUP on.
class RadioGroup : public QButtonGroup {
public:
    using QButtonGroup::QButtonGroup;
};

void JoinGroup(QAbstractButton* button, QObject& parent, bool begins) {
    const bool takesPart = button && button->autoExclusive();
    if (!begins && !takesPart) return;
    RadioGroup* group = nullptr;
    for (QObject* child : parent.children())
        if (auto* own = dynamic_cast<RadioGroup*>(child)) group = own; // the last one
    if (begins || !group) group = new RadioGroup(&parent);
    if (!takesPart) return;
    group->addButton(button);
    if (group->checkedButton()) vm::LeadTabTo(*group->checkedButton());
}

bool IsManual(DWORD kind) {
    return kind == BS_CHECKBOX || kind == BS_RADIOBUTTON || kind == BS_3STATE;
}

// The kind of which the program keeps the state, or the toolkit.
DWORD ManualKind(DWORD automatic) {
    return automatic - (BS_AUTOCHECKBOX - BS_CHECKBOX);
}

QAbstractButton* MakePushLike(DWORD kind) {
    auto* button = new Checked<QPushButton>;
    button->setCheckable(true);
    button->setAutoExclusive(kind == BS_RADIOBUTTON || kind == BS_AUTORADIOBUTTON);
    return button;
}

QAbstractButton* MakePush(DWORD style) {
    auto* button = new QPushButton;
    button->setDefault((style & BS_TYPEMASK) == BS_DEFPUSHBUTTON);
    button->setFlat((style & BS_FLAT) != 0);
    return button;
}

QAbstractButton* MakeButton(DWORD style) {
    const DWORD kind = style & BS_TYPEMASK;
    if (kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON) return MakePush(style);
    if (style & BS_PUSHLIKE) return MakePushLike(kind);
    if (kind == BS_RADIOBUTTON || kind == BS_AUTORADIOBUTTON) return new Checked<QRadioButton>;
    auto* box = new Checked<QCheckBox>;
    box->setTristate(kind == BS_3STATE || kind == BS_AUTO3STATE);
    return box;
}

// What is inside of the frame is beside it for the toolkit.
QWidget* MakeGroupBox() {
    auto* box = new QGroupBox;
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    return box;
}

DWORD KindOf(const QAbstractButton& button) {
    const auto* box = qobject_cast<const QCheckBox*>(&button);
    const auto* push = qobject_cast<const QPushButton*>(&button);
    if (box) return box->isTristate() ? BS_AUTO3STATE : BS_AUTOCHECKBOX;
    if (qobject_cast<const QRadioButton*>(&button)) return BS_AUTORADIOBUTTON;
    if (!button.isCheckable()) return push && push->isDefault() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    return (button.autoExclusive() ? BS_AUTORADIOBUTTON : BS_AUTOCHECKBOX) | BS_PUSHLIKE;
}

QAbstractButton* ButtonOf(const CButton& object) {
    return vm::ControlOf<QAbstractButton>(object);
}

bool HasCheck(const CButton& object) {
    const auto* group = vm::ControlOf<QGroupBox>(object);
    return group ? group->isCheckable() : ButtonOf(object) != nullptr;
}

} // namespace

BOOL CButton::Create(const char* caption, DWORD createStyle, const RECT& rect, CWnd* parent,
                     UINT id) {
    const DWORD kind = createStyle & BS_TYPEMASK;
    QAbstractButton* const button = kind == BS_GROUPBOX ? nullptr : MakeButton(createStyle);
    QWidget* const control = button ? static_cast<QWidget*>(button) : MakeGroupBox();
    control->setProperty(kManualProperty, IsManual(kind));
    if (createStyle & BS_LEFTTEXT) control->setLayoutDirection(Qt::RightToLeft);
    if (!vm::AdoptControl(*this, control, parent, rect, createStyle, id)) return FALSE;
    if (!button) control->lower();
    JoinGroup(button, *parent->view, (createStyle & WS_GROUP) != 0);
    SetWindowText(caption ? caption : "");
    return TRUE;
}

int CButton::GetCheck() const {
    return HasCheck(*this) ? vm::ControlInteger(*view) : BST_UNCHECKED;
}

void CButton::SetCheck(int check) {
    if (HasCheck(*this)) vm::SetControlInteger(*view, check);
}

UINT CButton::GetState() const {
    const QAbstractButton* const button = ButtonOf(*this);
    UINT state = static_cast<UINT>(GetCheck());
    if (button && button->isDown()) state |= BST_PUSHED;
    if (button && button->hasFocus()) state |= BST_FOCUS;
    return state;
}

void CButton::SetState(BOOL pushed) {
    if (QAbstractButton* button = ButtonOf(*this)) button->setDown(pushed != 0);
}

UINT CButton::GetButtonStyle() const {
    const QAbstractButton* const button = ButtonOf(*this);
    if (vm::ControlOf<QGroupBox>(*this)) return BS_GROUPBOX;
    if (!button) return 0;
    const DWORD kind = KindOf(*button);
    return button->property(kManualProperty).toBool() ? ManualKind(kind) : kind;
}

void CButton::SetButtonStyle(UINT newStyle, BOOL) {
    const DWORD kind = newStyle & BS_TYPEMASK;
    auto* push = vm::ControlOf<QPushButton>(*this);
    if (push && !push->isCheckable()) push->setDefault(kind == BS_DEFPUSHBUTTON);
    auto* box = vm::ControlOf<QCheckBox>(*this);
    if (!box || kind < BS_CHECKBOX || kind > BS_AUTO3STATE) return;
    box->setTristate(kind == BS_3STATE || kind == BS_AUTO3STATE);
    box->setProperty(kManualProperty, IsManual(kind));
}

HBITMAP CButton::SetBitmap(HBITMAP bitmap) {
    QAbstractButton* const button = ButtonOf(*this);
    if (!button) return nullptr;
    const QPixmap picture = vm::PictureOf(bitmap);
    button->setIcon(picture);
    if (!picture.isNull()) button->setIconSize(picture.size());
    return vm::RememberBitmap(*button, bitmap);
}

HBITMAP CButton::GetBitmap() const {
    const QAbstractButton* const button = ButtonOf(*this);
    return button ? vm::ShownBitmap(*button) : nullptr;
}

LRESULT CButton::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case BM_SETCHECK:
        return SetCheck(static_cast<int>(wParam)), 0;
    case BM_GETCHECK:
        return GetCheck();
    case BM_CLICK:
        if (QAbstractButton* button = ButtonOf(*this)) button->click();
        return 0;
    default:
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
}
