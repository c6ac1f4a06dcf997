// What users do with a tree, what they see of it, and handlers that take it apart meanwhile.
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CDC.h>

#include "TreeFixture.h"

using testing::IsEmpty;

namespace {

class TreeUser : public TreeFixture {
protected:
    // Three rows with check boxes.
    void MakeChecked() {
        Make(WS_VISIBLE | TVS_CHECKBOXES);
        a = m_tree->InsertItem("A");
        b = m_tree->InsertItem("B", a);
        m_tree->Expand(a, TVE_EXPAND);
    }
    HTREEITEM a = nullptr;
    HTREEITEM b = nullptr;
};

TEST_F(TreeUser, SelectionsGoToTheTreeItself) {
    a = m_tree->InsertItem("A");
    int ownHandle = 0;
    m_tree->resourceBundle = &ownHandle;
    ClickCell(1);
    ASSERT_EQ(m_tree->notices.size(), 1u);
    const NMTREEVIEW notice = m_tree->notices[0];
    EXPECT_EQ(notice.hdr.hwndFrom, m_tree->view);
    EXPECT_EQ(notice.hdr.idFrom, 55u);
    EXPECT_EQ(notice.hdr.code, TVN_SELCHANGED);
    EXPECT_EQ(notice.itemNew.hItem, a);
    EXPECT_EQ(m_tree->resourceHandle, &ownHandle);
    EXPECT_EQ(m_tree->GetSelectedItem(), a);

    PressKey(&View(), Qt::Key_Up);
    EXPECT_EQ(m_tree->notices.back().itemNew.hItem, nullptr) << "the top row is no item";
    EXPECT_STREQ(m_tree->GetItemText(m_tree->GetSelectedItem()), "Instruments");
    PressKey(&View(), Qt::Key_A, {}, "a");
    EXPECT_EQ(m_tree->GetSelectedItem(), a);
    m_tree->notifyEnabled = 0;
    ClickCell(0);
    EXPECT_EQ(m_tree->notices.size(), 3u);
    EXPECT_THAT(m_window.notifications, IsEmpty()) << "nobody hands them on";
}

TEST_F(TreeUser, CheckBoxesAreClickedAndSet) {
    EXPECT_FALSE(m_tree->SetCheck(m_tree->InsertItem("x"), 1)) << "without the style";
    MakeChecked();
    QCoreApplication::processEvents();
    EXPECT_EQ(View().columnWidth(1), 80);
    EXPECT_EQ(View().columnWidth(0), View().viewport()->width() - 80);
    ClickCell(1, 1);
    EXPECT_EQ(m_tree->GetCheck(a), 1);
    ASSERT_FALSE(m_tree->notices.empty());
    EXPECT_EQ(m_tree->notices.back().hdr.code, TVN_CHECKCHANGED);
    EXPECT_EQ(m_tree->notices.back().itemNew.hItem, a);
    EXPECT_EQ(m_tree->GetSelectedItem(), nullptr);
    ClickCell(1);
    PressKey(&View(), Qt::Key_Space, {}, " ");
    EXPECT_EQ(m_tree->GetCheck(a), 0) << "Space is the selected row's";
    const std::size_t before = m_tree->notices.size();
    const struct {
        int set, read;
        Qt::CheckState shown;
    } rows[] = {
        {1, 1, Qt::Checked}, {0, 0, Qt::Unchecked}, {255, -1, Qt::Checked}, {256, 0, Qt::Checked}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.set);
        EXPECT_TRUE(m_tree->SetCheck(b, row.set));
        EXPECT_EQ(m_tree->GetCheck(b), row.read);
        EXPECT_EQ(View().indexAt(Cell(2, 1)).data(Qt::CheckStateRole).toInt(), row.shown);
    }
    EXPECT_EQ(m_tree->notices.size(), before);
}

