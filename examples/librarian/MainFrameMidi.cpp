// Sending the selected message, comparing what comes back, and the choice of ports.
#include "FrameIds.h"
#include "MainFrame.h"
#include "Report.h"
#include "TransferDialogs.h"

namespace {

constexpr DWORD kEchoLimit = 2000; // milliseconds after the last byte has left

} // namespace

// A port that is gone stays the setting: it may be back next time.
BOOL MainFrame::OpenPorts() {
    m_midi.SetTarget(this, WM_MIDI_INPUT);
    const BOOL output = m_midi.OpenOutput(LoadSetting(setting::kMidiOut));
    const BOOL input = m_midi.OpenInput(LoadSetting(setting::kMidiIn));
    ShowConnection();
    return output && input;
}

void MainFrame::OnSend() {
    if (m_selected < 0 || m_midi.IsSending()) return;
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

void MainFrame::OnSlow() {
    m_slow = !m_slow;
    m_midi.SetSlow(m_slow);
    SetStatus(m_slow ? "Sends 1,000 bytes a second from now on"
                     : "Sends at the speed of a MIDI cable from now on");
    Report("slow %s", m_slow ? "on" : "off");
}

void MainFrame::OnOutput(int index) {
    const auto port = static_cast<std::size_t>(index);
    if (port >= m_outputs.size() || m_midi.IsSending()) return;
    const std::string name = m_outputs[port];
    EndChord();
    if (name != m_midi.OutputName()) m_midi.OpenOutput(name);
    StoreSetting(setting::kMidiOut, name);
    SettingsChanged();
    ShowConnection();
    SetStatus("Sends to " + m_midi.OutputName());
    Report("output %s", m_midi.OutputName().c_str());
}

void MainFrame::OnInput(int index) {
    const auto port = static_cast<std::size_t>(index);
    if (port >= m_inputs.size() || m_midi.IsSending()) return;
    const std::string name = m_inputs[port];
    if (name != m_midi.InputName()) m_midi.OpenInput(name);
    StoreSetting(setting::kMidiIn, name);
    SettingsChanged();
    ShowConnection();
    SetStatus("Receives from " + m_midi.InputName());
    Report("input %s", m_midi.InputName().c_str());
}

// While a send is under way: has it left, has its echo come? That of an editor's has none.
void MainFrame::OnMidiTimer() {
    if (m_midi.IsSending()) return;
    if (!m_sendPending) {
        KillTimer(kMidiTimer);
        return;
    }
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
    MidiMoment moment;
    while (m_midi.TakeHeard(moment)) m_monitor.Add(moment);
    SysexBytes message;
    while (m_midi.TakeReceived(message)) {
        const bool isEcho = m_sendPending && m_echo.empty();
        if (isEcho) m_echo = message;
        if (m_receiving) m_receiving->Add(message);
        if (isEcho || m_receiving) continue;
        const SysexInfo info = DescribeSysex(message);
        SetStatus("Received " + std::to_string(message.size()) + " bytes: " + info.manufacturer +
                  ", " + info.kind);
    }
}

void MainFrame::ShowConnection() {
    m_header.SetConnection("MIDI out: " + m_midi.OutputName() + ", in: " + m_midi.InputName());
}

void MainFrame::FinishSend(const std::string& status) {
    KillTimer(kMidiTimer);
    m_sendPending = false;
    SetStatus(status);
}
