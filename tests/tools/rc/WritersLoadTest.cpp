// Dialogs of scripts as the library shows them: where their controls are at several sizes of the font,
// whether texts fit, and what the controls do.
#include <filesystem>
#include <fstream>

#include <QtCore/QProcess>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include <vmcore/controls/CSpinButtonCtrl.h>

#include "../../dialogs/DialogsFixture.h"
#include "ScriptParts.h"

using testing::ElementsAre;

namespace vm::rc {
namespace {

constexpr int kDialog = 300;

// A dialog as scripts have them: 7 units from the border, edits of 12 and 14, buttons of 50 x 14.
Dialog WholeDialog() {
    const std::uint32_t edit = kTabbed | 0x00800000;
    return MakeDialog(
        kDialog,
        {
            MakeControl("static", 65535, "&Name of the bank:", {7, 9, 65, 8}),
            MakeControl("edit", 11, "Grand Piano", {74, 7, 60, 14}, edit | 0x80),
            MakeControl("static", 65535, "Password:", {7, 26, 65, 8}),
            MakeControl("edit", 12, "", {74, 24, 60, 12}, edit | 0x20),
            MakeControl("static", 65535, "&Channel:", {7, 43, 65, 8}),
            MakeControl("edit", 13, "7", {74, 41, 40, 12}, edit | 0x2000),
            MakeControl("msctls_updown32", 14, "", {114, 41, 10, 14}, 0x36),
            MakeControl("static", 65535, "&Port:", {7, 60, 65, 8}),
            MakeControl("combobox", 15, "", {74, 58, 60, 90}, kTabbed | 3),
            MakeControl("button", 20, "&Low", {14, 84, 50, 10}, kTabbed | kGroupStart | 9),
            MakeControl("button", 21, "&High", {14, 96, 50, 10}, 9),
            MakeControl("button", 22, "&Slow", {80, 84, 50, 10}, kTabbed | kGroupStart | 9),
            MakeControl("button", 23, "&Fast", {80, 96, 50, 10}, 9),
            MakeControl("button", 65535, "Quality and speed", {7, 74, 127, 36}, kGroupStart | 7),
            MakeControl("button", 24, "Ask &before sending", {7, 114, 100, 10}, kTabbed | 3),
            MakeControl("static", 65535, "", {7, 128, 206, 1}, 0x10),
            MakeControl("button", 1, "OK", {109, 139, 50, 14}, kTabbed | 1),
            MakeControl("button", 2, "Cancel", {163, 139, 50, 14}, kTabbed),
        });
}

int Scaled(int units, int base, int part) {
    return (units * base + part / 2) / part;
}

// Between the edges where a text or its field ends.
int RoomFor(const QWidget& widget) {
    QStyle* const style = widget.style();
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
        QStyleOptionFrame option;
        option.initFrom(line);
        option.lineWidth = line->hasFrame() ? style->pixelMetric(QStyle::PM_DefaultFrameWidth) : 0;
        return style->subElementRect(QStyle::SE_LineEditContents, &option, line).height() - 2;
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        return style
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
            .height();
    }
    return widget.height();
}

class WritersLoad : public DialogsFixture {
protected:
    WritersLoad() : m_font(QApplication::font()) {}
    ~WritersLoad() override {
        top.DestroyWindow();
        QApplication::setFont(m_font);
    }
    /// At this size of the desktop's font, in a new window, for others keep the font that they have.
    void Load(const Dialog& script, int points = 9) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
        if (top.view) top.DestroyWindow();
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 580, 490}, nullptr, 0);
        Write(kDialog, Written({script}).File("DLG_300.ui"));
        ASSERT_TRUE(dialog.Create(kDialog, &top));
    }
    QWidget* At(int id) { return dialog.GetDlgItem(id)->view; }

    RecordingWindow top;
    TestDialog dialog;

private:
    QFont m_font;
};

} // namespace

