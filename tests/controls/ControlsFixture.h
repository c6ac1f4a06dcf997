// What the tests of the controls share: a window that records what it is told, a bundle in the
// temporary home, and input as the user gives it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/Qt>

#include <vmcore/app/messages.h>
#include <vmcore/controls/CListCtrl.h>
#include <vmcore/wnd/CWnd.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "support/Watchdog.h"

class QAction;
class QTableView;

/// A window that records commands and notifications, and answers update queries from a table.
class RecordingWnd : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    /// Makes it a top-level window of 400 by 300, or a child of that size.
    void Open(CWnd* parent = nullptr);

    std::map<int, std::function<void(CCmdUI&)>> updates; ///< by command ID
    std::vector<int> commands;                           ///< WM_COMMAND
    std::vector<NMLISTVIEW> notifications;               ///< WM_NOTIFY
    std::vector<void*> resourceHandles;                  ///< current at each of them
    std::vector<int> messages;                           ///< the numbers of all messages
};

/// The bundle that interface files come from, below the temporary home.
class TestBundle {
public:
    TestBundle();
    ~TestBundle();
    void Write(const std::string& name, const std::string& content) const; ///< <name>.ui
    std::string PathOf(const std::string& name) const;

private:
    TemporaryHome m_home;
};

/// A .ui file with this content below <ui>.
std::string UiFile(const std::string& content);
/// An action of a .ui file; belongs into its root widget.
std::string UiAction(const std::string& name, const std::string& text, int tag,
                     const std::string& shortcut = {});

void PressKey(QWidget* receiver, int key, Qt::KeyboardModifiers modifiers = {},
              const QString& text = {});
void Click(QWidget* receiver, QPoint where, Qt::KeyboardModifiers modifiers = {});
void ClickRow(QTableView* table, int row, Qt::KeyboardModifiers modifiers = {});
void DoubleClickRow(QTableView* table, int row);
