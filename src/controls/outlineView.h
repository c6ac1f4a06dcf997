// The native view of a tree: its settings, how its rows are drawn, and the one thing that a plain
// tree view of the toolkit lacks: it tells its data source when it is about to lay itself out.
#pragma once

#include <QtWidgets/QTreeView>

namespace vm {

class OutlineView : public QTreeView {
public:
    using QTreeView::QTreeView;

    void doItemsLayout() override;
    /// The column of the texts is as wide as what of them is in sight, at least as the view leaves.
    void updateGeometries() override;
    int WidthOf(const QModelIndex& index) const { return sizeHintForIndex(index).width(); }
    /// From now on expanding and collapsing cost nothing until the layout.
    void LayOutLater() { scheduleDelayedItemsLayout(); }
};

void SetUpOutlineView(QTreeView& view);
/// One text column as wide as the view leaves, and behind it the check boxes.
void SetUpOutlineColumns(QTreeView& view, bool hasChecks);

} // namespace vm
