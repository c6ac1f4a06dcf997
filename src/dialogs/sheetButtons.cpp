// The buttons of a property sheet: what each does, and which are enabled when.
#include <algorithm>

#include <QtWidgets/QPushButton>

#include "core/macroman.h"
#include "dialogs/Sheet.h"
#include "wnd/NativeWindow.h"

namespace vm {
namespace {

// The toolkit takes the focus of a button that is hidden or disabled to the next one, which may be
// Cancel: Return would press it. The focus goes to the default button instead.
class KeptFocus {
public:
    KeptFocus(const SheetPane& pane, QPushButton& fallback) : m_fallback(fallback) {
        for (QPushButton* button : pane.Buttons())
            if (button->window()->focusWidget() == button) m_focused = button;
    }
    ~KeptFocus() {
        if (m_focused && (m_focused->isHidden() || !m_focused->isEnabled())) m_fallback.setFocus();
    }
    KeptFocus(const KeptFocus&) = delete;
    KeptFocus& operator=(const KeptFocus&) = delete;

private:
    QPushButton& m_fallback;
    const QPushButton* m_focused = nullptr;
};

} // namespace

bool Sheet::IsWizard() const {
    return m_owner && m_owner->m_psh.dwFlags & PSH_WIZARD;
}

std::vector<int> Sheet::ButtonCommands() const {
    const DWORD flags = m_owner->m_psh.dwFlags;
    std::vector<int> commands = {IDOK, IDCANCEL};
    if (IsWizard())
        commands = {ID_WIZBACK, ID_WIZNEXT, ID_WIZFINISH, IDCANCEL};
    else if (!(flags & PSH_NOAPPLYNOW))
        commands.push_back(ID_APPLY_NOW);
    if (flags & PSH_HASHELP) commands.push_back(IDHELP);
    return commands;
}

bool Sheet::CanPress(int command) const {
    const QPushButton* const button = m_pane ? m_pane->Button(command) : nullptr;
    return button && button->isEnabled() && !button->isHidden() && !m_isAsking && IsOpen();
}

void Sheet::Press(int command) {
    switch (command) {
    case IDOK:
        return OK();
    case IDCANCEL:
        return Cancel();
    case ID_APPLY_NOW:
        Apply();
        return;
    case IDHELP:
        return Help();
    case ID_WIZBACK:
        return Turn(false);
    case ID_WIZNEXT:
        return Turn(true);
    case ID_WIZFINISH:
        return Finish();
    default:
        return;
    }
}

void Sheet::OK() {
    const Asking asking(*this);
    if (ApplyPages()) m_owner->EndDialog(IDOK);
}

void Sheet::Cancel() {
    const Asking asking(*this);
    if (m_active && !Ask(m_active, &CPropertyPage::OnQueryCancel)) return;
    for (CPropertyPage* page : ShownPages()) {
        if (!IsOpen()) return;
        if (Find(page)) page->OnReset();
    }
    if (IsOpen()) m_owner->EndDialog(IDCANCEL);
}

void Sheet::Help() {
    if (m_active) m_active->WindowProc(WM_COMMAND, ID_HELP, 0);
}

// The next page in this direction that could be loaded, -1 for none.
int Sheet::Neighbour(int index, int step) const {
    do index += step;
    while (At(index) && !m_pages[static_cast<std::size_t>(index)].view);
    return At(index) ? index : -1;
}

// The page to go to, -1 for none.
int Sheet::WizardTarget(bool forward) {
    const Asking asking(*this);
    CPropertyPage* const page = m_active;
    if (!page) return -1;
    const LRESULT answer = forward ? page->OnWizardNext() : page->OnWizardBack();
    if (answer == -1 || !IsOpen() || !Find(page)) return -1;
    if (answer == 0) return Neighbour(IndexOf(page), forward ? 1 : -1);
    for (const Page& entry : m_pages)
        if (entry.page->templateId == answer) return IndexOf(entry.page);
    return -1;
}

void Sheet::Turn(bool forward) {
    const std::shared_ptr<Sheet> self = shared_from_this();
    Activate(WizardTarget(forward));
}

void Sheet::Finish() {
    const Asking asking(*this);
    CPropertyPage* const page = m_active;
    if (!page || !Ask(page, &CPropertyPage::OnKillActive)) return;
    if (Ask(page, &CPropertyPage::OnWizardFinish))
        m_owner->EndDialog(ID_WIZFINISH);
    else if (IsOpen() && Find(page))
        AskToShow(page);
}

// Past pages that could not be loaded, and around the ends.
void Sheet::Step(int step) {
    const int active = IndexOf(m_active);
    if (active < 0) return;
    for (int offset = 1; offset < Count(); ++offset) {
        const int index = (active + step * offset + Count() * offset) % Count();
        if (!m_pages[static_cast<std::size_t>(index)].view) continue;
        Activate(index);
        return;
    }
}

void Sheet::SetModified(const CPropertyPage& page, bool modified) {
    Page* const entry = Find(&page);
    if (!entry) return;
    entry->isModified = modified;
    UpdateButtons();
}

void Sheet::UpdateButtons() {
    if (!m_pane) return;
    if (QPushButton* apply = m_pane->Button(ID_APPLY_NOW))
        apply->setEnabled(std::any_of(m_pages.begin(), m_pages.end(),
                                      [](const Page& entry) { return entry.isModified; }));
    if (QPushButton* help = m_pane->Button(IDHELP))
        help->setEnabled(m_active && m_active->m_psp.dwFlags & PSP_HASHELP);
    if (m_active && m_hasUsualButtons) ShowWizardButtons(UsualWizardButtons(IndexOf(m_active)));
}

void Sheet::CancelToClose() {
    if (!m_pane) return;
    if (QPushButton* ok = m_pane->Button(IDOK)) ok->setText(QStringLiteral("Close"));
    if (QPushButton* cancel = m_pane->Button(IDCANCEL)) cancel->setEnabled(false);
}

DWORD Sheet::UsualWizardButtons(int index) const {
    const DWORD back = Neighbour(index, -1) >= 0 ? DWORD{PSWIZB_BACK} : 0;
    return back | (Neighbour(index, 1) < 0 ? DWORD{PSWIZB_FINISH} : DWORD{PSWIZB_NEXT});
}

void Sheet::SetWizardButtons(DWORD flags) {
    m_hasUsualButtons = false;
    ShowWizardButtons(flags);
}

void Sheet::ShowWizardButtons(DWORD flags) {
    QPushButton* const next = m_pane ? m_pane->Button(ID_WIZNEXT) : nullptr;
    if (!next) return;
    QPushButton* const finish = m_pane->Button(ID_WIZFINISH);
    QPushButton* const back = m_pane->Button(ID_WIZBACK);
    const bool isLast = flags & (PSWIZB_FINISH | PSWIZB_DISABLEDFINISH);
    const bool hasBoth = m_owner && m_owner->m_psh.dwFlags & PSH_WIZARDHASFINISH;
    const bool finishes = isLast && !(hasBoth && flags & PSWIZB_NEXT);
    const KeptFocus focus(*m_pane, finishes ? *finish : *next);
    back->show(); // unless SetFinishText hides it again
    back->setEnabled(flags & PSWIZB_BACK);
    next->setEnabled(flags & PSWIZB_NEXT);
    next->setVisible(hasBoth || !isLast);
    finish->setEnabled(flags & PSWIZB_FINISH);
    finish->setVisible(hasBoth || isLast);
    next->setDefault(!finishes);
    finish->setDefault(finishes);
}

void Sheet::SetFinishText(const char* text) {
    QPushButton* const finish = m_pane ? m_pane->Button(ID_WIZFINISH) : nullptr;
    if (!finish) return;
    SetWizardButtons(PSWIZB_FINISH);
    const KeptFocus focus(*m_pane, *finish);
    if (text) finish->setText(FromMacRoman(text));
    m_pane->Button(ID_WIZBACK)->hide();
    m_pane->Button(ID_WIZNEXT)->hide();
}

void Sheet::TakeTitle() {
    if (!m_owner || !m_pane) return;
    const char* const caption = m_owner->m_psh.pszCaption;
    QString title = FromMacRoman(caption ? caption : "");
    if (m_owner->m_psh.dwFlags & PSH_PROPTITLE) title += QStringLiteral(" Properties");
    const Page* const page = Find(m_active);
    if (title.isEmpty() && IsWizard() && page && page->view) title = page->view->windowTitle();
    auto* const root = qobject_cast<QWidget*>(m_pane->parent());
    if (!root) return;
    root->setWindowTitle(title);
    if (NativeWindow* window = m_owner->nsWindow) window->setWindowTitle(title);
}

} // namespace vm
