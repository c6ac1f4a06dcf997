// The patterns of folder searches, over any bytes: the input is the pattern, and a name as well.
#include "files/pathTranslation.h"

#include <algorithm>
#include <string>

#include "target.h"

using fuzz::Require;

namespace {

void CheckPattern(std::string_view pattern) {
    const vm::FindPattern result = vm::ParseFindPattern(pattern);
    const std::string_view last = pattern.substr(pattern.rfind('/') + 1);
    Require(result.directory.size() <= std::max<std::size_t>(pattern.size(), 1),
            "the folder is not longer than the pattern");
    Require(result.extension.size() <= 7, "an extension has at most seven characters");
    Require(result.filtered || result.extension.empty(), "without a filter, no extension");
    if (last.find('*') == std::string_view::npos) {
        Require(result == vm::FindPattern{std::string(pattern)}, "without a star, all is a folder");
        return;
    }
    const std::string_view above = pattern.substr(0, pattern.size() - last.size());
    if (above.empty())
        Require(result.directory == ".", "a pattern alone searches the working directory");
    else
        Require(result.directory == (above == "/" ? "/" : above.substr(0, above.size() - 1)),
                "the folder is what stands before the last slash");
    Require(result.filtered == (last != "*" && last != "*.*"), "everything has two patterns");
    Require(!result.filtered || result.extension == last.substr(2, 7),
            "the extension begins after two characters");
}

void CheckName(std::string_view name) {
    const std::string_view extension = vm::ExtensionOf(name);
    Require(extension.find('.') == std::string_view::npos, "an extension has no dot");
    if (extension.empty()) {
        const std::size_t dot = name.rfind('.');
        Require(dot == std::string_view::npos || dot == 0 || dot + 1 == name.size(),
                "a name without extension has no dot inside");
        return;
    }
    Require(name.ends_with("." + std::string(extension)), "an extension follows the last dot");
    Require(name.size() > extension.size() + 1, "something stands before the dot");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CheckPattern(fuzz::Text(data, size));
    CheckName(fuzz::Text(data, size));
    return 0;
}
