// Drawing outside of a paint: contexts over the image behind a window. The toolkit allows one painter
// on it at a time, so one is shared by all views of the window, and it ends before the toolkit paints.
#pragma once

#include <memory>

#include <QtCore/QPointer>
#include <QtGui/QRegion>
#include <QtWidgets/QWidget>

namespace vm {

class GraphicsContext;
class PaintTarget;

/// A context for the view, good until control is back in the event loop; null while nothing of the
/// view is on the screen. Not to be released.
GraphicsContext* ContextOutsidePaint(QWidget& view);

/// Ends all drawing outside of paints and shows it.
void EndDrawingOutside();

/// While it lives, contexts for views of the same window go over the painter of this paint.
class CurrentPaint {
public:
    /// `region` is what is being painted, in the view's pixels.
    CurrentPaint(QWidget& view, std::shared_ptr<PaintTarget> target, GraphicsContext* context,
                 QRegion region);
    ~CurrentPaint();
    CurrentPaint(const CurrentPaint&) = delete;
    CurrentPaint& operator=(const CurrentPaint&) = delete;

    /// The innermost; null when nothing is being painted.
    static CurrentPaint* Innermost();
    static CurrentPaint* Of(const QWidget* window);
    static CurrentPaint* OfView(const QWidget* view);

    const QWidget* View() const { return m_view; }
    const std::shared_ptr<PaintTarget>& Target() const { return m_target; }
    GraphicsContext* Context() const { return m_context; }
    const QRegion& Region() const { return m_region; }

private:
    QPointer<QWidget> m_view;
    std::shared_ptr<PaintTarget> m_target;
    GraphicsContext* m_context;
    QRegion m_region;
    CurrentPaint* m_outer;
};

} // namespace vm
