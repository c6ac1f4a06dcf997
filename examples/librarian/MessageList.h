// The list of a bank's messages. It keeps no texts: the list control asks for each cell it shows.
#pragma once

#include <cstddef>
#include <string>

#include <afxcmn.h>

struct Bank;

class MessageList : public CListCtrl {
public:
    /// Makes the columns. Call it once, after Create.
    void AddColumns();
    /// Lists the messages of `bank`, which must outlive what is shown, in the order that the user has
    /// sorted the list by.
    void ShowBank(const Bank& bank);

    int RowOf(int index) const; ///< of a message; -1 for none
    /// Whether a cell of the message's row holds the text, in upper or lower case.
    bool Matches(std::size_t index, const std::string& part) const;

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void FillCell(LV_DISPTEXT& cell);
    std::string CellText(std::size_t index, int column) const;

    const Bank* m_bank = nullptr;
    std::size_t m_numberDigits = 1;
    std::size_t m_lengthDigits = 1;
};
