// The commands of the menus, their states, and the entries that the program fills in.
#include "MainFrame.h"

#include <algorithm>

#include "BankFolder.h"
#include "MenuEntries.h"
#include "Report.h"
#include "resource.h"

namespace {

constexpr MenuEntries kRecentEntries = {kRecentPosition, ID_FILE_RECENT, RecentBanks::kMaximum,
                                        "No Recent Banks"};
constexpr std::size_t kMostBanks = 20'000;
constexpr MenuEntries kFolderEntries = {0, ID_FILE_FOLDER, 40, "No Banks"};
constexpr MenuEntries kOutputEntries = {0, ID_MIDI_OUTPUT, 40, "No Outputs"};
constexpr MenuEntries kInputEntries = {0, ID_MIDI_INPUT, 40, "No Inputs"};
constexpr MenuEntries kInstrumentEntries = {0, ID_INSTRUMENT, 40, "No Instruments Yet"};

// The state of a menu item. SetFnDefined comes first: a command that is only ever disabled would
// count as one without a handler.
void SetState(CCmdUI& state, bool enabled) {
    state.SetFnDefined(true);
    state.Enable(enabled);
}

void SetChecked(CCmdUI& state, bool isChecked) {
    SetState(state, true);
    state.SetCheck(isChecked);
}

std::vector<std::string> NumberedTitles(const std::vector<std::string>& texts) {
    std::vector<std::string> titles;
    for (const std::string& text : texts) titles.push_back(NumberedTitle(titles.size() + 1, text));
    return titles;
}

bool IsPort(const std::vector<std::string>& names, int index, const std::string& open) {
    const auto port = static_cast<std::size_t>(index);
    return port < names.size() && names[port] == open && PortNamed(names, open) == port;
}

} // namespace

BOOL MainFrame::OnCommandId(int id) {
    switch (id) {
    case ID_FILE_OPEN:
        OnOpen();
        return TRUE;
    case ID_FILE_OPEN_VOICES:
        OpenDemoBank("voices.syx");
        return TRUE;
    case ID_FILE_OPEN_PATCHES:
        OpenDemoBank("patches.syx");
        return TRUE;
    case ID_FILE_SAVE:
        SaveBank();
        return TRUE;
    case ID_FILE_SAVE_AS:
        OnSaveAs();
        return TRUE;
    case ID_FILE_SHEET:
        OnSaveSheet();
        return TRUE;
    case ID_EDIT_COPY:
        OnCopySheet();
        return TRUE;
    case ID_FILE_FTP:
        OnFtp();
        return TRUE;
    case ID_FILE_QUIT:
        PostQuitMessage(0);
        return TRUE;
    case ID_EDIT_DELETE:
        OnDeleteMessage();
        return TRUE;
    case ID_EDIT_DETAILS:
        OnDetails();
        return TRUE;
    case ID_EDIT_FIND:
        if (!m_find.view) MakeFindBar();
        m_find.Begin();
        LayOut();
        return TRUE;
    case ID_EDIT_FIND_NEXT:
        if (m_find.view) m_find.FindNext();
        return TRUE;
    case ID_MIDI_PORTS:
        OnPorts();
        return TRUE;
    case ID_MIDI_SEND:
        OnSend();
        return TRUE;
    case ID_MIDI_SEND_BANK:
        OnSendBank();
        return TRUE;
    case ID_MIDI_RECEIVE_BANK:
        OnReceiveBank();
        return TRUE;
    case ID_MIDI_CHORD:
        OnChord();
        return TRUE;
    case ID_MIDI_VERIFY:
        OnVerify();
        return TRUE;
    case ID_MIDI_SLOW:
        OnSlow();
        return TRUE;
    case ID_EDIT_VOICE:
        OnEditVoice();
        return TRUE;
    case ID_HELP_PLUGINS:
        OnPlugins();
        return TRUE;
    case ID_VIEW_HEX:
        Toggle(m_shown.hex, "hex pane");
        return TRUE;
    case ID_VIEW_HEADER:
        Toggle(m_shown.header, "header");
        return TRUE;
    case ID_VIEW_TREE:
        Toggle(m_shown.tree, "tree");
        return TRUE;
    case ID_VIEW_DETAIL:
        Toggle(m_shown.detail, "details");
        return TRUE;
    case ID_VIEW_MONITOR:
        Toggle(m_shown.monitor, "monitor");
        return TRUE;
    case ID_HELP_CONTENTS:
        AfxGetApp()->WinHelp(1);
        Report("help");
        return TRUE;
    default:
        return OnEntry(id);
    }
}

BOOL MainFrame::OnEntry(int id) {
    const struct {
        const MenuEntries& entries;
        void (*choose)(MainFrame& frame, int index);
    } runs[] = {{kRecentEntries, [](MainFrame& frame, int i) { frame.OpenRecent(i); }},
                {kFolderEntries, [](MainFrame& frame, int i) { frame.OpenFromFolder(i); }},
                {kOutputEntries, [](MainFrame& frame, int i) { frame.OnOutput(i); }},
                {kInputEntries, [](MainFrame& frame, int i) { frame.OnInput(i); }},
                {kInstrumentEntries, [](MainFrame& frame, int i) { frame.OpenInstrument(i); }}};
    for (const auto& run : runs) {
        const int index = run.entries.IndexOf(id);
        if (index < 0) continue;
        run.choose(*this, index);
        return TRUE;
    }
    return FALSE;
}

