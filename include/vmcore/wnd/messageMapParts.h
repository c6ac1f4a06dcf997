// What the macros of messageMap.h are made of: the message taken apart once, and handlers checked
// against their entries. Nothing here is for programs.
#pragma once

#include <cstdint>
#include <type_traits>

#include <vmcore/app/CWinApp.h>
#include <vmcore/app/messages.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>
#include <vmcore/wnd/CWnd.h>

class CScrollBar;

namespace vm::map {

/// Asked by dialogs through MessageMap, and nobody else: is there a handler for this command?
constexpr UINT kHasCommand = 0xFFFF7E01;
struct CommandQuestion { // its lParam; wParam is that of the command
    bool isKnown;
};

/// MessageMap's answer for a handler's result: the result itself, or a number that stands for it until
/// the dispatch takes it, when it is 0, does not fit, or would read as "not handled".
VM_API int AnswerOf(LRESULT result);
/// Asks the map of the application object; 0 when it does not handle the command, or there is none.
VM_API int AskApplication(UINT message, WPARAM wParam, LPARAM lParam);
/// The command state of WM_UPDATECOMMANDUI, enabled until its handler says otherwise.
VM_API CCmdUI* Enabled(LPARAM lParam);
/// The object of a handle, or the scratch window for a view without one; null for 0.
VM_API CWnd* WindowOf(std::uintptr_t handle);
/// The same, but null for the window's own scroll bars.
VM_API CWnd* ScrollBarOf(const CWnd& wnd, std::uintptr_t handle);
/// Whether a command or notification with this sender was reflected to `wnd`, which sent it.
VM_API bool IsFrom(const CWnd& wnd, std::uintptr_t handle);

constexpr bool IsCommandCode(int code) {
    return code == 0 || code == BN_CLICKED;
}

constexpr UINT kNoID = 0x10000; // no ID has more than 16 bits
constexpr std::uint64_t kNoControl = std::uint64_t{1} << 32;

constexpr bool IsIn(UINT id, int first, int last) {
    return id >= (static_cast<UINT>(first) & 0xFFFF) && id <= (static_cast<UINT>(last) & 0xFFFF);
}

/// A message as entries see it. Entries are compiled for each of the kinds below, of which a
/// delivery is one: what a kind cannot be is a constant, and costs nothing.
struct Message {
    NMHDR* Notice() const { return reinterpret_cast<NMHDR*>(lParam); }
    bool IsNotice(int code) const { return lParam && Notice()->code == static_cast<UINT>(code); }
    bool IsNoticeOf(int code, int first, int last) const {
        return IsNotice(code) && Notice()->idFrom >= static_cast<UINT>(first) &&
               Notice()->idFrom <= static_cast<UINT>(last);
    }
    bool IsReflectedNotice(const CWnd& wnd, int code) const {
        return IsNotice(code) && IsFrom(wnd, reinterpret_cast<std::uintptr_t>(Notice()->hwndFrom));
    }
    CPoint Point() const {
        return CPoint(static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam)));
    }
    UINT Keys() const { return LOWORD(wParam); }
    /// The library sends every repeat as a message of its own, and packs no count.
    UINT Repeats() const { return LOWORD(lParam) ? LOWORD(lParam) : 1; }
    void Define() const {}
    WPARAM wParam;
    LPARAM lParam;
};

struct Command : Message {
    Command(WPARAM w, LPARAM l)
        : Message{w, l}, control(static_cast<std::uint32_t>(w)),
          command(!l || IsCommandCode(HIWORD(w)) ? LOWORD(w) : kNoID) {}
    static constexpr UINT number = WM_COMMAND;
    std::uint64_t control; // code and ID
    UINT command;          // the ID to be run: without a control whatever the code is
    static constexpr UINT update = kNoID;
    static constexpr bool asks = false;
};

/// WM_UPDATECOMMANDUI, what is the command's state, or kHasCommand, is there a handler?
template <UINT asked>
struct Question : Message {
    Question(WPARAM w, LPARAM l)
        : Message{w, l}, command(l && IsCommandCode(HIWORD(w)) ? LOWORD(w) : kNoID),
          update(l && asked == WM_UPDATECOMMANDUI ? LOWORD(w) : kNoID) {}
    /// There is a handler for the command. Base classes may still tell its state.
    void Define() const {
        if constexpr (asked == kHasCommand)
            reinterpret_cast<CommandQuestion*>(lParam)->isKnown = true;
        else
            reinterpret_cast<CCmdUI*>(lParam)->SetFnDefined(true);
    }
    static constexpr UINT number = asked;
    static constexpr std::uint64_t control = kNoControl;
    UINT command;
    UINT update;
    static constexpr bool asks = true;
};

struct Other : Message {
    Other(UINT message, WPARAM w, LPARAM l) : Message{w, l}, number(message) {}
    UINT number;
    static constexpr std::uint64_t control = kNoControl;
    static constexpr UINT command = kNoID;
    static constexpr UINT update = kNoID;
    static constexpr bool asks = false;
};

/// Kept out of the way of messages and commands. The order of the parameters is MessageMap's, so that
/// they stay in their registers.
template <UINT asked, class Entries>
[[gnu::noinline]] int Ask(Entries entries, UINT, WPARAM wParam, LPARAM lParam) {
    return entries(Question<asked>(wParam, lParam));
}

