// What the sources of the tree control share: the way from handles to nodes, and to its data source.
#pragma once

#include <vmcore/controls/CTreeCtrl.h>

class TCOutlineViewDataSource;

namespace vm {

/// The node of a handle. Null for null, without a data source, and for what is no item of it, which
/// is logged.
CellData* ItemOf(const TCOutlineViewDataSource* items, HTREEITEM item);

/// From now on the data source serves the tree, which has check boxes when either of them says so.
void ServeTree(TCOutlineViewDataSource& items, CTreeCtrl& tree);

} // namespace vm
