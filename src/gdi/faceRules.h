// Rules of text that need no context: which face has which number, where text goes, how it splits.
#pragma once

#include <string_view>

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
double AlignedX(int x, int width, unsigned int align);
/// The baseline of a text whose anchor is `y`.
double AlignedY(int y, const FontMetrics& metrics, unsigned int align);

/// Where DrawText starts a line of `width`.
double DrawTextX(const tagRECT& rect, int width, unsigned int format);
/// The baseline of DrawText's single line.
double DrawTextY(const tagRECT& rect, const FontMetrics& metrics, int faceNumber,
                 unsigned int format);
double LineHeight(const FontMetrics& metrics);

/// Takes a text apart into lines. With DT_MULTILINE or DT_WORDBREAK every NUL, line feed and carriage
/// return ends one; with DT_WORDBREAK also the last space before a line gets wider than `room`, which
/// then vanishes, while a word that is wider stays whole. Without either the text is one line.
class TextLines {
public:
    TextLines(std::string_view text, unsigned int format, const FontFace* face, double room)
        : m_rest(text), m_splits(format & (DT_MULTILINE | DT_WORDBREAK)),
          m_breaks(face && (format & DT_WORDBREAK)), m_face(face), m_room(room) {}

    /// False behind the last line.
    bool Next(std::string_view& line);

private:
    std::size_t BreakIn(std::string_view line) const;

    std::string_view m_rest;
    bool m_splits;
    bool m_breaks;
    const FontFace* m_face;
    double m_room;
    bool m_ended = false;
};

/// What GetTextMetrics answers for a face whose record holds `recordHeight`.
tagTEXTMETRIC TextMetricsOf(const FontFace& face, int recordHeight);

} // namespace vm
