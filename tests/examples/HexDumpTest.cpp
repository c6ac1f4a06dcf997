#include "librarian/HexDump.h"

#include <gmock/gmock.h>

TEST(HexDump, WholeLineHasAGapInTheMiddle) {
    SysexBytes message(17, 'A');
    message[0] = 0xF0;
    const HexLine line = MakeHexLine(message, 0);
    EXPECT_EQ(line.address, "00000");
    EXPECT_EQ(line.bytes, " F0 41 41 41 41 41 41 41  41 41 41 41 41 41 41 41");
    EXPECT_EQ(line.characters, ".AAAAAAAAAAAAAAA");
}

TEST(HexDump, ShortLineIsFilledUpToTheSameWidth) {
    const SysexBytes message(17, 0x7F);
    ASSERT_EQ(HexLineCount(message), 2);
    const HexLine line = MakeHexLine(message, 1);
    EXPECT_EQ(line.address, "00010");
    EXPECT_EQ(line.bytes, " 7F" + std::string(46, ' '));
    EXPECT_EQ(line.characters, ".");
}

TEST(HexDump, FullLastLineIsNotFollowedByAnEmptyOne) {
    EXPECT_EQ(HexLineCount(SysexBytes(32)), 2);
    EXPECT_EQ(HexLineCount({}), 0);
}
