#include "PatchSheet.h"

#include <algorithm>
#include <numeric>

#include "BankFile.h"

namespace {

constexpr int kMargin = 42;
constexpr int kTop = 110; // of the columns
constexpr int kRow = 12;
constexpr int kColumns = 3;
constexpr int kRows = (PatchSheet::kHeight - kTop - kMargin) / kRow;
constexpr int kColumnWidth = (PatchSheet::kWidth - 2 * kMargin) / kColumns;
constexpr std::size_t kLines = std::size_t{kRows} * kColumns;

std::string Numbered(std::size_t number, std::size_t count) {
    const std::size_t digits = std::to_string(count).size();
    const std::string text = std::to_string(number);
    return std::string(digits - text.size(), '0') + text;
}

std::size_t VoicesIn(const Bank& bank) {
    return std::accumulate(
        bank.messages.begin(), bank.messages.end(), std::size_t{0},
        [](std::size_t sum, const BankMessage& message) { return sum + message.voices.size(); });
}

} // namespace

std::vector<std::string> SheetLines(const Bank& bank, std::size_t limit) {
    const std::size_t count = bank.messages.size();
    const std::size_t all = count + VoicesIn(bank);
    const std::size_t shown = all <= limit ? all : limit - 1;
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < count && lines.size() < shown; ++i) {
        const BankMessage& message = bank.messages[i];
        const bool hasName = !message.patch.empty() && message.voices.empty();
        lines.push_back(Numbered(i + 1, count) + "  " +
                        (hasName ? message.patch : message.info.kind));
        for (std::size_t v = 0; v < message.voices.size() && lines.size() < shown; ++v)
            lines.push_back("    " + Numbered(v + 1, message.voices.size()) + "  " +
                            message.voices[v]);
    }
    if (shown < all) lines.push_back("and " + std::to_string(all - shown) + " more");
    return lines;
}

void PatchSheet::MakeTools() {
    m_titleFont.CreateFont(20, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial Bold");
    m_textFont.CreateFont(9, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    m_paper.CreateSolidBrush(RGB(255, 255, 255));
    m_rule.CreateSolidBrush(RGB(120, 130, 145));
}

void PatchSheet::ShowBank(const Bank& bank) {
    m_title = bank.name;
    const std::size_t count = bank.messages.size();
    m_summary = std::to_string(count) + (count == 1 ? " message" : " messages");
    if (const std::size_t voices = VoicesIn(bank))
        m_summary += ", " + std::to_string(voices) + " voices";
    m_lines = SheetLines(bank, kLines);
}

int PatchSheet::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_CREATE:
        MakeTools();
        break;
    case WM_PAINT:
        Paint();
        return 1;
    }
    return CWnd::MessageMap(message, wParam, lParam);
}

void PatchSheet::Paint() {
    CPaintDC dc(this);
    const CRect page(0, 0, kWidth, kHeight);
    dc.FillRect(page, &m_paper);
    dc.SelectObject(&m_titleFont);
    dc.TextOut(kMargin, kMargin, m_title.c_str(), static_cast<int>(m_title.size()));
    dc.SelectObject(&m_textFont);
    dc.TextOut(kMargin, kMargin + 30, m_summary.c_str(), static_cast<int>(m_summary.size()));
    const CRect rule(kMargin, kMargin + 48, kWidth - kMargin, kMargin + 49);
    dc.FillRect(rule, &m_rule);
    PaintLines(dc);
}

// A long name ends at its column.
void PatchSheet::PaintLines(CDC& dc) {
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const int left = kMargin + static_cast<int>(i) / kRows * kColumnWidth;
        const int top = kTop + static_cast<int>(i) % kRows * kRow;
        CRect cell(left, top, left + kColumnWidth - 8, top + kRow);
        dc.GetClip();
        dc.IntersectClipRect(cell);
        dc.TextOut(left, top, m_lines[i].c_str(), static_cast<int>(m_lines[i].size()));
        dc.SetClip();
    }
}
