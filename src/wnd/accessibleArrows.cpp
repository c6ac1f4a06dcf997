#include "wnd/accessibleArrows.h"

#include <algorithm>

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include "wnd/SpinArrows.h"

namespace vm {
namespace {

class AccessibleArrows : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleArrows(SpinArrows& arrows)
        : QAccessibleWidget(&arrows, QAccessible::SpinBox), m_arrows(arrows) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type != QAccessible::ValueInterface) return QAccessibleWidget::interface_cast(type);
        return static_cast<QAccessibleValueInterface*>(this);
    }

    QVariant currentValue() const override { return m_arrows.Position(); }
    // The reader's user is the user.
    void setCurrentValue(const QVariant& value) override {
        m_arrows.StepBy(value.toInt() - m_arrows.Position());
    }
    QVariant maximumValue() const override { return std::max(m_arrows.First(), m_arrows.Last()); }
    QVariant minimumValue() const override { return std::min(m_arrows.First(), m_arrows.Last()); }
    QVariant minimumStepSize() const override { return 1; }

private:
    SpinArrows& m_arrows;
};

} // namespace

QAccessibleInterface* MakeAccessible(SpinArrows& arrows) {
    return new AccessibleArrows(arrows);
}

void TellPosition(SpinArrows& arrows) {
    if (!QAccessible::isActive()) return;
    QAccessibleValueChangeEvent event(&arrows, arrows.Position());
    QAccessible::updateAccessibility(&event);
}

} // namespace vm
