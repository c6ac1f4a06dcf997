#include "controls/outlineView.h"

#include <algorithm>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyledItemDelegate>

#include "controls/TCOutlineViewDataSource.h"
#include "controls/rowHeight.h"
#include "wnd/controlWiring.h"

namespace vm {
namespace {

constexpr int kCheckColumnWidth = 80;

// Rows are what is selected and has the focus: no frame around one cell, and Space is for the row's
// check box.
class OutlineRow : public QStyledItemDelegate {
public:
    explicit OutlineRow(QTreeView& view) : QStyledItemDelegate(&view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index)
            .expandedTo({0, RowHeight(option.fontMetrics)});
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool isSelected = option->state & QStyle::State_Selected;
        option->state &= ~QStyle::State_HasFocus;
        const auto* items = TCOutlineViewDataSource::Of(&m_view);
        const QImage image = items ? items->ImageOf(index, isSelected) : QImage();
        if (image.isNull()) return;
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = QIcon(QPixmap::fromImage(image));
        option->icon.addPixmap(QPixmap::fromImage(image), QIcon::Selected); // not tinted
        option->decorationSize = image.size();
    }

    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        const bool isKey = event->type() == QEvent::KeyPress;
        return QStyledItemDelegate::editorEvent(
            event, model, option, isKey ? index.siblingAtColumn(model->columnCount() - 1) : index);
    }

private:
    QTreeView& m_view;
};

} // namespace

void OutlineView::doItemsLayout() {
    if (auto* items = TCOutlineViewDataSource::Of(this)) items->BeforeLayout();
    QTreeView::doItemsLayout();
}

void OutlineView::updateGeometries() {
    QTreeView::updateGeometries();
    const int rest = header()->count() > 1 ? header()->sectionSize(1) : 0;
    const int wanted = std::max(viewport()->width() - rest, sizeHintForColumn(0));
    if (header()->count() > 0 && columnWidth(0) != wanted) setColumnWidth(0, wanted);
}

void SetUpOutlineView(QTreeView& view) {
    view.setProperty(kReportsItselfProperty, true);
    view.setHeaderHidden(true);
    view.setUniformRowHeights(true);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setTabKeyNavigation(false);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setItemDelegate(new OutlineRow(view));
}

void SetUpOutlineColumns(QTreeView& view, bool hasChecks) {
    QHeaderView& header = *view.header();
    header.setStretchLastSection(false);
    header.setMinimumSectionSize(0);
    header.setSectionResizeMode(0, QHeaderView::Interactive);
    header.setResizeContentsPrecision(0); // the rows in sight
    if (!hasChecks) return;
    header.setSectionResizeMode(1, QHeaderView::Fixed);
    header.resizeSection(1, kCheckColumnWidth);
}

} // namespace vm
