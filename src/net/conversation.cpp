// Passwords are looked for in what the server says too: some repeat what they were sent.
#include "net/conversation.h"

#include <QtCore/QLoggingCategory>

#include "core/log.h"

namespace vm {
namespace {

constexpr std::size_t kLongestLine = 500;
constexpr std::string_view kHidden = "****";
constexpr std::string_view kFarewell = "221"; // comes after the refusal that ended the work

bool IsLogged() {
    // Leaked, as the other categories are: lines are written until the last destructor.
    static const QLoggingCategory* const s_category =
        new QLoggingCategory("vmcore.net.ftp", QtWarningMsg);
    return s_category->isInfoEnabled();
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

bool IsRefusal(std::string_view reply) {
    return !reply.empty() && (reply.front() == '4' || reply.front() == '5');
}

const char* Mark(Conversation::Speaker speaker) {
    switch (speaker) {
    case Conversation::Speaker::Client:
        return "> ";
    case Conversation::Speaker::Server:
        return "< ";
    case Conversation::Speaker::Library:
        break;
    }
    return "* ";
}

} // namespace

std::string PublicLine(std::string_view line, const std::vector<std::string>& secrets) {
    if (line.starts_with("PASS ")) return std::string("PASS ").append(kHidden);
    std::string text(line.substr(0, line.find_first_of("\r\n")));
    for (const std::string& secret : secrets) ReplaceAll(text, secret, kHidden);
    text.resize(std::min(text.size(), kLongestLine));
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return text;
}

Conversation::Conversation(std::vector<std::string> secrets) : m_secrets(std::move(secrets)) {
    std::erase(m_secrets, std::string());
}

void Conversation::Hear(Speaker speaker, std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1);
        HearLine(speaker, text.substr(0, end + 1));
        text.remove_prefix(end + 1);
    }
}

void Conversation::HearLine(Speaker speaker, std::string_view line) {
    if (speaker == Speaker::Server && !line.starts_with(kFarewell))
        m_refusal = IsRefusal(line) ? PublicLine(line, m_secrets) : std::string();
    if (!IsLogged()) return;
    LogText(LogModule::Net, "FTP " + (Mark(speaker) + PublicLine(line, m_secrets)));
}

} // namespace vm
