// The other resources: menus, accelerators, texts, pictures, versions, and what is left out.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtGui/QImage>

#include "ScriptParts.h"
#include "controls/accelerators.h"
#include "files/stringLines.h"
#include "rc/acceleratorKeys.h"
#include "rc/writeMenu.h"
#include "support/TemporaryHome.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace vm::rc {
namespace {

MenuItem Item(const std::string& text, int id, const std::string& symbol = {}) {
    return MakeItem(MenuEntry::Item, text, NumberId(id, symbol));
}
MenuItem Popup(const std::string& text, std::vector<MenuItem> items) {
    MenuItem popup = MakeItem(MenuEntry::Popup, text);
    popup.items = std::move(items);
    return popup;
}
Accelerator Key(int command, int key, bool virtualKey, bool control = false, bool shift = false,
                bool alt = false) {
    return {
        {"test.rc", 3, 1}, NumberId(command, "ID_X"), key, virtualKey, shift, control, alt, "K"};
}
AcceleratorTable Table(int id, std::vector<Accelerator> keys) {
    return {{{"test.rc", 3, 1}, "ACCELERATORS", NumberId(id, "IDR_" + std::to_string(id)), {}},
            std::move(keys)};
}

} // namespace

TEST(WritersMenu, ItemsCommandsAndShortcuts) {
    MenuItem save = Item("&Save\tStrg+S", 101);
    MenuItem bold = Item("&Bold\tCtrl+B", 102);
    bold.checked = bold.grayed = true;
    Menu menu;
    menu.head = {{"test.rc", 1, 1}, "MENU", NumberId(128, "IDR_MAINFRAME"), {}};
    menu.items = {Popup("&File", {save, bold, MakeItem(MenuEntry::Separator, ""),
                                  Item("E&xit", 0xE141), Item("About", 9, "ID_APP_ABOUT")})};
    const Written written({menu, Table(128, {Key(101, 'S', true, true), Key(101, 0x2D, true)}),
                           Table(7, {Key(102, 'X', true, true)})},
                          128);
    const std::string own = written.File("MENU_128.ui");
    const std::string main = written.File("MainMenu.ui");
    for (const std::string& file : {own, main})
        for (const char* part :
             {"<widget class=\"QMenuBar\"", "<string>&amp;Save</string>", "<number>101</number>",
              "<addaction name=\"separator\"/>", "<string>terminate</string>",
              "<string>about</string>", "<string>Ctrl+B</string>"})
            EXPECT_THAT(file, HasSubstr(part));
    EXPECT_THAT(main, HasSubstr("<string>Ctrl+S</string>"));
    EXPECT_THAT(own, Not(HasSubstr("Ctrl+S")));
    EXPECT_EQ(written.lines[0], "converted: MENU IDR_MAINFRAME: MENU_128.ui, MainMenu.ui");
    EXPECT_THAT(written.lines[2], HasSubstr("the key behind the tab"));
}

TEST(WritersMenu, NumbersOfPopups) {
    for (const int number : {0, 65535, 300}) {
        MenuItem popup = Popup("p", {});
        popup.id = NumberId(number);
        Menu menu;
        menu.head.id = NumberId(1);
        menu.items = {popup};
        EXPECT_EQ(Written({menu}).lines[1].find("neither number") == std::string::npos,
                  number != 300);
    }
}

TEST(WritersMenu, NestedTooDeeplyIsLeftOut) {
    Menu menu;
    menu.head.id = NumberId(1);
    menu.items = {Item("x", 5)};
    for (int i = 0; i < 40; ++i) menu.items = {Popup("p", menu.items)};
    EXPECT_THAT(Written({menu}).lines, testing::Contains(HasSubstr("nested too deeply")));
}

