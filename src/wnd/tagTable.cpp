#include "wnd/tagTable.h"

#include <unordered_map>

#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

#include "wnd/views.h"

namespace vm {
namespace {

// Made on the first question; a child of the root. It watches every view that it has looked at, and
// starts again when one of them gets another child or another property.
class TagTable : public QObject {
public:
    explicit TagTable(QWidget* root) : QObject(root), m_root(root) {}

    static TagTable* Of(const QWidget* root) {
        for (QObject* child : root->children())
            if (auto* table = dynamic_cast<TagTable*>(child)) return table;
        return nullptr;
    }

    QWidget* Find(int tag) {
        if (!m_isCurrent) Collect();
        const auto found = m_views.find(tag);
        return found == m_views.end() ? nullptr : found->second;
    }

    void Forget() { m_isCurrent = false; }

    bool eventFilter(QObject*, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::ChildAdded || type == QEvent::ChildRemoved ||
            type == QEvent::DynamicPropertyChange)
            Forget();
        return false;
    }

private:
    void Collect() {
        m_views.clear();
        m_isCurrent = true;
        CollectBelow(m_root);
    }

    void CollectBelow(QWidget* parent) {
        parent->removeEventFilter(this);
        parent->installEventFilter(this);
        const QList<QWidget*> children = parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        for (QWidget* child : children)
            if (const int tag = TagOf(child)) m_views.try_emplace(tag, child);
        for (QWidget* child : children) CollectBelow(child);
    }

    QWidget* m_root;
    std::unordered_map<int, QWidget*> m_views;
    bool m_isCurrent = false;
};

} // namespace

void KeepTagTable(QWidget* root) {
    if (!HasTagTable(root)) new TagTable(root);
}

bool HasTagTable(const QWidget* root) {
    return TagTable::Of(root) != nullptr;
}

// Views without a tag have the tag 0 and are in no table.
QWidget* FindTagged(const QWidget* root, int tag) {
    TagTable* table = tag != 0 ? TagTable::Of(root) : nullptr;
    return table ? table->Find(tag) : FindViewWithTag(root, tag);
}

void ForgetTagsAround(const QWidget* view) {
    for (const QWidget* root = view; root; root = root->parentWidget())
        if (TagTable* table = TagTable::Of(root)) table->Forget();
}

} // namespace vm
