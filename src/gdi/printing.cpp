#include <vmcore/gdi/printing.h>

#include <cstdint>
#include <cstdlib>

#include <langinfo.h>
#include <locale.h>

#include "platform/messagebox.h"

namespace {

struct Paper {
    double left, top, right, bottom; // points; the printable area begins at 0, 0
};

constexpr double kMargin = 18; // of a page format that no printer is chosen for: a quarter inch

// The C library gives these numbers in place of a pointer to a text.
double Millimetres(nl_item item, locale_t locale) {
    return static_cast<double>(
        static_cast<int>(reinterpret_cast<std::intptr_t>(nl_langinfo_l(item, locale))));
}

Paper PaperOf(double width, double height) {
    constexpr double kPoints = 72 / 25.4;
    return {-kMargin, -kMargin, width * kPoints - kMargin, height * kPoints - kMargin};
}

Paper DefaultPaper() {
    const locale_t locale = newlocale(LC_PAPER_MASK, "", nullptr);
    if (!locale) return PaperOf(210, 297);
    const Paper paper =
        PaperOf(Millimetres(_NL_PAPER_WIDTH, locale), Millimetres(_NL_PAPER_HEIGHT, locale));
    freelocale(locale);
    return paper;
}

} // namespace

HDC CreateDC(const char*, const char*, const char*, const void*) {
    vm::ShowMessageBox(nullptr, "CreateDC - printing is not supported", "Msg", 0);
    return nullptr;
}

BOOL DeleteDC(HDC) {
    return FALSE;
}

int StartDoc(HDC, const DOCINFO*) {
    return 0;
}

int EndDoc(HDC) {
    return 0;
}

int StartPage(HDC) {
    return 0;
}

int EndPage(HDC) {
    return 0;
}

int Escape(HDC, int, int, const char*, void*) {
    return 0;
}

int MacPageSetup() {
    return 0;
}

int GetDeviceCaps(HDC, int index) {
    const Paper paper = DefaultPaper();
    switch (index) {
    case PAPER_LEFT:
        return static_cast<int>(std::abs(paper.left));
    case PAPER_TOP:
        return static_cast<int>(std::abs(paper.top));
    case PAPER_WIDTH:
        return static_cast<int>(paper.right - paper.left);
    case PAPER_HEIGHT:
        return static_cast<int>(paper.bottom - paper.top);
    default:
        return 0;
    }
}
