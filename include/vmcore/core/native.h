// The native objects that appear in signatures, as opaque names and plain records. A host passes
// them on; it never needs the toolkit's own headers.
#pragma once

#include <cstdint>

class QClipboard;
class QMenu;
class QString;
class QWidget;
class NSWinThread; // a thread object, see vmcore/app/threads.h

namespace vm {
class Bundle;          // a folder with an executable, its resources and its Info.plist
class FontFace;        // a platform font: a font file at a pixel size
class GraphicsContext; // what a CDC draws into
class Image;           // shared pixels
class NativeWindow;    // a top-level window
class PathList;        // an ordered list of path strings
} // namespace vm

using NSView = QWidget;             ///< a view: a control or a window's content
using NSMenu = QMenu;               ///< a menu
using NSWindow = vm::NativeWindow;  ///< a top-level window
using NSPasteboard = QClipboard;    ///< the clipboard
using NSBundle = vm::Bundle;        ///< see AfxSetDVBundle
using NSArray = vm::PathList;       ///< the paths of WM_DROPFILES: read them with DragQueryFile
using CFStringRef = const QString*; ///< a platform string: see SafeCFStringCopyToCString

/// A point of the classic 16-bit drawing interface: vertical first.
struct Point {
    std::int16_t v; ///< vertical
    std::int16_t h; ///< horizontal
};

/// A colour of the classic drawing interface: 16 bits a component.
struct RGBColor {
    std::uint16_t red;
    std::uint16_t green;
    std::uint16_t blue;
};

struct CGPoint {
    double x;
    double y;
};
struct CGSize {
    double width;
    double height;
};
/// A rectangle in doubles: origin and size.
struct CGRect {
    CGPoint origin;
    CGSize size;
};
