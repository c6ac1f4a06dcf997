// Addresses on FTP servers, on plain strings: how they are put together, escaped and refused.
#pragma once

#include <string>
#include <string_view>

namespace vm {

/// The longest address, credentials or agent name that hosts have room for.
constexpr std::size_t kFtpTextLimit = 255;

/// "Banks/Old/a.syx", or the name alone without a folder.
std::string RemotePath(std::string_view directory, std::string_view name);

/// "ftp://<server>/<path>".
std::string FtpUrl(std::string_view server, std::string_view path);

/// Every byte but '/', letters, digits and "-._~" as %XX.
std::string EscapedPath(std::string_view path);

/// Below 32, and 127: the protocol's lines would be forged with them.
bool HasControlCharacter(std::string_view text);

/// False for a path that ends in a folder, and for an empty one.
bool NamesFile(std::string_view path);

/// With every %XX as the byte that it stands for.
std::string Unescaped(std::string_view text);

/// What stands before the last '@' of a server's name; empty without.
std::string_view LoginPart(std::string_view server);

/// The password that a server's name "user:password@host" holds, as it stands; empty without.
std::string_view PasswordInServer(std::string_view server);

} // namespace vm
