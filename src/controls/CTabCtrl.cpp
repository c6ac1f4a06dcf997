#include <vmcore/controls/CTabCtrl.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include <QtCore/QMargins>
#include <QtCore/QVariant>
#include <QtGui/QPainter>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>

#include "core/macroman.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"
#include "wnd/rects.h"
#include "wnd/views.h"

namespace {

constexpr int kFrame = 3;

// A row of tabs at the top of the pane that belongs to them.
class TabRow : public QTabBar {
public:
    TabRow() {
        setDrawBase(false);
        setExpanding(false);
        const int sample = addTab(QStringLiteral("X"));
        m_height = tabRect(sample).height();
        removeTab(sample);
    }

    int LeastWidth() const { return m_leastWidth; }
    void SetLeastWidth(int width) {
        m_leastWidth = width;
        setIconSize(iconSize()); // has the tabs laid out again
        updateGeometry();
    }
    int Height() const { return count() > 0 ? tabRect(0).bottom() + 1 : m_height; }

protected:
    QSize tabSizeHint(int index) const override {
        return QTabBar::tabSizeHint(index).expandedTo({m_leastWidth, 0});
    }
    // A style may draw the selected tab further down than a row of tabs reaches.
    void paintEvent(QPaintEvent* event) override {
        DrawPane(rect());
        QTabBar::paintEvent(event);
        DrawPane(rect().adjusted(0, Height() + 1, 0, 0));
    }

private:
    void DrawPane(const QRect& part) {
        QStyleOptionTabWidgetFrame frame;
        frame.initFrom(this);
        frame.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
        frame.rect.setTop(Height() - 1);
        if (frame.rect.height() <= kFrame) return;
        QPainter painter(this);
        painter.setClipRect(part);
        style()->drawPrimitive(QStyle::PE_FrameTabWidget, &frame, &painter, this);
    }

    int m_leastWidth = -1;
    int m_height = 0;
};

// The tabs, and the widget around them when they have pages of their own.
struct Tabs {
    QTabBar* bar = nullptr;
    QTabWidget* widget = nullptr;
    bool Has(int index) const { return bar && index >= 0 && index < bar->count(); }
};

Tabs TabsOf(const CTabCtrl& object) {
    if (auto* widget = vm::ControlOf<QTabWidget>(object)) return {widget->tabBar(), widget};
    return {vm::ControlOf<QTabBar>(object), nullptr};
}

QString TextOf(const char* text) {
    return vm::FromMacRoman(text ? text : "");
}

// A bar without tabs has no height, and one that is not shown yet does not say when it gets one.
void FitIntoLayout(QTabBar& bar) {
    bar.updateGeometry();
    QWidget* const parent = bar.parentWidget();
    if (parent && parent->layout()) parent->layout()->invalidate();
}

int Insert(const Tabs& tabs, int index, const QString& text) {
    const vm::ProgramChange change;
    const int place = std::clamp(index, 0, tabs.bar->count());
    if (tabs.widget) return tabs.widget->insertTab(place, new QWidget, text);
    const int inserted = tabs.bar->insertTab(place, text);
    FitIntoLayout(*tabs.bar);
    return inserted;
}

void Remove(const Tabs& tabs, int index) {
    const vm::ProgramChange change;
    if (!tabs.widget) return tabs.bar->removeTab(index);
    QWidget* const page = tabs.widget->widget(index);
    tabs.widget->removeTab(index);
    vm::DisposeOfView(page);
}

void Change(const Tabs& tabs, int index, const TCITEM& item) {
    const vm::ProgramChange change;
    if (item.mask & TCIF_TEXT) {
        if (tabs.widget)
            tabs.widget->setTabText(index, TextOf(item.pszText));
        else
            tabs.bar->setTabText(index, TextOf(item.pszText));
    }
    if (item.mask & TCIF_PARAM)
        tabs.bar->setTabData(index, QVariant::fromValue<qulonglong>(item.lParam));
}

void CopyText(const QString& text, TCITEM& item) {
    if (!item.pszText || item.cchTextMax <= 0) return;
    const std::string bytes =
        vm::ToMacRomanLossy(text).substr(0, static_cast<std::size_t>(item.cchTextMax) - 1);
    std::memcpy(item.pszText, bytes.c_str(), bytes.size() + 1);
}

// From the control's edges to where its contents may be.
QMargins MarginsOf(const Tabs& tabs) {
    if (const auto* row = dynamic_cast<const TabRow*>(tabs.bar))
        return {kFrame, row->Height() + kFrame, kFrame, kFrame};
    if (!tabs.widget) return {0, tabs.bar->sizeHint().height(), 0, 0};
    const auto* pages = tabs.widget->findChild<QStackedWidget*>();
    if (!pages) return {};
    const QRect outer = tabs.widget->rect();
    const QRect inner = pages->geometry();
    return {inner.left(), inner.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

} // namespace

BOOL CTabCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    return vm::AdoptControl(*this, new TabRow, parent, rect, createStyle, id);
}

int CTabCtrl::InsertItem(int index, const TCITEM* item) {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.bar || !item || index < 0) return -1;
    const int inserted = Insert(tabs, index, QString());
    Change(tabs, inserted, *item);
    return inserted;
}

