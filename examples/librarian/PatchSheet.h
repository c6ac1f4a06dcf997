// The list of a bank's patches as a page of paper. The window is never shown: it paints the page that is
// copied, or saved as PDF.
#pragma once

#include <string>
#include <vector>

#include <afxwin.h>

struct Bank;

/// "01  Piano 1", and below a bank of several the names in it, "    01  Piano 1"; at most `limit` of them; the last one says how many are left out.
std::vector<std::string> SheetLines(const Bank& bank, std::size_t limit);

class PatchSheet : public CWnd {
public:
    static constexpr int kWidth = 595, kHeight = 842; // A4 in points

    void ShowBank(const Bank& bank);

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void MakeTools();
    void Paint();
    void PaintLines(CDC& dc);

    CFont m_titleFont, m_textFont;
    CBrush m_paper, m_rule;
    std::string m_title, m_summary;
    std::vector<std::string> m_lines;
};
