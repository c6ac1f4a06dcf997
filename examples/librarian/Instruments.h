// The instruments that the opened banks were made on, kept in the registry: a key for each below
// Software\VMCore\Librarian\Instruments.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

struct Bank;

struct Instrument {
    std::string name; ///< the key's name, see InstrumentOf in SysexInfo.h
    std::string maker;
    DWORD messages = 0;   ///< how many the last bank holds
    std::string lastBank; ///< its path; "" when the registry cannot hold it
};

/// What the registry holds, in the order in which the instruments were first seen.
std::vector<Instrument> LoadInstruments();

/// The instruments of a bank, in the order of its messages.
std::vector<Instrument> InstrumentsOf(const Bank& bank, const std::string& path);

/// Takes the instruments of a bank into `known` and into the registry. FALSE when it has none.
BOOL RememberInstruments(std::vector<Instrument>& known, const Bank& bank, const std::string& path);
