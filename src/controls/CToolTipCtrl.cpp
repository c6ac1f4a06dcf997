#include <vmcore/controls/CToolTipCtrl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include <QtCore/QPointer>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

#include "core/macroman.h"
#include "wnd/nativeControl.h"
#include "wnd/tooltips.h"

namespace {

constexpr std::array<int, 4> kDelays = {500, 100, 5000, 500}; // by TTDT_

struct Tool {
    QPointer<QWidget> window;
    UINT_PTR id;
    std::optional<RECT> rect;
    QString text; // as it was given
    vm::TooltipText shown;
    int tag = -1;
};

// The view of a tooltip object: it is never seen, and holds the tools.
class ToolTable : public QWidget {
public:
    ~ToolTable() override {
        for (Tool& tool : m_tools) Hide(tool);
    }

    Tool* Find(const QWidget* window, UINT_PTR id) {
        for (Tool& tool : m_tools)
            if (tool.window && tool.window == window && tool.id == id) return &tool;
        return nullptr;
    }
    void Add(Tool tool) {
        Remove(tool.window, tool.id);
        tool.shown = std::make_shared<QString>(Broken(tool.text));
        m_tools.push_back(std::move(tool));
        if (isActive) Show(m_tools.back());
    }
    void Remove(const QWidget* window, UINT_PTR id) {
        std::erase_if(m_tools, [&](Tool& tool) {
            const bool goes = !tool.window || (tool.window == window && tool.id == id);
            if (goes) Hide(tool);
            return goes;
        });
    }
    int Count() const {
        return static_cast<int>(std::count_if(m_tools.begin(), m_tools.end(),
                                              [](const Tool& tool) { return !!tool.window; }));
    }
    void Activate(bool active) {
        if (std::exchange(isActive, active) == active) return;
        for (Tool& tool : m_tools) active ? Show(tool) : Hide(tool);
    }
    QString Broken(const QString& text) const;

    bool isActive = true;
    int mostWidth = -1;
    std::array<int, 4> delays = kDelays;

private:
    static void Show(Tool& tool) {
        if (tool.window)
            tool.tag = vm::AddTooltip(*tool.window, tool.rect ? &*tool.rect : nullptr, tool.shown);
    }
    static void Hide(const Tool& tool) {
        if (tool.window) vm::RemoveTooltip(*tool.window, tool.tag);
    }

    std::vector<Tool> m_tools;
};

// A word that is too long by itself stays whole.
QString ToolTable::Broken(const QString& text) const {
    if (mostWidth <= 0) return text;
    const QFontMetrics metrics(QToolTip::font());
    QString broken;
    for (const QString& line : text.split(u'\n')) {
        QString current;
        for (const QString& word : line.split(u' ')) {
            const QString longer = current.isEmpty() ? word : current + u' ' + word;
            const bool fits = current.isEmpty() || metrics.horizontalAdvance(longer) <= mostWidth;
            if (!fits) broken += current + u'\n';
            current = fits ? longer : word;
        }
        broken += current + u'\n';
    }
    broken.chop(1);
    return broken;
}

ToolTable* TableOf(const CToolTipCtrl& object) {
    return vm::ControlOf<ToolTable>(object);
}

QWidget* WindowOf(const CWnd* window) {
    return window ? vm::ControlOf<QWidget>(*window) : nullptr;
}

QString TextOf(const char* text) {
    return vm::FromMacRoman(text).remove(u'\r');
}

bool IsDelay(UINT which) {
    return which < kDelays.size();
}

} // namespace

BOOL CToolTipCtrl::Create(CWnd* parent, DWORD createStyle) {
    return vm::AdoptControl(*this, new ToolTable, parent, RECT{0, 0, 0, 0},
                            createStyle & ~DWORD{WS_VISIBLE}, 0xFFFF);
}

BOOL CToolTipCtrl::AddTool(CWnd* window, const char* tip, const RECT* rect, UINT_PTR id) {
    ToolTable* const table = TableOf(*this);
    QWidget* const place = WindowOf(window);
    if (!table || !place || !tip) return FALSE;
    table->Add({place, id, rect ? std::optional(*rect) : std::nullopt, TextOf(tip), {}});
    return TRUE;
}

void CToolTipCtrl::DelTool(CWnd* window, UINT_PTR id) {
    if (ToolTable* table = TableOf(*this)) table->Remove(WindowOf(window), id);
}

void CToolTipCtrl::UpdateTipText(const char* tip, CWnd* window, UINT_PTR id) {
    ToolTable* const table = TableOf(*this);
    Tool* const tool = table && tip ? table->Find(WindowOf(window), id) : nullptr;
    if (!tool) return;
    tool->text = TextOf(tip);
    *tool->shown = table->Broken(tool->text);
}

void CToolTipCtrl::GetText(CString& result, CWnd* window, UINT_PTR id) const {
    ToolTable* const table = TableOf(*this);
    const Tool* const tool = table ? table->Find(WindowOf(window), id) : nullptr;
    result = tool ? vm::ToMacRomanLossy(tool->text).c_str() : "";
}

int CToolTipCtrl::GetToolCount() const {
    const ToolTable* const table = TableOf(*this);
    return table ? table->Count() : 0;
}

void CToolTipCtrl::Activate(BOOL active) {
    if (ToolTable* table = TableOf(*this)) table->Activate(active != 0);
}

void CToolTipCtrl::Pop() {
    if (TableOf(*this)) QToolTip::hideText();
}

int CToolTipCtrl::GetMaxTipWidth() const {
    const ToolTable* const table = TableOf(*this);
    return table ? table->mostWidth : -1;
}

int CToolTipCtrl::SetMaxTipWidth(int width) {
    const int before = GetMaxTipWidth();
    if (ToolTable* table = TableOf(*this)) table->mostWidth = width;
    return before;
}

void CToolTipCtrl::SetDelayTime(UINT which, int milliseconds) {
    ToolTable* const table = TableOf(*this);
    if (table && IsDelay(which)) table->delays[which] = milliseconds;
}
void CToolTipCtrl::SetDelayTime(UINT milliseconds) {
    SetDelayTime(TTDT_AUTOMATIC, static_cast<int>(milliseconds));
}

int CToolTipCtrl::GetDelayTime(UINT which) const {
    const ToolTable* const table = TableOf(*this);
    return table && IsDelay(which) ? table->delays[which] : 0;
}

void CToolTipCtrl::RelayEvent(MSG*) {}
