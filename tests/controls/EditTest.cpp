// Text fields: what a program that knows the interface expects of them.
#include <vmcore/controls/CEdit.h>

#include <cstring>

#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include "../wnd/RecordingWindow.h"
#include "wnd/views.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Edit : public WindowFixture {
protected:
    static constexpr RECT kRect{5, 5, 205, 85};

    /// Made by the program; `edit` is attached to it, as a transient object is.
    QWidget* Make(DWORD style) {
        EXPECT_TRUE(m_made.Create(WS_VISIBLE | style, kRect, &child, 50));
        edit.SubclassWindow(m_made.view);
        child.Take();
        return m_made.view;
    }
    std::string Text() const {
        CString text;
        edit.GetWindowText(text);
        return static_cast<const char*>(text);
    }
    std::pair<int, int> Selection() const {
        int first = 0;
        int end = 0;
        edit.GetSel(first, end);
        return {first, end};
    }
    std::vector<int> Codes() {
        std::vector<int> codes;
        for (const Message& message : child.Take(WM_COMMAND))
            codes.push_back(HIWORD(message.wParam));
        return codes;
    }

    CEdit edit;

private:
    CEdit m_made;
};

constexpr char kThree[] = "one\r\n\r\nthree";

} // namespace

TEST_F(Edit, CountsCharactersAsGetWindowTextGivesThem) {
    Make(ES_MULTILINE);
    edit.SetWindowText(kThree);
    EXPECT_EQ(Text(), kThree);
    EXPECT_EQ(edit.GetWindowTextLength(), 12);
    EXPECT_EQ(edit.CWnd::GetWindowTextLength(), 10) << "as every window's";
    edit.SetSel(7, 9);
    EXPECT_EQ(Selection(), std::pair(7, 9));
    EXPECT_EQ(edit.GetSel(), DWORD(MAKELONG(7, 9)));
    edit.ReplaceSel("TH");
    EXPECT_EQ(Text(), "one\r\n\r\nTHree");
    struct Row {
        int first, end, wantedFirst, wantedEnd;
    };
    for (const Row& row : {Row{0, -1, 0, 12}, Row{-1, 0, 12, 12}, Row{3, 5, 3, 5},
                           Row{99, 99, 12, 12}, Row{8, 2, 2, 8}, Row{4, 4, 3, 3}}) {
        edit.SetSel(row.first, row.end);
        EXPECT_EQ(Selection(), std::pair(row.wantedFirst, row.wantedEnd))
            << row.first << ", " << row.end;
    }
    edit.SetSel(DWORD(MAKELONG(0, 0xFFFF)));
    EXPECT_EQ(Selection(), std::pair(0, 12));
    const int end = edit.GetWindowTextLength();
    edit.SetSel(end, end);
    edit.ReplaceSel("\r\nend");
    EXPECT_EQ(Text(), "one\r\n\r\nTHree\r\nend");
    EXPECT_THAT(Codes(), IsEmpty()) << "all of it was the program's doing";
}

TEST_F(Edit, KnowsItsLines) {
    for (const bool wraps : {true, false}) {
        edit.UnsubclassWindow();
        Make(ES_MULTILINE | (wraps ? 0 : ES_AUTOHSCROLL));
        const std::string longLine(300, 'x'); // wrapped on the screen, it is one line all the same
        edit.SetWindowText((std::string(kThree) + "\r\n" + longLine).c_str());
        EXPECT_EQ(edit.GetLineCount(), 4);
        struct Row {
            int line, index, length;
        };
        for (const Row& row : {Row{0, 0, 3}, Row{1, 5, 0}, Row{2, 7, 5}, Row{3, 14, 300}}) {
            SCOPED_TRACE(row.line);
            EXPECT_EQ(edit.LineIndex(row.line), row.index);
            EXPECT_EQ(edit.LineLength(row.index), row.length);
            EXPECT_EQ(edit.LineFromChar(row.index), row.line);
            EXPECT_EQ(edit.LineFromChar(row.index + row.length), row.line);
        }
        EXPECT_EQ(edit.LineIndex(4), -1);
        edit.SetSel(8, 10);
        EXPECT_EQ(edit.LineFromChar(), 2);
        EXPECT_EQ(edit.LineIndex(), 7);
        EXPECT_EQ(edit.LineLength(-1), 3) << "what is not selected";
    }
    char buffer[8] = ".......";
    EXPECT_EQ(edit.GetLine(2, buffer, 3), 3);
    EXPECT_STREQ(buffer, "thr....") << "not a byte more";
    EXPECT_EQ(edit.GetLine(0, buffer, 8), 3);
    EXPECT_STREQ(buffer, "one");
    const WORD size = 4;
    std::memcpy(buffer, &size, sizeof size);
    EXPECT_EQ(edit.GetLine(3, buffer), 4);
    EXPECT_EQ(edit.GetLine(4, buffer, 8), 0);
}

