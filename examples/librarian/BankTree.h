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
    /// Called with an index into what was last shown, when the user chooses it.
    std::function<void(int)> instrumentChosen;
    std::function<void(int)> bankChosen;

    void ShowInstruments(const std::vector<Instrument>& instruments);
    void ShowBanks(const std::string& folder, const std::vector<std::string>& names);

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    HTREEITEM Add(const std::string& text, HTREEITEM parent, LPARAM data);
    void RemoveChildren(HTREEITEM parent);

    std::vector<HTREEITEM> m_instruments;
    HTREEITEM m_folder = nullptr;
};
