// Comparing names without regard to the case of ASCII letters, whatever the user's locale.
#pragma once

#include <algorithm>
#include <string>

inline char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string Lower(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return Lower(c); });
    return name;
}
