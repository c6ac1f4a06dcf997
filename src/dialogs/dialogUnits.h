// Dialog units: positions that follow the size of the dialog's font. Files drawn in them carry pixels
// for one font and say for which; here these become pixels for the font that the dialog really has.
#pragma once

#include <vector>

#include <QtCore/QSize>

#include <vmcore/core/geometry.h>

class QFont;
class QWidget;

namespace vm {

/// The property of a root that its file was drawn in dialog units: the base units that the file's
/// pixels are for and, once it is loaded, those of the dialog's own font.
inline constexpr char kDialogBaseProperty[] = "dialogBase";

/// The pixels of 4 units across and of 8 units down: the average width of the letters A to Z and a to z,
/// and the height of the font.
QSize DialogBaseOf(const QFont& font);

/// Those that the dialog was laid out with.
QSize DialogBaseOf(const QWidget& root);

/// The rectangle in pixels, edge by edge, so that what touches in units does so in pixels.
RECT UnitsToPixels(const RECT& units, const QSize& base);

/// Does nothing for a root without the property. `widgets` are those of the file, the root first;
/// whatever it places or limits is scaled, and lines that became too low for their text do without a frame.
void ScaleToFont(const std::vector<QWidget*>& widgets);

} // namespace vm
