// The picture that desktops show for the program's windows.
#pragma once

namespace vm {

/// Takes the picture that the bundle's CFBundleIconFile names, a PNG file in its Resources; the extension may be
/// left out. Nothing without such a key; what is no picture there is one log line.
void ShowProgramIcon();

} // namespace vm
