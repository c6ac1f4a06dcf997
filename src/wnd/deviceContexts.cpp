#include "wnd/deviceContexts.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QBackingStore>
#include <QtGui/QImage>

#include <vmcore/gdi/CDC.h>
#include <vmcore/wnd/CWnd.h>

#include "platform/GraphicsContext.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"

namespace vm {
namespace {

CurrentPaint* s_innermost = nullptr;

// What was begun on one window since control left the event loop.
struct Outside {
    QPointer<QWidget> window;
    std::shared_ptr<PaintTarget> target;
    QRegion drawn;
};

// Sees what makes the toolkit paint or change the image before the toolkit does.
class EndsOutside : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::UpdateRequest:
        case QEvent::Resize:
        case QEvent::Hide:
        case QEvent::WinIdChange:
            EndDrawingOutside();
            break;
        default:
            break;
        }
        return false;
    }
};

struct Drawing {
    std::vector<Outside> windows;
    std::vector<GraphicsContext*> contexts;
    EndsOutside* filter = nullptr;
    bool endAsked = false;
};

Drawing& State() {
    static auto* const s_drawing = new Drawing;
    return *s_drawing;
}

void EndWhenLoopRuns() {
    if (std::exchange(State().endAsked, true)) return;
    QMetaObject::invokeMethod(
        qApp,
        [] {
            State().endAsked = false;
            EndDrawingOutside();
        },
        Qt::QueuedConnection);
}

Outside& Begin(QWidget& window, QPaintDevice* device) {
    Drawing& state = State();
    for (Outside& known : state.windows)
        if (known.window == &window) return known;
    if (!state.filter) state.filter = new EndsOutside(qApp);
    window.installEventFilter(state.filter); // a second time moves it to the front
    EndWhenLoopRuns();
    state.windows.push_back({&window, std::make_shared<PaintTarget>(device), QRegion()});
    return state.windows.back();
}

QPaintDevice* ImageBehind(const QWidget& window) {
    QBackingStore* const store = window.backingStore();
    return store && !store->size().isEmpty() ? store->paintDevice() : nullptr;
}

GraphicsContext* Kept(GraphicsContext* context, QWidget& view) {
    const CWnd* const wnd = ObjectOf(&view);
    const double scale = wnd ? ScaleOf(*wnd) : 1.0;
    if (scale != 1.0) context->Scale(scale, scale);
    State().contexts.push_back(context);
    EndWhenLoopRuns();
    return context;
}

// For a view that is not on the screen: hosts measure texts with it before it is.
GraphicsContext* ContextOfNowhere(QWidget& view) {
    static auto* const s_image = new QImage(1, 1, QImage::Format_RGB32);
    static auto* const s_target = new auto(std::make_shared<PaintTarget>(s_image));
    return Kept(GraphicsContext::ForView(*s_target, QPoint(), QRegion()), view);
}

} // namespace

CurrentPaint::CurrentPaint(QWidget& view, std::shared_ptr<PaintTarget> target,
                           GraphicsContext* context, QRegion region)
    : m_view(&view), m_target(std::move(target)), m_context(context), m_region(std::move(region)),
      m_outer(std::exchange(s_innermost, this)) {}

CurrentPaint::~CurrentPaint() {
    s_innermost = m_outer;
}

CurrentPaint* CurrentPaint::Innermost() {
    return s_innermost;
}

CurrentPaint* CurrentPaint::Of(const QWidget* window) {
    CurrentPaint* paint = s_innermost;
    while (paint && (!paint->m_view || paint->m_view->window() != window)) paint = paint->m_outer;
    return paint;
}

CurrentPaint* CurrentPaint::OfView(const QWidget* view) {
    CurrentPaint* paint = s_innermost;
    while (paint && (!view || paint->m_view != view)) paint = paint->m_outer;
    return paint;
}

GraphicsContext* ContextOutsidePaint(QWidget& view) {
    QWidget& window = *view.window();
    const QRegion visible = view.visibleRegion();
    if (visible.isEmpty()) return ContextOfNowhere(view);
    const QPoint origin = view.mapTo(&window, QPoint());
    if (const CurrentPaint* paint = CurrentPaint::Of(&window)) {
        const QPoint shift = origin - paint->View()->mapTo(&window, QPoint());
        return Kept(GraphicsContext::ForView(paint->Target(), shift, visible.translated(shift)),
                    view);
    }
    QPaintDevice* const device = ImageBehind(window);
    if (!device) return ContextOfNowhere(view);
    Outside& outside = Begin(window, device);
    outside.drawn += visible.translated(origin);
    return Kept(GraphicsContext::ForView(outside.target, origin, visible.translated(origin)), view);
}

static void EndContextOutside(GraphicsContext* context) {
    std::vector<GraphicsContext*>& contexts = State().contexts;
    const auto found = std::find(contexts.begin(), contexts.end(), context);
    if (found == contexts.end()) return; // of a paint
    if (contexts.size() == 1 && !CurrentPaint::Innermost()) return EndDrawingOutside();
    contexts.erase(found);
    context->Release();
    for (const Outside& outside : State().windows)
        if (outside.window && ImageBehind(*outside.window))
            outside.window->backingStore()->flush(outside.drawn);
}

void EndDrawingOutside() {
    const auto windows = std::exchange(State().windows, {});
    for (const Outside& outside : windows) outside.target->End();
    for (GraphicsContext* context : std::exchange(State().contexts, {})) context->Release();
    for (const Outside& outside : windows)
        if (outside.window && ImageBehind(*outside.window))
            outside.window->backingStore()->flush(outside.drawn);
}

} // namespace vm

CDC* CWnd::GetDC() {
    if (!vm::IsLiveView(view)) return nullptr;
    vm::GraphicsContext* const context = vm::ContextOutsidePaint(*view);
    if (!context) return nullptr;
    auto* dc = new CDC;
    dc->Attach(context);
    return dc;
}

CDC* CWnd::GetWindowDC() {
    auto* dc = new CDC;
    if (const vm::CurrentPaint* paint = vm::CurrentPaint::Innermost()) dc->Attach(paint->Context());
    return dc;
}

BOOL CWnd::ReleaseDC(CDC* dc) {
    if (!dc) return FALSE;
    const HDC context = dc->Detach();
    delete dc;
    vm::EndContextOutside(context);
    return TRUE;
}

HDC GetDC(HWND window) {
    if (!vm::IsLiveView(window)) return nullptr;
    CDC dc;
    dc.Attach(vm::ContextOutsidePaint(*window));
    return dc.Detach();
}

int ReleaseDC(HWND, HDC) {
    return 1;
}
