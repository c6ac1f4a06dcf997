// What all control classes have in common: they do nothing without a view of their kind, and may go in
// what they report.
#include <functional>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

#include <vmcore/controls/CButton.h>
#include <vmcore/controls/CComboBox.h>
#include <vmcore/controls/CEdit.h>
#include <vmcore/controls/CProgressCtrl.h>
#include <vmcore/controls/CScrollBar.h>
#include <vmcore/controls/CSliderCtrl.h>
#include <vmcore/controls/CSpinButtonCtrl.h>
#include <vmcore/controls/CStatic.h>
#include <vmcore/controls/CTabCtrl.h>
#include <vmcore/controls/CToolTipCtrl.h>
#include <vmcore/dialogs/dataExchange.h>

#include "../wnd/RecordingWindow.h"
#include "wnd/views.h"

namespace {

class ControlClasses : public WindowFixture {};

template <class Control, class... Call>
void Neutral(HWND view, LRESULT neutral, Call... call) {
    Control object;
    object.SubclassWindow(view);
    int index = 0;
    (..., [&] {
        SCOPED_TRACE(testing::Message() << "call " << index++);
        if constexpr (std::is_void_v<std::invoke_result_t<Call, Control&>>)
            call(object);
        else
            EXPECT_EQ(LRESULT(call(object)), neutral);
    }());
    object.UnsubclassWindow();
}

} // namespace

TEST_F(ControlClasses, DoNothingWithoutAViewOfTheirKind) {
    char buffer[8] = "";
    RECT rect{1, 2, 3, 4};
    auto* label = new QLabel("7", child.view);
    auto* slider = new QSlider(child.view);
    for (QWidget* view : {static_cast<QWidget*>(nullptr), static_cast<QWidget*>(label)}) {
        Neutral<CButton>(
            view, 0, [](auto& c) { return c.GetCheck(); }, [](auto& c) { c.SetCheck(1); },
            [](auto& c) { return c.GetState(); }, [](auto& c) { c.SetState(TRUE); },
            [](auto& c) { c.SetButtonStyle(BS_3STATE); },
            [](auto& c) { return c.SendMessage(BM_CLICK); });
        Neutral<CEdit>(
            view, 0, [](auto& c) { return c.GetSel(); }, [](auto& c) { c.SetSel(0, 1); },
            [](auto& c) { c.ReplaceSel("x"); }, [](auto& c) { return c.GetLimitText(); },
            [&](auto& c) { return c.GetLine(0, buffer, 8); },
            [](auto& c) { return c.LineIndex(0); }, [](auto& c) { return c.Undo(); },
            [](auto& c) { c.Cut(); }, [](auto& c) { c.Paste(); },
            [](auto& c) { return c.SetReadOnly(); }, [](auto& c) { c.SetLimitText(1); },
            [](auto& c) { c.LineScroll(1); }, [](auto& c) { c.EmptyUndoBuffer(); });
        Neutral<CComboBox>(
            view, CB_ERR, [](auto& c) { return c.AddString("x"); },
            [](auto& c) { return c.GetCount(); }, [](auto& c) { return c.SetCurSel(0); },
            [&](auto& c) { return c.GetLBText(0, buffer); },
            [](auto& c) { return c.GetItemData(0); }, [](auto& c) { c.ShowDropDown(); },
            [](auto& c) { c.Cut(); }, [](auto& c) { return c.GetTopIndex(); });
        Neutral<CSliderCtrl>(
            view, 0, [](auto& c) { return c.GetPos(); }, [](auto& c) { c.SetPos(1); },
            [](auto& c) { return c.SetTic(1); }, [](auto& c) { c.SetTicFreq(1); },
            [](auto& c) { return c.GetNumTics(); }, [](auto& c) { c.ClearTics(); });
        Neutral<CTabCtrl>(
            view, -1, [](auto& c) { return c.InsertItem(0, "x"); },
            [](auto& c) { return c.GetCurSel(); }, [](auto& c) { return c.SetCurSel(0); },
            [&](auto& c) { c.AdjustRect(FALSE, &rect); });
        Neutral<CProgressCtrl>(
            view, 0, [](auto& c) { return c.SetPos(1); }, [](auto& c) { return c.StepIt(); },
            [](auto& c) { return c.SetMarquee(1); });
        Neutral<CStatic>(view, 0, [](auto& c) { return LRESULT(c.GetBitmap()); });
        Neutral<CToolTipCtrl>(
            view, 0, [&](auto& c) { return c.AddTool(&child, "x"); },
            [](auto& c) { return c.GetToolCount(); }, [](auto& c) { c.Activate(FALSE); });
    }
    for (QWidget* view : {static_cast<QWidget*>(nullptr), static_cast<QWidget*>(slider)}) {
        Neutral<CScrollBar>(
            view, 0, [](auto& c) { return c.SetScrollPos(1); },
            [](auto& c) { return c.EnableScrollBar(); }, [](auto& c) { c.ShowScrollBar(FALSE); });
        Neutral<CSpinButtonCtrl>(
            view, 0, [](auto& c) { return c.SetPos(1); }, [](auto& c) { return c.GetBase(); },
            [](auto& c) { return c.GetAccel(0, nullptr); },
            [&](auto& c) { return LRESULT(c.SetBuddy(&child)); });
    }
    EXPECT_EQ(rect.top, 2);
    EXPECT_EQ(label->text(), "7");
}

