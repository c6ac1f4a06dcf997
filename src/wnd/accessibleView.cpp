#include "wnd/accessibleView.h"

#include <optional>
#include <unordered_map>

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include <vmcore/wnd/CWnd.h>

#include "core/macroman.h"
#include "wnd/CWndNSView.h"
#include "wnd/NativeWindow.h"
#include "wnd/SpinArrows.h"
#include "wnd/accessibleArrows.h"
#include "wnd/views.h"

namespace vm {
namespace {

// What a host has set; the objects themselves have no room for it.
struct Accessible {
    std::optional<QString> name;
    UINT role = ACCESSIBLE_PANEL;
};

std::unordered_map<const CWnd*, Accessible>& All() {
    static auto* const s_all = new std::unordered_map<const CWnd*, Accessible>;
    return *s_all;
}

const Accessible* Of(const CWnd* wnd) {
    const auto found = All().find(wnd);
    return found == All().end() ? nullptr : &found->second;
}

QAccessible::Role ToolkitRole(UINT role) {
    switch (role) {
    case ACCESSIBLE_BUTTON:
        return QAccessible::Button;
    case ACCESSIBLE_LABEL:
        return QAccessible::StaticText;
    case ACCESSIBLE_TEXT:
        return QAccessible::EditableText;
    case ACCESSIBLE_TABLE:
        return QAccessible::Table;
    case ACCESSIBLE_LIST:
        return QAccessible::List;
    case ACCESSIBLE_SLIDER:
        return QAccessible::Slider;
    case ACCESSIBLE_PICTURE:
        return QAccessible::Graphic;
    case ACCESSIBLE_TOOLBAR:
        return QAccessible::ToolBar;
    case ACCESSIBLE_STATUSBAR:
        return QAccessible::StatusBar;
    default:
        return QAccessible::Pane;
    }
}

class AccessibleView : public QAccessibleWidget {
public:
    explicit AccessibleView(CWndView& view) : QAccessibleWidget(&view), m_view(view) {}

    QString text(QAccessible::Text part) const override {
        if (part != QAccessible::Name || !m_view.wnd) return QAccessibleWidget::text(part);
        const QString given = QAccessibleWidget::text(part); // also of a label beside it
        return given.isEmpty() ? FromMacRoman(static_cast<const char*>(m_view.wnd->text)) : given;
    }

    QAccessible::Role role() const override {
        const Accessible* set = Of(m_view.wnd);
        return ToolkitRole(set ? set->role : ACCESSIBLE_PANEL);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (m_view.enabled) return state;
        state.disabled = true;
        state.focusable = false;
        return state;
    }

private:
    CWndView& m_view;
};

// Asked for every class that a view's class is derived from.
QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
    if (auto* const arrows = dynamic_cast<SpinArrows*>(object)) return MakeAccessible(*arrows);
    auto* const view = dynamic_cast<CWndView*>(object);
    return view ? new AccessibleView(*view) : nullptr;
}

// A top-level window is its frame to a screen reader.
QWidget* ShownAs(const CWnd& wnd) {
    if (!IsLiveView(wnd.view)) return nullptr;
    return wnd.nsWindow ? static_cast<QWidget*>(wnd.nsWindow) : wnd.view;
}

} // namespace

void InstallAccessibleViews() {
    QAccessible::installFactory(MakeInterface); // a second time is ignored
}

void ForgetAccessible(const CWnd* wnd) {
    All().erase(wnd);
}

void ApplyAccessible(const CWnd& wnd) {
    const Accessible* const set = Of(&wnd);
    QWidget* const view = set && set->name ? ShownAs(wnd) : nullptr;
    if (view) view->setAccessibleName(*set->name);
}

void TellName(CWndView& view) {
    QAccessibleEvent event(&view, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void TellEnabled(CWndView& view) {
    QAccessible::State changed{};
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&view, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace vm

void CWnd::SetAccessibleName(const char* name) {
    vm::All()[this].name = vm::FromMacRoman(name ? name : "");
    vm::ApplyAccessible(*this);
}

void CWnd::SetAccessibleRole(UINT role) {
    vm::All()[this].role = role;
}
