// Combo boxes: entries, selection, the field.
#include <vmcore/controls/CComboBox.h>

#include <chrono>
#include <cstring>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "../wnd/RecordingWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ComboBox : public WindowFixture {
protected:
    QComboBox& Make(DWORD style) {
        EXPECT_TRUE(m_made.Create(WS_VISIBLE | style, RECT{5, 5, 155, 205}, &child, 60));
        combo.SubclassWindow(m_made.view);
        child.Take();
        return *qobject_cast<QComboBox*>(m_made.view);
    }
    std::string Entry(int index) const {
        CString text("none");
        combo.GetLBText(index, text);
        return static_cast<const char*>(text);
    }
    std::vector<int> Codes() {
        std::vector<int> codes;
        for (const Message& message : child.Take(WM_COMMAND))
            codes.push_back(HIWORD(message.wParam));
        return codes;
    }

    CComboBox combo;

private:
    CComboBox m_made;
};

} // namespace

TEST_F(ComboBox, KeepsEntriesWithTheirNumbers) {
    Make(CBS_DROPDOWNLIST);
    EXPECT_EQ(combo.AddString("Gamma"), 0);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR) << "adding selects nothing";
    EXPECT_EQ(combo.InsertString(0, "Alpha"), 0);
    EXPECT_EQ(combo.InsertString(-1, "alphabet \x8E"), 2);
    EXPECT_EQ(combo.InsertString(4, "x"), CB_ERR);
    EXPECT_EQ(combo.SetItemData(2, 0x123456789ABC), 0);
    EXPECT_EQ(combo.SetItemData(3, 1), CB_ERR);
    EXPECT_EQ(combo.InsertString(1, "Beta"), 1);
    EXPECT_EQ(combo.GetItemData(3), 0x123456789ABCu) << "goes with its entry";
    EXPECT_EQ(combo.GetItemData(0), 0u);
    EXPECT_EQ(combo.GetItemData(4), DWORD_PTR(CB_ERR));
    EXPECT_EQ(combo.SetItemDataPtr(0, this), 0);
    EXPECT_EQ(combo.GetItemDataPtr(0), this);
    EXPECT_EQ(combo.GetLBTextLen(3), 10);
    EXPECT_EQ(Entry(3), "alphabet \x8E");
    EXPECT_EQ(Entry(4), "none");
    struct Row {
        int after;
        const char* text;
        int found, exact;
    };
    for (const Row& row :
         {Row{-1, "ALPHA", 0, 0}, Row{0, "alpha", 3, 0}, Row{3, "alpha", 0, 0},
          Row{-1, "be", 1, CB_ERR}, Row{1, "beta", 1, 1}, Row{-1, "z", CB_ERR, CB_ERR}}) {
        EXPECT_EQ(combo.FindString(row.after, row.text), row.found) << row.text << row.after;
        EXPECT_EQ(combo.FindStringExact(row.after, row.text), row.exact) << row.text << row.after;
    }
    EXPECT_EQ(combo.SelectString(0, "al"), 3);
    EXPECT_EQ(combo.SelectString(-1, "z"), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), 3);
    EXPECT_EQ(combo.DeleteString(3), 3) << "so many are left";
    EXPECT_EQ(combo.GetCurSel(), CB_ERR) << "the selected one has gone";
    EXPECT_EQ(combo.SetCurSel(2), 2);
    EXPECT_EQ(combo.DeleteString(0), 2);
    EXPECT_EQ(combo.GetCurSel(), 1) << "the same entry";
    EXPECT_EQ(combo.SetCurSel(7), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
    EXPECT_THAT(Codes(), IsEmpty());
}

TEST_F(ComboBox, SortsWhatIsAdded) {
    Make(CBS_DROPDOWN | CBS_SORT);
    for (const char* text : {"pear", "Apple", "fig", "apple", "Zebra"}) combo.AddString(text);
    combo.InsertString(-1, "banana");
    std::vector<std::string> entries;
    for (int i = 0; i < combo.GetCount(); ++i) entries.push_back(Entry(i));
    EXPECT_THAT(entries, ElementsAre("Apple", "apple", "fig", "pear", "Zebra", "banana"));
}

TEST_F(ComboBox, TakesManyEntriesQuickly) {
    Make(CBS_DROPDOWNLIST);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20000; ++i) combo.AddString("an entry of usual length");
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    EXPECT_EQ(combo.GetCount(), 20000);
    RecordProperty("milliseconds", std::to_string(taken.count()));
    EXPECT_LT(taken.count(), 1000) << "an addition must not look at all entries";
}

