#include "dialogs/SheetPane.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QShortcut>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QVBoxLayout>

#include <vmcore/dialogs/CPropertySheet.h>

#include "platform/eventboundary.h"
#include "wnd/tabStops.h"
#include "wnd/views.h"

namespace vm {
namespace {

struct ButtonText {
    int command;
    const char* text;
};
constexpr ButtonText kTexts[] = {
    {IDOK, "OK"},
    {IDCANCEL, "Cancel"},
    {ID_APPLY_NOW, "&Apply"},
    {IDHELP, "Help"},
    {ID_WIZBACK, "< &Back"},
    {ID_WIZNEXT, "&Next >"},
    {ID_WIZFINISH, "&Finish"},
};

const char* TextOf(int command) {
    for (const ButtonText& row : kTexts)
        if (row.command == command) return row.text;
    return "";
}

QSize SizeOfPage(const QWidget& view) {
    return view.size().expandedTo(view.minimumSizeHint());
}

} // namespace

SheetPane::SheetPane(QWidget& root, const SheetLook& look) : QObject(&root), m_root(root) {
    auto* const column = new QVBoxLayout(&root);
    if (look.hasTabs) {
        m_tabs = new QTabBar(&root);
        m_tabs->setExpanding(false);
        m_tabs->setFocusPolicy(Qt::TabFocus);
        column->addWidget(m_tabs);
        connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
            const auto tell = onTab; // which may delete this
            AtEventBoundary([&] { tell(index); });
        });
        for (const char* keys : {"Ctrl+Tab", "Ctrl+PgDown"}) AddKey(keys, 1);
        for (const char* keys : {"Ctrl+Shift+Tab", "Ctrl+PgUp"}) AddKey(keys, -1);
    }
    m_stack = new QStackedWidget(&root);
    column->addWidget(m_stack, 1);
    AddButtons(look.buttons);
}

void SheetPane::AddButtons(const std::vector<int>& commands) {
    if (commands.empty()) return;
    auto* const row = new QHBoxLayout;
    row->addStretch(1);
    for (const int command : commands) {
        // Children of the root: their numbers are found before those of the pages' controls.
        auto* const button = new QPushButton(QString::fromLatin1(TextOf(command)), &m_root);
        SetTagOf(button, command);
        row->addWidget(button);
        m_buttons.push_back(button);
    }
    static_cast<QVBoxLayout*>(m_root.layout())->addLayout(row);
}

void SheetPane::AddKey(const char* keys, int step) {
    auto* const shortcut = new QShortcut(QKeySequence(QString::fromLatin1(keys)), &m_root);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step] {
        const auto tell = onStep; // which may delete this
        AtEventBoundary([&] { tell(step); });
    });
}

QWidget* SheetPane::PagesParent() const {
    return m_stack;
}

void SheetPane::Insert(int index, QWidget* view, const QString& title) {
    m_views.insert(m_views.begin() + index, view);
    if (view && m_stack) {
        for (QPushButton* button : view->findChildren<QPushButton*>()) {
            button->setDefault(false); // Return is for the sheet's
            button->setAutoDefault(false);
        }
        m_stack->setMinimumSize(m_stack->minimumSize().expandedTo(SizeOfPage(*view)));
        m_stack->addWidget(view);
    }
    if (!m_tabs) return;
    const QSignalBlocker silent(m_tabs);
    m_tabs->insertTab(index, title);
    m_tabs->setTabVisible(index, view != nullptr);
}

void SheetPane::PutButtonsLast() {
    QWidget* const window = m_root.window();
    QWidget* last = nullptr;
    for (QWidget* view = window->nextInFocusChain(); view != window;
         view = view->nextInFocusChain())
        if (m_stack && m_stack->isAncestorOf(view) && view->focusPolicy() & Qt::TabFocus)
            last = view;
    if (!last) return;
    for (QPushButton* button : m_buttons) {
        QWidget::setTabOrder(last, button);
        last = button;
    }
}

void SheetPane::Remove(int index) {
    if (const QPointer<QWidget>& view = m_views[static_cast<std::size_t>(index)]; view && m_stack)
        m_stack->removeWidget(view);
    m_views.erase(m_views.begin() + index);
    if (!m_tabs) return;
    const QSignalBlocker silent(m_tabs);
    m_tabs->removeTab(index);
}

void SheetPane::Show(int index) {
    QWidget* const view = m_views[static_cast<std::size_t>(index)];
    if (view && m_stack) m_stack->setCurrentWidget(view);
    if (!m_tabs) return;
    const QSignalBlocker silent(m_tabs);
    m_tabs->setCurrentIndex(index);
}

void SheetPane::FocusPage(int index) {
    QWidget* const view = m_views[static_cast<std::size_t>(index)];
    if (!view) return;
    const QWidget* const focused = m_root.window()->focusWidget();
    if (focused && view->isAncestorOf(focused)) return;
    FocusFirstTabStop(*view);
}

QPushButton* SheetPane::Button(int command) const {
    for (QPushButton* button : m_buttons)
        if (TagOf(button) == command) return button;
    return nullptr;
}

void SheetPane::ResetText(int command) {
    if (QPushButton* button = Button(command))
        button->setText(QString::fromLatin1(TextOf(command)));
}

} // namespace vm
