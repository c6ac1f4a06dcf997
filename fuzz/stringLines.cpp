// The lines that hold a program's texts: whatever text becomes lines comes back, and whatever file there
// is can be read.
#include <string>

#include "files/iniFormat.h"
#include "files/stringLines.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::Text(data, size));
    vm::ParseStringTexts(text);
    std::string file = "[Strings]\n";
    for (const std::string& line : vm::StringLines(65535, text)) {
        fuzz::Require(line.size() <= vm::kIniLineLimit, "a line fits");
        file += line + "\r\n";
    }
    const vm::StringTexts texts = vm::ParseStringTexts(file);
    fuzz::Require(texts.size() == 1 && texts.at(65535) == text, "the text comes back");
    return 0;
}
