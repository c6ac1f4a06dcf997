#include "MainFrame.h"

#include <algorithm>

#include "Report.h"
#include "resource.h"

namespace {

constexpr UINT WM_MIDI_INPUT = WM_USER + 1;
constexpr UINT kMidiTimer = 1;
constexpr UINT kMidiTimerInterval = 20;
constexpr DWORD kEchoLimit = 2000; // milliseconds after the last byte has left
constexpr int kStatusHeight = 20;
constexpr int kHexShare = 45; // per cent of the space of list and hex pane

// Ctrl+S sends from the panes too. A key is the character, and its native key code shifted by 8.
constexpr AccelEntry kAccelerators[] = {
    {ID_MIDI_SEND, 'S' | 0x01 << 8, 1, 0, 0},
    {-1, 0, 0, 0, 0},
};

// The state of a menu item. SetFnDefined comes first: a command that is only ever disabled would
// count as one without a handler.
void SetState(CCmdUI& state, bool enabled) {
    state.SetFnDefined(true);
    state.Enable(enabled);
}

} // namespace

BOOL MainFrame::Open() {
    const CRect place(120, 90, 120 + 760, 90 + 560);
    if (!Create("", "Librarian", WS_OVERLAPPEDWINDOW | WS_VISIBLE, place)) return FALSE;
    accelTable = kAccelerators;
    MakeParts();
    LayOut();
    const BOOL connected = m_midi.Open(this, WM_MIDI_INPUT);
    m_header.SetConnection("MIDI out: " + m_midi.OutputName() + ", in: " + m_midi.InputName());
    SetStatus(connected ? "Ready" : "Ready, but MIDI output or input is missing");
    m_list.SetFocus();
    return TRUE;
}

int MainFrame::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_SIZE:
        LayOut();
        return 1;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = CPoint(600, 380);
        return 1;
    case WM_COMMAND:
        if (OnCommandId(LOWORD(wParam))) return 1;
        break;
    case WM_UPDATECOMMANDUI:
        if (OnUpdateCommand(static_cast<int>(wParam), *reinterpret_cast<CCmdUI*>(lParam))) return 1;
        break;
    case WM_NOTIFY:
        if (wParam != IDC_MESSAGES) break;
        OnNotifyList(*reinterpret_cast<const NMLISTVIEW*>(lParam));
        return 1;
    case WM_DROPFILES:
        OnDrop(reinterpret_cast<NSArray*>(wParam));
        return 1;
    case WM_TIMER:
        OnMidiTimer();
        return 1;
    case WM_MIDI_INPUT:
        OnMidiInput();
        return 1;
    case WM_QUERYCLOSE:
        return OnQueryClose() ? 0 : 1;
    case WM_DESTROY:
        OnDestroyed();
        return 1;
    }
    return CFrameWnd::MessageMap(message, wParam, lParam);
}

// Window

void MainFrame::MakeParts() {
    const CRect anywhere(0, 0, 10, 10); // LayOut places them
    m_header.Create("", "", WS_CHILD | WS_VISIBLE, anywhere, this, IDC_HEADER);
    m_list.Create(WS_CHILD | WS_VISIBLE, anywhere, this, IDC_MESSAGES);
    m_list.AddColumns();
    m_hex.Create("", "", WS_CHILD | WS_VISIBLE, anywhere, this, IDC_HEX);
    m_status.Create(this);
    m_made = true;
}

void MainFrame::LayOut() {
    if (!m_made) return;
    CRect client;
    GetClientRect(client);
    const int width = client.right;
    const int bottom = client.bottom - kStatusHeight;
    const int top = m_header.IsWindowVisible() ? HeaderBand::kHeight : 0;
    const int hexHeight = m_hex.IsWindowVisible() ? (bottom - top) * kHexShare / 100 : 0;
    if (top) m_header.MoveWindow(0, 0, width, top);
    m_list.MoveWindow(0, top, width, bottom - hexHeight - top);
    if (hexHeight) m_hex.MoveWindow(0, bottom - hexHeight, width, hexHeight);
    m_status.MoveWindow(0, bottom, width, kStatusHeight);
    Report("sized %d %d", client.right, client.bottom);
}

BOOL MainFrame::OnQueryClose() {
    if (!m_midi.IsSending()) return TRUE;
    SetStatus("Still sending: the window closes when the message is out");
    Report("refused close");
    return FALSE;
}

void MainFrame::OnDestroyed() {
    m_midi.Close();
    m_made = false;
    Report("closed");
    PostQuitMessage(0);
}

void MainFrame::Toggle(CWnd& part, const char* name) {
    const BOOL show = !part.IsWindowVisible();
    part.ShowWindow(show ? SW_SHOW : SW_HIDE);
    LayOut();
    Report("%s %s", name, show ? "shown" : "hidden");
}

void MainFrame::SetStatus(const std::string& status) {
    m_status.SetPaneText(0, status.c_str());
}

// Commands

BOOL MainFrame::OnCommandId(int id) {
    switch (id) {
    case ID_FILE_OPEN_VOICES:
        OpenDemoBank("voices.syx");
        return TRUE;
    case ID_FILE_OPEN_PATCHES:
        OpenDemoBank("patches.syx");
        return TRUE;
    case ID_FILE_QUIT:
        PostQuitMessage(0);
        return TRUE;
    case ID_MIDI_SEND:
        OnSend();
        return TRUE;
    case ID_MIDI_VERIFY:
        OnVerify();
        return TRUE;
    case ID_MIDI_SLOW:
        OnSlow();
        return TRUE;
    case ID_VIEW_HEX:
        Toggle(m_hex, "hex pane");
        return TRUE;
    case ID_VIEW_HEADER:
        Toggle(m_header, "header");
        return TRUE;
    default:
        return FALSE;
    }
}

