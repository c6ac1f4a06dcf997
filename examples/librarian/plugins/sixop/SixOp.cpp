// Knows the voice data of six-operator synthesizers: dumps of one voice and of 32.
#include <string>

#include "../../LibrarianPlugin.h"

namespace {

constexpr std::size_t kHeader = 6; // F0 43 <channel> <format> <count: two 7-bit bytes>
constexpr std::size_t kNameLength = 10;

// The voices of a dump, each with its name at the end.
struct Format {
    unsigned char number;
    std::size_t voices;
    std::size_t voiceSize;
    const char* kind;
};

constexpr Format kFormats[] = {{0, 1, 155, "Six-operator voice"},
                               {9, 32, 128, "32 six-operator voices"}};

bool IsDump(const unsigned char* message, std::size_t size, const Format& format) {
    return size == kHeader + format.voices * format.voiceSize + 2 && message[0] == 0xF0 &&
           message[1] == 0x43 && message[2] < 0x10 && message[3] == format.number;
}

// Without the blanks that fill it up; what is no ASCII is a question mark.
std::string VoiceName(const unsigned char* message, const Format& format, std::size_t voice) {
    const unsigned char* end = message + kHeader + (voice + 1) * format.voiceSize;
    std::string name;
    for (const unsigned char* at = end - kNameLength; at < end; ++at) {
        const char c = *at >= ' ' && *at < 0x7F ? static_cast<char>(*at) : '?';
        if (c != ' ' || (!name.empty() && name.back() != ' ')) name += c;
    }
    if (!name.empty() && name.back() == ' ') name.pop_back();
    return name;
}

int Describe(const unsigned char* message, std::size_t size, LibrarianMessageText* text) {
    for (const Format& format : kFormats) {
        if (!IsDump(message, size, format)) continue;
        std::string names = VoiceName(message, format, 0);
        if (format.voices > 1) names += " to " + VoiceName(message, format, format.voices - 1);
        std::string(format.kind).copy(text->kind, sizeof text->kind - 1);
        names.copy(text->patch, sizeof text->patch - 1);
        return 1;
    }
    return 0;
}

int NameVoice(const unsigned char* message, size_t size, size_t index, LibrarianMessageText* text) {
    for (const Format& format : kFormats) {
        if (format.voices == 1 || index >= format.voices || !IsDump(message, size, format))
            continue;
        VoiceName(message, format, index).copy(text->patch, sizeof text->patch - 1);
        return 1;
    }
    return 0;
}

constexpr LibrarianVoicesRecord kRecord = {
    {LIBRARIAN_VOICES_VERSION, "Six-operator voices", Describe}, NameVoice};

} // namespace

LIBRARIAN_PLUGIN_EXPORT const LibrarianPluginRecord* LibrarianPlugin(void) {
    return &kRecord.plugin;
}
