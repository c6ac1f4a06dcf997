// The command states: one that acts on a menu item, one that writes into the caller's variables.
#include <vmcore/app/messages.h>

#include <QtGui/QAction>
#include <QtWidgets/QMenu>

namespace {

constexpr int kNoCommand = 9999;
constexpr int kMaximumText = 254;

QAction* ItemOf(const CCmdUI& state) {
    if (!state.m_pMenu || !*state.m_pMenu || state.m_nIndex < 0) return nullptr;
    return (*state.m_pMenu)->actions().value(state.m_nIndex);
}

} // namespace

CCmdUI::CCmdUI()
    : m_pMenu(nullptr), m_reserved{}, m_bHandled(false), m_nID(0), m_nIndex(0), m_bFnDefined(false),
      m_reservedEnd(nullptr) {}

CCmdUI::~CCmdUI() = default;

void CCmdUI::Enable(bool enable) {
    if (QAction* item = ItemOf(*this)) item->setEnabled(enable);
}

void CCmdUI::SetCheck(int check) {
    QAction* item = ItemOf(*this);
    if (!item) return;
    if (check) item->setCheckable(true); // an item that is never checked shows no box
    if (item->isCheckable()) item->setChecked(check != 0);
}

void CCmdUI::SetText(const char* text) {
    QAction* item = ItemOf(*this);
    if (item && text) item->setText(QString::fromLatin1(text));
}

bool CCmdUI::GetFnDefined() {
    return m_bFnDefined;
}
void CCmdUI::SetFnDefined(bool defined) {
    m_bFnDefined = defined;
}

MacCmdUI::MacCmdUI(int id, BYTE& enabled, BYTE& second, SHORT& mark, char* text)
    : m_enabled(enabled), m_second(second), m_mark(mark), m_text(text) {
    m_nID = id;
    m_second = id != kNoCommand;
    m_mark = 0;
}

MacCmdUI::~MacCmdUI() = default;

void MacCmdUI::Enable(bool enable) {
    m_enabled = enable;
    SetHandled(true);
    if (enable) SetFnDefined(true);
}

void MacCmdUI::SetCheck(int check) {
    m_mark = check != 0;
}
void MacCmdUI::SetRadio(bool on) {
    m_mark = on;
}

void MacCmdUI::SetText(const char* text) {
    if (!m_text || !text) return;
    int length = 0;
    for (; *text && *text != '\t' && length < kMaximumText; ++text)
        if (*text != '&') m_text[length++] = *text;
    m_text[length] = '\0';
}

bool MacCmdUI::GetHandled() {
    return m_bHandled;
}
void MacCmdUI::SetHandled(bool handled) {
    m_bHandled = handled;
}