TEST_F(Edit, ALineIsOneLine) {
    auto* line = qobject_cast<QLineEdit*>(Make(ES_RIGHT));
    ASSERT_TRUE(line);
    EXPECT_TRUE(line->alignment() & Qt::AlignRight);
    edit.SetWindowText("abcdef");
    edit.SetSel(1, 3);
    EXPECT_EQ(edit.GetLineCount(), 1);
    EXPECT_EQ(edit.LineIndex(), 0);
    EXPECT_EQ(edit.LineLength(0), 6);
    EXPECT_EQ(edit.LineLength(), 4);
    edit.SetMargins(3, 4);
    EXPECT_EQ(edit.GetMargins(), DWORD(MAKELONG(3, 4)));
    EXPECT_FALSE(edit.SetTabStops(16));
}

TEST_F(Edit, TheLimitIsForTyping) {
    for (const DWORD style : {DWORD{0}, DWORD{ES_MULTILINE}}) {
        SCOPED_TRACE(style);
        edit.UnsubclassWindow();
        QWidget* const field = Make(style);
        EXPECT_GE(edit.GetLimitText(), 32767u);
        edit.SetWindowText("abc");
        edit.SetLimitText(5);
        EXPECT_EQ(edit.GetLimitText(), 5u);
        edit.SetSel(-1, 0);
        edit.SetSel(1, 1);
        QTest::keyClicks(field, "123456");
        EXPECT_EQ(Text(), "a12bc");
        EXPECT_EQ(child.Take(WM_COMMAND).size(), 5u) << "two characters were taken";
        edit.SetSel(0, 1);
        edit.ReplaceSel("wxyz");
        EXPECT_EQ(Text(), "w12bc");
        edit.SetWindowText("longer than five");
        EXPECT_EQ(Text(), "longer than five");
        QTest::keyClicks(field, "!");
        EXPECT_EQ(Text(), "longer than five");
        edit.SetSel(0, -1);
        QTest::keyClicks(field, "1234567");
        EXPECT_EQ(Text(), "12345") << "the room went with the text";
        edit.SetWindowText("ab");
        edit.SetSel(2, 2);
        QTest::keyClicks(field, "cdefg");
        EXPECT_EQ(Text(), "abcde");
        edit.LimitText();
        QTest::keyClicks(field, "fg");
        EXPECT_EQ(Text(), "abcdefg");
    }
}

TEST_F(Edit, PastedTextIsCutToTheLimitAndUndoneAtOnce) {
    auto* field = Make(ES_MULTILINE);
    edit.SetLimitText(8);
    QGuiApplication::clipboard()->setText("one\ntwo\nthree");
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "one\r\ntwo") << "a line's end counts as two";
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(), "");
    QTest::keyClicks(field, "a");
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(edit.GetLineCount(), 2) << "Shift makes no other line end";
}

TEST_F(Edit, StylesSayWhatCanBeTyped) {
    struct Row {
        DWORD style;
        const char* wanted;
    };
    for (const DWORD lines : {DWORD{0}, DWORD{ES_MULTILINE}})
        for (const Row& row : {Row{ES_UPPERCASE, "A1-B2"}, Row{ES_LOWERCASE, "a1-b2"},
                               Row{ES_NUMBER, "12"}, Row{ES_READONLY, ""}, Row{0, "a1-B2"}}) {
            SCOPED_TRACE(testing::Message() << lines << " " << row.wanted);
            edit.UnsubclassWindow();
            QTest::keyClicks(Make(lines | row.style), "a1-B2");
            EXPECT_EQ(Text(), row.wanted);
            edit.SetWindowText("-Any text-");
            EXPECT_EQ(Text(), "-Any text-");
        }
}

TEST_F(Edit, TheTabKeyLeavesManyLinesWithTheStyleOnly) {
    const struct {
        DWORD style;
        Qt::KeyboardModifiers modifiers;
        const char* text;
    } rows[] = {{WS_TABSTOP, Qt::NoModifier, ""},
                {WS_TABSTOP, Qt::ControlModifier, "\t"},
                {WS_TABSTOP | ES_READONLY, Qt::ControlModifier, ""},
                {0, Qt::NoModifier, "\t"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.style << " " << row.modifiers.toInt());
        QWidget* const field = Make(ES_MULTILINE | row.style);
        QTest::keyClick(field, Qt::Key_Tab, row.modifiers);
        EXPECT_EQ(Text(), row.text);
        edit.DestroyWindow();
    }
}

