// How the library comes up and goes down. The one place that knows the start and the end of every
// module.
#include <vmcore/app/lifecycle.h>

#include <cstring>

#include <vmcore/app/CWinApp.h>
#include <vmcore/app/threads.h>
#include <vmcore/files/library.h>
#include <vmcore/files/profile.h>
#include <vmcore/midi/mmsystem.h>

#include "app/CWinAppDelegate.h"
#include "app/appState.h"
#include "app/instances.h"
#include "app/lifecycle.h"
#include "app/threadstate.h"
#include "core/log.h"
#include "files/profile.h"
#include "midi/midisystem.h"
#include "platform/NativeApplication.h"

namespace {

// The library's own record, made at the first attach by whatever way. Its destructor detaches the
// library when the process exits; what that reads is never freed.
MacInstance& OwnInstance() {
    static MacInstance s_instance;
    return s_instance;
}

} // namespace

namespace vm {

int InitLibrary() {
    LogText(LogModule::App, "Initializing VMCore");
    CreateThreadExitQueue();
    StartMidiWhenUsed();
    CWinAppDelegate::Shared(); // whose menus work in a foreign program, too
    return InitProfileManager();
}

void TermLibrary() {
    destroyCoreMIDI();
    DeleteThreadExitQueue();
    DeleteProfileLock();
    LogText(LogModule::App, "Finished terminating VMCore");
}

int LibraryMain(HINSTANCE instance, unsigned reason) {
    if (reason == 0) {
        OwnInstance();
        App().hInstance = instance;
        MacMain();
        InitLibrary();
    } else if (reason == 1) {
        TermLibrary();
    }
    return 1;
}

} // namespace vm

int DllMain(HINSTANCE instance, unsigned reason) {
    return vm::LibraryMain(instance, reason);
}
int InitVMCore() {
    return vm::InitLibrary();
}
void TermVMCore() {
    vm::TermLibrary();
}
void MacMain() {}

MacInstance* MacInstance::Initialize(const char* name) {
    if (m_initialised) return this;
    if (name) std::strncpy(m_name, name, sizeof m_name - 1);
    vm::RegisterInstance(this, m_name);
    vm::LibraryMain(this, 0);
    m_initialised = true;
    return this;
}

MacInstance::~MacInstance() {
    try {
        vm::LibraryMain(this, 1);
    } catch (...) { // must never escape a destructor that runs at exit
    }
    m_initialised = false;
}

MacInstance* MacInstanceInitialize(const char* name) {
    return OwnInstance().Initialize(name);
}
MacInstance* VMCore_Initialize() {
    InitProfileManager();
    return OwnInstance().Initialize("VMCore");
}
const char* MacInstanceName(const char* name) {
    return name ? name : "";
}

int AfxMain(CWinApp*, int argc, char** argv) {
    return vm::NativeApplication::Shared().Main(argc, argv, &CWinAppDelegate::Shared());
}

int OpenResourceFile(const char*) {
    OutputDebugString("OpenResourceFile should never be called");
    return 0;
}

HMODULE AfxLoadLibrary(const char* name) {
    return LoadLibrary(name);
}
BOOL AfxFreeLibrary(HMODULE library) {
    return static_cast<BOOL>(FreeLibrary(library));
}

int InitAppleEvents() {
    return 0;
}
int DoOpenApp() {
    return 0;
}
int DoPrintDocuments() {
    return 0;
}
int MyQuit() {
    return 0;
}

// Programs have no creator codes here.
DWORD doGetProcessSignature() {
    return 0x3F3F3F3F;
}
DWORD GetProcessSignature() {
    return vm::App().isPluginEnvironment ? 0x3F3F3F3F : doGetProcessSignature();
}

void SetPluginEnvironment(bool isPlugin) {
    vm::App().isPluginEnvironment = isPlugin;
}
BOOL AfxInitExtensionModule(void*, HINSTANCE) {
    return TRUE;
}
void AfxTermExtensionModule(void*, BOOL) {}
