// From the name of a face to the file that holds it: what is installed under that name, else what
// the desktop's configuration or the table of metric-compatible faces puts in its place. The answer
// does not depend on the display or on its rendering settings.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vm {

/// A face name without the style words at its end, and what those words ask for.
struct FaceStyle {
    std::string family;
    bool bold = false;
    bool black = false;
    bool italic = false;
    bool narrow = false;
    bool operator==(const FaceStyle&) const = default;
};

/// "Arial Bold Italic" is Arial, bold and italic. A name of nothing but style words stays whole.
FaceStyle SplitFaceName(std::string_view name);

/// The file for `name` (family, full or PostScript name in any case, or a family followed by style
/// words); nothing when neither it nor a stand-in is installed. Of a collection file the first face
/// counts. Answers are kept for the process.
std::optional<std::string> FindFontFile(std::string_view name);

} // namespace vm
