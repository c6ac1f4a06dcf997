// A shown tree in a window, which records what it is told, and what can be seen of its rows.
#pragma once

#include <vmcore/controls/CTreeCtrl.h>

#include <functional>
#include <memory>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>

#include <vmcore/app/CWinApp.h>

#include "ControlsFixture.h"
#include "support/MessageBoxRecorder.h"

class BankTree : public CTreeCtrl {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == TVM_ANSWERED) ADD_FAILURE() << "answered before the map";
        if (message != WM_NOTIFY) return CTreeCtrl::MessageMap(message, wParam, lParam);
        notices.push_back(*reinterpret_cast<NMTREEVIEW*>(lParam));
        resourceHandle = AfxGetResourceHandle();
        const auto handler = onNotice; // may delete this
        if (handler) handler();
        return 0;
    }
    std::vector<NMTREEVIEW> notices;
    void* resourceHandle = nullptr;
    std::function<void()> onNotice;
};

class TreeFixture : public testing::Test {
protected:
    TreeFixture() {
        m_window.Open();
        Make(WS_VISIBLE);
        m_window.ShowWindow(SW_SHOW);
        Turn();
    }
    // Another tree in the place of the one that is there.
    void Make(DWORD style) {
        if (m_tree) m_tree->DestroyWindow();
        m_tree = std::make_unique<BankTree>();
        m_tree->Create(style, RECT{10, 20, 310, 220}, &m_window, 55);
    }
    static void Turn() { QCoreApplication::processEvents(); }
    QTreeView& View() const { return *m_tree->tableView; }

    // What is shown, indented by depth.
    std::vector<std::string> Rows() const {
        Turn();
        std::vector<std::string> rows;
        for (QModelIndex at = View().model()->index(0, 0); at.isValid();
             at = View().indexBelow(at)) {
            std::string depth;
            for (QModelIndex up = at.parent(); up.isValid(); up = up.parent()) depth += '.';
            rows.push_back(depth + at.data().toString().toStdString());
        }
        return rows;
    }
    // The middle of a cell of the row with this number on the screen.
    QPoint Cell(int row, int column = 0) const {
        Turn();
        QModelIndex at = View().model()->index(0, 0);
        for (int i = 0; i < row; ++i) at = View().indexBelow(at);
        const QRect cell = View().visualRect(at.siblingAtColumn(column));
        return column ? QPoint(cell.left() + 8, cell.center().y()) : cell.center();
    }
    void ClickCell(int row, int column = 0) { Click(View().viewport(), Cell(row, column)); }
    void ExpectUnknownItems(std::size_t count) {
        EXPECT_THAT(m_log.TakeLog(),
                    testing::AllOf(testing::SizeIs(count),
                                   testing::Each("CTreeCtrl: an item that is not in this tree")));
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    MessageBoxRecorder m_boxes;
    RecordingWnd m_window;
    std::unique_ptr<BankTree> m_tree;
};
