// What client and server say to each other, for the log and for error texts, with the passwords taken
// out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vm {

/// The line with every password command and every occurrence of a secret as "****", control
/// characters as '?', without its line end and cut at 500 characters.
std::string PublicLine(std::string_view line, const std::vector<std::string>& secrets);

class Conversation {
public:
    enum class Speaker { Library, Client, Server };

    /// Empty secrets are none.
    explicit Conversation(std::vector<std::string> secrets);

    /// Logs the lines when the category "vmcore.net.ftp" is on.
    void Hear(Speaker speaker, std::string_view text);

    /// The server's last reply, when it was a refusal ("550 No such file."); else empty.
    const std::string& Refusal() const { return m_refusal; }

private:
    void HearLine(Speaker speaker, std::string_view line);

    std::vector<std::string> m_secrets;
    std::string m_refusal;
};

} // namespace vm
