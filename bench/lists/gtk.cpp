// GTK's column view, tree list model and list view.
#include <vector>

#include <gtk/gtk.h>

#include "common.h"

namespace lists {
namespace {

// Appending to a model that is shown takes time with the square of the rows, minutes for all of
// them. The tenth part is measured and counted ten times, which is far less than the whole takes.
constexpr int kParts = 10;

// An item with a number, and what shows it.
struct Row {
    GObject parent;
    guint number;
};
struct RowClass {
    GObjectClass parent;
};
G_DEFINE_TYPE(Row, row, G_TYPE_OBJECT)
void row_init(Row*) {}
void row_class_init(RowClass*) {}

gpointer NewRow(guint number) {
    auto* row = static_cast<Row*>(g_object_new(row_get_type(), nullptr));
    row->number = number;
    return row;
}

// A model that makes its items as they are asked for.
struct Rows {
    GObject parent;
    guint count;
};
struct RowsClass {
    GObjectClass parent;
};
GType ItemType(GListModel*) {
    return row_get_type();
}
guint ItemCount(GListModel* model) {
    return reinterpret_cast<Rows*>(model)->count;
}
gpointer Item(GListModel* model, guint position) {
    return position < reinterpret_cast<Rows*>(model)->count ? NewRow(position) : nullptr;
}
void SetUpModel(GListModelInterface* functions) {
    functions->get_item_type = ItemType;
    functions->get_n_items = ItemCount;
    functions->get_item = Item;
}
G_DEFINE_TYPE_WITH_CODE(Rows, rows, G_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(G_TYPE_LIST_MODEL, SetUpModel))
void rows_init(Rows*) {}
void rows_class_init(RowsClass*) {}

// A window with one scrolled view, whose frames can be waited for.
class Shown {
public:
    explicit Shown(GtkWidget* view)
        : m_view(view), m_window(gtk_window_new()), m_scrolled(gtk_scrolled_window_new()) {
        gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(m_scrolled), view);
        gtk_window_set_child(GTK_WINDOW(m_window), m_scrolled);
        gtk_window_set_default_size(GTK_WINDOW(m_window), kWidth, kHeight);
    }
    ~Shown() { gtk_window_destroy(GTK_WINDOW(m_window)); }

    void Present() {
        gtk_window_present(GTK_WINDOW(m_window));
        GdkFrameClock* clock = gtk_widget_get_frame_clock(m_window);
        g_signal_connect_swapped(clock, "after-paint", G_CALLBACK(+[](int* count) { ++*count; }),
                                 &m_frames);
        WaitForFrame();
    }
    void WaitForFrame() {
        gtk_widget_queue_draw(m_view);
        const int before = m_frames;
        while (m_frames == before) g_main_context_iteration(nullptr, TRUE);
    }
    GtkAdjustment* Vertical() {
        return gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(m_scrolled));
    }

private:
    GtkWidget* m_view;
    GtkWidget* m_window;
    GtkWidget* m_scrolled;
    int m_frames = 0;
};

void SetUpCell(GtkListItemFactory*, GtkListItem* cell, gpointer) {
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_list_item_set_child(cell, label);
}

void BindCell(GtkListItemFactory*, GtkListItem* cell, gpointer column) {
    char text[256];
    CellText(GPOINTER_TO_INT(column), static_cast<Row*>(gtk_list_item_get_item(cell))->number, text,
             sizeof text);
    gtk_label_set_text(GTK_LABEL(gtk_list_item_get_child(cell)), text);
}

GtkWidget* NewColumnView(GListModel* model) {
    GtkWidget* view = gtk_column_view_new(GTK_SELECTION_MODEL(gtk_multi_selection_new(model)));
    for (int i = 0; i < kColumns; ++i) {
        GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
        g_signal_connect(factory, "setup", G_CALLBACK(SetUpCell), nullptr);
        g_signal_connect(factory, "bind", G_CALLBACK(BindCell), GINT_TO_POINTER(i));
        GtkColumnViewColumn* column = gtk_column_view_column_new("Column", factory);
        gtk_column_view_column_set_fixed_width(column, kColumnWidth);
        gtk_column_view_append_column(GTK_COLUMN_VIEW(view), column);
        g_object_unref(column);
    }
    return view;
}

void ScrollPages(Shown& shown) {
    GtkAdjustment* vertical = shown.Vertical();
    for (int i = 1; i <= kPages; ++i) {
        gtk_adjustment_set_value(vertical, i * gtk_adjustment_get_page_size(vertical));
        shown.WaitForFrame();
    }
}

