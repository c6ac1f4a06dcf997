// Property sheets from their pages' files to their results, worked as their users do.
#include "DialogsFixture.h"

#include <map>

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>

#include <vmcore/dialogs/CPropertySheet.h>

#include "app/appState.h"
#include "dialogs/dialogState.h"
#include "platform/NativeApplication.h"
#include "platform/runloop.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Calls = std::vector<std::string>;

/// Writes down what it is asked, answers as the test says, and has one line of text.
class TestPage : public CPropertyPage {
public:
    TestPage(int id, Calls& list, const char* caption = nullptr)
        : CPropertyPage(id, caption), calls(list) {}

    BOOL OnInitDialog() override { return CPropertyPage::OnInitDialog(), Note("init") != 0; }
    BOOL OnSetActive() override { return Note("set") != 0; }
    BOOL OnKillActive() override { return CPropertyPage::OnKillActive() && Note("kill"); }
    BOOL OnApply() override { return CPropertyPage::OnApply(), Note("apply") != 0; }
    void OnReset() override { Note("reset"); }
    BOOL OnQueryCancel() override { return Note("query") != 0; }
    LRESULT OnWizardNext() override { return Note("next") - 1; }
    LRESULT OnWizardBack() override { return Note("back") - 1; }
    BOOL OnWizardFinish() override { return Note("finish") != 0; }
    void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, 11, name); }
    int MessageMap(int message, WPARAM wParam, LPARAM) override {
        if (message == WM_DESTROY) Note("destroy");
        if (message == WM_COMMAND && LOWORD(wParam) == ID_HELP) Note("help");
        return message == static_cast<int>(PSM_QUERYSIBLINGS) ? static_cast<int>(wParam) % 256 - 1
                                                              : 0;
    }

    Calls& calls;
    std::map<std::string, int> answers;                  ///< 1 for what is missing
    std::map<std::string, std::function<void()>> during; ///< run while it is asked
    CString name;

private:
    int Note(const std::string& what) {
        calls.push_back(vm::Format("%d ", templateId) + what);
        const auto answer = answers.find(what);
        const int given = answer == answers.end() ? 1 : answer->second;
        const auto action = during.find(what);
        if (action == during.end()) return given;
        const std::function<void()> copy = action->second; // which may delete the page
        copy();
        return given;
    }
};

std::string PageFile(const std::string& title, int width, int height) {
    return UiFile(
        "<widget class=\"QWidget\" name=\"Page\">" + UiRect("geometry", 0, 0, width, height) +
        UiText("windowTitle", title) +
        UiControl("QLineEdit", 11, UiRect("geometry", 10, 10, 120, 24)) +
        UiControl("QPushButton", 12, UiRect("geometry", 10, 60, 80, 24) + UiBool("default", true)) +
        "</widget>");
}

class PropertySheet : public DialogsFixture {
protected:
    PropertySheet() {
        Write(1, PageFile("One", 200, 100));
        Write(2, PageFile("Two", 380, 120));
        Write(3, PageFile("Three", 240, 260));
        sheet = std::make_unique<CPropertySheet>("Settings");
        for (int id : {1, 2, 3}) {
            pages[id] = std::make_unique<TestPage>(id, calls, id == 3 ? "Last" : nullptr);
            sheet->AddPage(pages[id].get());
        }
    }

    QWidget* Root() const { return sheet->view; }
    QTabBar* Tabs() const { return Root()->findChild<QTabBar*>(); }
    QPushButton* Button(int id) const { return Item<QPushButton>(*sheet, id); }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QWidget* const focused = Root()->window()->focusWidget();
        QTest::keyClick(focused ? focused : Root()->window(), static_cast<Qt::Key>(key), modifiers);
    }
    Calls Take() { return std::exchange(calls, {}); }
    int Run(std::function<void()> step) {
        Soon(std::move(step));
        return sheet->DoModal();
    }

    Calls calls;
    std::unique_ptr<CPropertySheet> sheet;
    std::map<int, std::unique_ptr<TestPage>> pages;
};

} // namespace

