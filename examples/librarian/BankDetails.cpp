#include "BankDetails.h"

#include <windows.h>

#include "Settings.h"

namespace {

constexpr const char* kSection = "Librarian Banks";
constexpr std::size_t kLongest = 200;

std::string Load(const std::string& key) {
    char value[256] = {};
    GetProfileString(kSection, key.c_str(), "", value, sizeof value);
    return value;
}

void Store(const std::string& key, const std::string& value) {
    WriteProfileString(kSection, key.c_str(),
                       !value.empty() && FitsProfile(key, value) ? value.c_str() : nullptr);
}

} // namespace

BankDetails LoadBankDetails(const std::string& bank) {
    return {Load(bank + " author"), Load(bank + " comment")};
}

void StoreBankDetails(const std::string& bank, const BankDetails& details) {
    Store(bank + " author", details.author);
    Store(bank + " comment", details.comment);
}

const char* WhyNotKept(const BankDetails& details) {
    for (const std::string& text : {details.author, details.comment}) {
        if (text.size() > kLongest) return "A text of at most 200 characters can be kept.";
        if (!FitsProfile("author", text) && !text.empty())
            return "A text with ';', or with blanks at its end, cannot be kept.";
    }
    return nullptr;
}
