#include "dialogs/dialogLists.h"

#include <QtCore/QVariant>
#include <QtWidgets/QWidget>

#include "controls/listBoxMessages.h"
#include "controls/listBoxTable.h"
#include "core/macroman.h"

namespace vm {
namespace {

constexpr char kCurrentRow[] = "currentRow";

} // namespace

bool IsListClass(const QString& className) {
    return className == QLatin1String("QListWidget") || className == QLatin1String("QListView");
}

void FillListBox(QWidget& widget, const ListTexts& texts) {
    if (!ListBoxTable::Of(&widget)) return;
    TransientListBox box(widget);
    const auto found = texts.find(widget.objectName());
    if (found != texts.end())
        for (const QString& text : found->second) box->AddString(ToMacRomanLossy(text).c_str());
    const QVariant row = widget.property(kCurrentRow);
    if (row.isValid()) box->SetCurSel(row.toInt());
}

} // namespace vm
