#include "gdi/faceRules.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <strings.h>

#include "core/truncate.h"

namespace vm {

int FaceNumberOf(const char* faceName) {
    if (strcasecmp(faceName, "Arial Bold") == 0) return ArialBoldFace;
    if (strncasecmp(faceName, "Arial", 5) == 0) return ArialFace;
    if (strcasecmp(faceName, "Verdana Bold") == 0) return VerdanaBoldFace;
    if (strncasecmp(faceName, "Verdana", 7) == 0) return VerdanaFace;
    return OtherFace;
}

int TextLength(const char* text, int count) {
    if (!text) return 0;
    return count < 1 ? static_cast<int>(std::strlen(text)) : count;
}

double AlignedX(int x, int width, unsigned int align) {
    if (align & TA_CENTER) return double(x) - width / 2;
    if (align & TA_RIGHT) return double(x) - width - 1;
    return x;
}

double AlignedY(int y, const FontMetrics& metrics, unsigned int align) {
    if (align & TA_TOP) return y + metrics.ascender;
    if (align & TA_BOTTOM) return y + metrics.descender;
    return y;
}

double DrawTextX(const tagRECT& rect, int width, unsigned int format) {
    if (format & DT_RIGHT) return double(rect.right) - width - 1;
    if (format & DT_CENTER)
        return rect.left + std::trunc((double(rect.right) - rect.left) / 2) - width / 2;
    return rect.left;
}

double DrawTextY(const tagRECT& rect, const FontMetrics& metrics, int faceNumber,
                 unsigned int format) {
    if (format & DT_BOTTOM) {
        int y = Truncated(rect.bottom + metrics.descender);
        CDC::TextAdjustY(y, faceNumber, static_cast<int>(metrics.ascender));
        return y;
    }
    if (format & DT_VCENTER) {
        const double height = double(rect.bottom) - rect.top;
        const double room = height - metrics.ascender - metrics.descender;
        return Truncated(rect.top + metrics.capHeight + room * 0.5);
    }
    return rect.top + metrics.ascender;
}

double LineHeight(const FontMetrics& metrics) {
    return metrics.ascender - metrics.descender + metrics.leading;
}

bool TextLines::Next(std::string_view& line) {
    if (m_ended) return false;
    const std::size_t end =
        m_splits ? m_rest.find_first_of(std::string_view("\0\n\r", 3)) : std::string_view::npos;
    line = m_rest.substr(0, end);
    const std::size_t broken = m_breaks ? BreakIn(line) : line.size();
    if (broken < line.size()) {
        line = line.substr(0, broken);
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' ', broken), m_rest.size()));
    } else {
        m_ended = end == std::string_view::npos;
        if (!m_ended) m_rest.remove_prefix(end + 1);
    }
    return true;
}

// How much of the line fits: up to the spaces behind its last word that does, at least one word.
std::size_t TextLines::BreakIn(std::string_view line) const {
    std::size_t fits = line.size();
    double width = 0;
    bool inWord = false, hasWord = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool space = line[i] == ' ';
        if (space && inWord) {
            fits = i;
            hasWord = true;
        }
        inWord = !space;
        width += m_face->Advance(static_cast<unsigned char>(line[i]));
        if (width > m_room && inWord && hasWord) return fits;
    }
    return line.size();
}

tagTEXTMETRIC TextMetricsOf(const FontFace& face, int recordHeight) {
    const FontMetrics& metrics = face.Metrics();
    const int widest = static_cast<int>(metrics.maxAdvance);
    tagTEXTMETRIC result{};
    result.tmAscent = static_cast<LONG>(metrics.ascender);
    result.tmDescent = static_cast<LONG>(-metrics.descender);
    result.tmHeight = std::max(result.tmAscent + result.tmDescent, static_cast<LONG>(face.Size()));
    result.tmInternalLeading = Truncated(metrics.leading * recordHeight);
    result.tmAveCharWidth = widest * 7 / 10;
    result.tmMaxCharWidth = widest;
    result.tmWeight = 500;
    result.tmDigitizedAspectX = result.tmDigitizedAspectY = 72;
    result.tmFirstChar = result.tmBreakChar = ' ';
    result.tmLastChar = 255;
    result.tmDefaultChar = '?';
    return result;
}

} // namespace vm

void CDC::TextAdjustY(int& y, int faceNumber, int ascender) {
    if (faceNumber == vm::VerdanaFace && (ascender == 12 || ascender == 13))
        y = vm::Truncated(double(y) - 1);
    if (faceNumber == vm::ArialBoldFace && (ascender == 9 || ascender == 10))
        y = vm::Truncated(double(y) + 1);
}