BOOL MainFrame::OnUpdateCommand(int id, CCmdUI& state) {
    switch (id) {
    case ID_MIDI_SEND:
        SetState(state, m_selected >= 0 && m_midi.CanSend());
        return TRUE;
    case ID_EDIT_DELETE:
        SetState(state, m_selected >= 0 && m_bank.messages.size() > 1 && !m_midi.IsSending());
        return TRUE;
    case ID_MIDI_VERIFY:
    case ID_FILE_SAVE_AS:
    case ID_FILE_SHEET:
    case ID_EDIT_COPY:
    case ID_EDIT_DETAILS:
    case ID_EDIT_FIND_NEXT:
        SetState(state, !m_bank.messages.empty());
        return TRUE;
    case ID_MIDI_SLOW:
        ShowPorts(); // asked when the menu opens: what is plugged in by now?
        SetState(state, !m_midi.IsSending());
        state.SetCheck(m_slow);
        return TRUE;
    case ID_EDIT_VOICE:
        SetState(state, m_editor.IsOpen() || SelectedEditor());
        state.SetCheck(m_editor.IsOpen());
        return TRUE;
    case ID_VIEW_HEX:
        SetChecked(state, m_shown.hex);
        return TRUE;
    case ID_VIEW_HEADER:
        SetChecked(state, m_shown.header);
        return TRUE;
    case ID_VIEW_TREE:
        SetChecked(state, m_shown.tree);
        return TRUE;
    case ID_VIEW_DETAIL:
        SetChecked(state, m_shown.detail);
        return TRUE;
    case ID_VIEW_MONITOR:
        SetChecked(state, m_shown.monitor);
        return TRUE;
    case ID_MIDI_SEND_BANK:
        SetState(state, !m_bank.messages.empty() && m_midi.CanSend());
        return TRUE;
    case ID_MIDI_RECEIVE_BANK:
        SetState(state, true);
        return TRUE;
    case ID_MIDI_CHORD:
        SetState(state, m_chordStep == 0 && m_midi.CanSend());
        return TRUE;
    case ID_FILE_SAVE:
        SetState(state, m_changed);
        return TRUE;
    case ID_FILE_OPEN:
    case ID_HELP_CONTENTS:
    case ID_FILE_OPEN_VOICES:
    case ID_FILE_OPEN_PATCHES:
    case ID_FILE_FTP:
    case ID_FILE_QUIT:
    case ID_EDIT_FIND:
    case ID_MIDI_PORTS:
    case ID_HELP_PLUGINS:
        SetState(state, true);
        return TRUE;
    default:
        return OnUpdateEntry(id, state);
    }
}

BOOL MainFrame::OnUpdateEntry(int id, CCmdUI& state) {
    if (const int index = kRecentEntries.IndexOf(id); index >= 0) {
        if (index == 0) ShowFolder(); // asked when the menu opens: what is in the folder by now?
        SetState(state, index < m_recent.Count());
    } else if (const int file = kFolderEntries.IndexOf(id); file >= 0) {
        SetState(state, !m_folderBanks.empty());
    } else if (const int output = kOutputEntries.IndexOf(id); output >= 0) {
        SetState(state, !m_outputs.empty() && !m_midi.IsSending());
        state.SetCheck(IsPort(m_outputs, output, m_midi.OutputName()));
    } else if (const int input = kInputEntries.IndexOf(id); input >= 0) {
        SetState(state, !m_inputs.empty() && !m_midi.IsSending());
        state.SetCheck(IsPort(m_inputs, input, m_midi.InputName()));
    } else if (const int entry = kInstrumentEntries.IndexOf(id); entry >= 0) {
        const auto instrument = static_cast<std::size_t>(entry);
        SetState(state,
                 instrument < m_instruments.size() && !m_instruments[instrument].lastBank.empty());
    } else {
        return FALSE;
    }
    return TRUE;
}

CMenu* MainFrame::Menu(int index, int subMenu) {
    CMenu* found = GetMenu() ? GetMenu()->GetSubMenu(index) : nullptr;
    return found && subMenu >= 0 ? found->GetSubMenu(subMenu) : found;
}

void MainFrame::ShowRecentBanks() {
    std::vector<std::string> texts;
    for (int i = 0; i < m_recent.Count(); ++i) texts.push_back(m_recent.Text(i));
    kRecentEntries.Show(Menu(kFileMenu), NumberedTitles(texts));
}

void MainFrame::ShowFolder() {
    m_folderBanks = BanksIn(m_folder, kMostBanks);
    const auto limit = static_cast<std::size_t>(kFolderEntries.limit);
    std::vector<std::string> titles = m_folderBanks;
    titles.resize(std::min(limit, titles.size())); // the tree has the others
    kFolderEntries.Show(Menu(kFileMenu, kFolderMenu), NumberedTitles(titles));
    m_tree.ShowBanks(m_folder, m_folderBanks);
}

void MainFrame::ShowPorts() {
    m_outputs = MidiLink::Outputs();
    m_inputs = MidiLink::Inputs();
    kOutputEntries.Show(Menu(kMidiMenu, kOutputMenu), NumberedTitles(m_outputs));
    kInputEntries.Show(Menu(kMidiMenu, kInputMenu), NumberedTitles(m_inputs));
}

void MainFrame::ShowInstruments() {
    std::vector<std::string> texts;
    for (const Instrument& each : m_instruments) {
        const std::string count = std::to_string(each.messages);
        texts.push_back(each.name + " (" + count +
                        (each.messages == 1 ? " message)" : " messages)"));
    }
    kInstrumentEntries.Show(Menu(kInstrumentsMenu), NumberedTitles(texts));
    m_tree.ShowInstruments(m_instruments);
}
