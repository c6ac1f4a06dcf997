#include "app/ControlReferences.h"

#include <algorithm>

namespace vm {

void ControlReferences::Bind(HWND view, CWnd* wnd, const void* nativeWindow) {
    std::lock_guard guard(m_lock);
    const auto binding = m_bindings.insert(m_bindings.end(), {view, wnd, nativeWindow});
    m_byView[view].push_back(binding);
    m_byObject[wnd].push_back(binding);
    if (nativeWindow) m_byWindow[nativeWindow].push_back(binding);
}

CWnd* ControlReferences::Find(HWND view) const {
    std::lock_guard guard(m_lock);
    const auto found = m_byView.find(view);
    return found == m_byView.end() ? nullptr : found->second.front()->wnd;
}

HWND ControlReferences::HandleOf(const CWnd* wnd) const {
    std::lock_guard guard(m_lock);
    const auto found = m_byObject.find(wnd);
    return found == m_byObject.end() ? nullptr : found->second.back()->view;
}

void ControlReferences::RemoveObject(CWnd* wnd) {
    std::lock_guard guard(m_lock);
    RemoveAll(m_byObject, static_cast<const CWnd*>(wnd));
}

void ControlReferences::RemoveView(HWND view) {
    std::lock_guard guard(m_lock);
    RemoveAll(m_byView, view);
}

void ControlReferences::RemoveWindow(const void* nativeWindow) {
    std::lock_guard guard(m_lock);
    RemoveAll(m_byWindow, nativeWindow);
}

std::size_t ControlReferences::Count() const {
    std::lock_guard guard(m_lock);
    return m_bindings.size();
}

template <class Key>
void ControlReferences::RemoveAll(std::unordered_map<Key, Index>& index, Key key) {
    const auto found = index.find(key);
    if (found == index.end()) return;
    const Index doomed = found->second;
    for (const Bindings::iterator binding : doomed) Remove(binding);
}

void ControlReferences::Remove(Bindings::iterator binding) {
    Forget(m_byView, binding->view, binding);
    Forget(m_byObject, static_cast<const CWnd*>(binding->wnd), binding);
    if (binding->nativeWindow) Forget(m_byWindow, binding->nativeWindow, binding);
    m_bindings.erase(binding);
}

template <class Key>
void ControlReferences::Forget(std::unordered_map<Key, Index>& index, Key key,
                               Bindings::iterator binding) {
    const auto found = index.find(key);
    Index& bindings = found->second;
    bindings.erase(std::find(bindings.begin(), bindings.end(), binding));
    if (bindings.empty()) index.erase(found);
}

} // namespace vm
