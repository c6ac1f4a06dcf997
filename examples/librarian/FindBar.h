// The bar above the list that searches it: a dialog embedded in the window.
#pragma once

#include <functional>
#include <string>

#include <afxwin.h>

class FindBar : public CDialog {
public:
    static constexpr int kHeight = 40; ///< to be scaled

    /// `find` gets the text and whether to go on behind the selected message; FALSE: nothing found.
    std::function<BOOL(const std::string& text, bool next)> find;
    std::function<void()> closed;

    BOOL Open(CWnd* parent); ///< hidden
    void Begin();            ///< shows it and takes the focus
    void FindNext();
    void OnOK() override; ///< Return searches on
    void OnCancel() override;

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    void Find(bool next);

    CString m_text;
};
