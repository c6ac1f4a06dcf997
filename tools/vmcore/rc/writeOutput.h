// What the writers share: where files and findings go, and names that are safe whatever a script says.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "rc/report.h"
#include "rc/writers.h"

namespace vm::rc {

/// What a statement's counterpart lacks or has differently; the report says all of it.
using Notes = std::vector<std::string>;

class Output {
public:
    explicit Output(Report& report) : m_report(report) {}

    /// False, with nothing added, when there is a file of this name.
    bool Add(const std::string& name, std::string bytes);
    bool Has(const std::string& name) const { return m_names.contains(name); }
    /// Converted to `where`, or approximated when there is anything to note.
    void Say(const Place& place, const std::string& what, const std::string& where,
             const Notes& notes = {});
    void LeaveOut(const Place& place, const std::string& what, const std::string& why);
    /// Left out because a file is not there.
    void Miss(const Place& place, const std::string& what, const std::string& file);

    std::vector<OutputFile> files;

private:
    std::set<std::string> m_names;
    Report& m_report;
};

/// "DIALOGEX IDD_ABOUT"
std::string Described(const std::string& keyword, const Id& id);
std::string Described(const Head& head);
/// As the script has it; its number where that is all there is.
std::string SymbolOf(const Id& id);

/// ASCII letters, digits and '_', no digit first, never empty and not too long.
std::string Identifier(std::string_view text);
/// What stands for the id in a file's name: its number, or its name as an identifier.
std::string FileId(const Id& id);
bool HasNumber(const Id& id);
/// "Bitmap_150.png"
std::string PictureFile(const Id& id);
/// To go behind a reason: "; there is no file 'x'", or nothing when there is.
std::string UnlessThere(bool isThere, const std::string& path);
/// "0x1F"
std::string Hexadecimal(std::uint32_t value);

} // namespace vm::rc
