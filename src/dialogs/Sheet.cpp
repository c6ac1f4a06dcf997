#include "dialogs/Sheet.h"

#include <algorithm>

#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

#include "core/log.h"
#include "core/macroman.h"
#include "dialogs/dialogRun.h"
#include "platform/eventboundary.h"
#include "platform/messagebox.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndViewController.h"
#include "wnd/CWndWindowController.h"
#include "wnd/NativeWindow.h"
#include "wnd/controlWiring.h"
#include "wnd/views.h"

namespace vm {

Sheet::~Sheet() = default;

void Sheet::ForgetOwner() {
    DropPages();
    for (Page& entry : m_pages) entry.page->m_sheet = nullptr;
    m_pages.clear();
    m_owner = nullptr;
}

CPropertyPage* Sheet::At(int index) const {
    return index >= 0 && index < Count() ? m_pages[static_cast<std::size_t>(index)].page : nullptr;
}

int Sheet::IndexOf(const CPropertyPage* page) const {
    for (int index = 0; index < Count(); ++index)
        if (page && At(index) == page) return index;
    return -1;
}

int Sheet::ActiveIndex() const {
    if (m_pane) return IndexOf(m_active);
    return std::min(static_cast<int>(m_owner->m_psh.nStartPage), Count() - 1);
}

Sheet::Page* Sheet::Find(const CPropertyPage* page) {
    const int index = IndexOf(page);
    return index < 0 ? nullptr : &m_pages[static_cast<std::size_t>(index)];
}

bool Sheet::IsOpen() const {
    return m_owner && m_pane && !m_owner->ended;
}

void Sheet::Add(CPropertyPage& page) {
    m_pages.push_back({&page, nullptr, nullptr, false, false});
    page.m_sheet = m_owner;
    if (!m_pane) return;
    const std::shared_ptr<Sheet> self = shared_from_this();
    const DelayedMessageBoxes boxes; // shown last: anything may happen while one is open
    Load(m_pages.back());
    UpdateButtons();
    if (!m_owner->nsWindow) return;
    LimitSize(*m_owner->nsWindow->ContentView());
    SizeToContent(*m_owner->nsWindow);
}

void Sheet::Remove(CPropertyPage& page) {
    const int index = IndexOf(&page);
    if (index < 0) return;
    const std::shared_ptr<Sheet> self = shared_from_this();
    const bool wasShown = m_pages[static_cast<std::size_t>(index)].wasShown;
    const bool wasActive = m_active == &page;
    TakeOut(index);
    if (wasShown) page.DestroyWindow();
    if (!wasActive || !IsOpen()) return;
    if (m_isAsking)
        EnterLater(index);
    else
        EnterSomePage(index);
}

void Sheet::Forget(CPropertyPage& page) {
    const int index = IndexOf(&page);
    const bool wasActive = m_active == &page;
    const Page& entry = m_pages[static_cast<std::size_t>(index)];
    const QPointer<QWidget> view = entry.wasShown ? entry.view : nullptr;
    TakeOut(index);
    if (view) DisposeOfView(view);
    if (wasActive && IsOpen()) EnterLater(index);
}

void Sheet::TakeOut(int index) {
    Page& entry = m_pages[static_cast<std::size_t>(index)];
    if (m_active == entry.page) m_active = nullptr;
    entry.page->m_sheet = nullptr;
    if (m_pane) m_pane->Remove(index);
    if (entry.view && !entry.wasShown) delete entry.view.data();
    m_pages.erase(m_pages.begin() + index);
    UpdateButtons();
}

void Sheet::EnterLater(int index) {
    const std::weak_ptr<Sheet> weak = weak_from_this();
    const auto enter = [weak, index] {
        const std::shared_ptr<Sheet> self = weak.lock();
        if (self && self->IsOpen() && !self->m_active)
            AtEventBoundary([&] { self->EnterSomePage(index); });
    };
    QMetaObject::invokeMethod(m_pane.data(), enter, Qt::QueuedConnection);
}

// In place of a page that has left.
void Sheet::EnterSomePage(int index) {
    {
        const Asking asking(*this);
        if (Count() > 0 && EnterFirstFrom(std::min(index, Count() - 1))) return;
    }
    if (IsOpen()) m_owner->EndDialog(IDCANCEL);
}

bool Sheet::EnterFirstFrom(int index) {
    std::vector<CPropertyPage*> order;
    for (int step = 0; step < Count(); ++step) order.push_back(At((index + step) % Count()));
    for (CPropertyPage* page : order)
        if (IsOpen() && Enter(page)) return true;
    return false;
}

void Sheet::Load(Page& entry) {
    const std::string name = Format("DLG_%d", entry.page->templateId);
    entry.wasShown = entry.isModified = false;
    entry.controller = LoadDialogView(name, m_pane->PagesParent());
    entry.view = entry.controller ? entry.controller->view() : nullptr;
    const bool hasOwn = entry.page->m_psp.dwFlags & PSP_USETITLE && entry.page->m_psp.pszTitle;
    const char* const caption =
        hasOwn ? entry.page->m_psp.pszTitle : static_cast<const char*>(entry.page->m_strCaption);
    QString title = FromMacRoman(caption);
    if (title.isEmpty() && entry.view) title = entry.view->windowTitle();
    if (entry.view) entry.view->setWindowTitle(title);
    m_pane->Insert(IndexOf(entry.page), entry.view, title);
    m_pane->PutButtonsLast();
    if (!entry.view)
        ShowMessageBox(nullptr, name.c_str(), "Internal Error! Failed to create Dialog vcontroller",
                       MB_OKCANCEL);
}

void Sheet::MakePane(QWidget& root, bool hasButtons) {
    SheetLook look;
    look.hasTabs = !IsWizard();
    if (hasButtons) look.buttons = ButtonCommands();
    m_pane = new SheetPane(root, look);
    m_pane->onTab = [this](int index) {
        const std::shared_ptr<Sheet> self = shared_from_this();
        if (!Activate(index) && m_pane && m_active) m_pane->Show(IndexOf(m_active));
    };
    m_pane->onStep = [this](int step) { Step(step); };
}

bool Sheet::Fill(QWidget& root, bool hasButtons) {
    DropPages();
    const Asking asking(*this);
    {
        // In a box's loop pages may come and go, and the sheet be deleted.
        const DelayedMessageBoxes boxes;
        MakePane(root, hasButtons);
        for (Page& entry : m_pages) Load(entry);
    }
    return m_owner && m_pane && m_pane->parent() == &root &&
           std::any_of(m_pages.begin(), m_pages.end(),
                       [](const Page& entry) { return entry.view != nullptr; });
}

FillResult Sheet::FillWindow(NativeWindow& window, CWndWindowController& controller) {
    QWidget& root = *window.ContentView();
    if (!Fill(root, true)) return FillResult::Nothing;
    for (QPushButton* button : m_pane->Buttons()) WireControl(*button, &controller, &controller);
    LimitSize(root);
    TakeTitle();
    return FillResult::Filled;
}

// A sheet whose pages do not grow does not either.
void Sheet::LimitSize(QWidget& root) const {
    const bool grows = std::any_of(m_pages.begin(), m_pages.end(), [](const Page& entry) {
        return entry.view && entry.view->layout();
    });
    root.setMaximumSize(grows ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) : root.minimumSizeHint());
}

