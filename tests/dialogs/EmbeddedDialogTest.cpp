// Dialogs as views of another window.
#include "DialogsFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "wnd/CWndNSView.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EmbeddedDialog : public DialogsFixture {
protected:
    EmbeddedDialog() {
        top.Create("", "Top", WS_VISIBLE | WS_OVERLAPPEDWINDOW, RECT{80, 90, 580, 490}, nullptr, 0);
        Write(3, UiDialog(UiControl("QPushButton", 20, UiRect("geometry", 10, 20, 80, 28)) +
                              UiControl("QLineEdit", 21, UiRect("geometry", 10, 60, 80, 28)),
                          "QWidget"));
    }
    ~EmbeddedDialog() override { top.DestroyWindow(); }

    RecordingWindow top;
    TestDialog page;
};

} // namespace

TEST_F(EmbeddedDialog, IsAViewOfItsParentAndToldSo) {
    std::vector<int> life;
    for (const int number : {WM_CREATE, WM_SHOWWINDOW})
        page.on[number] = [&life, number](WPARAM, LPARAM) { return life.push_back(number), 0; };
    page.onInit = [&] { life.push_back(WM_INITDIALOG); };
    page.style = 0;
    EXPECT_TRUE(page.Create(3, &top));
    EXPECT_THAT(life, ElementsAre(WM_CREATE, WM_INITDIALOG, WM_SHOWWINDOW));
    EXPECT_EQ(page.templateId, 3);
    EXPECT_EQ(page.parentWnd, &top);
    EXPECT_EQ(page.view->parentWidget(), top.view);
    EXPECT_EQ(page.view->geometry(), QRect(0, 0, 300, 200));
    EXPECT_TRUE(page.view->isVisible());
    EXPECT_TRUE(page.isCustomNSView());
    EXPECT_FALSE(dynamic_cast<CWndView&>(*page.view).isFlipped());
    EXPECT_EQ(GetControlReference(page.view), &page);
    EXPECT_EQ(page.GetDlgItem(20)->view->y(), 20) << "not upside down";
    EXPECT_THAT(page.saves, ElementsAre(false));
}

TEST_F(EmbeddedDialog, ControlsReportToIt) {
    ASSERT_TRUE(page.Create(3, &top));
    page.Take();
    ClickItem(page, 20);
    EXPECT_THAT(page.Take(WM_COMMAND),
                ElementsAre(Message{WM_COMMAND, MAKEWPARAM(20, BN_CLICKED),
                                    AsParameter(page.GetDlgItem(20)->view)}));
    QTest::mouseClick(page.view, Qt::LeftButton, {}, QPoint(200, 150));
    EXPECT_THAT(page.Take(WM_LBUTTONDOWN),
                ElementsAre(Message{WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 150)}))
        << "positions count from the top";
}

TEST_F(EmbeddedDialog, WithoutFileOrParentThereIsNone) {
    EXPECT_FALSE(page.Create(77, &top));
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(ShownBox{"DLG_77", "Internal Error! Failed to create Dialog vcontroller", 1}));
    EXPECT_THAT(log.TakeLog(), ElementsAre("interface file " + bundle.PathOf("DLG_77") +
                                           ": No such file or directory"));
    CWnd without;
    EXPECT_FALSE(page.Create(3, &without));
    EXPECT_FALSE(page.Create(3, nullptr));
    EXPECT_EQ(page.view, nullptr);
    EXPECT_FALSE(page.Create("DLG_3", &top));
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"CDialog::Create (LPCTSTR) should never be called!", "", 1}));
}

TEST_F(EmbeddedDialog, ItsParentDecidesAboutItsSize) {
    Write(3, UiDialog(UiSize("minimumSize", 290, 190) + UiSize("maximumSize", 310, 210)));
    ASSERT_TRUE(page.Create(3, &top));
    for (const QSize& size : {QSize(100, 50), QSize(450, 350)}) {
        page.MoveWindow(0, 0, size.width(), size.height());
        EXPECT_EQ(page.view->size(), size);
    }
}

TEST_F(EmbeddedDialog, MayGoInAnyOfItsHandlers) {
    for (const int number : {WM_CREATE, WM_INITDIALOG, WM_SHOWWINDOW, WM_COMMAND, WM_SIZE}) {
        for (const bool deleted : {true, false}) {
            SCOPED_TRACE(vm::Format("%d deleted %d", number, deleted));
            auto owner = std::make_unique<TestDialog>();
            TestDialog* dialog = owner.get();
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
            const bool survives = number == WM_COMMAND || number == WM_SIZE;
            EXPECT_EQ(dialog->Create(3, &top), survives);
            if (!survives) continue;
            const QPointer<QWidget> view = dialog->view;
            if (number == WM_COMMAND)
                ClickItem(*dialog, 20);
            else
                dialog->MoveWindow(0, 0, 90, 80);
            RunFor(std::chrono::milliseconds(1));
            EXPECT_EQ(view.isNull(), !deleted) << "the view belongs to its parent";
            if (view) QTest::mouseClick(view->findChild<QPushButton*>(), Qt::LeftButton);
            delete view.data();
        }
    }
}

TEST_F(EmbeddedDialog, ReturnAndEscapeReachTheDialogAroundIt) {
    TestDialog outer;
    outer.onInit = [&] { ASSERT_TRUE(page.Create(3, &outer)); };
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        Soon([&] {
            auto* line = Item<QLineEdit>(page, 21);
            line->setFocus();
            QTest::keyClick(line, key);
        });
        EXPECT_EQ(outer.DoModal(), key == Qt::Key_Return ? IDOK : IDCANCEL);
        EXPECT_THAT(page.Take(WM_KEYDOWN), IsEmpty());
        RunFor(std::chrono::milliseconds(1));
        EXPECT_EQ(page.view, nullptr);
    }
}

TEST_F(EmbeddedDialog, AKeyOfItsControlsIsTranslatedOnce) {
    std::vector<CWnd*> asked;
    page.translate = [&](MSG*) { return asked.push_back(&page), FALSE; };
    top.translate = [&](MSG*) { return asked.push_back(&top), FALSE; };
    ASSERT_TRUE(page.Create(3, &top));
    QTest::keyClick(Item<QLineEdit>(page, 21), Qt::Key_F5);
    EXPECT_THAT(asked, ElementsAre(&page, &top));
}