TEST_F(TreeUser, RowsShowTheImagesOfTheirItems) {
    CBitmap bitmaps[2];
    CImageList list;
    EXPECT_EQ(list.Add(&bitmaps[0]), -1) << "without a list";
    EXPECT_TRUE(list.Create(20, 40, ILC_COLOR32, 2, 1));
    EXPECT_EQ(list.Add(&bitmaps[0]), -1) << "without an image";
    for (int i = 0; i < 2; ++i) {
        bitmaps[i].CreateBitmap(20, 40, 1, 32, nullptr);
        CDC memory;
        memory.CreateCompatibleDC(nullptr);
        memory.SelectObject(&bitmaps[i]);
        CBrush brush(i ? RGB(0, 255, 0) : RGB(255, 0, 0));
        memory.FillRect(CRect(0, 0, 20, 40), &brush);
        EXPECT_EQ(i ? list.Add(&bitmaps[i], RGB(0, 0, 0)) : list.Add(&bitmaps[i]), i);
    }
    m_tree->InsertItem("pictured", 0, 1);
    const auto pixel = [&] {
        const int y = Cell(1).y();
        return View().grab().toImage().pixelColor(2 * View().indentation() + 14, y).name();
    };
    EXPECT_EQ(m_tree->SetImageList(&list, TVSIL_STATE), nullptr);
    EXPECT_EQ(m_tree->stateImageList, list.GetSafeHandle());
    EXPECT_NE(pixel(), "#ff0000");
    m_tree->SetImageList(&list, TVSIL_NORMAL);
    EXPECT_GE(Cell(1).y() - Cell(0).y(), 40) << "rows are as high as the images";
    EXPECT_EQ(pixel(), "#ff0000");
    ClickCell(1);
    EXPECT_EQ(pixel(), "#00ff00");
    bitmaps[1].DeleteObject();
    EXPECT_NE(pixel(), "#00ff00");
    ClickCell(0);
    EXPECT_EQ(pixel(), "#ff0000");
    EXPECT_EQ(list.GetImageCount(), 2);
    EXPECT_TRUE(list.DeleteImageList());
    EXPECT_NE(pixel(), "#ff0000");
    EXPECT_FALSE(list.DeleteImageList());
}

// Inside a selection and inside a click on a check box, with a loop that frees what can be freed.
TEST_F(TreeUser, HandlersMayTakeTheTreeApart) {
    const struct {
        const char* what;
        std::function<void()> act;
    } rows[] = {
        {"the item", [this] { m_tree->DeleteItem(b); }},
        {"the item around", [this] { m_tree->DeleteItem(a); }},
        {"all items", [this] { m_tree->DeleteAllItems(); }},
        {"others come",
         [this] {
             m_tree->DeleteItem(a);
             m_tree->Expand(m_tree->InsertItem("C"), TVE_EXPAND);
         }},
        {"the window",
         [this] {
             m_tree->DestroyWindow();
             EXPECT_EQ(m_tree->InsertItem("x"), m_tree->GetChildItem(nullptr));
             EXPECT_FALSE(m_tree->DeleteItem(a) || m_tree->DeleteAllItems());
         }},
        {"the tree", [this] { m_tree.reset(); }},
        {"the tree, in a loop of the handler",
         [this] {
             QEventLoop loop;
             QMetaObject::invokeMethod(
                 &loop,
                 [&] {
                     m_tree.reset();
                     QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
                 },
                 Qt::QueuedConnection);
             loop.exec();
         }},
    };
    for (const int column : {0, 1}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.what) + " in column " + std::to_string(column));
            MakeChecked();
            int notices = 0;
            m_tree->onNotice = [&] {
                ++notices;
                row.act();
                Turn();
            };
            const QPointer<QTreeView> view = &View();
            Click(view->viewport(), Cell(2, column));
            Turn();
            EXPECT_EQ(notices, 1);
            if (view) view->grab();
            m_log.Ignore();
        }
    }
}

} // namespace
