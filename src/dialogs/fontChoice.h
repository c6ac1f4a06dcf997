// Between the fonts of the toolkit and the records of hosts, in which the face's name holds the style.
#pragma once

#include <string>

#include <QtGui/QFont>

#include <vmcore/gdi/gdiobjects.h>

namespace vm {

/// A point is a pixel: hosts' heights are in pixels, and they name them points.
QFont FontOf(const LOGFONT& record);

/// Fills name, height, weight and slant, and underlined and struck out; the rest stays.
void TakeFont(LOGFONT& record, const QFont& font);

/// A name of at most 31 bytes by which CFont finds this face: "Arial Bold Italic". The family when there
/// is none.
std::string FaceNameOf(const QFont& font);

} // namespace vm