bool Sheet::Start() {
    if (!IsOpen()) return false;
    const Asking asking(*this);
    const int first =
        std::max(std::min(static_cast<int>(m_owner->m_psh.nStartPage), Count() - 1), 0);
    if (!EnterFirstFrom(first) || !IsOpen()) return false;
    m_pane->FocusPage(IndexOf(m_active));
    return true;
}

bool Sheet::Ask(CPropertyPage* page, Question question) {
    return (page->*question)() && IsOpen() && Find(page);
}

// The page gets its window when it is first shown.
bool Sheet::Prepare(CPropertyPage* page) {
    Page* const entry = Find(page);
    if (!entry || !entry->view) return false;
    if (entry->wasShown) return true;
    entry->wasShown = true;
    BindView(*page, std::move(entry->controller), m_owner);
    return TellOfCreation(*page) && IsOpen() && Find(page);
}

bool Sheet::AskToShow(CPropertyPage* page) {
    m_hasUsualButtons = IsWizard();
    if (m_hasUsualButtons) {
        if (page != m_active) m_pane->ResetText(ID_WIZFINISH);
        ShowWizardButtons(UsualWizardButtons(IndexOf(page)));
    }
    return Ask(page, &CPropertyPage::OnSetActive);
}

bool Sheet::Enter(CPropertyPage* page) {
    if (!Prepare(page) || !AskToShow(page)) return false;
    m_active = page;
    m_pane->Show(IndexOf(page));
    UpdateButtons();
    TakeTitle();
    page->ShowWindow(SW_SHOW);
    return true;
}

bool Sheet::Activate(int index) {
    CPropertyPage* const page = At(index);
    if (page && page == m_active) return true;
    if (!page || !IsOpen() || m_isAsking || !Find(page)->view) return false;
    const Asking asking(*this);
    CPropertyPage* const before = m_active;
    if (before && !Ask(before, &CPropertyPage::OnKillActive)) return false;
    if (Enter(page)) return true;
    if (IsOpen() && Find(before)) AskToShow(before);
    return false;
}

bool Sheet::Apply() {
    if (!IsOpen() || m_isAsking) return false;
    const Asking asking(*this);
    if (!ApplyPages()) return false;
    if (m_active) AskToShow(m_active); // it was told that it is left
    return IsOpen();
}

bool Sheet::ApplyPages() {
    if (m_active && !Ask(m_active, &CPropertyPage::OnKillActive)) return false;
    for (CPropertyPage* page : ShownPages()) {
        if (!Find(page)) continue; // gone in a handler of another one
        const BOOL taken = page->OnApply();
        if (!IsOpen()) return false;
        if (taken || !Find(page)) continue;
        if (!Enter(page) && IsOpen() && m_active) AskToShow(m_active);
        return false;
    }
    for (Page& entry : m_pages) entry.isModified = false;
    UpdateButtons();
    return true;
}

std::vector<CPropertyPage*> Sheet::ShownPages() const {
    std::vector<CPropertyPage*> pages;
    for (const Page& entry : m_pages)
        if (entry.wasShown) pages.push_back(entry.page);
    return pages;
}

void Sheet::DropPages() {
    const std::shared_ptr<Sheet> self = shared_from_this();
    delete m_pane.data(); // nothing of it is reported any more
    m_active = nullptr;
    for (CPropertyPage* page : ShownPages()) {
        Page* const entry = Find(page);
        if (!entry) continue; // deleted by the one before
        entry->wasShown = false;
        page->DestroyWindow();
        if (!Find(page)) continue;
        delete page->viewController;
        page->viewController = nullptr;
    }
    for (Page& entry : m_pages) entry.controller.reset();
}

LRESULT Sheet::AskSiblings(WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Sheet> self = shared_from_this();
    for (CPropertyPage* page : ShownPages()) {
        if (!Find(page)) continue;
        if (const LRESULT answer = page->WindowProc(PSM_QUERYSIBLINGS, wParam, lParam))
            return answer;
    }
    return 0;
}

} // namespace vm
