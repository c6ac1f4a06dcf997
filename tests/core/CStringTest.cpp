#include <vmcore/core/CString.h>

#include <string>

#include <gmock/gmock.h>

namespace {

using testing::StrEq;

// Which of the two empty forms: one without a buffer is equal to the null pointer.
bool HasBuffer(const CString& string) {
    return string != static_cast<const char*>(nullptr);
}

struct Form {
    bool hasBuffer;
    int length;
    std::string text;
    bool operator==(const Form&) const = default;
};
void PrintTo(const Form& form, std::ostream* out) {
    *out << (form.hasBuffer ? "buffer" : "null") << ", " << form.length << ", \"" << form.text
         << '"';
}
Form FormOf(const CString& string) {
    return {HasBuffer(string), string.GetLength(), static_cast<const char*>(string)};
}
const Form kNull = {false, 0, ""};
const Form kHoldsEmpty = {true, 0, ""};

CString Removed(const char* text, char c) {
    CString string(text);
    string.Remove(c);
    return string;
}

} // namespace

TEST(CString, EmptyTextsTakeTheFormOfTheirOrigin) {
    CString empty;
    EXPECT_EQ(FormOf(empty), kNull);
    EXPECT_EQ(FormOf(CString("")), kNull);
    EXPECT_EQ(FormOf(CString(nullptr)), kNull);

    CString holdsEmpty("abc");
    holdsEmpty = "";
    EXPECT_EQ(FormOf(holdsEmpty), kHoldsEmpty);
    EXPECT_EQ(FormOf(CString(holdsEmpty)), kNull);
    CString assigned("abc");
    assigned = holdsEmpty;
    EXPECT_EQ(FormOf(assigned), kNull);
    assigned = CString(); // a temporary arrives as a const char*
    EXPECT_EQ(FormOf(assigned), kHoldsEmpty);
    assigned = static_cast<const char*>(nullptr);
    EXPECT_EQ(FormOf(assigned), kNull);
    assigned.SetString("");
    EXPECT_EQ(FormOf(assigned), kHoldsEmpty);
}

TEST(CString, EmptyFormsAreAlikeForIsEmptyButNotForComparison) {
    CString string;
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_FALSE(string == "");
    EXPECT_EQ(string != "", 1);
    EXPECT_TRUE(string == static_cast<const char*>(nullptr));
    EXPECT_FALSE(string == CString());
    string = "";
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_TRUE(string == "");
    EXPECT_FALSE(string != "");
    EXPECT_EQ(string != static_cast<const char*>(nullptr), 1);
}

TEST(CString, EmptyIsAQuestion) {
    CString string("abc");
    EXPECT_FALSE(string.Empty());
    EXPECT_THAT(string, StrEq("abc"));
}

TEST(CString, ComparesBytesFromEitherSide) {
    const CString string("abc");
    EXPECT_TRUE(string == CString("abc"));
    EXPECT_TRUE("abc" == string);
    EXPECT_TRUE("abd" != string);
    EXPECT_FALSE(string == "ABC");
    EXPECT_LT(string != "abd", 0);
    EXPECT_TRUE(CString("\xFF") != "\x01"); // any difference of two bytes is non-zero in 8 bits
}

TEST(CString, ReadsBeyondTheEndAreZeroAndWritesStopAtTheTerminator) {
    CString string("abc");
    const CString& fixed = string;
    EXPECT_EQ(fixed[2], 'c');
    EXPECT_EQ(fixed[3], '\0');
    EXPECT_EQ(fixed[1000], '\0');
    string[0] = 'x';
    string.SetAt(1, 'y');
    string.SetAt(4, '!');
    EXPECT_EQ(FormOf(string), (Form{true, 3, "xyc"}));
    string.SetAt(3, 'd'); // the terminator
    EXPECT_EQ(FormOf(string), (Form{true, 3, "xycd"}));
    CString().SetAt(0, 'x');
}

