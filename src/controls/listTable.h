// The table view of a list: its columns, its header, and the model through which it sees the rows. The
// texts are asked for as cells are shown, so a million rows cost nothing.
#pragma once

#include <vector>

#include "controls/LCTableViewDelegate.h"
#include "controls/rowTable.h"

namespace vm {

class ListTable final : public RowTable {
public:
    /// Makes `view` a list's table view. The new object belongs to the view.
    explicit ListTable(QTableView* view);
    /// Null when the view is no list's (or null).
    static ListTable* Of(const QTableView* view);

    LCTableViewDelegate& Rows() { return m_rows; }

    // Columns go by the number given to them; of two with one number the first counts.
    int AppendColumn(int number, const QString& heading, int width); ///< the index
    void RemoveColumn(int number);
    int ColumnWidth(int number) const;          ///< -1 for none
    bool SetColumnWidth(int number, int width); ///< within the limits; false for none
    void SortAgain(); ///< by the column and in the direction of the header's arrow, if it has one

    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Column {
        int number;
        QString heading;
    };

    int SectionOf(int number) const;
    void ForgetSort();
    void SortBy(int section, Qt::SortOrder order);
    void SortRows(int section, Qt::SortOrder order);

    LCTableViewDelegate m_rows;
    std::vector<Column> m_columns;
};

} // namespace vm
