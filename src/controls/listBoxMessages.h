// The LB_ messages, and list box operations on a view that may have no list box object.
#pragma once

#include <vmcore/controls/CListBox.h>

namespace vm {

/// A list box for the time of some calls; the object that the view is bound to stays bound. What the
/// calls do on a view that is no list box's is what they do without one.
class TransientListBox {
public:
    explicit TransientListBox(QWidget& view);
    ~TransientListBox();
    TransientListBox(const TransientListBox&) = delete;
    TransientListBox& operator=(const TransientListBox&) = delete;

    CListBox* operator->() { return &m_box; }

private:
    CListBox m_box;
};

/// What a view answers to LB_ADDSTRING ... LB_SELECTSTRING; LB_ERR for one that is no list box's.
LRESULT SendToListBox(QWidget& view, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace vm