TEST(CString, GetBufferIsTheStringItself) {
    CString string("abc");
    string.GetBuffer(100)[1] = 'B';
    EXPECT_THAT(string, StrEq("aBc"));
    EXPECT_STREQ(CString().GetBuffer(10), "");
}

TEST(CString, RemoveLeavesALengthOneShortUntilTheNextEdit) {
    CString string("banana");
    EXPECT_EQ(string.Remove('a'), 3);
    EXPECT_EQ(FormOf(string), (Form{true, 2, "bnn"}));
    CString copy;
    copy = string;
    EXPECT_EQ(FormOf(copy), (Form{true, 2, "bnn"}));
    EXPECT_THAT(string.Right(2), StrEq("nn"));
    EXPECT_EQ(string.Remove('x'), 0); // finds nothing, shortens nothing
    EXPECT_EQ(FormOf(string), (Form{true, 2, "bnn"}));
    string += "!";
    EXPECT_EQ(FormOf(string), (Form{true, 4, "bnn!"}));

    EXPECT_EQ(FormOf(Removed("aaa", 'a')), kNull);
    EXPECT_EQ(FormOf(CString(Removed("ab", 'a'))), (Form{true, 0, "b"}));
    CString holdsEmpty;
    holdsEmpty = "";
    EXPECT_EQ(holdsEmpty.Remove('a'), 0);
    EXPECT_EQ(FormOf(holdsEmpty), kNull);
}

TEST(CString, AppendsAndInserts) {
    CString string;
    string.Append(nullptr);
    EXPECT_EQ(FormOf(string), kNull);
    string.AppendChar('a');
    string.AppendChar('\0');
    (string += "b") += CString("c");
    EXPECT_EQ(FormOf(string), (Form{true, 3, "abc"}));

    struct Case {
        const char* before;
        int index;
        const char* inserted;
        const char* after;
    };
    for (const Case& c :
         {Case{"ab", -1, "x", "abx"}, Case{"ab", 0, "x", "xab"}, Case{"ab", 1, "xy", "axyb"},
          Case{"ab", 9, "x", "abx"}, Case{"", 5, "x", "x"}, Case{"ab", 1, nullptr, "ab"}}) {
        CString text(c.before);
        EXPECT_EQ(text.Insert(c.index, c.inserted), static_cast<int>(std::string(c.after).size()));
        EXPECT_STREQ(text, c.after) << c.before << " at " << c.index;
    }
    CString front("ab");
    EXPECT_EQ(front.Insert(-1, 'x'), 3);
    EXPECT_EQ(front.Insert(9, 'y'), 4);
    EXPECT_STREQ(front, "xaby");
}

TEST(CString, ArgumentsMayPointIntoTheString) {
    CString string("abcd");
    string = string.Right(3);
    string.Append(string);
    string.Insert(1, string.Right(1));
    EXPECT_STREQ(string, "bdcdbcd");
    CString& same = string;
    string = same;
    EXPECT_STREQ(string, "bdcdbcd");
    string.Replace(string.Right(1), string);
    EXPECT_STREQ(string, "bbdcdbcdcbdcdbcdbcbdcdbcd");
}

TEST(CString, DeletesWhatIsThere) {
    struct Case {
        const char* before;
        int index, count;
        Form after;
    };
    for (const Case& c : {Case{"abcd", 1, 2, {true, 2, "ad"}}, Case{"abcd", 2, 9, {true, 2, "ab"}},
                          Case{"abcd", 0, 4, kNull}, Case{"abcd", 0, 9, kNull},
                          Case{"abcd", 4, 1, {true, 4, "abcd"}},
                          Case{"abcd", 7, 1, {true, 4, "abcd"}}, Case{"", 0, 1, kNull}}) {
        CString text(c.before);
        EXPECT_EQ(text.Delete(c.index, c.count), c.after.length);
        EXPECT_EQ(FormOf(text), c.after) << c.before << ' ' << c.index << ' ' << c.count;
    }
}

