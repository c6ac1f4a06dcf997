#include "VoiceEditor.h"

#include <algorithm>

#include "resource.h"

namespace {

constexpr UINT kSendTimer = 1;
constexpr UINT kSendInterval = 20; // milliseconds: at most 50 changes a second

enum class Kind { Slider, Check, Number, Choice };

// A control, the parameter that it is for, and what it shows for the value 0.
struct Control {
    int id;
    int parameter; // of the operator, or of the voice
    Kind kind = Kind::Slider;
    int shownForZero = 0;
};

constexpr Control kControls[] = {
    {IDC_LEVEL, kOutputLevel},
    {IDC_COARSE, kCoarse},
    {IDC_FINE, kFine},
    {IDC_DETUNE, kDetune, Kind::Slider, -7},
    {IDC_VELOCITY, kVelocity},
    {IDC_FIXED, kFixedFrequency, Kind::Check},
    {IDC_RATE_1, kRate1},
    {IDC_RATE_1 + 1, kRate1 + 1},
    {IDC_RATE_1 + 2, kRate1 + 2},
    {IDC_RATE_1 + 3, kRate1 + 3},
    {IDC_LEVEL_1, kLevel1},
    {IDC_LEVEL_1 + 1, kLevel1 + 1},
    {IDC_LEVEL_1 + 2, kLevel1 + 2},
    {IDC_LEVEL_1 + 3, kLevel1 + 3},
    {IDC_ALGORITHM, kAlgorithm, Kind::Number, 1},
    {IDC_FEEDBACK, kFeedback},
    {IDC_OSCILLATOR_SYNC, kOscillatorSync, Kind::Check},
    {IDC_TRANSPOSE, kTranspose, Kind::Number, -24},
    {IDC_LFO_WAVE, kLfoWave, Kind::Choice},
    {IDC_LFO_SPEED, kLfoSpeed},
    {IDC_LFO_DELAY, kLfoDelay},
    {IDC_LFO_PITCH, kLfoPitchDepth},
    {IDC_LFO_AMPLITUDE, kLfoAmplitudeDepth},
    {IDC_LFO_SYNC, kLfoSync, Kind::Check},
};

const Control* ControlWith(int id) {
    for (const Control& control : kControls)
        if (control.id == id) return &control;
    return nullptr;
}

int ParameterFor(const Control& control, int number) {
    return control.parameter < kOperatorParameters ? ParameterOf(number, control.parameter)
                                                   : control.parameter;
}

void Exchange(CDataExchange& exchange, const Control& control, int& shown) {
    switch (control.kind) {
    case Kind::Slider:
        return DDX_Slider(&exchange, control.id, shown);
    case Kind::Check:
        return DDX_Check(&exchange, control.id, shown);
    case Kind::Number:
        return DDX_Text(&exchange, control.id, shown);
    case Kind::Choice:
        return DDX_CBIndex(&exchange, control.id, shown);
    }
}

std::string Title(std::size_t index, const Voice& voice) {
    return std::to_string(index + 1) + "  " + VoiceNameOf(voice);
}

} // namespace

VoiceEditor::VoiceEditor(const LibrarianHost& host) : m_host(host) {}

BOOL VoiceEditor::Open(CWnd* parent) {
    if (!Create(IDD_VOICE, parent)) return FALSE;
    CWnd* const first = GetDlgItem(IDC_LEVEL);
    if (first && first->view) first->SetFocus();
    return TRUE;
}

void VoiceEditor::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_ALGORITHM, m_algorithm);
    DDX_Control(exchange, IDC_TRANSPOSE, m_transpose);
    DDX_Control(exchange, IDC_ALGORITHM + kArrows, m_algorithmArrows);
    DDX_Control(exchange, IDC_TRANSPOSE + kArrows, m_transposeArrows);
}

BOOL VoiceEditor::OnInitDialog() {
    const BOOL loaded = CDialog::OnInitDialog();
    m_showing = true;
    m_algorithmArrows.SetBuddy(&m_algorithm);
    m_algorithmArrows.SetRange(1, 32);
    m_transposeArrows.SetBuddy(&m_transpose);
    m_transposeArrows.SetRange(-24, 24);
    m_showing = false;
    return loaded;
}

void VoiceEditor::Show(const MidiBytes& message) {
    m_message = message;
    m_index = 0;
    m_operator = 1;
    FillVoices();
    ShowVoice();
    ShowChanged(false);
}

void VoiceEditor::FillVoices() {
    SendDlgItemMessage(IDC_VOICE, CB_RESETCONTENT);
    const std::size_t count = VoiceCount(m_message);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string title = Title(i, ReadVoice(m_message, i));
        SendDlgItemMessage(IDC_VOICE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(title.c_str()));
    }
    SendDlgItemMessage(IDC_VOICE, CB_SETCURSEL, m_index);
    CWnd* const list = GetDlgItem(IDC_VOICE);
    if (list && list->view) list->EnableWindow(count > 1);
}

// What is still to be sent belongs to the voice before.
void VoiceEditor::ShowVoice() {
    m_pending.Clear();
    m_voice = ReadVoice(m_message, m_index);
    m_showing = true;
    SetDlgItemText(IDC_NAME, VoiceNameOf(m_voice).c_str());
    m_showing = false;
    ShowParameters();
}

