// The free string functions and the conversions to and from UTF-16 and platform strings.
#include <vmcore/core/strings.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include <QtCore/QString>
#include <QtCore/QStringConverter>

#include "core/ascii.h"
#include "core/macroman.h"

namespace {

int Sign(int a, int b) {
    return a < b ? -1 : a > b;
}

// The order of a pair of pointers of which at least one is null: null comes first.
int NullOrder(const void* a, const void* b) {
    return Sign(a != nullptr, b != nullptr);
}

int CompareFolded(const char* a, const char* b, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const auto upperA = static_cast<signed char>(vm::AsciiUpper(a[i]));
        const auto upperB = static_cast<signed char>(vm::AsciiUpper(b[i]));
        if (upperA != upperB || upperA == 0) return Sign(upperA, upperB);
    }
    return 0;
}

// The UTF-16 unit `index` of bytes at any alignment.
char16_t UnitAt(const char* bytes, std::size_t index) {
    char16_t unit;
    std::memcpy(&unit, bytes + index * sizeof unit, sizeof unit);
    return unit;
}

// `unit` as ASCII, escaped when it is not.
std::string_view Escaped(char16_t unit, std::array<char, 6>& buffer) {
    if (unit < 0x80) {
        buffer[0] = static_cast<char>(unit);
        return {buffer.data(), 1};
    }
    constexpr char digits[] = "0123456789abcdef";
    buffer = {'\\',
              'u',
              digits[unit >> 12],
              digits[unit >> 8 & 15],
              digits[unit >> 4 & 15],
              digits[unit & 15]};
    return {buffer.data(), buffer.size()};
}

void WriteEscaped(const char* utf16, char* dst, int dstSize) {
    if (dstSize <= 0) return;
    char* const last = dst + dstSize - 1; // the terminator's place at the latest
    for (std::size_t i = 0; utf16 && UnitAt(utf16, i) != 0; ++i) {
        std::array<char, 6> buffer;
        const std::string_view text = Escaped(UnitAt(utf16, i), buffer);
        if (static_cast<std::ptrdiff_t>(text.size()) > last - dst) break;
        dst = std::copy(text.begin(), text.end(), dst);
    }
    *dst = '\0';
}

} // namespace

char* lstrcpy(char* dst, const char* src) {
    return std::strcpy(dst, src);
}

int macstricmp(const char* a, const char* b) {
    if (!a || !b) return NullOrder(a, b);
    return CompareFolded(a, b, std::numeric_limits<std::size_t>::max());
}

int macstricmp(const char* a, char* b) {
    return macstricmp(a, static_cast<const char*>(b));
}

int macstricmp(char* a, char* b) {
    return macstricmp(static_cast<const char*>(a), static_cast<const char*>(b));
}

int strnicmp(const char* a, const char* b, std::size_t n) {
    if (!a || !b) return NullOrder(a, b);
    return CompareFolded(a, b, n);
}

int macmemicmp(const void* a, const void* b, unsigned int n) {
    if (!a || !b || n == 0) return 0;
    if (a == b) return 1; // never differs from itself: the search would not end
    auto byteA = static_cast<const unsigned char*>(a);
    auto byteB = static_cast<const unsigned char*>(b);
    while (*byteA == *byteB) ++byteA, ++byteB;
    return *byteA < *byteB ? -1 : 1;
}

char* macstrupr(char* s) {
    for (char* c = s; *c; ++c) *c = vm::AsciiUpper(*c);
    return s;
}

char* _tcschr(const char* s, char c) {
    if (!s || c == '\0') return nullptr;
    return const_cast<char*>(std::strchr(s, c));
}

char* CharNext(const char* p) {
    return const_cast<char*>(p ? p + 1 : nullptr);
}

char* itoa(int value, char* buf, int radix) {
    if (radix == 16)
        std::sprintf(buf, "%x", static_cast<unsigned>(value));
    else
        std::sprintf(buf, "%d", value);
    return buf;
}

int MulDiv(int a, int b, int c) {
    const int product = static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
    // The wider quotient only spares the trap of -2147483648 / -1; it wraps like the product.
    return static_cast<int>(static_cast<long long>(product) / c);
}

char* macctime(const std::time_t* t) {
    return std::ctime(t);
}

BOOL ASCIIToUniCode(const char* src, unsigned char* dst, int dstBytes) {
    if (!src) return FALSE;
    const std::optional<QString> text = vm::FromAscii(src);
    if (!text) return FALSE;
    if (dstBytes <= 0) return TRUE;
    const std::size_t room = static_cast<std::size_t>(dstBytes);
    const std::size_t units =
        std::min(room / sizeof(char16_t), static_cast<std::size_t>(text->size()));
    std::memset(dst, 0, room);
    std::memcpy(dst, text->utf16(), units * sizeof(char16_t));
    return TRUE;
}

int UniCodeToASCII(const unsigned short* src, char* dst, int dstSize) {
    WriteEscaped(reinterpret_cast<const char*>(src), dst, dstSize);
    return 0;
}

int WideCharToMultiByte(unsigned int, unsigned int, const char* src, int, char* dst, int dstSize,
                        const char*, signed char*) {
    // Not through UniCodeToASCII's parameter: these bytes need not be aligned.
    WriteEscaped(src, dst, dstSize);
    return 0;
}

char* SafeCFStringCopyToCString(CFStringRef s) {
    if (!s) return nullptr;
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const auto room = static_cast<std::size_t>(encoder.requiredSpace(s->size()));
    char* const buffer = static_cast<char*>(std::malloc(room + 1));
    if (!buffer) return nullptr;
    *encoder.appendToBuffer(buffer, *s) = '\0';
    if (!encoder.hasError()) return buffer;
    std::free(buffer);
    return nullptr;
}
