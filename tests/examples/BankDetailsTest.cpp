#include "librarian/BankDetails.h"

#include "SettingsHome.h"

class BankDetailsKept : public SettingsHome {};

TEST_F(BankDetailsKept, EachBankHasItsOwn) {
    StoreBankDetails("a.syx", {"Anna", "Pads, and two basses"});
    StoreBankDetails("b.syx", {"Bo", ""});
    Reload();
    EXPECT_EQ(LoadBankDetails("a.syx").comment, "Pads, and two basses");
    EXPECT_EQ(LoadBankDetails("b.syx").author, "Bo");
    EXPECT_EQ(LoadBankDetails("b.syx").comment, "");
    StoreBankDetails("a.syx", {});
    Reload();
    EXPECT_EQ(LoadBankDetails("a.syx").author, "");
}

TEST_F(BankDetailsKept, TextsThatWouldComeBackOtherwiseAreRefused) {
    EXPECT_EQ(WhyNotKept({}), nullptr);
    EXPECT_EQ(WhyNotKept({"Anna", "Pads"}), nullptr);
    EXPECT_NE(WhyNotKept({"", "one; two"}), nullptr);
    EXPECT_NE(WhyNotKept({"Anna ", ""}), nullptr);
    EXPECT_NE(WhyNotKept({"", std::string(201, 'x')}), nullptr);
}
