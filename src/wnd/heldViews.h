// The toolkit goes on with a view after a handler inside its paint or its resize, whatever loop the
// handler has run. Until then no view is freed, and no window painted a second time.
#pragma once

#include <functional>

class QObject;

namespace vm {

/// Lives while the toolkit is in the middle of a view.
class HeldViews {
public:
    HeldViews();
    ~HeldViews();
    HeldViews(const HeldViews&) = delete;
    HeldViews& operator=(const HeldViews&) = delete;

    /// Calls `action` now, or when the last of these objects goes; never after `context` is freed.
    static void WhenReleased(QObject* context, std::function<void()> action);
};

} // namespace vm
