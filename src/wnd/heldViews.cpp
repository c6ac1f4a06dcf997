#include "wnd/heldViews.h"

#include <utility>
#include <vector>

#include <QtCore/QPointer>

namespace vm {
namespace {

struct Postponed {
    QPointer<QObject> context;
    std::function<void()> action;
};

struct Held {
    int count = 0;
    std::vector<Postponed> postponed;
};

Held& State() {
    static auto* const s_held = new Held;
    return *s_held;
}

} // namespace

HeldViews::HeldViews() {
    ++State().count;
}

HeldViews::~HeldViews() {
    if (--State().count > 0) return;
    for (const Postponed& later : std::exchange(State().postponed, {}))
        if (later.context) later.action();
}

void HeldViews::WhenReleased(QObject* context, std::function<void()> action) {
    if (State().count > 0)
        State().postponed.push_back({context, std::move(action)});
    else
        action();
}

} // namespace vm
