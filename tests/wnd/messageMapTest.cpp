// Message maps: what entries take out of messages, results, hierarchies, command states, controls,
// dialogs. What must not compile is in test_message_map_errors.py.
#include <vmcore/wnd/messageMap.h>

#include <sstream>

#include <QtGui/QAction>
#include <QtWidgets/QMenu>

#include <vmcore/dialogs/CDialog.h>

#include "app/CWinAppDelegate.h"
#include "controls/menuUpdate.h"
#include "wnd/RecordingWindow.h"

namespace {

constexpr UINT kMessage = WM_USER + 1;

// Every handler tells what it was given.
class Every : public CWnd {
public:
    std::ostringstream said;
    CWnd* other = nullptr;

private:
    template <class... Values>
    void Say(const char* name, const Values&... values) {
        said << name;
        ((said << ' ' << +values), ...);
    }
    const char* Name(const CWnd* wnd) const {
        if (!wnd) return "none";
        return wnd == this ? "itself" : wnd == other ? "other" : "scratch";
    }
    int OnCreate(CREATESTRUCT* record) { return Say("create", record->cx), 0; }
    void OnDestroy() { Say("destroy"); }
    void OnClose() { Say("close"); }
    BOOL OnQueryClose() { return Say("query"), TRUE; }
    void OnShowWindow(BOOL show, UINT status) { Say("show", show, status); }
    void OnPaint() { Say("paint"); }
    void OnSize(UINT type, int cx, int cy) { Say("size", type, cx, cy); }
    void OnMove(int x, int y) { Say("move", x, y); }
    void OnGetMinMaxInfo(MINMAXINFO* limits) { Say("limits", limits->ptMaxSize.x); }
    void OnLButtonDown(UINT flags, CPoint at) { Say("left down", flags, at.x, at.y); }
    void OnLButtonUp(UINT flags, CPoint at) { Say("left up", flags, at.x, at.y); }
    void OnLButtonDblClk(UINT flags, CPoint at) { Say("left double", flags, at.x, at.y); }
    void OnMButtonDown(UINT flags, CPoint at) { Say("middle down", flags, at.x, at.y); }
    void OnMButtonUp(UINT flags, CPoint at) { Say("middle up", flags, at.x, at.y); }
    void OnMButtonDblClk(UINT flags, CPoint at) { Say("middle double", flags, at.x, at.y); }
    void OnRButtonDown(UINT flags, CPoint at) { Say("right down", flags, at.x, at.y); }
    void OnRButtonUp(UINT flags, CPoint at) { Say("right up", flags, at.x, at.y); }
    void OnRButtonDblClk(UINT flags, CPoint at) { Say("right double", flags, at.x, at.y); }
    void OnMouseMove(UINT flags, CPoint at) { Say("mouse", flags, at.x, at.y); }
    void OnMouseEnter(UINT flags, CPoint at) { Say("enter", flags, at.x, at.y); }
    void OnMouseLeave() { Say("leave"); }
    BOOL OnMouseWheel(UINT flags, short delta, CPoint at) {
        return Say("wheel", flags, delta, at.x, at.y), TRUE;
    }
    void OnContextMenu(CWnd* wnd, CPoint at) { Say("context", Name(wnd), at.x, at.y); }
    void OnParentNotify(UINT message, LPARAM point) { Say("notify", message, point); }
    void OnDropFiles(NSArray* files) { Say("drop", reinterpret_cast<std::uintptr_t>(files)); }
    void OnKeyDown(UINT key, UINT repeats, UINT flags) { Say("down", key, repeats, flags); }
    void OnKeyUp(UINT key, UINT repeats, UINT flags) { Say("up", key, repeats, flags); }
    void OnChar(UINT key, UINT repeats, UINT flags) { Say("char", key, repeats, flags); }
    void OnSetFocus(CWnd* before) { Say("focus", Name(before)); }
    void OnKillFocus(CWnd* next) { Say("lost", Name(next)); }
    void OnActivate(UINT state, CWnd* wnd, BOOL small) { Say("active", state, Name(wnd), small); }
    void OnMDIActivate(BOOL active, CWnd* on, CWnd* off) {
        Say("mdi", active, Name(on), Name(off));
    }
    void OnTimer(UINT_PTR id) { Say("timer", id); }
    void OnHScroll(UINT code, UINT position, CScrollBar* bar) {
        Say("h", code, position, !bar ? "none" : bar == (CScrollBar*)other ? "other" : "wrong");
    }
    void OnVScroll(UINT code, UINT position, CWnd* bar) { Say("v", code, position, Name(bar)); }
    void OnExitMenuLoop(BOOL isPopup) { Say("menu", isPopup); }
    DECLARE_MESSAGE_MAP()
};

// clang-format off
BEGIN_MESSAGE_MAP(Every, CWnd)
    ON_WM_CREATE() ON_WM_DESTROY() ON_WM_CLOSE() ON_WM_QUERYCLOSE() ON_WM_SHOWWINDOW() ON_WM_PAINT()
    ON_WM_SIZE() ON_WM_MOVE() ON_WM_GETMINMAXINFO()
    ON_WM_LBUTTONDOWN() ON_WM_LBUTTONUP() ON_WM_LBUTTONDBLCLK()
    ON_WM_MBUTTONDOWN() ON_WM_MBUTTONUP() ON_WM_MBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN() ON_WM_RBUTTONUP() ON_WM_RBUTTONDBLCLK()
    ON_WM_MOUSEMOVE() ON_WM_MOUSEENTER() ON_WM_MOUSELEAVE() ON_WM_MOUSEWHEEL()
    ON_WM_CONTEXTMENU() ON_WM_PARENTNOTIFY() ON_WM_DROPFILES()
    ON_WM_KEYDOWN() ON_WM_KEYUP() ON_WM_CHAR() ON_WM_SETFOCUS() ON_WM_KILLFOCUS()
    ON_WM_ACTIVATE() ON_WM_MDIACTIVATE() ON_WM_TIMER() ON_WM_HSCROLL() ON_WM_VSCROLL()
    ON_WM_EXITMENULOOP()
END_MESSAGE_MAP()
    // clang-format on

