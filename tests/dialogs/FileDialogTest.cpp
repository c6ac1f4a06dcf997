// File dialogs: the rules of filters and paths, and the toolkit's dialog worked as users do.
#include "DialogsFixture.h"

#include <cstring>
#include <filesystem>
#include <fstream>

#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

#include <vmcore/dialogs/CFileDialog.h>
#include <vmcore/files/fileapi.h>
#include <vmcore/files/paths.h>

#include "app/appState.h"
#include "dialogs/chosenFiles.h"
#include "dialogs/fileFilter.h"
#include "dialogs/shownPath.h"
#include "platform/runloop.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FileFilters, AreTranslated) {
    const struct {
        const char* bars;
        std::vector<const char*> shown;
        const char* extension; // of the first
    } rows[] = {
        {nullptr, {}, ""},
        {"", {}, ""},
        {"||", {}, ""},
        {"SysEx|*.syx||", {"SysEx (*.syx)"}, "syx"},
        {"SysEx|*.syx|", {"SysEx (*.syx)"}, "syx"},
        {"Banks (*.syx)|*.syx; *.mid;;|All|*.*||", {"Banks (*.syx *.mid)", "All (*)"}, "syx"},
        {"Banks (old) of all|*||", {"Banks (old) of all (*)"}, ""},
        {"Two|*.a|Odd||", {"Two (*.a)", "Odd (*)"}, "a"},
        {"Lonely", {"Lonely (*)"}, ""},
        {"Odd names|*.(x);my file.*;*.t|Next|*.n||",
         {"Odd names (*.?x? my?file.* *.t)", "Next (*.n)"},
         "(x)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.bars ? row.bars : "null");
        const std::string zeros = vm::FilterWithZeros(row.bars);
        const std::vector<vm::FileFilter> filters = vm::ParseFilter(zeros.c_str());
        QStringList shown;
        for (const vm::FileFilter& filter : filters) shown += vm::ToolkitFilter(filter);
        QStringList expected;
        for (const char* text : row.shown) expected += QString::fromLatin1(text);
        EXPECT_EQ(shown, expected);
        const std::string extension = filters.empty() ? "" : vm::ExtensionOf(filters.front());
        EXPECT_EQ(extension, row.extension);
    }
}

TEST(ChosenFiles, KeepToWhatTheFileFunctionsTake) {
    const std::string longest = "/" + std::string(254, 'a');
    const struct {
        std::string path;
        bool usable;
        std::string saved;
    } rows[] = {{"/b/a.syx", true, "/b/a.syx"},
                {"/b/a:b.syx", false, "/b/a:b.syx"},
                {"/b/a\\b", false, "/b/a\\b"},
                {"/b/pic.bmp", false, "/b/pic.png"},
                {"/b/pic.BMP", false, "/b/pic.png"},
                {"/b/\xff.syx", true, "/b/\xff.syx"},
                {longest, true, longest},
                {longest + "a", false, longest + "a"}};
    for (const auto& row : rows) {
        EXPECT_EQ(vm::IsUsablePath(row.path), row.usable) << row.path;
        EXPECT_EQ(vm::SavedAs(row.path), row.saved) << row.path;
    }
    EXPECT_EQ(vm::WithExtension("/b.c/bank", "syx"), "/b.c/bank.syx");
    EXPECT_EQ(vm::WithExtension("/b/bank.v2", "syx"), "/b/bank.v2");
    EXPECT_EQ(vm::WithExtension("/b/.bank", "syx"), "/b/.bank.syx");
    using namespace std::string_literals;
    EXPECT_EQ(vm::SelectionList({"/a/b"}), "/a/b\0\0"s);
    EXPECT_EQ(vm::SelectionList({"/a/b", "/a/c"}), "/a\0b\0c\0\0"s);
    EXPECT_EQ(vm::SelectionList({"/a/b/x", "/a/bc"}), "/a\0b/x\0bc\0\0"s);
    EXPECT_EQ(vm::SelectionList({"/b", "/a/x"}), "/\0b\0a/x\0\0"s);
}

namespace {

class FileDialogs : public DialogsFixture {
protected:
    FileDialogs() : folder(fs::path(home.Path()) / "Bänke") {
        fs::create_directories(folder);
        fs::create_directories(folder / "sub");
        for (const char* name : {"a.syx", "b.syx", "c.mid", "x:y.syx", "pic.png"})
            std::ofstream(folder / name) << "data";
        CurrentDirectory[0] = '\0';
    }
    ~FileDialogs() override { CurrentDirectory[0] = '\0'; }

