#include "wnd/tooltips.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include <QtCore/QEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

#include <vmcore/wnd/CWnd.h>

#include "core/ascii.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"

namespace vm {
namespace {

TooltipText* TextOf(const CWnd& wnd) {
    return static_cast<TooltipText*>(wnd.tooltipText);
}

QString AsPlainText(const QString& text) {
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

// The tooltip rectangles of one view, which owns this.
class Tooltips : public QObject {
public:
    explicit Tooltips(QWidget* view) : QObject(view) { view->installEventFilter(this); }

    static Tooltips* Of(const QWidget& view) {
        for (QObject* child : view.children())
            if (auto* tooltips = dynamic_cast<Tooltips*>(child)) return tooltips;
        return nullptr;
    }

    int Add(std::optional<RECT> rect, TooltipText text) {
        static int s_lastTag = 0;
        m_entries.push_back({++s_lastTag, rect, std::move(text)});
        return s_lastTag;
    }
    void Remove(int tag) {
        const auto hasTag = [tag](const Entry& entry) { return entry.tag == tag; };
        m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), hasTag),
                        m_entries.end());
    }
    void RemoveAll() { m_entries.clear(); }

protected:
    bool eventFilter(QObject* view, QEvent* event) override {
        return event->type() == QEvent::ToolTip &&
               Show(*static_cast<QWidget*>(view), *static_cast<QHelpEvent*>(event));
    }

private:
    struct Entry {
        int tag;
        std::optional<RECT> rect; // in the units of the host; nothing for all of the view
        TooltipText text;
    };

    bool Show(QWidget& view, const QHelpEvent& event) const {
        const CWnd* const wnd = ObjectOf(&view);
        const double scale = wnd ? ScaleOf(*wnd) : 1.0;
        const int x = ToHost(event.x(), scale);
        const int y = ToHost(event.y(), scale);
        for (const Entry& entry : m_entries) {
            if (entry.text->isEmpty() || !Holds(entry, x, y)) continue;
            const QRect area = entry.rect ? AreaOf(*entry.rect, scale) : view.rect();
            QToolTip::showText(event.globalPos(), AsPlainText(*entry.text), &view, area);
            return true;
        }
        return false;
    }

    static bool Holds(const Entry& entry, int x, int y) {
        if (!entry.rect) return true;
        const RECT& rect = *entry.rect;
        return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
    }
    static QRect AreaOf(const RECT& rect, double scale) {
        return {QPoint(ToView(rect.left, scale), ToView(rect.top, scale)),
                QPoint(ToView(rect.right, scale) - 1, ToView(rect.bottom, scale) - 1)};
    }

    std::vector<Entry> m_entries;
};

Tooltips* TooltipsOf(HWND view) {
    return IsLiveView(view) ? Tooltips::Of(*view) : nullptr;
}

} // namespace

int AddTooltip(QWidget& view, const RECT* rect, TooltipText text) {
    Tooltips* tooltips = Tooltips::Of(view);
    if (!tooltips) tooltips = new Tooltips(&view);
    return tooltips->Add(rect ? std::optional(*rect) : std::nullopt, std::move(text));
}

void RemoveTooltip(QWidget& view, int tag) {
    if (Tooltips* tooltips = Tooltips::Of(view)) tooltips->Remove(tag);
}

void FreeTooltipText(CWnd& wnd) {
    TooltipText* const text = TextOf(wnd);
    if (!text) return;
    (*text)->clear();
    delete text;
    wnd.tooltipText = nullptr;
}

} // namespace vm

int CWnd::addTooltip(const CRect* rect, const char* newText) {
    if (!rect || !newText || !vm::IsAscii(newText) || !vm::IsLiveView(view)) return -1;
    if (!tooltipText) tooltipText = new vm::TooltipText(std::make_shared<QString>());
    const vm::TooltipText& shared = *vm::TextOf(*this);
    *shared = QString::fromLatin1(newText);
    return vm::AddTooltip(*view, rect, shared);
}

void CWnd::removeTooltip(int tag) {
    vm::Tooltips* const tooltips = tag < 0 ? nullptr : vm::TooltipsOf(view);
    if (tooltips) tooltips->Remove(tag);
}

void CWnd::removeAllTooltips() {
    if (vm::Tooltips* tooltips = vm::TooltipsOf(view)) tooltips->RemoveAll();
}
