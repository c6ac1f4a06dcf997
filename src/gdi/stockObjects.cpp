// The three shared records of GetStockObject.
#include <cstring>

#include "core/log.h"
#include "gdi/sharedRecords.h"
#include "platform/messagebox.h"

namespace {

constexpr DWORD kTwoOnes = 0x00010001; // the width of a stock pen: two 16-bit values
constexpr BYTE kAnyQuality = 0xE8;

struct StockRecords {
    tagLOGBRUSH brush;
    tagEXTLOGPEN pen;
    tagFONTRECORD font;
};

StockRecords& Stock() {
    static StockRecords s_records{};
    return s_records;
}

HGDIOBJ StockBrush(UINT style, COLORREF color) {
    tagLOGBRUSH& brush = Stock().brush;
    brush.lbStyle = style;
    brush.lbColor = color;
    if (color == 0) brush.lbHatch = 0;
    return &brush;
}

HGDIOBJ WhitePen() {
    tagEXTLOGPEN& pen = Stock().pen;
    pen.elpPenStyle = PS_SOLID;
    pen.elpWidth = kTwoOnes;
    pen.elpColor = 0xFFFFFF;
    return &pen;
}

// The style stays as it was. The null pen has its style in the wrong field, and so draws solid:
// hosts' pictures are drawn with it as it is.
HGDIOBJ DarkPen(DWORD width, UINT brushStyle) {
    tagEXTLOGPEN& pen = Stock().pen;
    pen.elpWidth = width;
    pen.elpBrushStyle = brushStyle;
    pen.elpColor = 0;
    return &pen;
}

HGDIOBJ StockFont(LONG height) {
    tagFONTRECORD& font = Stock().font;
    font = {};
    font.lfHeight = height;
    font.lfWidth = 8;
    font.lfWeight = 400;
    font.lfOutPrecision = font.lfClipPrecision = font.lfQuality = kAnyQuality;
    std::strcpy(font.lfFaceName, "Arial");
    return &font;
}

HGDIOBJ ReportUnknown(int index) {
    const std::string text = vm::Format("GetStockObject() - info on object %d requested!", index);
    vm::ShowMessageBox(nullptr, text.c_str(), "VM Core", 0);
    return nullptr;
}

} // namespace

HGDIOBJ GetStockObject(int index) {
    switch (index) {
    case WHITE_BRUSH:
        return StockBrush(BS_SOLID, 0xFFFFFF);
    case LTGRAY_BRUSH:
        return StockBrush(BS_SOLID, 0xC0C0C0);
    case GRAY_BRUSH:
        return StockBrush(BS_SOLID, 0x808080);
    case DKGRAY_BRUSH:
        return StockBrush(BS_SOLID, 0x404040);
    case BLACK_BRUSH:
        return StockBrush(BS_SOLID, 0x000000);
    case NULL_BRUSH:
        return StockBrush(BS_NULL, 0x000000);
    case WHITE_PEN:
        return WhitePen();
    case BLACK_PEN:
        return DarkPen(kTwoOnes, BS_SOLID);
    case NULL_PEN:
        return DarkPen(0, PS_NULL);
    case ANSI_VAR_FONT:
        return StockFont(12);
    case SYSTEM_FONT:
        return StockFont(16);
    default:
        return ReportUnknown(index);
    }
}

bool vm::IsStockRecord(const void* handle) {
    const StockRecords& stock = Stock();
    return handle == &stock.brush || handle == &stock.pen || handle == &stock.font;
}
