// A pair of arrows that counts a number, and shows it in a control beside it. The toolkit has such
// arrows only as part of a number field.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

namespace vm {

/// Held for so many seconds, a step counts so much.
struct SpinAcceleration {
    unsigned seconds;
    int step;
};

class SpinArrows : public QWidget {
public:
    enum class Align { None, Left, Right };
    struct BuddyUse {
        bool showsNumber = true; ///< and a number that is typed there counts
        bool takesKeys = true;   ///< its arrow keys step
        Align align = Align::None;
    };

    explicit SpinArrows(QWidget* parent = nullptr);

    // Told of the user's steps, both may free the arrows. The first may change the step, and refuses
    // it with false.
    std::function<bool(int& delta)> onStep;
    std::function<void()> onStepped;

    bool IsHorizontal() const { return m_isHorizontal; }
    void SetHorizontal(bool horizontal);
    void SetWraps(bool wraps);
    int First() const { return m_first; }
    int Last() const { return m_last; }
    /// Up leads from the first to the last, which may be below it.
    void SetRange(int first, int last);
    int Position() const { return m_position; }
    /// What is typed in the buddy counts from now on; false when it is no number of the range.
    bool ReadBuddy();
    void SetPosition(int position); ///< within the range
    QWidget* Buddy() const { return m_buddy; }
    const BuddyUse& Use() const { return m_use; }
    void SetUse(const BuddyUse& use) { m_use = use; }
    void SetBuddy(QWidget* buddy);
    int Base() const { return m_base; }
    void SetBase(int base);
    const std::vector<SpinAcceleration>& Accelerations() const { return m_accelerations; }
    void SetAccelerations(std::vector<SpinAcceleration> accelerations);

    bool CanStep(int direction) const;
    // As its user does.
    void Step(int direction); ///< 1 up, -1 down
    void StepBy(int delta);
    QRect ArrowRect(int direction) const;
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* buddy, QEvent* event) override;
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool StepsByKey(const QKeyEvent& event);
    void LetGo();
    int Increment() const;
    int After(int delta) const;
    void ShowNumber();
    void AlignToBuddy();
    void GiveWidthBack();
    void DrawArrow(class QPainter& painter, int direction) const;

    bool m_isHorizontal = false;
    bool m_wraps = false;
    int m_first = 0;
    int m_last = 100;
    int m_position = 0;
    int m_base = 10;
    std::vector<SpinAcceleration> m_accelerations = {{0, 1}, {2, 5}, {5, 20}};
    QPointer<QWidget> m_buddy;
    BuddyUse m_use;
    int m_taken = 0;                            // of the buddy's width
    std::optional<Qt::FocusPolicy> m_ownPolicy; // without a buddy that takes the keys
    int m_held = 0;                             // the direction of the arrow that is held
    QElapsedTimer m_since;
    QBasicTimer m_repeat;
};

/// Decimal, or 0x and four digits at least.
QString SpinNumber(int position, int base);
/// Nothing for a text that is no number.
std::optional<int> SpinNumberOf(const QString& text, int base);

} // namespace vm
