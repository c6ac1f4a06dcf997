// Numbers that are typed into the sample's dialogs: what follows them.
#include "sketch/stdafx.h"

#include <filesystem>

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>

#include "dialogs/DialogsFixture.h"
#include "sketch/PageSheet.h"
#include "sketch/PenDialog.h"

namespace {

class SketchSizes : public DialogsFixture {
protected:
    SketchSizes() {
        const std::filesystem::path folder =
            std::filesystem::path(bundle.PathOf("DLG_1")).parent_path();
        std::filesystem::copy(SKETCH_RESOURCES, folder, std::filesystem::copy_options::recursive);
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 880, 690}, nullptr, 0);
    }
    ~SketchSizes() override { top.DestroyWindow(); }

    static void Type(CWnd& dialog, int id, int number) {
        auto* field = qobject_cast<QLineEdit*>(dialog.GetDlgItem(id)->view);
        field->selectAll();
        QTest::keyClicks(field, QString::number(number));
    }

    RecordingWindow top;
};

} // namespace

TEST_F(SketchSizes, ThePaperIsTheOneOfTheTypedSize) {
    enum { A4, SQUARE = 4, CUSTOM };
    CSizePage page;
    page.m_nWidth = 842;
    page.m_nHeight = 595;
    ASSERT_TRUE(page.CDialog::Create(CSizePage::IDD, &top));
    const auto paper = [&] { return page.SendDlgItemMessage(IDC_PAPER, CB_GETCURSEL); };
    EXPECT_EQ(paper(), A4);
    Type(page, IDC_PAGE_WIDTH, 600);
    EXPECT_EQ(paper(), CUSTOM);
    Type(page, IDC_PAGE_HEIGHT, 600);
    EXPECT_EQ(paper(), SQUARE);
    page.DestroyWindow();
}

TEST_F(SketchSizes, ThePensSliderFollowsAnyNumber) {
    CPenDialog dialog;
    ASSERT_TRUE(dialog.Create(CPenDialog::IDD, &top));
    const struct {
        int typed, shown, width; // of 99 there was a 9
    } rows[] = {{12, 12, 12}, {99, MAX_PEN_WIDTH, 9}, {0, 1, 9}, {7, 7, 7}};
    for (const auto& row : rows) {
        Type(dialog, IDC_PEN_WIDTH, row.typed);
        auto* slider = static_cast<CSliderCtrl*>(dialog.GetDlgItem(IDC_PEN_WIDTH_SLIDER));
        EXPECT_EQ(slider->GetPos(), row.shown);
        EXPECT_EQ(dialog.m_style.m_nWidth, row.width) << row.typed;
    }
    dialog.DestroyWindow();
}
