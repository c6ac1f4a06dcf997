// Message maps: which member function handles which message, as a table in the source.
//
//     class Pane : public CWnd {
//         afx_msg void OnPaint();
//         afx_msg void OnOpen();
//         afx_msg void OnUpdateOpen(CCmdUI* state) { state->Enable(m_hasFile); }
//         afx_msg void OnTextChanged();
//         afx_msg LRESULT OnArrived(WPARAM wParam, LPARAM lParam);
//         DECLARE_MESSAGE_MAP()
//     };
//
//     BEGIN_MESSAGE_MAP(Pane, CWnd)
//         ON_WM_PAINT()
//         ON_COMMAND(ID_FILE_OPEN, &Pane::OnOpen)
//         ON_UPDATE_COMMAND_UI(ID_FILE_OPEN, &Pane::OnUpdateOpen)
//         ON_EN_CHANGE(IDC_NAME, OnTextChanged)           // without the class, too
//         ON_MESSAGE(WM_USER + 1, &Pane::OnArrived)
//     END_MESSAGE_MAP()
//
// A map is an override of MessageMap, of CWnd or CWinApp: a chain of comparisons that ends in the base
// class's MessageMap. Classes with maps and classes whose MessageMap is a switch derive from each
// other as they like. The first entry that fits takes the message. Handlers may be private, and are
// called directly; one of the wrong signature does not compile. ON_WM_ entries, whose handlers have
// fixed names and are those that CWnd lists, are in messageMapMessages.h.
//
// Results. A void handler answers 1, "handled". The result of a handler that has one (ON_MESSAGE,
// OnCreate, OnQueryClose, *result of ON_NOTIFY) is what SendMessage returns, whatever it is: also 0,
// which the message's default treatment does not follow, and also values that do not fit into
// MessageMap's int, for which a number is returned that the dispatch replaces. So who calls MessageMap
// directly learns whether a message was handled, and not always its result. TRUE of a handler of
// an ..._EX entry and of OnMouseWheel answers 1, FALSE 0: "not handled", and neither later entries
// nor the base class are asked. What the library does with results: WM_QUERYCLOSE refuses with
// anything but 0, WM_CONTEXTMENU, WM_KEYDOWN and WM_CHAR end with it; nobody looks at that of
// WM_CREATE (-1 does not end the creation), nor at those of the others.
//
// Commands. ON_COMMAND also takes clicks of the button with this ID, and ON_BN_CLICKED menu commands.
// Without a control in lParam any code is a command's: hosts send 1 for an accelerator.
// A command with a handler and without an ON_UPDATE_COMMAND_UI entry in its class or the bases is
// enabled. A command with one is, until the entry's handler disables it; then it is not run either.
// In a dialog entries for IDOK and IDCANCEL come before the virtual OnOK and OnCancel, which they may
// name or call; OnInitDialog is no message here, but virtual.
//
// Main thread only, but for ON_MESSAGE: it runs on the thread that SendMessageDirect was called on.
#pragma once

#include <vmcore/wnd/messageMapMessages.h>
#include <vmcore/wnd/messageMapMissing.h>
#include <vmcore/wnd/messageMapParts.h>

/// Leaves the members that follow protected.
#define DECLARE_MESSAGE_MAP()                                                                      \
private:                                                                                           \
    template <class VmMessage>                                                                     \
    [[gnu::always_inline]] inline int VmEntries(const VmMessage& vmMessage);                       \
                                                                                                   \
public:                                                                                            \
    int MessageMap(int vmNumber, WPARAM vmWParam, LPARAM vmLParam) override;                       \
                                                                                                   \
