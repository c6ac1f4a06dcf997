// The items of the tree control and what the program does with them.
#include <algorithm>
#include <random>

#include <QtWidgets/QScrollBar>

#include "TreeFixture.h"
#include "controls/CellData.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using TreeCtrl = TreeFixture;

const ShownBox kNotHandled{"CTreeCtrl::Select() command not handled", "VMCore", 1};

TEST_F(TreeCtrl, ShowsItsTopRowAndItemsInTheOrderOfInsertion) {
    EXPECT_EQ(View().geometry(), QRect(10, 20, 300, 200));
    EXPECT_EQ(m_window.GetDlgItem(55), m_tree.get());
    EXPECT_EQ(m_tree->GetChildItem(nullptr), nullptr);
    const HTREEITEM a = m_tree->InsertItem("A", TVI_ROOT, TVI_LAST);
    const HTREEITEM b = m_tree->InsertItem("B\x8e", TVI_ROOT, TVI_FIRST);
    const HTREEITEM a1 = m_tree->InsertItem("a1", a);
    EXPECT_THAT(Rows(), ElementsAre("Instruments", ".A", ".B\xc3\xa9"));
    m_tree->Expand(a, TVE_EXPAND);
    EXPECT_THAT(Rows(), ElementsAre("Instruments", ".A", "..a1", ".B\xc3\xa9"));
    EXPECT_EQ(m_tree->GetChildItem(TVI_ROOT), a);
    EXPECT_EQ(m_tree->GetNextItem(a, TVGN_NEXT), b);
    EXPECT_EQ(m_tree->GetNextItem(a, 1), nullptr);
    EXPECT_EQ(m_tree->GetNextItem(b, TVGN_NEXT), nullptr);
    EXPECT_EQ(m_tree->GetParentItem(a), nullptr);
    EXPECT_EQ(m_tree->GetParentItem(a1), a);
    EXPECT_TRUE(m_tree->ItemHasChildren(a));
    EXPECT_FALSE(m_tree->ItemHasChildren(b));
    EXPECT_STREQ(m_tree->GetItemText(b), "B\x8e");
    EXPECT_EQ(m_tree->WindowProc(TVM_ANSWERED, 0, 0), 1);
}

TEST_F(TreeCtrl, ItemsAreCountedAndFoundByTheirSiblings) {
    EXPECT_EQ(m_tree->GetCount(), 0u);
    EXPECT_EQ(m_tree->GetRootItem(), nullptr);
    const HTREEITEM a = m_tree->InsertItem("A");
    const HTREEITEM b = m_tree->InsertItem("B");
    const HTREEITEM b1 = m_tree->InsertItem("b1", b);
    EXPECT_EQ(m_tree->GetRootItem(), a);
    const struct {
        HTREEITEM item, previous, next;
    } rows[] = {
        {a, nullptr, b}, {b, a, nullptr}, {b1, nullptr, nullptr}, {nullptr, nullptr, nullptr}};
    for (const auto& [item, previous, next] : rows) {
        EXPECT_EQ(m_tree->GetPrevSiblingItem(item), previous) << m_tree->GetItemText(item);
        EXPECT_EQ(m_tree->GetNextSiblingItem(item), next) << m_tree->GetItemText(item);
    }
    EXPECT_TRUE(m_tree->SetItemData(b1, 9));
    EXPECT_EQ(m_tree->GetItemData(b1), 9u);
    EXPECT_FALSE(m_tree->SetItemData(nullptr, 9));
    EXPECT_EQ(m_tree->GetCount(), 3u);
    m_tree->DeleteItem(b);
    EXPECT_EQ(m_tree->GetCount(), 1u);
    m_tree->DeleteAllItems();
    EXPECT_EQ(m_tree->GetCount(), 0u);
}

