// The plug-ins of the program (see LibrarianPlugin.h): finding, loading and asking them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "LibrarianPlugin.h"
#include "SysexInfo.h"

struct Bank;

/// A file of the PlugIns folder.
struct PluginFile {
    std::string file;
    std::string name;    ///< what the plug-in calls itself; "" when it was not loaded
    std::string problem; ///< why it was not loaded, "" when it was
};

class Plugins {
public:
    /// Why a plug-in must not be loaded, "" when it may be.
    using Check = std::function<std::string(const std::string& path)>;

    /// Loads every shared object of the folder that was not loaded before and passes the check, in
    /// the order of their names, and logs a line for each: "Plug-in loaded: <name>" or "Plug-in not
    /// loaded: <file>: <why>". A folder that is missing has none.
    void LoadAll(const std::string& folder, const Check& check = {});

    const std::vector<PluginFile>& Files() const { return m_files; }
    /// The names that the loaded plug-ins give themselves, with commas; "" without any.
    std::string Names() const;
    /// The files that were not loaded, with commas.
    std::string Refused() const;

    /// Gives each message that a plug-in knows the kind and patch name that it says.
    void Describe(Bank& bank) const;
    /// The first editor that knows the message; null when there is none.
    const LibrarianEditor* EditorFor(const SysexBytes& message) const;

private:
    PluginFile& FileNamed(const std::string& file);
    std::string Load(const std::string& path, std::string& name);

    std::vector<const LibrarianPluginRecord*> m_records;
    std::vector<PluginFile> m_files;
};
