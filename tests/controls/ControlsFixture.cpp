#include "ControlsFixture.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QTableView>

#include <vmcore/app/CWinApp.h>

#include "app/appState.h"
#include "controls/interfaceFile.h"
#include "platform/bundle.h"

int RecordingWnd::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    messages.push_back(message);
    switch (message) {
    case WM_UPDATECOMMANDUI: {
        const auto update = updates.find(static_cast<int>(wParam));
        if (update == updates.end()) return 0;
        update->second(*reinterpret_cast<CCmdUI*>(lParam));
        return 1;
    }
    case WM_COMMAND:
        commands.push_back(static_cast<int>(LOWORD(wParam)));
        return 1;
    case WM_NOTIFY:
        notifications.push_back(*reinterpret_cast<const NMLISTVIEW*>(lParam));
        resourceHandles.push_back(AfxGetResourceHandle());
        return 1;
    default:
        return 0;
    }
}

void RecordingWnd::Open(CWnd* parent) {
    const RECT rect{60, 60, 460, 360};
    Create("", "Test", WS_VISIBLE, rect, parent, 7);
}

TestBundle::TestBundle() {
    m_home.Write("Test.app/Contents/Resources/keep", "");
    const auto folder = m_home.Path() / "Test.app";
    vm::App().DVBundle = vm::Bundle::AtPath(folder.string());
}

TestBundle::~TestBundle() {
    vm::App().DVBundle = nullptr;
}

void TestBundle::Write(const std::string& name, const std::string& content) const {
    m_home.Write("Test.app/Contents/Resources/" + name + ".ui", content);
}

std::string TestBundle::PathOf(const std::string& name) const {
    return vm::InterfaceFilePath(name);
}

std::string UiFile(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\"><class>Test</class>" +
           content + "</ui>";
}

std::string UiAction(const std::string& name, const std::string& text, int tag,
                     const std::string& shortcut) {
    std::string properties = "<property name=\"text\"><string>" + text + "</string></property>" +
                             "<property name=\"tag\" stdset=\"0\"><number>" + std::to_string(tag) +
                             "</number></property>";
    if (!shortcut.empty())
        properties += "<property name=\"shortcut\"><string>" + shortcut + "</string></property>";
    return "<action name=\"" + name + "\">" + properties + "</action>";
}

void PressKey(QWidget* receiver, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(receiver, &press);
}

namespace {
void SendMouse(QWidget* receiver, QEvent::Type type, QPoint where, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers) {
    QMouseEvent event(type, where, receiver->mapToGlobal(where), Qt::LeftButton, buttons,
                      modifiers);
    QCoreApplication::sendEvent(receiver, &event);
}

QPoint CentreOf(QTableView* table, int row) {
    return table->visualRect(table->model()->index(row, 0)).center();
}
} // namespace

void Click(QWidget* receiver, QPoint where, Qt::KeyboardModifiers modifiers) {
    SendMouse(receiver, QEvent::MouseButtonPress, where, Qt::LeftButton, modifiers);
    SendMouse(receiver, QEvent::MouseButtonRelease, where, Qt::NoButton, modifiers);
}

void ClickRow(QTableView* table, int row, Qt::KeyboardModifiers modifiers) {
    Click(table->viewport(), CentreOf(table, row), modifiers);
}

void DoubleClickRow(QTableView* table, int row) {
    Click(table->viewport(), CentreOf(table, row));
    SendMouse(table->viewport(), QEvent::MouseButtonDblClick, CentreOf(table, row), Qt::LeftButton,
              {});
    SendMouse(table->viewport(), QEvent::MouseButtonRelease, CentreOf(table, row), Qt::NoButton,
              {});
}
