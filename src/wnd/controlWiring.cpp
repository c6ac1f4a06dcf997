#include "wnd/controlWiring.h"

#include <array>
#include <functional>
#include <utility>

#include <QtCore/QEvent>
#include <QtCore/QItemSelectionModel>
#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QFocusEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>

#include <vmcore/wnd/CWnd.h>

#include "platform/eventboundary.h"
#include "wnd/CWndNSView.h"
#include "wnd/ControlActions.h"
#include "wnd/NativeWindow.h"
#include "wnd/SpinArrows.h"
#include "wnd/TextRules.h"
#include "wnd/controlText.h"
#include "wnd/heldViews.h"
#include "wnd/tabStops.h"
#include "wnd/views.h"

namespace vm {
namespace {

using Action = std::function<void(ControlActions&, QWidget*, ScrollPart)>;

Action Plain(void (ControlActions::*method)(QWidget*)) {
    return [method](ControlActions& actions, QWidget* sender, ScrollPart) {
        (actions.*method)(sender);
    };
}

// The actions by their names in interface files.
const Action* ActionNamed(const QString& name) {
    static const std::array<std::pair<const char*, Action>, 9> s_actions = {{
        {"onButton", Plain(&ControlActions::onButton)},
        {"onRadio", Plain(&ControlActions::onRadio)},
        {"onPopupMenu", Plain(&ControlActions::onPopupMenu)},
        {"onCombi", Plain(&ControlActions::onCombi)},
        {"onEdit", Plain(&ControlActions::onEdit)},
        {"onSelChange", Plain(&ControlActions::onSelChange)},
        {"onTab", Plain(&ControlActions::onTab)},
        {"onScroll", &ControlActions::onScroll},
        {"onSpin", Plain(&ControlActions::onSpin)},
    }};
    for (const auto& [known, action] : s_actions)
        if (name == QLatin1String(known)) return &action;
    return nullptr;
}

// The toolkit shows a button pressed by its key for a while before it clicks: that could be in a dialog
// that came meanwhile. A key that several have only moves the focus.
bool ClickAtOnce(QPointer<QAbstractButton> button, const QEvent& shortcut) {
    if (!button || static_cast<const QShortcutEvent&>(shortcut).isAmbiguous()) return false;
    if (button->focusPolicy() & Qt::ClickFocus) button->setFocus(Qt::ShortcutFocusReason);
    if (button) button->click();
    return true;
}

// The wire of one control; a child of it. A handler may destroy the control, its window and this.
class ControlWire : public QObject {
public:
    ControlWire(QWidget& control, QObject* receiver, ControlActions* actions)
        : QObject(&control), m_control(&control), m_receiver(receiver), m_actions(actions) {}

    void SetAction(const Action* action) { m_action = action; }

    void Act(ScrollPart part = ScrollPart::Knob) {
        const Action action = *m_action;
        Send([&](ControlActions& actions, QWidget* sender) { action(actions, sender, part); });
    }

    // Of a text: the first change begins the editing, Return or the loss of the focus end it.
    void Changed() {
        const QPointer<ControlWire> self = this;
        if (ProgramChange::InProgress()) return;
        if (!m_editing) Send(Plainly(&ControlActions::controlTextDidBeginEditing));
        if (!self) return;
        m_editing = true;
        Send(Plainly(&ControlActions::controlTextDidChange));
    }
    void Returned() {
        m_editing = false;
        Act();
    }
    void FocusLeft() {
        if (!std::exchange(m_editing, false) || !m_receiver) return;
        Tell(Plainly(&ControlActions::controlTextDidEndEditing)); // whoever moved the focus
    }
    bool IsEditing() const { return m_editing; }
    // Of arrows: false refuses.
    bool MayStep(int& delta) {
        bool may = true;
        Send([&](ControlActions& actions, QWidget* sender) {
            may = false; // also when the handler throws
            may = actions.MaySpin(sender, delta);
        });
        return may;
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Shortcut)
            return ClickAtOnce(qobject_cast<QAbstractButton*>(m_control), *event);
        if (event->type() == QEvent::FocusOut &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
            FocusLeft();
        return false;
    }

private:
    using Method = void (ControlActions::*)(QWidget*);
    static std::function<void(ControlActions&, QWidget*)> Plainly(Method method) {
        return [method](ControlActions& actions, QWidget* sender) { (actions.*method)(sender); };
    }
    void Send(const std::function<void(ControlActions&, QWidget*)>& message) {
        if (m_receiver && !ProgramChange::InProgress()) Tell(message);
    }
    void Tell(const std::function<void(ControlActions&, QWidget*)>& message) {
        if (m_control->property(kReportsItselfProperty).toBool()) return;
        const HeldViews held; // the control goes on with its click or key
        AtEventBoundary([&] { message(*m_actions, m_control); });
    }

