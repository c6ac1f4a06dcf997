#include "controls/comboEntries.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QVariant>

#include "wnd/controlText.h"

namespace vm {

// Behind its equals.
int ComboEntries::PlaceOf(const QString& text) const {
    int first = 0;
    int last = Count();
    while (first < last) {
        const int middle = first + (last - first) / 2;
        if (text.compare(m_combo.itemText(middle), Qt::CaseInsensitive) < 0)
            last = middle;
        else
            first = middle + 1;
    }
    return first;
}

int ComboEntries::Add(const QString& text) {
    return Insert(m_combo.property(kSortProperty).toBool() ? PlaceOf(text) : -1, text);
}

int ComboEntries::Insert(int index, const QString& text) {
    const ProgramChange change;
    const int count = Count();
    const int row = index == -1 ? count : index;
    if (row < 0 || row > count) return -1;
    const QString typed = count == 0 && m_combo.isEditable() ? m_combo.currentText() : QString();
    m_combo.insertItem(row, text);
    if (Count() == count) return -1; // as many as it may have
    if (count > 0) return row;
    m_combo.setCurrentIndex(-1); // the toolkit selects the first entry that comes
    if (m_combo.isEditable()) m_combo.setEditText(typed);
    return row;
}

bool ComboEntries::Remove(int index) {
    if (!Has(index)) return false;
    const ProgramChange change;
    const bool wasSelected = index == SelectedEntry(m_combo);
    const QString typed = wasSelected ? QString() : m_combo.currentText();
    m_combo.removeItem(index);
    if (wasSelected) m_combo.setCurrentIndex(-1);
    if (m_combo.isEditable()) m_combo.setEditText(typed);
    return true;
}

void ComboEntries::Clear() {
    const ProgramChange change;
    m_combo.model()->removeRows(0, Count());
    if (m_combo.isEditable()) m_combo.clearEditText();
}

void ComboEntries::Select(int index) {
    const ProgramChange change;
    m_combo.setCurrentIndex(Has(index) ? index : -1);
}

int ComboEntries::Find(int after, const QString& text, bool whole) const {
    const int count = Count();
    const int start = Has(after) ? after + 1 : 0;
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        const QString entry = m_combo.itemText(row);
        const bool fits = entry.startsWith(text, Qt::CaseInsensitive);
        if (fits && (!whole || entry.size() == text.size())) return row;
    }
    return -1;
}

DWORD_PTR ComboEntries::Data(int index) const {
    return static_cast<DWORD_PTR>(m_combo.itemData(index).toULongLong());
}

void ComboEntries::SetData(int index, DWORD_PTR data) {
    m_combo.setItemData(index, QVariant::fromValue<qulonglong>(data));
}

} // namespace vm
