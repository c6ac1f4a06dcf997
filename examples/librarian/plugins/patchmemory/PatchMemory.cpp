// Knows the patch memory of model 16: data sets of one patch each, which names the timbre it plays.
#include <cstdio>

#include "../../LibrarianPlugin.h"

namespace {

// F0 41 <device> 16 12 <address: 05, two 7-bit bytes> <patch> <checksum> F7
constexpr std::size_t kDevice = 2;
constexpr std::size_t kAddress = 5;
constexpr std::size_t kPatch = 8;
constexpr unsigned kPatchSize = 8;
constexpr unsigned kPatches = 128; // A11 to A88, B11 to B88
constexpr std::size_t kSize = kPatch + kPatchSize + 2;
constexpr unsigned char kStart[] = {0xF0, 0x41, 0x10, 0x16, 0x12, 0x05};

bool IsPatch(const unsigned char* message, std::size_t size) {
    if (size != kSize) return false;
    for (std::size_t i = 0; i < sizeof kStart; ++i)
        if (i != kDevice && message[i] != kStart[i]) return false;
    return true;
}

int Describe(const unsigned char* message, std::size_t size, LibrarianMessageText* text) {
    if (!IsPatch(message, size)) return 0;
    constexpr const char* kGroups[] = {"A", "B", "memory ", "rhythm "};
    const unsigned offset = message[kAddress + 1] * 128u + message[kAddress + 2];
    const unsigned group = message[kPatch];
    const unsigned timbre = message[kPatch + 1];
    const unsigned patch = offset / kPatchSize;
    if (offset % kPatchSize != 0 || patch >= kPatches || group > 3 || timbre > 63) return 0;
    std::snprintf(text->kind, sizeof text->kind, "Patch %c%u%u", patch < kPatches / 2 ? 'A' : 'B',
                  patch / 8 % 8 + 1, patch % 8 + 1);
    std::snprintf(text->patch, sizeof text->patch, "Timbre %s%u", kGroups[group], timbre + 1);
    return 1;
}

constexpr LibrarianPluginRecord kRecord = {LIBRARIAN_PLUGIN_VERSION, "Patch memory", Describe};

} // namespace

LIBRARIAN_PLUGIN_EXPORT const LibrarianPluginRecord* LibrarianPlugin(void) {
    return &kRecord;
}
