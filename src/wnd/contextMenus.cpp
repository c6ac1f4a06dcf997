#include "wnd/contextMenus.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>

#include <vmcore/wnd/CWnd.h>

#include "platform/eventboundary.h"
#include "wnd/heldViews.h"
#include "wnd/nativeEvents.h"
#include "wnd/views.h"

namespace vm {
namespace {

class ContextMenus : public QObject {
public:
    ContextMenus(QAbstractItemView& view, std::function<CWnd*()> object)
        : QObject(&view), m_view(view), m_object(std::move(object)) {
        view.installEventFilter(this);
        view.viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu)
            return Ask(static_cast<QContextMenuEvent*>(event)->globalPos());
        if (event->type() != QEvent::KeyPress ||
            !AsksForContextMenu(*static_cast<QKeyEvent*>(event)))
            return false;
        return Ask(CurrentRow());
    }

private:
    QPoint CurrentRow() const {
        const QRect inside = m_view.viewport()->rect();
        const QRect row = m_view.visualRect(m_view.currentIndex()) & inside;
        return m_view.viewport()->mapToGlobal((row.isEmpty() ? inside : row).center());
    }

    bool Ask(const QPoint& screen) {
        CWnd* own = m_object();
        CWnd* const wnd = own ? own : ObjectAround(m_view);
        if (!wnd) return false;
        const HeldViews held; // the toolkit goes on with the click
        AtEventBoundary([&] {
            wnd->WindowProc(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(&m_view),
                            MAKELPARAM(screen.x(), screen.y()));
        });
        return true;
    }

    QAbstractItemView& m_view;
    std::function<CWnd*()> m_object;
};

} // namespace

void ReportContextMenus(QAbstractItemView& view, std::function<CWnd*()> object) {
    new ContextMenus(view, std::move(object));
}

} // namespace vm