/// MessageMap of a class with a map: `entries` are compiled for each kind.
template <class Entries>
int Dispatch(UINT number, WPARAM wParam, LPARAM lParam, Entries entries) {
    if (number == WM_COMMAND) return entries(Command(wParam, lParam));
    if (number == WM_UPDATECOMMANDUI)
        return Ask<WM_UPDATECOMMANDUI>(entries, number, wParam, lParam);
    if (number == kHasCommand) return Ask<kHasCommand>(entries, number, wParam, lParam);
    return entries(Other(number, wParam, lParam));
}

/// Converts to its type only: a handler that takes another one does not compile.
template <class Type>
struct Exact {
    Type value;
    template <class To, class = std::enable_if_t<std::is_same_v<To, Type>>>
    operator To() const {
        return value;
    }
};
template <class Type>
Exact(Type) -> Exact<Type>;

/// Whether an entry's text is a pointer to a member (&Pane::OnOpen), or a name that can be called.
constexpr bool IsPointer(const char* text) {
    for (; *text; ++text)
        if (*text == '&') return true;
    return false;
}

/// Makes a type depend on template parameters, so that what an entry does not need is only parsed.
template <class Type, class...>
struct Late {
    using type = Type;
};

/// Handlers of one signature, called directly: the pointer to the member is a constant.
template <class Class, class Result_, class... Parameters>
struct Handler {
    using Result = Result_;
    using Pointer = Result (Class::*)(Parameters...);

    template <auto handler>
    struct Bound {
        Class* self;
        Result operator()(Parameters... parameters) const {
            if constexpr (std::is_convertible_v<decltype(handler), Pointer>)
                return (self->*static_cast<Pointer>(handler))(parameters...);
        }
    };
};

// One kind of entry: what its error says, and the class, result and parameters of its handlers. The
// first Bind picks one of several functions of a name; the second takes those of base classes.
#define VM_MAP_KIND(Kind, text, ...)                                                               \
    template <class Class>                                                                         \
    struct Kind : Handler<__VA_ARGS__> {                                                           \
        using Base = Handler<__VA_ARGS__>;                                                         \
        template <typename Base::Pointer handler>                                                  \
        static typename Base::template Bound<handler> Bind(Class* self, int) {                     \
            return {self};                                                                         \
        }                                                                                          \
        template <auto handler>                                                                    \
        static typename Base::template Bound<handler> Bind(Class* self, long) {                    \
            static_assert(std::is_convertible_v<decltype(handler), typename Base::Pointer>, text); \
            return {self};                                                                         \
        }                                                                                          \
        template <class Result>                                                                    \
        static void CheckResult() {                                                                \
            static_assert(std::is_same_v<Result, typename Base::Result>, text);                    \
        }                                                                                          \
    }
VM_MAP_KIND(OfCommand, "the handler of this message map entry must be: void OnX()", Class, void);
VM_MAP_KIND(OfCommandEx, "the handler of this message map entry must be: BOOL OnX(UINT id)", Class,
            BOOL, UINT);
VM_MAP_KIND(OfCommandRange, "the handler of this message map entry must be: void OnX(UINT id)",
            Class, void, UINT);
VM_MAP_KIND(OfUpdate, "the handler of this message map entry must be: void OnX(CCmdUI* state)",
            Class, void, CCmdUI*);
VM_MAP_KIND(OfReflectEx, "the handler of this message map entry must be: BOOL OnX()", Class, BOOL);
VM_MAP_KIND(
    OfNotify,
    "the handler of this message map entry must be: void OnX(NMHDR* notice, LRESULT* result)",
    Class, void, NMHDR*, LRESULT*);
VM_MAP_KIND(
    OfNotifyReflectEx,
    "the handler of this message map entry must be: BOOL OnX(NMHDR* notice, LRESULT* result)",
    Class, BOOL, NMHDR*, LRESULT*);
VM_MAP_KIND(OfNotifyRange,
            "the handler of this message map entry must be: "
            "void OnX(UINT id, NMHDR* notice, LRESULT* result)",
            Class, void, UINT, NMHDR*, LRESULT*);
VM_MAP_KIND(OfNotifyEx,
            "the handler of this message map entry must be: "
            "BOOL OnX(UINT id, NMHDR* notice, LRESULT* result)",
            Class, BOOL, UINT, NMHDR*, LRESULT*);
VM_MAP_KIND(
    OfMessage,
    "the handler of this message map entry must be: LRESULT OnX(WPARAM wParam, LPARAM lParam)",
    Class, LRESULT, WPARAM, LPARAM);
#undef VM_MAP_KIND

/// WM_TIMER's handler takes the ID as a UINT or, in younger sources, as a UINT_PTR.
template <class Class>
struct OfTimer {
    static void Call(Class* self, void (Class::*handler)(UINT), WPARAM id) {
        (self->*handler)(static_cast<UINT>(id));
    }
    static void Call(Class* self, void (Class::*handler)(UINT_PTR), WPARAM id) {
        (self->*handler)(id);
    }
};

/// The handlers of scroll messages take who scrolls as the CScrollBar* of every such source, or as a
/// CWnd*. What is no scroll bar keeps its address, and is a window at that.
template <class Class>
struct OfScroll {
    static void Call(Class* self, void (Class::*handler)(UINT, UINT, CScrollBar*), UINT code,
                     UINT position, LPARAM control) {
        CWnd* const wnd = ScrollBarOf(*self, control);
        (self->*handler)(code, position, reinterpret_cast<CScrollBar*>(wnd));
    }
    static void Call(Class* self, void (Class::*handler)(UINT, UINT, CWnd*), UINT code,
                     UINT position, LPARAM control) {
        (self->*handler)(code, position, ScrollBarOf(*self, control));
    }
};

} // namespace vm::map
