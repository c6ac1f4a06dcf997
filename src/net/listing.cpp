// Reads a listing byte by byte: carriage returns are passed over wherever they stand, a line feed
// ends a name, and a zero where a walk begins ends the listing.
#include "net/listing.h"

namespace vm {
namespace {

enum class Line { Complete, TooLong, Unfinished };

// Reads one line into `result`, whose position moves behind it.
Line ReadLine(std::string_view listing, ListingName& result) {
    std::size_t length = 0;
    while (result.position < listing.size()) {
        const char c = listing[result.position++];
        if (c == '\r') continue;
        result.name[length] = c == '\n' ? '\0' : c;
        if (c == '\n') return Line::Complete;
        if (++length == kListingNameLimit) return Line::TooLong;
    }
    return Line::Unfinished;
}

// What follows a name that is too long would begin in its middle: none of it is a name.
ListingName GiveUp(std::size_t position) {
    ListingName nothing;
    nothing.position = position;
    return nothing;
}

// An empty pattern looks for all names.
bool MatchesPattern(std::string_view name, std::string_view pattern) {
    return pattern.empty() || name.ends_with(pattern.substr(1));
}

} // namespace

ListingName NextListingName(std::string_view listing, std::size_t position,
                            std::string_view pattern) {
    ListingName result;
    result.position = position;
    if (position >= listing.size() || listing[position] == '\0') return result;
    for (;;) {
        switch (ReadLine(listing, result)) {
        case Line::TooLong:
            return GiveUp(listing.size());
        case Line::Unfinished:
            return GiveUp(result.position);
        case Line::Complete:
            break;
        }
        if (!MatchesPattern(result.name, pattern)) continue;
        result.found = true;
        result.more = result.position + 1 < listing.size();
        return result;
    }
}

} // namespace vm
