// Checks and traces, as a debug build has them.
#ifndef _DEBUG
#define _DEBUG
#endif
#include <vmcore/app/diagnostics.h>

#include <gtest/gtest.h>

#include "support/LogCapture.h"

TEST(Diagnostics, TracesGoToTheLogALineEach) {
    LogCapture log;
    TRACE("%d of %s\n", 3, _T("four"));
    TRACE0("100% done");
    TRACE("%s", std::string(5000, 'x').c_str());
    const std::vector<std::string> lines = log.TakeLog();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "3 of four");
    EXPECT_EQ(lines[1], "100% done");
    EXPECT_EQ(lines[2], std::string(1023, 'x'));
}

TEST(Diagnostics, FailedChecksAbortAndSayWhere) {
    int evaluated = 0;
    VERIFY(++evaluated == 1);
    ASSERT(evaluated == 1);
    EXPECT_EQ(evaluated, 1);
    EXPECT_EXIT(ASSERT(evaluated == 2), testing::KilledBySignal(SIGABRT),
                "DiagnosticsTest.cpp.*assertion failed: evaluated == 2");
}