TEST(WritersAccelerators, KeysAreTheLibrarys) {
    const struct {
        Accelerator accelerator;
        std::vector<int> keys;
        bool shift;
        const char* shortcut;
    } rows[] = {
        {Key(1, 'S', true, true), {'S' | 0x0100}, false, "Ctrl+S"},
        {Key(1, 'S' - 64, false), {'S' | 0x0100}, false, "Ctrl+S"},
        {Key(1, 13, false), {'M' | 0x2E00, 0x0D | 0x2400, 0x0D | 0x4C00}, false, "Ctrl+M"},
        {Key(1, 9, false), {'I' | 0x2200, 0x09 | 0x3000}, false, "Ctrl+I"},
        {Key(1, 's', false), {'S' | 0x0100}, false, "S"},
        {Key(1, 'S', false), {'S' | 0x0100}, true, "Shift+S"},
        {Key(1, 'S', false, false, false, true), {'S' | 0x0100}, false, "Alt+S"},
        {Key(1, '7', true), {'7' | 0x1A00}, false, "7"},
        {Key(1, 0x74, true, false, true), {0x10 | 0x6000}, true, "Shift+F5"},
        {Key(1, 0x25, true), {0x1C | 0x7B00}, false, "Left"},
        {Key(1, 0x2E, true), {0x7F | 0x7500}, false, "Del"},
        {Key(1, 0x2D, true), {0x7F | 0x7200}, false, "Ins"},
        {Key(1, 0x0D, true), {0x0D | 0x2400, 0x0D | 0x4C00}, false, "Return"},
        {Key(1, 0x1B, true), {0x1B | 0x3500}, false, "Esc"},
        {Key(1, 0x61, true), {'1' | 0x5300}, false, "Num+1"},
        {Key(1, 0x6B, true, true), {'+' | 0x4500}, false, "Ctrl+Num++"},
        {Key(1, 0xBB, true, true, true), {'+' | 0x1800}, true, "Ctrl+Shift+="},
        {Key(1, '+', false), {'+' | 0x1800}, true, "Shift+="},
        {Key(1, '!', false), {'1' | 0x1200}, true, "Shift+1"},
        {Key(1, '/', false), {'/' | 0x2C00}, false, "/"},
        {Key(1, 0x13, true), {}, false, ""},
        {Key(1, 0xE9, false), {}, false, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.shortcut) + " " + std::to_string(row.accelerator.key));
        std::vector<int> keys;
        for (const KeyEntry& entry : KeyEntriesOf(row.accelerator)) {
            keys.push_back(entry.key);
            EXPECT_EQ(entry.shift, row.shift);
            EXPECT_EQ(entry.control, entry.name.starts_with("Ctrl+"));
        }
        EXPECT_EQ(keys, row.keys);
        EXPECT_EQ(ShortcutOf(row.accelerator), row.shortcut);
    }
}

TEST(WritersAccelerators, SourceCompiles) {
    const TemporaryHome home;
    AcceleratorTable hostile = Table(5, {Key(7, '\\', false)});
    hostile.head.id = NameId("A*/ B\n");
    hostile.keys[0].command.symbol = "x\\\n*/ int y;";
    const Written written(
        {Table(128, {Key(101, 'S', true, true), Key(102, 0x13, true)}), hostile, Table(128, {})},
        -1, "../my sketch");
    ASSERT_EQ(written.files.size(), 2u);
    EXPECT_EQ(written.files[1].name, "___my_sketchAccelerators.cpp");
    EXPECT_THAT(written.File(written.files[1].name),
                HasSubstr("const AccelEntry Accelerators_IDR_128[] = {\n"
                          "    {101, 0x0153, 1, 0, 0}, // Ctrl+S: ID_X\n"
                          "    {-1, 0, 0, 0, 0},\n};"));
    for (const OutputFile& file : written.files) home.Write(file.name, file.bytes);
    QProcess compiler;
    compiler.start(VMCORE_CXX, {"-std=c++17", "-Wall", "-Wextra", "-Werror", "-fsyntax-only",
                                "-I" VMCORE_INCLUDE,
                                QString::fromStdString(home.Path() / written.files[1].name)});
    ASSERT_TRUE(compiler.waitForFinished());
    EXPECT_EQ(compiler.readAllStandardError().toStdString(), "");
    EXPECT_EQ(compiler.exitCode(), 0);
    EXPECT_THAT(written.lines, testing::Contains(HasSubstr("left out: ACCELERATOR K: no key")));
}

TEST(WritersStrings, TextsComeBack) {
    const std::string texts[] = {
        "Save?\nThey are \"lost\" otherwise;\tC:\\temp\\x3B",
        " blanks ",
        "",
        "[Strings]",
        "a=b",
        std::string(4000, 'x') + " y",
        std::string(300, ' '),
        "\x01\r\xC3\xA9\xE2\x82\xAC",
    };
    StringTable table;
    for (const std::string& text : texts)
        table.strings.push_back(
            {{}, NumberId(57000 + static_cast<int>(table.strings.size())), text});
    table.strings.push_back({{}, NumberId(57000), "again"});
    table.strings.push_back({{}, NameId("X"), "named"});
    table.strings.push_back({{}, NumberId(1), "\xE4\xB8\xAD"});
    const Written written({table});
    const std::string file = written.File("Strings.ini");
    EXPECT_THAT(
        file, HasSubstr("57000=Save?\\nThey are \"lost\" otherwise\\x3B\\tC:\\\\temp\\\\x3B\r\n"));
    const StringTexts read = ParseStringTexts(file);
    ASSERT_EQ(read.size(), std::size(texts) + 1);
    for (unsigned i = 0; i < std::size(texts); ++i) EXPECT_EQ(read.at(57000 + i), texts[i]);
    EXPECT_THAT(written.lines[std::size(texts) + 1], HasSubstr("an earlier text"));
    EXPECT_THAT(written.lines[std::size(texts) + 2], HasSubstr("no number"));
    EXPECT_THAT(written.lines[std::size(texts) + 3], HasSubstr("shown as '?'"));
}