TEST_F(WritersLoad, ListsHoldTheirFirstTexts) {
    const struct {
        const char* windowClass;
        std::uint32_t style;
        QStringList texts;
    } rows[] = {
        {"combobox", 3 | 0x100, {"a < b", "B", "b", "c", "\xC3\xA4"}}, // CBS_DROPDOWNLIST, CBS_SORT
        {"combobox", 2, {"c", "B", "b", "a < b"}},                     // CBS_DROPDOWN
        {"listbox", 1 | 2, {"a < b", "B", "b", "c"}},                  // LBS_STANDARD
        {"listbox", 0, {"c", "B", "b", "a < b"}},
    };
    std::vector<Control> controls;
    for (int id = 30; const auto& row : rows) {
        controls.push_back(MakeControl(row.windowClass, id++, "", {7, 7, 60, 40}, row.style));
        controls.back().items = {"c", "B", "b", "a < b"};
    }
    controls[0].items.emplace_back("\xC3\xA4");
    Load(MakeDialog(kDialog, controls));
    for (int id = 30; const auto& row : rows) {
        QWidget* const widget = At(id++);
        const auto* const combo = qobject_cast<QComboBox*>(widget);
        const auto* const model =
            combo ? combo->model() : qobject_cast<QAbstractItemView*>(widget)->model();
        QStringList texts;
        for (int i = 0; i < model->rowCount(); ++i) texts += model->index(i, 0).data().toString();
        EXPECT_EQ(texts.join('\n').toStdString(), row.texts.join('\n').toStdString()) << id - 1;
        EXPECT_TRUE(!combo || (combo->currentIndex() == -1 && combo->currentText().isEmpty()));
    }
}

TEST_F(WritersLoad, PlacesControlsByTheRealFont) {
    const Dialog script = WholeDialog();
    for (const int points : {9, 12, 16}) {
        SCOPED_TRACE(points);
        Load(script, points);
        const QFontMetrics metrics(dialog.view->font());
        const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        const int across = (metrics.horizontalAdvance(letters) / 26 + 1) / 2;
        const int down = metrics.height();
        ASSERT_EQ(dialog.view->font().pointSize(), points);
        EXPECT_EQ(dialog.view->size(), QSize(Scaled(220, across, 4), Scaled(160, down, 8)));
        for (const Control& control : script.controls) {
            if (*control.id.number == 65535) continue;
            if (*control.id.number == 13 || *control.id.number == 14) continue; // share a place
            const Rect& units = control.rect;
            const int height = *control.id.number == 15 ? 13 : units.cy;
            const QRect place = At(*control.id.number)->geometry();
            SCOPED_TRACE(*control.id.number);
            EXPECT_EQ(place.left(), Scaled(units.x, across, 4));
            EXPECT_EQ(place.top(), Scaled(units.y, down, 8));
            EXPECT_EQ(place.right() + 1, Scaled(units.x + units.cx, across, 4));
            EXPECT_EQ(place.bottom() + 1, Scaled(units.y + height, down, 8));
        }
        RECT mapped{7, 139, 57, 153};
        dialog.MapDialogRect(&mapped);
        EXPECT_THAT(mapped, IsRect(Scaled(7, across, 4), Scaled(139, down, 8),
                                   Scaled(57, across, 4), Scaled(153, down, 8)));
        const QRect field = At(13)->geometry(), arrows = At(14)->geometry();
        EXPECT_EQ(field.right() + 1, arrows.left()) << "the arrows are inside their buddy's place";
        EXPECT_EQ(arrows.right() + 1, Scaled(114, across, 4));
        dialog.DestroyWindow();
    }
}

TEST_F(WritersLoad, TextsFitAtEverySize) {
    for (const int points : {9, 12, 16}) {
        Load(WholeDialog(), points);
        const int line = QFontMetrics(dialog.view->font()).height();
        for (const QWidget* child :
             dialog.view->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            SCOPED_TRACE(child->objectName().toStdString() + " at " + std::to_string(points));
            const bool hasWidth = child->inherits("QLabel") || child->inherits("QRadioButton") ||
                                  child->inherits("QCheckBox");
            EXPECT_TRUE(!hasWidth || child->sizeHint().width() <= child->width());
            const bool holdsText = child->inherits("QLineEdit") || child->inherits("QComboBox") ||
                                   child->inherits("QLabel") || child->inherits("QAbstractButton");
            EXPECT_TRUE(!holdsText || RoomFor(*child) >= line) << RoomFor(*child) << " of " << line;
        }
        dialog.DestroyWindow();
    }
}

TEST_F(WritersLoad, LowFieldsGiveUpTheirFrameNotTheirText) {
    Load(MakeDialog(kDialog, {MakeControl("edit", 11, "x", {7, 7, 60, 9}, kTabbed | 0x800000),
                              MakeControl("edit", 12, "x", {7, 27, 60, 14}, kTabbed | 0x800000)}));
    EXPECT_FALSE(qobject_cast<QLineEdit*>(At(11))->hasFrame());
    EXPECT_TRUE(qobject_cast<QLineEdit*>(At(12))->hasFrame());
}

