#include "wnd/controlText.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QSpinBox>

namespace vm {
namespace {

// Leading blanks and trailing text are allowed, as a control's number reads everywhere.
int LeadingNumber(const QString& text) {
    return std::atoi(text.toLatin1().constData());
}

} // namespace

bool IsButton(const QWidget& control) {
    return qobject_cast<const QAbstractButton*>(&control) != nullptr;
}

std::optional<QString> ControlText(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
    if (const auto* line = qobject_cast<const QLineEdit*>(&control)) return line->text();
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&control))
        return edit->toPlainText();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return combo->currentText();
    if (const auto* group = qobject_cast<const QGroupBox*>(&control)) return group->title();
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(&control)) return spin->text();
    return std::nullopt;
}

bool SetControlText(QWidget& control, const QString& text) {
    if (auto* button = qobject_cast<QAbstractButton*>(&control))
        button->setText(text);
    else if (auto* label = qobject_cast<QLabel*>(&control))
        label->setText(text);
    else if (auto* line = qobject_cast<QLineEdit*>(&control))
        line->setText(text);
    else if (auto* edit = qobject_cast<QPlainTextEdit*>(&control))
        edit->setPlainText(text);
    else if (auto* combo = qobject_cast<QComboBox*>(&control))
        combo->setCurrentText(text);
    else if (auto* group = qobject_cast<QGroupBox*>(&control))
        group->setTitle(text);
    else
        return false;
    return true;
}

int ControlInteger(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return button->isChecked();
    if (const auto* slider = qobject_cast<const QAbstractSlider*>(&control)) return slider->value();
    if (const auto* bar = qobject_cast<const QProgressBar*>(&control)) return bar->value();
    if (const auto* spin = qobject_cast<const QSpinBox*>(&control)) return spin->value();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return combo->currentIndex() + 1;
    return LeadingNumber(ControlText(control).value_or(QString()));
}

void SetControlInteger(QWidget& control, int value) {
    if (auto* button = qobject_cast<QAbstractButton*>(&control))
        button->setChecked(value != 0);
    else if (auto* slider = qobject_cast<QAbstractSlider*>(&control))
        slider->setValue(value);
    else if (auto* bar = qobject_cast<QProgressBar*>(&control))
        bar->setValue(value);
    else if (auto* spin = qobject_cast<QSpinBox*>(&control))
        spin->setValue(value);
    else if (auto* combo = qobject_cast<QComboBox*>(&control))
        combo->setCurrentIndex(value - 1);
    else
        SetControlText(control, QString::number(value));
}

} // namespace vm
