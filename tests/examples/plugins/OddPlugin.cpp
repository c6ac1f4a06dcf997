// A plug-in that something is wrong with: ODD_PLUGIN says what.
#include "librarian/LibrarianPlugin.h"

#define WRONG_VERSION 1
#define NO_ENTRY 2
#define NO_RECORD 3
#define INCOMPLETE 4
#define GREEDY 5 // fills the texts without a zero at their end

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

constexpr unsigned kVersion = LIBRARIAN_PLUGIN_VERSION + (ODD_PLUGIN == WRONG_VERSION);
constexpr LibrarianPluginRecord kRecord = {kVersion, "Odd",
                                           ODD_PLUGIN == INCOMPLETE ? nullptr : Describe};

} // namespace

LIBRARIAN_PLUGIN_EXPORT const LibrarianPluginRecord* LibrarianPlugin(void) {
    return ODD_PLUGIN == NO_RECORD ? nullptr : &kRecord;
}

#endif
