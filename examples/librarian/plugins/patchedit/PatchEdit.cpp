// A plug-in with windows: the editor for six-operator voices. Its windows are the library's, which
// the program and this module share.
#include <memory>

#include "VoiceEditor.h"

namespace {

MidiBytes BytesOf(const unsigned char* message, std::size_t size) {
    return {message, message + size};
}

VoiceEditor& EditorOf(void* editor) {
    return *static_cast<VoiceEditor*>(editor);
}

int CanEdit(const unsigned char* message, std::size_t size) {
    return VoiceCount(BytesOf(message, size)) > 0;
}

void* CreateEditor(void* window, const LibrarianHost* host) {
    CWnd* const parent = CWnd::FromHandlePermanent(static_cast<HWND>(window));
    auto editor = std::make_unique<VoiceEditor>(*host);
    return parent && editor->Open(parent) ? editor.release() : nullptr;
}

void Resize(void* editor, int width, int height) {
    EditorOf(editor).MoveWindow(0, 0, width, height);
}

void Show(void* editor, const unsigned char* message, std::size_t size) {
    EditorOf(editor).Show(BytesOf(message, size));
}

int Leave(void* editor) {
    return EditorOf(editor).MayLeave();
}

void Destroy(void* editor) {
    EditorOf(editor).DestroyWindow();
    delete &EditorOf(editor);
}

constexpr int kHeight = 300;
constexpr LibrarianEditor kEditor = {kHeight, CanEdit, CreateEditor, Resize, Show, Leave, Destroy};
constexpr LibrarianEditorRecord kRecord = {{LIBRARIAN_EDITOR_VERSION, "Voice editor", nullptr},
                                           &kEditor};

} // namespace

LIBRARIAN_PLUGIN_EXPORT const LibrarianPluginRecord* LibrarianPlugin(void) {
    return &kRecord.plugin;
}
