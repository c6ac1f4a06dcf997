// The toolkit's views with models written for them.
#include <memory>
#include <vector>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringListModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include "common.h"
#include "frames.h"

namespace lists {
namespace {

class RowModel : public QAbstractTableModel {
public:
    void Fill(int rows) {
        beginResetModel();
        for (int i = 0; i < rows; ++i) m_data.push_back(static_cast<std::uintptr_t>(i));
        endResetModel();
    }
    void Append() {
        const int row = rowCount();
        beginInsertRows({}, row, row);
        m_data.push_back(static_cast<std::uintptr_t>(row));
        endInsertRows();
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_data.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : kColumns;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        char text[256];
        CellText(index.column(), m_data[static_cast<std::size_t>(index.row())], text, sizeof text);
        return QString::fromLatin1(text);
    }

private:
    std::vector<std::uintptr_t> m_data;
};

void SetUp(QTableView& view) {
    QHeaderView* rows = view.verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(view.fontMetrics().height() + 5);
    view.setShowGrid(false);
    view.setWordWrap(false);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.resize(kWidth, kHeight);
}

void SetColumnWidths(QTableView& view) {
    for (int i = 0; i < kColumns; ++i) view.setColumnWidth(i, kColumnWidth);
}

void MeasureList() {
    RowModel model;
    QTableView view;
    SetUp(view);
    Measure("list-1000000-fill", [&] {
        model.Fill(kRows);
        view.setModel(&model);
    });
    view.horizontalHeader()->setSelectionModel(new QItemSelectionModel(&model, &view));
    SetColumnWidths(view);
    const PaintCounter paints(view.viewport());
    Measure("list-1000000-first-frame", [&] {
        view.show();
        paints.WaitForOne();
    });
    Measure("list-1000000-100-pages", [&] { ScrollPages(view); });
    Measure("list-1000000-select-all", [&] {
        view.selectAll();
        PaintNow(view);
    });
    Measure("list-1000000-select-10000-separate", [&] { // at once: one by one takes the square
        QItemSelection rows;
        for (int i = 0; i < kSeparateRows; ++i)
            rows.append({model.index(2 * i, 0), model.index(2 * i, kColumns - 1)});
        view.clearSelection();
        view.selectionModel()->select(rows, QItemSelectionModel::Select);
        PaintNow(view);
    });
}

void MeasureSort() {
    RowModel model;
    model.Fill(kSortedRows);
    QSortFilterProxyModel sorted;
    sorted.setSortCaseSensitivity(Qt::CaseInsensitive);
    sorted.setSourceModel(&model);
    QTableView view;
    SetUp(view);
    view.setModel(&sorted);
    view.show();
    PaintNow(view);
    Measure("list-100000-sort", [&] {
        sorted.sort(0);
        PaintNow(view);
    });
}

void MeasureInserts() {
    RowModel model;
    QTableView view;
    SetUp(view);
    view.setModel(&model);
    view.show();
    PaintNow(view);
    Measure("list-100000-inserts-while-shown", [&] {
        for (int i = 0; i < kInsertedRows; ++i) model.Append();
        PaintNow(view);
    });
}

// Nodes as a program would keep them.
class NodeModel : public QAbstractItemModel {
public:
    struct Node {
        Node* parent = nullptr;
        int row = 0;
        std::string text;
        std::vector<std::unique_ptr<Node>> children;
    };

    Node* Append(Node* parent, std::string text) {
        Node& owner = parent ? *parent : m_root;
        const int row = static_cast<int>(owner.children.size());
        beginInsertRows(IndexOf(parent), row, row);
        owner.children.push_back(std::make_unique<Node>(Node{parent, row, std::move(text), {}}));
        endInsertRows();
        return owner.children.back().get();
    }
    // One by one from the end: the cheapest order for a plain model.
    void RemoveLast(Node* parent) {
        Node& owner = parent ? *parent : m_root;
        const int row = static_cast<int>(owner.children.size()) - 1;
        beginRemoveRows(IndexOf(parent), row, row);
        owner.children.pop_back();
        endRemoveRows();
    }
    Node& Root() { return m_root; }
    QModelIndex IndexOf(Node* node) const {
        return node ? createIndex(node->row, 0, node) : QModelIndex();
    }

    QModelIndex index(int row, int column, const QModelIndex& parent) const override {
        return createIndex(row, column,
                           OwnerOf(parent).children[static_cast<std::size_t>(row)].get());
    }
    QModelIndex parent(const QModelIndex& index) const override {
        return IndexOf(static_cast<Node*>(index.internalPointer())->parent);
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return static_cast<int>(OwnerOf(parent).children.size());
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return QString::fromStdString(static_cast<Node*>(index.internalPointer())->text);
    }

private:
    const Node& OwnerOf(const QModelIndex& index) const {
        return index.isValid() ? *static_cast<const Node*>(index.internalPointer()) : m_root;
    }
    Node m_root;
};

void MeasureTree() {
    NodeModel model;
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setHeaderHidden(true);
    view.setModel(&model);
    view.resize(kWidth, kHeight);
    view.show();
    PaintNow(view);
    Measure("tree-100000-insert", [&] {
        for (int group = 0; group < kGroups; ++group) {
            NodeModel::Node* parent = model.Append(nullptr, GroupText(group));
            for (int i = 0; i < kItemsOfGroup; ++i) model.Append(parent, ItemText(group, i));
        }
        PaintNow(view);
    });
    Measure("tree-100000-expand-all", [&] {
        for (int group = 0; group < kGroups; ++group) view.expand(model.index(group, 0, {}));
        PaintNow(view);
    });
    std::size_t length = 0;
    Measure("tree-100000-walk", [&] {
        for (int group = 0; group < kGroups; ++group) {
            const QModelIndex parent = model.index(group, 0, {});
            for (int i = 0; i < model.rowCount(parent); ++i)
                length +=
                    static_cast<std::size_t>(model.index(i, 0, parent).data().toString().size());
        }
    });
    Measure("tree-100000-delete", [&] {
        for (int group = kGroups - 1; group >= 0; --group) {
            NodeModel::Node* parent = model.Root().children[static_cast<std::size_t>(group)].get();
            for (int i = 0; i < kItemsOfGroup; ++i) model.RemoveLast(parent);
            model.RemoveLast(nullptr);
        }
        PaintNow(view);
    });
    std::fprintf(stderr, "%zu\n", length);
}

void MeasureListBox() {
    QStringListModel model;
    QListView view;
    view.setUniformItemSizes(true);
    view.setModel(&model);
    view.resize(kWidth, kHeight);
    view.show();
    PaintNow(view);
    Measure("listbox-100000-add", [&] {
        QStringList strings;
        for (int i = 0; i < kStrings; ++i) strings += QString::fromStdString(StringText(i));
        model.setStringList(strings);
        PaintNow(view);
    });
    const QString last = QString::fromStdString(StringText(kStrings - 1));
    Measure("listbox-100000-find", [&] {
        for (int i = 0; i < kSearches; ++i)
            if (model.match(model.index(0), Qt::DisplayRole, last, 1, Qt::MatchFixedString)
                    .isEmpty())
                std::abort();
    });
    Measure("listbox-100000-select", [&] {
        for (int i = 0; i < kSelections; ++i) view.setCurrentIndex(model.index(i * 97 % kStrings));
        PaintNow(view);
    });
}

} // namespace
} // namespace lists

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    lists::MeasureList();
    lists::MeasureSort();
    lists::MeasureInserts();
    lists::MeasureTree();
    lists::MeasureListBox();
    return 0;
}
