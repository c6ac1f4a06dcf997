// The dialogs for fonts, colours and folders, worked as users do.
#include "DialogsFixture.h"

#include <cstring>
#include <filesystem>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFontDialog>
#include <QtWidgets/QLineEdit>

#include <vmcore/dialogs/CFontDialog.h>
#include <vmcore/dialogs/folderBrowser.h>
#include <vmcore/files/paths.h>
#include <vmcore/gdi/CFont.h>

#include "platform/FontFace.h"

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

template <class Dialog>
Dialog& Open() {
    auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    EXPECT_TRUE(dialog);
    return *dialog;
}

LOGFONT FontNamed(const char* name, int height, int weight = 400) {
    LOGFONT font{};
    std::strcpy(font.lfFaceName, name);
    font.lfHeight = height;
    font.lfWeight = weight;
    return font;
}

class Choices : public DialogsFixture {
protected:
    Choices() { CurrentDirectory[0] = '\0'; }
    ~Choices() override { CurrentDirectory[0] = '\0'; }
};

} // namespace

// Its upright style is named Book, and is not the first of the list.
TEST_F(Choices, SuggestedFontComesBackAsItWas) {
    LOGFONT record = FontNamed("DejaVu Sans", 10);
    CFontDialog dialog(&record);
    Soon([&] { QTest::keyClick(&Open<QFontDialog>(), Qt::Key_Return); });
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_STREQ(dialog.GetFaceName(), "DejaVu Sans");
    EXPECT_STREQ(dialog.GetStyleName(), "Book");
    EXPECT_FALSE(dialog.IsItalic());
}

