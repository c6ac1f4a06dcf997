// Modal dialogs whose handlers throw, take them away, nest them, or end the application.
#include "DialogsFixture.h"

#include <stdexcept>

#include "app/appState.h"
#include "core/guard.h"
#include "platform/NativeApplication.h"
#include "platform/messagebox.h"
#include "platform/runloop.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class DialogReliability : public DialogsFixture {};
} // namespace

// What is wrong in a handler ends the dialog, and is shown.
TEST_F(DialogReliability, NoExceptionLeavesIt) {
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

TEST_F(DialogReliability, EndedWhileToldOfItsCreationItIsNeverSeen) {
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

TEST_F(DialogReliability, SameObjectRunsAgainButNotInsideItself) {
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

TEST_F(DialogReliability, TenNestedOnesEndInAnyOrder) {
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
TEST_F(DialogReliability, MayBeDeletedInEachOfItsHandlers) {
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

// A box of the toolkit's runs a loop of the toolkit's own.
TEST_F(DialogReliability, MessageBoxAboveItIsClosedWithTheApplication) {
    const vm::MessageBoxHandler recorder = vm::SetMessageBoxHandler({});
    TestDialog dialog;
    std::vector<int> answers;
    Soon([&] {
        Soon([] { vm::EndAllLoops(); });
        answers.push_back(vm::ShowMessageBox(nullptr, "Save?", "Bank", MB_YESNOCANCEL));
        answers.push_back(vm::ShowMessageBox(nullptr, "Really?", "Bank", MB_YESNO));
    });
    EXPECT_EQ(dialog.DoModal(), 2);
    vm::SetMessageBoxHandler(recorder);
    EXPECT_THAT(answers, ElementsAre(IDCANCEL, IDYES));
    EXPECT_THAT(log.TakeLog(), ElementsAre("Bank: Really?")) << "no box opens any more";
}

TEST_F(DialogReliability, EndsWithTheApplication) {
    TestDialog outer;
    TestDialog inner;
    Soon([&] { EXPECT_EQ(inner.DoModal(), 2); });
    inner.onInit = [&] { Soon([] { vm::EndAllLoops(); }); };
    EXPECT_EQ(outer.DoModal(), 2);
    EXPECT_FALSE(vm::LoopsAreEnding());
    EXPECT_THAT(outer.saves, ElementsAre(false, true));
}