BOOL MainFrame::OnUpdateCommand(int id, CCmdUI& state) {
    switch (id) {
    case ID_MIDI_SEND:
        SetState(state, m_selected >= 0 && !m_sendPending && m_midi.CanSend());
        return TRUE;
    case ID_MIDI_VERIFY:
        SetState(state, !m_bank.messages.empty());
        return TRUE;
    case ID_MIDI_SLOW:
        SetState(state, !m_sendPending);
        state.SetCheck(m_slow);
        return TRUE;
    case ID_VIEW_HEX:
        SetState(state, true);
        state.SetCheck(m_hex.IsWindowVisible());
        return TRUE;
    case ID_VIEW_HEADER:
        SetState(state, true);
        state.SetCheck(m_header.IsWindowVisible());
        return TRUE;
    case ID_FILE_OPEN_VOICES:
    case ID_FILE_OPEN_PATCHES:
    case ID_FILE_QUIT:
        SetState(state, true);
        return TRUE;
    default:
        return FALSE;
    }
}

void MainFrame::OpenDemoBank(const char* name) {
    char folder[MAX_PATH] = {};
    if (AfxResourcePath(folder, sizeof folder) > 0)
        OpenBank((std::string(folder) + "/" + name).c_str());
}

void MainFrame::OpenBank(const char* path) {
    std::string error;
    if (m_sendPending) error = "Still sending: open the file afterwards";
    if (!error.empty() || !ReadBank(path, m_bank, error)) {
        SetStatus(error);
        Report("failed %s", error.c_str());
        return;
    }
    m_selected = -1;
    m_hex.Clear();
    m_list.ShowBank(m_bank);
    m_header.ShowBank(m_bank);
    SetTitle((m_bank.name + " - Librarian").c_str());
    SetStatus("Opened " + m_bank.name);
    Report("opened %s %zu messages", m_bank.name.c_str(), m_bank.messages.size());
}

void MainFrame::OnSend() {
    if (m_selected < 0 || m_sendPending) return;
    const SysexBytes& bytes = m_bank.messages[static_cast<std::size_t>(m_selected)].bytes;
    if (!m_midi.Send(bytes)) {
        SetStatus("There is no MIDI output to send to");
        return;
    }
    m_sendPending = true;
    m_sentReported = false;
    m_echo.clear();
    SetStatus("Sending " + std::to_string(bytes.size()) + " bytes...");
    Report("sending %zu", bytes.size());
    SetTimer(kMidiTimer, kMidiTimerInterval);
}

void MainFrame::OnVerify() {
    std::size_t count[3] = {};
    for (BankMessage& message : m_bank.messages) {
        message.info = DescribeSysex(message.bytes);
        ++count[static_cast<int>(message.info.checksum)];
    }
    m_list.Invalidate();
    const std::string result = std::to_string(count[1]) + " right, " + std::to_string(count[2]) +
                               " bad, " + std::to_string(count[0]) + " without checksum";
    SetStatus("Checksums: " + result);
    Report("verified %s", result.c_str());
}

void MainFrame::OnSlow() {
    m_slow = !m_slow;
    m_midi.SetSlow(m_slow);
    SetStatus(m_slow ? "Sends 1,000 bytes a second from now on"
                     : "Sends at the speed of a MIDI cable from now on");
    Report("slow %s", m_slow ? "on" : "off");
}

// Events

void MainFrame::OnDrop(NSArray* paths) {
    char path[MAX_PATH] = {};
    if (DragQueryFile(paths, 0xFFFFFFFF, nullptr, 0) == 0) return;
    DragQueryFile(paths, 0, path, sizeof path);
    DragFinish(paths);
    if (path[0]) OpenBank(path);
}

void MainFrame::OnNotifyList(const NMLISTVIEW& notification) {
    if (notification.hdr.code == NM_DBLCLK) {
        OnSend();
        return;
    }
    m_selected = notification.iItem < 0 ? -1 : static_cast<int>(notification.lParam);
    if (m_selected < 0) {
        m_hex.Clear();
        return;
    }
    m_hex.ShowMessage(m_bank.messages[static_cast<std::size_t>(m_selected)].bytes);
    Report("selected %d", m_selected + 1);
}

// While a send is under way: has it left, has its echo come?
void MainFrame::OnMidiTimer() {
    if (m_midi.IsSending() || !m_sendPending) return;
    const SysexBytes& sent = m_midi.LastSent();
    if (!m_sentReported) {
        m_sentReported = true;
        m_sentAt = GetTickCount();
        Report("sent %zu", sent.size());
    }
    if (!m_echo.empty()) {
        const bool same = m_echo == sent;
        Report("received %zu %s", m_echo.size(), same ? "identical" : "different");
        FinishSend(EchoText(sent, m_echo));
    } else if (GetTickCount() - m_sentAt > kEchoLimit) {
        Report("received nothing");
        FinishSend("Sent " + std::to_string(sent.size()) + " bytes, nothing came back");
    }
}

void MainFrame::OnMidiInput() {
    SysexBytes message;
    while (m_midi.TakeReceived(message)) {
        if (m_sendPending && m_echo.empty()) {
            m_echo = std::move(message);
            continue;
        }
        const SysexInfo info = DescribeSysex(message);
        SetStatus("Received " + std::to_string(message.size()) + " bytes: " + info.manufacturer +
                  ", " + info.kind);
    }
}

void MainFrame::FinishSend(const std::string& status) {
    KillTimer(kMidiTimer);
    m_sendPending = false;
    SetStatus(status);
}