TEST_F(PropertySheet, ShowsPagesOnDemandAndIsAsLargeAsTheLargest) {
    Run([&] {
        EXPECT_THAT(Take(), ElementsAre("1 init", "1 set"));
        EXPECT_EQ(sheet->nsWindow->windowTitle(), "Settings");
        EXPECT_EQ(vm::App().displayDlg, 1);
        EXPECT_EQ(vm::Dialogs().LimitMouseEventsToDlg, sheet.get());
        QStringList titles;
        for (int i = 0; i < 3; ++i) titles += Tabs()->tabText(i);
        EXPECT_EQ(titles, QStringList({"One", "Two", "Last"}));
        const QSize first = pages[1]->view->size();
        EXPECT_EQ(first.expandedTo({380, 260}), first);
        EXPECT_EQ(pages[1]->GetParent(), sheet.get());
        EXPECT_EQ(pages[2]->view, nullptr);
        EXPECT_FALSE(pages[2]->UpdateData(FALSE));
        EXPECT_EQ(Root()->window()->focusWidget(), Item<QLineEdit>(*pages[1], 11));
        Key(Qt::Key_Tab);
        Key(Qt::Key_Tab);
        EXPECT_EQ(Root()->window()->focusWidget(), Button(IDOK));
        QTest::mouseClick(Tabs(), Qt::LeftButton, {}, Tabs()->tabRect(2).center());
        EXPECT_THAT(Take(), ElementsAre("1 kill", "3 init", "3 set"));
        EXPECT_EQ(sheet->GetActiveIndex(), 2);
        EXPECT_TRUE(pages[3]->view->isVisible());
        EXPECT_FALSE(pages[1]->view->isVisible());
        EXPECT_EQ(sheet->SetActivePage(pages[1].get()), TRUE);
        EXPECT_THAT(Take(), ElementsAre("3 kill", "1 set")) << "its window is kept";
        sheet->EndDialog(9);
    });
    EXPECT_THAT(Take(), ElementsAre("1 destroy", "3 destroy"));
    EXPECT_EQ(pages[1]->view, nullptr);
    EXPECT_EQ(sheet->view, nullptr);
}

