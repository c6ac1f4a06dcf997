// The modal dialogs. Their controls are in Resources/DLG_<id>.ui, with the IDs as tags.
#pragma once

#include <string>
#include <vector>

#include <afxwin.h>

#include "BankDetails.h"

class AboutDialog : public CDialog {
public:
    explicit AboutDialog(CWnd* parent);
    BOOL OnInitDialog() override;
};

/// Which ports to use. The indices are those of the names that were given.
class PortsDialog : public CDialog {
public:
    PortsDialog(CWnd* parent, std::vector<std::string> outputs, std::vector<std::string> inputs);
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

    int output = -1; ///< -1 for none
    int input = -1;
    int slow = 0;

private:
    void Fill(int id, const std::vector<std::string>& names);

    std::vector<std::string> m_outputs;
    std::vector<std::string> m_inputs;
};

/// What the user notes about a bank. OK only closes it with texts that can be kept.
class DetailsDialog : public CDialog {
public:
    DetailsDialog(CWnd* parent, const std::string& summary, const BankDetails& details);
    void DoDataExchange(CDataExchange* exchange) override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

    BankDetails Details() const;

private:
    void OnClear();
    void ShowWhetherEmpty();

    CString m_summary;
    CString m_author;
    CString m_comment;
};
