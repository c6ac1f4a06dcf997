// The band at the top of the window: the bank's name, what is in it, and the MIDI connection.
#pragma once

#include <string>

#include "PaintedPane.h"

struct Bank;

class HeaderBand : public PaintedPane {
public:
    static constexpr int kHeight = 64; ///< to be scaled

    HeaderBand();

    /// Shows a bank (it is not kept). Bad checksums stand out in red.
    void ShowBank(const Bank& bank);
    void SetConnection(const std::string& connection);

private:
    void Paint() override;

    CFont m_titleFont;
    CFont m_textFont;
    CBrush m_background;
    CBrush m_rule;
    std::string m_title;
    std::string m_summary;
    std::string m_warning; // bad checksums; empty when all is well
    std::string m_connection;
};
