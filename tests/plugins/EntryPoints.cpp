// A plug-in that defines the library's entry points again, as ported plug-ins do, and counts who
// calls them.
#include <vmcore/app/lifecycle.h>

namespace {
int s_calls = 0;
}

__attribute__((visibility("default"))) int DllMain(HINSTANCE, unsigned) {
    ++s_calls;
    return 1;
}
__attribute__((visibility("default"))) int InitVMCore() {
    ++s_calls;
    return 1;
}
__attribute__((visibility("default"))) void TermVMCore() {
    ++s_calls;
}

extern "C" __attribute__((visibility("default"))) int CallsOfEntryPoints() {
    return s_calls;
}
extern "C" __attribute__((visibility("default"))) const char* PlugInLetter() {
    return PLUGIN_LETTER;
}

// With a record of its own, which detaches the library when the process ends.
extern "C" __attribute__((visibility("default"))) int AttachLibrary() {
    static MacInstance record;
    record.Initialize(PLUGIN_LETTER);
    char name[256] = "";
    AfxGetInstanceName(&record, name);
    return name[0] == PLUGIN_LETTER[0];
}
