// The lists of a dialog's file, bound to list boxes or left to the dialog.
#include "DialogsFixture.h"

#include <QtWidgets/QTableView>

#include <vmcore/controls/CListBox.h>

#include "controls/listBoxTable.h"
#include "dialogs/dialogLists.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

std::string Entry(const std::string& text) {
    return "<item>" + UiText("toolTip", "no text") + UiText("text", text) + "</item>";
}

constexpr char kSeveral[] = "<property name=\"selectionMode\"><enum>QAbstractItemView::"
                            "ExtendedSelection</enum></property>";
constexpr char kSecondRow[] = "<property name=\"currentRow\"><number>1</number></property>";

} // namespace

using DialogLists = DialogsFixture;

TEST_F(DialogLists, TextsOfAFileAreThoseOfItsListWidgets) {
    const std::string file =
        UiDialog(UiControl("QListWidget", 1, kSeveral + Entry("One &amp; two") + "<item/>") +
                 "<layout class=\"QGridLayout\"><item row=\"0\"><widget class=\"QListWidget\" "
                 "name=\"deep\">" +
                 Entry("Three") + "</widget></item></layout>" +
                 UiControl("QComboBox", 2, Entry("no list")) + UiControl("QListWidget", 3));
    EXPECT_THAT(vm::ListTextsOf(QByteArray::fromStdString(file)),
                ElementsAre(Pair("deep", QStringList{"Three"}),
                            Pair("item1", QStringList{"One & two", ""}),
                            Pair("item3", QStringList{})));
}

TEST_F(DialogLists, BecomeListBoxesWithTheRowsOfTheFile) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 580, 490}, nullptr, 0);
    TestDialog dialog;
    CListBox box;
    CListBox table;
    dialog.exchange = [&](CDataExchange* pDX) {
        DDX_Control(pDX, 20, box);
        DDX_Control(pDX, 22, table);
    };
    Write(3, UiDialog(UiControl("QListWidget", 20,
                                std::string(kSeveral) + kSecondRow + Entry("a\xC3\xA4") +
                                    Entry("b") + Entry("c")) +
                          UiControl("QListView", 21) +
                          UiControl("QTableView", 22, UiDynamic("delegate", "LBTableViewDelegate")),
                      "QWidget"));
    ASSERT_TRUE(dialog.Create(3, &top));
    char text[16];
    EXPECT_EQ(box.GetCount(), 3);
    EXPECT_EQ(box.GetText(0, text), 2);
    EXPECT_STREQ(text, "a\x8A");
    EXPECT_EQ(box.GetCurSel(), 1);
    EXPECT_EQ(box.tableView->selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_EQ(Item<QTableView>(dialog, 21)->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(dialog.SendDlgItemMessage(21, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x")), 0);
    EXPECT_EQ(table.AddString("x"), 0);
    EXPECT_EQ(box.GetParent(), &dialog);
    EXPECT_THAT(dialog.Take(WM_COMMAND), IsEmpty());

    for (const int id : {20, 21, 22}) {
        SCOPED_TRACE(id);
        auto* view = Item<QTableView>(dialog, id);
        view->setGeometry(10, 10, 200, 100);
        DoubleClickRow(view, 0);
        std::vector<WPARAM> sent;
        for (const auto& message : dialog.Take(WM_COMMAND)) sent.push_back(message.wParam);
        EXPECT_THAT(sent, ElementsAre(MAKELONG(id, LBN_SELCHANGE), MAKELONG(id, LBN_DBLCLK)))
            << "bound or not, the dialog is told once";
    }
    top.DestroyWindow();
}
