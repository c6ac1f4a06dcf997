// min and max beside those of the standard library and of a host, and the names for blocks of memory.
#include <windows.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace host {
struct Level {
    int value;
};
// As hosts write it, with the same two types as the library's.
template <class A, class B>
int max(const A& a, const B& b) {
    return a.value + b.value;
}
int min(Level, Level) {
    return -7;
}
} // namespace host

namespace {

using namespace std; // as ported sources have it

struct Limits {
    static const int kMost = 5; // declared only: must not be asked for its address
};
enum { SMALL = 3 };

TEST(MinMax, MixedTypesGoTheWayOfTheConditionalOperator) {
    static_assert(min(2, 1L) == 1 && is_same_v<decltype(min(2, 1L)), long>);
    static_assert(max(short{1}, 2.5) == 2.5);
    static_assert(min(-1, 1U) == 1U && max(-1, 1U) == 0xFFFFFFFFU);
    EXPECT_EQ(min(8L, Limits::kMost), 5);
    EXPECT_EQ(max(SMALL, BYTE{2}), 3);
    const char text[] = "ab";
    const char* end = text + 2;
    EXPECT_EQ(min(text, end), text);
}

TEST(MinMax, OthersComeFirst) {
    EXPECT_EQ((min({4, 2, 3})), 2);
    EXPECT_EQ(max(string("a"), string("b")), "b");
    static_assert(is_reference_v<decltype(max(1, 2))>); // the standard library's
    EXPECT_EQ(min(host::Level{1}, host::Level{2}), -7);
    using host::max;
    EXPECT_EQ(max(host::Level{1}, host::Level{2}), 3);
}

TEST(Memory, BlocksAreFilledAndCopied) {
    char block[6] = "abcde";
    MoveMemory(block + 1, block, 3);
    CopyMemory(block + 4, "xy", 1);
    EXPECT_STREQ(block, "aabcx");
    FillMemory(block, 2, 'z');
    ZeroMemory(block + 3, 3);
    EXPECT_STREQ(block, "zzb");
}

} // namespace
