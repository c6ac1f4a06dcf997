// The glyphs of one font as coverage masks, for drawing text straight into pixels. A mask is made by
// the toolkit when it is first asked for, so that text looks the same either way.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <QtGui/QRawFont>

class QImage;

namespace vm {

struct GlyphMask {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::uint32_t offset = kNone; ///< of the first byte, see GlyphMasks::Bytes
    std::int16_t left = 0;        ///< from the whole pixel of the glyph's origin
    std::int16_t top = 0;         ///< from the baseline, negative above it
    std::int16_t width = 0;
    std::int16_t height = 0;
};

class GlyphMasks {
public:
    static constexpr int kSteps = 4; ///< places of the origin within a pixel

    /// The toolkit draws larger glyphs as outlines.
    static bool Takes(double size) { return size < 64; }

    /// Of a code's glyph, its origin `step` quarters behind the left side of its pixel.
    const GlyphMask& Get(const QRawFont& font, unsigned char code, std::uint32_t glyph, int step) {
        GlyphMask& mask = m_masks[static_cast<std::size_t>(code * kSteps + step)];
        if (mask.offset == GlyphMask::kNone) Make(mask, font, glyph, step);
        return mask;
    }
    /// One a pixel, row by row. Good until the next mask is made.
    const std::uint8_t* Bytes(const GlyphMask& mask) const { return m_bytes.data() + mask.offset; }

private:
    void Make(GlyphMask& mask, const QRawFont& font, std::uint32_t glyph, int step);
    void Keep(GlyphMask& mask, const QImage& image, int margin);

    std::array<GlyphMask, 256 * kSteps> m_masks;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace vm
