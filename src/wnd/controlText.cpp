#include "wnd/controlText.h"

#include <algorithm>

#include <QtCore/QDateTime>
#include <QtCore/QItemSelectionModel>
#include <QtCore/QLocale>
#include <QtCore/QVariant>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>

namespace vm {
namespace {

int s_programChanges = 0;

constexpr char kLimitProperty[] = "textLimit";
constexpr char kShrinksProperty[] = "textLimitShrinks";
constexpr int kMostText = 32767; // what the toolkit allows a line

// The toolkit cuts what does not fit, and forgets what can be undone when the limit is set.
void MakeRoom(QLineEdit& line, qsizetype length) {
    const QVariant limit = line.property(kLimitProperty);
    if (!limit.isValid()) return;
    const int room = std::max(limit.toInt(), static_cast<int>(length));
    if (room != line.maxLength()) line.setMaxLength(room);
    if (room == limit.toInt() || line.property(kShrinksProperty).toBool()) return;
    line.setProperty(kShrinksProperty, true);
    QObject::connect(&line, &QLineEdit::textEdited, &line,
                     [&line](const QString& text) { MakeRoom(line, text.size()); });
}

// Leading blanks and trailing text are allowed, as a control's number reads everywhere.
int LeadingNumber(const QString& text) {
    return std::atoi(text.toLatin1().constData());
}
double LeadingReal(const QString& text) {
    return std::atof(text.toLatin1().constData());
}

// The user's locale is for the user: hosts read and write a decimal point.
QString NumberText(const QDoubleSpinBox& spin) {
    return QString::number(spin.value(), 'f', spin.decimals());
}

QModelIndex SelectedIndex(const QAbstractItemView& view) {
    const QItemSelectionModel* selection = view.selectionModel();
    if (selection) view.model()->rowCount(); // a list tells its view of changes when it is asked
    if (!selection || !selection->hasSelection()) return {};
    return selection->selection().first().topLeft();
}

void SelectRow(QAbstractItemView& view, int row) {
    if (!view.selectionModel()) return;
    view.selectionModel()->clear();
    const QModelIndex index = view.model()->index(row, 0, view.rootIndex());
    if (index.isValid()) view.setCurrentIndex(index);
}

int CheckState(const QAbstractButton& button) {
    const auto* box = qobject_cast<const QCheckBox*>(&button);
    if (box && box->checkState() == Qt::PartiallyChecked) return 2;
    return button.isChecked();
}

// The toolkit keeps one radio button of a group checked; a program may want none.
void Uncheck(QAbstractButton& button) {
    QButtonGroup* group = button.group();
    const bool exclusive = button.autoExclusive();
    const bool exclusiveGroup = group && group->exclusive();
    button.setAutoExclusive(false);
    if (exclusiveGroup) group->setExclusive(false);
    button.setChecked(false);
    if (exclusiveGroup) group->setExclusive(true);
    button.setAutoExclusive(exclusive);
}

void SetCheckState(QAbstractButton& button, int state) {
    auto* box = qobject_cast<QCheckBox*>(&button);
    if (box && box->isTristate() && state == 2)
        box->setCheckState(Qt::PartiallyChecked);
    else if (state == 0)
        Uncheck(button);
    else
        button.setChecked(true);
}

} // namespace

ProgramChange::ProgramChange() {
    ++s_programChanges;
}
ProgramChange::~ProgramChange() {
    --s_programChanges;
}
bool ProgramChange::InProgress() {
    return s_programChanges > 0;
}

bool IsButton(const QWidget& control) {
    return qobject_cast<const QAbstractButton*>(&control) != nullptr;
}

std::optional<QString> ControlText(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
    if (const auto* line = qobject_cast<const QLineEdit*>(&control)) return line->text();
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&control))
        return edit->toPlainText();
    if (const auto* edit = qobject_cast<const QTextEdit*>(&control)) return edit->toPlainText();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return combo->currentText();
    if (const auto* group = qobject_cast<const QGroupBox*>(&control)) return group->title();
    if (const auto* spin = qobject_cast<const QSpinBox*>(&control)) return spin->cleanText();
    if (const auto* spin = qobject_cast<const QDoubleSpinBox*>(&control)) return NumberText(*spin);
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(&control)) return spin->text();
    if (const auto* bar = qobject_cast<const QTabBar*>(&control))
        return bar->tabText(bar->currentIndex());
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&control))
        return tabs->tabText(tabs->currentIndex());
    if (const auto* list = qobject_cast<const QAbstractItemView*>(&control))
        return SelectedIndex(*list).data().toString();
    if (const auto* slider = qobject_cast<const QAbstractSlider*>(&control))
        return QString::number(slider->value());
    if (const auto* bar = qobject_cast<const QProgressBar*>(&control))
        return QString::number(bar->value());
    return std::nullopt;
}

