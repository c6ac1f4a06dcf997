#include "dialogs/dialogFile.h"

#include <algorithm>
#include <vector>

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTableView>

#include <vmcore/app/messages.h>

#include "controls/RowView.h"
#include "controls/TCOutlineViewDataSource.h"
#include "controls/interfaceFile.h"
#include "controls/listBoxTable.h"
#include "controls/listTable.h"
#include "controls/outlineView.h"
#include "controls/typingRules.h"
#include "dialogs/dateFields.h"
#include "dialogs/dialogLists.h"
#include "dialogs/dialogUnits.h"
#include "dialogs/spinBuddies.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndViewController.h"
#include "wnd/CWndWindowController.h"
#include "wnd/NativeWindow.h"
#include "wnd/SpinArrows.h"
#include "wnd/controlWiring.h"
#include "wnd/tagTable.h"
#include "wnd/views.h"

namespace vm {
namespace {

constexpr char kDelegateProperty[] = "delegate";
constexpr char kCheckBoxesProperty[] = "checkBoxes";

// Of a button box that Designer fills by itself.
struct StandardButton {
    QDialogButtonBox::StandardButton button;
    int tag;
};
constexpr StandardButton kStandardButtons[] = {
    {QDialogButtonBox::Ok, IDOK},        {QDialogButtonBox::Save, IDOK},
    {QDialogButtonBox::Open, IDOK},      {QDialogButtonBox::Cancel, IDCANCEL},
    {QDialogButtonBox::Close, IDCANCEL}, {QDialogButtonBox::Abort, IDABORT},
    {QDialogButtonBox::Retry, IDRETRY},  {QDialogButtonBox::Ignore, IDIGNORE},
    {QDialogButtonBox::Yes, IDYES},      {QDialogButtonBox::No, IDNO},
};

void TagStandardButtons(const QDialogButtonBox& box) {
    for (const auto& [button, tag] : kStandardButtons)
        if (QPushButton* own = box.button(button); own && TagOf(own) == 0) SetTagOf(own, tag);
}

// Menus, and windows with a menu bar and tool bars of their own, are no dialogs.
bool CanBeDialog(const QString& rootClass) {
    static const char* const kRefused[] = {"QMenu",    "QMenuBar",   "QMainWindow", "QDockWidget",
                                           "QToolBar", "QStatusBar", "QWizard"};
    return std::none_of(std::begin(kRefused), std::end(kRefused),
                        [&](const char* refused) { return rootClass == QLatin1String(refused); });
}

// One load: the file's widgets as they are made, and what becomes of them.
class DialogLoad {
public:
    explicit DialogLoad(const std::string& name) : m_name(name) {}

    /// The root that `makeRoot` made; null when the file cannot be loaded or has another root.
    template <class MakeRoot>
    QWidget* Load(QWidget* parent, MakeRoot makeRoot) {
        QWidget* expected = nullptr;
        InterfaceClasses classes;
        classes.makeRoot = [&](const QString& rootClass, QWidget* owner) {
            return expected = CanBeDialog(rootClass) ? makeRoot(owner) : nullptr;
        };
        classes.reads = [this](const QByteArray& file) { m_listTexts = ListTextsOf(file); };
        classes.makeWidget = [](const QString& className, QWidget* owner) -> QWidget* {
            if (IsListClass(className)) return MakeListBoxView(owner);
            if (className == QLatin1String("CSpinButton")) return new SpinArrows(owner);
            if (className == QLatin1String("QTabBar"))
                return new QTabBar(owner); // Designer has none
            if (className == QLatin1String("QTreeView")) return new OutlineView(owner);
            if (className == QLatin1String("QTableView")) return new RowView(owner);
            return className == QLatin1String("CWndView") ? new CWndView(owner) : nullptr;
        };
        classes.made = [this](QWidget* widget) {
            LetTabLeave(*widget);
            m_widgets.push_back(widget);
        };
        QWidget* root = LoadInterfaceFile(m_name, parent, classes);
        wasLoaded = root != nullptr;
        if (root && root == expected) ScaleToFont(m_widgets);
        if (!root || root == expected) return root;
        LogAboutInterfaceFile(m_name, std::string("the root of a dialog cannot be a ") +
                                          root->metaObject()->className());
        delete root;
        return nullptr;
    }

