#include "wnd/messageNames.h"

#include <vmcore/app/messages.h>

namespace vm {
namespace {

// Null for a number that the library gives no meaning.
const char* OwnName(UINT message) {
#define NAMED(name)                                                                                \
    case name:                                                                                     \
        return #name;
    switch (message) {
        // clang-format off
        NAMED(BM_SETCHECK)
        NAMED(BM_GETCHECK)
        NAMED(BM_CLICK)
        NAMED(LB_ADDSTRING)
        NAMED(LB_INSERTSTRING)
        NAMED(LB_DELETESTRING)
        NAMED(LB_RESETCONTENT)
        NAMED(LB_GETCOUNT)
        NAMED(LB_GETCURSEL)
        NAMED(LB_SETCURSEL)
        NAMED(LB_GETTEXT)
        NAMED(LB_GETTEXTLEN)
        NAMED(LB_FINDSTRING)
        NAMED(LB_SELECTSTRING)
        NAMED(CB_ADDSTRING)
        NAMED(CB_INSERTSTRING)
        NAMED(CB_DELETESTRING)
        NAMED(CB_RESETCONTENT)
        NAMED(CB_GETCOUNT)
        NAMED(CB_GETCURSEL)
        NAMED(CB_SETCURSEL)
        NAMED(CB_GETLBTEXT)
        NAMED(CB_GETLBTEXTLEN)
        NAMED(CB_FINDSTRING)
        NAMED(CB_SELECTSTRING)
        NAMED(CB_GETITEMDATA)
        NAMED(CB_SETITEMDATA)
        NAMED(CB_FINDSTRINGEXACT)
        NAMED(CB_SHOWDROPDOWN)
        NAMED(CB_GETDROPPEDSTATE)
        NAMED(CB_LIMITTEXT)
        NAMED(EM_LIMITTEXT)
        NAMED(EM_GETLIMITTEXT)
        NAMED(EM_SETSEL)
        NAMED(EM_GETSEL)
        NAMED(EM_REPLACESEL)
        NAMED(EM_SETREADONLY)
        NAMED(EM_GETMODIFY)
        NAMED(EM_SETMODIFY)
        NAMED(EM_GETLINECOUNT)
        NAMED(EM_GETLINE)
        NAMED(EM_LINEINDEX)
        NAMED(EM_LINELENGTH)
        NAMED(EM_LINEFROMCHAR)
        NAMED(EM_CANUNDO)
        NAMED(EM_UNDO)
        NAMED(EM_SETPASSWORDCHAR)
        NAMED(EM_GETPASSWORDCHAR)
        NAMED(WM_SETTEXT)
        NAMED(WM_GETTEXT)
        NAMED(WM_COMMAND)
        NAMED(WM_CLOSE)
        NAMED(WM_RBUTTONDOWN)
        NAMED(WM_LBUTTONDOWN)
        NAMED(WM_MBUTTONDOWN)
        NAMED(WM_CREATE)
        NAMED(WM_DESTROY)
        NAMED(WM_LBUTTONUP)
        NAMED(WM_MBUTTONUP)
        NAMED(WM_RBUTTONUP)
        NAMED(WM_NOTIFY)
        NAMED(WM_DROPFILES)
        NAMED(WM_ACTIVATE)
        NAMED(WM_HSCROLL)
        NAMED(WM_VSCROLL)
        NAMED(WM_CONTEXTMENU)
        NAMED(WM_MDIACTIVATE)
        NAMED(WM_SETFOCUS)
        NAMED(WM_KILLFOCUS)
        NAMED(WM_PAINT)
        NAMED(WM_INITDIALOG)
        NAMED(WM_SIZE)
        NAMED(WM_LBUTTONDBLCLK)
        NAMED(WM_MBUTTONDBLCLK)
        NAMED(WM_RBUTTONDBLCLK)
        NAMED(WM_MOVE)
        NAMED(WM_TIMER)
        NAMED(WM_GETMINMAXINFO)
        NAMED(WM_UPDATECOMMANDUI)
        NAMED(WM_EXITMENULOOP)
        NAMED(WM_PARENTNOTIFY)
        NAMED(WM_MOUSEMOVE)
        NAMED(WM_MOUSEWHEEL)
        NAMED(WM_MOUSELEAVE)
        NAMED(WM_MOUSEENTER)
        NAMED(WM_CHAR)
        NAMED(WM_GETDISPLAYTEXT)
        NAMED(WM_SHOWWINDOW)
        NAMED(WM_KEYDOWN)
        NAMED(WM_KEYUP)
        NAMED(TVM_ANSWERED)
        NAMED(WM_QUERYCLOSE)
        // clang-format on
    default:
        return nullptr;
    }
#undef NAMED
}

std::string Above(const char* base, UINT distance) {
    return distance ? std::string(base) + "+" + std::to_string(distance) : base;
}

} // namespace

std::string MessageName(UINT message) {
    if (const char* name = OwnName(message)) return name;
    if (message >= WM_APP) return Above("WM_APP", message - WM_APP);
    if (message >= WM_USER) return Above("WM_USER", message - WM_USER);
    return std::to_string(message);
}

} // namespace vm