    // The handlers of three classes, the middle one with a switch.
    class Lower : public CWnd {
public:
    std::string said;

protected:
    virtual void OnFirst() { said += "lower first "; }
    void OnSecond() { said += "lower second "; }
    void OnRest(UINT id) { said += "lower " + std::to_string(id) + " "; }
    DECLARE_MESSAGE_MAP()
};
class Middle : public Lower {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_COMMAND || wParam != 3) return Lower::MessageMap(message, wParam, lParam);
        said += "middle third ";
        return 1;
    }
};
template <class Text>
class Upper : public Middle {
    void OnFirst() override { said += Text("upper first "); }
    BOOL OnFourth(UINT id) { return said += Text("upper fourth "), id == 4; }
    DECLARE_MESSAGE_MAP()
};
// clang-format off
BEGIN_MESSAGE_MAP(Lower, CWnd)
    //{{AFX_MSG_MAP(Lower)
    ON_COMMAND(1, OnFirst)
    ON_COMMAND(2, &Lower::OnSecond)
    ON_COMMAND_RANGE(3, 5, OnRest)
    //}}AFX_MSG_MAP
END_MESSAGE_MAP()
// clang-format on

// clang-format off
BEGIN_TEMPLATE_MESSAGE_MAP(Upper, Text, Middle)
    ON_COMMAND(2, &Upper::OnSecond) // inherited
    ON_COMMAND_EX_RANGE(4, 6, OnFourth)
END_MESSAGE_MAP()
// clang-format on