void VoiceEditor::ShowParameters() {
    m_showing = true;
    SendDlgItemMessage(IDC_OPERATOR, CB_SETCURSEL, static_cast<WPARAM>(m_operator - 1));
    CDataExchange into(this, FALSE);
    for (const Control& control : kControls) {
        const int parameter = ParameterFor(control, m_operator);
        int shown = m_voice[static_cast<std::size_t>(parameter)] + control.shownForZero;
        Exchange(into, control, shown);
        if (control.kind == Kind::Slider) ShowReadout(control.id, shown);
    }
    m_showing = false;
}

void VoiceEditor::ShowReadout(int id, int shown) {
    SetDlgItemInt(id + kReadout, static_cast<UINT>(shown));
}

int VoiceEditor::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_COMMAND:
        if (OnControl(LOWORD(wParam), HIWORD(wParam))) return 1;
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnMoved(reinterpret_cast<HWND>(lParam));
        return 1;
    case WM_TIMER:
        OnTimerTick();
        return 1;
    }
    return CDialog::MessageMap(message, wParam, lParam);
}

BOOL VoiceEditor::OnControl(int id, UINT code) {
    if (m_showing) return FALSE;
    if (id == IDC_STORE && code == BN_CLICKED) return Store(), TRUE;
    if (id == IDC_SEND && code == BN_CLICKED) return SendVoice(), TRUE;
    if (id == IDC_NAME && code == EN_CHANGE) return OnName(), TRUE;
    if (id == IDC_VOICE && code == CBN_SELCHANGE) {
        m_index = static_cast<std::size_t>(SendDlgItemMessage(IDC_VOICE, CB_GETCURSEL));
        return ShowVoice(), TRUE;
    }
    if (id == IDC_OPERATOR && code == CBN_SELCHANGE) {
        m_operator = static_cast<int>(SendDlgItemMessage(IDC_OPERATOR, CB_GETCURSEL)) + 1;
        return ShowParameters(), TRUE;
    }
    if (code == BN_CLICKED || code == EN_CHANGE || code == CBN_SELCHANGE) OnChanged(id);
    return FALSE;
}

// A slider, or the arrows of a number.
void VoiceEditor::OnMoved(HWND moved) {
    if (m_showing) return;
    for (const Control& control : kControls) {
        HWND slider = nullptr;
        HWND arrows = nullptr;
        GetDlgItem(control.id, &slider);
        GetDlgItem(control.id + kArrows, &arrows);
        if (moved == slider || moved == arrows) return OnChanged(control.id);
    }
}

void VoiceEditor::OnChanged(int id) {
    const Control* const control = ControlWith(id);
    if (!control) return;
    int shown = 0;
    CDataExchange out(this, TRUE);
    Exchange(out, *control, shown);
    if (control->kind == Kind::Slider) ShowReadout(id, shown);
    Take(ParameterFor(*control, m_operator), shown - control->shownForZero);
}

// A number that is being typed may be out of range for a moment.
void VoiceEditor::Take(int parameter, int value) {
    const int taken = std::clamp(value, 0, HighestValue(parameter));
    unsigned char& now = m_voice[static_cast<std::size_t>(parameter)];
    if (now == taken) return;
    now = static_cast<unsigned char>(taken);
    WriteVoice(m_message, m_index, m_voice);
    ShowChanged(true);
    if (m_pending.IsEmpty()) SetTimer(kSendTimer, kSendInterval);
    m_pending.Set(parameter, taken);
}

void VoiceEditor::OnTimerTick() {
    if (m_pending.IsEmpty()) {
        KillTimer(kSendTimer);
        return;
    }
    const PendingChanges::Change change = m_pending.First();
    const MidiBytes message = ParameterChange(ChannelOf(m_message), change.parameter, change.value);
    const int sent = m_host.send(m_host.context, message.data(), message.size());
    if (sent > 0) m_pending.RemoveFirst();
    if (sent < 0) m_pending.Clear();
}

void VoiceEditor::OnName() {
    CString typed;
    GetDlgItemText(IDC_NAME, typed);
    Voice named = m_voice;
    SetVoiceName(named, static_cast<const char*>(typed));
    for (int i = kVoiceName; i < kVoiceName + kVoiceNameLength; ++i)
        Take(i, named[static_cast<std::size_t>(i)]);
}

void VoiceEditor::ShowChanged(bool changed) {
    if (changed && m_changed) return;
    m_changed = changed;
    SetDlgItemText(IDC_CHANGED, changed ? "Changed" : "");
    CWnd* const store = GetDlgItem(IDC_STORE);
    if (store && store->view) store->EnableWindow(changed);
}

BOOL VoiceEditor::Store() {
    if (!m_host.store(m_host.context, m_message.data(), m_message.size())) return FALSE;
    FillVoices(); // the name may be new
    ShowChanged(false);
    return TRUE;
}

void VoiceEditor::SendVoice() {
    const MidiBytes dump = SingleDump(ChannelOf(m_message), m_voice);
    if (m_host.send(m_host.context, dump.data(), dump.size()) > 0) m_pending.Clear();
}

// While the question is open, whoever else asks has to stay: the answer may end this object.
BOOL VoiceEditor::MayLeave() {
    if (!m_changed) return TRUE;
    if (m_asking) return FALSE;
    m_asking = true;
    const std::string question = "Store the changes to " + VoiceNameOf(m_voice) + "?";
    const int answer =
        ::MessageBox(view, question.c_str(), "Voice Editor", MB_YESNOCANCEL | MB_ICONQUESTION);
    m_asking = false;
    if (answer == IDYES) return Store();
    return answer == IDNO; // the changes are there until it leaves
}

// Ends this object.
void VoiceEditor::OnCancel() {
    if (MayLeave()) m_host.close(m_host.context);
}