TEST_F(Choices, ChosenFontIsTheOneThatCFontMakes) {
    const struct {
        QFont::Weight weight;
        bool italic;
        const char* name;
    } rows[] = {{QFont::Normal, false, "Liberation Sans"},
                {QFont::Bold, false, "Liberation Sans Bold"},
                {QFont::Normal, true, "Liberation Sans Italic"},
                {QFont::Bold, true, "Liberation Sans Bold Italic"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QFont chosen(QStringLiteral("Liberation Sans"), 17, row.weight, row.italic);
        LOGFONT record = FontNamed("DejaVu Sans Mono", -10);
        CFontDialog dialog(&record);
        Soon([&] {
            EXPECT_EQ(Open<QFontDialog>().currentFont().family(), "DejaVu Sans Mono");
            EXPECT_EQ(Open<QFontDialog>().currentFont().pointSize(), 10);
            Open<QFontDialog>().setCurrentFont(chosen);
            QTest::keyClick(&Open<QFontDialog>(), Qt::Key_Return);
        });
        ASSERT_EQ(dialog.DoModal(), IDOK);
        EXPECT_STREQ(dialog.GetFaceName(), row.name);
        EXPECT_EQ(dialog.GetSize(), 170);
        EXPECT_EQ(dialog.IsBold() != 0, row.weight == QFont::Bold);
        EXPECT_EQ(dialog.IsItalic() != 0, row.italic);
        CFont font;
        ASSERT_TRUE(font.CreateFontIndirect(&record));
        tagFONTRECORD made{};
        std::memcpy(&made, font.m_hObject, sizeof made);
        EXPECT_EQ(made.font->Size(), 17);
        EXPECT_EQ(made.font->Raw().weight(), row.weight);
        EXPECT_EQ(made.font->Raw().style() == QFont::StyleItalic, row.italic);
        EXPECT_EQ(made.font->Raw().familyName(), "Liberation Sans");
    }
}

TEST_F(Choices, FontsKeepToTheFlags) {
    LOGFONT record = FontNamed("Liberation Sans Bold", 12);
    record.lfUnderline = 1;
    CFontDialog dialog(&record, CF_LIMITSIZE);
    dialog.m_cf.nSizeMin = 8;
    dialog.m_cf.nSizeMax = 20;
    Soon([&] {
        QFont font = Open<QFontDialog>().currentFont();
        EXPECT_TRUE(font.bold() && font.underline());
        font.setPointSize(40);
        font.setUnderline(false);
        font.setStrikeOut(true);
        Open<QFontDialog>().setCurrentFont(font);
        QTest::keyClick(&Open<QFontDialog>(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetSize(), 200);
    EXPECT_TRUE(dialog.IsUnderline()) << "no effects asked for";
    EXPECT_FALSE(dialog.IsStrikeOut());
    Soon([] { QTest::keyClick(&Open<QFontDialog>(), Qt::Key_Escape); });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(record.lfHeight, 20) << "as it was";
    CHOOSEFONT empty{};
    EXPECT_FALSE(ChooseFont(&empty));
    EXPECT_EQ(CommDlgExtendedError(), DWORD{CDERR_INITIALIZATION});
}

TEST_F(Choices, ColoursAndTheCustomOnes) {
    CColorDialog dialog(RGB(10, 20, 30));
    CColorDialog::GetSavedCustomColors()[3] = RGB(1, 2, 3);
    Soon([&] {
        EXPECT_EQ(Open<QColorDialog>().currentColor(), QColor(10, 20, 30));
        EXPECT_EQ(QColorDialog::customColor(3), QColor(1, 2, 3));
        QColorDialog::setCustomColor(15, QColor(7, 8, 9));
        dialog.SetCurrentColor(RGB(40, 50, 60));
        QTest::keyClick(&Open<QColorDialog>(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetColor(), RGB(40, 50, 60));
    EXPECT_EQ(CColorDialog::GetSavedCustomColors()[15], RGB(7, 8, 9));
    dialog.SetCurrentColor(RGB(5, 5, 5));
    COLORREF own[16] = {RGB(9, 9, 9)};
    dialog.m_cc.lpCustColors = own;
    Soon([&] {
        EXPECT_EQ(Open<QColorDialog>().currentColor(), QColor(5, 5, 5));
        EXPECT_EQ(QColorDialog::customColor(0), QColor(9, 9, 9));
        Open<QColorDialog>().setCurrentColor(Qt::white);
        QTest::keyClick(&Open<QColorDialog>(), Qt::Key_Escape);
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.GetColor(), RGB(5, 5, 5));
}

TEST_F(Choices, FolderIsChosenAndFreed) {
    const TemporaryHome home;
    const fs::path start = home.Path() / "Bänke";
    fs::create_directories(start / "sub");
    fs::create_directories(start / "a:b");
    static std::vector<std::string> s_told;
    s_told.clear();
    const std::string wanted = start.string();
    BROWSEINFO info{};
    char name[MAX_PATH] = "";
    info.pszDisplayName = name;
    info.lpszTitle = "Where?";
    info.lParam = reinterpret_cast<LPARAM>(wanted.c_str());
    info.lpfn = [](HWND dialog, UINT message, LPARAM lParam, LPARAM data) {
        char path[MAX_PATH] = "";
        if (message == BFFM_SELCHANGED)
            SHGetPathFromIDList(reinterpret_cast<LPITEMIDLIST>(lParam), path);
        s_told.push_back(vm::Format("%u %s", message, path));
        if (message == BFFM_INITIALIZED) {
            SendMessage(dialog, BFFM_SETSELECTION, TRUE, reinterpret_cast<LPARAM>("/nowhere"));
            SendMessage(dialog, BFFM_SETSELECTION, TRUE, data);
        }
        return 0;
    };
    const auto press = [](const QString& folder) {
        auto& dialog = Open<QFileDialog>();
        EXPECT_EQ(dialog.windowTitle(), "Where?");
        dialog.setDirectory(folder);
        Q_EMIT dialog.directoryEntered(folder);
        QTest::keyClick(&dialog, Qt::Key_Return);
    };
    Soon([&] {
        EXPECT_EQ(Open<QFileDialog>().directory().path().toStdString(), wanted);
        press(QString::fromStdString(wanted + "/a:b"));
        EXPECT_EQ(boxes.Take().size(), 1u);
        press(QString::fromStdString(wanted + "/sub"));
    });
    const LPITEMIDLIST list = SHBrowseForFolder(&info);
    ASSERT_TRUE(list);
    char path[MAX_PATH] = "";
    EXPECT_TRUE(SHGetPathFromIDList(list, path));
    EXPECT_EQ(path, wanted + "/sub");
    EXPECT_STREQ(name, "sub");
    EXPECT_THAT(s_told, ElementsAre("1 ", "2 " + wanted + "/a:b", "2 " + wanted + "/sub"));
    IMalloc* allocator = nullptr;
    ASSERT_EQ(SHGetMalloc(&allocator), S_OK);
    allocator->Free(list);
    Soon([] { QTest::keyClick(&Open<QFileDialog>(), Qt::Key_Escape); });
    EXPECT_EQ(SHBrowseForFolder(&info), nullptr);
    EXPECT_FALSE(SHGetPathFromIDList(nullptr, path));
    EXPECT_EQ(path[0], '\0');
}

TEST_F(Choices, FoldersInNoEncodingAreFound) {
    const TemporaryHome home;
    const fs::path folder(home.Path());
    fs::create_directories(folder / "\xff");
    std::strcpy(CurrentDirectory, folder.c_str());
    BROWSEINFO info{};
    const auto choose = [] {
        auto* const line = Open<QFileDialog>().findChild<QLineEdit*>("fileNameEdit");
        line->setText(QStringLiteral("\uFFFD"));
        QTest::keyClick(line, Qt::Key_Return);
    };
    Soon(choose);
    const LPITEMIDLIST list = SHBrowseForFolder(&info);
    char path[MAX_PATH] = "";
    ASSERT_TRUE(SHGetPathFromIDList(list, path));
    EXPECT_EQ(path, (folder / "\xff").string());
    ILFree(list);
    fs::create_directories(folder / "\xfe");
    Soon([&] {
        choose();
        EXPECT_EQ(boxes.Take().size(), 1u) << "which of both?";
        vm::SetMessageBoxHandler([before = vm::SetMessageBoxHandler({})](auto...) {
            delete &Open<QFileDialog>(); // as its owner does
            return vm::SetMessageBoxHandler(before), IDOK;
        });
        QMetaObject::invokeMethod(&Open<QFileDialog>(), "accept");
    });
    EXPECT_EQ(SHBrowseForFolder(&info), nullptr);
}