// Commands with and without states; a control's notifications.
class Pane : public RecordingWindow {
public:
    std::string said;
    bool mayOpen = true;
    LRESULT answer = 0;

protected:
    void OnOpen() { said += "open "; }
    void OnUpdateOpen(CCmdUI* state) { state->Enable(mayOpen); }
    void OnUpdateChecked(CCmdUI* state) { state->SetCheck(1); }
    void OnChecked() { said += "checked "; }
    void OnItem(UINT id) { said += "item " + std::to_string(id) + " "; }
    void OnText() { said += "text "; }
    void OnNotice(NMHDR* notice, LRESULT* result) {
        said += "notice " + std::to_string(notice->code) + " ";
        *result = answer;
    }
    BOOL OnNoticeEx(UINT id, NMHDR*, LRESULT*) { return said += "notices ", id == 30; }
    LRESULT OnPlain(WPARAM wParam, LPARAM) { return static_cast<LRESULT>(wParam); }
    LRESULT OnKept(WPARAM, LPARAM) { return answer; }
    DECLARE_MESSAGE_MAP()
};
// clang-format off
BEGIN_MESSAGE_MAP(Pane, RecordingWindow)
    ON_UPDATE_COMMAND_UI(10, OnUpdateOpen)
    ON_COMMAND(10, OnOpen)
    ON_COMMAND(11, &Pane::OnChecked)
    ON_UPDATE_COMMAND_UI_RANGE(11, 12, &Pane::OnUpdateChecked)
    ON_BN_CLICKED(13, OnOpen)
    ON_CONTROL_RANGE(BN_CLICKED, 14, 15, OnItem)
    ON_CONTROL_RANGE(LBN_DBLCLK, 20, 21, OnItem)
    ON_EN_CHANGE(20, OnText)
    ON_NOTIFY(128, 30, OnNotice)
    ON_NOTIFY_EX_RANGE(129, 30, 31, OnNoticeEx)
    ON_MESSAGE(kMessage, OnPlain)
    ON_MESSAGE(WM_CLOSE, &Pane::OnKept)
    ON_APPLICATION_COMMANDS()
END_MESSAGE_MAP()
// clang-format on

// A control that handles some of what it reports.
class Reflecting : public CWnd {
public:
    std::string said;

private:
    void OnClicked() { said += "clicked "; }
    BOOL OnChanged() { return said += "changed ", FALSE; }
    void OnNotice(NMHDR*, LRESULT*) { said += "notice "; }
    DECLARE_MESSAGE_MAP()
};
// clang-format off
BEGIN_MESSAGE_MAP(Reflecting, CWnd)
    ON_CONTROL_REFLECT(BN_CLICKED, OnClicked)
    ON_CONTROL_REFLECT_EX(EN_CHANGE, OnChanged)
    ON_NOTIFY_REFLECT(128, OnNotice)
END_MESSAGE_MAP()
// clang-format on

class Program : public CWinApp {
public:
    int abouts = 0;

private:
    void OnAbout() { ++abouts; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Program, CWinApp)
ON_COMMAND(ID_APP_ABOUT, OnAbout)
END_MESSAGE_MAP()

class Dialog : public CDialog {
public:
    std::string said;

protected:
    void OnOK() override { said += "OK "; }
    void OnCancel() override { said += "cancel "; }
    void OnSave() { said += "save ", OnOK(); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Dialog, CDialog)
ON_BN_CLICKED(IDOK, &Dialog::OnSave)
END_MESSAGE_MAP()

class NamingDialog : public Dialog {
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(NamingDialog, Dialog)
ON_BN_CLICKED(IDOK, OnOK)
END_MESSAGE_MAP()

class MappedWindow : public WindowFixture {
protected:
    // The state that a pop-up menu of the pane shows for a command: "on", "off", with "+" when checked.
    std::string StateOf(int id) {
        CMenu menu;
        menu.CreatePopupMenu();
        menu.AppendMenu(0, static_cast<std::uintptr_t>(id), "Item");
        QMenu* native = menu.GetSafeHmenu();
        QAction* item = native->actions().at(0);
        vm::UpdateMenuItem(native, item, &pane);
        return std::string(item->isEnabled() ? "on" : "off") + (item->isChecked() ? "+" : "");
    }
    std::string Command(CWnd& wnd, std::string& said, WPARAM wParam, LPARAM lParam = 0) {
        said.clear();
        const LRESULT result = wnd.SendMessage(WM_COMMAND, wParam, lParam);
        return said + std::to_string(result);
    }

