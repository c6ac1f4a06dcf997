// Bytes of a script as UTF-8: byte-order marks, code pages by their Windows numbers, and the guess for
// files that say nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vm::rc {

constexpr int kDefaultCodePage = 1252;
constexpr int kUtf8 = 65001;
constexpr int kUtf16 = 1200; ///< little endian
constexpr int kUtf16BigEndian = 1201;

/// What cannot be read becomes U+FFFD.
struct Decoded {
    std::string text;
    std::vector<unsigned char> lacking; ///< the bytes for which the code page has no character
};

/// Whether the system can read the code page.
bool IsCodePage(int codePage);

/// `codePage` is one that IsCodePage knows.
Decoded ToUtf8(std::string_view bytes, int codePage);

struct ByteOrderMark {
    int codePage;
    std::size_t length;
};
std::optional<ByteOrderMark> MarkOf(std::string_view bytes);

/// Valid UTF-8 with at least one character beyond ASCII: hardly ever anything else.
bool LooksLikeUtf8(std::string_view bytes);

void AppendUtf8(std::string& text, char32_t character);

} // namespace vm::rc