    std::string In(const char* name) const { return (folder / name).string(); }
    static QFileDialog& Open() {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        EXPECT_TRUE(dialog);
        return *dialog;
    }
    static void Choose(const std::string& name) {
        QFileDialog& dialog = Open();
        auto* const line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        line->setText(QString::fromStdString(name));
        QTest::keyClick(line, Qt::Key_Return);
    }
    static void Cancel() { QTest::keyClick(&Open(), Qt::Key_Escape); }
    int Run(CFileDialog& dialog, std::function<void()> work) const {
        dialog.m_ofn.lpstrInitialDir = start.c_str();
        Soon(std::move(work));
        return dialog.DoModal();
    }

    TemporaryHome home;
    const fs::path folder;
    const std::string start = folder.string();
};

} // namespace

TEST_F(FileDialogs, OpensWhatIsChosen) {
    CFileDialog dialog(TRUE, "syx", nullptr, OFN_FILEMUSTEXIST, "SysEx|*.syx|MIDI|*.mid||");
    dialog.m_ofn.nFilterIndex = 2;
    dialog.m_ofn.lpstrTitle = "Open Bank";
    char title[6] = "";
    dialog.m_ofn.lpstrFileTitle = title;
    dialog.m_ofn.nMaxFileTitle = sizeof title;
    EXPECT_EQ(Run(dialog,
                  [&] {
                      EXPECT_EQ(vm::App().displayDlg, 1);
                      EXPECT_EQ(Open().windowTitle(), "Open Bank");
                      EXPECT_EQ(Open().directory().path().toStdString(), start);
                      EXPECT_EQ(Open().selectedNameFilter(), "MIDI (*.mid)");
                      EXPECT_EQ(Open().windowModality(), Qt::ApplicationModal);
                      Choose("sub");
                      Choose("../c");
                  }),
              IDOK);
    EXPECT_EQ(vm::App().displayDlg, 0);
    EXPECT_STREQ(dialog.GetPathName(), In("c.mid").c_str()) << "the filter's extension";
    EXPECT_STREQ(dialog.GetFileName(), "c.mid");
    EXPECT_STREQ(dialog.GetFileTitle(), "c");
    EXPECT_STREQ(dialog.GetFileExt(), "mid");
    EXPECT_STREQ(dialog.GetFolderPath(), start.c_str());
    EXPECT_STREQ(title, "c.mid");
    EXPECT_STREQ(dialog.m_ofn.lpstrFile + dialog.m_ofn.nFileExtension, "mid");
    EXPECT_EQ(dialog.m_ofn.nFilterIndex, 2u);
    EXPECT_TRUE(dialog.m_ofn.Flags & OFN_EXTENSIONDIFFERENT);
    EXPECT_EQ(CurrentDirectory, start);
    const HANDLE file =
        CreateFile(dialog.GetPathName(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
}

TEST_F(FileDialogs, RefusesAndStaysOpen) {
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR);
    EXPECT_EQ(Run(dialog,
                  [&] {
                      Choose("missing.syx");
                      Choose("nowhere/a.syx");
                      Choose("x:y.syx");
                      EXPECT_TRUE(Open().isVisible());
                      Cancel();
                  }),
              IDCANCEL);
    EXPECT_EQ(CommDlgExtendedError(), 0u);
    const std::vector<ShownBox> shown = boxes.Take();
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0].text, In("missing.syx") + "\nThere is no such file.");
    EXPECT_EQ(shown[1].text, In("nowhere/a.syx") + "\nThere is no such folder.");
    EXPECT_EQ(shown[2].text, In("x:y.syx") + "\nFiles with such a name cannot be used.");
    EXPECT_EQ(CurrentDirectory[0], '\0');
    CFileDialog saving(FALSE, nullptr, nullptr, 0);
    EXPECT_EQ(Run(saving,
                  [&] {
                      Choose(std::string(240, 'n'));
                      Cancel();
                  }),
              IDCANCEL);
    EXPECT_EQ(boxes.Take().size(), 1u) << "too long";
}

