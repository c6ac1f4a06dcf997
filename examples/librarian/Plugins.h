// The plug-ins of the program (see LibrarianPlugin.h): finding, loading and asking them.
#pragma once

#include <string>
#include <vector>

#include "LibrarianPlugin.h"

struct Bank;

class Plugins {
public:
    /// Loads every shared object of the folder, in the order of their names, and logs a line for
    /// each: "Plug-in loaded: <name>" or "Plug-in not loaded: <file>: <why>". A folder that is
    /// missing has none.
    void LoadAll(const std::string& folder);

    /// The names that the loaded plug-ins give themselves, with commas; "" without any.
    std::string Names() const;

    /// Gives each message that a plug-in knows the kind and patch name that it says.
    void Describe(Bank& bank) const;

private:
    void Load(const std::string& folder, const std::string& file);

    std::vector<const LibrarianPluginRecord*> m_records;
};
