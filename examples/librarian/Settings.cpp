#include "Settings.h"

#include <algorithm>

namespace {

constexpr const char* kSection = "Librarian";
constexpr std::size_t kLongestLine = 255;
constexpr int kFarthest = 0x7FFF; // no screen is as large

int LoadNumber(const char* key) {
    return static_cast<int>(::GetProfileInt(kSection, key, 0));
}

void StoreNumber(const char* key, int number) {
    ::WriteProfileString(kSection, key, std::to_string(number).c_str());
}

// Somebody may have edited the file.
bool IsBetween(int low, int number, int high) {
    return low <= number && number <= high;
}

// The start of `length` moved so that it lies between `low` and `high`; at `low` when it is longer.
int Inside(int start, int length, int low, int high) {
    return std::max(low, std::min(start, high - length));
}

} // namespace

bool FitsProfile(const std::string& key, const std::string& value) {
    if (value.empty() || value.back() == ' ') return false;
    const bool isPlain = std::none_of(value.begin(), value.end(), [](char c) {
        return c == ';' || (static_cast<unsigned char>(c) < ' ');
    });
    return isPlain && key.size() + 1 + value.size() <= kLongestLine;
}

std::string LoadSetting(const char* key) {
    char value[MAX_PATH] = {};
    ::GetProfileString(kSection, key, "", value, sizeof value);
    return value;
}

void StoreSetting(const char* key, const std::string& value) {
    ::WriteProfileString(kSection, key, FitsProfile(key, value) ? value.c_str() : nullptr);
}

BOOL LoadPlace(CRect& place) {
    const int left = LoadNumber("Left");
    const int top = LoadNumber("Top");
    const int width = LoadNumber("Width");
    const int height = LoadNumber("Height");
    if (!IsBetween(1, width, kFarthest) || !IsBetween(1, height, kFarthest)) return FALSE;
    if (!IsBetween(-kFarthest, left, kFarthest) || !IsBetween(-kFarthest, top, kFarthest))
        return FALSE;
    place.SetRect(left, top, left + width, top + height);
    return TRUE;
}

void StorePlace(const CRect& place) {
    StoreNumber("Left", place.left);
    StoreNumber("Top", place.top);
    StoreNumber("Width", place.Width());
    StoreNumber("Height", place.Height());
}

CRect FitOnScreen(const CRect& place, const CRect& screen) {
    const int width = std::min(std::max(place.Width(), kSmallestWidth), screen.Width());
    const int height = std::min(std::max(place.Height(), kSmallestHeight), screen.Height());
    const int left = Inside(place.left, width, screen.left, screen.right);
    const int top = Inside(place.top, height, screen.top, screen.bottom);
    return {left, top, left + width, top + height};
}
