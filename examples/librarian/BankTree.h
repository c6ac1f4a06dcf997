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
    struct Branch {
        std::string title;
        LPARAM data;
        std::vector<std::string> banks;
        bool operator==(const Branch& other) const {
            return title == other.title && data == other.data && banks == other.banks;
        }
    };

    void Show(std::vector<Branch>& shown, std::vector<Branch> wanted);
    void Fill(const Branch& branch);
    HTREEITEM Add(const std::string& title, HTREEITEM parent, LPARAM data);

    std::vector<Branch> m_instruments;
    std::vector<Branch> m_folder; // one, or none yet
};
