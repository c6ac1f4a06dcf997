// What the process has one of: the application object, the bundle, the mode. One struct, made on
// first use and never freed, because destructors at exit still read it.
#pragma once

#include <string>
#include <vector>

#include <vmcore/core/types.h>

class CWinApp;
class CWnd;

namespace vm {

struct AppState {
    HINSTANCE hInstance = nullptr; // given to DllMain on attach
    void* curResFile = nullptr;    // the current resource handle
    CWinApp* MainApp = nullptr;
    CWnd* refWnd = nullptr;
    Bundle* DVBundle = nullptr;
    bool isPluginEnvironment = false;
    int displayDlg = 0;                    // modal dialogs that are up
    std::vector<const void*> InstanceList; // InstanceName[i] belongs to InstanceList[i]
    std::vector<std::string> InstanceName;
    char AppName[256] = {};
    char AppCodeName[256] = {};
};

AppState& App();

/// The bundle that interface files and texts come from: the one that was set, else the program's own.
Bundle* ResourceBundle();

/// Switches the resource handle, to the library's instance for a null one, and back at its end.
class ResourceHandleScope {
public:
    explicit ResourceHandleScope(void* handle) : m_before(App().curResFile) {
        App().curResFile = handle ? handle : App().hInstance;
    }
    ~ResourceHandleScope() { App().curResFile = m_before; }
    ResourceHandleScope(const ResourceHandleScope&) = delete;
    ResourceHandleScope& operator=(const ResourceHandleScope&) = delete;

private:
    void* m_before;
};

} // namespace vm
