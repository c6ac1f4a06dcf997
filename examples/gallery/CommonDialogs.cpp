#include "CommonDialogs.h"

#include <string>

#include <afxdlgs.h>
#include <shlobj.h>

#include "resource.h"

namespace {

constexpr char kFilter[] = "System Exclusive (*.syx)|*.syx|All files (*.*)|*.*||";
constexpr int kControlName = 1001;
constexpr int kControlAlgorithm = 1002;
constexpr int kControlPause = 1001;
constexpr int kControlMilliseconds = 1002;

class VoicePage : public CPropertyPage {
public:
    VoicePage() : CPropertyPage(DLG_VOICE) {}
    void DoDataExchange(CDataExchange* pDX) override {
        CPropertyPage::DoDataExchange(pDX);
        DDX_Text(pDX, kControlName, name);
        DDX_CBIndex(pDX, kControlAlgorithm, algorithm);
    }
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == static_cast<int>(WM_COMMAND)) SetModified();
        return CPropertyPage::MessageMap(message, wParam, lParam);
    }
    CString name = "Warm Strings";
    int algorithm = 4;
};

class TransmissionPage : public CPropertyPage {
public:
    TransmissionPage() : CPropertyPage(DLG_TRANSMISSION) {}
    void DoDataExchange(CDataExchange* pDX) override {
        CPropertyPage::DoDataExchange(pDX);
        DDX_Check(pDX, kControlPause, pause);
        DDX_Text(pDX, kControlMilliseconds, milliseconds);
    }
    int pause = 1;
    int milliseconds = 40;
};

std::string Text(const CString& text) {
    return static_cast<const char*>(text);
}

std::string Cancelled(const char* dialog) {
    return std::string(dialog) + " was cancelled";
}

} // namespace

std::string AskSheet(CWnd* parent) {
    CPropertySheet sheet("Properties of the voice", parent);
    VoicePage voice;
    TransmissionPage transmission;
    sheet.AddPage(&voice);
    sheet.AddPage(&transmission);
    if (sheet.DoModal() != IDOK) return Cancelled("The property sheet");
    const int pause = transmission.pause ? transmission.milliseconds : 0;
    return "\"" + Text(voice.name) + "\", algorithm " + std::to_string(voice.algorithm + 1) +
           ", pause " + std::to_string(pause) + " ms";
}

std::string AskOpen(CWnd* parent) {
    CFileDialog dialog(TRUE, "syx", nullptr, OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST, kFilter,
                       parent);
    if (dialog.DoModal() != IDOK) return Cancelled("CFileDialog");
    std::string line;
    POSITION position = dialog.GetStartPosition();
    while (position) line += Text(dialog.GetNextPathName(position)) + " ";
    return line;
}

std::string AskSave(CWnd* parent) {
    CFileDialog dialog(FALSE, "syx", "voices", OFN_OVERWRITEPROMPT, kFilter, parent);
    return dialog.DoModal() == IDOK ? Text(dialog.GetPathName()) : Cancelled("CFileDialog");
}

std::string AskFolder(CWnd* parent) {
    BROWSEINFO info{};
    info.hwndOwner = parent->GetSafeHwnd();
    info.lpszTitle = "Choose the folder of the banks";
    LPITEMIDLIST chosen = SHBrowseForFolder(&info);
    char path[MAX_PATH];
    const bool hasPath = chosen && SHGetPathFromIDList(chosen, path);
    ILFree(chosen);
    return hasPath ? std::string(path) : Cancelled("SHBrowseForFolder");
}

std::string AskFont(CWnd* parent) {
    CFontDialog dialog(nullptr, CF_EFFECTS | CF_SCREENFONTS, nullptr, parent);
    if (dialog.DoModal() != IDOK) return Cancelled("CFontDialog");
    return Text(dialog.GetFaceName()) + ", " + std::to_string(dialog.GetSize() / 10) + " points";
}

std::string AskColor(CWnd* parent) {
    CColorDialog dialog(RGB(42, 98, 184), 0, parent);
    if (dialog.DoModal() != IDOK) return Cancelled("CColorDialog");
    const COLORREF color = dialog.GetColor();
    return "Red " + std::to_string(GetRValue(color)) + ", green " +
           std::to_string(GetGValue(color)) + ", blue " + std::to_string(GetBValue(color));
}