TEST_F(ControlClasses, AnObjectBoundByDataExchangeIsAsOneThatWasMade) {
    auto* native = new QSlider(Qt::Vertical, child.view);
    vm::SetTagOf(native, 77);
    CSliderCtrl slider;
    CDataExchange exchange(&child, FALSE);
    DDX_Control(&exchange, 77, slider);
    slider.SetPos(20);
    int value = 0;
    CDataExchange save(&child, TRUE);
    DDX_Slider(&save, 77, value);
    EXPECT_EQ(slider.GetPos(), 20);
    EXPECT_EQ(value, native->maximum() - 20) << "the native value grows upwards";
}

// The object is deleted, or its window destroyed, in the first message that it causes.
TEST_F(ControlClasses, MayGoInWhatTheyReport) {
    struct Row {
        const char* name;
        std::function<CWnd*(CWnd& parent)> make;
        std::function<void(QWidget* native)> use;
    };
    constexpr DWORD kShown = WS_VISIBLE;
    constexpr RECT kRect{0, 0, 90, 30};
    const auto key = [](Qt::Key code) { return [code](QWidget* w) { QTest::keyClick(w, code); }; };
    const auto click = [](QWidget* w) { QTest::mouseClick(w, Qt::LeftButton, {}, {9, 9}); };
    const auto made = [=](auto* control, DWORD style) {
        return [=](CWnd& parent) -> CWnd* {
            auto* object = new std::remove_pointer_t<decltype(control)>;
            object->Create(kShown | style, kRect, &parent, 20);
            return object;
        };
    };
    const Row rows[] = {
        {"button",
         [=](CWnd& parent) -> CWnd* {
             auto* object = new CButton;
             object->Create("", kShown | BS_AUTOCHECKBOX, kRect, &parent, 20);
             return object;
         },
         click},
        {"line", made(static_cast<CEdit*>(nullptr), 0), key(Qt::Key_A)},
        {"upper-case line", made(static_cast<CEdit*>(nullptr), ES_UPPERCASE), key(Qt::Key_A)},
        {"lines", made(static_cast<CEdit*>(nullptr), ES_MULTILINE), key(Qt::Key_A)},
        {"combo",
         [=](CWnd& parent) -> CWnd* {
             auto* object = new CComboBox;
             object->Create(kShown | CBS_DROPDOWNLIST, kRect, &parent, 20);
             object->AddString("a");
             return object;
         },
         key(Qt::Key_Down)},
        {"editable combo", made(static_cast<CComboBox*>(nullptr), CBS_DROPDOWN), key(Qt::Key_A)},
        {"slider", made(static_cast<CSliderCtrl*>(nullptr), 0), key(Qt::Key_Right)},
        {"scroll bar", made(static_cast<CScrollBar*>(nullptr), 0), key(Qt::Key_PageDown)},
        {"arrows", made(static_cast<CSpinButtonCtrl*>(nullptr), 0), click},
        {"tabs",
         [=](CWnd& parent) -> CWnd* {
             auto* object = new CTabCtrl;
             object->Create(kShown, kRect, &parent, 20);
             object->InsertItem(0, "a");
             object->InsertItem(1, "b");
             return object;
         },
         key(Qt::Key_Right)},
    };
    for (const Row& row : rows)
        for (const bool deletes : {false, true}) {
            SCOPED_TRACE(testing::Message() << row.name << (deletes ? ", deleted" : ", destroyed"));
            CWnd* object = row.make(child);
            const QPointer<QWidget> native = object->view;
            int told = 0;
            const auto handler = [&](WPARAM, LPARAM) {
                ++told;
                object->DestroyWindow();
                if (deletes) delete std::exchange(object, nullptr);
                return 0;
            };
            for (const int message : {WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_VSCROLL})
                child.on[message] = [&, handler](WPARAM w, LPARAM l) {
                    return told ? 0 : handler(w, l);
                };
            row.use(native);
            EXPECT_GT(told, 0);
            EXPECT_TRUE(!native || native->isHidden());
            RunFor(std::chrono::milliseconds(1));
            EXPECT_TRUE(native.isNull());
            delete object;
        }
}
