// Writing outputs and the rules of builds.
#include "rc/outputs.h"

#include <filesystem>

#include "command.h"
#include "iniFile.h"

namespace fs = std::filesystem;

namespace vm::rc {
namespace {

bool HasBytes(const std::string& path, const std::string& bytes) {
    std::error_code error;
    if (fs::file_size(path, error) != bytes.size() || error) return false;
    try {
        return tool::ReadBytes(path) == bytes;
    } catch (const tool::Exit&) {
        return false;
    }
}

// What cannot be written is the answer no here: the script was well.
void Put(const std::string& path, const std::string& bytes) {
    if (HasBytes(path, bytes)) return;
    try {
        tool::ReplaceBytes(path, bytes);
    } catch (const tool::Exit& exit) {
        throw tool::Exit{tool::kNo, exit.message};
    }
}

std::string Escaped(const std::string& path) {
    std::string text;
    for (const char c : path) {
        if (c == ' ' || c == '#' || c == '\\') text += '\\';
        if (c == '$') text += '$';
        text += c;
    }
    return text;
}

} // namespace

void PutFiles(const std::string& folder, const std::vector<OutputFile>& files) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw tool::Exit{tool::kNo, "cannot make the folder " + folder + ": " + error.message()};
    for (const OutputFile& file : files) Put(fs::path(folder) / file.name, file.bytes);
}

std::vector<std::string> FilesNamed(const std::vector<Resource>& resources) {
    std::vector<std::string> paths;
    for (const Resource& resource : resources) {
        std::error_code error;
        const auto* const picture = std::get_if<Picture>(&resource);
        if (picture && picture->isThere && fs::is_regular_file(picture->path, error))
            paths.push_back(picture->path);
    }
    return paths;
}

std::string DependencyRule(const std::vector<std::string>& outputs,
                           const std::vector<std::string>& inputs) {
    std::string rule;
    for (const std::string& output : outputs) rule += Escaped(output) + " ";
    if (outputs.empty()) return {};
    rule.back() = ':';
    for (const std::string& input : inputs) rule += " \\\n " + Escaped(input);
    rule += "\n";
    for (const std::string& input : inputs) rule += "\n" + Escaped(input) + ":\n";
    return rule;
}

} // namespace vm::rc
