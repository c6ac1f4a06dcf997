#include "controls/listItems.h"

#include <QtWidgets/QComboBox>

#include "wnd/controlText.h"

namespace vm {

ListItems::ListItems(QComboBox* combo) : m_model(combo->model()), m_combo(combo) {}

std::optional<ListItems> ListItems::Of(QWidget* view) {
    auto* combo = qobject_cast<QComboBox*>(view);
    if (!combo) return std::nullopt;
    return ListItems(combo);
}

int ListItems::Count() const {
    return m_model->rowCount();
}

// A combo box selects the first entry that it gets.
int ListItems::Insert(int index, const QString& text) const {
    const ProgramChange change;
    const int row = index == -1 ? Count() : index;
    if (row < 0 || row > Count()) return -1;
    const bool hadSelection = Selected() >= 0;
    if (!m_model->insertRow(row)) return -1;
    m_model->setData(m_model->index(row, 0), text, Qt::DisplayRole);
    if (!hadSelection) m_combo->setCurrentIndex(-1);
    return row;
}

bool ListItems::Remove(int index) const {
    const ProgramChange change;
    if (index < 0 || index >= Count()) return false;
    const bool wasSelected = index == Selected();
    m_model->removeRow(index);
    if (wasSelected) Select(-1);
    return true;
}

void ListItems::Clear() const {
    const ProgramChange change;
    m_model->removeRows(0, Count());
    if (m_combo->isEditable()) m_combo->clearEditText();
}

std::optional<QString> ListItems::Text(int index) const {
    if (index < 0 || index >= Count()) return std::nullopt;
    return m_model->index(index, 0).data().toString();
}

int ListItems::Selected() const {
    return m_combo->currentIndex();
}

bool ListItems::Select(int index) const {
    const bool exists = index >= 0 && index < Count();
    SetControlInteger(*m_combo, exists ? index + 1 : 0);
    return exists;
}

int ListItems::Find(int after, const QString& prefix) const {
    const int count = Count();
    const int start = after >= 0 && after < count ? after + 1 : 0;
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        if (Text(row)->startsWith(prefix, Qt::CaseInsensitive)) return row;
    }
    return -1;
}

} // namespace vm
