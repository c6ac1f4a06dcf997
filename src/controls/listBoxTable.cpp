#include "controls/listBoxTable.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include "controls/RowView.h"
#include "controls/modelOf.h"
#include "core/macroman.h"

namespace vm {

ListBoxTable::ListBoxTable(QTableView* view) : RowTable(view), m_rows(*this) {
    Attach(m_rows);
    view->horizontalHeader()->hide();
    view->horizontalHeader()->setStretchLastSection(true);
}

ListBoxTable* ListBoxTable::Of(const QWidget* view) {
    return ModelOf<ListBoxTable>(qobject_cast<const QTableView*>(view));
}

int ListBoxTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1;
}

QVariant ListBoxTable::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (role != Qt::DisplayRole || row >= m_rows.strings.size()) return {};
    return FromMacRoman(m_rows.strings[row]);
}

QTableView* MakeListBoxView(QWidget* parent) {
    auto* view = new RowView(parent);
    auto* table = new ListBoxTable(view);
    table->SetMultiSelect(false);
    return view;
}

} // namespace vm
