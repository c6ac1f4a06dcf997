#include "ControlsPage.h"

#include <string>

#include "CommonDialogs.h"
#include "resource.h"

namespace {

struct Choice {
    const char* name;
    UINT style;
};
constexpr Choice kBoxButtons[] = {{"OK", MB_OK},
                                  {"OK, Cancel", MB_OKCANCEL},
                                  {"Abort, Retry, Ignore", MB_ABORTRETRYIGNORE},
                                  {"Yes, No, Cancel", MB_YESNOCANCEL},
                                  {"Yes, No", MB_YESNO},
                                  {"Retry, Cancel", MB_RETRYCANCEL}};
constexpr Choice kBoxIcons[] = {{"No icon", 0},
                                {"Error", MB_ICONERROR},
                                {"Question", MB_ICONQUESTION},
                                {"Warning", MB_ICONWARNING},
                                {"Information", MB_ICONINFORMATION}};
constexpr const char* kPages[] = {"Oscillator", "Filter", "Envelope"};
constexpr const char* kInstruments[] = {"Upper rack", "Lower rack"};

const char* CodeName(int code) {
    switch (code) {
    case BN_CLICKED:
        return "BN_CLICKED";
    case CBN_SELCHANGE:
        return "CBN_SELCHANGE";
    case LBN_SELCHANGE:
        return "LBN_SELCHANGE";
    case LBN_DBLCLK:
        return "LBN_DBLCLK";
    case EN_SETFOCUS:
        return "EN_SETFOCUS";
    case EN_UPDATE:
        return "EN_UPDATE";
    case EN_CHANGE:
        return "EN_CHANGE";
    default:
        return "EN_KILLFOCUS";
    }
}

} // namespace

void ControlsPage::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, ID_PATCHES, m_patches);
    DDX_Control(pDX, ID_TREE, m_tree);
    DDX_Control(pDX, ID_VOICE, m_voice);
    DDX_Control(pDX, ID_VOICE_ARROWS, m_arrows);
    DDX_Control(pDX, ID_PAGES, m_pages);
    DDX_Control(pDX, ID_CUTOFF, m_cutoff);
    DDX_Control(pDX, ID_LEVEL, m_level);
    DDX_Control(pDX, ID_BOX_BUTTONS, m_boxButtons);
    DDX_Control(pDX, ID_BOX_ICON, m_boxIcon);
    DDX_Control(pDX, ID_CHANNELS, m_channels);
}

BOOL ControlsPage::OnInitDialog() {
    CDialog::OnInitDialog();
    m_patches.Fill();
    FillTree();
    m_arrows.SetBuddy(&m_voice);
    m_arrows.SetRange(1, 128);
    m_arrows.SetPos(12);
    for (int i = 0; i < static_cast<int>(std::size(kPages)); ++i) m_pages.InsertItem(i, kPages[i]);
    for (const Choice& choice : kBoxButtons) m_boxButtons.AddString(choice.name);
    for (const Choice& choice : kBoxIcons) m_boxIcon.AddString(choice.name);
    m_boxButtons.SetCurSel(1);
    m_boxIcon.SetCurSel(2);
    m_channels.SetSel(0, TRUE);
    m_channels.SetSel(9, TRUE);
    SetDlgItemText(ID_PAGE, kPages[0]);
    m_tips.Create(this);
    m_tips.AddTool(GetDlgItem(ID_PUSH), "A push button reports BN_CLICKED");
    return TRUE;
}

void ControlsPage::FillTree() {
    for (const char* name : kInstruments) {
        const HTREEITEM rack = m_tree.InsertItem(name, nullptr, TVI_LAST);
        for (int i = 1; i <= 3; ++i) {
            const std::string label = "Bank " + std::to_string(i);
            const HTREEITEM bank = m_tree.InsertItem(label.c_str(), rack, TVI_LAST);
            m_tree.SetCheck(bank, i != 2);
        }
        m_tree.Expand(rack, TVE_EXPAND);
    }
}

int ControlsPage::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        OnControl(LOWORD(wParam), HIWORD(wParam));
        return 1;
    case WM_NOTIFY:
        OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        return 1;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScroll(reinterpret_cast<HWND>(lParam), HIWORD(wParam));
        return 1;
    default:
        return CDialog::MessageMap(message, wParam, lParam);
    }
}

void ControlsPage::OnControl(int id, int code) {
    std::string line = "WM_COMMAND: control " + std::to_string(id) + ", " + CodeName(code);
    switch (id) {
    case ID_SHEET:
        line = AskSheet(this);
        break;
    case ID_OPEN:
        line = AskOpen(this);
        break;
    case ID_SAVE:
        line = AskSave(this);
        break;
    case ID_FOLDER:
        line = AskFolder(this);
        break;
    case ID_FONT:
        line = AskFont(this);
        break;
    case ID_COLOR:
        line = AskColor(this);
        break;
    case ID_MESSAGE:
        return ShowBox();
    default:
        break;
    }
    Say(line);
}

void ControlsPage::OnNotify(const NMHDR& header) {
    if (header.idFrom == ID_PAGES) SetDlgItemText(ID_PAGE, kPages[m_pages.GetCurSel()]);
    Say("WM_NOTIFY: control " + std::to_string(header.idFrom) + ", code " +
        std::to_string(header.code));
}

void ControlsPage::OnScroll(HWND bar, int position) {
    if (bar == m_cutoff.GetSafeHwnd()) {
        m_level.SetPos(position);
        SetDlgItemInt(ID_VALUE, static_cast<UINT>(position));
    }
    Say("WM_HSCROLL or WM_VSCROLL: position " + std::to_string(position));
}

void ControlsPage::ShowBox() {
    const Choice& buttons = kBoxButtons[m_boxButtons.GetCurSel()];
    const Choice& icon = kBoxIcons[m_boxIcon.GetCurSel()];
    const int answer = ::MessageBox(view, "Overwrite the bank in the synthesizer?", "Gallery",
                                    buttons.style | icon.style);
    Say("MessageBox answered " + std::to_string(answer));
}

void ControlsPage::Say(const std::string& line) {
    SetDlgItemText(ID_STATUS, line.c_str());
}
