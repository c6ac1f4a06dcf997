#include <vmcore/core/strings.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <QtCore/QString>

#include <gmock/gmock.h>

#include <vmcore/core/CString.h>

TEST(StringHelpers, CompareWithoutCase) {
    struct Case {
        const char *a, *b;
        int order;
    };
    for (const Case& c : {Case{"ab", "AB", 0}, Case{"ab", "AC", -1}, Case{"b", "A", 1},
                          Case{"ab", "abc", -1}, Case{"_", "a", 1}, // behind the upper-case A
                          Case{"\xE4", "a", -1}, Case{"a\xE4", "a", -1}, Case{"", "", 0}}) {
        EXPECT_EQ(macstricmp(c.a, c.b), c.order) << c.a << ' ' << c.b;
        EXPECT_EQ(macstricmp(c.b, c.a), -c.order) << c.a << ' ' << c.b;
        EXPECT_EQ(strnicmp(c.a, c.b, 100), c.order) << c.a << ' ' << c.b;
    }
    EXPECT_EQ(strnicmp("abX", "ABY", 2), 0);
    EXPECT_EQ(strnicmp("abX", "ABY", 3), -1);
    EXPECT_EQ(strnicmp("a", "b", 0), 0);
    char writable[] = "AB";
    EXPECT_EQ(macstricmp("ab", writable), 0);
    EXPECT_EQ(macstricmp(writable, writable), 0);
    EXPECT_EQ(macstricmp(CString("ab"), CString("AB")), 0);
}

TEST(StringHelpers, NullComesFirst) {
    const char* const null = nullptr;
    EXPECT_EQ(macstricmp(null, "a"), -1);
    EXPECT_EQ(macstricmp("a", null), 1);
    EXPECT_EQ(macstricmp(null, null), 0);
    EXPECT_EQ(strnicmp(null, "", 0), -1);
    EXPECT_EQ(strnicmp(null, null, 3), 0);
}

TEST(StringHelpers, MemoryComparisonIsExactAndNeverEqual) {
    EXPECT_EQ(macmemicmp("ab", "AB", 2), 1);
    EXPECT_EQ(macmemicmp("a\x7F", "a\x80", 2), -1); // unsigned
    EXPECT_EQ(macmemicmp("abc", "abd", 1), -1);     // goes on behind the count
    EXPECT_EQ(macmemicmp("abd", "abc", 2), 1);
    const char* const same = "same";
    EXPECT_NE(macmemicmp(same, same, 4), 0);
    EXPECT_EQ(macmemicmp("a", "b", 0), 0);
    EXPECT_EQ(macmemicmp(nullptr, "b", 1), 0);
    EXPECT_EQ(macmemicmp("a", nullptr, 1), 0);
}

TEST(StringHelpers, CharacterFunctions) {
    char text[] = "a\xE4z";
    EXPECT_EQ(macstrupr(text), text);
    EXPECT_STREQ(text, "A\xE4Z");
    EXPECT_EQ(_tcschr(text, 'Z'), text + 2);
    EXPECT_EQ(_tcschr(text, 'q'), nullptr);
    EXPECT_EQ(_tcschr(text, '\0'), nullptr);
    EXPECT_EQ(_tcschr(nullptr, 'a'), nullptr);
    EXPECT_EQ(AnsiNext(text + 3), text + 4); // also over the terminator
    EXPECT_EQ(CharNext(nullptr), nullptr);
    char copy[8];
    EXPECT_EQ(lstrcpy(copy, "copy"), copy);
    EXPECT_STREQ(copy, "copy");
}

