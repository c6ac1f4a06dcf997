// The selected message at a glance: what it is, and the shape of its data.
#pragma once

#include <string>

#include <afxwin.h>

#include "SysexInfo.h"

struct BankMessage;

class DetailPane : public CWnd {
public:
    DetailPane();

    void ShowMessage(const BankMessage& message);
    void Clear();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    void PaintWords(CDC& dc, const CRect& client);
    void PaintBadge(CDC& dc, const CRect& client);
    void PaintShape(CDC& dc, const CRect& area);

    CFont m_titleFont, m_textFont;
    CBrush m_background, m_rule, m_bar, m_right, m_wrong, m_none;
    bool m_isShown = false;
    std::string m_title, m_kind, m_maker;
    ChecksumState m_checksum = ChecksumState::None;
    SysexBytes m_bytes;
};
