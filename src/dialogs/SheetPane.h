// The widgets of a property sheet: tabs, the pages below them, the buttons. It shows what it is told
// and tells what its user does; which page may be shown when is Sheet's matter.
#pragma once

#include <functional>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QString>

class QPushButton;
class QStackedWidget;
class QTabBar;
class QWidget;

namespace vm {

struct SheetLook {
    bool hasTabs = true;
    std::vector<int> buttons = {}; ///< their commands, from the left
};

/// A child of the widget that it fills.
class SheetPane : public QObject {
public:
    SheetPane(QWidget& root, const SheetLook& look);

    /// Where the views of pages belong before they are inserted.
    QWidget* PagesParent() const;
    /// Without a view, a page that nobody can go to. The pane is as large as the largest page.
    void Insert(int index, QWidget* view, const QString& title);
    void Remove(int index);
    /// Tab goes from the pages' controls to the buttons, which were made before them.
    void PutButtonsLast();
    void Show(int index);
    /// Puts the focus on the first control of the page, unless one of its controls has it.
    void FocusPage(int index);

    QPushButton* Button(int command) const; ///< null when there is none
    void ResetText(int command);            ///< the button's, to what it was made with
    const std::vector<QPushButton*>& Buttons() const { return m_buttons; }

    std::function<void(int index)> onTab; ///< the user chose it; the tab is shown as chosen already
    std::function<void(int step)> onStep; ///< the next page, or with -1 the one before

private:
    void AddButtons(const std::vector<int>& commands);
    void AddKey(const char* keys, int step);

    QWidget& m_root;
    QPointer<QTabBar> m_tabs;
    QPointer<QStackedWidget> m_stack;
    std::vector<QPointer<QWidget>> m_views;
    std::vector<QPushButton*> m_buttons;
};

} // namespace vm
