// The bindings of views to window objects, as plain pointers: which view belongs to which object,
// and which native window held the view when it was bound. Order is that of binding; a view may be
// bound several times and its first binding counts. Any thread may look up.
#pragma once

#include <cstddef>
#include <list>
#include <mutex>
#include <unordered_map>
#include <vector>

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

class ControlReferences {
public:
    void Bind(HWND view, CWnd* wnd, const void* nativeWindow);
    /// The object of the view's first binding; null without one.
    CWnd* Find(HWND view) const;
    /// The view of the object's last binding; null without one. The object is only compared.
    HWND HandleOf(const CWnd* wnd) const;
    void RemoveObject(CWnd* wnd);
    void RemoveView(HWND view);
    void RemoveWindow(const void* nativeWindow);
    /// The number of bindings.
    std::size_t Count() const;

private:
    struct Binding {
        HWND view;
        CWnd* wnd;
        const void* nativeWindow;
    };
    using Bindings = std::list<Binding>;
    using Index = std::vector<Bindings::iterator>; // in the order of binding

    template <class Key>
    void RemoveAll(std::unordered_map<Key, Index>& index, Key key);
    void Remove(Bindings::iterator binding);
    template <class Key>
    static void Forget(std::unordered_map<Key, Index>& index, Key key, Bindings::iterator binding);

    mutable std::mutex m_lock;
    // All bindings, and the same by each of the three pointers, so that every question takes the
    // same time however many windows live.
    Bindings m_bindings;
    std::unordered_map<HWND, Index> m_byView;
    std::unordered_map<const CWnd*, Index> m_byObject;
    std::unordered_map<const void*, Index> m_byWindow;
};

} // namespace vm
