#include "wnd/SpinArrows.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <QtCore/QVariant>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include "wnd/accessibleArrows.h"
#include "wnd/accessibleView.h"
#include "wnd/controlText.h"

namespace vm {
namespace {

constexpr int kThickness = 17;
constexpr char kWrapProperty[] = "wrap";
constexpr char kHorizontalProperty[] = "horizontal";

bool IsBehindModalWindow(const QWidget& view) {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal != view.window();
}

} // namespace

QString SpinNumber(int position, int base) {
    if (base != 16) return QString::number(position);
    return QStringLiteral("0x") +
           QStringLiteral("%1").arg(static_cast<quint32>(position), 4, 16, QChar(u'0')).toUpper();
}

std::optional<int> SpinNumberOf(const QString& text, int base) {
    bool isNumber = false;
    const int number = base == 16 ? static_cast<int>(text.trimmed().toUInt(&isNumber, 16))
                                  : text.trimmed().toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

SpinArrows::SpinArrows(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    InstallAccessibleViews();
}

QSize SpinArrows::sizeHint() const {
    return m_isHorizontal ? QSize(2 * kThickness, kThickness) : QSize(kThickness, 2 * kThickness);
}

void SpinArrows::SetHorizontal(bool horizontal) {
    m_isHorizontal = horizontal;
    updateGeometry();
    update();
}

void SpinArrows::SetWraps(bool wraps) {
    m_wraps = wraps;
    update();
}

void SpinArrows::SetRange(int first, int last) {
    m_first = first;
    m_last = last;
    const auto [low, high] = std::minmax(first, last);
    if (m_position < low || m_position > high) SetPosition(m_position);
    update();
}

void SpinArrows::SetPosition(int position) {
    const auto [low, high] = std::minmax(m_first, m_last);
    m_position = std::clamp(position, low, high);
    ShowNumber();
    TellPosition(*this);
    update();
}

void SpinArrows::SetBase(int base) {
    m_base = base;
    ShowNumber();
}

void SpinArrows::SetAccelerations(std::vector<SpinAcceleration> accelerations) {
    m_accelerations = std::move(accelerations);
}

void SpinArrows::ShowNumber() {
    if (m_buddy && m_use.showsNumber) SetControlText(*m_buddy, SpinNumber(m_position, m_base));
}

bool SpinArrows::ReadBuddy() {
    if (!m_buddy || !m_use.showsNumber) return true;
    const auto number = SpinNumberOf(ControlText(*m_buddy).value_or(QString()), m_base);
    const auto [low, high] = std::minmax(m_first, m_last);
    if (!number || *number < low || *number > high) return false;
    m_position = *number;
    update();
    return true;
}

void SpinArrows::SetBuddy(QWidget* buddy) {
    if (buddy && buddy == m_buddy) return;
    if (m_buddy) m_buddy->removeEventFilter(this);
    GiveWidthBack();
    m_buddy = buddy;
    if (!m_ownPolicy) m_ownPolicy = focusPolicy();
    setFocusPolicy(buddy && m_use.takesKeys ? Qt::NoFocus : *m_ownPolicy);
    if (!buddy) return;
    if (m_use.takesKeys) buddy->installEventFilter(this);
    AlignToBuddy();
    ReadBuddy(); // a number that is there already stays
}

// The arrows take their width from the buddy's.
void SpinArrows::AlignToBuddy() {
    if (m_use.align == Align::None || m_buddy->parentWidget() != parentWidget()) return;
    QRect field = m_buddy->geometry();
    const int width = std::min(sizeHint().width(), field.width());
    QRect own = field;
    if (m_use.align == Align::Right) {
        own.setLeft(field.right() - width + 1);
        field.setRight(own.left() - 1);
    } else {
        own.setWidth(width);
        field.setLeft(own.right() + 1);
    }
    m_taken = m_buddy->width() - field.width();
    m_buddy->setGeometry(field);
    setGeometry(own);
}

void SpinArrows::GiveWidthBack() {
    const int taken = std::exchange(m_taken, 0);
    if (!m_buddy || taken == 0) return;
    const bool atLeft = m_use.align == Align::Left;
    m_buddy->setGeometry(
        m_buddy->geometry().adjusted(atLeft ? -taken : 0, 0, atLeft ? 0 : taken, 0));
}

bool SpinArrows::CanStep(int direction) const {
    return m_first != m_last && (m_wraps || m_position != (direction > 0 ? m_last : m_first));
}

int SpinArrows::Increment() const {
    const auto seconds = m_since.isValid() ? m_since.elapsed() / 1000 : 0;
    int increment = 1;
    for (const SpinAcceleration& acceleration : m_accelerations)
        if (seconds >= acceleration.seconds) increment = acceleration.step;
    return increment;
}

int SpinArrows::After(int delta) const {
    const auto [low, high] = std::minmax(m_first, m_last);
    const std::int64_t next = std::int64_t{m_position} + delta;
    if (m_wraps && next > high) return low;
    if (m_wraps && next < low) return high;
    return static_cast<int>(std::clamp<std::int64_t>(next, low, high));
}

void SpinArrows::Step(int direction) {
    ReadBuddy();
    if (CanStep(direction)) StepBy(direction * Increment() * (m_last < m_first ? -1 : 1));
}

void SpinArrows::StepBy(int delta) {
    const QPointer<SpinArrows> self = this;
    const auto ask = onStep;
    if (ask && !ask(delta)) return;
    if (!self || After(delta) == m_position) return;
    SetPosition(After(delta));
    if (const auto tell = onStepped) tell();
}

void SpinArrows::LetGo() {
    m_repeat.stop();
    m_since.invalidate();
    m_held = 0;
    update();
}

bool SpinArrows::StepsByKey(const QKeyEvent& event) {
    const bool up = event.key() == Qt::Key_Up || (m_isHorizontal && event.key() == Qt::Key_Right);
    const bool down =
        event.key() == Qt::Key_Down || (m_isHorizontal && event.key() == Qt::Key_Left);
    if ((!up && !down) || !isEnabled() || event.modifiers() & ~Qt::KeypadModifier) return false;
    if (!event.isAutoRepeat() || !m_since.isValid()) m_since.start();
    Step(up ? 1 : -1);
    return true;
}

bool SpinArrows::event(QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange) {
        const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
        if (name == kWrapProperty) SetWraps(property(kWrapProperty).toBool());
        if (name == kHorizontalProperty) SetHorizontal(property(kHorizontalProperty).toBool());
    }
    return QWidget::event(event);
}

// A field of one line has no use for these keys; horizontal arrows leave it its own.
bool SpinArrows::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    return (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down) && StepsByKey(key);
}

