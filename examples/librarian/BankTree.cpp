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

HTREEITEM BankTree::Add(const std::string& text, HTREEITEM parent, LPARAM data) {
    return InsertItem(TVIF_TEXT | TVIF_PARAM, text.c_str(), 0, 0, 0, 0, data, parent, TVI_LAST);
}

void BankTree::RemoveChildren(HTREEITEM parent) {
    while (HTREEITEM child = GetChildItem(parent)) DeleteItem(child);
}

void BankTree::ShowInstruments(const std::vector<Instrument>& instruments) {
    for (HTREEITEM item : m_instruments) DeleteItem(item);
    m_instruments.clear();
    for (std::size_t i = 0; i < instruments.size(); ++i) {
        const LPARAM data = DataFor(kInstrument, i);
        const HTREEITEM item = Add(instruments[i].name, TVI_ROOT, data);
        if (!instruments[i].lastBank.empty()) Add(NameOf(instruments[i].lastBank), item, data);
        Expand(item, TVE_EXPAND);
        m_instruments.push_back(item);
    }
}

void BankTree::ShowBanks(const std::string& folder, const std::vector<std::string>& names) {
    if (!m_folder) m_folder = Add("", TVI_ROOT, kNothing);
    SetItemText(m_folder, folder.empty() ? "No folder yet" : ("Folder " + NameOf(folder)).c_str());
    RemoveChildren(m_folder);
    for (std::size_t i = 0; i < names.size(); ++i) Add(names[i], m_folder, DataFor(kBank, i));
    Expand(m_folder, TVE_EXPAND);
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