    MappedWindow() { pane.Create("", "", 0, RECT{0, 0, 20, 20}, &top, 8); }
    ~MappedWindow() override {
        if (pane.view) pane.DestroyWindow();
    }

    Program program;
    Pane pane;
};

} // namespace

TEST_F(MappedWindow, EntriesUnpackEveryMessage) {
    Every every;
    every.Create("", "", 0, RECT{0, 0, 50, 50}, &top, 9);
    every.CreateVScroll();
    every.other = &child;
    CREATESTRUCT record{};
    record.cx = 30;
    MINMAXINFO limits{};
    limits.ptMaxSize.x = 70;
    const LPARAM at = MAKELPARAM(-3, 400);
    const WPARAM own = AsParameter(every.view);
    const WPARAM next = AsParameter(child.view);
    const WPARAM bar = AsParameter(every.vScrollView);
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* said;
        LRESULT result = 1;
    } rows[] = {
        {WM_CREATE, 0, AsParameter(&record), "create 30", 0},
        {WM_DESTROY, 0, 0, "destroy"},
        {WM_CLOSE, 0, 0, "close"},
        {WM_QUERYCLOSE, 0, 0, "query"},
        {WM_SHOWWINDOW, 1, 0, "show 1 0"},
        {WM_PAINT, 0, 0, "paint"},
        {WM_SIZE, 2, MAKELPARAM(40000, 20), "size 2 40000 20"},
        {WM_MOVE, 0, at, "move -3 400"},
        {WM_GETMINMAXINFO, 0, AsParameter(&limits), "limits 70"},
        {WM_LBUTTONDOWN, MK_SHIFT, at, "left down 16 -3 400"},
        {WM_LBUTTONUP, 0, at, "left up 0 -3 400"},
        {WM_LBUTTONDBLCLK, 1, at, "left double 1 -3 400"},
        {WM_MBUTTONDOWN, 4, at, "middle down 4 -3 400"},
        {WM_MBUTTONUP, 0, at, "middle up 0 -3 400"},
        {WM_MBUTTONDBLCLK, 4, at, "middle double 4 -3 400"},
        {WM_RBUTTONDOWN, 8, at, "right down 8 -3 400"},
        {WM_RBUTTONUP, 0, at, "right up 0 -3 400"},
        {WM_RBUTTONDBLCLK, 8, at, "right double 8 -3 400"},
        {WM_MOUSEMOVE, 0, at, "mouse 0 -3 400"},
        {WM_MOUSEENTER, 0, at, "enter 0 -3 400"},
        {WM_MOUSELEAVE, 0, at, "leave"},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -240), at, "wheel 16 -240 -3 400"},
        {WM_CONTEXTMENU, next, at, "context other -3 400"},
        {WM_PARENTNOTIFY, WM_RBUTTONUP, 77, "notify 212 77"},
        {WM_DROPFILES, 4711, 0, "drop 4711"},
        {WM_KEYDOWN, 65, 0x1E0000, "down 65 1 30"},
        {WM_KEYUP, 65, 0x1E0003, "up 65 3 30"},
        {WM_CHAR, 97, 0xE0000, "char 97 1 14"},
        {WM_SETFOCUS, next, 0, "focus other"},
        {WM_KILLFOCUS, 0, 0, "lost none"},
        {WM_ACTIVATE, 1, next, "active 1 other 0"},
        {WM_MDIACTIVATE, next, own, "mdi 1 itself other"},
        {WM_MDIACTIVATE, own, 0, "mdi 0 none itself"},
        {WM_TIMER, 12, 0, "timer 12"},
        {WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 60000), next, "h 5 60000 other"},
        {WM_HSCROLL, SB_LINEDOWN, 0, "h 1 0 none"},
        {WM_VSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), bar, "v 3 0 none"},
        {WM_VSCROLL, SB_PAGEDOWN, next, "v 3 0 other"},
        {WM_SETFOCUS, bar, 0, "focus scratch"},
        {WM_EXITMENULOOP, 0, 0, "menu 1"},
    };
    for (const auto& row : rows) {
        every.said.str("");
        const LRESULT result = every.SendMessage(row.message, row.wParam, row.lParam);
        EXPECT_EQ(every.said.str(), row.said);
        EXPECT_EQ(result, row.result) << row.said;
    }
    every.DestroyWindow();
}