TEST_F(TreeCtrl, TakesTheValuesThatTheMaskNames) {
    char text[] = "text";
    for (const UINT mask : {0u, 1u, 2u, 4u, 16u, 32u, 55u}) {
        const TVINSERTSTRUCT record{nullptr, nullptr, {mask, nullptr, 5, 0, text, 0, 6, 7, 0, 8}};
        const CellData* node = m_tree->InsertItem(&record);
        SCOPED_TRACE(mask);
        EXPECT_EQ(node->data, mask & 1 ? 8u : 0u);
        EXPECT_EQ(node->nImage, mask & 2 ? 6 : 0);
        EXPECT_EQ(node->str, mask & 4 ? "text" : "");
        EXPECT_EQ(node->nSelImage, mask & 16 ? 7 : 0);
        EXPECT_EQ(node->nState, mask & 32 ? 5u : 0u);
    }
    const HTREEITEM all = m_tree->InsertItem(0u, "x", 1, 2, 3, 0, 4, nullptr, nullptr);
    EXPECT_THAT((std::vector<int>{all->nImage, all->nSelImage, static_cast<int>(all->nState),
                                  static_cast<int>(m_tree->GetItemData(all))}),
                ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(m_tree->InsertItem("x", 1, 2, all)->nSelImage, 2);
}

TEST_F(TreeCtrl, DeadForeignAndInventedHandlesActAsNull) {
    const HTREEITEM a = m_tree->InsertItem("A");
    const HTREEITEM below = m_tree->InsertItem("below", m_tree->InsertItem("child", a));
    BankTree other;
    other.Create(WS_VISIBLE, RECT{0, 0, 50, 50}, &m_window, 56);
    const HTREEITEM foreign = other.InsertItem("foreign");
    EXPECT_TRUE(m_tree->DeleteItem(a));
    for (const HTREEITEM item : {a, below, foreign, reinterpret_cast<HTREEITEM>(&m_log)}) {
        EXPECT_FALSE(m_tree->DeleteItem(item) || m_tree->SetItemText(item, "x"));
        EXPECT_FALSE(m_tree->Expand(item, TVE_EXPAND) || m_tree->EnsureVisible(item));
        EXPECT_FALSE(m_tree->GetParentItem(item) || m_tree->GetNextItem(item, 0));
        EXPECT_FALSE(m_tree->GetItemData(item) || m_tree->GetCheck(item));
        EXPECT_FALSE(m_tree->Select(item, TVGN_CARET));
        ExpectUnknownItems(9);
    }
    const HTREEITEM orphan = m_tree->InsertItem("orphan", foreign);
    EXPECT_EQ(m_tree->GetParentItem(orphan), nullptr);
    EXPECT_THAT(Rows(), ElementsAre("Instruments", ".orphan"));
    EXPECT_STREQ(other.GetItemText(foreign), "foreign");
    ExpectUnknownItems(1);
}

// Against a plain vector, at both ends and in the middle, whether the view has seen them or not.
TEST_F(TreeCtrl, KeepsItsOrderThroughAnyDeletions) {
    std::minstd_rand random(7);
    std::vector<HTREEITEM> expected;
    for (int round = 0; round < 3000; ++round) {
        const std::size_t size = expected.size();
        if (size < 3 || random() % 5 < 2 + (round < 1000)) {
            expected.push_back(m_tree->InsertItem(std::to_string(round).c_str()));
            continue;
        }
        const std::size_t places[] = {0, size - 1, random() % size};
        const auto at = expected.begin() + static_cast<std::ptrdiff_t>(places[random() % 3]);
        m_tree->DeleteItem(*at);
        expected.erase(at);
        if (round % 100 == 0) Turn();
    }
    std::vector<HTREEITEM> walked;
    for (HTREEITEM at = m_tree->GetChildItem(nullptr); at; at = m_tree->GetNextItem(at, TVGN_NEXT))
        walked.push_back(at);
    EXPECT_EQ(walked, expected);
    EXPECT_EQ(Rows().size(), expected.size() + 1);
}

TEST_F(TreeCtrl, ExpansionSelectionAndScrollPositionStayWithTheItems) {
    for (const DWORD style : {DWORD{WS_VISIBLE}, WS_VISIBLE | TVS_CHECKBOXES}) {
        Make(style);
        std::vector<HTREEITEM> groups;
        for (int i = 0; i < 60; ++i) {
            groups.push_back(m_tree->InsertItem(("G" + std::to_string(i)).c_str()));
            m_tree->InsertItem(("g" + std::to_string(i)).c_str(), groups.back());
        }
        m_tree->Expand(groups[2], TVE_EXPAND);
        m_tree->Expand(groups[5], TVE_EXPAND);
        m_tree->DeleteItem(groups[0]);
        m_tree->Expand(groups[3], TVE_EXPAND);
        m_tree->Select(groups[5], TVGN_CARET);
        m_boxes.Take();
        Turn();
        View().verticalScrollBar()->setValue(37);
        m_tree->DeleteItem(groups[1]);
        m_tree->DeleteItem(groups[2]);
        m_tree->InsertItem("last");
        m_tree->Expand(groups[3], TVE_COLLAPSE);
        auto rows = Rows();
        rows.resize(6);
        EXPECT_THAT(rows, ElementsAre("Instruments", ".G3", ".G4", ".G5", "..g5", ".G6"));
        EXPECT_EQ(m_tree->GetSelectedItem(), groups[5]);
        EXPECT_EQ(View().currentIndex().row(), 2);
        for (const QModelIndex& index : View().selectionModel()->selectedIndexes())
            EXPECT_EQ(index.row(), 2) << "in column " << index.column();
        EXPECT_EQ(View().verticalScrollBar()->value(), 37);
        EXPECT_THAT(m_tree->notices, IsEmpty());
    }
}

TEST_F(TreeCtrl, ExpandAndEnsureVisibleActOnWhatIsShown) {
    const HTREEITEM a = m_tree->InsertItem("A");
    HTREEITEM last = nullptr;
    for (int i = 0; i < 50; ++i) last = m_tree->InsertItem("a", a);
    EXPECT_TRUE(m_tree->EnsureVisible(last));
    EXPECT_EQ(Rows().size(), 2u) << "a collapsed item stays so";
    EXPECT_FALSE(m_tree->Expand(a, 3));
    EXPECT_TRUE(m_tree->Expand(a, TVE_EXPAND));
    EXPECT_TRUE(m_tree->EnsureVisible(last));
    EXPECT_TRUE(View().viewport()->rect().contains(Cell(51)));
    EXPECT_TRUE(m_tree->Expand(last, TVE_EXPAND));
    m_tree->InsertItem("below", last);
    EXPECT_EQ(Rows().size(), 52u) << "an item without children has nothing to expand";
}

TEST_F(TreeCtrl, SelectShowsItsBoxWhateverItDid) {
    const HTREEITEM a = m_tree->InsertItem("A");
    const HTREEITEM inner = m_tree->InsertItem("a", a);
    EXPECT_FALSE(m_tree->Select(nullptr, TVGN_CARET));
    EXPECT_THAT(m_boxes.Take(), IsEmpty());
    EXPECT_FALSE(m_tree->Select(a, 9));
    EXPECT_THAT(m_boxes.Take(), ElementsAre(kNotHandled));
    EXPECT_TRUE(m_tree->SelectItem(a));
    EXPECT_EQ(m_tree->GetSelectedItem(), nullptr);
    EXPECT_FALSE(m_tree->Select(inner, TVGN_CARET));
    EXPECT_THAT(m_boxes.Take(), ElementsAre(kNotHandled));
    EXPECT_EQ(m_tree->GetSelectedItem(), inner);
    EXPECT_THAT(Rows(), ElementsAre("Instruments", ".A", "..a"));
    EXPECT_THAT(m_tree->notices, IsEmpty());
    EXPECT_FALSE(m_tree->HitTest(CPoint(1, 1)) || m_tree->HitTest(nullptr));
    const auto boxes = m_boxes.Take();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].text, "CTreeCtrl::HitTest(pt) - not currently used or implemented");
    EXPECT_EQ(boxes[1].text,
              "CTreeCtrl::HitTest(TVHITTESTINFO) - not currently used or implemented");
}