protected:

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    int theClass::MessageMap(int vmNumber, WPARAM vmWParam, LPARAM vmLParam) {                     \
        return VM_MAP_DISPATCH;                                                                    \
    }                                                                                              \
    template <class VmMessage>                                                                     \
    int theClass::VmEntries(const VmMessage& vmMessage) {                                          \
        VM_MAP_BEGIN(theClass, baseClass)

/// For a class template with one type parameter: BEGIN_TEMPLATE_MESSAGE_MAP(Pane, Item, CWnd).
#define BEGIN_TEMPLATE_MESSAGE_MAP(theClass, typeName, baseClass)                                  \
    template <typename typeName>                                                                   \
    int theClass<typeName>::MessageMap(int vmNumber, WPARAM vmWParam, LPARAM vmLParam) {           \
        return VM_MAP_DISPATCH;                                                                    \
    }                                                                                              \
    template <typename typeName>                                                                   \
    template <class VmMessage>                                                                     \
    int theClass<typeName>::VmEntries(const VmMessage& vmMessage) {                                \
        VM_MAP_BEGIN(theClass<typeName>, baseClass)

#define END_MESSAGE_MAP()                                                                          \
    return VmBase::MessageMap(static_cast<int>(vmMessage.number), vmMessage.wParam,                \
                              vmMessage.lParam);                                                   \
    }

// Commands of menus, accelerators and buttons.
#define ON_COMMAND(id, handler)                                                                    \
    VM_MAP_COMMAND(vmMessage.command == static_cast<WORD>(id),                                     \
                   (VM_MAP_CALL(OfCommand, handler)(), 1))
/// BOOL handler(UINT id)
#define ON_COMMAND_EX(id, handler)                                                                 \
    VM_MAP_COMMAND(vmMessage.command == static_cast<WORD>(id),                                     \
                   VM_MAP_CALL(OfCommandEx, handler)(VM_MAP_COMMAND_ID) != 0)
/// void handler(UINT id), for first <= id <= last
#define ON_COMMAND_RANGE(first, last, handler)                                                     \
    VM_MAP_COMMAND(vm::map::IsIn(vmMessage.command, first, last),                                  \
                   (VM_MAP_CALL(OfCommandRange, handler)(VM_MAP_COMMAND_ID), 1))
#define ON_COMMAND_EX_RANGE(first, last, handler)                                                  \
    VM_MAP_COMMAND(vm::map::IsIn(vmMessage.command, first, last),                                  \
                   VM_MAP_CALL(OfCommandEx, handler)(VM_MAP_COMMAND_ID) != 0)
/// void handler(CCmdUI* state)
#define ON_UPDATE_COMMAND_UI(id, handler)                                                          \
    if (vmMessage.update == static_cast<WORD>(id)) return VM_MAP_UPDATE(handler), 1;
#define ON_UPDATE_COMMAND_UI_RANGE(first, last, handler)                                           \
    if (vm::map::IsIn(vmMessage.update, first, last)) return VM_MAP_UPDATE(handler), 1;
/// At the end of a frame's map: what the map of the application object has is the frame's, too. By
/// itself the library brings the application object its About command only.
#define ON_APPLICATION_COMMANDS()                                                                  \
    if (vmMessage.number == WM_COMMAND || vmMessage.number == WM_UPDATECOMMANDUI) {                \
        if (const int vmAnswer =                                                                   \
                vm::map::AskApplication(vmMessage.number, vmMessage.wParam, vmMessage.lParam))     \
            return vmAnswer;                                                                       \
    }

// What controls report: void handler().
#define ON_CONTROL(code, id, handler)                                                              \
    VM_MAP_COMMAND(vm::map::IsCommandCode(code)                                                    \
                       ? vmMessage.command == static_cast<WORD>(id)                                \
                       : vmMessage.control == MAKELONG(static_cast<WORD>(id), code),               \
                   (VM_MAP_CALL(OfCommand, handler)(), 1))
/// void handler(UINT id)
#define ON_CONTROL_RANGE(code, first, last, handler)                                               \
    VM_MAP_COMMAND(                                                                                \
        vm::map::IsCommandCode(code)                                                               \
            ? vm::map::IsIn(vmMessage.command, first, last)                                        \
            : vmMessage.control >> 16 == (code) && vm::map::IsIn(vmMessage.Keys(), first, last),   \
        (VM_MAP_CALL(OfCommandRange, handler)(vm::map::Exact<UINT>{vmMessage.Keys()}), 1))
/// In the control's own class, for what it would report to its parent, which then does not get it.
#define ON_CONTROL_REFLECT(code, handler)                                                          \
    if (vmMessage.control >> 16 == (code) && vm::map::IsFrom(*this, vmMessage.lParam))             \
        return VM_MAP_CALL(OfCommand, handler)(), 1;
/// BOOL handler(): FALSE leaves it to the parent.
#define ON_CONTROL_REFLECT_EX(code, handler)                                                       \
    if (vmMessage.control >> 16 == (code) && vm::map::IsFrom(*this, vmMessage.lParam))             \
        return VM_MAP_CALL(OfReflectEx, handler)() != 0;

#define ON_BN_CLICKED(id, handler) ON_CONTROL(BN_CLICKED, id, handler)
#define ON_EN_CHANGE(id, handler) ON_CONTROL(EN_CHANGE, id, handler)
#define ON_EN_UPDATE(id, handler) ON_CONTROL(EN_UPDATE, id, handler)
#define ON_EN_SETFOCUS(id, handler) ON_CONTROL(EN_SETFOCUS, id, handler)
#define ON_EN_KILLFOCUS(id, handler) ON_CONTROL(EN_KILLFOCUS, id, handler)
#define ON_CBN_SELCHANGE(id, handler) ON_CONTROL(CBN_SELCHANGE, id, handler)
#define ON_LBN_SELCHANGE(id, handler) ON_CONTROL(LBN_SELCHANGE, id, handler)
#define ON_LBN_DBLCLK(id, handler) ON_CONTROL(LBN_DBLCLK, id, handler)

// Notifications: void handler(NMHDR* notice, LRESULT* result); *result is 0 before the call.
#define ON_NOTIFY(code, id, handler)                                                               \
    if (vmMessage.number == WM_NOTIFY && vmMessage.IsNoticeOf(code, id, id))                       \
        return VM_MAP_NOTIFY(VM_MAP_CALL(OfNotify, handler)(VM_MAP_NOTICE), vmResult);
/// BOOL handler(UINT id, NMHDR* notice, LRESULT* result)
#define ON_NOTIFY_EX(code, id, handler) ON_NOTIFY_EX_RANGE(code, id, id, handler)
/// void handler(UINT id, NMHDR* notice, LRESULT* result)
#define ON_NOTIFY_RANGE(code, first, last, handler)                                                \
    if (vmMessage.number == WM_NOTIFY && vmMessage.IsNoticeOf(code, first, last))                  \
        return VM_MAP_NOTIFY(VM_MAP_CALL(OfNotifyRange, handler)(VM_MAP_NOTICE_ID, VM_MAP_NOTICE), \
                             vmResult);
#define ON_NOTIFY_EX_RANGE(code, first, last, handler)                                             \
    if (vmMessage.number == WM_NOTIFY && vmMessage.IsNoticeOf(code, first, last)) {                \
        LRESULT vmResult = 0;                                                                      \
        const BOOL vmIsHandled =                                                                   \
            VM_MAP_CALL(OfNotifyEx, handler)(VM_MAP_NOTICE_ID, VM_MAP_NOTICE);                     \
        return vmIsHandled ? vm::map::AnswerOf(vmResult) : 0;                                      \
    }
/// In the control's own class. The parent does not get it, and the answer is never 0.
#define ON_NOTIFY_REFLECT(code, handler)                                                           \
    if (vmMessage.number == WM_NOTIFY && vmMessage.IsReflectedNotice(*this, code))                 \
        return VM_MAP_NOTIFY(VM_MAP_CALL(OfNotify, handler)(VM_MAP_NOTICE),                        \
                             vmResult ? vmResult : 1);
/// BOOL handler(NMHDR* notice, LRESULT* result): FALSE leaves it to the parent.
#define ON_NOTIFY_REFLECT_EX(code, handler)                                                        \
    if (vmMessage.number == WM_NOTIFY && vmMessage.IsReflectedNotice(*this, code)) {               \
        LRESULT vmResult = 0;                                                                      \
        const BOOL vmIsHandled = VM_MAP_CALL(OfNotifyReflectEx, handler)(VM_MAP_NOTICE);           \
        return vmIsHandled ? vm::map::AnswerOf(vmResult ? vmResult : 1) : 0;                       \
    }

/// LRESULT handler(WPARAM wParam, LPARAM lParam), for any message.
#define ON_MESSAGE(message, handler)                                                               \
    if (vmMessage.number == static_cast<UINT>(message))                                            \
        return vm::map::AnswerOf(VM_MAP_CALL(OfMessage, handler)(                                  \
            vm::map::Exact<WPARAM>{vmMessage.wParam}, vm::map::Exact<LPARAM>{vmMessage.lParam}));

// The parts of the macros above.
#define VM_MAP_DISPATCH                                                                            \
    vm::map::Dispatch(static_cast<UINT>(vmNumber), vmWParam, vmLParam,                             \
                      [this](const auto& vmMessage) { return this->VmEntries(vmMessage); })
#define VM_MAP_BEGIN(Class, Base)                                                                  \
    using VmClass [[maybe_unused]] = Class;                                                        \
    using VmBase = Base;
#define VM_MAP_COMMAND(condition, answer)                                                          \
    if (condition) {                                                                               \
        if (!vmMessage.asks) return answer;                                                        \
        vmMessage.Define();                                                                        \
    }
#define VM_MAP_UPDATE(handler)                                                                     \
    VM_MAP_CALL(OfUpdate, handler)(vm::map::Exact<CCmdUI*>{vm::map::Enabled(vmMessage.lParam)})
#define VM_MAP_NOTIFY(call, answer)                                                                \
    [&, this] {                                                                                    \
        LRESULT vmResult = 0;                                                                      \
        call;                                                                                      \
        return vm::map::AnswerOf(answer);                                                          \
    }()
#define VM_MAP_COMMAND_ID (vm::map::Exact<UINT>{vmMessage.command})
#define VM_MAP_NOTICE_ID (vm::map::Exact<UINT>{vmMessage.Notice()->idFrom})
#define VM_MAP_NOTICE                                                                              \
    vm::map::Exact<NMHDR*>{vmMessage.Notice()}, vm::map::Exact<LRESULT*> {                         \
        &vmResult                                                                                  \
    }
// A pointer to a member is a constant of the call; a bare name can only be called, and what the other
// form needs is then parsed and left alone.
#define VM_MAP_CALL(Kind, handler)                                                                 \
    [this](auto... vmArguments) -> typename vm::map::Kind<VmClass>::Result {                       \
        (void)this;                                                                                \
        using VmKind =                                                                             \
            typename vm::map::Late<vm::map::Kind<VmClass>, decltype(vmArguments)...>::type;        \
        if constexpr (vm::map::IsPointer(#handler)) {                                              \
            return VmKind::template Bind<handler>(this, 0)(vmArguments...);                        \
        } else {                                                                                   \
            VmKind::template CheckResult<decltype(handler(vmArguments...))>();                     \
            return handler(vmArguments...);                                                        \
        }                                                                                          \
    }
