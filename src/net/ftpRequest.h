// What an operation asks of a server, checked before anything is sent.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <vmcore/core/types.h>

namespace vm {

/// The texts of a connection, as its host gave them.
struct FtpTexts {
    std::string_view server;
    std::string_view directory;
    std::string_view user;
    std::string_view password;
};

/// Why the texts cannot be used; empty when they can.
std::string WhyRefused(const FtpTexts& texts);
/// The same for the name of a file in the folder.
std::string WhyFileRefused(const FtpTexts& texts, LPCSTR name);

} // namespace vm
