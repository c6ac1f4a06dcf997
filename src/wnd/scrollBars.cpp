#include "wnd/scrollBars.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtWidgets/QScrollBar>

#include "platform/eventboundary.h"
#include "wnd/CWndNSView.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"

namespace vm {
namespace {

// A bar holds a fraction of its range, which the host may change at any time: one of a power of two,
// so that every position in the range comes back as it was set.
constexpr int kWhole = 1 << 30;
constexpr int kPages = 10;
constexpr int kNoTag = -1; // not found as the item without a tag

class ScrollFill : public QWidget {
public:
    using QWidget::QWidget;
};

// Follows the size of the view that it is in; tells the view's object what the user does with it.
class WindowScrollBar : public QScrollBar, public ControlActions {
public:
    WindowScrollBar(Qt::Orientation orientation, QWidget* view) : QScrollBar(orientation, view) {
        setRange(0, kWhole);
        setPageStep(kWhole / kPages);
        setSingleStep(kWhole / kPages / kPages);
        setCursor(Qt::ArrowCursor);
        connect(this, &QAbstractSlider::actionTriggered, this, &WindowScrollBar::Used);
        view->installEventFilter(this);
    }

protected:
    // The object is told when the toolkit is through with the event: it may free the bar.
    bool event(QEvent* event) override {
        const QPointer<WindowScrollBar> self = this;
        const bool outer = std::exchange(m_inEvent, true);
        const bool handled = QScrollBar::event(event);
        if (!self) return true; // freed by it
        m_inEvent = outer;
        if (m_used && !m_inEvent) Tell(*std::exchange(m_used, std::nullopt));
        return handled || !self;
    }

    CWnd* ActionTarget() const override {
        if (const auto* own = dynamic_cast<CWndView*>(parentWidget())) return own->wnd;
        return GetControlReference(parentWidget());
    }
    const char* ActionsName() const override { return "CWndNSView"; }

    bool eventFilter(QObject*, QEvent* event) override {
        const CWnd* const target = event->type() == QEvent::Resize ? ActionTarget() : nullptr;
        if (target) LayOutScrollBars(*target);
        return false;
    }

private:
    void Used(int action) {
        const ScrollPart part = PartOf(action);
        // Only a drag of the knob moves it: where a page or a line leads is the host's to say.
        if (part == ScrollPart::Knob)
            setValue(sliderPosition());
        else
            setSliderPosition(value());
        if (m_inEvent)
            m_used = part;
        else
            Tell(part);
    }

    void Tell(ScrollPart part) {
        AtEventBoundary([&] { onScroll(this, part); });
    }

    static ScrollPart PartOf(int action) {
        switch (action) {
        case SliderPageStepSub:
            return ScrollPart::DecrementPage;
        case SliderPageStepAdd:
            return ScrollPart::IncrementPage;
        case SliderSingleStepAdd:
        case SliderSingleStepSub:
            return ScrollPart::Line;
        default:
            return ScrollPart::Knob;
        }
    }

