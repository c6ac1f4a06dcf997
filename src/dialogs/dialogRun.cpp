#include "dialogs/dialogRun.h"

#include <QtWidgets/QApplication>

#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/dataExchange.h>

#include "app/appState.h"
#include "core/log.h"
#include "dialogs/dialogFile.h"
#include "platform/bundle.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndViewController.h"
#include "wnd/CWndWindowController.h"
#include "wnd/views.h"

namespace vm {
namespace {

void LogFailure(const char* text, const std::string& name) {
    LogText(LogModule::Dialogs, text);
    Log(LogModule::Dialogs, "%s", name.c_str());
}

bool IsInPlugInWithoutPath() {
    return App().isPluginEnvironment && (!App().DVBundle || App().DVBundle->Path().empty());
}

std::unique_ptr<CWndWindowController> LoadWindow(const std::string& name, QWidget* over) {
    if (IsInPlugInWithoutPath()) {
        LogFailure("DV Plugin Internal error: failed to create full path in CDialog::DoModal()",
                   name);
        return nullptr;
    }
    std::unique_ptr<CWndWindowController> controller;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        controller = LoadDialogWindow(name, over);
    if (!controller)
        LogFailure(App().isPluginEnvironment
                       ? "DV Plugin Internal Error! Failed to create Dialog from controller"
                       : "DV Plugin Internal Error! Failed to create Dialog controller",
                   name);
    else if (!controller->window())
        LogFailure("DV Plugin Internal Error! Failed to create Dialog window", name);
    return controller;
}

} // namespace

ModalClient ClientOf(CDialog& dialog) {
    return {&dialog,
            &dialog.ended,
            &dialog.result,
            &dialog.windowController,
            [&dialog](QWidget* over) {
                const int id = dialog.templateId;
                return LoadWindow(id != 0 ? Format("DLG_%d", id) : std::string(), over);
            },
            [&dialog] {
                CDataExchange out(&dialog, TRUE);
                dialog.DoDataExchange(&out);
            },
            IDCANCEL};
}

void BindView(CDialog& dialog, std::unique_ptr<CWndViewController> controller, CWnd* parent) {
    CWndViewController*& own = dialog.viewController;
    if (own && own->view()) DisposeOfView(own->view());
    delete own;
    own = controller.release();
    own->setWnd(&dialog);
    CWndView* view = own->view();
    view->wnd = &dialog;
    view->setFlipped(false);
    dialog.parentWnd = parent;
    dialog.view = view;
    SetControlReference(view, &dialog);
}

bool TellOfCreation(CDialog& dialog) {
    const QPointer<QObject> alive = dialog.viewController; // deleted with the dialog
    dialog.WindowProc(WM_CREATE, 0, 0);
    if (alive) dialog.WindowProc(WM_INITDIALOG, 0, 0);
    return alive && dialog.view;
}

} // namespace vm
