// The one application object of a program, and the process-wide accessors around it.
//
//     class App : public CWinApp {
//         BOOL InitInstance() override {
//             auto* frame = new CFrameWnd;
//             frame->Create("", "Hello", WS_OVERLAPPEDWINDOW, CRect(80, 80, 480, 320));
//             AfxSetMainWnd(frame);
//             return CWinApp::InitInstance();
//         }
//     };
//     App theApp;
//     int main(int argc, char** argv) {
//         AfxSetDVBundle(nullptr);
//         VMCore_Initialize();
//         return AfxMain(&theApp, argc, argv);
//     }
#pragma once

#include <vmcore/app/messages.h>
#include <vmcore/core/CString.h>
#include <vmcore/core/arrays.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CRecentFileList;
class CWnd;

class VM_API CCommandLineInfo {
public:
    virtual ~CCommandLineInfo();
    virtual void ParseParam(const char* param, signed char isFlag, signed char isLast);
    void Append(const char* text);
};

class VM_API CWinApp {
public:
    /// Records the calling thread as the main thread and this object as the application.
    CWinApp();
    /// The same without recording the thread. A null or empty name leaves m_pszAppName null.
    explicit CWinApp(const char* name);
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    // Virtual operations. Their order is part of the binary interface.
    /// Calls ExitInstance once more and frees the drawing and window bookkeeping.
    virtual ~CWinApp();
    virtual CWnd* GetMainWnd();
    /// Called once at launch. Takes m_pszAppName from the bundle when it is null. TRUE.
    virtual BOOL InitInstance();
    virtual int ExitInstance();
    virtual BOOL OnIdle(LONG count);
    virtual void AddToRecentFileList(const char* path); ///< does nothing
    virtual int Run();                                  ///< the run loop; 0 when it ends
    /// Command 0 opens the page "DV_<data>" of the help book; other commands do nothing.
    virtual void WinHelp(DWORD_PTR data, UINT command = 0);
    virtual void HtmlHelp(DWORD_PTR data, UINT command = 0); ///< the same as WinHelp
    /// The About command arrives here as WM_COMMAND.
    virtual int MessageMap(int message, WPARAM wParam, LPARAM lParam);
    virtual int BaseMessageMap(int message, WPARAM wParam, LPARAM lParam);

    HICON LoadIcon(UINT) const { return nullptr; }
    HICON LoadIcon(const char*) const { return nullptr; }
    void ParseCommandLine(CCommandLineInfo&) {}
    void SetRegistryKey(const char*) {}
    void SetRegistryKey(UINT) {}
    void LoadStdProfileSettings(UINT = 4) {}
    void OnHelp() {}
    void OnHelpIndex() {}
    void OnHelpUsing() {}
    BOOL Enable3dControls() { return FALSE; }
    BOOL Enable3dControlsStatic() { return FALSE; }
    // The default profile. What is written here does not come back from the two readers in the same
    // run: these write to it under another spelling of its name than all other profile functions,
    // and two spellings are two profiles. Use ::WriteProfileString beside the readers, and never
    // both ways of writing, or the one saved last wins.
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value); ///< FALSE always
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);       ///< FALSE always
    /// The defaults are not used: a missing entry is an empty string, or 0.
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue = nullptr);
    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue);
    /// Must not be used: shows a message box saying so and returns its answer; posts nothing.
    int PostMessage(CWnd* wnd, UINT message, WPARAM wParam, LPARAM lParam);
    void ProcessPostMessages() {}
    void SetPostMessageTimer() {}
    void KillPostMessageTimer() {}

    // State. The order is part of the binary interface.
    char* m_pszAppName; ///< calloc'd, owned; may be null
    void* m_reserved1;
    CWnd* m_pMainWnd; ///< not owned; may be assigned in place of AfxSetMainWnd in InitInstance
    HINSTANCE m_hInstance;
    int m_nCmdShow;                     ///< 5
    CRecentFileList* m_pRecentFileList; ///< made by the constructor, never deleted
    void* m_reserved2;
    CPtrArray m_pointers;
    void* m_reserved3;

private:
    void Construct();
};

VM_API void AfxSetApp(CWinApp* app);
/// Null, and "Internal Error! Request to AfxGetApp() before MainApp is Set" logged, without one.
VM_API CWinApp* AfxGetApp();
/// Without an application logs "Internal Error! Request to set MainWnd before WinApp set".
/// The main window has the application's menu bar, and is asked whether the program may end. A dialog may be it,
/// too: name it before its DoModal or in its OnInitDialog. It blocks no other window then, and ends as by its
/// close button when the program is to end.
VM_API void AfxSetMainWnd(CWnd* wnd);
/// Null, and "Internal Error! Request for MainWnd before WinApp set" logged, without an
/// application.
VM_API CWnd* AfxGetMainWnd();
VM_API HWND AfxGetMainWndHandle(); ///< 0 without application or main window; logs nothing
VM_API void AfxSetReferenceWnd(CWnd* wnd);
VM_API void* AfxGetResourceHandle();
VM_API void* AfxGetInstanceHandle(); ///< the same as AfxGetResourceHandle
VM_API void AfxSetResourceHandle(void* handle);
VM_API void* AfxGetStaticModuleState(); ///< null
VM_API const char* AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH brush = nullptr,
                                       HICON icon = nullptr); ///< null
/// MessageBox with an empty caption; the help ID is not used.
VM_API int AfxMessageBox(const char* text, UINT type = 0, UINT helpId = 0);
VM_API void ClearPostMessagesForThisCWnd(CWnd* wnd); ///< does nothing: delivery tests the target
