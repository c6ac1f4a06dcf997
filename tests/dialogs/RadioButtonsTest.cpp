// The radio buttons of dialogs, and windows put over the middle of others.
#include "DialogsFixture.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QRadioButton>

#include <vmcore/controls/CButton.h>

namespace {

// Two groups made by the program, 40 to 42 and 43 to 44; one from the file, 30 to 32, in another order
// there; and a check box.
class RadioButtons : public DialogsFixture {
protected:
    RadioButtons() {
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 580, 490}, nullptr, 0);
        Write(3, UiDialog(UiControl("QRadioButton", 31) + UiControl("QRadioButton", 30) +
                              UiControl("QRadioButton", 32) + UiControl("QCheckBox", 33),
                          "QWidget"));
        EXPECT_TRUE(dialog.Create(3, &top));
        for (int i = 0; i < 5; ++i)
            made[i].Create("", BS_AUTORADIOBUTTON | (i == 0 || i == 3 ? WS_GROUP : DWORD{0}),
                           RECT{0, 20 * i, 90, 20 * i + 20}, &dialog, static_cast<UINT>(40 + i));
    }
    ~RadioButtons() override { top.DestroyWindow(); }

    std::string Checked() {
        std::string ids;
        for (const int id : {30, 31, 32, 33, 40, 41, 42, 43, 44})
            if (dialog.IsDlgButtonChecked(id)) ids += std::to_string(id) + " ";
        return ids;
    }

    RecordingWindow top;
    TestDialog dialog;
    CButton made[5];
    CDataExchange in{&dialog, FALSE};
    CDataExchange out{&dialog, TRUE};
};

} // namespace

TEST_F(RadioButtons, AreOneNumberForEachGroup) {
    dialog.CheckDlgButton(33, 1);
    const struct {
        int item, value, read;
        const char* checked; ///< of all, after the rows above
    } rows[] = {
        {30, 0, 0, "30 33 "},       {30, 2, 2, "32 33 "},       {40, 1, 1, "32 33 41 "},
        {43, 1, 1, "32 33 41 44 "}, {40, 0, 0, "32 33 40 44 "}, {41, 1, 1, "32 33 42 44 "},
        {30, -1, -1, "33 42 44 "},  {43, 2, -1, "33 42 "},      {33, 0, 77, "33 42 "},
        {99, 0, 77, "33 42 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.item) + " " + std::to_string(row.value));
        int value = row.value;
        DDX_Radio(&in, row.item, value);
        EXPECT_EQ(Checked(), row.checked);
        value = 77;
        DDX_Radio(&out, row.item, value);
        EXPECT_EQ(value, row.read);
    }
    EXPECT_EQ(dialog.Take(WM_COMMAND).size(), 0u);
}

TEST_F(RadioButtons, AreCheckedByTheirIds) {
    dialog.CheckDlgButton(33, 1);
    const struct {
        int first, last, check, read;
        const char* checked;
    } rows[] = {
        {30, 33, 31, 31, "31 33 "},       {40, 42, 42, 42, "31 33 42 "},
        {43, 44, 43, 43, "31 33 42 43 "}, {30, 32, 32, 32, "32 33 42 43 "},
        {40, 42, 44, 0, "32 33 43 "},     {30, 32, 0, 0, "33 43 "},
    };
    for (const auto& row : rows) {
        dialog.CheckRadioButton(row.first, row.last, row.check);
        EXPECT_EQ(Checked(), row.checked);
        EXPECT_EQ(dialog.GetCheckedRadioButton(row.first, row.last), row.read);
    }
    EXPECT_EQ(CWnd().GetCheckedRadioButton(30, 44), 0);
    EXPECT_EQ(dialog.Take(WM_COMMAND).size(), 0u);
}

TEST_F(RadioButtons, WindowsAreCentred) {
    const auto middle = [](const CWnd& wnd) {
        CRect frame;
        wnd.GetWindowRect(frame);
        const CPoint point = frame.CenterPoint();
        return QPoint(point.x, point.y);
    };
    RecordingWindow child, other;
    child.Create("", "", WS_CHILD, RECT{0, 0, 100, 60}, &top, 1);
    other.Create("", "Other", 0, RECT{300, 200, 400, 300}, nullptr, 0);
    const auto middleOfView = [](const CWnd& wnd) {
        return wnd.view->mapToGlobal(QPoint(wnd.view->width() / 2, wnd.view->height() / 2));
    };
    child.CenterWindow();
    EXPECT_EQ(middle(child), middleOfView(top));
    child.CenterWindow(&other);
    EXPECT_EQ(middle(child), middleOfView(other));
    other.CenterWindow(&top);
    EXPECT_LE((middle(other) - middle(top)).manhattanLength(), 2);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    other.CenterWindow();
    EXPECT_LE((middle(other) - screen.center()).manhattanLength(), 2);
    top.MoveWindow(screen.right() - 60, 90, 500, 400);
    other.CenterWindow(&top);
    CRect frame;
    other.GetWindowRect(frame);
    EXPECT_EQ(frame.right, screen.right() + 1) << "stays on the screen";
    CWnd().CenterWindow(&top);
    other.DestroyWindow();
}
