// wxWidgets' virtual list control, tree control and list box.
#include <algorithm>
#include <numeric>
#include <vector>

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/listctrl.h>
#include <wx/treectrl.h>

#include "common.h"

namespace lists {
namespace {

wxString Text(int column, std::uint64_t row) {
    char text[256];
    CellText(column, row, text, sizeof text);
    return text;
}

class Patches : public wxListCtrl {
public:
    explicit Patches(wxWindow* parent)
        : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxSize(kWidth, kHeight),
                     wxLC_REPORT | wxLC_VIRTUAL) {
        for (int i = 0; i < kColumns; ++i) AppendColumn("Column", wxLIST_FORMAT_LEFT, kColumnWidth);
    }
    void Fill(int rows) {
        m_data.resize(static_cast<std::size_t>(rows));
        std::iota(m_data.begin(), m_data.end(), 0L);
        SetItemCount(rows);
    }
    void AppendRow() {
        m_data.push_back(static_cast<long>(m_data.size()));
        SetItemCount(static_cast<long>(m_data.size()));
    }
    // A virtual list has no sorting of its own; this is what its manual leaves to the program.
    void Sort() {
        std::stable_sort(m_data.begin(), m_data.end(), [](long a, long b) {
            return Text(0, static_cast<std::uint64_t>(a))
                       .CmpNoCase(Text(0, static_cast<std::uint64_t>(b))) < 0;
        });
        Refresh();
    }

private:
    wxString OnGetItemText(long item, long column) const override {
        return Text(static_cast<int>(column),
                    static_cast<std::uint64_t>(m_data[static_cast<std::size_t>(item)]));
    }
    std::vector<long> m_data;
};

wxFrame* NewFrame() {
    return new wxFrame(nullptr, wxID_ANY, "lists", wxDefaultPosition, wxSize(kWidth, kHeight));
}

void Frame(wxWindow& window) {
    window.Refresh();
    window.Update();
    wxTheApp->Yield();
}

void Show(wxFrame& frame, wxWindow& view) {
    frame.Show();
    Frame(view);
}

void ScrollPages(wxListCtrl& list) {
    for (int i = 1; i <= kPages; ++i) {
        list.EnsureVisible(std::min<long>(i * list.GetCountPerPage(), kRows - 1));
        Frame(list);
    }
}

void MeasureList() {
    wxFrame* frame = NewFrame();
    auto* list = new Patches(frame);
    Measure("list-1000000-fill", [&] { list->Fill(kRows); });
    Measure("list-1000000-first-frame", [&] { Show(*frame, *list); });
    Measure("list-1000000-100-pages", [&] { ScrollPages(*list); });
    Measure("list-1000000-select-all", [&] {
        list->SetItemState(-1, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
        Frame(*list);
    });
    Measure("list-1000000-select-10000-separate", [&] {
        list->SetItemState(-1, 0, wxLIST_STATE_SELECTED);
        for (int i = 0; i < kSeparateRows; ++i)
            list->SetItemState(2 * i, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
        Frame(*list);
    });
    frame->Destroy();
}

void MeasureSort() {
    wxFrame* frame = NewFrame();
    auto* list = new Patches(frame);
    list->Fill(kSortedRows);
    Show(*frame, *list);
    Measure("list-100000-sort", [&] {
        list->Sort();
        Frame(*list);
    });
    frame->Destroy();
}

void MeasureInserts() {
    wxFrame* frame = NewFrame();
    auto* list = new Patches(frame);
    Show(*frame, *list);
    Measure("list-100000-inserts-while-shown", [&] {
        for (int i = 0; i < kInsertedRows; ++i) list->AppendRow();
        Frame(*list);
    });
    frame->Destroy();
}

template <class Visit>
void ForEachGroup(wxTreeCtrl& tree, Visit visit) {
    wxTreeItemIdValue cookie;
    const wxTreeItemId root = tree.GetRootItem();
    for (wxTreeItemId group = tree.GetFirstChild(root, cookie); group.IsOk();
         group = tree.GetNextSibling(group))
        visit(group);
}

void MeasureTree() {
    wxFrame* frame = NewFrame();
    auto* tree = new wxTreeCtrl(frame);
    const wxTreeItemId root = tree->AddRoot("Instruments");
    Show(*frame, *tree);
    Measure("tree-100000-insert", [&] {
        for (int group = 0; group < kGroups; ++group) {
            const wxTreeItemId parent = tree->AppendItem(root, GroupText(group));
            for (int i = 0; i < kItemsOfGroup; ++i) tree->AppendItem(parent, ItemText(group, i));
        }
        tree->Expand(root);
        Frame(*tree);
    });
    Measure("tree-100000-expand-all", [&] {
        ForEachGroup(*tree, [&](const wxTreeItemId& group) { tree->Expand(group); });
        Frame(*tree);
    });
    std::size_t length = 0;
    Measure("tree-100000-walk", [&] {
        ForEachGroup(*tree, [&](const wxTreeItemId& group) {
            wxTreeItemIdValue cookie;
            for (wxTreeItemId item = tree->GetFirstChild(group, cookie); item.IsOk();
                 item = tree->GetNextChild(group, cookie))
                length += tree->GetItemText(item).length();
        });
    });
    Measure("tree-100000-delete", [&] {
        wxTreeItemId group;
        while ((group = tree->GetLastChild(root)).IsOk()) {
            wxTreeItemId item;
            while ((item = tree->GetLastChild(group)).IsOk()) tree->Delete(item);
            tree->Delete(group);
        }
        Frame(*tree);
    });
    std::fprintf(stderr, "%zu\n", length);
    frame->Destroy();
}

void MeasureListBox() {
    wxFrame* frame = NewFrame();
    auto* list = new wxListBox(frame, wxID_ANY);
    Show(*frame, *list);
    Measure("listbox-100000-add", [&] {
        for (int i = 0; i < kStrings; ++i) list->Append(StringText(i));
        Frame(*list);
    });
    Measure("listbox-100000-find", [&] {
        for (int i = 0; i < kSearches; ++i)
            if (list->FindString(StringText(kStrings - 1)) != kStrings - 1) std::abort();
    });
    Measure("listbox-100000-select", [&] {
        for (int i = 0; i < kSelections; ++i) list->SetSelection(i * 97 % kStrings);
        Frame(*list);
    });
    frame->Destroy();
}

class Program : public wxApp {
public:
    bool OnInit() override {
        MeasureList();
        MeasureSort();
        MeasureInserts();
        MeasureTree();
        MeasureListBox();
        return false;
    }
};

} // namespace
} // namespace lists

wxIMPLEMENT_APP_NO_MAIN(lists::Program);

int main(int argc, char** argv) {
    wxEntryStart(argc, argv);
    wxTheApp->CallOnInit(); // measures, and has nothing to run for afterwards
    wxEntryCleanup();
    return 0;
}
