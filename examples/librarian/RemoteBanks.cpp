#include "RemoteBanks.h"

#include <algorithm>
#include <cctype>

#include <windows.h>

#include "BankFolder.h"
#include "Lower.h"

namespace {

constexpr std::size_t kRoomForSuffix = 24; // of the name while the file arrives

bool IsPrintable(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
}

bool IsServerCharacter(char c) {
    return c > ' ' && c < 0x7F && std::string("/\\@?#").find(c) == std::string::npos;
}

bool IsBefore(const std::string& a, const std::string& b) {
    const int order = macstricmp(a.c_str(), b.c_str());
    return order != 0 ? order < 0 : a < b;
}

std::string Escaped(const std::string& text) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte))
            escaped += c;
        else
            escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return escaped;
}

} // namespace

RemoteBanks BanksAmong(const std::vector<std::string>& listed, const std::string& pattern,
                       const std::string& folder) {
    RemoteBanks banks;
    for (const std::string& name : listed) {
        if (!FitsPattern(name, pattern)) continue;
        if (IsUsableName(name, folder))
            banks.names.push_back(name);
        else
            ++banks.leftOut;
    }
    std::sort(banks.names.begin(), banks.names.end(), IsBefore);
    banks.names.erase(std::unique(banks.names.begin(), banks.names.end()), banks.names.end());
    return banks;
}

// At a difference the last '*' takes one character more.
bool FitsPattern(const std::string& name, const std::string& pattern) {
    if (pattern.empty()) return true;
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string::npos;
    std::size_t taken = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            taken = at;
        } else if (in < pattern.size() &&
                   (pattern[in] == '?' || Lower(pattern[in]) == Lower(name[at]))) {
            ++in;
            ++at;
        } else if (star != std::string::npos) {
            in = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string::npos;
}

// The file functions take '\' and ':' for '/', and find no names beyond ASCII.
bool IsUsableName(const std::string& name, const std::string& folder) {
    return !name.empty() && name.front() != '.' && IsPrintable(name) &&
           name.find_first_of("/\\:") == std::string::npos &&
           folder.size() + 1 + name.size() + kRoomForSuffix < MAX_PATH;
}

std::string WhyNoServer(const std::string& server, const std::string& folder,
                        const std::string& user, const std::string& password) {
    const bool isName = std::all_of(server.begin(), server.end(), IsServerCharacter);
    if (server.empty() || !isName)
        return "A server is written like ftp.example.org or ftp.example.org:2121";
    if (!IsPrintable(folder + user + password))
        return "Folder, user and password can only have the characters of ASCII";
    if (user.empty() && !password.empty()) return "There is a password, but no user";
    return {};
}

std::string WithLogin(const std::string& server, const std::string& user,
                      const std::string& password) {
    if (user.empty()) return server;
    return Escaped(user) + ":" + Escaped(password) + "@" + server;
}

bool IsSameFile(const std::string& listed, const std::string& name) {
    return macstricmp(NameOf(listed).c_str(), name.c_str()) == 0;
}

// The replies' code says that it was about a file or folder; only the words before it tell which.
bool SaysNoFolder(const std::string& error) {
    return SaysNotListed(error) && error.rfind("Access denied to remote resource", 0) == 0;
}

bool SaysNotListed(const std::string& error) {
    return error.find("(550") != std::string::npos;
}
