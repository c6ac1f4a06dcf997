#include "gdi/shutdown.h"

namespace vm {
namespace {
bool s_closeRequestVerified = false; // main thread
}

bool CloseRequestVerified() {
    return s_closeRequestVerified;
}

void SetCloseRequestVerified() {
    s_closeRequestVerified = true;
}

} // namespace vm