TEST_F(PropertySheet, ExchangesTheValuesOfThePagesThatWereShown) {
    pages[1]->name = "before";
    pages[2]->name = "untouched";
    const auto type = [&](const char* text) {
        auto* const line = Item<QLineEdit>(*pages[1], 11);
        line->selectAll();
        QTest::keyClicks(line, QString::fromLatin1(text));
    };
    const int result = Run([&] {
        EXPECT_EQ(Item<QLineEdit>(*pages[1], 11)->text(), "before");
        EXPECT_FALSE(Button(ID_APPLY_NOW)->isEnabled());
        pages[1]->SetModified();
        type("applied");
        ClickItem(*sheet, ID_APPLY_NOW);
        EXPECT_STREQ(pages[1]->name, "applied");
        EXPECT_FALSE(Button(ID_APPLY_NOW)->isEnabled());
        type("cancelled");
        ClickItem(*sheet, IDCANCEL);
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_STREQ(pages[1]->name, "applied");
    EXPECT_STREQ(pages[2]->name, "untouched");
    EXPECT_THAT(Take(), ElementsAre("1 init", "1 set", "1 kill", "1 apply", "1 set", "1 query",
                                    "1 reset", "1 destroy"));
}

TEST_F(PropertySheet, ReturnsHowItWasEnded) {
    const struct {
        const char* what;
        std::function<void()> end;
        int result;
    } rows[] = {
        {"OK", [&] { ClickItem(*sheet, IDOK); }, IDOK},
        {"Return", [&] { Key(Qt::Key_Return); }, IDOK},
        {"Escape", [&] { Key(Qt::Key_Escape); }, IDCANCEL},
        {"close button", [&] { Root()->window()->close(); }, IDCANCEL},
        {"press OK", [&] { EXPECT_TRUE(sheet->PressButton(PSBTN_OK)); }, IDOK},
        {"a page's command 1", [&] { pages[1]->SendMessage(WM_COMMAND, IDOK); }, IDOK},
        {"a page ends it", [&] { pages[1]->EndDialog(12); }, 12},
        {"destroyed", [&] { sheet->DestroyWindow(); }, IDCANCEL},
        {"the application ends", [] { vm::EndAllLoops(); }, IDCANCEL},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Run(row.end), row.result);
        EXPECT_EQ(sheet->windowController, nullptr);
        EXPECT_EQ(Take().back(), "1 destroy");
        RunFor(std::chrono::milliseconds(1));
        EXPECT_THAT(vm::NativeApplication::Shared().Windows(), IsEmpty());
    }
}

TEST_F(PropertySheet, PagesRefuse) {
    const auto refuse = [&](int page, const char* what) { pages[page]->answers = {{what, 0}}; };
    Run([&] {
        Take();
        refuse(1, "kill");
        QTest::mouseClick(Tabs(), Qt::LeftButton, {}, Tabs()->tabRect(1).center());
        EXPECT_EQ(Tabs()->currentIndex(), 0);
        ClickItem(*sheet, IDOK);
        EXPECT_THAT(Take(), ElementsAre("1 kill", "1 kill"));
        refuse(1, "query");
        Key(Qt::Key_Escape);
        EXPECT_THAT(Take(), ElementsAre("1 query"));
        refuse(1, "");
        refuse(2, "set");
        EXPECT_FALSE(sheet->SetActivePage(1));
        EXPECT_THAT(Take(), ElementsAre("1 kill", "2 init", "2 set", "1 set"));
        refuse(1, "apply");
        EXPECT_TRUE(sheet->SetActivePage(2));
        Take();
        ClickItem(*sheet, IDOK);
        EXPECT_THAT(Take(), ElementsAre("3 kill", "1 apply", "1 set"));
        EXPECT_EQ(sheet->GetActivePage(), pages[1].get()) << "the page that refused is shown";
        refuse(1, "");
        ClickItem(*sheet, IDOK);
    });
    EXPECT_THAT(Take(), ElementsAre("1 kill", "1 apply", "2 apply", "3 apply", "1 destroy",
                                    "2 destroy", "3 destroy"));
}

TEST_F(PropertySheet, KeysGoRoundThePages) {
    Write(2, "damaged");
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int active;
    } rows[] = {{Qt::Key_Tab, Qt::ControlModifier, 2}, // the second has no file
                {Qt::Key_Tab, Qt::ControlModifier, 0},
                {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, 2},
                {Qt::Key_PageUp, Qt::ControlModifier, 0},
                {Qt::Key_PageDown, Qt::ControlModifier, 2}};
    Run([&] {
        EXPECT_TRUE(QTest::qWaitForWindowActive(Root()->window()));
        EXPECT_FALSE(Tabs()->isTabVisible(1));
        EXPECT_FALSE(sheet->SetActivePage(1));
        for (const auto& row : rows) {
            Key(row.key, row.modifiers);
            EXPECT_EQ(sheet->GetActiveIndex(), row.active) << row.key;
        }
        sheet->EndDialog(1);
    });
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"DLG_2", "Internal Error! Failed to create Dialog vcontroller",
                                     MB_OKCANCEL}));
    EXPECT_EQ(log.TakeLog().size(), 1u);
}

TEST_F(PropertySheet, WithoutAPageToShowItFails) {
    EXPECT_EQ(CPropertySheet("Empty").DoModal(), -1);
    for (const int id : {1, 2, 3}) pages[id]->answers["set"] = 0;
    EXPECT_EQ(sheet->DoModal(), -1);
    EXPECT_THAT(Take().size(), 9u);
    CPropertySheet broken("Broken", nullptr, 7);
    TestPage missing(77, calls);
    broken.AddPage(&missing);
    EXPECT_EQ(broken.DoModal(), -1);
    EXPECT_EQ(boxes.Take().size(), 1u);
    log.Ignore();
}

