// The rules of file names, over any bytes: the input is the name.
#include "files/pathTranslation.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/ascii.h"
#include "target.h"

using fuzz::Require;

namespace {

constexpr std::string_view kSeparators = "/\\:";
constexpr std::string_view kRoot = "/media/user";

bool IsSeparator(char c) {
    return kSeparators.find(c) != std::string_view::npos;
}

// The components, each behind a slash.
std::string Joined(std::string_view name) {
    std::string path;
    bool inside = false;
    for (const char c : name) {
        if (!IsSeparator(c) && !inside) path += '/';
        inside = !IsSeparator(c);
        if (inside) path += c;
    }
    return path;
}

std::string AllSeparators(std::string_view name, char separator) {
    std::string path(name);
    std::replace_if(path.begin(), path.end(), IsSeparator, separator);
    return path;
}

bool EndsWithBitmap(std::string_view path) {
    if (path.size() < 5) return false;
    std::string ending(path.substr(path.size() - 4));
    for (char& c : ending) c = vm::AsciiLower(c);
    return ending == ".bmp";
}

std::string Redirected(std::string path) {
    if (EndsWithBitmap(path)) path.replace(path.size() - 4, 4, ".png");
    return path;
}

// The whole of the rules once more, said in another way.
vm::TranslatedPath Expected(std::string_view name) {
    const bool volume = !name.starts_with('/') && name.find(':') != std::string_view::npos;
    if (!volume) return {Redirected(AllSeparators(name, '/'))};
    const std::string components = Joined(name);
    const std::string path = std::string(kRoot) + components;
    if (components.empty()) return {AllSeparators(name, ':')};
    if (path.size() > 255) return {Redirected(AllSeparators(name, ':')), true};
    return {Redirected(path)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view name = fuzz::Text(data, size);
    const vm::TranslatedPath result = vm::TranslatePath(name, false, kRoot);
    const std::string_view path = result.path;

    Require(path.size() <= std::max<std::size_t>(name.size(), 255),
            "it fits in the caller's buffer");
    Require(path.find('\\') == std::string_view::npos, "no backslash is left");
    Require(path.find(':') == std::string_view::npos || result.failed ||
                path.find_first_not_of(':') == std::string_view::npos,
            "a colon is left only in what failed and in what names nothing");
    Require(!EndsWithBitmap(path), "bitmaps are redirected");
    Require(result == Expected(name), "nothing else changes");
    Require(result == vm::TranslatePath(path, false, kRoot), "a translated name stays as it is");
    Require(result == vm::TranslatePath(name, true, kRoot), "folders are named like files");
    Require(vm::IsBareName(name) == std::none_of(name.begin(), name.end(), IsSeparator),
            "a bare name has no separator");
    return 0;
}
