#include "TransferDialogs.h"

#include <algorithm>

#include "BankFile.h"
#include "MessageShape.h"
#include "MidiLink.h"
#include "Report.h"
#include "resource.h"

namespace {

constexpr UINT kTick = 1;
constexpr UINT kInterval = 20;
constexpr DWORD kSilence = 3000; // milliseconds after which a dump counts as complete

} // namespace

SendBankDialog::SendBankDialog(CWnd* parent, const Bank& bank, MidiLink& link)
    : CDialog(IDD_TRANSFER, parent), m_sender(bank), m_link(link) {}

BOOL SendBankDialog::OnInitDialog() {
    const BOOL handled = CDialog::OnInitDialog();
    SetWindowText("Send Bank");
    m_bar.Attach(GetDlgItem(IDC_TRANSFER_BAR)->view);
    m_bar.SetRange32(0, 100);
    GetDlgItem(IDOK)->ShowWindow(SW_HIDE);
    SetDlgItemText(IDC_TRANSFER_TEXT, m_sender.Words().c_str());
    SetTimer(kTick, kInterval);
    Report("dialog send bank");
    return handled;
}

int SendBankDialog::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_TIMER)) return CDialog::MessageMap(message, wParam, lParam);
    OnTick();
    return 1;
}

void SendBankDialog::OnTick() {
    m_state = m_sender.Step(m_link);
    m_bar.SetPos(m_sender.PerCent());
    SetDlgItemText(IDC_TRANSFER_TEXT, m_sender.Words().c_str());
    if (m_state == BankSender::State::Sending) return;
    KillTimer(kTick);
    EndDialog(m_state == BankSender::State::Done ? IDOK : IDCANCEL);
}

std::string SendBankDialog::Summary() const {
    if (m_state == BankSender::State::Failed) return "There is no MIDI output to send to";
    return m_sender.Words() + (m_state == BankSender::State::Done ? "" : ", then cancelled");
}

ReceiveBankDialog::ReceiveBankDialog(CWnd* parent) : CDialog(IDD_TRANSFER, parent) {}

BOOL ReceiveBankDialog::OnInitDialog() {
    const BOOL handled = CDialog::OnInitDialog();
    SetWindowText("Receive Bank");
    m_bar.Attach(GetDlgItem(IDC_TRANSFER_BAR)->view);
    m_bar.SetRange32(0, static_cast<int>(kSilence));
    ShowCount();
    SetTimer(kTick, kInterval);
    Report("dialog receive bank");
    return handled;
}

int ReceiveBankDialog::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_TIMER)) return CDialog::MessageMap(message, wParam, lParam);
    OnTick();
    return 1;
}

void ReceiveBankDialog::Add(const SysexBytes& message) {
    m_messages.push_back(message);
    m_bytes += message.size();
    m_lastAt = GetTickCount();
    ShowCount();
    Report("taken %zu", message.size());
}

// OK is "Keep": there must be something to keep.
void ReceiveBankDialog::ShowCount() {
    SetDlgItemText(IDC_TRANSFER_TEXT,
                   m_messages.empty() ? "Start the dump on the instrument"
                                      : ("Received " + std::to_string(m_messages.size()) +
                                         (m_messages.size() == 1 ? " message, " : " messages, ") +
                                         CountOfBytes(m_bytes))
                                            .c_str());
    GetDlgItem(IDOK)->EnableWindow(!m_messages.empty());
}

// The bar fills during silence.
void ReceiveBankDialog::OnTick() {
    if (m_messages.empty()) return;
    const DWORD silence = GetTickCount() - m_lastAt;
    m_bar.SetPos(static_cast<int>(std::min(silence, kSilence)));
    if (silence < kSilence) return;
    KillTimer(kTick);
    EndDialog(IDOK);
}
