// The walk through a listing, on plain data: one name a line, as the server sent them.
#pragma once

#include <cstddef>
#include <string_view>

namespace vm {

/// A name of this length is too long; the longest one is a byte shorter.
constexpr std::size_t kListingNameLimit = 255;

struct ListingName {
    bool found = false;
    bool more = false;        ///< more than a single byte follows the line of the name
    std::size_t position = 0; ///< where the next walk begins; behind `listing` when it was given up
    char name[kListingNameLimit] = {}; ///< ended by a zero
};

/// The next name from `position` on whose end is `pattern` without its first character.
ListingName NextListingName(std::string_view listing, std::size_t position,
                            std::string_view pattern);

} // namespace vm
