#include "HeaderBand.h"

#include <numeric>

#include "BankFile.h"
#include "FontScale.h"

namespace {

constexpr COLORREF kBackground = RGB(236, 240, 246);
constexpr COLORREF kRule = RGB(184, 194, 208);
constexpr COLORREF kTitle = RGB(20, 34, 58);
constexpr COLORREF kText = RGB(70, 82, 100);
constexpr COLORREF kWarning = RGB(192, 24, 24);
constexpr int kMargin = 12;

std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

std::size_t TotalBytes(const Bank& bank) {
    return std::accumulate(
        bank.messages.begin(), bank.messages.end(), std::size_t{0},
        [](std::size_t sum, const BankMessage& message) { return sum + message.bytes.size(); });
}

std::string WarningFor(const Bank& bank) {
    const std::size_t bad = bank.BadChecksums();
    return bad ? Counted(bad, " bad checksum", " bad checksums") : "";
}

} // namespace

HeaderBand::HeaderBand() : m_title("No bank"), m_summary("Drop .syx files here") {
    m_background.CreateSolidBrush(kBackground);
    m_rule.CreateSolidBrush(kRule);
    SetAccessibleRole(ACCESSIBLE_LABEL);
}

void HeaderBand::ShowBank(const Bank& bank) {
    m_title = bank.name;
    m_summary = Counted(bank.messages.size(), " message, ", " messages, ") +
                Counted(TotalBytes(bank), " byte", " bytes");
    if (bank.junkBytes)
        m_summary += ", " + Counted(bank.junkBytes, " byte", " bytes") + " between messages";
    m_warning = WarningFor(bank);
    SetWindowText((m_title + ", " + m_summary).c_str()); // which a screen reader says
    Invalidate();
}

void HeaderBand::SetConnection(const std::string& connection) {
    m_connection = connection;
    Invalidate();
}

void HeaderBand::Paint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillRect(client, &m_background);
    CRect rule(0, client.bottom - 1, client.right, client.bottom);
    dc.FillRect(rule, &m_rule);

    SelectScaledFont(dc, m_titleFont, 18, "Arial Bold");
    dc.SetTextColor(kTitle);
    dc.TextOut(kMargin, Scaled(10), m_title.c_str(), static_cast<int>(m_title.size()));

    // Alignment 32 goes on where the last text ended.
    SelectScaledFont(dc, m_textFont, 12, "Arial");
    dc.SetTextAlign(TA_UPDATECP | TA_TOP);
    dc.MoveTo(kMargin, Scaled(38));
    dc.SetTextColor(kText);
    dc.TextOut(0, 0, m_summary.c_str(), static_cast<int>(m_summary.size()));
    if (!m_warning.empty()) {
        const std::string warning = ", " + m_warning;
        dc.SetTextColor(kWarning);
        dc.TextOut(0, 0, warning.c_str(), static_cast<int>(warning.size()));
    }

    dc.SetTextAlign(TA_RIGHT | TA_TOP);
    dc.SetTextColor(kText);
    dc.TextOut(client.right - kMargin, Scaled(14), m_connection.c_str(),
               static_cast<int>(m_connection.size()));
}
