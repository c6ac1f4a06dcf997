// A plug-in of the stranger's program.
#include <afxwin.h>

extern "C" __attribute__((visibility("default"))) int Tool() {
    return AfxGetApp() != nullptr;
}
