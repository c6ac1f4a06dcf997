// What the user notes about a bank, kept by the bank's name in the section [Librarian Banks] of the
// default profile.
#pragma once

#include <string>

struct BankDetails {
    std::string author;
    std::string comment;
};

/// Empty texts when nothing was noted.
BankDetails LoadBankDetails(const std::string& bank);
void StoreBankDetails(const std::string& bank, const BankDetails& details);

/// For the user; null when the profile can keep the texts.
const char* WhyNotKept(const BankDetails& details);
