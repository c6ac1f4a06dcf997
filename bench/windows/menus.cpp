// A menu of 50 items, updated and shown.
#include <QtWidgets/QMenu>

#include <afxwin.h>

#include "harness.h"
#include "parts.h"

namespace bench {
namespace {

constexpr int kItems = 50;
constexpr int kFirstId = 3000;

// Every second command is possible, every third one checked.
class CommandWindow : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != static_cast<int>(WM_UPDATECOMMANDUI))
            return CWnd::MessageMap(message, wParam, lParam);
        auto& state = *reinterpret_cast<CCmdUI*>(lParam);
        state.SetFnDefined(true);
        state.Enable(wParam % 2 == 0);
        state.SetCheck(wParam % 3 == 0);
        return 1;
    }
};

void Show(QMenu& menu) {
    menu.popup(QPoint(10, 10));
    menu.close();
}

} // namespace

void BenchMenu() {
    CommandWindow window;
    window.Create("", "bench", WS_OVERLAPPEDWINDOW, RECT{60, 60, 460, 260}, nullptr, 0);
    AfxSetMainWnd(&window);
    CMenu ours;
    ours.CreatePopupMenu();
    QMenu peer;
    for (int i = 0; i < kItems; ++i) {
        ours.AppendMenu(0, static_cast<UINT>(kFirstId + i), "An item of the menu");
        QAction* const action = peer.addAction("An item of the menu");
        action->setCheckable(true);
        action->setData(kFirstId + i);
    }
    QObject::connect(&peer, &QMenu::aboutToShow, [&peer] {
        for (QAction* action : peer.actions()) {
            action->setEnabled(action->data().toInt() % 2 == 0);
            action->setChecked(action->data().toInt() % 3 == 0);
        }
    });
    QMenu& ourMenu = *static_cast<QMenu*>(ours.GetSafeHmenu());
    const auto shows = [](QMenu& menu) {
        constexpr int kTimes = 20;
        return [&menu] {
            return NanosecondsPer(kTimes,
                                  [&] {
                                      for (int i = 0; i < kTimes; ++i) Show(menu);
                                  }) /
                   1000;
        };
    };
    const Pair shown = Compare(11, shows(ourMenu), shows(peer));
    Report("menu-of-50-updated-and-shown", shown.ours, "us", "QMenu", shown.peer);
    const auto updates = [](QMenu& menu) {
        constexpr int kTimes = 200;
        return [&menu] {
            return NanosecondsPer(kTimes,
                                  [&] {
                                      for (int i = 0; i < kTimes; ++i)
                                          QMetaObject::invokeMethod(&menu, "aboutToShow");
                                  }) /
                   1000;
        };
    };
    const Pair updated = Compare(11, updates(ourMenu), updates(peer));
    Report("menu-of-50-updated", updated.ours, "us", "QMenu", updated.peer);
    ours.DestroyMenu();
    AfxSetMainWnd(nullptr);
    window.DestroyWindow();
    Settle();
}

} // namespace bench