TEST(StringHelpers, Numbers) {
    char buffer[12];
    EXPECT_STREQ(itoa(255, buffer, 16), "ff");
    EXPECT_STREQ(itoa(255, buffer, 2), "255");
    EXPECT_STREQ(itoa(INT_MIN, buffer, 10), "-2147483648");
    EXPECT_STREQ(itoa(-1, buffer, 16), "ffffffff");
    EXPECT_EQ(MulDiv(7, 3, 2), 10);
    EXPECT_EQ(MulDiv(-7, 3, 2), -10);
    EXPECT_EQ(MulDiv(100000, 100000, 10), 141006540); // 10^10 modulo 2^32, divided
    EXPECT_EQ(MulDiv(65536, 32768, 2), -1073741824);
    EXPECT_EQ(MulDiv(INT_MIN, 1, -1), INT_MIN);
}

TEST(StringHelpers, AsciiToUtf16FillsTheBuffer) {
    alignas(char16_t) std::array<unsigned char, 9> bytes;
    const auto units = [&] {
        const auto* first = reinterpret_cast<const char16_t*>(bytes.data());
        return std::u16string(first, 4);
    };
    bytes.fill(0xAA);
    EXPECT_TRUE(ASCIIToUniCode("ab", bytes.data(), 9));
    EXPECT_EQ(units(), std::u16string(u"ab\0\0", 4));
    EXPECT_EQ(bytes[8], 0);
    EXPECT_TRUE(ASCIIToUniCode("abcdef", bytes.data(), 9)); // whole characters, no terminator
    EXPECT_EQ(units(), u"abcd");
    bytes.fill(0xAA);
    EXPECT_TRUE(ASCIIToUniCode("xyz", bytes.data(), 4)); // nothing beyond the given size
    EXPECT_EQ(units(), u"xy\xAAAA\xAAAA");
    EXPECT_FALSE(ASCIIToUniCode("a\xE4", bytes.data(), 8));
    EXPECT_FALSE(ASCIIToUniCode(nullptr, bytes.data(), 8));
    EXPECT_EQ(units(), u"xy\xAAAA\xAAAA");
}

TEST(StringHelpers, Utf16ToAsciiEscapesAndNeverCutsAnEscape) {
    struct Case {
        const char16_t* text;
        int size;
        const char* result;
    };
    for (const Case& c : {Case{u"abc", 16, "abc"}, Case{u"abc", 3, "ab"}, Case{u"abc", 1, ""},
                          Case{u"a\u00E9b", 16, "a\\u00e9b"}, Case{u"a\u00E9b", 8, "a\\u00e9"},
                          Case{u"a\u00E9b", 7, "a"}, Case{u"\U0001F3B9", 16, "\\ud83c\\udfb9"},
                          Case{u"C:\\x", 16, "C:\\x"}}) {
        char result[20] = "?????????????????";
        const auto* units = reinterpret_cast<const unsigned short*>(c.text);
        EXPECT_EQ(UniCodeToASCII(units, result, c.size), 0);
        EXPECT_STREQ(result, c.result) << c.size;
    }
}

TEST(StringHelpers, WideCharToMultiByteReadsToTheTerminatorAtAnyAlignment) {
    char bytes[9] = "";
    std::memcpy(bytes + 1, u"h\u20AC", 6);
    char result[16];
    signed char usedDefault = 7;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, bytes + 1, 1, result, 16, "?", &usedDefault), 0);
    EXPECT_STREQ(result, "h\\u20ac");
    EXPECT_EQ(usedDefault, 7);
}

TEST(StringHelpers, PlatformStringBecomesUtf8) {
    const auto copied = [](const QString& text) -> std::string {
        const std::unique_ptr<char, decltype(&std::free)> copy(SafeCFStringCopyToCString(&text),
                                                               &std::free);
        return copy ? copy.get() : "(null)";
    };
    EXPECT_EQ(copied(u"a\u00E9\u20AC\U0001F3B9"_qs), "a\u00E9\u20AC\U0001F3B9");
    EXPECT_EQ(copied(QString()), "");
    EXPECT_EQ(copied(QString(QChar(0xD83C))), "(null)");
    EXPECT_EQ(copied(QString(QChar(0xDFB9)) + u'a'), "(null)");
    EXPECT_EQ(SafeCFStringCopyToCString(nullptr), nullptr);
}
