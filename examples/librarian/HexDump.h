// A message as lines of hexadecimal text. Pure functions.
#pragma once

#include <string>

#include "SysexInfo.h"

/// One line of 16 bytes: "00010", " F0 43 00 ..." and the same bytes as characters.
struct HexLine {
    std::string address;
    std::string bytes; ///< always of the same length
    std::string characters;
};

int HexLineCount(const SysexBytes& message);
HexLine MakeHexLine(const SysexBytes& message, int line);
