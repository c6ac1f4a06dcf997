// The part of the window that a plug-in's editor is in, while one is open.
#pragma once

#include <functional>

#include <afxwin.h>

#include "FontScale.h"

#include "LibrarianPlugin.h"
#include "SysexInfo.h"

class EditorPane : public CWnd {
public:
    /// What the editor asks for; the results are those of LibrarianHost.
    std::function<int(const SysexBytes& message)> send;
    std::function<bool(const SysexBytes& message)> store;
    std::function<void()> closed;

    EditorPane() = default;
    ~EditorPane() override { Close(); }

    /// Opens the editor inside of the pane, which becomes visible. FALSE when it cannot be made.
    BOOL Open(const LibrarianEditor& editor);
    void Close();
    bool IsOpen() const { return m_instance != nullptr; }
    int Height() const { return IsOpen() ? Scaled(m_editor->height) : 0; }
    const LibrarianEditor* Editor() const { return m_editor; }

    void ShowMessage(const SysexBytes& message);
    /// Asks the user about changes that were not stored; FALSE: stay.
    BOOL MayLeave();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void FitEditor();

    const LibrarianEditor* m_editor = nullptr;
    void* m_instance = nullptr;
    LibrarianHost m_host = {};
};
