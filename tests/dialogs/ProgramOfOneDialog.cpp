// A program that is nothing but a dialog, as wizards make them: it ends with the dialog. Exit code 0
// when DoModal gave back what the dialog was ended with.
#include <afxwin.h>

namespace {

constexpr int kDialog = 100;
constexpr int kResult = 7;

class OneDialog : public CDialog {
public:
    OneDialog() : CDialog(kDialog) {}

    BOOL OnInitDialog() override {
        SetTimer(1, 1);
        return CDialog::OnInitDialog();
    }
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_TIMER) return CDialog::MessageMap(message, wParam, lParam);
        EndDialog(kResult);
        return 1;
    }
};

class OneDialogApp : public CWinApp {
public:
    BOOL InitInstance() override {
        got = OneDialog().DoModal();
        return FALSE;
    }
    int got = 0;
};

OneDialogApp theApp;

} // namespace

int main(int argc, char** argv) {
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    const int code = AfxMain(&theApp, argc, argv);
    return theApp.got == kResult ? code : 1;
}