void MeasureList() {
    auto* rows = static_cast<Rows*>(g_object_new(rows_get_type(), nullptr));
    GtkWidget* view = NewColumnView(G_LIST_MODEL(rows));
    Shown shown(view);
    Measure("list-1000000-fill", [&] {
        rows->count = kRows;
        g_list_model_items_changed(G_LIST_MODEL(rows), 0, 0, kRows);
    });
    Measure("list-1000000-first-frame", [&] { shown.Present(); });
    Measure("list-1000000-100-pages", [&] { ScrollPages(shown); });
    Measure("list-1000000-select-all", [&] {
        gtk_selection_model_select_all(gtk_column_view_get_model(GTK_COLUMN_VIEW(view)));
        shown.WaitForFrame();
    });
    Measure("list-1000000-select-10000-separate", [&] {
        GtkSelectionModel* selection = gtk_column_view_get_model(GTK_COLUMN_VIEW(view));
        gtk_selection_model_unselect_all(selection);
        for (guint i = 0; i < kSeparateRows; ++i)
            gtk_selection_model_select_item(selection, 2 * i, FALSE);
        shown.WaitForFrame();
    });
}

char* SortText(Row* row, gpointer) {
    char text[256];
    CellText(0, row->number, text, sizeof text);
    return g_strdup(text);
}

void MeasureSort() {
    GListStore* store = g_list_store_new(row_get_type());
    for (guint i = 0; i < kSortedRows; ++i) {
        gpointer row = NewRow(i);
        g_list_store_append(store, row);
        g_object_unref(row);
    }
    GtkSortListModel* sorted = gtk_sort_list_model_new(G_LIST_MODEL(store), nullptr);
    Shown shown(NewColumnView(G_LIST_MODEL(sorted)));
    shown.Present();
    GtkExpression* text = gtk_cclosure_expression_new(G_TYPE_STRING, nullptr, 0, nullptr,
                                                      G_CALLBACK(SortText), nullptr, nullptr);
    GtkStringSorter* sorter = gtk_string_sorter_new(text);
    gtk_string_sorter_set_ignore_case(sorter, TRUE);
    Measure("list-100000-sort", [&] {
        gtk_sort_list_model_set_sorter(sorted, GTK_SORTER(sorter));
        shown.WaitForFrame();
    });
}

void MeasureInserts() {
    GListStore* store = g_list_store_new(row_get_type());
    Shown shown(NewColumnView(G_LIST_MODEL(store)));
    shown.Present();
    Measure("list-100000-inserts-while-shown", kParts, [&] {
        for (guint i = 0; i < kInsertedRows / kParts; ++i) {
            gpointer row = NewRow(i);
            g_list_store_append(store, row);
            g_object_unref(row);
        }
        shown.WaitForFrame();
    });
}

// Items of the tree: strings, groups with a store of their own.
GQuark ChildrenKey() {
    return g_quark_from_static_string("children");
}

GListModel* ChildrenOf(gpointer item, gpointer) {
    auto* children = static_cast<GListModel*>(g_object_get_qdata(G_OBJECT(item), ChildrenKey()));
    return children ? static_cast<GListModel*>(g_object_ref(children)) : nullptr;
}

void AppendString(GListStore* store, const std::string& text, GListStore* children) {
    GtkStringObject* item = gtk_string_object_new(text.c_str());
    if (children) g_object_set_qdata_full(G_OBJECT(item), ChildrenKey(), children, g_object_unref);
    g_list_store_append(store, item);
    g_object_unref(item);
}

void SetUpTreeCell(GtkListItemFactory*, GtkListItem* cell, gpointer) {
    GtkWidget* expander = gtk_tree_expander_new();
    gtk_tree_expander_set_child(GTK_TREE_EXPANDER(expander), gtk_label_new(nullptr));
    gtk_list_item_set_child(cell, expander);
}

void BindTreeCell(GtkListItemFactory*, GtkListItem* cell, gpointer) {
    auto* row = GTK_TREE_LIST_ROW(gtk_list_item_get_item(cell));
    auto* expander = GTK_TREE_EXPANDER(gtk_list_item_get_child(cell));
    gtk_tree_expander_set_list_row(expander, row);
    auto* item = GTK_STRING_OBJECT(gtk_tree_list_row_get_item(row));
    gtk_label_set_text(GTK_LABEL(gtk_tree_expander_get_child(expander)),
                       gtk_string_object_get_string(item));
    g_object_unref(item);
}

std::size_t Walk(GListModel* groups) {
    std::size_t length = 0;
    for (guint group = 0; group < kGroups; ++group) {
        gpointer parent = g_list_model_get_item(groups, group);
        GListModel* items = ChildrenOf(parent, nullptr);
        for (guint i = 0; i < g_list_model_get_n_items(items); ++i) {
            gpointer item = g_list_model_get_item(items, i);
            length += std::string(gtk_string_object_get_string(GTK_STRING_OBJECT(item))).size();
            g_object_unref(item);
        }
        g_object_unref(items);
        g_object_unref(parent);
    }
    return length;
}

