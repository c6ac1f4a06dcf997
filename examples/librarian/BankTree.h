// The tree at the left: the instruments that are known, each with the bank it was last seen in, and the
// banks of the current folder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <afxcmn.h>

#include "Instruments.h"

class BankTree : public CTreeCtrl {
public:
    /// Called with an index into what was last shown, when the user chooses it. FALSE: it was refused, and
    /// may be chosen again at once.
    std::function<BOOL(int)> instrumentChosen;
    std::function<BOOL(int)> bankChosen;

    void ShowInstruments(const std::vector<Instrument>& instruments);
    void ShowBanks(const std::string& folder, const std::vector<std::string>& names);

    int FontHeight(); ///< of the desktop's font, once the tree has its window

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Branch {
        std::string title;
        LPARAM data;
        std::vector<std::string> banks;
    };

    BOOL Choose(LPARAM data);
    void Deselect();
    void Show();
    HTREEITEM ShowBranch(HTREEITEM item, const Branch& branch);
    void RemoveFrom(HTREEITEM item);
    HTREEITEM Put(HTREEITEM item, const std::string& title, HTREEITEM parent, LPARAM data);

    Branch m_folder;
    std::vector<Branch> m_instruments;
};