    void WireControls(QObject* receiver, ControlActions* actions) {
        for (QWidget* widget : m_widgets) {
            if (widget == m_widgets.front()) continue; // the root is the dialog itself
            TakeTag(*widget);
            AttachDelegate(*widget);
            FillListBox(*widget, m_listTexts);
            RestrictTyping(*widget);
            TakeDate(*widget);
            CheckAction(*widget);
            WireControl(*widget, receiver, actions);
            if (const auto* box = qobject_cast<QDialogButtonBox*>(widget)) {
                TagStandardButtons(*box);
                for (QAbstractButton* button : box->buttons())
                    WireControl(*button, receiver, actions);
            }
        }
        for (QWidget* widget : m_widgets) AttachBuddy(*widget);
    }

    bool wasLoaded = false;

private:
    // Of texts, as in every dialog, unless the file says otherwise: its properties come afterwards.
    static void LetTabLeave(QWidget& widget) {
        static constexpr char kProperty[] = "tabChangesFocus";
        if (widget.metaObject()->indexOfProperty(kProperty) >= 0)
            widget.setProperty(kProperty, true);
    }

    static void TakeTag(QWidget& widget) {
        const QVariant tag = widget.property(kTagProperty);
        if (tag.isValid()) SetTagOf(&widget, tag.toInt());
    }

    void AttachDelegate(QWidget& widget) {
        const QString delegate = widget.property(kDelegateProperty).toString();
        if (delegate.isEmpty()) return;
        if (delegate == QLatin1String("TCOutlineViewDataSource"))
            AttachTree(widget);
        else if (delegate == QLatin1String("LCTableViewDelegate"))
            AttachTable<ListTable>(widget, "only a QTableView can have the delegate ", delegate);
        else if (delegate != QLatin1String("LBTableViewDelegate"))
            Complain(widget, "unknown delegate ", delegate);
        else if (!ListBoxTable::Of(&widget))
            AttachTable<ListBoxTable>(widget, "only a list or a QTableView can have the delegate ",
                                      delegate);
    }

    template <class Table>
    void AttachTable(QWidget& widget, const char* misfit, const QString& delegate) {
        auto* table = qobject_cast<QTableView*>(&widget);
        if (table && !table->model())
            new Table(table);
        else
            Complain(widget, misfit, delegate);
    }

    void AttachTree(QWidget& widget) {
        auto* tree = dynamic_cast<OutlineView*>(&widget);
        if (!tree || tree->model())
            return Complain(widget, "only a QTreeView can have the delegate ",
                            QLatin1String("TCOutlineViewDataSource"));
        auto* items = new TCOutlineViewDataSource(tree);
        if (widget.property(kCheckBoxesProperty).toBool()) items->AddCheckColumn();
    }

    void RestrictTyping(QWidget& widget) {
        const QString rule = widget.property(kTypingProperty).toString();
        if (!rule.isEmpty() && !SetTypingRule(widget, rule))
            Complain(widget, "unknown typing rule, or no text: ", rule);
    }

    void TakeDate(QWidget& widget) {
        auto* field = qobject_cast<QDateTimeEdit*>(&widget);
        if (field && !SetUpDateField(*field))
            Complain(widget,
                     "unknown date format: ", widget.property(kDateFormatProperty).toString());
    }

    void AttachBuddy(QWidget& widget) {
        const QString buddy = widget.property(kBuddyProperty).toString();
        auto* arrows = dynamic_cast<SpinArrows*>(&widget);
        if (!arrows || buddy.isEmpty()) return;
        const auto found =
            std::find_if(m_widgets.begin(), m_widgets.end(),
                         [&](const QWidget* other) { return other->objectName() == buddy; });
        if (found == m_widgets.end()) return Complain(widget, "no control has the name ", buddy);
        SetBuddyOf(*arrows, **found);
    }

    void CheckAction(const QWidget& widget) {
        const QString action = widget.property(kActionProperty).toString();
        if (!action.isEmpty() && !IsControlAction(action))
            Complain(widget, "unknown action ", action);
    }

