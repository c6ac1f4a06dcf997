#include <vmcore/dialogs/CDialog.h>

#include <vmcore/dialogs/dataExchange.h>

#include "app/appState.h"
#include "core/log.h"
#include "dialogs/dialogFile.h"
#include "dialogs/dialogRun.h"
#include "dialogs/dialogUnits.h"
#include "platform/messagebox.h"
#include "wnd/CWndViewController.h"
#include "wnd/messageMap.h"
#include "wnd/messageTrace.h"
#include "wnd/views.h"
#include "wnd/windowState.h"

namespace {
constexpr DWORD kDialogStyle = 0x40;
constexpr UINT kBoxStyle = 1; // OK and Cancel
} // namespace

CDialog::CDialog() : CDialog(0, nullptr) {
    style = 0;
}

CDialog::CDialog(int nIDTemplate, CWnd* pParentWnd)
    : templateId(nIDTemplate), ended(0), result(0), windowController(nullptr),
      viewController(nullptr) {
    parentWnd = pParentWnd;
    style |= WS_VISIBLE | kDialogStyle;
}

CDialog::~CDialog() {
    if (vm::ModalRun* run = vm::ModalRun::Of(*this)) run->ForgetObject();
    delete viewController;
}

int CDialog::DoModal() {
    if (vm::ModalRun::Of(*this)) {
        vm::LogText(vm::LogModule::Dialogs, "CDialog::DoModal: the dialog is running already");
        return IDCANCEL;
    }
    return vm::ModalRun(vm::ClientOf(*this)).Run();
}

BOOL CDialog::Create(int nIDTemplate, CWnd* pParentWnd) {
    if (!pParentWnd || !vm::IsLiveView(pParentWnd->view)) return FALSE;
    vm::Windows().CaptureWnd = nullptr;
    const vm::ResourceHandleScope resources(resourceBundle);
    templateId = nIDTemplate;
    const std::string name = vm::Format("DLG_%d", templateId);
    std::unique_ptr<CWndViewController> controller = vm::LoadDialogView(name, pParentWnd->view);
    if (!controller) {
        vm::ShowMessageBox(nullptr, name.c_str(),
                           "Internal Error! Failed to create Dialog vcontroller", kBoxStyle);
        return FALSE;
    }
    vm::BindView(*this, std::move(controller), pParentWnd);
    if (!vm::TellOfCreation(*this)) return FALSE;
    const QPointer<QObject> alive = viewController; // deleted with the dialog
    ShowWindow(SW_SHOW);
    return alive && view;
}

BOOL CDialog::Create(LPCTSTR, CWnd*) {
    vm::ShowMessageBox(nullptr, "CDialog::Create (LPCTSTR) should never be called!", "", kBoxStyle);
    return FALSE;
}

void CDialog::EndDialog(int nResult) {
    result = nResult;
    ended = 1;
    if (vm::ModalRun* run = vm::ModalRun::Of(*this)) run->End();
}

void CDialog::OnOK() {
    EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

BOOL CDialog::OnInitDialog() {
    return UpdateData(FALSE);
}

BOOL CDialog::UpdateData(BOOL bSaveAndValidate) {
    if (!view) return FALSE;
    CDataExchange exchange(this, bSaveAndValidate);
    DoDataExchange(&exchange);
    return TRUE;
}

void CDialog::MapDialogRect(RECT* rect) const {
    if (rect && vm::IsLiveView(view)) *rect = vm::UnitsToPixels(*rect, vm::DialogBaseOf(*view));
}

void CDialog::DoDataExchange(CDataExchange* pDX) {
    CWnd::DoDataExchange(pDX);
}

static LRESULT Answer(CDialog& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return dialog.OnInitDialog();
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(wParam) != dialog.view) return 1; // a click on a control
        break;
    case WM_COMMAND:
        if (vm::map::HasCommand(dialog, wParam, lParam)) break; // of its message map
        if (LOWORD(wParam) == IDOK) return dialog.OnOK(), 1;
        if (LOWORD(wParam) == IDCANCEL) return dialog.OnCancel(), 1;
        break;
    default:
        break;
    }
    return dialog.CWnd::WindowProc(message, wParam, lParam);
}

LRESULT CDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return vm::Traced(*this, message, wParam, lParam,
                      [=, this] { return Answer(*this, message, wParam, lParam); });
}

IMPLEMENT_DYNAMIC(CDialog, CWnd)
