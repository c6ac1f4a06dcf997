#include "app/appState.h"

namespace vm {

AppState& App() {
    static auto* const s_app = new AppState;
    return *s_app;
}

} // namespace vm
