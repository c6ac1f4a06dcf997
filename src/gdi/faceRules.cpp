#include "gdi/faceRules.h"

#include <algorithm>
#include <cstring>

#include <strings.h>

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

int AlignedX(int x, int width, unsigned int align) {
    if (align & TA_CENTER) return x - width / 2;
    if (align & TA_RIGHT) return x - width - 1;
    return x;
}

double AlignedY(int y, const FontMetrics& metrics, unsigned int align) {
    if (align & TA_TOP) return y + metrics.ascender;
    if (align & TA_BOTTOM) return y + metrics.descender;
    return y;
}

int DrawTextX(const tagRECT& rect, int width, unsigned int format) {
    if (format & DT_RIGHT) return rect.right - width - 1;
    if (format & DT_CENTER) return rect.left + (rect.right - rect.left) / 2 - width / 2;
    return rect.left;
}

double DrawTextY(const tagRECT& rect, const FontMetrics& metrics, int faceNumber,
                 unsigned int format) {
    if (format & DT_BOTTOM) {
        int y = static_cast<int>(rect.bottom + metrics.descender);
        CDC::TextAdjustY(y, faceNumber, static_cast<int>(metrics.ascender));
        return y;
    }
    if (format & DT_VCENTER) {
        const double room = (rect.bottom - rect.top) - metrics.ascender - metrics.descender;
        return static_cast<int>(rect.top + metrics.capHeight + room * 0.5);
    }
    return rect.top + metrics.ascender;
}

double LineHeight(const FontMetrics& metrics) {
    return metrics.ascender - metrics.descender + metrics.leading;
}

std::vector<std::string_view> SplitTextLines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (;;) {
        const std::size_t end = text.find_first_of(std::string_view("\0\n\r", 3));
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

tagTEXTMETRIC TextMetricsOf(const FontFace& face, int recordHeight) {
    const FontMetrics& metrics = face.Metrics();
    const int widest = static_cast<int>(metrics.maxAdvance);
    tagTEXTMETRIC result{};
    result.tmAscent = static_cast<LONG>(metrics.ascender);
    result.tmDescent = static_cast<LONG>(-metrics.descender);
    result.tmHeight = std::max(result.tmAscent + result.tmDescent, static_cast<LONG>(face.Size()));
    result.tmInternalLeading = static_cast<LONG>(metrics.leading * recordHeight);
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
    if (faceNumber == vm::VerdanaFace && (ascender == 12 || ascender == 13)) --y;
    if (faceNumber == vm::ArialBoldFace && (ascender == 9 || ascender == 10)) ++y;
}
