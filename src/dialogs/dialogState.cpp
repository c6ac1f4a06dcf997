#include "dialogs/dialogState.h"

namespace vm {

DialogState& Dialogs() {
    static auto* const s_state = new DialogState;
    return *s_state;
}

} // namespace vm
