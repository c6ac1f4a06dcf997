#include "EditorPane.h"

namespace {

EditorPane& PaneOf(void* context) {
    return *static_cast<EditorPane*>(context);
}

int Send(void* context, const unsigned char* message, std::size_t size) {
    return PaneOf(context).send({message, message + size});
}

int Store(void* context, const unsigned char* message, std::size_t size) {
    return PaneOf(context).store({message, message + size});
}

void CloseEditor(void* context) {
    PaneOf(context).Close();
}

} // namespace

BOOL EditorPane::Open(const LibrarianEditor& editor) {
    Close();
    m_host = {this, Send, Store, CloseEditor};
    m_instance = editor.create(view, &m_host);
    if (!m_instance) return FALSE;
    m_editor = &editor;
    ShowWindow(SW_SHOW);
    FitEditor();
    return TRUE;
}

void EditorPane::Close() {
    if (!m_instance) return;
    void* const instance = m_instance;
    m_instance = nullptr;
    m_editor->destroy(instance);
    m_editor = nullptr;
    if (view) ShowWindow(SW_HIDE);
    if (closed) closed();
}

void EditorPane::ShowMessage(const SysexBytes& message) {
    if (IsOpen()) m_editor->show(m_instance, message.data(), message.size());
}

BOOL EditorPane::MayLeave() {
    return !IsOpen() || m_editor->leave(m_instance);
}

int EditorPane::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_SIZE)) return CWnd::MessageMap(message, wParam, lParam);
    FitEditor();
    return 1;
}

void EditorPane::FitEditor() {
    if (!IsOpen()) return;
    CRect client;
    GetClientRect(client);
    m_editor->resize(m_instance, client.right, client.bottom);
}
