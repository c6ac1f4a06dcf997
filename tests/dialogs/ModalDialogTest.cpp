// Modal dialogs from their files to their results.
#include "DialogsFixture.h"

#include <QtGui/QAction>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <vmcore/app/CWinApp.h>

#include "app/CWinAppDelegate.h"
#include "app/appState.h"
#include "controls/menuActions.h"
#include "controls/menuState.h"
#include "controls/menuUpdate.h"
#include "dialogs/dialogState.h"
#include "platform/NativeApplication.h"

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

TEST_F(ModalDialog, KeysOfButtonsPressThemAtOnce) {
    Write(1, UiDialog(UiControl("QPushButton", 21, UiText("text", "&amp;Keep")) +
                      UiControl("QCheckBox", 22, UiText("text", "S&amp;low")) +
                      UiControl("QPushButton", 23, UiText("text", "&amp;One")) +
                      UiControl("QPushButton", 24, UiText("text", "&amp;Other"))));
    TestDialog dialog;
    Soon([&] {
        WindowOf(dialog)->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(WindowOf(dialog)));
        for (const int key : {Qt::Key_K, Qt::Key_L, Qt::Key_O})
            QTest::keyClick(WindowOf(dialog), key, Qt::AltModifier);
        std::vector<int> pressed;
        for (const auto& command : dialog.Take(WM_COMMAND))
            if (HIWORD(command.wParam) == BN_CLICKED) pressed.push_back(LOWORD(command.wParam));
        EXPECT_THAT(pressed, ElementsAre(21, 22)) << "two share the last key";
        EXPECT_TRUE(Item<QAbstractButton>(dialog, 22)->isChecked());
        dialog.EndDialog(1);
    });
    dialog.DoModal();
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

// Items of the menu bar cannot be chosen behind a dialog; those of pop-up menus can.
TEST_F(ModalDialog, MenusKnowThatItIsDisplayed) {
    CMenu bar;
    ASSERT_TRUE(bar.CreatePopupMenu());
    bar.AppendMenu(0, 101, "Save");
    QAction* item = bar.GetSafeHmenu()->actions().first();
    const auto enabledUnder = [&](const char* title) {
        bar.GetSafeHmenu()->setTitle(title);
        vm::UpdateMenuItem(bar.GetSafeHmenu(), item, nullptr);
        return item->isEnabled();
    };
    TestDialog dialog;
    Soon([&] {
        EXPECT_FALSE(enabledUnder("File"));
        EXPECT_TRUE(enabledUnder("popup:"));
        EXPECT_TRUE(enabledUnder(""));
        dialog.EndDialog(1);
    });
    dialog.DoModal();
}

TEST_F(ModalDialog, HidesTheMainMenuOfAForeignProgramUntilTheLastHasGone) {
    vm::App().isPluginEnvironment = true;
    TestDialog outer;
    TestDialog inner;
    Soon([&] {
        Soon([&] {
            EXPECT_EQ(vm::App().displayDlg, 2);
            EXPECT_FALSE(vm::MenuBarShown());
            inner.EndDialog(1);
        });
        EXPECT_FALSE(vm::MenuBarShown());
        inner.DoModal();
        EXPECT_EQ(vm::App().displayDlg, 1);
        EXPECT_FALSE(vm::MenuBarShown());
        outer.EndDialog(1);
    });
    outer.DoModal();
    EXPECT_TRUE(vm::MenuBarShown());
    vm::App().isPluginEnvironment = false;
}

namespace {

constexpr int kSave = 104;

class MainDialog : public ModalDialog {
protected:
    MainDialog() {
        CWinAppDelegate::Shared(); // routes the commands of menus
        bundle.Write("MainMenu",
                     UiFile("<widget class=\"QMenuBar\" name=\"M\"><widget class=\"QMenu\" "
                            "name=\"F\">" +
                            UiText("title", "File") + "<addaction name=\"save\"/>" +
                            UiAction("save", "Save", kSave, "Ctrl+S") +
                            "</widget><addaction name=\"F\"/></widget>"));
        dialog.on[WM_UPDATECOMMANDUI] = [this](WPARAM id, LPARAM state) {
            if (id != kSave) return 0;
            reinterpret_cast<CCmdUI*>(state)->Enable(canSave);
            return 1;
        };
        dialog.on[WM_COMMAND] = [this](WPARAM id, LPARAM) {
            return saved += id == kSave, id == kSave;
        };
    }
    ~MainDialog() override { vm::SetMainMenu(nullptr); }

    QMenuBar* Bar() const { return dialog.nsWindow->MenuBar(); }
    QAction* Save() const { return vm::MainMenu()->actions().first()->menu()->actions().first(); }
    bool IsEnabled() const {
        vm::UpdateMenuItem(vm::MainMenu()->actions().first()->menu(), Save(), nullptr);
        return Save()->isEnabled();
    }
    void PressCtrlS() {
        QTest::keyClick(Item<QLineEdit>(dialog, 11), Qt::Key_S, Qt::ControlModifier);
    }

    CWinApp app{"Test"};
    TestDialog dialog;
    bool canSave = true;
    int saved = 0;
};

} // namespace

