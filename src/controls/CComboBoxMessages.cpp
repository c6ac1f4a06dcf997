// The field and the open list of combo boxes, and the messages that they answer.
#include <vmcore/controls/CComboBox.h>

#include <algorithm>

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyledItemDelegate>

#include <vmcore/app/messages.h>
#include <vmcore/controls/CEdit.h>

#include "controls/textField.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace {

QComboBox* ComboOf(const CComboBox& object) {
    return vm::ControlOf<QComboBox>(object);
}

QLineEdit* FieldOf(const CComboBox& object) {
    const QComboBox* const combo = ComboOf(object);
    return combo ? combo->lineEdit() : nullptr;
}

// The field as an edit control.
class Field : public CEdit {
public:
    explicit Field(const CComboBox& object) { view = FieldOf(object); }
    ~Field() override { view = nullptr; }
};

class RowHeight : public QStyledItemDelegate {
public:
    RowHeight(int height, QObject* parent) : QStyledItemDelegate(parent), m_height(height) {}
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), m_height};
    }

private:
    int m_height;
};

} // namespace

BOOL CComboBox::LimitText(int characters) {
    QLineEdit* const field = FieldOf(*this);
    if (field) vm::SetTextLimit(*field, characters);
    return field != nullptr;
}

DWORD CComboBox::GetEditSel() const {
    return FieldOf(*this) ? Field(*this).GetSel() : static_cast<DWORD>(CB_ERR);
}

BOOL CComboBox::SetEditSel(int first, int end) {
    if (!FieldOf(*this)) return FALSE;
    Field(*this).SetSel(first, end);
    return TRUE;
}

void CComboBox::Cut() {
    Field(*this).Cut();
}
void CComboBox::Copy() const {
    Field(*this).Copy();
}
void CComboBox::Paste() {
    Field(*this).Paste();
}
void CComboBox::Clear() {
    Field(*this).Clear();
}

void CComboBox::ShowDropDown(BOOL show) {
    QComboBox* const combo = ComboOf(*this);
    if (combo && show) combo->showPopup();
    if (combo && !show) combo->hidePopup();
}

BOOL CComboBox::GetDroppedState() const {
    QComboBox* const combo = ComboOf(*this);
    return combo && combo->view()->isVisible();
}

int CComboBox::SetDroppedWidth(UINT width) {
    QComboBox* const combo = ComboOf(*this);
    if (!combo) return CB_ERR;
    combo->view()->setMinimumWidth(static_cast<int>(width));
    return GetDroppedWidth();
}

int CComboBox::GetDroppedWidth() const {
    QComboBox* const combo = ComboOf(*this);
    return combo ? std::max(combo->view()->minimumWidth(), combo->width()) : CB_ERR;
}

int CComboBox::GetTopIndex() const {
    QComboBox* const combo = ComboOf(*this);
    if (!combo) return CB_ERR;
    return GetDroppedState() ? std::max(combo->view()->indexAt({1, 1}).row(), 0) : 0;
}

int CComboBox::SetTopIndex(int index) {
    QComboBox* const combo = ComboOf(*this);
    if (!combo || index < 0 || index >= combo->count()) return CB_ERR;
    if (GetDroppedState())
        combo->view()->scrollTo(combo->model()->index(index, 0), QAbstractItemView::PositionAtTop);
    return 0;
}

int CComboBox::SetItemHeight(int index, UINT height) {
    QComboBox* const combo = ComboOf(*this);
    if (!combo || height == 0 || index < -1) return CB_ERR;
    if (index == -1) {
        combo->resize(combo->width(), static_cast<int>(height));
        return 0;
    }
    QAbstractItemDelegate* const before = combo->itemDelegate();
    combo->setItemDelegate(new RowHeight(static_cast<int>(height), combo));
    if (dynamic_cast<RowHeight*>(before)) delete before;
    return 0;
}

int CComboBox::GetItemHeight(int index) const {
    QComboBox* const combo = ComboOf(*this);
    if (!combo || index < -1) return CB_ERR;
    if (index == -1) return combo->height();
    QStyleOptionViewItem option;
    option.initFrom(combo->view());
    const QModelIndex entry = combo->model()->index(index, 0);
    return combo->itemDelegate()->sizeHint(option, entry).height();
}

LRESULT CComboBox::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    auto* const string = reinterpret_cast<char*>(lParam);
    switch (message) {
    case CB_ADDSTRING:
        return AddString(string);
    case CB_INSERTSTRING:
        return InsertString(index, string);
    case CB_DELETESTRING:
        return DeleteString(index);
    case CB_RESETCONTENT:
        return ResetContent(), 0;
    case CB_GETCOUNT:
        return GetCount();
    case CB_GETCURSEL:
        return GetCurSel();
    case CB_SETCURSEL:
        return SetCurSel(index);
    case CB_GETLBTEXT:
        return GetLBText(index, string);
    case CB_GETLBTEXTLEN:
        return GetLBTextLen(index);
    case CB_FINDSTRING:
        return FindString(index, string);
    case CB_SELECTSTRING:
        return SelectString(index, string);
    case CB_GETITEMDATA:
        return static_cast<LRESULT>(GetItemData(index));
    case CB_SETITEMDATA:
        return SetItemData(index, lParam);
    case CB_FINDSTRINGEXACT:
        return FindStringExact(index, string);
    case CB_SHOWDROPDOWN:
        return ShowDropDown(wParam != 0), TRUE;
    case CB_GETDROPPEDSTATE:
        return GetDroppedState();
    case CB_LIMITTEXT:
        return LimitText(index);
    default:
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
}
