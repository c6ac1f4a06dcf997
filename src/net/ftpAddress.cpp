// The texts of addresses.
#include "net/ftpAddress.h"

#include <algorithm>

#include <QtCore/QByteArray>

namespace vm {

std::string RemotePath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    if (!path.empty()) path += '/';
    return path.append(name);
}

std::string FtpUrl(std::string_view server, std::string_view path) {
    return std::string("ftp://").append(server).append("/").append(path);
}

std::string EscapedPath(std::string_view path) {
    return QByteArray::fromRawData(path.data(), static_cast<qsizetype>(path.size()))
        .toPercentEncoding("/")
        .toStdString();
}

bool HasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](unsigned char c) { return c < 0x20 || c == 0x7F; });
}

bool NamesFile(std::string_view path) {
    return !path.empty() && !path.ends_with('/');
}

std::string Unescaped(std::string_view text) {
    return QByteArray::fromPercentEncoding(
               QByteArray(text.data(), static_cast<qsizetype>(text.size())))
        .toStdString();
}

std::string_view LoginPart(std::string_view server) {
    const std::size_t at = server.rfind('@');
    return at == std::string_view::npos ? std::string_view() : server.substr(0, at);
}

std::string_view PasswordInServer(std::string_view server) {
    const std::string_view login = LoginPart(server);
    const std::size_t colon = login.find(':');
    return colon == std::string_view::npos ? std::string_view() : login.substr(colon + 1);
}

} // namespace vm
