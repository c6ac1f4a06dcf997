// The plug-ins of the program (see LibrarianPlugin.h): finding, loading and asking them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "LibrarianPlugin.h"
#include "SysexInfo.h"

struct Bank;

/// A file of the PlugIns folder.
struct PluginFile {
    std::string file;
    std::string name;       ///< what the plug-in calls itself; "" when it was not loaded
    std::string problem;    ///< why it was not loaded, "" when it was
    bool isAwaited = false; ///< nobody knows yet whether it may be loaded
};

class Plugins {
public:
    /// Why a plug-in must not be loaded, "" when it may be; nothing while that is not known.
    using Check = std::function<std::optional<std::string>(const std::string& path)>;

    /// Loads every shared object of the folder that was not loaded before and passes the check, in
    /// the order of their names, and logs a line for each: "Plug-in loaded: <name>" or "Plug-in not
    /// loaded: <file>: <why>". A folder that is missing has none. Returns the paths of those of which
    /// nothing is known.
    std::vector<std::string> LoadAll(const std::string& folder, const Check& check = {});
    /// The same for one of those, now that it is known.
    void Decide(const std::string& path, const std::string& problem);

    const std::vector<PluginFile>& Files() const { return m_files; }
    /// The names that the loaded plug-ins give themselves, with commas; "" without any.
    std::string Names() const;
    bool AreAwaited() const; ///< nobody knows yet whether some may be loaded
    /// The files that must not be loaded, with commas.
    std::string Refused() const;

    /// Gives each message that a plug-in knows the kind and the names that it says.
    void Describe(Bank& bank) const;
    /// The first editor that knows the message; null when there is none.
    const LibrarianEditor* EditorFor(const SysexBytes& message) const;

private:
    PluginFile& FileNamed(const std::string& file);
    void Take(PluginFile& plugin, const std::string& path, const std::string& problem);
    std::string Load(const std::string& path, std::string& name);

    std::vector<const LibrarianPluginRecord*> m_records;
    std::vector<PluginFile> m_files;
};
