// Whole banks: to the instrument, from it, and on paper.
#include <afxdlgs.h>

#include "BankFolder.h"
#include "FrameIds.h"
#include "MainFrame.h"
#include "Report.h"
#include "TransferDialogs.h"
#include "resource.h"

namespace {

constexpr UINT kChordInterval = 150;
constexpr BYTE kChord[] = {60, 64, 67};
constexpr BYTE kNoteOn = 0x90, kNoteOff = 0x80, kVelocity = 96;
constexpr int kChordEnd = 6; // steps

} // namespace

void MainFrame::OnSendBank() {
    if (m_bank.messages.empty() || !m_midi.CanSend()) return;
    SendBankDialog dialog(this, m_bank, m_midi);
    dialog.DoModal();
    SetStatus(dialog.Summary());
    Report("bank: %s", dialog.Summary().c_str());
}

void MainFrame::OnReceiveBank() {
    if (!MayDropChanges()) return; // a message that asks for the dump may be on its way
    ReceiveBankDialog dialog(this);
    m_receiving = &dialog;
    const bool isKept = dialog.DoModal() == IDOK;
    m_receiving = nullptr;
    if (!isKept || dialog.Messages().empty()) {
        Report("receive cancelled");
        return;
    }
    TakeBank(dialog.Messages());
}

// What arrived is the bank now, and has no file yet.
void MainFrame::TakeBank(const std::vector<SysexBytes>& messages) {
    Bank bank;
    bank.name = "Received bank.syx";
    for (const SysexBytes& message : messages)
        bank.messages.push_back({message, DescribeSysex(message), {}});
    TakeNewBank(std::move(bank));
    SetStatus("Received " + std::to_string(messages.size()) +
              " messages; the bank is not saved yet");
    Report("received bank %zu messages", messages.size());
}

// One key after the other, so that each is heard, then all are let go.
void MainFrame::OnChord() {
    if (m_chordStep > 0) return;
    m_chordStep = 1;
    SetTimer(kChordTimer, kChordInterval);
    m_midi.SendShort(kNoteOn, kChord[0], kVelocity);
    Report("chord");
}

void MainFrame::OnChordTimer() {
    const auto step = static_cast<std::size_t>(m_chordStep++);
    if (step < std::size(kChord)) m_midi.SendShort(kNoteOn, kChord[step], kVelocity);
    if (m_chordStep == kChordEnd) EndChord();
}

// Also before the output changes or closes: no key may hang on the instrument.
void MainFrame::EndChord() {
    if (m_chordStep == 0) return;
    KillTimer(kChordTimer);
    m_chordStep = 0;
    for (const BYTE key : kChord) m_midi.SendShort(kNoteOff, key, 0);
    Report("chord played");
}

PatchSheet& MainFrame::Sheet() {
    if (!m_sheet.view) {
        m_sheet.Create("", "", WS_CHILD, CRect(0, 0, 10, 10), this, IDC_SHEET);
        m_sheet.ShowWindow(SW_HIDE);
    }
    m_sheet.ShowBank(m_bank);
    return m_sheet;
}

void MainFrame::OnSaveSheet() {
    if (m_bank.messages.empty()) return;
    const std::string suggested = m_bank.name + ".pdf";
    CFileDialog dialog(FALSE, "pdf", suggested.c_str(), OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR,
                       "PDF documents (*.pdf)|*.pdf|All files (*.*)|*.*||", this);
    const std::string folder = FolderForBanks();
    dialog.m_ofn.lpstrTitle = "Patch Sheet as PDF";
    dialog.m_ofn.lpstrInitialDir = folder.c_str();
    Report("dialog sheet");
    if (dialog.DoModal() != IDOK) {
        Report("sheet cancelled");
        return;
    }
    const CString path = dialog.GetPathName();
    const BOOL saved = AfxSaveWindowAsPDF(&Sheet(), PatchSheet::kWidth, PatchSheet::kHeight, path);
    const std::string name = NameOf(static_cast<const char*>(path));
    SetStatus(saved ? "Wrote " + name : name + " cannot be written");
    Report(saved ? "sheet %s" : "no sheet %s", name.c_str());
}

void MainFrame::OnCopySheet() {
    if (m_bank.messages.empty()) return;
    AfxCopyWindowToClipboard(&Sheet(), PatchSheet::kWidth, PatchSheet::kHeight);
    SetStatus("Copied the patch sheet as a PDF page");
    Report("copied sheet");
}