TEST_F(TreeCtrl, DeletingTheSelectedItemOrOneAroundItSelectsNothing) {
    for (const bool around : {false, true}) {
        const HTREEITEM a = m_tree->InsertItem("A");
        const HTREEITEM inner = m_tree->InsertItem("a", a);
        m_tree->Select(inner, TVGN_CARET);
        m_tree->DeleteItem(around ? a : inner);
        Turn();
        EXPECT_EQ(m_tree->GetSelectedItem(), nullptr);
    }
    EXPECT_THAT(m_tree->notices, IsEmpty());
    m_boxes.Take();
}

TEST_F(TreeCtrl, DeletingAllLeavesAnUntitledTopRow) {
    const HTREEITEM a = m_tree->InsertItem("A");
    m_tree->InsertItem("a", a);
    ClickCell(0);
    const HTREEITEM top = m_tree->GetSelectedItem();
    EXPECT_FALSE(m_tree->DeleteItem(top)) << "the top row stays";
    EXPECT_TRUE(m_tree->DeleteAllItems());
    EXPECT_EQ(m_tree->GetItemData(top) + m_tree->GetItemData(a), 0u);
    ExpectUnknownItems(2);
    EXPECT_THAT(Rows(), ElementsAre(""));
    EXPECT_EQ(m_tree->GetChildItem(nullptr), nullptr);
    EXPECT_EQ(m_tree->GetSelectedItem(), nullptr);
    m_tree->InsertItem("new");
    EXPECT_THAT(Rows(), ElementsAre("", ".new"));
}

// A walk of the whole per change, or a view that is told of each, would take minutes here.
TEST_F(TreeCtrl, ManyItemsComeExpandAndGoOneByOne) {
    std::vector<HTREEITEM> items;
    for (int group = 0; group < 1000; ++group) {
        const HTREEITEM parent = m_tree->InsertItem("group");
        m_tree->Expand(parent, TVE_EXPAND);
        for (int i = 0; i < 100; ++i) items.push_back(m_tree->InsertItem("item", parent));
        m_tree->Expand(parent, TVE_EXPAND);
    }
    EXPECT_EQ(Rows().size(), 101'001u);
    for (const HTREEITEM item : items) m_tree->DeleteItem(item);
    while (const HTREEITEM first = m_tree->GetChildItem(nullptr)) m_tree->DeleteItem(first);
    EXPECT_THAT(Rows(), ElementsAre("Instruments"));
}

} // namespace
