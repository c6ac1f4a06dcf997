#include <vmcore/files/library.h>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Libraries, OpenByWin32NamesAndStayLoaded) {
    std::string name = LOADABLE;
    name.replace(name.rfind('/'), 1, "\\");
    HMODULE library = LoadLibrary(name.c_str());
    ASSERT_NE(library, nullptr);
    const auto answer = reinterpret_cast<int (*)()>(GetProcAddress(library, "AnswerOfPlugIn"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(FreeLibrary(library), 1);
    EXPECT_EQ(answer(), 42) << "a plug-in's code outlives its handle";
}

TEST(Libraries, FailureToOpenIsLogged) {
    LogCapture log;
    EXPECT_EQ(LoadLibrary("Plugins\\Tool.so"), nullptr);
    EXPECT_THAT(log.TakeLog(), ElementsAre("Dylib open failure for: Plugins/Tool.so",
                                           StartsWith("Dylib error = Plugins/Tool.so: ")));
    EXPECT_EQ(LoadLibrary(nullptr), nullptr);
    EXPECT_EQ(LoadLibrary(""), nullptr);
    EXPECT_THAT(log.TakeLog(), ElementsAre("Dylib open failure for: ", "Dylib open failure for: "));
}

TEST(Libraries, MissingSymbolShowsTheLoadersText) {
    MessageBoxRecorder boxes;
    HMODULE library = LoadLibrary(LOADABLE);
    EXPECT_EQ(GetProcAddress(library, "NoSuchName"), nullptr);
    const std::vector<ShownBox> shown = boxes.Take();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_THAT(shown[0].text, HasSubstr("NoSuchName"));
    EXPECT_EQ(shown[0].caption, "Internal Error! Finding symbol...");
    EXPECT_EQ(GetProcAddress(nullptr, "AnswerOfPlugIn"), nullptr);
    EXPECT_EQ(FreeLibrary(nullptr), 0);
    FreeLibrary(library);
}
