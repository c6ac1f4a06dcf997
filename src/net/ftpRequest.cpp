// The checks. None of them repeats the text that it refuses: it may be a password, or forge a line.
#include "net/ftpRequest.h"

#include "net/ftpAddress.h"

namespace vm {
namespace {

constexpr const char* kTooLong = "the address is longer than 255 characters";

std::string ControlCharacterIn(const char* where) {
    return std::string("control character in the ") + where;
}

bool IsTooLong(const std::string& text) {
    return text.size() > kFtpTextLimit;
}

} // namespace

std::string WhyRefused(const FtpTexts& texts) {
    if (HasControlCharacter(Unescaped(texts.server))) return ControlCharacterIn("server's name");
    if (LoginPart(texts.server).find_first_of("/?#") != std::string_view::npos)
        return "'/', '?' or '#' in the login of the server's name: write it as %XX";
    if (HasControlCharacter(texts.directory)) return ControlCharacterIn("folder");
    if (HasControlCharacter(texts.user)) return ControlCharacterIn("user's name");
    if (HasControlCharacter(texts.password)) return ControlCharacterIn("password");
    if (texts.user.size() + 1 + texts.password.size() > kFtpTextLimit)
        return "user and password are longer than 255 characters";
    if (IsTooLong(FtpUrl(texts.server, texts.directory) + "/")) return kTooLong;
    return {};
}

std::string WhyFileRefused(const FtpTexts& texts, LPCSTR name) {
    if (std::string why = WhyRefused(texts); !why.empty()) return why;
    if (!name || !NamesFile(name)) return "no file is named";
    if (HasControlCharacter(name)) return ControlCharacterIn("file's name");
    if (IsTooLong(FtpUrl(texts.server, RemotePath(texts.directory, name)))) return kTooLong;
    return {};
}

} // namespace vm