    void Complain(const QWidget& widget, const char* what, const QString& value) {
        LogAboutInterfaceFile(m_name, widget.objectName().toStdString() + ": " + what +
                                          value.toStdString());
    }

    std::string m_name;
    std::vector<QWidget*> m_widgets; // the root first
    ListTexts m_listTexts;
};

struct SizeLimits {
    QSize least;
    QSize most;
};

// A dialog is as large as it was drawn. Its user may change that when a layout makes something of
// it, or the file gives limits.
SizeLimits LimitsOf(const QWidget& content, const QSize& size) {
    const bool hasLimits = !content.minimumSize().isNull() ||
                           content.maximumSize() != QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    if (!content.layout() && !hasLimits) return {size, size};
    return {content.minimumSize().expandedTo(content.minimumSizeHint()), content.maximumSize()};
}

QSize SizeOf(const QWidget& content) {
    const QSize drawn = content.size();
    if (!drawn.isEmpty()) return drawn.expandedTo(content.minimumSizeHint());
    return content.sizeHint().expandedTo(content.childrenRect().size()).expandedTo(QSize(1, 1));
}

void TakeWindowProperties(NativeWindow& window) {
    const QWidget& content = *window.ContentView();
    window.setWindowTitle(content.windowTitle());
    if (!content.windowIcon().isNull()) window.setWindowIcon(content.windowIcon());
}

// The button that Return clicks is drawn so.
void MarkDefaultButton(const QWidget& content) {
    for (const QPushButton* button : content.findChildren<QPushButton*>())
        if (button->isDefault()) return;
    if (auto* ok = qobject_cast<QPushButton*>(FindTagged(&content, IDOK))) ok->setDefault(true);
}

} // namespace

void SizeToContent(NativeWindow& window) {
    QWidget& content = *window.ContentView();
    const QSize size = SizeOf(content);
    const SizeLimits limits = LimitsOf(content, size);
    window.ResizeContent(size.boundedTo(limits.most).expandedTo(limits.least));
    window.SetContentLimits(limits.least, limits.most);
}

std::unique_ptr<CWndWindowController>
MakeDialogWindow(QWidget* over,
                 const std::function<FillResult(NativeWindow&, CWndWindowController&)>& fill) {
    const QPointer<QWidget> owner = over; // a message box of `fill` runs a loop
    auto* window = new NativeWindow(QRect(), FrameStyle::Dialog, false);
    window->SetEndsProgram(false);
    auto controller = std::make_unique<CWndWindowController>(window);
    const FillResult filled = fill(*window, *controller);
    if (filled != FillResult::Filled) {
        delete window;
        if (filled == FillResult::Nothing) controller.reset();
        return controller;
    }
    MarkDefaultButton(*window->ContentView());
    TakeWindowProperties(*window);
    SizeToContent(*window);
    window->SetOwner(owner);
    return controller;
}

std::unique_ptr<CWndWindowController> LoadDialogWindow(const std::string& name, QWidget* over) {
    return MakeDialogWindow(over, [&](NativeWindow& window, CWndWindowController& controller) {
        DialogLoad load(name);
        if (!load.Load(nullptr, [&](QWidget*) { return window.ContentView(); }))
            return load.wasLoaded ? FillResult::WrongRoot : FillResult::Nothing;
        load.WireControls(&controller, &controller);
        return FillResult::Filled;
    });
}

std::unique_ptr<CWndViewController> LoadDialogView(const std::string& name, QWidget* parent) {
    DialogLoad load(name);
    QWidget* root = load.Load(parent, [](QWidget* owner) {
        auto* view = new CWndView(owner);
        view->hide();
        return view;
    });
    if (!root) return nullptr;
    auto* view = static_cast<CWndView*>(root);
    auto controller = std::make_unique<CWndViewController>(view);
    load.WireControls(controller.get(), controller.get());
    view->move(0, 0);
    const QSize size = view->size().expandedTo(view->minimumSizeHint());
    view->setMinimumSize(0, 0); // its parent decides
    view->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    view->resize(size);
    view->TakeSizeAsKnown();
    return controller;
}

} // namespace vm
