// Opening banks, and the message that is selected.
#include "MainFrame.h"

#include <algorithm>

#include <afxdlgs.h>

#include "BankFolder.h"
#include "FrameIds.h"
#include "Report.h"

namespace {

bool IsOfProgram(const std::string& folder) {
    char resources[MAX_PATH] = {};
    return AfxResourcePath(resources, sizeof resources) > 0 && folder == resources;
}

} // namespace

void MainFrame::OnOpen() {
    CFileDialog dialog(TRUE, "syx", nullptr, OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR,
                       "System Exclusive (*.syx)|*.syx|All files (*.*)|*.*||", this);
    const std::string folder = FolderForBanks();
    dialog.m_ofn.lpstrTitle = "Open Bank";
    dialog.m_ofn.lpstrInitialDir = folder.c_str();
    Report("dialog open");
    if (dialog.DoModal() == IDOK)
        OpenBank(static_cast<const char*>(dialog.GetPathName()));
    else
        Report("open cancelled");
}

void MainFrame::OpenDemoBank(const char* name) {
    char folder[MAX_PATH] = {};
    if (AfxResourcePath(folder, sizeof folder) > 0) OpenBank(std::string(folder) + "/" + name);
}

BOOL MainFrame::OpenBank(const std::string& path) {
    std::string error = WhyStay();
    if (!error.empty() || !ReadBank(path.c_str(), m_bank, error)) {
        SetStatus(error);
        Report("failed %s", error.c_str());
        return FALSE;
    }
    m_bankPath = path;
    m_changed = false;
    m_plugins.Describe(m_bank);
    ShowBank();
    RememberBank(path);
    Report("opened %s %zu messages", m_bank.name.c_str(), m_bank.messages.size());
    return TRUE;
}

// Why another bank cannot be opened now; "" when it can.
std::string MainFrame::WhyStay() {
    if (m_midi.IsSending()) return "Still sending: open the file afterwards";
    return MayDropChanges() ? "" : "Stays with " + m_bank.name;
}

// One that has no file yet.
void MainFrame::TakeNewBank(Bank bank) {
    m_bank = std::move(bank);
    m_bankPath.clear();
    m_changed = true;
    m_plugins.Describe(m_bank);
    ShowBank();
}

void MainFrame::ShowBank() {
    m_editor.Close();
    m_selected = -1;
    m_hex.Clear();
    m_detail.Clear();
    m_list.ShowBank(m_bank);
    m_header.ShowBank(m_bank);
    ShowTitle();
    SetStatus("Opened " + m_bank.name);
}

// With a star while there are changes to save.
void MainFrame::ShowTitle() {
    SetTitle(((m_changed ? "*" : "") + m_bank.name + " - Librarian").c_str());
}

void MainFrame::RememberBank(const std::string& path) {
    if (m_recent.Add(path)) ShowRecentBanks();
    if (RememberInstruments(m_instruments, m_bank, path)) ShowInstruments();
    m_folder = FolderOf(path);
    StoreSetting(setting::kFolder, m_folder);
    ShowFolder();
    SettingsChanged();
}

void MainFrame::OpenRecent(int index) {
    const std::string path = m_recent.Path(index);
    if (path.empty()) return;
    if (OpenFile(path.c_str(), nullptr, OF_EXIST) == HFILE_ERROR) {
        m_recent.Remove(index);
        ShowRecentBanks();
        SettingsChanged();
        SetStatus(NameOf(path) + " is no longer there");
        Report("vanished %s", NameOf(path).c_str());
        return;
    }
    OpenBank(path);
}

BOOL MainFrame::OpenFromFolder(int index) {
    const auto file = static_cast<std::size_t>(index);
    return file < m_folderBanks.size() &&
           OpenBank((m_folder == "/" ? "" : m_folder) + "/" + m_folderBanks[file]);
}

// Opens the instrument's last bank, unless it is open, and selects its first message there.
BOOL MainFrame::OpenInstrument(int index) {
    if (static_cast<std::size_t>(index) >= m_instruments.size()) return FALSE;
    const Instrument instrument = m_instruments[static_cast<std::size_t>(index)];
    if (instrument.lastBank.empty()) return FALSE;
    if (instrument.lastBank != m_bankPath && !OpenBank(instrument.lastBank)) return FALSE;
    for (std::size_t i = 0; i < m_bank.messages.size(); ++i) {
        if (InstrumentOf(m_bank.messages[i].bytes) != instrument.name) continue;
        SelectMessage(static_cast<int>(i));
        break;
    }
    return TRUE;
}

void MainFrame::SelectMessage(int index) {
    const int row = m_list.RowOf(index);
    if (row < 0) return;
    m_list.SetItemState(-1, 0, LVIS_SELECTED);
    m_list.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    m_list.EnsureVisible(row, FALSE);
    OnSelected(index);
}

void MainFrame::OnVerify() {
    std::size_t count[3] = {};
    for (BankMessage& message : m_bank.messages) {
        message.info.checksum = DescribeSysex(message.bytes).checksum;
        ++count[static_cast<int>(message.info.checksum)];
    }
    m_list.Invalidate();
    const std::string result = std::to_string(count[1]) + " right, " + std::to_string(count[2]) +
                               " bad, " + std::to_string(count[0]) + " without checksum";
    SetStatus("Checksums: " + result);
    Report("verified %s", result.c_str());
}