TEST_F(FileDialogs, SavesUnderANewNameOrAsks) {
    const struct {
        const char* typed;
        const char* path;
        bool asks;
    } rows[] = {{"new", "new.syx", false},
                {"new.x", "new.x", false},
                {"a", "a.syx", true},
                {"pic.bmp", "pic.png", true},
                {"sub/n.syx", "sub/n.syx", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        boxes.Take();
        CFileDialog dialog(FALSE, "syx", row.typed);
        EXPECT_STREQ(dialog.GetPathName(), row.typed);
        Run(dialog, [&] {
            const vm::MessageBoxHandler before = vm::SetMessageBoxHandler({});
            vm::SetMessageBoxHandler([&](const char* text, const char*, UINT style) {
                EXPECT_TRUE(row.asks) << text;
                EXPECT_EQ(style, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
                return IDYES;
            });
            Choose(row.typed);
            vm::SetMessageBoxHandler(before);
        });
        EXPECT_STREQ(dialog.GetPathName(), In(row.path).c_str());
    }
    CFileDialog dialog(FALSE, "syx");
    EXPECT_EQ(Run(dialog,
                  [&] {
                      Choose("b");
                      EXPECT_EQ(boxes.Take().size(), 1u) << "answered OK, which is not Yes";
                      Cancel();
                  }),
              IDCANCEL);
}

TEST_F(FileDialogs, ManyFilesAreListed) {
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST);
    EXPECT_EQ(Run(dialog, [&] { Choose("\"a.syx\" \"c.mid\""); }), IDOK);
    std::vector<std::string> paths;
    for (POSITION position = dialog.GetStartPosition(); position;)
        paths.emplace_back(dialog.GetNextPathName(position));
    EXPECT_THAT(paths, ElementsAre(In("a.syx"), In("c.mid")));
    EXPECT_STREQ(dialog.GetPathName(), In("a.syx").c_str());
    EXPECT_EQ(dialog.m_ofn.nFileOffset, start.size() + 1);
    char small[20] = "";
    dialog.m_ofn.lpstrFile = small;
    dialog.m_ofn.nMaxFile = sizeof small;
    EXPECT_EQ(Run(dialog, [&] { Choose("b.syx"); }), IDCANCEL);
    EXPECT_EQ(CommDlgExtendedError(), DWORD{FNERR_BUFFERTOOSMALL});
    WORD needed = 0;
    std::memcpy(&needed, small, sizeof needed);
    EXPECT_EQ(needed, In("b.syx").size() + 2);
}

TEST_F(FileDialogs, NamesInNoEncodingAreNotLost) {
    const std::string name = "\xff\xe4.syx";
    std::ofstream(folder / name) << "data";
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST);
    EXPECT_EQ(Run(dialog, [&] { Choose(QFile::decodeName(name.c_str()).toStdString()); }), IDOK);
    EXPECT_STREQ(dialog.GetPathName(), In(name.c_str()).c_str());
    std::ofstream(folder / "\xe4\xff.syx") << "other";
    EXPECT_EQ(Run(dialog,
                  [&] {
                      Choose(QFile::decodeName(name.c_str()).toStdString());
                      EXPECT_EQ(boxes.Take().size(), 1u) << "which of both?";
                      Cancel();
                  }),
              IDCANCEL);
}

TEST_F(FileDialogs, ShownPathsAreFoundInTheirFolders) {
    for (const char* path : {"\xff/\xe4/x.syx", "\xff/\xe4\xfd.syx", "\xff/\xe4\xfe.syx"}) {
        fs::create_directories((folder / path).parent_path());
        std::ofstream(folder / path) << "data";
    }
    const struct {
        const char* shown;
        std::optional<std::string> path;
    } rows[] = {{"a.syx", In("a.syx")},
                {"\uFFFD/\uFFFD/x.syx", In("\xff/\xe4/x.syx")},
                {"sub/../\uFFFD/new.syx", In("\xff/new.syx")},
                {"\uFFFD/\uFFFD\uFFFD.syx", std::nullopt},
                {"sub/\uFFFD.syx", In("sub/\uFFFD.syx")}};
    for (const auto& row : rows)
        EXPECT_EQ(vm::PathShownAs(QString::fromStdString(In(row.shown))), row.path) << row.shown;
    EXPECT_EQ(vm::PathShownAs("/"), "/");
}