TEST_F(PropertySheet, ButtonsFollowTheFlags) {
    sheet->m_psh.dwFlags |= PSH_NOAPPLYNOW | PSH_HASHELP;
    pages[2]->m_psp.dwFlags |= PSP_HASHELP;
    sheet->SetTitle("Port", PSH_PROPTITLE);
    Run([&] {
        EXPECT_EQ(sheet->nsWindow->windowTitle(), "Port Properties");
        EXPECT_FALSE(sheet->PressButton(PSBTN_APPLYNOW));
        EXPECT_FALSE(sheet->PressButton(PSBTN_HELP)) << "the first page has none";
        sheet->SetActivePage(1);
        Take();
        ClickItem(*sheet, IDHELP);
        EXPECT_THAT(Take(), ElementsAre("2 help"));
        pages[2]->CancelToClose();
        EXPECT_EQ(Button(IDOK)->text(), "Close");
        Key(Qt::Key_Escape);
        EXPECT_TRUE(sheet->view) << "nothing left to cancel";
        EXPECT_EQ(pages[1]->QuerySiblings(1, 0), 0);
        EXPECT_EQ(pages[1]->QuerySiblings(43, 0), 42);
        sheet->EndDialog(1);
    });
}

TEST_F(PropertySheet, PagesComeAndGoWhileItIsOpen) {
    Write(4, PageFile("Four", 600, 100));
    TestPage fourth(4, calls);
    const int result = Run([&] {
        const int width = Root()->width();
        sheet->AddPage(&fourth);
        EXPECT_GE(Root()->width(), std::max(width, 600));
        EXPECT_TRUE(sheet->SetActivePage(&fourth));
        Take();
        fourth.SetModified();
        EXPECT_TRUE(Button(ID_APPLY_NOW)->isEnabled());
        sheet->RemovePage(&fourth);
        EXPECT_FALSE(Button(ID_APPLY_NOW)->isEnabled());
        EXPECT_THAT(Take(), ElementsAre("4 destroy", "3 init", "3 set"));
        EXPECT_EQ(fourth.GetParentSheet(), nullptr);
        EXPECT_EQ(Tabs()->count(), 3);
        pages[3].reset();
        EXPECT_EQ(sheet->GetActivePage(), nullptr);
        Soon([&] {
            EXPECT_EQ(sheet->GetActivePage(), pages[2].get());
            while (sheet->GetPageCount() > 0) sheet->RemovePage(0);
        });
    });
    EXPECT_EQ(result, IDCANCEL) << "without pages it ends";
}

// Any handler may take the sheet or the page away, or end it.
TEST_F(PropertySheet, MayBeDeletedInEachHandler) {
    for (const char* what : {"init", "set", "kill", "apply", "query", "reset", "destroy"}) {
        for (const char* how : {"sheet", "page", "end", "other"}) {
            SCOPED_TRACE(std::string(what) + " " + how);
            Calls list;
            sheet = std::make_unique<CPropertySheet>("Short");
            std::map<int, std::unique_ptr<TestPage>> own;
            for (int id : {1, 2}) {
                own[id] = std::make_unique<TestPage>(id, list);
                sheet->AddPage(own[id].get());
            }
            bool done = false;
            own[1]->during[what] = [&, how = std::string(how)] {
                if (std::exchange(done, true)) return;
                if (how == "sheet") sheet.reset();
                if (how == "page") own.erase(1);
                if (how == "other") own.erase(2);
                if (how == "end") sheet->EndDialog(5);
            };
            Soon([&] {
                if (sheet && sheet->view) sheet->PressButton(PSBTN_APPLYNOW);
                if (own.count(1)) own[1]->SetModified();
                if (sheet && sheet->view) sheet->PressButton(PSBTN_APPLYNOW);
                if (sheet && sheet->view) sheet->PressButton(PSBTN_CANCEL);
                if (sheet && !sheet->ended) sheet->EndDialog(6);
            });
            const int result = sheet->DoModal();
            EXPECT_TRUE(done || own.count(1) == 0);
            const bool ended = how == std::string("end");
            EXPECT_EQ(result == 5, ended);
            RunFor(std::chrono::milliseconds(1));
            EXPECT_THAT(vm::NativeApplication::Shared().Windows(), IsEmpty());
            EXPECT_EQ(vm::App().displayDlg, 0);
        }
    }
}

