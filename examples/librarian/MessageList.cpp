#include "MessageList.h"

#include <algorithm>
#include <cstdio>

#include "BankFile.h"
#include "FontScale.h"
#include "Lower.h"

namespace {

enum Column { kNumber, kManufacturer, kKind, kPatch, kLength, kChecksum };

constexpr struct {
    const char* heading;
    int width;
} kColumns[] = {
    {"No", 45},     {"Manufacturer", 115}, {"Kind", 205},
    {"Patch", 215}, {"Length", 75},        {"Checksum", 85},
};

std::size_t DigitsOf(std::size_t number) {
    return std::to_string(number).size();
}

std::string Padded(std::size_t number, std::size_t digits, char fill) {
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), fill) + text;
}

} // namespace

void MessageList::AddColumns() {
    int index = 0;
    for (const auto& column : kColumns)
        InsertColumn(index++, column.heading, 0, Scaled(column.width), 0);
}

void MessageList::ShowBank(const Bank& bank) {
    m_bank = &bank;
    m_numberDigits = DigitsOf(bank.messages.size());
    m_lengthDigits = 1;
    for (const BankMessage& message : bank.messages)
        m_lengthDigits = std::max(m_lengthDigits, DigitsOf(message.bytes.size()));
    SetItemState(-1, 0, LVIS_SELECTED); // a reload keeps the selected rows
    SetRedraw(FALSE);
    DeleteAllItems();
    const auto count = static_cast<int>(bank.messages.size());
    for (int index = 0; index < count; ++index)
        InsertItem(LVIF_PARAM | LVIF_TEXT, index, "", 0, 0, 0, index);
    SetRedraw(TRUE);
    SortAgain();
}

int MessageList::RowOf(int index) const {
    const int count = GetItemCount();
    for (int row = 0; row < count; ++row)
        if (GetItemData(row) == static_cast<std::uintptr_t>(index)) return row;
    return -1;
}

bool MessageList::Matches(std::size_t index, const std::string& part) const {
    for (const int column : {kManufacturer, kKind, kPatch, kChecksum})
        if (Lower(CellText(index, column)).find(Lower(part)) != std::string::npos) return true;
    return false;
}

int MessageList::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_GETDISPLAYTEXT) return CListCtrl::MessageMap(message, wParam, lParam);
    FillCell(*reinterpret_cast<LV_DISPTEXT*>(lParam));
    return 1;
}

void MessageList::FillCell(LV_DISPTEXT& cell) {
    const auto index = static_cast<std::size_t>(cell.itemData);
    if (!m_bank || index >= m_bank->messages.size()) return;
    std::snprintf(cell.text, sizeof cell.text, "%s", CellText(index, cell.column).c_str());
}

// Numbers are filled up to the width of the largest, because the list sorts by text.
std::string MessageList::CellText(std::size_t index, int column) const {
    const BankMessage& message = m_bank->messages[index];
    switch (column) {
    case kNumber:
        return Padded(index + 1, m_numberDigits, '0');
    case kManufacturer:
        return message.info.manufacturer;
    case kKind:
        return message.info.kind;
    case kPatch:
        return message.patch;
    case kLength:
        return Padded(message.bytes.size(), m_lengthDigits, ' ');
    case kChecksum:
        return ChecksumText(message.info.checksum);
    default:
        return {};
    }
}