int CTabCtrl::InsertItem(int index, const char* itemText) {
    const Tabs tabs = TabsOf(*this);
    return tabs.bar && index >= 0 ? Insert(tabs, index, TextOf(itemText)) : -1;
}

BOOL CTabCtrl::DeleteItem(int index) {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.Has(index)) return FALSE;
    Remove(tabs, index);
    return TRUE;
}

BOOL CTabCtrl::DeleteAllItems() {
    const Tabs tabs = TabsOf(*this);
    while (tabs.Has(0)) Remove(tabs, tabs.bar->count() - 1);
    return tabs.bar != nullptr;
}

BOOL CTabCtrl::GetItem(int index, TCITEM* item) const {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.Has(index) || !item) return FALSE;
    if (item->mask & TCIF_TEXT) CopyText(tabs.bar->tabText(index), *item);
    if (item->mask & TCIF_IMAGE) item->iImage = -1;
    if (item->mask & TCIF_PARAM)
        item->lParam = static_cast<LPARAM>(tabs.bar->tabData(index).toULongLong());
    return TRUE;
}

BOOL CTabCtrl::SetItem(int index, const TCITEM* item) {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.Has(index) || !item) return FALSE;
    Change(tabs, index, *item);
    return TRUE;
}

int CTabCtrl::GetItemCount() const {
    const Tabs tabs = TabsOf(*this);
    return tabs.bar ? tabs.bar->count() : 0;
}

int CTabCtrl::GetRowCount() const {
    return TabsOf(*this).bar ? 1 : 0;
}

int CTabCtrl::GetCurSel() const {
    const Tabs tabs = TabsOf(*this);
    return tabs.bar ? tabs.bar->currentIndex() : -1;
}

int CTabCtrl::SetCurSel(int index) {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.Has(index)) return -1;
    const int before = tabs.bar->currentIndex();
    vm::SetControlInteger(*view, index + 1);
    return before;
}

BOOL CTabCtrl::GetItemRect(int index, RECT* rect) const {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.Has(index) || !rect) return FALSE;
    QRect tab = tabs.bar->tabRect(index);
    if (tabs.widget) tab.moveTopLeft(tabs.bar->mapTo(tabs.widget, tab.topLeft()));
    *rect = vm::RectOf(tab);
    return TRUE;
}

void CTabCtrl::AdjustRect(BOOL larger, RECT* rect) const {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.bar || !rect) return;
    const QMargins margins = larger ? -MarginsOf(tabs) : MarginsOf(tabs);
    rect->left += margins.left();
    rect->top += margins.top();
    rect->right -= margins.right();
    rect->bottom -= margins.bottom();
}

int CTabCtrl::HitTest(TCHITTESTINFO* info) const {
    const Tabs tabs = TabsOf(*this);
    if (!tabs.bar || !info) return -1;
    const QPoint point(info->pt.x, info->pt.y);
    const int hit = tabs.bar->tabAt(tabs.widget ? tabs.bar->mapFrom(tabs.widget, point) : point);
    info->flags = hit < 0 ? TCHT_NOWHERE : TCHT_ONITEM;
    return hit;
}

int CTabCtrl::SetMinTabWidth(int width) {
    auto* row = vm::ControlOf<TabRow>(*this);
    if (!row) return -1;
    const int before = row->LeastWidth();
    row->SetLeastWidth(width);
    return before;
}