namespace {

std::string Little(unsigned value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

// Two pixels in a column, red over blue, as every kind of bitmap file.
std::string Bmp(int bits, bool topDown, unsigned compression, const std::string& colours,
                const std::string& pixels) {
    const auto start = static_cast<unsigned>(14 + 40 + colours.size());
    return "BM" + Little(start + static_cast<unsigned>(pixels.size()), 4) + Little(0, 4) +
           Little(start, 4) + Little(40, 4) + Little(1, 4) +
           Little(topDown ? static_cast<unsigned>(-2) : 2, 4) + Little(1, 2) +
           Little(static_cast<unsigned>(bits), 2) + Little(compression, 4) +
           Little(static_cast<unsigned>(pixels.size()), 4) + Little(0, 4) + Little(0, 4) +
           Little(static_cast<unsigned>(colours.size() / 4), 4) + Little(0, 4) + colours + pixels;
}

std::string Bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text += static_cast<char>(value);
    return text;
}

Picture MakePicture(int id, const std::string& path, PictureKind kind = PictureKind::Bitmap) {
    return {{{"test.rc", id, 1}, "BITMAP", NumberId(id), {}}, kind, path};
}

// An icon of one image: its place in the folder of images, and itself.
struct IconImage {
    int size;
    std::string bytes;
};
std::string Icon(const std::vector<IconImage>& images) {
    std::string folder =
        Little(0, 2) + Little(1, 2) + Little(static_cast<unsigned>(images.size()), 2);
    std::string data;
    for (const IconImage& image : images) {
        folder += Little(static_cast<unsigned>(image.size), 1) +
                  Little(static_cast<unsigned>(image.size), 1) + Little(0, 2) + Little(1, 2) +
                  Little(32, 2) + Little(static_cast<unsigned>(image.bytes.size()), 4) +
                  Little(static_cast<unsigned>(6 + 16 * images.size() + data.size()), 4);
        data += image.bytes;
    }
    return folder + data;
}

// Green, with a mask that takes its lowest row away. Of 32 bits without transparency, or with a half.
std::string IconPixels(int size, int bits, int alpha = 0) {
    std::string text = Little(40, 4) + Little(static_cast<unsigned>(size), 4) +
                       Little(static_cast<unsigned>(2 * size), 4) + Little(1, 2) +
                       Little(static_cast<unsigned>(bits), 2) + std::string(24, '\0');
    if (bits == 4) text += Bytes({0, 255, 0, 0}) + std::string(15 * 4, '\0');
    if (bits == 4) text += std::string(static_cast<std::size_t>(size * size / 2), '\0');
    for (int i = 0; bits > 4 && i < size * size; ++i)
        text += bits == 24 ? Bytes({0, 255, 0}) : Bytes({0, 255, 0, alpha});
    return text + Bytes({255, 255, 0, 0}) +
           std::string(static_cast<std::size_t>(4 * (size - 1)), '\0');
}

} // namespace

