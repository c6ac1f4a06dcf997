// What the tests of lists share: a list that answers for its cells, in a window that records what it is
// told.
#pragma once

#include <vmcore/controls/CListCtrl.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <gmock/gmock.h>

#include "ControlsFixture.h"
#include "controls/LCTableViewDelegate.h"

// Answers every cell with "<column>:<item data>", or with a text of its own.
class PatchList : public CListCtrl {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_GETDISPLAYTEXT) return CListCtrl::MessageMap(message, wParam, lParam);
        auto* cell = reinterpret_cast<LV_DISPTEXT*>(lParam);
        asked.emplace_back(cell->column, cell->itemData);
        const std::string label = texts.count(cell->itemData) ? texts[cell->itemData]
                                                              : std::to_string(cell->column) + ":" +
                                                                    std::to_string(cell->itemData);
        snprintf(cell->text, sizeof cell->text, "%s", label.c_str());
        return 1;
    }
    std::map<std::uintptr_t, std::string> texts;
    std::vector<std::pair<int, std::uintptr_t>> asked;
};

class ListCtrl : public testing::Test {
protected:
    ListCtrl() {
        m_window.Open();
        m_list.Create(WS_VISIBLE, RECT{10, 20, 310, 220}, &m_window, 55);
        m_list.InsertColumn(0, "Name", 0, 120);
        m_list.InsertColumn(2, "Bank", 0, 80);
    }

    // Rows with the item data 100, 101, ...
    void AppendRows(int count) {
        for (int i = 0; i < count; ++i)
            m_list.InsertItem(LVIF_PARAM | LVIF_TEXT, i, "row", 0, 0, 0,
                              static_cast<LPARAM>(100 + i));
    }
    std::vector<std::uintptr_t> Data() const {
        const auto& data = LCTableViewDelegate::Of(m_list.tableView)->data;
        return {data.begin(), data.end()};
    }
    std::string Cell(int row, int section) const {
        return m_list.tableView->model()->index(row, section).data().toString().toStdString();
    }
    void ClickHeader(int section) {
        QCoreApplication::processEvents(); // the header has its place then
        QHeaderView* header = m_list.tableView->horizontalHeader();
        Click(header->viewport(),
              {header->sectionViewportPosition(section) + 20, header->height() / 2});
    }
    std::vector<int> Selection() const {
        std::vector<int> rows;
        POSITION position = m_list.GetFirstSelectedItemPosition();
        while (position) rows.push_back(m_list.GetNextSelectedItem(position));
        return rows;
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    RecordingWnd m_window;
    PatchList m_list;
};
