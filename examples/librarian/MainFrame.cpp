// The window itself: creation, layout, its place on the screen, its end.
#include "MainFrame.h"

#include "FontScale.h"
#include "FrameIds.h"
#include "Report.h"
#include "resource.h"

namespace {

constexpr UINT kSaveDelay = 5000; // milliseconds from a change of the settings to its writing

// The frame of the first run.
const CRect kStandardPlace(90, 60, 90 + 1060, 60 + 760);

// Ctrl+L sends from the panes too. A key is the character, and its native key code shifted by 8.
constexpr AccelEntry kAccelerators[] = {
    {ID_MIDI_SEND, 'L' | 0x25 << 8, 1, 0, 0},
    {-1, 0, 0, 0, 0},
};

// An object without a window answers with the screen.
CRect ScreenRect() {
    CRect screen;
    CWnd().GetWindowRect(screen);
    return screen;
}

// A part without a place is hidden.
void Place(CWnd& part, const CRect& rect) {
    const bool isShown = rect.right > rect.left && rect.bottom > rect.top;
    if (isShown) part.MoveWindow(rect);
    if (!part.IsWindowVisible() == isShown) part.ShowWindow(isShown ? SW_SHOW : SW_HIDE);
}

bool IsSame(const CRect& a, const CRect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

} // namespace

BOOL MainFrame::Open() {
    const BOOL hasPlace = LoadPlace(m_place);
    if (!hasPlace) m_place = kStandardPlace;
    m_place = FitOnScreen(m_place, ScreenRect());
    if (!Create("", "Librarian", WS_OVERLAPPEDWINDOW | WS_VISIBLE, m_place)) return FALSE;
    MoveWindow(m_place); // Create was given the place of the content
    accelTable = kAccelerators;
    MakeParts();
    if (!hasPlace) GrowForFont();
    LayOut();
    m_recent.Load();
    m_folder = LoadSetting(setting::kFolder);
    m_instruments = LoadInstruments();
    const BOOL connected = OpenPorts();
    LoadPlugins();
    SetStatus((connected ? "Ready" : "Ready, but MIDI output or input is missing") + PluginWords());
    ShowRecentBanks();
    ShowFolder();
    ShowPorts();
    ShowInstruments();
    m_list.SetFocus();
    return TRUE;
}

// The first run's place is for a small font, which is known only now.
void MainFrame::GrowForFont() {
    CRect place = m_place;
    place.right = place.left + Scaled(kStandardPlace.right - kStandardPlace.left);
    place.bottom = place.top + Scaled(kStandardPlace.bottom - kStandardPlace.top);
    place = FitOnScreen(place, ScreenRect());
    if (place.right - place.left > m_place.right - m_place.left) MoveWindow(place);
}

int MainFrame::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_SIZE:
        LayOut();
        NotePlace();
        return 1;
    case WM_MOVE:
        if (wParam == 0) NotePlace(); // not when it was minimised
        return 1;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize =
            CPoint(kSmallestWidth, kSmallestHeight);
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
    case WM_OPEN_DROPPED:
        OpenDropped();
        return 1;
    case WM_CONTEXTMENU:
        return OnContextMenu(
            CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))));
    case WM_TIMER:
        OnTimerId(static_cast<UINT>(wParam));
        return 1;
    case WM_MIDI_INPUT:
        OnMidiInput();
        return 1;
    case WM_PLUGIN_TRIED:
        OnPluginTried();
        return 1;
    case WM_QUERYCLOSE:
        return OnQueryClose() ? 0 : 1;
    case WM_DESTROY:
        OnDestroyed();
        return 1;
    }
    return CFrameWnd::MessageMap(message, wParam, lParam);
}

void MainFrame::MakeParts() {
    const CRect anywhere(0, 0, 10, 10); // LayOut places them
    MakeTree();
    SetDesktopFont(m_tree.FontHeight());
    m_header.Create("", "", WS_CHILD | WS_VISIBLE, anywhere, this, IDC_HEADER);
    m_list.Create(WS_CHILD | WS_VISIBLE | LVS_SINGLESEL, anywhere, this, IDC_MESSAGES);
    m_list.AddColumns();
    m_hex.Create("", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, anywhere, this, IDC_HEX);
    m_detail.Create("", "", WS_CHILD | WS_VISIBLE, anywhere, this, IDC_DETAIL);
    m_monitor.Create("", "", WS_CHILD | WS_VISIBLE, anywhere, this, IDC_MONITOR);
    MakeEditorPane();
    m_status.Create(this);

    DragAcceptFiles();
    m_list.SetAccessibleName("Messages"); // for people who use a screen reader
    m_status.SetAccessibleName("Status");
    m_made = true;
}

void MainFrame::MakeTree() {
    m_tree.instrumentChosen = [this](int index) { return OpenInstrument(index); };
    m_tree.bankChosen = [this](int index) { return OpenFromFolder(index); };
    m_tree.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), this, IDC_TREE);
    m_tree.SetAccessibleName("Instruments and banks");
}

void MainFrame::LayOut() {
    if (!m_made) return;
    CRect client;
    GetClientRect(client);
    m_shown.find = m_find.view && m_find.IsWindowVisible();
    m_shown.editorHeight = m_editor.Height();
    const FrameRects rects = LayOutFrame(client.right, client.bottom, m_shown);
    Place(m_header, rects.header);
    if (m_shown.find) m_find.MoveWindow(rects.find);
    Place(m_tree, rects.tree);
    Place(m_list, rects.list);
    Place(m_hex, rects.hex);
    Place(m_detail, rects.detail);
    if (m_editor.IsOpen()) m_editor.MoveWindow(rects.editor);
    Place(m_monitor, rects.monitor);
    Place(m_status, rects.status);
    Report("sized %d %d", client.right, client.bottom);
}

void MainFrame::NotePlace() {
    if (!m_made) return;
    CRect place;
    GetWindowRect(place);
    if (IsSame(place, m_place)) return;
    m_place = place;
    m_placeChanged = true;
    SettingsChanged();
    Report("placed %d %d", place.left, place.top);
}

void MainFrame::OnTimerId(UINT id) {
    if (id == kMidiTimer) OnMidiTimer();
    if (id == kSaveTimer) SaveSettings();
    if (id == kChordTimer) OnChordTimer();
}

// Several changes in a row are written together.
void MainFrame::SettingsChanged() {
    if (m_saveScheduled) return;
    m_saveScheduled = true;
    SetTimer(kSaveTimer, kSaveDelay);
}

void MainFrame::SaveSettings() {
    KillTimer(kSaveTimer);
    m_saveScheduled = false;
    if (m_placeChanged) StorePlace(m_place);
    m_placeChanged = false;
    ServiceProfile();
    Report("saved");
}

BOOL MainFrame::OnQueryClose() {
    if (m_midi.IsSending()) {
        SetStatus("Still sending: close the window when the message is out");
        Report("refused close");
        return FALSE;
    }
    if (MayDropChanges()) return TRUE;
    Report("kept open");
    return FALSE;
}

void MainFrame::OnDestroyed() {
    EndChord();
    m_midi.Close();
    m_made = false;
    StopTrials();
    m_editor.Close();
    SaveSettings();
    Report("closed");
    PostQuitMessage(0);
}

void MainFrame::Toggle(bool& isShown, const char* name) {
    isShown = !isShown;
    LayOut();
    Report("%s %s", name, isShown ? "shown" : "hidden");
}

void MainFrame::SetStatus(const std::string& status) {
    m_status.SetPaneText(0, status.c_str());
}