TEST_F(ComboBox, TypingIsReportedAsInATextField) {
    QComboBox& native = Make(CBS_DROPDOWN);
    combo.AddString("Alpha");
    native.lineEdit()->setFocus();
    QTest::keyClicks(native.lineEdit(), "al");
    EXPECT_THAT(Codes(), ElementsAre(EN_SETFOCUS, EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE));
    EXPECT_EQ(native.currentText(), "al") << "not completed";
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    QTest::keyClick(native.lineEdit(), Qt::Key_Return);
    EXPECT_THAT(Codes(), ElementsAre(EN_KILLFOCUS));
    EXPECT_EQ(combo.GetCount(), 1) << "Return adds nothing";
    QTest::keyClick(&native, Qt::Key_Down);
    EXPECT_THAT(Codes(), ElementsAre(CBN_SELCHANGE));
    EXPECT_EQ(combo.GetCurSel(), 0);
    combo.SetWindowText("program");
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.DeleteString(0), 0);
    EXPECT_EQ(native.currentText(), "program");
    EXPECT_THAT(Codes(), IsEmpty());
}

TEST_F(ComboBox, TheFieldHasSelectionAndLimit) {
    QComboBox& native = Make(CBS_DROPDOWN);
    combo.SetWindowText("typed before");
    combo.AddString("first");
    EXPECT_EQ(native.currentText(), "typed before");
    EXPECT_TRUE(combo.SetEditSel(1, 3));
    EXPECT_EQ(combo.GetEditSel(), DWORD(MAKELONG(1, 3)));
    combo.Clear();
    EXPECT_EQ(native.currentText(), "ted before");
    EXPECT_TRUE(combo.LimitText(12));
    combo.SetEditSel(-1, 0);
    QTest::keyClicks(native.lineEdit(), "abcd");
    EXPECT_EQ(native.currentText().size(), 12);
    combo.ResetContent();
    EXPECT_EQ(native.currentText(), "");

    combo.UnsubclassWindow();
    Make(CBS_DROPDOWNLIST);
    EXPECT_FALSE(combo.LimitText(3));
    EXPECT_FALSE(combo.SetEditSel(0, 1));
    EXPECT_EQ(combo.GetEditSel(), DWORD(CB_ERR));
    EXPECT_EQ(combo.Dir(0, "*.*"), -1);
}

TEST_F(ComboBox, OpensItsList) {
    QComboBox& native = Make(CBS_DROPDOWNLIST);
    EXPECT_LT(native.height(), 60) << "the rectangle includes the list";
    for (int i = 0; i < 50; ++i) combo.AddString("entry");
    EXPECT_EQ(combo.SetDroppedWidth(300), 300);
    EXPECT_EQ(combo.SetItemHeight(0, 31), 0);
    EXPECT_EQ(combo.GetItemHeight(0), 31);
    EXPECT_EQ(combo.SetItemHeight(-1, 40), 0);
    EXPECT_EQ(combo.GetItemHeight(-1), 40);
    EXPECT_FALSE(combo.GetDroppedState());
    combo.ShowDropDown();
    EXPECT_TRUE(combo.GetDroppedState());
    EXPECT_EQ(combo.SetTopIndex(20), 0);
    EXPECT_EQ(combo.GetTopIndex(), 20);
    combo.ShowDropDown(FALSE);
    EXPECT_FALSE(combo.GetDroppedState());
    EXPECT_EQ(combo.GetTopIndex(), 0);
}

TEST_F(ComboBox, AnswersItsMessagesWhole) {
    Make(CBS_DROPDOWNLIST);
    CComboBox bound;
    bound.Attach(combo.view);
    const auto send = [&](UINT message, WPARAM wParam = 0, const void* lParam = nullptr) {
        return bound.SendMessage(message, wParam, AsParameter(lParam));
    };
    for (int i = 0; i < 256; ++i) EXPECT_EQ(send(CB_ADDSTRING, 0, "entry"), i);
    EXPECT_EQ(send(CB_GETCOUNT), 256) << "a low byte of 0 is a result as well";
    EXPECT_EQ(send(CB_INSERTSTRING, 3, "other"), 3);
    EXPECT_EQ(send(CB_SETITEMDATA, 3, this), 0);
    EXPECT_EQ(send(CB_GETITEMDATA, 3), reinterpret_cast<LRESULT>(this)) << "all 64 bits";
    EXPECT_EQ(send(CB_FINDSTRINGEXACT, WPARAM(-1), "OTHER"), 3);
    EXPECT_EQ(send(CB_FINDSTRINGEXACT, WPARAM(-1), "oth"), CB_ERR);
    EXPECT_EQ(send(CB_SHOWDROPDOWN, TRUE), TRUE);
    EXPECT_EQ(send(CB_GETDROPPEDSTATE), TRUE);
    send(CB_SHOWDROPDOWN, FALSE);
    EXPECT_EQ(child.SendDlgItemMessage(60, CB_GETDROPPEDSTATE), FALSE);
    EXPECT_EQ(child.SendDlgItemMessage(60, CB_LIMITTEXT, 5), FALSE) << "there is no field";
}
