#include "DetailPane.h"

#include <algorithm>

#include "BankFile.h"
#include "FontScale.h"
#include "MessageShape.h"

namespace {

constexpr COLORREF kTitle = RGB(20, 34, 58);
constexpr COLORREF kText = RGB(70, 82, 100);
constexpr COLORREF kHint = RGB(130, 138, 150);
constexpr int kMargin = 12;
constexpr int kLine = 18;
constexpr int kShapeTop = 106;

void Write(CDC& dc, int x, int y, const std::string& words) {
    dc.TextOut(x, y, words.c_str(), static_cast<int>(words.size()));
}

const char* BadgeText(ChecksumState state) {
    switch (state) {
    case ChecksumState::Right:
        return "Checksum OK";
    case ChecksumState::Wrong:
        return "Checksum bad";
    default:
        return "No checksum";
    }
}

} // namespace

DetailPane::DetailPane() {
    m_background.CreateSolidBrush(RGB(246, 248, 251));
    m_rule.CreateSolidBrush(RGB(184, 194, 208));
    m_bar.CreateSolidBrush(RGB(36, 108, 190));
    m_right.CreateSolidBrush(RGB(34, 139, 90));
    m_wrong.CreateSolidBrush(RGB(192, 24, 24));
    m_none.CreateSolidBrush(RGB(170, 178, 190));
    SetAccessibleName("The message at a glance");
    SetAccessibleRole(ACCESSIBLE_PICTURE);
}

void DetailPane::ShowMessage(const BankMessage& message) {
    m_isShown = true;
    m_title = message.patch.empty() ? message.info.kind : message.patch;
    m_kind = message.patch.empty() ? InstrumentOf(message.bytes) : message.info.kind;
    m_maker = message.info.manufacturer + ", " + CountOfBytes(message.bytes.size());
    m_checksum = message.info.checksum;
    m_bytes = message.bytes;
    Invalidate();
}

void DetailPane::Clear() {
    m_isShown = false;
    m_bytes.clear();
    Invalidate();
}

void DetailPane::Paint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillRect(client, &m_background);
    const CRect edge(0, 0, 1, client.bottom);
    dc.FillRect(edge, &m_rule);
    PaintWords(dc);
    if (!m_isShown) return;
    PaintBadge(dc);
    PaintShape(dc,
               CRect(kMargin, Scaled(kShapeTop), client.right - kMargin, client.bottom - kMargin));
}

void DetailPane::PaintWords(CDC& dc) {
    SelectScaledFont(dc, m_textFont, 12, "Arial");
    if (!m_isShown) {
        dc.SetTextColor(kHint);
        Write(dc, kMargin, kMargin, "Select a message to see what it is");
        return;
    }
    dc.SetTextColor(kText);
    Write(dc, kMargin, kMargin + Scaled(kLine + 6), m_kind);
    Write(dc, kMargin, kMargin + Scaled(2 * kLine + 6), m_maker);
    SelectScaledFont(dc, m_titleFont, 16, "Arial Bold");
    dc.SetTextColor(kTitle);
    Write(dc, kMargin, kMargin - 2, m_title);
}

void DetailPane::PaintBadge(CDC& dc) {
    const bool isKnown = m_checksum != ChecksumState::None;
    CBrush& brush = !isKnown ? m_none : m_checksum == ChecksumState::Right ? m_right : m_wrong;
    const int y = kMargin + Scaled(3 * kLine + 8);
    const CRect dot(kMargin, y + Scaled(3), kMargin + Scaled(8), y + Scaled(11));
    dc.FillRect(dot, &brush);
    SelectScaledFont(dc, m_textFont, 12, "Arial");
    dc.SetTextColor(kText);
    Write(dc, kMargin + Scaled(14), y, BadgeText(m_checksum));
}

// A bar for each byte, or for several where there are more than columns.
void DetailPane::PaintShape(CDC& dc, const CRect& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width < 8 || height < 16) return;
    const SysexBytes shape = ShapeOf(m_bytes, static_cast<std::size_t>(width / 2));
    const int count = static_cast<int>(shape.size());
    for (int i = 0; i < count; ++i) {
        const int left = area.left + i * width / count;
        const int right = area.left + (i + 1) * width / count;
        const int bar =
            std::max(1, std::min<int>(shape[static_cast<std::size_t>(i)], 127) * height / 127);
        const CRect column(left, area.bottom - bar, std::max(left + 1, right - 1), area.bottom);
        dc.FillRect(column, &m_bar);
    }
    const CRect base(area.left, area.bottom, area.right, area.bottom + 1);
    dc.FillRect(base, &m_rule);
}
