// Opening banks, the plug-ins that describe them, and the message that is selected.
#include "MainFrame.h"

#include "BankFolder.h"
#include "Report.h"

void MainFrame::LoadPlugins() {
    char folder[MAX_PATH] = {};
    if (AfxApplicationPath(folder, sizeof folder) > 0)
        m_plugins.LoadAll(FolderOf(folder) + "/PlugIns");
    const std::string names = m_plugins.Names();
    Report("plugins %s", names.empty() ? "none" : names.c_str());
}

void MainFrame::OpenDemoBank(const char* name) {
    char folder[MAX_PATH] = {};
    if (AfxResourcePath(folder, sizeof folder) > 0) OpenBank(std::string(folder) + "/" + name);
}

BOOL MainFrame::OpenBank(const std::string& path) {
    std::string error;
    if (m_sendPending) error = "Still sending: open the file afterwards";
    if (!error.empty() || !ReadBank(path.c_str(), m_bank, error)) {
        SetStatus(error);
        Report("failed %s", error.c_str());
        return FALSE;
    }
    m_bankPath = path;
    m_plugins.Describe(m_bank);
    ShowBank();
    RememberBank(path);
    Report("opened %s %zu messages", m_bank.name.c_str(), m_bank.messages.size());
    return TRUE;
}

void MainFrame::ShowBank() {
    m_selected = -1;
    m_hex.Clear();
    m_list.ShowBank(m_bank);
    m_header.ShowBank(m_bank);
    SetTitle((m_bank.name + " - Librarian").c_str());
    SetStatus("Opened " + m_bank.name);
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

void MainFrame::OpenFromFolder(int index) {
    const auto file = static_cast<std::size_t>(index);
    if (file < m_folderBanks.size())
        OpenBank((m_folder == "/" ? "" : m_folder) + "/" + m_folderBanks[file]);
}

// Opens the instrument's last bank, unless it is open, and selects its first message there.
void MainFrame::OpenInstrument(int index) {
    if (static_cast<std::size_t>(index) >= m_instruments.size()) return;
    const Instrument instrument = m_instruments[static_cast<std::size_t>(index)];
    if (instrument.lastBank.empty()) return;
    if (instrument.lastBank != m_bankPath && !OpenBank(instrument.lastBank)) return;
    for (std::size_t i = 0; i < m_bank.messages.size(); ++i) {
        if (InstrumentOf(m_bank.messages[i].bytes) != instrument.name) continue;
        SelectMessage(static_cast<int>(i));
        return;
    }
}

void MainFrame::SelectMessage(int index) {
    const int count = m_list.GetItemCount();
    for (int row = 0; row < count; ++row) {
        if (m_list.GetItemData(row) != static_cast<std::uintptr_t>(index)) continue;
        m_list.SetItemState(-1, 0, LVIS_SELECTED);
        m_list.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
        m_list.EnsureVisible(row, FALSE);
        OnSelected(index);
        return;
    }
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
    OnSelected(notification.iItem < 0 ? -1 : static_cast<int>(notification.lParam));
}

void MainFrame::OnSelected(int index) {
    m_selected = index;
    if (m_selected < 0) {
        m_hex.Clear();
        return;
    }
    const BankMessage& message = m_bank.messages[static_cast<std::size_t>(m_selected)];
    m_hex.ShowMessage(message.bytes);
    Report("selected %d", m_selected + 1);
    if (!message.patch.empty())
        Report("described %s: %s", message.info.kind.c_str(), message.patch.c_str());
}
