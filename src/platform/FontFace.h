// A platform font: a font file at a size in pixels, with what drawing and measuring 8-bit text in
// the Roman encoding needs ready in tables. No kerning, no hinting: the same pixels on every
// display.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include <QtGui/QGlyphRun>
#include <QtGui/QRawFont>

#include "platform/GlyphMasks.h"
#include "platform/fontResolver.h"

namespace vm {

/// In pixels, unrounded, from the font's own tables. `descender` is negative.
struct FontMetrics {
    double ascender = 0;
    double descender = 0;
    double leading = 0;
    double capHeight = 0;
    double maxAdvance = 0;
    double italicAngle = 0; ///< degrees, negative for a font that leans to the right
    double underlineThickness = 0;
};

class FontFace {
public:
    /// The face called `name` (empty: "Arial") at `size` pixels (0: 12, at most 10,000); null when the system has
    /// neither it nor a stand-in, and before the application object exists. Faces live as long as
    /// the process: hosts use a small set of them. Main thread.
    static FontFace* Find(std::string_view name, double size);

    const std::string& Name() const { return m_name; } ///< as it was asked for
    double Size() const { return m_size; }
    const FontMetrics& Metrics() const { return m_metrics; }
    const QRawFont& Raw() const { return m_raw; }
    /// A glyph run of this font, to be filled for one drawing: making one costs an allocation.
    QGlyphRun& Run() const { return m_run; }
    /// The same glyphs in a font that a document can embed with their characters, so that its text
    /// can be searched and copied; Raw() when the system does not offer the file as a font.
    const QRawFont& Embeddable() const;

    /// The glyph of a code; 0xFFFFFFFF for the control codes, which show nothing.
    std::uint32_t Glyph(unsigned char code) const { return m_glyphs[code]; }
    double Advance(unsigned char code) const { return Units(code) / double{kUnits}; }
    /// The same in 64ths; asked of the toolkit when it is first needed.
    int Units(unsigned char code) const {
        const int units = m_advances[code];
        return units != kNotMeasured ? units : MeasuredUnits(code);
    }
    double Width(std::string_view text) const;

    /// For drawing into pixels; they are made as they are needed.
    GlyphMasks& Masks() const { return m_masks; }

    static constexpr std::uint32_t kNoGlyph = 0xFFFFFFFF;
    static constexpr int kUnits = 64; ///< the toolkit counts advances in these parts of a pixel

private:
    FontFace(std::string_view name, double size, QRawFont raw);
    static QRawFont RawFont(const std::string& file, double size);
    static std::unique_ptr<FontFace> Load(std::string_view name, double size);
    void FillTables();
    int MeasuredUnits(unsigned char code) const;

    static constexpr std::int32_t kNotMeasured = std::numeric_limits<std::int32_t>::min();

    std::string m_name;
    double m_size;
    QRawFont m_raw;
    mutable QRawFont m_embeddable; ///< made on the first call
    FontMetrics m_metrics;
    std::array<std::uint32_t, 256> m_glyphs{};
    mutable std::array<std::int32_t, 256> m_advances{};
    mutable QGlyphRun m_run;
    mutable GlyphMasks m_masks;
};

} // namespace vm