TEST_F(Edit, UndoAndTheClipboard) {
    for (const DWORD style : {DWORD{0}, DWORD{ES_MULTILINE}}) {
        SCOPED_TRACE(style);
        edit.UnsubclassWindow();
        QWidget* const field = Make(style);
        edit.SetWindowText("abc");
        EXPECT_FALSE(edit.CanUndo());
        EXPECT_FALSE(edit.GetModify());
        QTest::keyClicks(field, "x");
        EXPECT_TRUE(edit.GetModify());
        edit.SetModify(FALSE);
        EXPECT_FALSE(edit.GetModify());
        EXPECT_TRUE(edit.CanUndo());
        EXPECT_TRUE(edit.Undo());
        EXPECT_EQ(Text(), "abc");
        QTest::keyClicks(field, "x");
        edit.EmptyUndoBuffer();
        EXPECT_FALSE(edit.Undo());
        edit.SetSel(0, -1);
        edit.ReplaceSel("1234", TRUE);
        EXPECT_TRUE(edit.CanUndo());
        edit.SetSel(1, 3);
        child.Take();
        edit.Cut();
        edit.SetSel(0, 0);
        edit.Paste();
        EXPECT_EQ(Text(), "2314");
        edit.SetSel(0, 1);
        edit.SetReadOnly();
        edit.Clear();
        EXPECT_EQ(Text(), "2314");
        edit.SetReadOnly(FALSE);
        edit.Clear();
        EXPECT_EQ(Text(), "314");
        EXPECT_THAT(Codes(), IsEmpty());
    }
}

TEST_F(Edit, PasswordsAreHiddenAndNotCopied) {
    auto* line = qobject_cast<QLineEdit*>(Make(ES_PASSWORD));
    EXPECT_EQ(edit.GetPasswordChar(), '*');
    edit.SetWindowText("secret");
    QGuiApplication::clipboard()->setText("before");
    edit.SetSel(0, -1);
    edit.Copy();
    edit.Cut();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
    EXPECT_EQ(Text(), "secret");
    edit.SetPasswordChar(0);
    EXPECT_EQ(line->echoMode(), QLineEdit::Normal);
    edit.SetPasswordChar('#');
    EXPECT_EQ(edit.GetPasswordChar(), '#');
    EXPECT_EQ(line->echoMode(), QLineEdit::Password);
}

TEST_F(Edit, ScrollsByLines) {
    auto* field = Make(ES_MULTILINE | WS_VSCROLL);
    QTextEdit rich(child.view);
    rich.setGeometry(5, 5, 200, 80);
    rich.show();
    CEdit other;
    other.SubclassWindow(&rich);
    std::string lines;
    for (int i = 0; i < 100; ++i) lines += "line\r\n";
    for (CEdit* one : {&edit, &other}) {
        one->SetWindowText(lines.c_str());
        EXPECT_EQ(one->GetFirstVisibleLine(), 0);
        one->LineScroll(40);
        EXPECT_NEAR(one->GetFirstVisibleLine(), 40, 2);
        EXPECT_TRUE(one->SetTabStops(16));
    }
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(field)->horizontalScrollBarPolicy(),
              Qt::ScrollBarAlwaysOff);
}

TEST_F(Edit, AnswersItsMessagesFromAnyItem) {
    CEdit bound;
    ASSERT_TRUE(bound.Create(WS_VISIBLE | ES_MULTILINE, kRect, &child, 50));
    const auto send = [&](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        const LRESULT answer = child.SendDlgItemMessage(50, message, wParam, lParam);
        EXPECT_EQ(bound.SendMessage(message, wParam, lParam), answer) << message;
        return answer;
    };
    bound.SetWindowText(kThree);
    send(EM_SETSEL, 256, 256);
    send(EM_SETSEL, 0, 3);
    EXPECT_EQ(send(EM_GETSEL), MAKELONG(0, 3)) << "also with a low byte of 0";
    EXPECT_EQ(send(EM_GETLINECOUNT), 3);
    EXPECT_EQ(send(EM_LINEINDEX, 2), 7);
    EXPECT_EQ(send(EM_LINELENGTH, 7), 5);
    EXPECT_EQ(send(EM_LINEFROMCHAR, 8), 2);
    EXPECT_EQ(send(EM_SETREADONLY, 1), 1);
    send(EM_SETMODIFY, 1);
    EXPECT_EQ(send(EM_GETMODIFY), 1);
    send(EM_REPLACESEL, TRUE, AsParameter("1"));
    EXPECT_EQ(Selection(), std::pair(0, 0)) << "of no field";
    char line[16] = "\x0F";
    EXPECT_EQ(bound.SendMessage(EM_GETLINE, 2, AsParameter(line)), 5);
    EXPECT_EQ(child.SendDlgItemMessage(50, EM_LIMITTEXT, 7), 0);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"Need a real CEdit for EM_LIMITTEXT to work", "Error", 1}));
    EXPECT_EQ(send(EM_GETLIMITTEXT), 7);
}
