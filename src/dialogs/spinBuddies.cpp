#include "dialogs/spinBuddies.h"

#include <QtCore/QVariant>

#include "wnd/SpinArrows.h"

namespace vm {
namespace {

bool IsNotOff(const SpinArrows& arrows, const char* name) {
    const QVariant value = arrows.property(name);
    return !value.isValid() || value.toBool();
}

} // namespace

void SetBuddyOf(SpinArrows& arrows, QWidget& buddy) {
    SpinArrows::BuddyUse use;
    use.showsNumber = IsNotOff(arrows, "buddyNumber");
    use.takesKeys = IsNotOff(arrows, "buddyKeys");
    const QString side = arrows.property("buddyAlign").toString();
    if (side == QLatin1String("left")) use.align = SpinArrows::Align::Left;
    if (side == QLatin1String("right")) use.align = SpinArrows::Align::Right;
    arrows.SetUse(use);
    arrows.SetBuddy(&buddy);
}

} // namespace vm
