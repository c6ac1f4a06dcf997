#include <vmcore/controls/CStatic.h>

#include <QtWidgets/QLabel>

#include "wnd/nativeControl.h"

BOOL CStatic::Create(const char* label, DWORD createStyle, const RECT& rect, CWnd* parent,
                     UINT id) {
    auto* control = new QLabel;
    control->setTextFormat(Qt::PlainText);
    control->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    if (!vm::AdoptControl(*this, control, parent, rect, createStyle, id)) return FALSE;
    SetWindowText(label ? label : "");
    return TRUE;
}
