// A document of one page, for the clipboard.
#pragma once

#include <functional>

#include <QtCore/QByteArray>
#include <QtCore/QSize>

namespace vm {

class GraphicsContext;

/// A PDF file with one page of `size` points. `draw` paints it through a context whose units are points
/// from the top left; the context is ended afterwards. Text stays text, and images keep their pixels.
/// Main thread, with an application object.
QByteArray MakePdfPage(QSize size, const std::function<void(GraphicsContext&)>& draw);

} // namespace vm
