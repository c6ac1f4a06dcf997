#include "wnd/nativeControl.h"

#include <QtWidgets/QWidget>

#include "wnd/controlWiring.h"
#include "wnd/creation.h"
#include "wnd/views.h"

namespace vm {
bool AdoptControl(CWnd& wnd, QWidget* control, CWnd* parent, const RECT& rect, DWORD style,
                  UINT id) {
    if (!parent || !IsWindow(parent->view)) {
        delete control;
        return false;
    }
    WatchView(control, &wnd);
    CREATESTRUCT cs = CreationRecord(nullptr, nullptr, style, rect, parent, id);
    wnd.PreCreateWindow(cs);
    control->setParent(parent->view);
    SetTagOf(control, static_cast<int>(id));
    WireToParent(*control);
    control->setGeometry(cs.x - parent->childOriginX, cs.y - parent->childOriginY, cs.cx, cs.cy);
    wnd.parentWnd = parent;
    wnd.view = control;
    wnd.style = cs.style;
    SetControlReference(control, &wnd);
    control->setVisible((cs.style & WS_VISIBLE) != 0);
    return true;
}

} // namespace vm