    QWidget* m_control;
    QPointer<QObject> m_receiver;
    ControlActions* m_actions; // lives as long as the receiver
    const Action* m_action = nullptr;
    bool m_editing = false;
};

void ConnectButton(ControlWire& wire, QWidget& control) {
    QObject::connect(static_cast<QAbstractButton*>(&control), &QAbstractButton::clicked, &wire,
                     [&wire] { wire.Act(); });
    control.installEventFilter(&wire);
}

// The toolkit minds which button of a group is on only once one has had the focus.
void ConnectRadio(ControlWire& wire, QWidget& control) {
    auto* button = static_cast<QAbstractButton*>(&control);
    ConnectButton(wire, control);
    QObject::connect(button, &QAbstractButton::toggled, &wire, [button](bool on) {
        if (on) LeadTabTo(*button);
    });
    if (button->isChecked()) LeadTabTo(*button);
}

void ConnectGroup(ControlWire& wire, QWidget& control) {
    QObject::connect(static_cast<QGroupBox*>(&control), &QGroupBox::clicked, &wire,
                     [&wire] { wire.Act(); });
}

void ConnectCombo(ControlWire& wire, QWidget& control) {
    QObject::connect(static_cast<QComboBox*>(&control), &QComboBox::activated, &wire,
                     [&wire] { wire.Act(); });
}

// What is typed is just that: it is not completed, and adds no entry unless the file says so.
void ConnectEditableCombo(ControlWire& wire, QWidget& control) {
    auto* combo = static_cast<QComboBox*>(&control);
    combo->setCompleter(nullptr);
    if (combo->insertPolicy() == QComboBox::InsertAtBottom) // the toolkit's default
        combo->setInsertPolicy(QComboBox::NoInsert);
    ConnectCombo(wire, control);
    QLineEdit* line = combo->lineEdit();
    QObject::connect(line, &QLineEdit::textEdited, &wire, [&wire] { wire.Changed(); });
    QObject::connect(line, &QLineEdit::editingFinished, &wire, [&wire] { wire.FocusLeft(); });
}

void ConnectLine(ControlWire& wire, QWidget& control) {
    auto* line = static_cast<QLineEdit*>(&control);
    QObject::connect(line, &QLineEdit::textEdited, &wire, [&wire] { wire.Changed(); });
    QObject::connect(line, &QLineEdit::returnPressed, &wire, [&wire] { wire.Returned(); });
    QObject::connect(line, &QLineEdit::editingFinished, &wire, [&wire] { wire.FocusLeft(); });
}

// A spin box repeats its text at Return, and says in one signal that Return was pressed and that the
// focus has left.
void ConnectSpin(ControlWire& wire, QWidget& control) {
    auto* spin = static_cast<QAbstractSpinBox*>(&control);
    const auto changed = [&wire, spin, last = spin->text()]() mutable {
        if (std::exchange(last, spin->text()) != spin->text()) wire.Changed();
    };
    if (auto* whole = qobject_cast<QSpinBox*>(spin))
        QObject::connect(whole, &QSpinBox::textChanged, &wire, changed);
    else if (auto* real = qobject_cast<QDoubleSpinBox*>(spin))
        QObject::connect(real, &QDoubleSpinBox::textChanged, &wire, changed);
    else if (auto* date = qobject_cast<QDateTimeEdit*>(spin))
        QObject::connect(date, &QDateTimeEdit::dateTimeChanged, &wire, changed);
    QObject::connect(spin, &QAbstractSpinBox::editingFinished, &wire, [&wire, spin] {
        if (spin->hasFocus())
            wire.Returned();
        else
            wire.FocusLeft();
    });
}

// Return is a line break here.
template <class Edit>
void ConnectEdit(ControlWire& wire, QWidget& control) {
    const TextRules* rules = TextRules::Of(&control); // connected before the wire is
    QObject::connect(static_cast<Edit*>(&control), &Edit::textChanged, &wire, [&wire, rules] {
        if (!rules->TookBack()) wire.Changed();
    });
    control.installEventFilter(&wire);
}

void ConnectList(ControlWire& wire, QWidget& control) {
    const auto* list = static_cast<QAbstractItemView*>(&control);
    if (!list->selectionModel()) return;
    QObject::connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, &wire,
                     [&wire] { wire.Act(); });
}

template <class Tabs>
void ConnectTabs(ControlWire& wire, QWidget& control) {
    QObject::connect(static_cast<Tabs*>(&control), &Tabs::currentChanged, &wire,
                     [&wire] { wire.Act(); });
}

ScrollPart PartOf(int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
    case QAbstractSlider::SliderSingleStepSub:
        return ScrollPart::Line;
    case QAbstractSlider::SliderPageStepAdd:
        return ScrollPart::IncrementPage;
    case QAbstractSlider::SliderPageStepSub:
        return ScrollPart::DecrementPage;
    default:
        return ScrollPart::Knob;
    }
}