TEST_F(MappedWindow, ResultsOfHandlersArriveAsTheyAre) {
    for (const LRESULT result : {LRESULT{0}, LRESULT{1}, LRESULT{-1}, LRESULT{256},
                                 LRESULT{1} << 40, LRESULT{0x7E000101}, -(LRESULT{1} << 50)}) {
        EXPECT_EQ(pane.SendMessage(kMessage, static_cast<WPARAM>(result)), result);
        LRESULT direct = 77;
        EXPECT_TRUE(pane.OnWndMsg(kMessage, static_cast<WPARAM>(result), 0, &direct)) << result;
        EXPECT_EQ(direct, result);
    }
    EXPECT_EQ(pane.SendMessage(WM_CLOSE), 0); // handled
    EXPECT_TRUE(pane.view);
}

TEST_F(MappedWindow, ResultWaitsWhileADerivedClassSendsOthers) {
    class Chatty : public Pane {
        int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
            const int result = Pane::MessageMap(message, wParam, lParam);
            for (WPARAM other = 10; wParam == 512 && other < 50; ++other) {
                EXPECT_EQ(SendMessage(kMessage, other << 8), static_cast<LRESULT>(other << 8));
                Pane::MessageMap(message, 768, lParam); // dropped
            }
            return result;
        }
    } chatty;
    EXPECT_EQ(chatty.SendMessage(kMessage, 512), 512);
    for (int i = 0; i < 10000; ++i) pane.MessageMap(kMessage, 768, 0); // do not pile up
    EXPECT_EQ(chatty.SendMessage(kMessage, 512), 512);
}

TEST_F(MappedWindow, MapsAndSwitchesShareAHierarchy) {
    Upper<const char*> upper;
    const char* const expected[] = {"0",
                                    "upper first 1",
                                    "lower second 1",
                                    "middle third 1",
                                    "upper fourth 1",
                                    "upper fourth 0", // refused: the base class is not asked
                                    "upper fourth 0",
                                    "0"};
    for (WPARAM id = 0; id < std::size(expected); ++id)
        EXPECT_EQ(Command(upper, upper.said, id), expected[id]) << id;
    Lower lower;
    EXPECT_EQ(Command(lower, lower.said, 5), "lower 5 1");
}

TEST_F(MappedWindow, CommandsAndControlsTakeTheirCodesOnly) {
    const struct {
        int id;
        int code;
        const char* expected;
    } rows[] = {
        {10, 0, "open 1"},
        {10, BN_CLICKED, "open 1"},
        {10, EN_CHANGE, "0"},
        {13, 0, "open 1"},
        {13, BN_CLICKED, "open 1"},
        {14, BN_CLICKED, "item 14 1"},
        {15, 0, "item 15 1"},
        {16, 0, "0"},
        {20, EN_CHANGE, "text 1"},
        {20, EN_UPDATE, "0"},
        {21, LBN_DBLCLK, "item 21 1"},
        {20, 0, "0"},
        {12, 0, "0"},
    };
    EXPECT_EQ(Command(pane, pane.said, MAKEWPARAM(10, 1)), "open 1"); // an accelerator
    EXPECT_EQ(Command(pane, pane.said, MAKEWPARAM(10, 1), AsParameter(pane.view)), "0");
    for (const auto& row : rows)
        EXPECT_EQ(Command(pane, pane.said, MAKEWPARAM(row.id, row.code), AsParameter(pane.view)),
                  row.expected)
            << row.id << " " << row.code;
}

