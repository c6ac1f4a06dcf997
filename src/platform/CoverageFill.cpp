#include "platform/CoverageFill.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cwchar>
#include <utility>

namespace vm {
namespace {

constexpr int kWordBits = 64;
constexpr double kFarthest = 1 << 20; // pixels from the origin: positions keep their fractions
constexpr double kWidest = 4096;

unsigned ToByte(float coverage) {
    return static_cast<unsigned>(std::min(std::abs(coverage), 1.0f) * 255 + 0.5f);
}

void BlendSpan(QRgb* pixels, int count, QRgb color, unsigned coverage) {
    if (coverage == 0 || count <= 0) return;
    if (count == 1) return BlendPixel(pixels, color, coverage);
    if (coverage == 255 && qAlpha(color) == 255) {
        std::wmemset(reinterpret_cast<wchar_t*>(pixels), static_cast<wchar_t>(color),
                     static_cast<std::size_t>(count));
        return;
    }
    for (int i = 0; i < count; ++i) BlendPixel(pixels + i, color, coverage);
}

} // namespace

bool CoverageFill::Takes(const QRectF& bounds) {
    return bounds.width() <= kWidest && std::abs(bounds.left()) < kFarthest &&
           std::abs(bounds.top()) < kFarthest && std::abs(bounds.bottom()) < kFarthest;
}

void CoverageFill::Fill(const PixelRows& pixels, std::span<const QPointF> polygon,
                        const QRectF& bounds, const QRect& clip, QRgb color) {
    m_pixels = pixels;
    Begin(bounds, clip);
    if (m_rows <= 0 || polygon.empty()) return;
    QPointF last = polygon.back() - m_origin;
    for (const QPointF& point : polygon) {
        const QPointF next = point - m_origin;
        AddEdge(last, next);
        last = next;
    }
    Sweep(clip, color);
}

// Rows only as far as the clip reaches; columns for the whole polygon, because what lies left of the
// clip counts.
void CoverageFill::Begin(const QRectF& bounds, const QRect& clip) {
    const int top = std::max(static_cast<int>(std::floor(bounds.top())), clip.top());
    const int bottom =
        std::min(static_cast<int>(std::ceil(bounds.bottom())), clip.top() + clip.height());
    m_origin = QPoint(static_cast<int>(std::floor(bounds.left())), top);
    m_rows = bottom - top;
    const std::size_t cells = static_cast<std::size_t>(bounds.width()) + 4;
    m_width = (cells + kWordBits - 1) / kWordBits * kWordBits;
    if (m_rows <= 0) return;
    const std::size_t needed = m_width * static_cast<std::size_t>(m_rows);
    if (m_cells.size() < needed) m_cells.resize(needed);
    if (m_touched.size() < needed / kWordBits) m_touched.resize(needed / kWordBits);
}

void CoverageFill::AddEdge(QPointF from, QPointF to) {
    if (from.y() == to.y()) return;
    const bool down = from.y() < to.y();
    if (!down) std::swap(from, to);
    const double slope = (to.x() - from.x()) / (to.y() - from.y());
    const double top = std::max(from.y(), 0.0);
    const double bottom = std::min<double>(to.y(), m_rows);
    double x = from.x() + (top - from.y()) * slope;
    for (double y = top; y < bottom;) {
        const int row = static_cast<int>(y);
        const double next = std::min<double>(row + 1, bottom);
        const double nextX = x + (next - y) * slope;
        const auto height = static_cast<float>(next - y);
        AddToRow(row, x, nextX, down ? height : -height);
        y = next;
        x = nextX;
    }
}

inline void CoverageFill::Add(float* cells, std::uint64_t* touched, int x, float amount) {
    cells[x] += amount;
    touched[x / kWordBits] |= std::uint64_t{1} << (x % kWordBits);
}

// The part of an edge within one row: what lies right of it is covered by `height`, and a pixel that
// it crosses by its area right of the edge.
void CoverageFill::AddToRow(int row, double from, double to, float height) {
    float* const cells = m_cells.data() + static_cast<std::size_t>(row) * m_width;
    std::uint64_t* const touched =
        m_touched.data() + static_cast<std::size_t>(row) * (m_width / kWordBits);
    const double left = std::clamp(std::min(from, to), 0.0, m_width - 2.0);
    const double right = std::clamp(std::max(from, to), 0.0, m_width - 2.0);
    const int first = static_cast<int>(left);
    // The pixels are rarely in the cache; this way they arrive together.
    __builtin_prefetch(m_pixels.Row(m_origin.y() + row) + m_origin.x() + first, 1);
    if (right <= first + 1) {
        const float share = static_cast<float>((left + right) / 2 - first);
        Add(cells, touched, first, height * (1 - share));
        Add(cells, touched, first + 1, height * share);
        return;
    }
    const double perPixel = 1 / (right - left);
    double covered = (first + 1 - left) * (first + 1 - left) / 2 * perPixel;
    double before = covered;
    Add(cells, touched, first, height * static_cast<float>(covered));
    int x = first + 1;
    for (; x + 1 <= right; ++x, before = covered) {
        covered = (x + 0.5 - left) * perPixel;
        Add(cells, touched, x, height * static_cast<float>(covered - before));
    }
    if (x < right) {
        covered = ((x - left) + (right - x) * (1 - (right - x) / 2)) * perPixel;
        Add(cells, touched, x++, height * static_cast<float>(covered - before));
        before = covered;
    }
    Add(cells, touched, x, height * static_cast<float>(1 - before));
}

void CoverageFill::Sweep(const QRect& clip, QRgb color) {
    for (int row = 0; row < m_rows; ++row)
        SweepRow(row, m_pixels.Row(m_origin.y() + row), clip, color);
}

// From one touched cell to the next the coverage stays. Leaves all cells 0.
void CoverageFill::SweepRow(int row, QRgb* pixels, const QRect& clip, QRgb color) {
    float* const cells = m_cells.data() + static_cast<std::size_t>(row) * m_width;
    const std::size_t words = m_width / kWordBits;
    std::uint64_t* const touched = m_touched.data() + static_cast<std::size_t>(row) * words;
    const int leftmost = clip.left(), end = clip.left() + clip.width();
    float sum = 0;
    int from = leftmost;
    for (std::size_t word = 0; word < words; ++word) {
        for (std::uint64_t bits = std::exchange(touched[word], 0); bits; bits &= bits - 1) {
            const std::size_t cell =
                word * kWordBits + static_cast<std::size_t>(std::countr_zero(bits));
            const int x = m_origin.x() + static_cast<int>(cell);
            const int to = std::min(x, end);
            BlendSpan(pixels + from, to - from, color, ToByte(sum));
            sum += std::exchange(cells[cell], 0.0f);
            from = std::max(x, leftmost);
        }
    }
    BlendSpan(pixels + from, end - from, color, ToByte(sum));
}

} // namespace vm
