// The items of a tree and what its view asks about them. The view hears of changes late and all at
// once: rows are added and removed here at once, and the view reads them anew when it next lays
// itself out. Until the turn of the event loop after that, deleted nodes are kept, because the
// view may still name them.
#pragma once

#include <optional>
#include <unordered_set>
#include <vector>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QRect>

#include <vmcore/controls/CTreeCtrl.h>

#include "controls/CellData.h"

class QImage;

namespace vm {
class OutlineView;
}

/// The data source and delegate of a tree's view; belongs to it.
class TCOutlineViewDataSource final : public QAbstractItemModel {
public:
    /// Makes `view` a tree's.
    explicit TCOutlineViewDataSource(vm::OutlineView* view);
    ~TCOutlineViewDataSource() override;
    /// Null when the view is no tree's (or null).
    static TCOutlineViewDataSource* Of(const QTreeView* view);

    CTreeCtrl* wnd = nullptr; ///< the tree that it serves; see Tree
    CellData* root = nullptr; ///< the top row

    /// `wnd` while it lives and has this view.
    CTreeCtrl* Tree() const;
    void AddCheckColumn(); ///< once
    bool HasCheckColumn() const { return m_columns > 1; }

    // Items.
    bool IsAlive(const CellData* node) const { return m_live.count(node) != 0; }
    CellData* Append(CellData* parent); ///< null: below the top row
    void Remove(CellData* node);        ///< not the top row
    void RemoveAll();                   ///< and a new top row
    CellData* Next(const CellData& node) const;
    CellData* Previous(const CellData& node) const;
    std::size_t Count() const { return m_live.size() - 1; } ///< without the top row

    // The view.
    CellData* Selected() const;
    void Select(CellData* node);
    void Expand(CellData* node, bool expand);
    bool IsExpanded(CellData* node);
    /// In the viewport: image and text. Nothing while it is in a collapsed one.
    std::optional<QRect> PlaceOf(CellData* node);
    void ScrollTo(CellData* node); ///< when it is shown
    void Redraw();                 ///< texts, check boxes
    void LayOutAnew();             ///< soon; the height of rows may have changed
    /// The pixels in front of a row's text; null for none.
    QImage ImageOf(const QModelIndex& index, bool isSelected) const;

    // Around every layout of the view.
    void BeforeLayout();

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex sibling(int row, int column, const QModelIndex& index) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                          Qt::MatchFlags how) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void outlineViewSelectionDidChange();

private:
    static constexpr int kCheckColumn = 1;

    static CellData* NodeOf(const QModelIndex& index) {
        return static_cast<CellData*>(index.internalPointer());
    }
    CellData* NewNode(CellData* parent);
    CellData* RowAbove(const CellData& node) const;
    QModelIndex IndexOf(CellData* node, int column = 0) const;
    bool IsShown(const CellData& node);
    void Kill(CellData* node);
    void DropSelectionIn(const CellData& node);
    enum class Rows { Stay, Move };
    void Changed(Rows rows);
    void Announce();
    void Settle();
    void MovePersistentIndexes();
    void QueueTurn();
    void Turn();
    void FreeDead();
    void Notify(UINT code, CellData* node);
    class Notice;
    void KeysGoOnFrom(const QModelIndex& collapsed);

    vm::OutlineView* m_view;
    int m_columns = 1;
    std::unordered_set<const CellData*> m_live; // all nodes, the top row's too
    std::vector<CellData*> m_dead;              // no longer items, but maybe known to the view
    bool m_isOld = false;                       // the view has to read rows anew
    bool m_rowsMoved = false;                   // indexes that the view keeps have old row numbers
    bool m_turnIsQueued = false;
    bool m_programEdits = false; // nothing is the user's doing
    int m_notices = 0;           // handlers that run inside events of the view
};
