// The texts of a bundle, read from its Strings.ini when the first of them is asked for.
#include <vmcore/files/stringTable.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>

#include "app/appState.h"
#include "core/log.h"
#include "core/macroman.h"
#include "files/stringLines.h"
#include "platform/bundle.h"

namespace vm {
namespace {

StringTexts ReadTexts(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return ParseStringTexts(std::string(std::istreambuf_iterator<char>(file), {}));
}

// By the path of the file. Never freed: static objects of hosts may ask when the process ends.
const StringTexts& TextsOf(const std::string& path) {
    static auto* const s_lock = new std::mutex;
    static auto* const s_files = new std::map<std::string, StringTexts>;
    const std::lock_guard guard(*s_lock);
    const auto found = s_files->find(path);
    return found != s_files->end() ? found->second
                                   : s_files->emplace(path, ReadTexts(path)).first->second;
}

// Null, with a log line, when there is none.
const std::string* TextOf(UINT id) {
    const std::string path = ResourceBundle()->ResourcePath() + "/Strings.ini";
    const StringTexts& texts = TextsOf(path);
    const auto found = texts.find(id);
    if (found != texts.end()) return &found->second;
    Log(LogModule::Files, "AfxLoadString: no text %u in %s", id, path.c_str());
    return nullptr;
}

std::string ForWindows(const std::string& text) {
    return ToMacRomanLossy(QString::fromStdString(text));
}

} // namespace
} // namespace vm

BOOL AfxLoadString(UINT id, CString& text) {
    const std::string* const found = vm::TextOf(id);
    text = found ? vm::ForWindows(*found).c_str() : "";
    return found != nullptr;
}

int AfxLoadString(UINT id, LPSTR buffer, int size) {
    if (!buffer || size <= 0) return 0;
    const std::string* const found = vm::TextOf(id);
    const std::string text = found ? vm::ForWindows(*found) : std::string();
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}
