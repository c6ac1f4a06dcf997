// The help book: its pages are anchors "DV_<topic>" of a page in the bundle's resources, shown with
// the desktop's browser.
#pragma once

#include <string>

namespace vm {

/// Opens the page of `topic` in the book that the bundle's CFBundleHelpBookName names.
void OpenHelpOfBundle(int topic);

/// Opens `anchor` in the book; false, with a log line, when the book has no page in the bundle.
bool OpenHelpAnchor(const std::string& anchor, const std::string& book);

/// The address of the anchor: <resources>/<book>/index.html#<anchor>, or
/// <resources>/<book>.html#...; empty when neither file is there.
std::string HelpAddress(const std::string& resources, const std::string& book,
                        const std::string& anchor);

/// Shows an address instead of the desktop's browser; null restores that.
using HelpOpener = bool (*)(const std::string& address);
void SetHelpOpener(HelpOpener opener);

} // namespace vm
