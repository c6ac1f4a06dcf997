// The entries of a native combo box as combo boxes of the Win32 interfaces have them: counted from 0,
// found by the beginning of their text. What is changed here is never reported as the user's doing.
#pragma once

#include <optional>

#include <QtCore/QString>

class QAbstractItemModel;
class QComboBox;
class QWidget;

namespace vm {

class ListItems {
public:
    /// Nothing for null, and for a view that is no combo box.
    static std::optional<ListItems> Of(QWidget* view);

    int Count() const;
    /// Before the entry `index`, at the end for -1. The new entry's index; -1 for an index beyond
    /// the end.
    int Insert(int index, const QString& text) const;
    bool Remove(int index) const;
    void Clear() const;
    std::optional<QString> Text(int index) const; ///< nothing for an index without an entry

    int Selected() const;         ///< -1 for none
    bool Select(int index) const; ///< false, and nothing selected, for an index without an entry

    /// The first entry after `after` (from the top after the last) that begins with `prefix`,
    /// whatever the case of either; -1 for none.
    int Find(int after, const QString& prefix) const;

private:
    explicit ListItems(QComboBox* combo);

    QAbstractItemModel* m_model;
    QComboBox* m_combo;
};

} // namespace vm
