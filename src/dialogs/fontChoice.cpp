#include "dialogs/fontChoice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <QtGui/QRawFont>

#include "platform/FontFace.h"

namespace vm {
namespace {

constexpr double kDefaultSize = 12;
constexpr int kBold = 600;

double SizeOf(const QFont& font) {
    const double size = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize();
    return std::max(std::round(size), 1.0);
}

bool IsItalic(QFont::Style style) {
    return style != QFont::StyleNormal;
}

// The names that may mean a font, the plainest first.
QStringList NamesFor(const QFont& font) {
    const QString family = font.family();
    QString styled = family;
    if (font.weight() >= kBold) styled += QStringLiteral(" Bold");
    if (IsItalic(font.style())) styled += QStringLiteral(" Italic");
    QStringList names = {styled};
    if (!font.styleName().isEmpty()) names += family + u' ' + font.styleName();
    return names;
}

bool IsFace(const std::string& name, const QRawFont& wanted) {
    if (name.size() >= LF_FACESIZE) return false;
    const FontFace* const found = FontFace::Find(name, kDefaultSize);
    if (!found) return false;
    const QRawFont& raw = found->Raw();
    return raw.familyName() == wanted.familyName() && raw.weight() == wanted.weight() &&
           IsItalic(raw.style()) == IsItalic(wanted.style());
}

// The toolkit's dialog goes by the style's name, which differs from family to family: Regular, Book, Roman.
QFont WithStyleName(QFont font) {
    const QString style = QRawFont::fromFont(font).styleName();
    if (QFontDatabase::styles(font.family()).contains(style)) font.setStyleName(style);
    return font;
}

} // namespace

QFont FontOf(const LOGFONT& record) {
    const FaceStyle face =
        SplitFaceName({record.lfFaceName, strnlen(record.lfFaceName, LF_FACESIZE)});
    QFont font(QString::fromStdString(face.family.empty() ? "Arial" : face.family));
    font.setPointSize(record.lfHeight ? std::abs(record.lfHeight) : static_cast<int>(kDefaultSize));
    if (face.black)
        font.setWeight(QFont::Black);
    else if (face.bold || record.lfWeight >= kBold)
        font.setWeight(QFont::Bold);
    font.setItalic(face.italic || record.lfItalic);
    font.setUnderline(record.lfUnderline);
    font.setStrikeOut(record.lfStrikeOut);
    return WithStyleName(font);
}

std::string FaceNameOf(const QFont& font) {
    const QRawFont wanted = QRawFont::fromFont(font);
    for (const QString& name : NamesFor(font))
        if (std::string bytes = name.toStdString(); IsFace(bytes, wanted)) return bytes;
    return font.family().toStdString().substr(0, LF_FACESIZE - 1);
}

void TakeFont(LOGFONT& record, const QFont& font) {
    const std::string name = FaceNameOf(font);
    std::memset(record.lfFaceName, 0, LF_FACESIZE);
    std::memcpy(record.lfFaceName, name.data(), name.size());
    record.lfHeight = static_cast<LONG>(SizeOf(font));
    record.lfWidth = 0;
    record.lfWeight = font.weight();
    record.lfItalic = IsItalic(font.style());
    record.lfUnderline = font.underline();
    record.lfStrikeOut = font.strikeOut();
}

} // namespace vm
