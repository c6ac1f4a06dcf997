// The texts of a program as lines of an ini file, and back. A line holds no line ends, ends at a ';', loses
// its blanks and is cut at 255 characters: a text is escaped, and a long one goes on in further lines.
//
//     [Strings]
//     101=Save the changes?\nThey are lost otherwise.
//     102=The first part of a long text,
//     102.1=\x20and the rest of it
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vm {

using StringTexts = std::map<unsigned, std::string>; ///< UTF-8, by number

/// The lines of one text, in order, without line ends: `\\`, `\n`, `\r`, `\t`, and `\x` with two
/// hexadecimal digits for what else a line cannot hold.
std::vector<std::string> StringLines(unsigned id, std::string_view text);

/// The texts of the section [Strings]. Lines that are none of these are passed over; of two with one
/// number the first counts.
StringTexts ParseStringTexts(std::string bytes);

} // namespace vm