// Opening may ask a question, and the program that the file was dragged from waits for the drop to end.
void MainFrame::OnDrop(NSArray* paths) {
    const UINT count = DragQueryFile(paths, 0xFFFFFFFF, nullptr, 0);
    const bool isFirst = m_dropped.empty();
    for (UINT i = 0; i < count; ++i) {
        char path[MAX_PATH] = {};
        DragQueryFile(paths, i, path, sizeof path);
        if (path[0]) m_dropped.emplace_back(path);
    }
    DragFinish(paths);
    if (isFirst && !m_dropped.empty()) PostMessage(WM_OPEN_DROPPED);
}

// Several files, of one sound each perhaps, are one bank.
void MainFrame::OpenDropped() {
    std::vector<std::string> paths = std::move(m_dropped);
    m_dropped.clear();
    std::string error;
    Bank joined;
    if (paths.size() > 1) ReadBanks(paths, joined, error);
    if (paths.size() == 1 && !OpenBank(paths.front())) return;
    if (paths.size() > 1) {
        if (const std::string why = WhyStay(); !why.empty()) return SetStatus(why);
        joined.name = "Joined bank.syx";
        TakeNewBank(std::move(joined));
        SetStatus("Joined " + std::to_string(paths.size()) + " files; the bank is not saved yet" +
                  (error.empty() ? "" : ". " + error));
        Report("joined %zu files, %zu messages", paths.size(), m_bank.messages.size());
    } else if (!error.empty()) {
        SetStatus(error);
        Report("failed %s", error.c_str());
    }
}

void MainFrame::OnNotifyList(const NMLISTVIEW& notification) {
    if (notification.hdr.code == NM_DBLCLK) {
        OnSend();
        return;
    }
    OnSelected(notification.iItem < 0 ? -1 : static_cast<int>(notification.lParam));
}

void MainFrame::OnSelected(int index) {
    m_selected = index;
    if (m_selected < 0) {
        m_hex.Clear();
        m_detail.Clear();
        return;
    }
    m_hex.ShowMessage(m_bank.messages[static_cast<std::size_t>(m_selected)].bytes);
    Report("selected %d", m_selected + 1);
    ShowSelected();
    FollowSelection();
}

// What is known about it.
void MainFrame::ShowSelected() {
    const BankMessage& message = m_bank.messages[static_cast<std::size_t>(m_selected)];
    m_detail.ShowMessage(message);
    if (!message.patch.empty())
        Report("described %s: %s", message.info.kind.c_str(), message.patch.c_str());
}

// A bank without messages is none: the last one stays.
void MainFrame::OnDeleteMessage() {
    if (m_selected < 0 || m_bank.messages.size() < 2 || !m_editor.MayLeave()) return;
    const int index = m_selected;
    const int row = m_list.RowOf(index);
    m_bank.messages.erase(m_bank.messages.begin() + index);
    m_changed = true;
    ShowBank();
    SetStatus("Message " + std::to_string(index + 1) + " deleted");
    Report("deleted %d, %zu left", index + 1, m_bank.messages.size());
    SelectMessage(static_cast<int>(m_list.GetItemData(std::min(row, m_list.GetItemCount() - 1))));
}

// Asks what to do with changes, if there are any. FALSE: go on with this bank.
BOOL MainFrame::MayDropChanges() {
    if (!m_editor.MayLeave()) return FALSE;
    if (!m_changed) return TRUE;
    Report("asks save");
    const std::string question = "Save the changes to " + m_bank.name + "?";
    switch (MessageBox(view, question.c_str(), "Librarian", MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        return SaveBank();
    case IDNO:
        return TRUE;
    default:
        return FALSE;
    }
}

// Into the bank's own file, or where the user says when it came with the program.
BOOL MainFrame::SaveBank() {
    if (m_bankPath.empty() || IsOfProgram(FolderOf(m_bankPath))) return OnSaveAs();
    std::string error;
    const BOOL saved = WriteBank(m_bankPath, m_bank, error);
    if (saved) m_changed = false;
    ShowTitle();
    SetStatus(saved ? "Saved " + m_bank.name : error);
    Report(saved ? "saved bank %s" : "not saved %s", m_bank.name.c_str());
    return saved;
}

// Where new banks go: to those of the user that were opened last, else into the documents.
std::string MainFrame::FolderForBanks() const {
    if (!m_folder.empty() && !IsOfProgram(m_folder)) return m_folder;
    char documents[MAX_PATH] = {};
    return GetDocumentsPath(documents, sizeof documents);
}

// The first message, behind the selected one for `next`, with the text in a cell of its row.
BOOL MainFrame::FindMessage(const std::string& wanted, bool next) {
    const int count = m_list.GetItemCount();
    int start = 0;
    for (int row = 0; row < count; ++row)
        if (m_list.GetItemData(row) == static_cast<std::uintptr_t>(m_selected))
            start = row + (next ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const auto index = static_cast<int>(m_list.GetItemData((start + i) % count));
        if (!m_list.Matches(static_cast<std::size_t>(index), wanted)) continue;
        SelectMessage(index);
        return TRUE;
    }
    SetStatus("No message with '" + wanted + "'");
    return FALSE;
}
