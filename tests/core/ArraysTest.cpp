#include <vmcore/core/arrays.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<unsigned> Values(const CUIntArray& array) {
    return {array.GetData(), array.GetData() + array.GetSize()};
}
std::vector<std::string> Texts(const CStringArray& array) {
    std::vector<std::string> texts;
    for (int i = 0; i < array.GetSize(); ++i) texts.emplace_back(array.GetAt(i));
    return texts;
}
void Fill(CUIntArray& array, unsigned count) {
    for (unsigned i = 0; i < count; ++i) array.Add(i);
}

} // namespace

TEST(Arrays, AddAppendsAndAnswersTheIndex) {
    CPtrArray array;
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetUpperBound(), -1);
    int targets[100];
    for (int i = 0; i < 100; ++i) EXPECT_EQ(array.Add(&targets[i]), i);
    EXPECT_EQ(array.GetCount(), 100);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(array[i], &targets[i]);
}

TEST(Arrays, GrowthIsAmortised) {
    CByteArray array;
    int moves = 0;
    for (int i = 0; i < 1000000; ++i) {
        const BYTE* const before = array.GetData();
        array.SetSize(i + 1); // also one at a time
        moves += array.GetData() != before;
    }
    EXPECT_LT(moves, 60);
}

TEST(Arrays, InsertAtMovesUpAndFillsGaps) {
    CUIntArray array;
    Fill(array, 3);
    array.InsertAt(1, 7, 2);
    EXPECT_THAT(Values(array), ElementsAre(0, 7, 7, 1, 2));
    array.InsertAt(7, 9);
    EXPECT_THAT(Values(array), ElementsAre(0, 7, 7, 1, 2, 0, 0, 9));
    array.InsertAt(-1, 5);
    array.InsertAt(0, 5, 0);
    EXPECT_EQ(array.GetSize(), 8);
}

TEST(Arrays, RemoveAtTakesOnlyWhatIsThere) {
    CUIntArray array;
    Fill(array, 6);
    array.RemoveAt(6);
    array.RemoveAt(-1, 3);
    array.RemoveAt(2, -1);
    EXPECT_EQ(array.GetSize(), 6);
    array.RemoveAt(1, 2);
    EXPECT_THAT(Values(array), ElementsAre(0, 3, 4, 5));
    array.RemoveAt(2, 100);
    EXPECT_THAT(Values(array), ElementsAre(0, 3));
    array.RemoveAll();
    EXPECT_EQ(array.GetData(), nullptr);
    array.Add(1);
    EXPECT_THAT(Values(array), ElementsAre(1));
}

TEST(Arrays, SizeChangesKeepWhatStays) {
    CDWordArray array;
    array.SetSize(2);
    array[0] = 5;
    array.SetSize(4, 16);
    EXPECT_EQ(array.GetAt(0), 5u);
    EXPECT_EQ(array.GetAt(3), 0u);
    array.SetAtGrow(5, 9);
    EXPECT_EQ(array.GetUpperBound(), 5);
    EXPECT_EQ(array.GetAt(4), 0u);
    array.SetAt(6, 1); // out of range
    array.SetAt(-1, 1);
    array.SetAtGrow(-1, 1);
    array.SetSize(-1);
    EXPECT_EQ(array.GetSize(), 6);
    array.SetSize(1);
    array.SetSize(2);
    EXPECT_EQ(array.GetAt(1), 0u); // new, not what was there
}

TEST(Arrays, StringsAreMovedWithTheirEmptyForm) {
    CStringArray array;
    array.Add("b");
    array.SetSize(3);
    array[1] = "";
    for (int i = 0; i < 50; ++i) array.InsertAt(0, "a");
    array.RemoveAt(1, 49);
    EXPECT_THAT(Texts(array), ElementsAre("a", "b", "", ""));
    EXPECT_TRUE(array.GetAt(2) == "");
    EXPECT_FALSE(array.GetAt(3) == "");
}

TEST(Arrays, ElementsOfTheArrayMayBeArguments) {
    CStringArray array;
    array.Add("x");
    for (int i = 0; i < 20; ++i) array.Add(array[0]);
    array.InsertAt(0, array[20], 2);
    array.SetAt(0, array[0]);
    EXPECT_EQ(array.GetSize(), 23);
    EXPECT_THAT(Texts(array), testing::Each("x"));
}

TEST(Arrays, AppendAndCopyAlsoOfThemselves) {
    CUIntArray array;
    EXPECT_EQ(array.Append(array), 0);
    Fill(array, 3);
    EXPECT_EQ(array.Append(array), 3);
    EXPECT_THAT(Values(array), ElementsAre(0, 1, 2, 0, 1, 2));
    array.Copy(array);
    EXPECT_EQ(array.GetSize(), 6);
    CUIntArray empty;
    array.Copy(empty);
    EXPECT_THAT(Values(array), IsEmpty());

    CStringArray texts, others;
    texts.Add("a");
    others.Add("b");
    others.Copy(texts);
    others.Append(texts);
    texts[0].SetAt(0, 'c'); // copies are independent
    EXPECT_THAT(Texts(others), ElementsAre("a", "a"));
}