void DeleteOneByOne(GListStore* groups) {
    for (int group = kGroups - 1; group >= 0; --group) {
        gpointer parent = g_list_model_get_item(G_LIST_MODEL(groups), static_cast<guint>(group));
        auto* items = G_LIST_STORE(ChildrenOf(parent, nullptr));
        for (int i = kItemsOfGroup - 1; i >= 0; --i)
            g_list_store_remove(items, static_cast<guint>(i));
        g_list_store_remove(groups, static_cast<guint>(group));
        g_object_unref(items);
        g_object_unref(parent);
    }
}

void MeasureTree() {
    GListStore* groups = g_list_store_new(GTK_TYPE_STRING_OBJECT);
    GtkTreeListModel* tree =
        gtk_tree_list_model_new(G_LIST_MODEL(groups), FALSE, FALSE, ChildrenOf, nullptr, nullptr);
    GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(SetUpTreeCell), nullptr);
    g_signal_connect(factory, "bind", G_CALLBACK(BindTreeCell), nullptr);
    Shown shown(gtk_list_view_new(GTK_SELECTION_MODEL(gtk_single_selection_new(G_LIST_MODEL(tree))),
                                  factory));
    shown.Present();
    Measure("tree-100000-insert", [&] {
        for (int group = 0; group < kGroups; ++group) {
            GListStore* items = g_list_store_new(GTK_TYPE_STRING_OBJECT);
            AppendString(groups, GroupText(group), items);
            for (int i = 0; i < kItemsOfGroup; ++i)
                AppendString(items, ItemText(group, i), nullptr);
        }
        shown.WaitForFrame();
    });
    Measure("tree-100000-expand-all", [&] {
        for (int group = 0; group < kGroups; ++group) {
            GtkTreeListRow* row =
                gtk_tree_list_model_get_child_row(tree, static_cast<guint>(group));
            gtk_tree_list_row_set_expanded(row, TRUE);
            g_object_unref(row);
        }
        shown.WaitForFrame();
    });
    std::size_t length = 0;
    Measure("tree-100000-walk", [&] { length = Walk(G_LIST_MODEL(groups)); });
    Measure("tree-100000-delete", [&] {
        DeleteOneByOne(groups);
        shown.WaitForFrame();
    });
    std::fprintf(stderr, "%zu\n", length);
}

void BindString(GtkListItemFactory*, GtkListItem* cell, gpointer) {
    gtk_label_set_text(
        GTK_LABEL(gtk_list_item_get_child(cell)),
        gtk_string_object_get_string(GTK_STRING_OBJECT(gtk_list_item_get_item(cell))));
}

void FindLast(GtkStringList* strings, const std::string& last) {
    const guint count = g_list_model_get_n_items(G_LIST_MODEL(strings));
    for (guint i = 0; i < count; ++i)
        if (g_ascii_strcasecmp(gtk_string_list_get_string(strings, i), last.c_str()) == 0) return;
    std::abort();
}

void MeasureListBox() {
    std::vector<std::string> added;
    GtkStringList* strings = gtk_string_list_new(nullptr);
    GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(SetUpCell), nullptr);
    g_signal_connect(factory, "bind", G_CALLBACK(BindString), nullptr);
    GtkSingleSelection* selection = gtk_single_selection_new(G_LIST_MODEL(strings));
    Shown shown(gtk_list_view_new(GTK_SELECTION_MODEL(selection), factory));
    shown.Present();
    Measure("listbox-100000-add", kParts, [&] {
        for (int i = 0; i < kStrings / kParts; ++i)
            gtk_string_list_append(strings, StringText(i).c_str());
        shown.WaitForFrame();
    });
    for (int i = kStrings / kParts; i < kStrings; ++i) added.push_back(StringText(i));
    std::vector<const char*> rest;
    for (const std::string& text : added) rest.push_back(text.c_str());
    rest.push_back(nullptr);
    gtk_string_list_splice(strings, kStrings / kParts, 0, rest.data());
    const std::string last = StringText(kStrings - 1);
    Measure("listbox-100000-find", [&] {
        for (int i = 0; i < kSearches; ++i) FindLast(strings, last);
    });
    Measure("listbox-100000-select", [&] {
        for (int i = 0; i < kSelections; ++i)
            gtk_single_selection_set_selected(selection, static_cast<guint>(i * 97 % kStrings));
        shown.WaitForFrame();
    });
}

} // namespace
} // namespace lists

int main() {
    gtk_init();
    lists::MeasureList();
    lists::MeasureSort();
    lists::MeasureInserts();
    lists::MeasureTree();
    lists::MeasureListBox();
    return 0;
}
