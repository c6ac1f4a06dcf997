// Rules of text that need no context: which face has which number, where text goes, how it splits.
#pragma once

#include <string_view>
#include <vector>

#include "platform/FontFace.h"
#include <vmcore/gdi/CDC.h>

namespace vm {

enum FaceNumber : int {
    OtherFace = 0,
    ArialFace = 2001,
    ArialBoldFace = 2002,
    VerdanaFace = 7203,
    VerdanaBoldFace = 7204
};

/// By the face's name, in any case; "Arial Black" is one of the Arial faces.
int FaceNumberOf(const char* faceName);

/// The number of bytes to draw: `count`, or the text's length when that is below 1; 0 for null.
int TextLength(const char* text, int count);

/// Where a text of `width` starts whose anchor is `x`.
int AlignedX(int x, int width, unsigned int align);
/// The baseline of a text whose anchor is `y`.
double AlignedY(int y, const FontMetrics& metrics, unsigned int align);

/// Where DrawText starts a line of `width`.
int DrawTextX(const tagRECT& rect, int width, unsigned int format);
/// The baseline of DrawText's single line.
double DrawTextY(const tagRECT& rect, const FontMetrics& metrics, int faceNumber,
                 unsigned int format);
double LineHeight(const FontMetrics& metrics);

/// The lines of a text: every NUL, line feed and carriage return ends one.
std::vector<std::string_view> SplitTextLines(std::string_view text);

/// What GetTextMetrics answers for a face whose record holds `recordHeight`.
tagTEXTMETRIC TextMetricsOf(const FontFace& face, int recordHeight);

} // namespace vm