TEST_F(WritersLoad, RadioGroupsExcludeTheirOwnOnly) {
    Load(WholeDialog());
    for (const int id : {20, 22, 21, 23, 22}) {
        EXPECT_EQ(dialog.view->childAt(At(id)->geometry().center()), At(id)) << "not the box";
        ClickItem(dialog, id);
    }
    const auto isOn = [this](int id) { return dialog.IsDlgButtonChecked(id) == 1; };
    EXPECT_TRUE(!isOn(20) && isOn(21) && isOn(22) && !isOn(23));
    int value = 0;
    CDataExchange in(&dialog, FALSE), out(&dialog, TRUE);
    DDX_Radio(&in, 22, value = 1);
    DDX_Radio(&out, 20, value);
    EXPECT_EQ(value, 1) << "the other group stays";
    EXPECT_TRUE(isOn(23));
}

TEST_F(WritersLoad, TabFollowsTheScript) {
    Load(WholeDialog());
    top.nsWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(top.nsWindow));
    ClickItem(dialog, 20);
    ClickItem(dialog, 23);
    At(11)->setFocus();
    std::vector<int> way;
    for (int i = 0; i < 9; ++i) {
        QWidget* const focus = QApplication::focusWidget();
        way.push_back(focus->property("tag").toInt());
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    EXPECT_THAT(way, ElementsAre(11, 12, 13, 15, 20, 23, 24, 1, 2));
}

TEST_F(WritersLoad, LabelsLeadToTheirFields) {
    Load(WholeDialog());
    std::vector<std::string> leads;
    for (const QLabel* label : dialog.view->findChildren<QLabel*>())
        leads.push_back(label->text().toStdString() + " " +
                        (label->buddy() ? label->buddy()->objectName().toStdString() : "-"));
    EXPECT_THAT(leads, ElementsAre("&Name of the bank: IDC_11", "Password: IDC_12",
                                   "&Channel: IDC_13", "&Port: IDC_15"));
    auto* edit = qobject_cast<QLineEdit*>(At(13));
    CSpinButtonCtrl arrows;
    CDataExchange in(&dialog, FALSE);
    DDX_Control(&in, 14, arrows);
    arrows.SetPos(42);
    EXPECT_EQ(edit->text(), "42");
    edit->clear();
    QTest::keyClicks(edit, "a1b2");
    EXPECT_EQ(edit->text(), "12") << "digits only";
}

TEST_F(WritersLoad, ListsSelectAsTheirStylesSay) {
    const struct {
        std::uint32_t style;
        std::vector<int> selected; ///< after clicks on the first and the third row
    } rows[] = {{0, {2}}, {0x8, {0, 2}}, {0x800, {2}}};
    for (const auto& row : rows) {
        Load(MakeDialog(kDialog, {MakeControl("listbox", 11, "", {7, 7, 90, 90},
                                              kTabbed | 0x800000 | row.style)}));
        auto* list = qobject_cast<QAbstractItemView*>(At(11));
        for (const char* text : {"a", "b", "c"})
            dialog.SendDlgItemMessage(11, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        for (const int i : {0, 2})
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualRect(list->model()->index(i, 0)).center());
        std::vector<int> selected;
        for (const QModelIndex& index : list->selectionModel()->selectedRows())
            selected.push_back(index.row());
        EXPECT_EQ(selected, row.selected) << std::hex << row.style;
        dialog.DestroyWindow();
    }
}

TEST_F(WritersLoad, PagesFontsAndPicturesAreTaken) {
    Dialog page = WholeDialog();
    page.style = 0x40000000;
    page.font = {14, "Liberation Serif", 700, false, 0};
    Control picture = MakeControl("static", 30, "", {150, 7, 20, 20}, 3);
    picture.image = NumberId(7);
    page.controls.push_back(picture);
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    const std::string folder =
        std::filesystem::path(bundle.PathOf("DLG_300")).parent_path().string();
    ASSERT_TRUE(image.save(QString::fromStdString(folder + "/Bitmap_7.png")));
    Load(page);
    EXPECT_EQ(dialog.view->font().family(), "Liberation Serif");
    EXPECT_TRUE(dialog.view->font().bold());
    const QFontMetrics metrics(dialog.view->font());
    EXPECT_EQ(dialog.view->height(), Scaled(160, metrics.height(), 8));
    EXPECT_EQ(qobject_cast<QLabel*>(At(30))->pixmap().size(), QSize(16, 16));
}

TEST_F(WritersLoad, TheToolkitsCompilerTakesTheFile) {
    Written written({WholeDialog()});
    Write(kDialog, written.File("DLG_300.ui"));
    QProcess uic;
    uic.start(VMCORE_UIC, {QString::fromStdString(bundle.PathOf("DLG_300"))});
    ASSERT_TRUE(uic.waitForFinished());
    EXPECT_EQ(uic.exitCode(), 0);
    EXPECT_EQ(uic.readAllStandardError().toStdString(), "");
    EXPECT_TRUE(uic.readAllStandardOutput().contains("new QButtonGroup(IDD_TEST)"));
}

} // namespace vm::rc