TEST_F(MappedWindow, MenuItemsShowWhetherTheirCommandsRun) {
    const struct {
        int id;
        const char* state;
    } rows[] = {{10, "on"}, {11, "on+"}, {12, "on+"}, {13, "on"},
                {15, "on"}, {20, "off"}, {99, "off"}, {ID_APP_ABOUT, "on"}};
    for (const auto& row : rows) EXPECT_EQ(StateOf(row.id), row.state) << row.id;
    pane.mayOpen = false;
    EXPECT_EQ(StateOf(10), "off");
    EXPECT_EQ(Command(pane, pane.said, 10), "1"); // swallowed
    LRESULT handled = 0;
    EXPECT_TRUE(pane.OnCmdMsg(WM_COMMAND, 11, &handled, nullptr));
    EXPECT_EQ(pane.said, "checked ");
}

TEST_F(MappedWindow, NotificationsReachParentsUnlessReflected) {
    NMHDR notice{nullptr, 30, 128};
    const auto notify = [&](UINT id, UINT code) {
        pane.said.clear();
        notice.idFrom = id;
        notice.code = code;
        const LRESULT result = pane.SendMessage(WM_NOTIFY, id, AsParameter(&notice));
        return pane.said + std::to_string(result);
    };
    EXPECT_EQ(notify(30, 128), "notice 128 0");
    pane.answer = 512;
    EXPECT_EQ(notify(30, 128), "notice 128 512");
    EXPECT_EQ(notify(31, 128), "0");
    EXPECT_EQ(notify(30, 129), "notices 0");
    EXPECT_EQ(notify(31, 129), "notices 0");

    Reflecting control;
    control.Create("", "", 0, RECT{0, 0, 10, 10}, &pane, 20);
    notice.hwndFrom = control.view;
    EXPECT_EQ(notify(30, 128), "1");
    EXPECT_EQ(notify(31, 129), "notices 0"); // not for the control
    const LPARAM handle = AsParameter(control.view);
    EXPECT_EQ(Command(pane, pane.said, MAKEWPARAM(13, BN_CLICKED), handle), "1");
    EXPECT_EQ(Command(pane, pane.said, MAKEWPARAM(20, EN_CHANGE), handle), "text 1");
    EXPECT_EQ(control.said, "notice clicked changed ");
    control.SendMessage(WM_COMMAND, MAKEWPARAM(20, BN_CLICKED),
                        AsParameter(pane.view)); // not its own
    EXPECT_EQ(control.said, "notice clicked changed ");
    control.DestroyWindow();
}

TEST_F(MappedWindow, ApplicationsHaveCommands) {
    EXPECT_EQ(Command(pane, pane.said, ID_APP_ABOUT), "1");
    CWinAppDelegate delegate;
    delegate.about();
    EXPECT_EQ(program.abouts, 2);
}

TEST(MappedDialog, EntriesForOKComeBeforeTheVirtual) {
    Dialog dialog;
    EXPECT_EQ(dialog.SendMessage(WM_COMMAND, IDOK), 1);
    EXPECT_EQ(dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED)), 1);
    EXPECT_EQ(dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDOK, 1)), 1);
    EXPECT_EQ(dialog.SendMessage(WM_COMMAND, IDCANCEL), 1);
    EXPECT_EQ(dialog.said, "save OK save OK save OK cancel ");
    NamingDialog naming;
    EXPECT_EQ(naming.SendMessage(WM_COMMAND, IDOK), 1);
    EXPECT_EQ(naming.said, "OK ");
}
