#include <vmcore/dialogs/walkViews.h>

#include <QtWidgets/QWidget>

#include "core/log.h"
#include "wnd/NativeWindow.h"

void walkNSView(NSView* view) {
    if (!view) return;
    const QList<QWidget*> children = view->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    std::string line = vm::Format("NSView=%p  children= ", static_cast<void*>(view));
    for (QWidget* child : children) line += vm::Format("%p ", static_cast<void*>(child));
    vm::PrintError("%s\n", line.c_str());
    for (QWidget* child : children) walkNSView(child);
}

void walkNSViews(NSWindow* window) {
    if (!window) {
        vm::PrintError("\n\nwalkNSViews: request to walk window but no NSWindow supplied!\n\n");
        return;
    }
    vm::PrintError("\n\nWALK NSWindow=%p\n", static_cast<void*>(window));
    walkNSView(window->ContentView());
    vm::PrintError("FINISHED\n\n");
}
