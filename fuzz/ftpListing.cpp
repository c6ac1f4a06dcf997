// The walk through a listing, over any bytes: the first line of the input is the pattern, what follows
// is the listing.
#include "net/listing.h"

#include <string>

#include "target.h"

using fuzz::Require;

namespace {

void CheckName(const vm::ListingName& next, std::string_view pattern) {
    const std::string_view name = next.name;
    Require(name.size() < vm::kListingNameLimit, "a name has room");
    Require(name.find_first_of("\r\n") == std::string_view::npos, "a name has no line end");
    Require(pattern.empty() || name.ends_with(pattern.substr(1)), "a name matches the pattern");
}

void Walk(std::string_view listing, std::string_view pattern) {
    std::size_t position = 0;
    for (;;) {
        const vm::ListingName next = vm::NextListingName(listing, position, pattern);
        Require(next.position <= listing.size(), "the walk stays in the listing");
        Require(next.position >= position, "the walk goes on");
        if (!next.found) {
            Require(!next.more, "behind nothing comes nothing");
            return;
        }
        Require(next.position > position, "a name is a step");
        Require(listing[next.position - 1] == '\n', "a name ends with its line");
        Require(next.more == (next.position + 1 < listing.size()), "more is more than a byte");
        CheckName(next, pattern);
        position = next.position;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = fuzz::Text(data, size);
    const std::size_t line = input.find('\n');
    if (line == std::string_view::npos) return 0;
    const std::string listing(input.substr(line + 1)); // of its own: reading beyond it is caught
    Walk(listing, input.substr(0, line));
    return 0;
}