TEST(WritersPicture, BitmapsOfEveryDepth) {
    const TemporaryHome home;
    const std::string redBlue = Bytes({0, 0, 255, 0, 255, 0, 0, 0});
    const std::string os2 = "BM" + Little(40, 4) + Little(0, 4) + Little(32, 4) + Little(12, 4) +
                            Little(1, 2) + Little(2, 2) + Little(1, 2) + Little(1, 2) +
                            Bytes({0, 0, 255, 255, 0, 0}) + Bytes({0x80, 0, 0, 0, 0, 0, 0, 0});
    const std::pair<const char*, std::string> rows[] = {
        {"1 bit", Bmp(1, false, 0, redBlue, Bytes({0x80, 0, 0, 0, 0, 0, 0, 0}))},
        {"4 bits", Bmp(4, false, 0, redBlue, Bytes({0x10, 0, 0, 0, 0, 0, 0, 0}))},
        {"8 bits", Bmp(8, false, 0, redBlue, Bytes({1, 0, 0, 0, 0, 0, 0, 0}))},
        {"run lengths", Bmp(8, false, 1, redBlue, Bytes({1, 1, 0, 0, 1, 0, 0, 1}))},
        {"16 bits", Bmp(16, false, 0, "", Bytes({0x1F, 0, 0, 0, 0, 0x7C, 0, 0}))},
        {"24 bits", Bmp(24, false, 0, "", Bytes({255, 0, 0, 0, 0, 0, 255, 0}))},
        {"32 bits", Bmp(32, false, 0, "", Bytes({255, 0, 0, 0, 0, 0, 255, 0}))},
        {"top row first", Bmp(24, true, 0, "", Bytes({0, 0, 255, 0, 255, 0, 0, 0}))},
        {"the old header", os2},
    };
    for (const auto& [what, bytes] : rows) {
        SCOPED_TRACE(what);
        const Written written({MakePicture(5, home.Write("a.bmp", bytes))});
        QImage image;
        ASSERT_TRUE(
            image.loadFromData(QByteArray::fromStdString(written.File("Bitmap_5.png")), "PNG"));
        EXPECT_EQ(image.size(), QSize(1, 2));
        const QColor top = image.pixelColor(0, 0);
        const QColor bottom = image.pixelColor(0, 1);
        EXPECT_TRUE(top.red() >= 0xF8 && top.blue() == 0 && top.alpha() == 255);
        EXPECT_TRUE(bottom.red() == 0 && bottom.blue() >= 0xF8 && bottom.alpha() == 255);
        EXPECT_THAT(written.lines, ElementsAre("converted: BITMAP 5: Bitmap_5.png"));
    }
}

TEST(WritersPicture, IconsAreTheirLargestImage) {
    const TemporaryHome home;
    QImage blue(48, 48, QImage::Format_ARGB32);
    blue.fill(QColor(0, 0, 255, 128));
    ASSERT_TRUE(blue.save(QString::fromStdString(home.Path() / "blue.png")));
    const std::string png = home.Read("blue.png");
    const auto load = [&](const std::vector<IconImage>& images) {
        const Written written(
            {MakePicture(5, home.Write("a.ico", Icon(images)), PictureKind::Icon)});
        QImage image;
        image.loadFromData(QByteArray::fromStdString(written.File("Bitmap_5.png")), "PNG");
        return image;
    };
    for (const int bits : {4, 24, 32}) {
        SCOPED_TRACE(bits);
        const QImage masked = load({{16, IconPixels(16, bits)}});
        ASSERT_EQ(masked.size(), QSize(16, 16));
        EXPECT_EQ(masked.pixelColor(3, 3), QColor(Qt::green));
        EXPECT_EQ(masked.pixelColor(3, 15).alpha(), 0);
    }
    const QImage deepest = load({{16, IconPixels(16, 4)}, {16, IconPixels(16, 32, 128)}});
    EXPECT_EQ(deepest.pixelColor(3, 15), QColor(0, 255, 0, 128));
    const QImage largest = load({{16, IconPixels(16, 24)}, {48, png}, {255, "broken"}});
    EXPECT_EQ(largest.size(), QSize(48, 48));
    EXPECT_EQ(largest.pixelColor(0, 0), QColor(0, 0, 255, 128));
    EXPECT_TRUE(load({{16, IconPixels(16, 24).substr(0, 300)}}).isNull());
    std::vector<IconImage> many(300, {16, IconPixels(16, 24)});
    many.push_back({48, png});
    EXPECT_EQ(load(many).size(), QSize(16, 16)); // no more are looked at
}

TEST(WritersPicture, TroubleIsSaid) {
    const TemporaryHome home;
    const std::string good = home.Write("a.bmp", Bmp(24, false, 0, "", std::string(8, '\0')));
    const std::string bad = home.Write("b.bmp", "BM but nothing else");
    const Written written({MakePicture(5, good), MakePicture(5, good, PictureKind::Icon),
                           MakePicture(6, bad), MakePicture(7, home.Path() / "none.bmp"),
                           MakePicture(8, home.Path()), MakePicture(9, good, PictureKind::Cursor)});
    EXPECT_EQ(written.files.size(), 1u);
    const char* const whys[] = {"is there already", "cannot be read", "there is no file",
                                "there is no file", "cursors are"};
    for (std::size_t i = 0; i < std::size(whys); ++i)
        EXPECT_THAT(written.lines[i + 1], AllOf(HasSubstr("left out"), HasSubstr(whys[i])));
}

