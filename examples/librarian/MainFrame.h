// The main window: header band, list of messages, hex pane and status bar, and the commands.
#pragma once

#include <string>

#include <afxext.h>
#include <afxwin.h>

#include "BankFile.h"
#include "HeaderBand.h"
#include "HexPane.h"
#include "MessageList.h"
#include "MidiLink.h"

class MainFrame : public CFrameWnd {
public:
    BOOL Open();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    // Window
    void MakeParts();
    void LayOut();
    BOOL OnQueryClose();
    void OnDestroyed();
    void Toggle(CWnd& part, const char* name);
    void SetStatus(const std::string& status);

    // Commands
    BOOL OnCommandId(int id);
    BOOL OnUpdateCommand(int id, CCmdUI& state);
    void OpenDemoBank(const char* name);
    void OnSend();
    void OnVerify();
    void OnSlow();

    // Events
    void OnDrop(NSArray* paths);
    void OnNotifyList(const NMLISTVIEW& notification);
    void OnMidiTimer();
    void OnMidiInput();

    void OpenBank(const char* path);
    void FinishSend(const std::string& status);

    Bank m_bank;
    int m_selected = -1; // index of a message
    MidiLink m_midi;
    bool m_sendPending = false; // from Send until the echo is there or given up
    bool m_sentReported = false;
    DWORD m_sentAt = 0;
    SysexBytes m_echo;
    bool m_slow = false;

    HeaderBand m_header;
    MessageList m_list;
    HexPane m_hex;
    CStatusBar m_status;
    bool m_made = false;
};
