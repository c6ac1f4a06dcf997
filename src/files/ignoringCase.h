// Comparing and hashing names without regard to the case of ASCII letters, eight bytes at a time:
// look-ups of settings spend most of their time here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vm {

/// Up to eight bytes as a number; equal for equal texts of the same length, and only for them.
inline std::uint64_t LoadBytes(const char* text, std::size_t count) {
    if (count >= 8) {
        std::uint64_t word;
        std::memcpy(&word, text, sizeof word);
        return word;
    }
    if (count >= 4) {
        std::uint32_t first;
        std::uint32_t last;
        std::memcpy(&first, text, sizeof first);
        std::memcpy(&last, text + count - sizeof last, sizeof last);
        return first | std::uint64_t{last} << 32;
    }
    if (count == 0) return 0;
    const auto byte = [text](std::size_t at) {
        return std::uint64_t{static_cast<unsigned char>(text[at])};
    };
    return byte(0) | byte(count / 2) << 8 | byte(count - 1) << 16;
}

/// The eight bytes with ASCII letters in upper case.
constexpr std::uint64_t UpperCaseBytes(std::uint64_t bytes) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::uint64_t low = bytes & 0x7F * kEach;
    const std::uint64_t fromA = low + (0x80 - 'a') * kEach; // the top bit says: 'a' or above
    const std::uint64_t beyondZ = low + (0x7F - 'z') * kEach;
    const std::uint64_t isLower = (fromA ^ beyondZ) & ~bytes & 0x80 * kEach;
    return bytes ^ isLower >> 2;
}

/// ASCII letters of either case are equal.
inline bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    const char* left = a.data();
    const char* right = b.data();
    for (std::size_t count = a.size();; count -= 8, left += 8, right += 8) {
        const std::uint64_t x = LoadBytes(left, count);
        const std::uint64_t y = LoadBytes(right, count);
        if (x != y && UpperCaseBytes(x) != UpperCaseBytes(y)) return false;
        if (count <= 8) return true;
    }
}

/// Equal for texts that EqualIgnoringCase calls equal.
inline std::uint64_t HashIgnoringCase(std::string_view text) {
    constexpr std::uint64_t kLowerCase = 0x2020202020202020;
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    std::uint64_t hash = text.size() * kFactor;
    const char* at = text.data();
    for (std::size_t count = text.size();; count -= 8, at += 8) {
        hash = (hash ^ (LoadBytes(at, count) | kLowerCase)) * kFactor;
        hash ^= hash >> 32;
        if (count <= 8) return hash ^ hash >> 17;
    }
}

} // namespace vm