TEST_F(PropertySheet, WhatAHandlerThrowsIsShownInAnAlert) {
    pages[2]->during["set"] = [] { throw std::runtime_error("port lost"); };
    const int result =
        Run([&] { QTest::mouseClick(Tabs(), Qt::LeftButton, {}, Tabs()->tabRect(1).center()); });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"std::runtime_error", "port lost", MB_ICONERROR}));
}

TEST_F(PropertySheet, WizardTurnsPages) {
    sheet->SetTitle(nullptr);
    sheet->SetWizardMode();
    const int result = Run([&] {
        EXPECT_EQ(sheet->nsWindow->windowTitle(), "One");
        EXPECT_EQ(Tabs(), nullptr);
        EXPECT_FALSE(Button(ID_WIZBACK)->isEnabled());
        pages[1]->answers["next"] = 0;
        Key(Qt::Key_Return);
        EXPECT_EQ(sheet->GetActiveIndex(), 0) << "-1 stays";
        pages[1]->answers["next"] = 4;
        Take();
        Key(Qt::Key_Return);
        EXPECT_THAT(Take(), ElementsAre("1 next", "1 kill", "3 init", "3 set"));
        EXPECT_EQ(sheet->nsWindow->windowTitle(), "Last");
        EXPECT_FALSE(Button(ID_WIZNEXT)->isVisible());
        ClickItem(*sheet, ID_WIZBACK);
        EXPECT_THAT(Take(), ElementsAre("3 back", "3 kill", "2 init", "2 set"));
        sheet->SetWizardButtons(PSWIZB_NEXT | PSWIZB_BACK);
        ClickItem(*sheet, ID_WIZNEXT);
        pages[3]->answers["finish"] = 0;
        EXPECT_TRUE(sheet->PressButton(PSBTN_FINISH));
        EXPECT_TRUE(sheet->view);
        sheet->SetFinishText("Send");
        EXPECT_EQ(Button(ID_WIZFINISH)->text(), "Send");
        pages[3]->answers["finish"] = 1;
        Key(Qt::Key_Return);
    });
    EXPECT_EQ(result, ID_WIZFINISH);
}

TEST_F(PropertySheet, WizardStepsOverPagesThatCannotBeLoaded) {
    Write(2, "damaged");
    TestPage missing(77, calls);
    sheet->AddPage(&missing);
    sheet->SetWizardMode();
    Run([&] {
        EXPECT_TRUE(sheet->PressButton(PSBTN_NEXT));
        EXPECT_EQ(sheet->GetActiveIndex(), 2);
        EXPECT_TRUE(Button(ID_WIZFINISH)->isVisible()) << "nothing comes after";
        EXPECT_TRUE(sheet->PressButton(PSBTN_BACK));
        EXPECT_EQ(sheet->GetActiveIndex(), 0);
        sheet->EndDialog(1);
    });
    EXPECT_EQ(boxes.Take().size(), 2u);
    log.Ignore();
}

