// Trees of interface files: the delegate, the check column, and the object that is bound to them.
#include <QtCore/QCoreApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeView>

#include <vmcore/controls/CTreeCtrl.h>

#include "DialogsFixture.h"

using DialogTree = DialogsFixture;

TEST_F(DialogTree, CheckBoxesComeFromTheFileOrTheObject) {
    const std::string delegate = UiDynamic("delegate", "TCOutlineViewDataSource");
    const struct {
        std::string properties;
        DWORD style;
        int columns;
    } rows[] = {
        {delegate, 0, 1},
        {"", 0, 1},
        {delegate + UiBool("checkBoxes", true), 0, 2},
        {delegate, TVS_CHECKBOXES, 2},
        {"", TVS_CHECKBOXES, 2},
    };
    for (int id = 1; const auto& row : rows) {
        SCOPED_TRACE(++id);
        Write(id, UiDialog(UiControl("QTreeView", 20, row.properties)));
        TestDialog dialog(id);
        CTreeCtrl tree;
        tree.style = row.style;
        dialog.exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, 20, tree); };
        Soon([&] {
            const HTREEITEM item = tree.InsertItem("item");
            dialog.UpdateData(FALSE);
            EXPECT_EQ(tree.GetChildItem(nullptr), item) << "bound again, the items stay";
            EXPECT_EQ(tree.SetCheck(item), row.columns == 2);
            EXPECT_EQ(tree.tableView->header()->count(), row.columns);
            QCoreApplication::processEvents();
            EXPECT_TRUE(tree.tableView->indexBelow(tree.tableView->model()->index(0, 0)).isValid());
            dialog.EndDialog(0);
        });
        dialog.DoModal();
    }
}