TEST(CString, ReplacesTextFromTheRight) {
    struct Case {
        const char *before, *oldText, *newText;
        int count;
        const char* after;
    };
    for (const Case& c : {Case{"aaa", "aa", "b", 1, "ab"}, Case{"aabb", "ab", "b", 2, "bb"},
                          Case{"a.b.c", ".", "::", 2, "a::b::c"}, Case{"aa", "a", "", 2, ""},
                          Case{"abc", "", "x", 0, "abc"}, Case{"abc", nullptr, "x", 0, "abc"},
                          Case{"abc", "a", nullptr, 0, "abc"}, Case{"", "a", "b", 0, ""}}) {
        CString text(c.before);
        EXPECT_EQ(text.Replace(c.oldText, c.newText), c.count) << c.before;
        EXPECT_STREQ(text, c.after);
    }
}

TEST(CString, ReplacingByNulCutsTheTextButNotTheLength) {
    CString string("a-b-c");
    EXPECT_EQ(string.Replace('-', '+'), 2);
    EXPECT_STREQ(string, "a+b+c");
    EXPECT_EQ(string.Replace('+', '\0'), 2);
    EXPECT_EQ(FormOf(string), (Form{true, 5, "a"}));
}

TEST(CString, LeftIsNewAndRightPointsIntoTheString) {
    const CString string("abc");
    EXPECT_STREQ(string.Left(2), "ab");
    EXPECT_STREQ(string.Left(10), "abc");
    EXPECT_EQ(FormOf(string.Left(0)), kNull);
    EXPECT_EQ(FormOf(CString().Left(3)), kNull);
    EXPECT_EQ(string.Right(2), static_cast<const char*>(string) + 1);
    EXPECT_EQ(string.Right(10), static_cast<const char*>(string));
    EXPECT_STREQ(string.Right(0), "");
    EXPECT_STREQ(CString().Right(1), "");
}

TEST(CString, Finds) {
    const CString string("abcabc");
    EXPECT_EQ(string.Find("bc"), 1);
    EXPECT_EQ(string.Find("bc", 2), 4);
    EXPECT_EQ(string.Find("bc", 6), -1);
    EXPECT_EQ(string.Find("x"), -1);
    EXPECT_EQ(CString().Find(""), -1);
    EXPECT_EQ(string.FindOneOf("xcb"), 1);
    EXPECT_EQ(string.FindOneOf(""), -1);
    EXPECT_EQ(string.FindOneOf(nullptr), -1);
}

TEST(CString, CaseChangesAsciiOnly) {
    CString string("aZ\xE4\xC4");
    string.MakeUpper();
    EXPECT_STREQ(string, "AZ\xE4\xC4");
    string.MakeLower();
    EXPECT_STREQ(string, "az\xE4\xC4");
}

TEST(CString, TrimsOneCharacterAfterTheOther) {
    struct Case {
        const char* before;
        const char *left, *right, *both;
    };
    for (const Case& c :
         {Case{"  text\r\n", "text\r\n", "  text", "text"},
          Case{"\t x\t", "\t x\t", "\t x\t", "\t x\t"}, Case{" \nx", "\nx", " \nx", "\nx"},
          Case{"\n x \n", "x \n", "\n x", "x"}, Case{"\b\n\r x", "x", "\b\n\r x", "x"}}) {
        CString left(c.before), right(c.before), both(c.before);
        EXPECT_STREQ(left.TrimLeft(), c.left);
        EXPECT_STREQ(right.TrimRight(), c.right);
        EXPECT_STREQ(both.Trim(), c.both);
        EXPECT_EQ(both.GetLength(), static_cast<int>(std::string(c.both).size()));
    }
}

TEST(CString, TrimsARunAndKeepsABufferForNothing) {
    CString string("xxaxx");
    EXPECT_STREQ(string.Trim('\0'), "xxaxx");
    EXPECT_STREQ(string.Trim('x'), "a");
    EXPECT_STREQ(string.TrimRight('a'), "");
    EXPECT_EQ(FormOf(string), kHoldsEmpty);
    EXPECT_STREQ(CString().Trim(), "");
}
