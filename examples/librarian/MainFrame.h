// The main window: header band, tree, list of messages, panes and status bar, and the commands. Its
// functions are in seven sources: MainFrame.cpp (the window), MainFrameCommands.cpp (the menus), and
// MainFrameBanks.cpp, MainFrameDialogs.cpp, MainFrameEditor.cpp, MainFrameMidi.cpp,
// MainFrameTransfers.cpp.
#pragma once

#include <string>
#include <vector>

#include <afxext.h>
#include <afxwin.h>

#include "BankFile.h"
#include "BankTree.h"
#include "DetailPane.h"
#include "EditorPane.h"
#include "FindBar.h"
#include "FrameLayout.h"
#include "HeaderBand.h"
#include "HexPane.h"
#include "Instruments.h"
#include "MessageList.h"
#include "MidiLink.h"
#include "MonitorPane.h"
#include "PatchSheet.h"
#include "PluginTrials.h"
#include "Plugins.h"
#include "RecentBanks.h"
#include "Settings.h"

class PluginsDialog;
class ReceiveBankDialog;

class MainFrame : public CFrameWnd {
public:
    BOOL Open();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    // Window
    void MakeParts();
    void GrowForFont();
    void LayOut();
    void NotePlace();
    void OnTimerId(UINT id);
    BOOL OnQueryClose();
    void OnDestroyed();
    void MakeTree();
    void Toggle(bool& isShown, const char* name);
    void SetStatus(const std::string& status);
    void SettingsChanged();
    void SaveSettings();

    // Commands
    BOOL OnCommandId(int id);
    BOOL OnEntry(int id);
    BOOL OnUpdateCommand(int id, CCmdUI& state);
    BOOL OnUpdateEntry(int id, CCmdUI& state);
    CMenu* Menu(int index, int subMenu = -1);
    void ShowRecentBanks();
    void ShowFolder();
    void ShowPorts();
    void ShowInstruments();

    // Banks
    void OnOpen();
    void OpenDemoBank(const char* name);
    BOOL OpenBank(const std::string& path);
    void ShowBank();
    void ShowTitle();
    void RememberBank(const std::string& path);
    void OpenRecent(int index);
    BOOL OpenFromFolder(int index);
    BOOL OpenInstrument(int index);
    void SelectMessage(int index);
    void OnVerify();
    void OnDrop(NSArray* paths);
    void OpenDropped();
    void TakeNewBank(Bank bank);
    std::string WhyStay();
    void OnNotifyList(const NMLISTVIEW& notification);
    void OnSelected(int index);
    void ShowSelected();
    void OnDeleteMessage();
    BOOL MayDropChanges();
    BOOL SaveBank();
    std::string FolderForBanks() const;
    BOOL FindMessage(const std::string& wanted, bool next);

    // Plug-ins
    void LoadPlugins();
    void OnPluginTried();
    void PluginsChanged();
    void StopTrials();
    std::string PluginWords() const;
    void OnPlugins();
    void MakeEditorPane();
    const LibrarianEditor* SelectedEditor() const;
    void OnEditVoice();
    void ShowInEditor();
    void FollowSelection();
    int SendEdit(const SysexBytes& message);
    bool StoreEdit(const SysexBytes& message);

    // Dialogs and pop-up menu
    void MakeFindBar();
    void OnPorts();
    void OnDetails();
    BOOL OnSaveAs();
    void OnFtp();
    BOOL OnContextMenu(const CPoint& point);

    // Whole banks
    void OnSendBank();
    void OnReceiveBank();
    void TakeBank(const std::vector<SysexBytes>& messages);
    void OnChord();
    void OnChordTimer();
    void EndChord();
    PatchSheet& Sheet();
    void OnSaveSheet();
    void OnCopySheet();

    // MIDI
    BOOL OpenPorts();
    void OnSend();
    void OnSlow();
    void OnOutput(int index);
    void OnInput(int index);
    void OnMidiTimer();
    void OnMidiInput();
    void ShowConnection();
    void FinishSend(const std::string& status);

    Bank m_bank;
    std::string m_bankPath;
    std::vector<std::string> m_dropped; // the files to open once their drop is over
    int m_selected = -1;                // index of a message
    bool m_changed = false;             // since the bank was opened or saved
    Plugins m_plugins;
    PluginTrials m_trials;
    PluginsDialog* m_pluginsShown = nullptr; // while it is open
    int m_edited = -1;                       // the message that the editor shows

    RecentBanks m_recent;
    std::string m_folder;                   // of the last opened bank
    std::vector<std::string> m_folderBanks; // as its menu shows them
    std::vector<Instrument> m_instruments;
    CRect m_place; // of the frame on the screen
    bool m_placeChanged = false;
    bool m_saveScheduled = false;

    MidiLink m_midi;
    std::vector<std::string> m_outputs; // as their menus show them
    std::vector<std::string> m_inputs;
    bool m_sendPending = false; // from Send until the echo is there or given up
    bool m_sentReported = false;
    DWORD m_sentAt = 0;
    SysexBytes m_echo;
    bool m_slow = false;
    int m_chordStep = 0; // 0 while none is played
    ReceiveBankDialog* m_receiving = nullptr;

    HeaderBand m_header;
    FindBar m_find;
    BankTree m_tree;
    MessageList m_list;
    HexPane m_hex;
    DetailPane m_detail;
    MonitorPane m_monitor;
    PatchSheet m_sheet; // made on first use, never shown
    FrameParts m_shown; // as the user wants it
    EditorPane m_editor;
    CStatusBar m_status;
    bool m_made = false;
};
