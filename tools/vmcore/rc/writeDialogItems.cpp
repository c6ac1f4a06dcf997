// What a list or combo box holds at first.
#include <algorithm>

#include <QtCore/QString>

#include "rc/winStyles.h"
#include "rc/writeDialogWidget.h"

namespace vm::rc {
namespace {

bool IsBefore(const std::string& a, const std::string& b) {
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) < 0;
}

} // namespace

void TakeItems(Widget& widget, const Control& control) {
    if (control.items.empty()) return;
    const bool isCombo = widget.type == "QComboBox";
    widget.items = control.items;
    if (HasStyle(control, isCombo ? win::kCbsSort : win::kLbsSort))
        std::stable_sort(widget.items.begin(), widget.items.end(), IsBefore);
    if (isCombo) widget.Set(UiNumber("currentIndex", -1)); // the toolkit would select the first
}

void WriteItems(UiXml& xml, const std::vector<std::string>& items) {
    for (const std::string& item : items) {
        xml.Begin("item");
        xml.Write(UiText("text", item));
        xml.End();
    }
}

} // namespace vm::rc
