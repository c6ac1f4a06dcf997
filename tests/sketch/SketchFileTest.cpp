#include "sketch/stdafx.h"

#include "sketch/SketchFile.h"

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

using testing::HasSubstr;

namespace {

const std::string kDrawing = "Sketch 1\n"
                             "page 800 600\n"
                             "grid 25 show snap dots\n"
                             "freehand #1F4E8C 3 - 10,10 12,-14 20,30\n"
                             "line #000000 1 - 0,0 100,50\n"
                             "rectangle #A03020 2 #F0E0D0 40,40 200,120\n"
                             "ellipse #FFFFFF 40 #000000 -20000,0 20000,1\n"
                             "text #010203 24 50,60 Hello,  world; #2\n";

struct BadFile {
    std::string text;
    int line;
    const char* reason;
};
void PrintTo(const BadFile& file, std::ostream* out) {
    *out << file.text.substr(0, 60);
}

class BadSketches : public testing::TestWithParam<BadFile> {};

} // namespace

TEST(SketchFile, ComesBackAsItWasWritten) {
    CSketchData data;
    CSketchError error;
    ASSERT_TRUE(ReadSketch(kDrawing, data, error)) << error.m_strText;
    EXPECT_EQ(WriteSketch(data), kDrawing);
    ASSERT_EQ(data.m_shapes.size(), 5u);
    EXPECT_EQ(data.m_shapes[0]->m_style.m_crPen, RGB(0x1F, 0x4E, 0x8C));
    EXPECT_EQ(data.m_shapes[4]->m_strText, "Hello,  world; #2");
}

TEST(SketchFile, TakesWhatEditorsDoToIt) {
    CSketchData data;
    CSketchError error;
    EXPECT_TRUE(
        ReadSketch("Sketch 1\r\n\r\n; a remark\r\n\tline  #000000 1 -  0,0\t3,4 ", data, error));
    EXPECT_EQ(data.m_shapes.size(), 1u);
}

TEST_P(BadSketches, AreRefusedWithTheirLine) {
    CSketchData data;
    data.m_page.m_nWidth = 123;
    CSketchError error;
    EXPECT_FALSE(ReadSketch(GetParam().text, data, error));
    EXPECT_EQ(error.m_nLine, GetParam().line);
    EXPECT_THAT(error.m_strText, HasSubstr(GetParam().reason));
    EXPECT_TRUE(data.m_page.m_nWidth == 123 && data.m_shapes.empty()) << "nothing is changed";
}

const std::string kStart = "Sketch 1\npage 800 600\n";

INSTANTIATE_TEST_SUITE_P(
    SketchFile, BadSketches,
    testing::Values(BadFile{"", 1, "begins with"}, BadFile{"Sketch 2\n", 1, "begins with"},
                    BadFile{std::string("Sketch 1\n\0", 10), 1, "no text"},
                    BadFile{"Sketch 1\npage 800\n", 2, "the page's height must be between"},
                    BadFile{"Sketch 1\npage 800 49\n", 2, "between 50 and 5000: '49'"},
                    BadFile{"Sketch 1\npage 99999999999999999999 600\n", 2, "the page's width"},
                    BadFile{"Sketch 1\npage 800 600 3\n", 2, "only"},
                    BadFile{kStart + "grid 20 shown\n", 3, "'shown'"},
                    BadFile{kStart + "circle #000000 1 - 0,0 1,1\n", 3, "'circle' is not known"},
                    BadFile{kStart + "\nline 000000 1 - 0,0 1,1\n", 4, "the pen is no colour"},
                    BadFile{kStart + "line #-00000 1 - 0,0 1,1\n", 3, "the pen is no colour"},
                    BadFile{kStart + "line #00000G 1 - 0,0 1,1\n", 3, "the pen is no colour"},
                    BadFile{kStart + "line #000000 41 - 0,0 1,1\n", 3, "width"},
                    BadFile{kStart + "line #000000 1 none 0,0 1,1\n", 3, "the inside"},
                    BadFile{kStart + "line #000000 1 - 0,0\n", 3, "two points"},
                    BadFile{kStart + "line #000000 1 - 0,0 1,1 2,2\n", 3, "two points"},
                    BadFile{kStart + "line #000000 1 - 0,0 1\n", 3, "10,20 is expected: '1'"},
                    BadFile{kStart + "line #000000 1 - 0,0 1,20001\n", 3, "'20001'"},
                    BadFile{kStart + "line #000000 1 - 0,0 1,1x\n", 3, "'1x'"},
                    BadFile{kStart + "freehand #000000 1 -\n", 3, "has points"},
                    BadFile{kStart + "text #000000 24 0,0 \n", 3, "between 1 and 200"},
                    BadFile{kStart + "text #000000 24 0,0 " + std::string(201, 'x'), 3, "200"}));

TEST(SketchFile, GoesToTheDiskAndBack) {
    TemporaryHome home;
    LogCapture log;
    CSketchData data, read;
    CSketchError error;
    ASSERT_TRUE(ReadSketch(kDrawing, data, error));
    const std::string path = (home.Path() / "a.sketch").string();
    ASSERT_TRUE(SaveSketch(path.c_str(), data));
    ASSERT_TRUE(LoadSketch(path.c_str(), read, error)) << error.m_strText;
    EXPECT_EQ(WriteSketch(read), kDrawing);
    EXPECT_FALSE(SaveSketch((home.Path() / "none/a.sketch").c_str(), data));
    EXPECT_FALSE(LoadSketch((home.Path() / "none.sketch").c_str(), read, error));
    EXPECT_EQ(error.m_nLine, 0);
    log.TakeLog();
}