// The signal comes before the slider takes its new value over, which the action reads.
void ConnectSlider(ControlWire& wire, QWidget& control) {
    auto* slider = static_cast<QAbstractSlider*>(&control);
    const bool isBar = qobject_cast<QScrollBar*>(slider) != nullptr;
    QObject::connect(slider, &QAbstractSlider::actionTriggered, &wire, [=, &wire](int action) {
        // The arrows of a bar are not told: its knob stays with what the program shows.
        if (isBar && PartOf(action) == ScrollPart::Line)
            return slider->setSliderPosition(slider->value());
        slider->setValue(slider->sliderPosition());
        wire.Act(PartOf(action));
    });
}

// A step is asked for before it is made and told afterwards.
void ConnectSpinArrows(ControlWire& wire, QWidget& control) {
    auto* arrows = static_cast<SpinArrows*>(&control);
    arrows->onStep = [&wire](int& delta) { return wire.MayStep(delta); };
    arrows->onStepped = [&wire] { wire.Act(); };
}

template <class Class>
bool Is(const QWidget& control) {
    return dynamic_cast<const Class*>(&control) != nullptr;
}

bool IsEditableCombo(const QWidget& control) {
    const auto* combo = qobject_cast<const QComboBox*>(&control);
    return combo && combo->isEditable();
}

struct Kind {
    bool (*fits)(const QWidget& control);
    void (*connect)(ControlWire& wire, QWidget& control);
    const char* action;
};

// The first that fits counts.
const Kind* KindOf(const QWidget& control) {
    static constexpr Kind kKinds[] = {
        {Is<QRadioButton>, ConnectRadio, "onRadio"},
        {Is<QAbstractButton>, ConnectButton, "onButton"},
        {Is<QGroupBox>, ConnectGroup, "onButton"},
        {IsEditableCombo, ConnectEditableCombo, "onCombi"},
        {Is<QComboBox>, ConnectCombo, "onPopupMenu"},
        {Is<QLineEdit>, ConnectLine, "onEdit"},
        {Is<QAbstractSpinBox>, ConnectSpin, "onEdit"},
        {Is<QPlainTextEdit>, ConnectEdit<QPlainTextEdit>, "onEdit"},
        {Is<QTextEdit>, ConnectEdit<QTextEdit>, "onEdit"},
        {Is<QAbstractItemView>, ConnectList, "onSelChange"},
        {Is<QTabBar>, ConnectTabs<QTabBar>, "onTab"},
        {Is<QTabWidget>, ConnectTabs<QTabWidget>, "onTab"},
        {Is<QAbstractSlider>, ConnectSlider, "onScroll"},
        {Is<SpinArrows>, ConnectSpinArrows, "onSpin"},
    };
    for (const Kind& kind : kKinds)
        if (kind.fits(control)) return &kind;
    return nullptr;
}

ControlWire* WireOf(const QWidget& control) {
    for (QObject* child : control.children())
        if (auto* wire = dynamic_cast<ControlWire*>(child)) return wire;
    return nullptr;
}

// The window object of the content view of a window, or of any other view of the toolkit's.
class OwnerActions : public QObject, public ControlActions {
public:
    OwnerActions(QWidget& control, QWidget* parent) : QObject(&control), m_parent(parent) {}

protected:
    CWnd* ActionTarget() const override {
        if (IsContentView(m_parent)) return GetWRefCon(WindowOf(m_parent));
        return GetControlReference(m_parent);
    }
    const char* ActionsName() const override { return "CWndNSView"; }

private:
    QPointer<QWidget> m_parent;
};

} // namespace

bool IsControlAction(const QString& name) {
    return ActionNamed(name) != nullptr;
}

void WireControl(QWidget& control, QObject* receiver, ControlActions* actions) {
    const Kind* kind = KindOf(control);
    if (!kind) return;
    delete WireOf(control);
    const Action* named = ActionNamed(control.property(kActionProperty).toString());
    auto* wire = new ControlWire(control, receiver, actions);
    wire->SetAction(named ? named : ActionNamed(QLatin1String(kind->action)));
    kind->connect(*wire, control);
}

void WireToParent(QWidget& control) {
    QWidget* parent = control.parentWidget();
    if (auto* view = dynamic_cast<CWndView*>(parent)) return WireControl(control, view, view);
    auto* owner = new OwnerActions(control, parent);
    WireControl(control, owner, owner);
}

} // namespace vm
