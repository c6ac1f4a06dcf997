// The entries of a native combo box as hosts have them: counted from 0, with a number each, at most one
// selected. Nothing here is reported as the user's doing.
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QComboBox>

#include <vmcore/core/types.h>

namespace vm {

/// The property that keeps entries in order, also in interface files.
inline constexpr char kSortProperty[] = "sort";

class ComboEntries {
public:
    explicit ComboEntries(QComboBox& combo) : m_combo(combo) {}

    int Count() const { return m_combo.count(); }
    bool Has(int index) const { return index >= 0 && index < Count(); }
    int Add(const QString& text); ///< where it belongs
    /// At the end for -1. -1 for an index beyond the end.
    int Insert(int index, const QString& text);
    bool Remove(int index);
    void Clear();
    void Select(int index); ///< none for an index without an entry

    /// The first behind `after`, and on from the top, that begins with or is the text.
    int Find(int after, const QString& text, bool whole) const;
    DWORD_PTR Data(int index) const;
    void SetData(int index, DWORD_PTR data);

private:
    int PlaceOf(const QString& text) const;

    QComboBox& m_combo;
};

} // namespace vm