void SpinArrows::keyPressEvent(QKeyEvent* event) {
    if (!StepsByKey(*event)) QWidget::keyPressEvent(event);
}

void SpinArrows::wheelEvent(QWheelEvent* event) {
    const int turned = event->angleDelta().y();
    m_since.invalidate();
    if (turned != 0) Step(turned > 0 ? 1 : -1);
}

void SpinArrows::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    m_held = ArrowRect(1).contains(event->position().toPoint()) ? 1 : -1;
    m_since.start();
    m_repeat.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold), this);
    update();
    Step(m_held);
}

void SpinArrows::mouseReleaseEvent(QMouseEvent*) {
    LetGo();
}
void SpinArrows::hideEvent(QHideEvent* event) {
    LetGo();
    QWidget::hideEvent(event);
}
void SpinArrows::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::ActivationChange)
        LetGo();
    QWidget::changeEvent(event);
}

void SpinArrows::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_repeat.timerId()) return QWidget::timerEvent(event);
    if (IsBehindModalWindow(*this)) return LetGo(); // the release of the button went there
    m_repeat.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate), this);
    Step(m_held);
}

QRect SpinArrows::ArrowRect(int direction) const {
    QRect arrow = rect();
    if (m_isHorizontal && direction > 0) arrow.setLeft(width() / 2);
    if (m_isHorizontal && direction < 0) arrow.setRight(width() / 2 - 1);
    if (!m_isHorizontal && direction > 0) arrow.setBottom(height() / 2 - 1);
    if (!m_isHorizontal && direction < 0) arrow.setTop(height() / 2);
    return arrow;
}

void SpinArrows::DrawArrow(QPainter& painter, int direction) const {
    QStyleOptionButton option;
    option.initFrom(this);
    option.rect = ArrowRect(direction);
    const bool isHeld = m_held == direction;
    option.state |= isHeld ? QStyle::State_Sunken : QStyle::State_Raised;
    if (!CanStep(direction)) option.state &= ~QStyle::State_Enabled;
    style()->drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter, this);
    const int size = std::min(option.rect.width(), option.rect.height()) * 2 / 3;
    option.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, {size, size}, option.rect);
    const auto upright =
        direction > 0 ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown;
    const auto across =
        direction > 0 ? QStyle::PE_IndicatorArrowRight : QStyle::PE_IndicatorArrowLeft;
    style()->drawPrimitive(m_isHorizontal ? across : upright, &option, &painter, this);
}

void SpinArrows::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawArrow(painter, 1);
    DrawArrow(painter, -1);
}

} // namespace vm
