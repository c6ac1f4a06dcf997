// The editor for six-operator voices: a dialog embedded in the program's window. What its controls
// change is sent to the instrument while they move, and goes into the bank when it is stored.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include "../../LibrarianPlugin.h"
#include "PendingChanges.h"
#include "Voice.h"

class VoiceEditor : public CDialog {
public:
    explicit VoiceEditor(const LibrarianHost& host);

    BOOL Open(CWnd* parent);
    /// A message with voices: shows the first. What was not stored of the one before is dropped.
    void Show(const MidiBytes& message);
    /// Asks what to do with changes that were not stored. FALSE: stay here.
    BOOL MayLeave();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override {} ///< Return means nothing here
    void OnCancel() override;

private:
    void FillVoices();
    void ShowVoice();
    void ShowParameters();
    void ShowReadout(int id, int shown);

    BOOL OnControl(int id, UINT code);
    void OnMoved(HWND moved);
    void OnChanged(int id);
    void OnTimerTick();
    void OnName();
    void Take(int parameter, int value);
    void ShowChanged(bool changed);
    BOOL Store();
    void SendVoice();

    LibrarianHost m_host;
    MidiBytes m_message; // with the changes
    std::size_t m_index = 0;
    Voice m_voice = {};
    int m_operator = 1;
    bool m_changed = false; // since it was shown or stored
    bool m_asking = false;  // what to do with the changes
    bool m_showing = false; // what the controls report is not the user's doing
    PendingChanges m_pending;

    CSpinButtonCtrl m_algorithmArrows;
    CSpinButtonCtrl m_transposeArrows;
    CEdit m_algorithm;
    CEdit m_transpose;
};