TEST_F(PropertySheet, WizardButtonsFollowThePages) {
    Write(4, PageFile("Four", 100, 100));
    TestPage fourth(4, calls);
    sheet->SetWizardMode();
    Run([&] {
        sheet->SetActivePage(2);
        sheet->AddPage(&fourth);
        EXPECT_TRUE(Button(ID_WIZNEXT)->isVisible());
        sheet->RemovePage(&fourth);
        EXPECT_TRUE(Button(ID_WIZFINISH)->isVisible());
        sheet->SetFinishText("Send");
        sheet->AddPage(&fourth);
        EXPECT_FALSE(Button(ID_WIZNEXT)->isVisible()) << "the host has set them";
        EXPECT_FALSE(Button(ID_WIZBACK)->isVisible());
        sheet->SetWizardButtons(PSWIZB_BACK | PSWIZB_FINISH);
        EXPECT_TRUE(Button(ID_WIZBACK)->isVisible());
        EXPECT_EQ(Button(ID_WIZFINISH)->text(), "Send");
        sheet->SetActivePage(3);
        EXPECT_EQ(Button(ID_WIZFINISH)->text(), "&Finish");
        sheet->EndDialog(1);
    });
}

// A message box about a page runs a loop: timers and posted messages come.
TEST_F(PropertySheet, MayChangeWhileAPageIsReported) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 680, 490}, nullptr, 0);
    std::map<int, std::unique_ptr<TestPage>> own;
    const struct {
        const char* what;
        std::function<void()> change;
        int result;
    } rows[] = {{"sheet deleted", [&] { sheet.reset(); }, -1},
                {"page deleted", [&] { own.erase(1); }, 6},
                {"pages deleted", [&] { own.clear(); }, -1},
                {"page added", [&] { sheet->AddPage(pages[3].get()); }, 6},
                {"ended", [&] { sheet->EndDialog(5); }, 5}};
    for (const bool isModal : {true, false}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.what);
            sheet = std::make_unique<CPropertySheet>("Short");
            for (int id : {1, 77, 2}) {
                own[id] = std::make_unique<TestPage>(id, calls);
                own[id]->during["set"] = [&] { sheet->EndDialog(6); };
                sheet->AddPage(own[id].get());
            }
            const vm::MessageBoxHandler before = vm::SetMessageBoxHandler({});
            vm::SetMessageBoxHandler([&](const char*, const char*, UINT) {
                row.change();
                return IDOK;
            });
            if (isModal)
                EXPECT_EQ(sheet->DoModal(), row.result);
            else
                EXPECT_FALSE(sheet->Create(&top));
            vm::SetMessageBoxHandler(before);
            own.clear();
        }
    }
    sheet.reset();
    log.Ignore();
    top.DestroyWindow();
}

TEST_F(PropertySheet, IsEmbeddedInAWindow) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 680, 490}, nullptr, 0);
    ASSERT_TRUE(sheet->Create(&top));
    EXPECT_THAT(Take(), ElementsAre("1 init", "1 set"));
    EXPECT_EQ(sheet->DoModal(), IDCANCEL);
    EXPECT_THAT(log.TakeLog(), ElementsAre("CPropertySheet::DoModal: the sheet is open already"));
    EXPECT_GE(sheet->view->width(), 380);
    EXPECT_TRUE(pages[1]->view->isVisible());
    EXPECT_EQ(sheet->view->findChildren<QPushButton*>().size(), 3) << "those of the pages";
    QTest::mouseClick(Tabs(), Qt::LeftButton, {}, Tabs()->tabRect(1).center());
    Take();
    EXPECT_TRUE(sheet->ApplyChanges());
    EXPECT_THAT(Take(), ElementsAre("2 kill", "1 apply", "2 apply", "2 set"));
    sheet->EndDialog(1);
    EXPECT_THAT(Take(), ElementsAre("1 destroy", "2 destroy"));
    EXPECT_EQ(sheet->view, nullptr);
    ASSERT_TRUE(sheet->Create(&top)) << "again";
    top.DestroyWindow();
    RunFor(std::chrono::milliseconds(1));
    EXPECT_EQ(sheet->view, nullptr);
    EXPECT_FALSE(sheet->SetActivePage(7));
    EXPECT_FALSE(CPropertySheet("No parent").Create(nullptr));
}
