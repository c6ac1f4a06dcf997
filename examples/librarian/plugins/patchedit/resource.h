// The editor's interface file, DLG_<id>.ui, and the IDs of its controls.
#pragma once

enum PatchEditId : int {
    IDD_VOICE = 150,

    IDC_VOICE = 3000,
    IDC_NAME = 3001,
    IDC_STORE = 3002,
    IDC_SEND = 3003,
    IDC_OPERATOR = 3004,
    IDC_CHANGED = 3005,

    IDC_LEVEL = 3100,
    IDC_COARSE = 3101,
    IDC_FINE = 3102,
    IDC_DETUNE = 3103,
    IDC_VELOCITY = 3104,
    IDC_FIXED = 3105,
    IDC_RATE_1 = 3106, // four rates, then four levels
    IDC_LEVEL_1 = 3110,
    IDC_ALGORITHM = 3114,
    IDC_FEEDBACK = 3115,
    IDC_OSCILLATOR_SYNC = 3116,
    IDC_TRANSPOSE = 3117,
    IDC_LFO_WAVE = 3118,
    IDC_LFO_SPEED = 3119,
    IDC_LFO_DELAY = 3120,
    IDC_LFO_PITCH = 3121,
    IDC_LFO_AMPLITUDE = 3122,
    IDC_LFO_SYNC = 3123,

    // The number beside a slider: its ID and this.
    kReadout = 100,
    // The arrows beside a text field: its ID and this.
    kArrows = 200,
};
