// The tooltips of a view: rectangles that show a text. Those of a window object share the object's one
// text, others have their own.
#pragma once

#include <memory>

#include <QtCore/QString>

#include <vmcore/core/geometry.h>

class CWnd;
class QWidget;

namespace vm {

/// Shared by who sets it and the rectangles that show it, either of which may go first.
using TooltipText = std::shared_ptr<QString>;

/// Returns the tag. `rect`, in the units of the view's object, is all of the view when it is null. The text is
/// shown as it stands.
int AddTooltip(QWidget& view, const RECT* rect, TooltipText text);
void RemoveTooltip(QWidget& view, int tag);

/// The object goes: its rectangles show nothing any more.
void FreeTooltipText(CWnd& wnd);

} // namespace vm
