#include "BankTree.h"

#include "BankFolder.h"

namespace {

// What an item's data says: nothing, or a kind and an index.
enum Kind : LPARAM { kNothing = 0, kInstrument = 1, kBank = 2 };
constexpr int kKindShift = 24;

LPARAM DataFor(Kind kind, std::size_t index) {
    return kind << kKindShift | static_cast<LPARAM>(index);
}

} // namespace

HTREEITEM BankTree::Add(const std::string& title, HTREEITEM parent, LPARAM data) {
    return InsertItem(TVIF_TEXT | TVIF_PARAM, title.c_str(), 0, 0, 0, 0, data, parent, TVI_LAST);
}

void BankTree::ShowInstruments(const std::vector<Instrument>& instruments) {
    std::vector<Branch> wanted;
    for (std::size_t i = 0; i < instruments.size(); ++i) {
        wanted.push_back({instruments[i].name, DataFor(kInstrument, i), {}});
        if (!instruments[i].lastBank.empty())
            wanted.back().banks.push_back(NameOf(instruments[i].lastBank));
    }
    Show(m_instruments, std::move(wanted));
}

void BankTree::ShowBanks(const std::string& folder, const std::vector<std::string>& names) {
    if (!folder.empty()) Show(m_folder, {{"Folder " + NameOf(folder), kNothing, names}});
}

// What has not changed stays, with its selection.
void BankTree::Show(std::vector<Branch>& shown, std::vector<Branch> wanted) {
    if (shown == wanted) return;
    shown = std::move(wanted);
    while (HTREEITEM item = GetRootItem()) DeleteItem(item);
    for (const Branch& branch : m_instruments) Fill(branch);
    for (const Branch& branch : m_folder) Fill(branch);
}

void BankTree::Fill(const Branch& branch) {
    const HTREEITEM item = Add(branch.title, TVI_ROOT, branch.data);
    for (std::size_t i = 0; i < branch.banks.size(); ++i)
        Add(branch.banks[i], item, branch.data == kNothing ? DataFor(kBank, i) : branch.data);
    Expand(item, TVE_EXPAND);
}

// The handlers may fill the tree anew.
int BankTree::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_NOTIFY))
        return CTreeCtrl::MessageMap(message, wParam, lParam);
    const auto& notice = *reinterpret_cast<const NMTREEVIEW*>(lParam);
    if (notice.hdr.code != TVN_SELCHANGED || !notice.itemNew.hItem) return 1;
    const auto data = static_cast<LPARAM>(GetItemData(notice.itemNew.hItem));
    const int index = static_cast<int>(data & ((LPARAM{1} << kKindShift) - 1));
    if (data >> kKindShift == kInstrument && instrumentChosen) instrumentChosen(index);
    if (data >> kKindShift == kBank && bankChosen) bankChosen(index);
    return 1;
}
