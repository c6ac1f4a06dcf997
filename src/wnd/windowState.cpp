#include "wnd/windowState.h"

namespace vm {

WindowState& Windows() {
    static auto* const s_state = new WindowState;
    return *s_state;
}

} // namespace vm
