// The dialogs that show a bank leave for an instrument, or arrive from one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <afxcmn.h>
#include <afxwin.h>

#include "BankSender.h"

/// IDOK when all messages have left; IDCANCEL when the user or the port ended it.
class SendBankDialog : public CDialog {
public:
    SendBankDialog(CWnd* parent, const Bank& bank, MidiLink& link);
    BOOL OnInitDialog() override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

    /// What happened, for the status line.
    std::string Summary() const;

private:
    void OnTick();

    BankSender m_sender;
    MidiLink& m_link;
    CProgressCtrl m_bar;
    BankSender::State m_state = BankSender::State::Sending;
};

/// Collects what arrives. Ends with IDOK by itself, some seconds after the last message.
class ReceiveBankDialog : public CDialog {
public:
    explicit ReceiveBankDialog(CWnd* parent);
    BOOL OnInitDialog() override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

    void Add(const SysexBytes& message);
    const std::vector<SysexBytes>& Messages() const { return m_messages; }

private:
    void OnTick();
    void ShowCount();

    std::vector<SysexBytes> m_messages;
    std::size_t m_bytes = 0;
    DWORD m_lastAt = 0;
    CProgressCtrl m_bar;
};
