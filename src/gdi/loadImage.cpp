// Loading by handle.
#include <vmcore/gdi/CBitmap.h>

#include <vmcore/app/CWinApp.h>

#include "app/appState.h"
#include "platform/messagebox.h"

namespace {

// Switches the resource handle for one load.
class ResourcesOf {
public:
    explicit ResourcesOf(HINSTANCE instance) : m_before(AfxGetResourceHandle()) {
        AfxSetResourceHandle(instance ? instance : vm::App().hInstance);
    }
    ~ResourcesOf() { AfxSetResourceHandle(m_before); }
    ResourcesOf(const ResourcesOf&) = delete;
    ResourcesOf& operator=(const ResourcesOf&) = delete;

private:
    void* m_before;
};

} // namespace

HANDLE LoadImage(HINSTANCE instance, const char* name, unsigned int type, int, int, unsigned int) {
    if (type != IMAGE_BITMAP) {
        vm::ShowMessageBox(nullptr, "LoadImage: request to load undefined image type", "VM Core",
                           0);
        return nullptr;
    }
    const ResourcesOf resources(instance);
    CBitmap bitmap;
    return bitmap.LoadBitmap(name) ? bitmap.Detach() : nullptr;
}

HBITMAP LoadBitmap(HINSTANCE instance, const char* name) {
    return LoadImage(instance, name, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR);
}
