#include "app/appState.h"

#include "platform/bundle.h"

namespace vm {

AppState& App() {
    static auto* const s_app = new AppState;
    return *s_app;
}

Bundle* ResourceBundle() {
    return App().DVBundle ? App().DVBundle : Bundle::Main();
}

} // namespace vm