TEST_F(FileDialogs, OnePathMayFillTheBuffer) {
    const std::string path = In("b.syx");
    std::string buffer(path.size() + 1, '?');
    CFileDialog dialog(TRUE);
    for (const bool fits : {true, false}) {
        buffer.front() = '\0';
        dialog.m_ofn.lpstrFile = buffer.data();
        dialog.m_ofn.nMaxFile = static_cast<DWORD>(path.size() + fits);
        EXPECT_EQ(Run(dialog, [&] { Choose("b.syx"); }), fits ? IDOK : IDCANCEL);
        EXPECT_EQ(CommDlgExtendedError(), fits ? 0u : DWORD{FNERR_BUFFERTOOSMALL});
        EXPECT_EQ(buffer.c_str() == path, fits);
    }
}

TEST_F(FileDialogs, StartsWhereThereIsAFolder) {
    const std::string sub = In("sub");
    const struct {
        std::string file, initial, current, expected;
    } rows[] = {{sub + "/x.syx", start, "", sub},
                {sub, start, "", sub},
                {"x.syx", start, sub, start},
                {"", "/nowhere", sub, sub},
                {"/nowhere/x", "", "", QDir::currentPath().toStdString()}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file + "|" + row.initial);
        char file[MAX_PATH] = "";
        std::strcpy(file, row.file.c_str());
        std::strcpy(CurrentDirectory, row.current.c_str());
        OPENFILENAME record{};
        record.lpstrFile = file;
        record.nMaxFile = sizeof file;
        record.lpstrInitialDir = row.initial.c_str();
        Soon([&] {
            EXPECT_EQ(Open().directory().path().toStdString(), row.expected);
            Cancel();
        });
        EXPECT_FALSE(GetSaveFileName(&record));
    }
    EXPECT_FALSE(GetOpenFileName(nullptr));
    EXPECT_EQ(CommDlgExtendedError(), DWORD{CDERR_INITIALIZATION});
}

TEST_F(FileDialogs, EndWithTheApplicationAndWithNobodyToAsk) {
    TestDialog outer;
    CFileDialog dialog(TRUE);
    outer.onInit = [&] {
        Soon([&] {
            EXPECT_EQ(Run(dialog, [] { vm::EndAllLoops(); }), IDCANCEL);
            EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        });
    };
    EXPECT_EQ(outer.DoModal(), IDCANCEL);
    EXPECT_EQ(Run(dialog,
                  [] {
                      const vm::MessageBoxHandler before = vm::SetMessageBoxHandler({});
                      vm::SetMessageBoxHandler([](const char*, const char*, UINT) {
                          vm::EndAllLoops();
                          return IDOK;
                      });
                      QFileDialog& open = Open();
                      open.setAttribute(Qt::WA_DontShowOnScreen); // as the desktop's own one
                      Choose("x:y.syx");
                      EXPECT_FALSE(open.isVisible());
                      vm::SetMessageBoxHandler(before);
                  }),
              IDCANCEL);
    EXPECT_THAT(log.TakeLog(), ElementsAre("GetOpenFileName: cancelled, there is nobody to ask"));
    setenv("VMCORE_MESSAGEBOX", "log", 1);
    EXPECT_EQ(CFileDialog(FALSE).DoModal(), IDCANCEL);
    unsetenv("VMCORE_MESSAGEBOX");
    EXPECT_THAT(log.TakeLog(), ElementsAre("GetSaveFileName: cancelled, there is nobody to ask"));
}

TEST_F(FileDialogs, GoWithTheirOwnerAndAfterExceptions) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 380, 290}, nullptr, 0);
    CFileDialog dialog(TRUE, nullptr, nullptr, 0, nullptr, &top);
    EXPECT_EQ(Run(dialog,
                  [&] {
                      EXPECT_EQ(Open().parentWidget(), top.nsWindow);
                      top.DestroyWindow();
                  }),
              IDCANCEL);
    top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 380, 290}, nullptr, 0);
    top.on[WM_USER] = [](WPARAM, LPARAM) -> int { throw std::runtime_error("wire cut"); };
    EXPECT_EQ(Run(dialog, [&] { top.PostMessage(WM_USER); }), IDCANCEL);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"std::runtime_error", "wire cut", MB_ICONERROR}));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    top.DestroyWindow();
}
