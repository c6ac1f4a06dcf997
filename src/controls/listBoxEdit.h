// A change that the program makes to a list box.
#pragma once

#include "controls/LBTableViewDelegate.h"

namespace vm {

/// Holds notifications back, and lets them through after it whatever was before: hosts rely on a change
/// ending SetUserEdit(FALSE).
class ListBoxEdit {
public:
    explicit ListBoxEdit(LBTableViewDelegate& rows) : m_rows(rows) { rows.userEdit = false; }
    ~ListBoxEdit() { m_rows.userEdit = true; }
    ListBoxEdit(const ListBoxEdit&) = delete;
    ListBoxEdit& operator=(const ListBoxEdit&) = delete;

private:
    LBTableViewDelegate& m_rows;
};

} // namespace vm
