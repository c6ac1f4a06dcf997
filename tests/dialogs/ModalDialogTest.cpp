// Modal dialogs from their files to their results.
#include "DialogsFixture.h"

#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include "app/appState.h"
#include "core/guard.h"
#include "dialogs/dialogState.h"
#include "platform/NativeApplication.h"
#include "platform/runloop.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ModalDialog : public DialogsFixture {
protected:
    static QWidget* WindowOf(const CDialog& dialog) { return dialog.view->window(); }
};

} // namespace

TEST_F(ModalDialog, ReturnsHowItWasEnded) {
    const struct {
        const char* what;
        std::function<void(TestDialog&)> end;
        int result;
    } rows[] = {
        {"OK", [](TestDialog& dialog) { ClickItem(dialog, IDOK); }, IDOK},
        {"Cancel", [](TestDialog& dialog) { ClickItem(dialog, IDCANCEL); }, IDCANCEL},
        {"EndDialog", [](TestDialog& dialog) { dialog.EndDialog(77); }, 77},
        {"ended twice",
         [](TestDialog& dialog) {
             dialog.EndDialog(5);
             dialog.EndDialog(6);
         },
         6},
        {"Escape", [](TestDialog& dialog) { QTest::keyClick(WindowOf(dialog), Qt::Key_Escape); },
         IDCANCEL},
        {"Return", [](TestDialog& dialog) { QTest::keyClick(WindowOf(dialog), Qt::Key_Return); },
         IDOK},
        {"close button", [](TestDialog& dialog) { WindowOf(dialog)->close(); }, IDCANCEL},
        {"window destroyed", [](TestDialog& dialog) { dialog.DestroyWindow(); }, IDCANCEL},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        TestDialog dialog;
        Soon([&] { row.end(dialog); });
        EXPECT_EQ(dialog.DoModal(), row.result);
        EXPECT_EQ(dialog.view, nullptr);
        EXPECT_EQ(dialog.nsWindow, nullptr);
        EXPECT_EQ(dialog.windowController, nullptr);
    }
}

TEST_F(ModalDialog, TellsOfItsLifeInOrder) {
    TestDialog dialog;
    std::vector<int> life;
    const auto note = [&](int number) {
        dialog.on[number] = [&life, number](WPARAM, LPARAM) { return life.push_back(number), 0; };
    };
    note(WM_CREATE), note(WM_SHOWWINDOW), note(WM_CLOSE), note(WM_DESTROY);
    dialog.onInit = [&] {
        life.push_back(WM_INITDIALOG);
        EXPECT_EQ(GetControlReference(dialog.view), &dialog);
        EXPECT_FALSE(dialog.nsWindow->isVisible());
    };
    dialog.exchange = [&](CDataExchange* pDX) {
        life.push_back(pDX->m_bSaveAndValidate ? -1 : -2);
    };
    Soon([&] {
        EXPECT_TRUE(dialog.nsWindow->isVisible());
        EXPECT_EQ(dialog.nsWindow->windowTitle(), "Plain");
        EXPECT_EQ(dialog.nsWindow->windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(vm::App().displayDlg, 1);
        EXPECT_EQ(vm::Dialogs().LimitMouseEventsToDlg, &dialog);
        dialog.EndDialog(1);
    });
    EXPECT_EQ(dialog.DoModal(), 1);
    EXPECT_THAT(life,
                ElementsAre(WM_CREATE, -2, WM_INITDIALOG, WM_SHOWWINDOW, -1, WM_CLOSE, WM_DESTROY));
    EXPECT_EQ(vm::App().displayDlg, 0);
    EXPECT_EQ(vm::Dialogs().LimitMouseEventsToDlg, nullptr);
}
