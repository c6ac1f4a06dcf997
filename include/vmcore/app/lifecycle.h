// How the library comes up and goes down; instances, bundles, names and paths.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CWinApp;

/// A loaded instance of the library: a name and whether it is attached.
class VM_API MacInstance {
public:
    MacInstance() = default;
    /// Detaches the library: DllMain(this, 1).
    ~MacInstance();
    MacInstance(const MacInstance&) = delete;
    MacInstance& operator=(const MacInstance&) = delete;
    /// Registers the record under `name` and attaches the library, once; returns the record. Names
    /// beyond 255 characters are cut.
    MacInstance* Initialize(const char* name);

private:
    char m_name[256] = {};
    bool m_initialised = false;
};

/// Reason 0 attaches the library, 1 detaches it: the reverse of the usual codes, everywhere in this
/// library. Any other reason does nothing. Returns 1.
VM_API int DllMain(HINSTANCE instance, unsigned reason);
/// The start call of a host that does not attach the library itself. Harmless twice.
VM_API MacInstance* VMCore_Initialize();
VM_API MacInstance* MacInstanceInitialize(const char* name);
VM_API const char* MacInstanceName(const char* name); ///< "" for null
VM_API int InitVMCore();
VM_API void TermVMCore();
VM_API void MacMain(); ///< does nothing
/// Runs the application: launch, run loop, termination. `app` is not used; the application object
/// has registered itself. Returns 0 at the end; 1, with a log line, without a display or when the
/// launch made neither an application object nor a window.
VM_API int AfxMain(CWinApp* app, int argc, char** argv);
VM_API int OpenResourceFile(const char* name); ///< must not be called: logs so and returns 0

VM_API HMODULE AfxLoadLibrary(const char* name); ///< LoadLibrary
VM_API BOOL AfxFreeLibrary(HMODULE library);     ///< FreeLibrary

/// The same handle registered twice makes two entries.
VM_API void AfxRegisterInstance(void* handle, const char* name);
VM_API void AfxRegisterInstance(const void* handle, const char* name);
/// Copies the name of the first entry with this handle, without a bound; "" when there is none.
VM_API char* AfxGetInstanceName(const void* handle, char* buffer);

/// The bundle that names, paths, resources and help come from; null selects the process's own.
VM_API void AfxSetDVBundle(NSBundle* bundle);
VM_API NSBundle* AfxGetDVBundle();
VM_API NSBundle* AfxGetNSBundle(); ///< the same bundle, under the plug-ins' name for it
/// A bundle for AfxSetDVBundle: of a folder Name.app (null when there is none), or of the module
/// that holds an address (a plug-in passes one of its own functions). Owned by the library.
VM_API NSBundle* VMBundleWithPath(const char* path);
VM_API NSBundle* VMBundleForAddress(const void* address);

/// The bundle's CFBundleName; its length. Not bounded by `size`: pass 256 bytes; a longer name is
/// cut to 255. 0 and an empty buffer for a missing key or a name that is not ASCII, or, with a log
/// line, without a bundle.
VM_API int AfxApplicationName(char* buffer, int size);
/// The same for the key "Executable file".
VM_API int AfxApplicationCodeName(char* buffer, int size);
VM_API const char* AfxGetAppName(); ///< cached once it is not empty
VM_API const char* AfxGetAppCodeName();
/// The folder of the executable; its length. 0 for a null buffer or, with a log line, no bundle.
VM_API int AfxApplicationPath(char* buffer, int size);
/// The folder of the resources. Without a bundle a message box says so.
VM_API int AfxResourcePath(char* buffer, int size);
/// Interface files hand out their top-level objects through such a list.
VM_API void* AfxGetNibRef();
VM_API void AfxReleaseNibRef(void* ref);
/// Loads the interface file `name`.ui for `owner`; 0 when it is missing, malformed or not ASCII,
/// and before AfxMain has launched the application.
VM_API BOOL AfxLoadNib(void* owner, const char* name);

VM_API int InitAppleEvents(); ///< 0
VM_API int DoOpenApp();       ///< 0; documents are opened through the command line
VM_API int DoPrintDocuments();
VM_API int MyQuit();
VM_API DWORD GetProcessSignature();   ///< 0x3F3F3F3F ("????")
VM_API DWORD doGetProcessSignature(); ///< 0x3F3F3F3F

/// A host that is itself a plug-in of a foreign program calls this with true before anything else.
VM_API void SetPluginEnvironment(bool isPlugin);
VM_API BOOL AfxInitExtensionModule(void* module, HINSTANCE instance); ///< TRUE
VM_API void AfxTermExtensionModule(void* module, BOOL all = FALSE);   ///< does nothing

/// One of the two user defaults that are set at launch ("NSDisabledDictationMenuItem",
/// "NSDisabledCharacterPaletteMenuItem"), or false for any other name.
VM_API bool VMUserDefaultBool(const char* name);