TEST_F(MainDialog, HasTheMenuBarAboveItsContent) {
    for (const bool limited : {false, true}) {
        SCOPED_TRACE(limited);
        if (limited) Write(1, UiDialog(UiSize("minimumSize", 200, 100)));
        for (const bool named : {false, true}) {
            app.m_pMainWnd = named ? &dialog : nullptr;
            if (!named) dialog.onInit = [this] { app.m_pMainWnd = &dialog; };
            Soon([&] {
                const QWidget& window = *dialog.nsWindow;
                const auto sizes = [&] {
                    const int extra = window.height() - dialog.view->height();
                    EXPECT_EQ(dialog.view->size(), QSize(300, 200));
                    EXPECT_EQ(window.minimumSize(),
                              limited ? QSize(200, 100 + extra) : window.size());
                    EXPECT_EQ(window.maximumHeight(), limited ? QWIDGETSIZE_MAX : window.height());
                    return extra;
                };
                EXPECT_TRUE(Bar() && Bar()->isVisible());
                EXPECT_GT(sizes(), 0);
                HideMainMenu();
                EXPECT_EQ(sizes(), 0);
                ShowMainMenu();
                EXPECT_GT(sizes(), 0);
                dialog.EndDialog(1);
            });
            EXPECT_EQ(dialog.DoModal(), 1);
        }
    }
}

TEST_F(MainDialog, CommandsWorkUnlessAnotherDialogIsOpen) {
    app.m_pMainWnd = &dialog;
    TestDialog inner;
    Soon([&] {
        EXPECT_TRUE(IsEnabled());
        Save()->trigger();
        PressCtrlS();
        EXPECT_EQ(saved, 2);
        canSave = false;
        EXPECT_FALSE(IsEnabled());
        PressCtrlS();
        EXPECT_EQ(saved, 2);
        canSave = true;
        Soon([&] {
            EXPECT_EQ(inner.nsWindow->windowModality(), Qt::ApplicationModal);
            EXPECT_EQ(inner.nsWindow->MenuBar(), nullptr);
            EXPECT_FALSE(IsEnabled());
            PressCtrlS();
            EXPECT_EQ(saved, 2);
            inner.EndDialog(1);
        });
        inner.DoModal();
        EXPECT_TRUE(IsEnabled());
        dialog.EndDialog(1);
    });
    dialog.DoModal();
}

// What File, Exit does: the dialog may refuse, or ask its user, as when it is closed.
TEST_F(MainDialog, EndOfTheProgramIsAskedForAsItsCloseButtonDoes) {
    app.m_pMainWnd = &dialog;
    CWinAppDelegate& delegate = CWinAppDelegate::Shared();
    int refusals = 1;
    dialog.on[WM_QUERYCLOSE] = [&](WPARAM, LPARAM) { return refusals-- > 0; };
    Soon([&] {
        for (const int ended : {0, 1}) {
            EXPECT_EQ(delegate.applicationShouldTerminate(), CWinAppDelegate::Reply::Cancel);
            EXPECT_EQ(dialog.ended, ended);
        }
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_THAT(dialog.saves, ElementsAre(false, true)) << "the values come out as at every end";
}

// Focus in a line: it keeps the letters, its dialog keeps Return and Escape, the menu comes first, and
// what is left goes to the objects around it, but not to the dialog's parent.
TEST_F(MainDialog, KeysThatAControlLeavesAloneAreTranslated) {
    constexpr int kOpen = 105;
    constexpr int kFunctionKey = 0x10; // what they all come as
    const AccelEntry table[] = {{kOpen, 'O' | 0x1F << 8, 1, 0, 0}, {-1, 0, 0, 0, 0}};
    app.m_pMainWnd = &dialog;
    RecordingWindow parent;
    parent.translate = [](MSG*) { return ADD_FAILURE() << "asked", FALSE; };
    parent.Create("", "Parent", WS_VISIBLE, RECT{80, 90, 380, 290}, nullptr, 0);
    dialog.parentWnd = &parent;
    std::vector<int> asked;
    std::vector<int> commands;
    dialog.on[WM_COMMAND] = [&](WPARAM id, LPARAM) { return commands.push_back(LOWORD(id)), 1; };
    dialog.accelTable = table;
    Soon([&] {
        auto* line = Item<QLineEdit>(dialog, 11);
        line->setFocus();
        dialog.translate = [&](MSG* msg) {
            EXPECT_EQ(msg->hwnd, line);
            asked.push_back(static_cast<int>(msg->wParam));
            return msg->wParam == kFunctionKey;
        };
        commands.clear();
        dialog.Take();
        QTest::keyClick(line, Qt::Key_A);
        QTest::keyClick(line, Qt::Key_Left);
        EXPECT_THAT(asked, IsEmpty());
        QTest::keyClick(line, Qt::Key_S, Qt::ControlModifier);
        EXPECT_THAT(std::exchange(commands, {}), testing::Contains(kSave));
        EXPECT_THAT(asked, IsEmpty());
        QTest::keyClick(line, Qt::Key_O, Qt::ControlModifier);
        EXPECT_THAT(std::exchange(commands, {}), ElementsAre(kOpen));
        QTest::keyClick(line, Qt::Key_F5);
        EXPECT_THAT(asked, ElementsAre(static_cast<int>('O'), kFunctionKey));
        EXPECT_THAT(dialog.Take(WM_KEYDOWN), IsEmpty());
        QTest::keyClick(line, Qt::Key_Tab);
        QTest::keyClick(line, Qt::Key_Escape);
        EXPECT_EQ(asked.size(), 2u);
        dialog.EndDialog(1);
    });
    dialog.DoModal();
    dialog.parentWnd = nullptr;
    parent.DestroyWindow();
}
