// The application object and its accessors.
#include <vmcore/app/CWinApp.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <vmcore/app/CRecentFileList.h>
#include <vmcore/app/lifecycle.h>
#include <vmcore/app/registry.h>
#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>
#include <vmcore/gdi/CDC.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "app/help.h"
#include "app/threadstate.h"
#include "platform/NativeApplication.h"
#include "platform/messagebox.h"
#include "wnd/NativeWindow.h"

namespace {

char* AllocatedCopy(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(std::calloc(size, 1));
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

} // namespace

CCommandLineInfo::~CCommandLineInfo() = default;
void CCommandLineInfo::ParseParam(const char*, signed char, signed char) {}
void CCommandLineInfo::Append(const char*) {}

CWinApp::CWinApp() {
    Construct();
    vm::RecordMainThreadID();
    AfxSetApp(this);
}

// Only the default constructor records the main thread: plug-ins construct named objects on threads
// of their own.
CWinApp::CWinApp(const char* name) {
    Construct();
    AfxSetApp(this);
    if (name && *name) m_pszAppName = AllocatedCopy(name);
}

void CWinApp::Construct() {
    m_pszAppName = nullptr;
    m_reserved1 = nullptr;
    m_pMainWnd = nullptr;
    m_hInstance = vm::App().hInstance;
    m_nCmdShow = 5;
    m_pRecentFileList = new CRecentFileList;
    m_reserved2 = nullptr;
    m_reserved3 = nullptr;
}

CWinApp::~CWinApp() {
    AfxSetApp(nullptr);
    ExitInstance();
    std::free(m_pszAppName);
    CDCGdiCleanup();
    CWndCleanup();
}

CWnd* CWinApp::GetMainWnd() {
    return m_pMainWnd;
}

BOOL CWinApp::InitInstance() {
    if (m_pszAppName) return TRUE;
    char name[256];
    if (AfxApplicationName(name, sizeof name) > 0) m_pszAppName = AllocatedCopy(name);
    return TRUE;
}

int CWinApp::ExitInstance() {
    return 0;
}
BOOL CWinApp::OnIdle(LONG) {
    return TRUE;
}
void CWinApp::AddToRecentFileList(const char*) {}

int CWinApp::Run() {
    vm::NativeApplication::Shared().Run();
    return 0;
}

void CWinApp::WinHelp(DWORD_PTR data, UINT command) {
    if (command == 0) vm::OpenHelpOfBundle(static_cast<int>(data));
}

void CWinApp::HtmlHelp(DWORD_PTR data, UINT command) {
    WinHelp(data, command);
}

int CWinApp::MessageMap(int, WPARAM, LPARAM) {
    return 0;
}
int CWinApp::BaseMessageMap(int, WPARAM, LPARAM) {
    return 0;
}

BOOL CWinApp::WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value) {
    char folder[MAX_PATH] = {};
    GetUserPreferencesPath(folder, sizeof folder);
    const std::string file = std::string(folder) + ":Velmora Win.ini";
    return WritePrivateProfileString(section, entry, value, file.c_str());
}

BOOL CWinApp::WriteProfileInt(LPCSTR section, LPCSTR entry, int value) {
    return WriteProfileString(section, entry, std::to_string(value).c_str());
}

CString CWinApp::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR) {
    char value[256] = {};
    ::GetProfileString(section, entry, "", value, 255);
    return value;
}

UINT CWinApp::GetProfileInt(LPCSTR section, LPCSTR entry, int) {
    return ::GetProfileInt(section, entry, 0);
}

int CWinApp::PostMessage(CWnd*, UINT, WPARAM, LPARAM) {
    return vm::ShowMessageBox(nullptr, "CWinApp:PostMessage - should never be called",
                              "Internal Error", 1);
}

void AfxSetApp(CWinApp* app) {
    vm::App().MainApp = app;
}

CWinApp* AfxGetApp() {
    CWinApp* app = vm::App().MainApp;
    if (!app) OutputDebugString("Internal Error! Request to AfxGetApp() before MainApp is Set");
    return app;
}

void AfxSetMainWnd(CWnd* wnd) {
    CWinApp* app = vm::App().MainApp;
    if (!app) {
        OutputDebugString("Internal Error! Request to set MainWnd before WinApp set");
        return;
    }
    app->m_pMainWnd = wnd;
    vm::ShowMenuBarOf(wnd ? wnd->nsWindow : nullptr);
}

CWnd* AfxGetMainWnd() {
    if (const CWinApp* app = vm::App().MainApp) return app->m_pMainWnd;
    OutputDebugString("Internal Error! Request for MainWnd before WinApp set");
    return nullptr;
}

HWND AfxGetMainWndHandle() {
    const CWinApp* app = vm::App().MainApp;
    return app && app->m_pMainWnd ? app->m_pMainWnd->view : nullptr;
}

void AfxSetReferenceWnd(CWnd* wnd) {
    vm::App().refWnd = wnd;
}
void* AfxGetResourceHandle() {
    return vm::App().curResFile;
}
void* AfxGetInstanceHandle() {
    return vm::App().curResFile;
}
void AfxSetResourceHandle(void* handle) {
    vm::App().curResFile = handle;
}
void* AfxGetStaticModuleState() {
    return nullptr;
}
const char* AfxRegisterWndClass(UINT, HCURSOR, HBRUSH, HICON) {
    return nullptr;
}

int AfxMessageBox(const char* text, UINT type, UINT) {
    return MessageBox(nullptr, text, "", type);
}

void ClearPostMessagesForThisCWnd(CWnd*) {}
