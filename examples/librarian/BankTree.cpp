#include "BankTree.h"

#include "BankFolder.h"

namespace {

// What an item's data says: nothing, or a kind and an index.
enum Kind : LPARAM { kNothing = 0, kInstrument = 1, kBank = 2 };
constexpr int kKindShift = 24;
constexpr int kRoomInRow = 5;

LPARAM DataFor(Kind kind, std::size_t index) {
    return kind << kKindShift | static_cast<LPARAM>(index);
}

} // namespace

void BankTree::ShowInstruments(const std::vector<Instrument>& instruments) {
    m_instruments.clear();
    for (std::size_t i = 0; i < instruments.size(); ++i) {
        m_instruments.push_back({instruments[i].name, DataFor(kInstrument, i), {}});
        if (!instruments[i].lastBank.empty())
            m_instruments.back().banks.push_back(NameOf(instruments[i].lastBank));
    }
    Show();
}

void BankTree::ShowBanks(const std::string& folder, const std::vector<std::string>& names) {
    m_folder = {folder.empty() ? "No folder yet" : "Folder " + NameOf(folder), kNothing, names};
    Show();
}

// A row is the line of text and a little room.
int BankTree::FontHeight() {
    const HTREEITEM item = InsertItem("M");
    CRect row;
    const bool isPlaced = GetItemRect(item, &row, FALSE);
    DeleteItem(item);
    return isPlaced ? row.bottom - row.top - kRoomInRow : 0;
}

// Items that stay keep their place and selection: this happens while the user walks through them.
void BankTree::Show() {
    HTREEITEM item = ShowBranch(GetRootItem(), m_folder);
    for (const Branch& branch : m_instruments) item = ShowBranch(item, branch);
    RemoveFrom(item);
}

// `item` is what stands in the branch's place, or null; what comes behind it is returned.
HTREEITEM BankTree::ShowBranch(HTREEITEM item, const Branch& branch) {
    const bool isNew = !item;
    item = Put(item, branch.title, TVI_ROOT, branch.data);
    HTREEITEM bank = GetChildItem(item);
    for (std::size_t i = 0; i < branch.banks.size(); ++i) {
        const LPARAM data = branch.data == kNothing ? DataFor(kBank, i) : branch.data;
        bank = GetNextSiblingItem(Put(bank, branch.banks[i], item, data));
    }
    RemoveFrom(bank);
    if (isNew) Expand(item, TVE_EXPAND);
    return GetNextSiblingItem(item);
}

HTREEITEM BankTree::Put(HTREEITEM item, const std::string& title, HTREEITEM parent, LPARAM data) {
    if (!item)
        return InsertItem(TVIF_TEXT | TVIF_PARAM, title.c_str(), 0, 0, 0, 0, data, parent,
                          TVI_LAST);
    if (GetItemText(item) != title.c_str()) SetItemText(item, title.c_str());
    SetItemData(item, static_cast<std::uintptr_t>(data));
    return item;
}

void BankTree::RemoveFrom(HTREEITEM item) {
    while (item) {
        const HTREEITEM next = GetNextSiblingItem(item);
        DeleteItem(item);
        item = next;
    }
}

BOOL BankTree::Choose(LPARAM data) {
    const int index = static_cast<int>(data & ((LPARAM{1} << kKindShift) - 1));
    if (data >> kKindShift == kInstrument && instrumentChosen) return instrumentChosen(index);
    if (data >> kKindShift == kBank && bankChosen) return bankChosen(index);
    return TRUE;
}

// The tree reports the choice of an item that is not selected yet, and an item's deletion is what ends
// its selection. New ones come last: those behind it go, too.
void BankTree::Deselect() {
    const HTREEITEM item = GetSelectedItem();
    if (!item) return;
    RemoveFrom(item);
    Show();
}

// The handlers may fill the tree anew.
int BankTree::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_NOTIFY))
        return CTreeCtrl::MessageMap(message, wParam, lParam);
    const auto& notice = *reinterpret_cast<const NMTREEVIEW*>(lParam);
    if (notice.hdr.code != TVN_SELCHANGED || !notice.itemNew.hItem) return 1;
    const bool isByMouse = GetKeyState(VK_LBUTTON) < 0; // keys go on from what is selected
    const BOOL chosen = Choose(static_cast<LPARAM>(GetItemData(notice.itemNew.hItem)));
    if (!chosen && isByMouse) Deselect();
    return 1;
}
