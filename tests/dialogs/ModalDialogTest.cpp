// Modal dialogs from their files to their results.
#include "DialogsFixture.h"

#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <vmcore/app/CWinApp.h>

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

TEST_F(ModalDialog, CancelStillBringsTheValuesOut) {
    TestDialog dialog;
    int loud = 1;
    dialog.exchange = [&](CDataExchange* pDX) { DDX_Check(pDX, 12, loud); };
    Soon([&] {
        ClickItem(dialog, 12);
        ClickItem(dialog, IDCANCEL);
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(loud, 0);
    EXPECT_THAT(dialog.saves, ElementsAre(false, true));
}

TEST_F(ModalDialog, ConstructorsSetWhatCreationReads) {
    CWnd parent;
    const CDialog dialog(5, &parent);
    EXPECT_EQ(dialog.templateId, 5);
    EXPECT_EQ(dialog.parentWnd, &parent);
    EXPECT_EQ(dialog.style, 0x42u);
    const CDialog plain;
    EXPECT_EQ(plain.templateId, 0);
    EXPECT_EQ(plain.style, 0u);
    EXPECT_STREQ(plain.GetRuntimeClass()->m_lpszClassName, "CDialog");
}

TEST_F(ModalDialog, WithoutVisibleStyleItIsShownAllTheSame) {
    TestDialog dialog;
    dialog.style = 0;
    Soon([&] {
        EXPECT_TRUE(dialog.nsWindow->isVisible()) << "nobody could end the loop otherwise";
        EXPECT_EQ(dialog.exStyle, 0x40u);
        dialog.EndDialog(1);
    });
    EXPECT_EQ(dialog.DoModal(), 1);
    EXPECT_THAT(dialog.Take(WM_SHOWWINDOW), IsEmpty());
}

TEST_F(ModalDialog, MissingAndWrongFilesAreLoggedByName) {
    Write(8, UiFile("<widget class=\"QMainWindow\" name=\"Main\"/>"));
    const std::string missing =
        "interface file " + bundle.PathOf("DLG_7") + ": No such file or directory";
    const struct {
        int id;
        bool plugIn;
        std::vector<std::string> lines;
    } rows[] = {
        {7,
         false,
         {missing, "DV Plugin Internal Error! Failed to create Dialog controller", "DLG_7"}},
        {7,
         true,
         {missing, "DV Plugin Internal Error! Failed to create Dialog from controller", "DLG_7"}},
        {8,
         false,
         {"interface file " + bundle.PathOf("DLG_8") +
              ": the root of a dialog cannot be a QMainWindow",
          "DV Plugin Internal Error! Failed to create Dialog window", "DLG_8"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines[1]);
        vm::App().isPluginEnvironment = row.plugIn;
        TestDialog dialog(row.id);
        EXPECT_EQ(dialog.DoModal(), 2);
        EXPECT_EQ(log.TakeLog(), row.lines);
        EXPECT_THAT(dialog.Take(), IsEmpty());
        EXPECT_THAT(vm::NativeApplication::Shared().Windows(), IsEmpty());
    }
    vm::App().isPluginEnvironment = true;
    vm::App().DVBundle = nullptr;
    TestDialog dialog(7);
    EXPECT_EQ(dialog.DoModal(), 2);
    EXPECT_THAT(log.TakeLog(), ElementsAre("DV Plugin Internal error: failed to create full path "
                                           "in CDialog::DoModal()",
                                           "DLG_7"));
    vm::App().isPluginEnvironment = false;
}

TEST_F(ModalDialog, RestoresTheResourceHandleAndLetsGoOfTheMouse) {
    int own = 0;
    int current = 0;
    AfxSetResourceHandle(&current);
    TestDialog dialog;
    dialog.resourceBundle = &own;
    ::SetCapture(reinterpret_cast<HWND>(&own));
    dialog.onInit = [&] {
        EXPECT_EQ(AfxGetResourceHandle(), &own);
        EXPECT_EQ(GetCapture(), nullptr);
        dialog.SetCapture();
        dialog.EndDialog(1);
    };
    dialog.DoModal();
    EXPECT_EQ(AfxGetResourceHandle(), &current);
    EXPECT_EQ(GetCapture(), nullptr);
    AfxSetResourceHandle(nullptr);
}

TEST_F(ModalDialog, RoutesOKCancelAndContextClicksItself) {
    TestDialog dialog;
    dialog.onInit = [&] {
        std::vector<int> called;
        dialog.onOK = [&] { called.push_back(1); };
        dialog.onCancel = [&] { called.push_back(2); };
        EXPECT_EQ(dialog.WindowProc(WM_COMMAND, MAKEWPARAM(1, BN_CLICKED), 0), 1);
        EXPECT_EQ(dialog.WindowProc(WM_COMMAND, 2, 0), 1);
        EXPECT_EQ(dialog.WindowProc(WM_COMMAND, 11, 0), 0);
        EXPECT_THAT(called, ElementsAre(1, 2));
        EXPECT_THAT(NumbersOf(dialog.Take(WM_COMMAND)), ElementsAre(WM_COMMAND));
        EXPECT_EQ(dialog.WindowProc(WM_CONTEXTMENU, 0, 0), 1);
        EXPECT_THAT(dialog.Take(WM_CONTEXTMENU), IsEmpty());
        dialog.WindowProc(WM_CONTEXTMENU, AsParameter(dialog.view), 0);
        EXPECT_EQ(dialog.Take(WM_CONTEXTMENU).size(), 1u);
        dialog.EndDialog(1);
    };
    dialog.DoModal();
}

// What is wrong in a handler ends the dialog, and is shown.
TEST_F(ModalDialog, NoExceptionLeavesIt) {
    const struct {
        const char* where;
        std::function<void()> thrower;
        ShownBox alert;
    } rows[] = {
        {"init",
         [] { throw vm::PlatformError("Range", "index 7 of 3"); },
         {"Range", "index 7 of 3", 0x10}},
        {"loop",
         [] { throw std::runtime_error("no port"); },
         {"std::runtime_error", "no port", 0x10}},
        {"exchange", [] { throw 5; }, {"unknown exception", "", 0x10}},
        {"close", [] { throw vm::PlatformError("DeadView"); }, {"DeadView", "", 0x10}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.where);
        const std::string where = row.where;
        TestDialog dialog;
        dialog.onInit = [&] {
            if (where == "init") row.thrower();
        };
        dialog.exchange = [&](CDataExchange* pDX) {
            if (where == "exchange" && pDX->m_bSaveAndValidate) row.thrower();
        };
        dialog.on[WM_CLOSE] = [&](WPARAM, LPARAM) {
            if (where == "close") row.thrower();
            return 0;
        };
        dialog.on[WM_COMMAND] = [&](WPARAM, LPARAM) { return row.thrower(), 1; };
        Soon([&] {
            if (!dialog.view) return;
            if (where == "loop")
                ClickItem(dialog, 12);
            else
                dialog.EndDialog(9);
        });
        EXPECT_EQ(dialog.DoModal(), where == "exchange" || where == "close" ? 9 : 2);
        EXPECT_THAT(boxes.Take(), ElementsAre(row.alert));
        EXPECT_EQ(dialog.view, nullptr);
        EXPECT_EQ(vm::App().displayDlg, 0);
        RunFor(std::chrono::milliseconds(1));
        EXPECT_THAT(vm::NativeApplication::Shared().Windows(), IsEmpty());
    }
}

TEST_F(ModalDialog, EndedWhileToldOfItsCreationItIsNeverSeen) {
    for (const int number : {WM_CREATE, WM_INITDIALOG}) {
        TestDialog dialog;
        const auto end = [&] { dialog.EndDialog(3); };
        if (number == WM_INITDIALOG) dialog.onInit = end;
        dialog.on[WM_CREATE] = [&](WPARAM, LPARAM) { return number == WM_CREATE ? end(), 0 : 0; };
        EXPECT_EQ(dialog.DoModal(), 3) << number;
        EXPECT_THAT(dialog.Take(WM_SHOWWINDOW), IsEmpty());
        EXPECT_THAT(dialog.saves, testing::Contains(true));
    }
}

TEST_F(ModalDialog, SameObjectRunsAgainButNotInsideItself) {
    TestDialog dialog;
    for (const int result : {4, 5}) {
        Soon([&] {
            EXPECT_EQ(dialog.DoModal(), IDCANCEL);
            EXPECT_THAT(log.TakeLog(), ElementsAre("CDialog::DoModal: the dialog is running "
                                                   "already"));
            dialog.EndDialog(result);
        });
        EXPECT_EQ(dialog.DoModal(), result);
    }
}

TEST_F(ModalDialog, TenNestedOnesEndInAnyOrder) {
    // The dialog `level` opens the next one; the last one ends them from the outside in.
    std::vector<std::unique_ptr<TestDialog>> dialogs;
    std::vector<int> results;
    const std::function<void(int)> open = [&](int level) {
        dialogs.push_back(std::make_unique<TestDialog>());
        TestDialog* dialog = dialogs.back().get();
        Soon([&, level] {
            EXPECT_EQ(vm::App().displayDlg, level + 1);
            if (level < 9) return open(level + 1);
            for (int i = 0; i < 9; ++i) dialogs[static_cast<std::size_t>(i)]->EndDialog(100 + i);
            Soon([&] {
                EXPECT_THAT(results, IsEmpty()) << "the inner dialogs are not touched";
                dialogs[9]->EndDialog(109);
            });
        });
        results.push_back(-dialog->DoModal());
    };
    const auto count = [&] { return results.size(); };
    open(0);
    EXPECT_EQ(count(), 10u);
    EXPECT_THAT(results, ElementsAre(-109, -108, -107, -106, -105, -104, -103, -102, -101, -100));
    EXPECT_EQ(vm::App().displayDlg, 0);
}

// Any handler may take the dialog away, its window alone or the object with it.
TEST_F(ModalDialog, MayBeDeletedInEachOfItsHandlers) {
    for (const int number : {WM_CREATE, WM_INITDIALOG, WM_COMMAND, WM_TIMER, WM_QUERYCLOSE,
                             WM_CLOSE, WM_DESTROY, WM_SHOWWINDOW}) {
        for (const bool deleted : {true, false}) {
            SCOPED_TRACE(vm::Format("%d deleted %d", number, deleted));
            auto* dialog = new TestDialog;
            std::unique_ptr<TestDialog> owner(dialog);
            const auto act = [&] {
                if (deleted)
                    owner.reset();
                else
                    dialog->DestroyWindow();
            };
            if (number == WM_INITDIALOG)
                dialog->onInit = act;
            else
                dialog->on[number] = [act](WPARAM, LPARAM) { return act(), 1; };
            Soon([&] {
                if (!owner || !dialog->view) return;
                switch (number) {
                case WM_COMMAND:
                    return ClickItem(*dialog, 12);
                case WM_TIMER:
                    dialog->SetTimer(1, 1);
                    return;
                case WM_QUERYCLOSE:
                    dialog->view->window()->close();
                    return;
                default:
                    return dialog->EndDialog(1);
                }
            });
            const int result = dialog->DoModal();
            const bool wasEnded = number == WM_CLOSE || number == WM_DESTROY;
            EXPECT_EQ(result, wasEnded ? 1 : 2);
            RunFor(std::chrono::milliseconds(2));
            EXPECT_THAT(vm::NativeApplication::Shared().Windows(), IsEmpty());
            EXPECT_EQ(vm::App().displayDlg, 0);
        }
    }
}

TEST_F(ModalDialog, TimersAndPostedMessagesRunInIt) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 380, 290}, nullptr, 0);
    top.Take();
    TestDialog dialog;
    int ticks = 0;
    dialog.on[WM_TIMER] = [&](WPARAM id, LPARAM) {
        EXPECT_EQ(id, 33u);
        if (++ticks == 2) top.PostMessage(WM_USER, 1, 2);
        return 1;
    };
    top.on[WM_USER] = [&](WPARAM, LPARAM) { return dialog.EndDialog(8), 1; };
    dialog.onInit = [&] { dialog.SetTimer(33, 1); };
    EXPECT_EQ(dialog.DoModal(), 8);
    EXPECT_GE(ticks, 2);
    EXPECT_EQ(dialog.m_TimerList.GetSize(), 0);
    top.DestroyWindow();
}

TEST_F(ModalDialog, ControlsThatAreBoundAreLetGo) {
    TestDialog dialog;
    RecordingWindow line;
    dialog.exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, 11, line); };
    for (int i = 0; i < 2; ++i) {
        dialog.onInit = [&] {
            EXPECT_EQ(dialog.GetDlgItem(11), &line);
            EXPECT_EQ(line.parentWnd, &dialog);
            dialog.EndDialog(1);
        };
        dialog.DoModal();
        RunFor(std::chrono::milliseconds(1));
        EXPECT_EQ(line.view, nullptr);
    }
}

TEST_F(ModalDialog, EndsWithTheApplication) {
    TestDialog outer;
    TestDialog inner;
    Soon([&] { EXPECT_EQ(inner.DoModal(), 2); });
    inner.onInit = [&] { Soon([] { vm::EndAllLoops(); }); };
    EXPECT_EQ(outer.DoModal(), 2);
    EXPECT_FALSE(vm::LoopsAreEnding());
    EXPECT_THAT(outer.saves, ElementsAre(false, true));
}
