// Images that keep their size or are halved, drawn straight into 32-bit pixels, row by row: what the
// toolkit's painter would make (halves to a level or two, because it rounds more often) without what a
// call of it costs. Knows no toolkit state: the caller has settled the clip.
#pragma once

#include <QtCore/QSize>

#include "platform/CoverageFill.h"

namespace vm {

/// Pixels that are only read, as those of PixelRows.
struct SourceRows {
    const unsigned char* first = nullptr;
    std::size_t stride = 0; ///< bytes

    const QRgb* Row(int y) const {
        return reinterpret_cast<const QRgb*>(first + static_cast<std::size_t>(y) * stride);
    }
};

// All fill `size` pixels from the first one of `to` on. The two must not overlap.

void CopyRows(const PixelRows& to, const SourceRows& from, QSize size);
/// Premultiplied pixels over those that are there.
void BlendRows(const PixelRows& to, const SourceRows& from, QSize size);
/// Each pixel is the mean of two by two, rounded down; opaque ones replace what is there.
void HalveRows(const PixelRows& to, const SourceRows& from, QSize size);
/// The same, premultiplied pixels over those that are there.
void BlendHalvedRows(const PixelRows& to, const SourceRows& from, QSize size);

} // namespace vm
