// The filters of file dialogs, from the forms in which programs write them to the toolkit's. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QtCore/QString>

namespace vm {

struct FileFilter {
    std::string name;
    std::vector<std::string> patterns; ///< none: every file
    bool operator==(const FileFilter&) const = default;
};

/// "Name|*.a;*.b|Other|*.*||" with zeros in place of the bars, up to the first empty name.
std::string FilterWithZeros(const char* bars);

/// Names and patterns in turn, each ended by a zero, up to an empty name. Null is no filter at all.
std::vector<FileFilter> ParseFilter(const char* pairs);

/// As the toolkit takes and shows it: "Name (*.a *.b)". The patterns take the place of such a list at
/// the end of the name; characters that the toolkit has a meaning for become '?'.
QString ToolkitFilter(const FileFilter& filter);

/// The extension of the first pattern that has just one, without the dot; empty without one.
std::string ExtensionOf(const FileFilter& filter);

} // namespace vm
