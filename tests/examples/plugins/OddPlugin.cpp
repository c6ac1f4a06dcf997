// A plug-in that something is wrong with: ODD_PLUGIN says what.
#include "librarian/LibrarianPlugin.h"

#include <csignal>
#include <cstdlib>

#include <unistd.h>

#define WRONG_VERSION 1
#define NO_ENTRY 2
#define NO_RECORD 3
#define INCOMPLETE 4
#define GREEDY 5 // fills the texts without a zero at their end
#define INCOMPLETE_EDITOR 6
#define SEGFAULTS 7
#define ABORTS_AT_LOAD 8
#define THROWS 9
#define HANGS 10
#define EXITS 11

#if ODD_PLUGIN == NO_ENTRY

LIBRARIAN_PLUGIN_EXPORT int AnotherEntry(void) {
    return 0;
}

#else

namespace {

int Describe(const unsigned char*, size_t, LibrarianMessageText* text) {
    for (char& c : text->kind) c = 'k';
    for (char& c : text->patch) c = 'p';
    return 1;
}

constexpr unsigned kVersion = LIBRARIAN_PLUGIN_VERSION + (ODD_PLUGIN == INCOMPLETE_EDITOR) +
                              8 * (ODD_PLUGIN == WRONG_VERSION);
constexpr LibrarianEditor kEditor = {};
constexpr LibrarianEditorRecord kRecord = {
    {kVersion, "Odd", ODD_PLUGIN == INCOMPLETE ? nullptr : Describe}, &kEditor};

#if ODD_PLUGIN == ABORTS_AT_LOAD
[[gnu::constructor]] void AtLoad() {
    std::abort();
}
#endif

void Misbehave() {
    if (ODD_PLUGIN == SEGFAULTS) std::raise(SIGSEGV);
    if (ODD_PLUGIN == THROWS) throw 1;
    if (ODD_PLUGIN == EXITS) std::exit(0);
    while (ODD_PLUGIN == HANGS) pause();
}

} // namespace

LIBRARIAN_PLUGIN_EXPORT const LibrarianPluginRecord* LibrarianPlugin(void) {
    Misbehave();
    return ODD_PLUGIN == NO_RECORD ? nullptr : &kRecord.plugin;
}

#endif