    bool m_inEvent = false;
    std::optional<ScrollPart> m_used;
};

bool IsShown(HWND bar) {
    return bar && IsLiveView(bar) && !bar->isHidden();
}

ScrollFill* FillOf(const CWnd& wnd) {
    if (!wnd.scrollFillShown || !IsLiveView(wnd.view)) return nullptr;
    for (QObject* child : wnd.view->children())
        if (auto* fill = dynamic_cast<ScrollFill*>(child)) return fill;
    return nullptr;
}

void ShowBar(QWidget& bar) {
    SetTagOf(&bar, kNoTag);
    WatchView(&bar);
    bar.show();
    bar.raise();
}

HWND MakeBar(const CWnd& wnd, Qt::Orientation orientation) {
    auto* bar = new WindowScrollBar(orientation, wnd.view);
    ShowBar(*bar);
    return bar;
}

QScrollBar* BarOf(const CWnd& wnd, bool vertical) {
    const HWND bar = vertical ? wnd.vScrollView : wnd.hScrollView;
    return IsLiveView(bar) ? qobject_cast<QScrollBar*>(bar) : nullptr;
}

// The least fraction that stands for the position.
int KnobFor(int position, LONG lowest, LONG highest) {
    const double range = double(highest) - lowest;
    if (range <= 0) return 0;
    const double fraction = std::clamp((double(position) - lowest) / range, 0.0, 1.0);
    return static_cast<int>(std::ceil(fraction * kWhole));
}

void Dispose(HWND& bar, BYTE& shown) {
    if (IsLiveView(bar)) DisposeOfView(bar);
    bar = nullptr;
    shown = 0;
}

} // namespace

QSize ScrollBarSpace(const CWnd& wnd) {
    return {IsShown(wnd.vScrollView) ? kScrollBarWidth : 0,
            IsShown(wnd.hScrollView) ? kScrollBarWidth : 0};
}

QSize ClientSizeOf(const CWnd& wnd, const QWidget& view) {
    const double scale = ScaleOf(wnd);
    const QSize bars = ScrollBarSpace(wnd);
    return QSize(ToHost(view.width(), scale) - bars.width(),
                 ToHost(view.height(), scale) - bars.height())
        .expandedTo(QSize(0, 0));
}

void LayOutScrollBars(const CWnd& wnd) {
    if (!IsLiveView(wnd.view)) return;
    const QSize bars = ScrollBarSpace(wnd);
    const int right = wnd.view->width() - bars.width();
    const int bottom = wnd.view->height() - bars.height();
    if (bars.width()) wnd.vScrollView->setGeometry(right, 0, kScrollBarWidth, std::max(bottom, 0));
    if (bars.height()) wnd.hScrollView->setGeometry(0, bottom, std::max(right, 0), kScrollBarWidth);
    if (ScrollFill* fill = FillOf(wnd))
        fill->setGeometry(right, bottom, kScrollBarWidth, kScrollBarWidth);
}

void RemoveScrollBars(CWnd& wnd) {
    ScrollFill* const fill = FillOf(wnd);
    Dispose(wnd.vScrollView, wnd.vScrollShown);
    Dispose(wnd.hScrollView, wnd.hScrollShown);
    if (fill) DisposeOfView(fill);
    wnd.scrollFillShown = 0;
}

} // namespace vm

void CWnd::CreateVScroll() {
    if (!vm::IsLiveView(view) || vm::IsLiveView(vScrollView)) return;
    vScrollView = vm::MakeBar(*this, Qt::Vertical);
    vScrollShown = 1;
    vm::LayOutScrollBars(*this);
}

void CWnd::CreateHScroll() {
    if (!vm::IsLiveView(view) || vm::IsLiveView(hScrollView)) return;
    hScrollView = vm::MakeBar(*this, Qt::Horizontal);
    hScrollShown = 1;
    vm::LayOutScrollBars(*this);
}

void CWnd::CreateVHScrollFill() {
    if (!vm::IsLiveView(view) || vm::FillOf(*this)) return;
    auto* fill = new vm::ScrollFill(view);
    fill->setAutoFillBackground(true);
    vm::ShowBar(*fill);
    scrollFillShown = 1;
    vm::LayOutScrollBars(*this);
}

void CWnd::SetScrollRange(BOOL vertical, int lowest, int highest) {
    LONG& least = vertical ? vScrollMin : hScrollMin;
    LONG& most = vertical ? vScrollMax : hScrollMax;
    const QScrollBar* const bar = vm::BarOf(*this, vertical);
    const double fraction = bar ? double(bar->value()) / vm::kWhole : 0;
    const int position = static_cast<int>(fraction * (double(most) - least)) + least;
    least = lowest;
    most = std::max(lowest, highest);
    SetScrollPos(vertical, position);
}

void CWnd::SetScrollPos(BOOL vertical, int position) {
    const LONG lowest = vertical ? vScrollMin : hScrollMin;
    const LONG highest = vertical ? vScrollMax : hScrollMax;
    scrollPosition = std::clamp<LONG>(position, lowest, std::max(lowest, highest));
    if (QScrollBar* bar = vm::BarOf(*this, vertical))
        bar->setValue(vm::KnobFor(scrollPosition, lowest, highest));
}