TEST(WritersPicture, IconWithTheLowestNumberIsThePrograms) {
    const TemporaryHome home;
    const std::string icon = home.Write("a.ico", Icon({{16, IconPixels(16, 24)}}));
    const auto pictured = [&](std::vector<Picture> pictures) {
        std::vector<Resource> resources(pictures.begin(), pictures.end());
        return Written(resources).File("Version.plist");
    };
    const auto iconAt = [&](int id) { return MakePicture(id, icon, PictureKind::Icon); };
    const Picture missing = MakePicture(2, home.Path() / "none.ico", PictureKind::Icon);
    const Picture unreadable = MakePicture(2, home.Write("b.ico", "no icon"), PictureKind::Icon);
    EXPECT_THAT(pictured({iconAt(7), iconAt(5), missing}),
                HasSubstr("<key>CFBundleIconFile</key>\n\t<string>Bitmap_5.png</string>"));
    // The tool bar's picture has the main window's number as well.
    EXPECT_THAT(pictured({MakePicture(5, icon), iconAt(5), iconAt(7)}), HasSubstr("Bitmap_7.png"));
    EXPECT_EQ(pictured({unreadable}), "");
    EXPECT_EQ(pictured({MakePicture(5, icon)}), "");
}

TEST(WritersVersion, BecomesEntriesOfInfoPlist) {
    VersionInfo version;
    version.head = {{}, "VERSIONINFO", NumberId(1, "VS_VERSION_INFO"), {}};
    version.fileVersion = {1, 2, 3, 4};
    version.productVersion = {1, 2};
    version.strings = {{"040904b0",
                        {{{}, "LegalCopyright", "\xC2\xA9 <A> & B\x01"},
                         {{}, "ProductVersion", "1.2 beta"},
                         {{}, "ProductName", "Sketch"},
                         {{}, "CFBundleName", "x"},
                         {{}, "ProductName", "again"}}},
                       {"040704b0", {{{}, "Comments", "other language"}}}};
    const Written written({version, version});
    EXPECT_EQ(
        written.File("Version.plist"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
        "\t<key>CFBundleVersion</key>\n\t<string>1.2.3.4</string>\n"
        "\t<key>CFBundleShortVersionString</key>\n\t<string>1.2</string>\n"
        "\t<key>NSHumanReadableCopyright</key>\n\t<string>\xC2\xA9 &lt;A&gt; &amp; B</string>\n"
        "\t<key>ProductName</key>\n\t<string>Sketch</string>\n</dict>\n</plist>\n");
    const char* const outcomes[] = {"converted",    "converted",          "the number counts",
                                    "BUNDLE_NAME",  "writes this key",    "earlier value",
                                    "first counts", "earlier VERSIONINFO"};
    ASSERT_EQ(written.lines.size(), std::size(outcomes));
    for (std::size_t i = 0; i < std::size(outcomes); ++i)
        EXPECT_THAT(written.lines[i], HasSubstr(outcomes[i]));
}

TEST(Writers, WhatHasNoCounterpartIsNamed) {
    const auto other = [](const char* keyword) {
        return Other{{{}, keyword, NumberId(3, "IDR_X"), {}}, {}};
    };
    const Written written({other("TOOLBAR"), other("DESIGNINFO"), other("RCDATA"),
                           MakeDialog(1, {}), MakeDialog(1, {})});
    EXPECT_THAT(written.lines,
                ElementsAre(HasSubstr("left out: TOOLBAR IDR_X: there are no tool bars"),
                            HasSubstr("only for the resource editor"),
                            HasSubstr("Resources folder, as a file"), HasSubstr("DLG_1.ui"),
                            HasSubstr("left out: DIALOGEX IDD_TEST: DLG_1.ui is there already")));
    EXPECT_TRUE(Written({}).files.empty());
    const std::pair<const char*, const char*> whys[] = {{"DLGINIT", "OnInitDialog"},
                                                        {"AFX_DIALOG_LAYOUT", "a layout"},
                                                        {"24", "only for Windows"},
                                                        {"TEXTINCLUDE", "resource editor"},
                                                        {"241", "no tool bars"}};
    for (const auto& [keyword, why] : whys)
        EXPECT_THAT(Written({other(keyword)}).lines, ElementsAre(HasSubstr(why)));
}

} // namespace vm::rc
