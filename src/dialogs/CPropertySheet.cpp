#include <vmcore/dialogs/CPropertySheet.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>

#include "app/appState.h"
#include "core/log.h"
#include "dialogs/Sheet.h"
#include "dialogs/modalRun.h"
#include "wnd/CWndWindowController.h"
#include "wnd/messageTrace.h"
#include "wnd/views.h"

namespace {

constexpr int kFailed = -1;

int CommandOf(int button) {
    static constexpr int kCommands[] = {ID_WIZBACK,   ID_WIZNEXT, ID_WIZFINISH, IDOK,
                                        ID_APPLY_NOW, IDCANCEL,   IDHELP};
    return button >= PSBTN_BACK && button <= PSBTN_HELP ? kCommands[button] : 0;
}

} // namespace

CPropertySheet::CPropertySheet() : CPropertySheet(nullptr) {}

CPropertySheet::CPropertySheet(const char* caption, CWnd* parent, UINT firstPage)
    : m_psh{sizeof(PROPSHEETHEADER), 0, nullptr, 0, 0}, ended(0), result(0),
      windowController(nullptr), m_pages(std::make_shared<vm::Sheet>(*this)) {
    Construct(caption, parent, firstPage);
}

CPropertySheet::~CPropertySheet() {
    if (vm::ModalRun* run = vm::ModalRun::Of(*this)) run->ForgetObject();
    m_pages->ForgetOwner();
}

void CPropertySheet::Construct(const char* caption, CWnd* parent, UINT firstPage) {
    parentWnd = parent;
    style |= WS_VISIBLE;
    m_psh.nStartPage = firstPage;
    SetTitle(caption);
}

int CPropertySheet::DoModal() {
    if (view || vm::ModalRun::Of(*this)) {
        vm::LogText(vm::LogModule::Dialogs, "CPropertySheet::DoModal: the sheet is open already");
        return IDCANCEL;
    }
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return kFailed;
    const auto fill = [this](vm::NativeWindow& window, CWndWindowController& controller) {
        return m_pages->FillWindow(window, controller);
    };
    return vm::ModalRun({this, &ended, &result, &windowController,
                         [&](QWidget* over) { return vm::MakeDialogWindow(over, fill); },
                         [this] { m_pages->DropPages(); }, kFailed})
        .Run();
}

BOOL CPropertySheet::OnInitDialog() {
    const std::shared_ptr<vm::Sheet> pages = m_pages;
    const bool started = pages->Start();
    if (!started && pages->IsOpen()) EndDialog(kFailed);
    return started;
}

BOOL CPropertySheet::Create(CWnd* parent, DWORD newStyle, DWORD newExStyle) {
    if (view || !parent || !vm::IsLiveView(parent->view)) return FALSE;
    const vm::ResourceHandleScope resources(resourceBundle);
    ended = result = 0;
    exStyle = newExStyle;
    if (!CWnd::Create("", m_caption, newStyle & ~DWORD{WS_VISIBLE}, RECT{0, 0, 1, 1}, parent, 0))
        return FALSE;
    const std::shared_ptr<vm::Sheet> pages = m_pages;
    const QPointer<QWidget> own = view;
    if (!pages->Fill(*own, false)) {
        if (own && pages->HasOwner() && view == own) DestroyWindow();
        return FALSE;
    }
    const QSize size = view->minimumSizeHint();
    MoveWindow(0, 0, size.width(), size.height());
    if (own) WindowProc(WM_INITDIALOG, 0, 0);
    if (!own || !vm::IsLiveView(own)) return FALSE;
    if (newStyle & WS_VISIBLE) ShowWindow(SW_SHOW);
    return own && vm::IsLiveView(own);
}

BOOL CPropertySheet::ApplyChanges() {
    return m_pages->Apply();
}

BOOL CPropertySheet::DestroyWindow() {
    m_pages->DropPages();
    return CWnd::DestroyWindow();
}

BOOL CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam) {
    const int command = LOWORD(wParam);
    if (!m_pages->CanPress(command)) return CWnd::OnCommand(wParam, lParam);
    m_pages->Press(command);
    return TRUE;
}

LRESULT CPropertySheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) return CWnd::WindowProc(message, wParam, lParam);
    return vm::Traced(*this, message, wParam, lParam,
                      [this]() -> LRESULT { return OnInitDialog(); });
}

IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

void CPropertySheet::AddPage(CPropertyPage* page) {
    if (page && !page->m_sheet) m_pages->Add(*page);
}

void CPropertySheet::RemovePage(CPropertyPage* page) {
    if (page && page->m_sheet == this) m_pages->Remove(*page);
}

void CPropertySheet::RemovePage(int index) {
    RemovePage(GetPage(index));
}

int CPropertySheet::GetPageCount() const {
    return m_pages->Count();
}

CPropertyPage* CPropertySheet::GetPage(int index) const {
    return m_pages->At(index);
}

int CPropertySheet::GetPageIndex(const CPropertyPage* page) const {
    return m_pages->IndexOf(page);
}

CPropertyPage* CPropertySheet::GetActivePage() const {
    return m_pages->At(GetActiveIndex());
}

int CPropertySheet::GetActiveIndex() const {
    return m_pages->ActiveIndex();
}

BOOL CPropertySheet::SetActivePage(int index) {
    if (!GetPage(index)) return FALSE;
    if (view) return m_pages->Activate(index);
    m_psh.nStartPage = static_cast<UINT>(index);
    return TRUE;
}

BOOL CPropertySheet::SetActivePage(CPropertyPage* page) {
    return SetActivePage(GetPageIndex(page));
}

void CPropertySheet::SetTitle(const char* title, UINT titleStyle) {
    m_caption = title ? title : "";
    m_psh.pszCaption = m_caption;
    m_psh.dwFlags = (m_psh.dwFlags & ~DWORD{PSH_PROPTITLE}) | (titleStyle & PSH_PROPTITLE);
    m_pages->TakeTitle();
}

void CPropertySheet::EndDialog(int nEndID) {
    result = nEndID;
    ended = 1;
    if (vm::ModalRun* run = vm::ModalRun::Of(*this))
        run->End();
    else if (view)
        DestroyWindow();
}

BOOL CPropertySheet::PressButton(int button) {
    const int command = CommandOf(button);
    if (!m_pages->CanPress(command)) return FALSE;
    WindowProc(WM_COMMAND, static_cast<WPARAM>(command), 0);
    return TRUE;
}

void CPropertySheet::SetWizardButtons(DWORD flags) {
    m_pages->SetWizardButtons(flags);
}

void CPropertySheet::SetFinishText(const char* label) {
    m_pages->SetFinishText(label);
}