bool SetControlText(QWidget& control, const QString& text) {
    const ProgramChange change;
    if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        button->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(&control)) {
        label->setTextFormat(Qt::PlainText); // only a file's own text may have markup
        label->setText(text);
    } else if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        MakeRoom(*line, text.size());
        line->setText(text);
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(&control)) {
        edit->setPlainText(text);
    } else if (auto* rich = qobject_cast<QTextEdit*>(&control)) {
        rich->setPlainText(text);
    } else if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        if (combo->lineEdit()) MakeRoom(*combo->lineEdit(), text.size());
        combo->setCurrentText(text);
    } else if (auto* group = qobject_cast<QGroupBox*>(&control)) {
        group->setTitle(text);
    } else if (auto* spin = qobject_cast<QSpinBox*>(&control)) {
        spin->setValue(LeadingNumber(text));
    } else if (auto* real = qobject_cast<QDoubleSpinBox*>(&control)) {
        real->setValue(LeadingReal(text));
    } else if (auto* date = qobject_cast<QDateTimeEdit*>(&control)) {
        const QDateTime time = date->locale().toDateTime(text, date->displayFormat());
        if (time.isValid()) date->setDateTime(time);
    } else if (auto* bar = qobject_cast<QTabBar*>(&control)) {
        bar->setTabText(bar->currentIndex(), text);
    } else if (auto* tabs = qobject_cast<QTabWidget*>(&control)) {
        tabs->setTabText(tabs->currentIndex(), text);
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(&control)) {
        slider->setValue(LeadingNumber(text));
    } else if (auto* progress = qobject_cast<QProgressBar*>(&control)) {
        progress->setValue(LeadingNumber(text));
    } else {
        return false;
    }
    return true;
}

void SetTextLimit(QLineEdit& line, int limit) {
    const ProgramChange change;
    line.setProperty(kLimitProperty, limit > 0 ? std::min(limit, kMostText) : kMostText);
    MakeRoom(line, line.text().size());
}

int TextLimit(const QLineEdit& line) {
    const QVariant limit = line.property(kLimitProperty);
    return limit.isValid() ? limit.toInt() : line.maxLength();
}

int SelectedEntry(const QComboBox& combo) {
    const int index = combo.currentIndex();
    const bool isTyped = combo.isEditable() && combo.currentText() != combo.itemText(index);
    return isTyped ? -1 : index;
}

int ControlInteger(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return CheckState(*button);
    const auto* group = qobject_cast<const QGroupBox*>(&control);
    if (group && group->isCheckable()) return group->isChecked();
    if (const auto* slider = qobject_cast<const QAbstractSlider*>(&control)) return slider->value();
    if (const auto* bar = qobject_cast<const QProgressBar*>(&control)) return bar->value();
    if (const auto* spin = qobject_cast<const QSpinBox*>(&control)) return spin->value();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return SelectedEntry(*combo) + 1;
    if (const auto* bar = qobject_cast<const QTabBar*>(&control)) return bar->currentIndex() + 1;
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&control))
        return tabs->currentIndex() + 1;
    if (const auto* list = qobject_cast<const QAbstractItemView*>(&control))
        return SelectedIndex(*list).row() + 1;
    return LeadingNumber(ControlText(control).value_or(QString()));
}

void SetControlInteger(QWidget& control, int value) {
    const ProgramChange change;
    auto* group = qobject_cast<QGroupBox*>(&control);
    if (auto* button = qobject_cast<QAbstractButton*>(&control))
        SetCheckState(*button, value);
    else if (group && group->isCheckable())
        group->setChecked(value != 0);
    else if (auto* slider = qobject_cast<QAbstractSlider*>(&control))
        slider->setValue(value);
    else if (auto* bar = qobject_cast<QProgressBar*>(&control))
        bar->setValue(value);
    else if (auto* spin = qobject_cast<QSpinBox*>(&control))
        spin->setValue(value);
    else if (auto* combo = qobject_cast<QComboBox*>(&control))
        combo->setCurrentIndex(value - 1);
    else if (auto* tabBar = qobject_cast<QTabBar*>(&control))
        tabBar->setCurrentIndex(value - 1);
    else if (auto* tabs = qobject_cast<QTabWidget*>(&control))
        tabs->setCurrentIndex(value - 1);
    else if (auto* list = qobject_cast<QAbstractItemView*>(&control))
        SelectRow(*list, value - 1);
    else
        SetControlText(control, QString::number(value));
}

} // namespace vm
