// The selected message at a glance: what it is, and the shape of its data.
#pragma once

#include <string>

#include "PaintedPane.h"
#include "SysexInfo.h"

struct BankMessage;

class DetailPane : public PaintedPane {
public:
    DetailPane();

    void ShowMessage(const BankMessage& message);
    void Clear();

private:
    void Paint() override;
    void PaintWords(CDC& dc);
    void PaintBadge(CDC& dc);
    void PaintShape(CDC& dc, const CRect& area);

    CFont m_titleFont, m_textFont;
    CBrush m_background, m_rule, m_bar, m_right, m_wrong, m_none;
    bool m_isShown = false;
    std::string m_title, m_kind, m_maker;
    ChecksumState m_checksum = ChecksumState::None;
    SysexBytes m_bytes;
};
