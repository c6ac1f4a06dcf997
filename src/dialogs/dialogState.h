// What the dialogs module has one of. Main thread only; never freed.
#pragma once

#include <vector>

class CWnd;

namespace vm {

class ModalRun;

struct DialogState {
    CWnd* LimitMouseEventsToDlg = nullptr; // the running modal dialog
    std::vector<ModalRun*> runs;           // the innermost is last
};

DialogState& Dialogs();

} // namespace vm
