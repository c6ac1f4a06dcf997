// Message boxes as their users see and answer them.
#include "platform/messagebox.h"

#include <cstring>
#include <functional>
#include <string>

#include <gmock/gmock.h>

#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "core/log.h"
#include "support/LogCapture.h"
#include "support/Watchdog.h"

namespace {

class MessageBoxes : public testing::Test {
protected:
    // Shows a box and works it once it is there.
    int Show(UINT style, std::function<void(QMessageBox&)> work, const char* text = "Send?",
             const char* caption = "Bank") {
        QTimer::singleShot(0, qApp, [work = std::move(work)] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            work(*box);
        });
        return vm::ShowMessageBox(nullptr, text, caption, style);
    }
    static std::function<void(QMessageBox&)> Key(Qt::Key key) {
        return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
    }

    Watchdog watchdog;
    LogCapture log;
};

} // namespace

TEST_F(MessageBoxes, ButtonsDefaultAndEscapeOfEveryKind) {
    const struct {
        UINT kind;
        const char* buttons;
        std::vector<int> answers; // of Return with the first to the fourth as default
        int escape;               // 0: refused
    } rows[] = {
        {MB_OK, "OK", {1, 1, 1, 1}, 1},
        {MB_OKCANCEL, "OK|Cancel", {1, 2, 1, 1}, 2},
        {MB_ABORTRETRYIGNORE, "&Abort|&Retry|&Ignore", {3, 4, 5, 3}, 0},
        {MB_YESNOCANCEL, "&Yes|&No|Cancel", {6, 7, 2, 6}, 2},
        {MB_YESNO, "&Yes|&No", {6, 7, 6, 6}, 0},
        {MB_RETRYCANCEL, "&Retry|Cancel", {4, 2, 4, 4}, 2},
        {MB_CANCELTRYCONTINUE, "Cancel|&Try Again|&Continue", {2, 10, 11, 2}, 2},
        {0xE, "OK", {1, 1, 1, 1}, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.buttons);
        for (UINT index = 0; index < 4; ++index)
            EXPECT_EQ(
                Show(row.kind | index << 8 | MB_TASKMODAL | MB_SETFOREGROUND, Key(Qt::Key_Return)),
                row.answers[index]);
        const auto leave = [&](bool byKey) {
            return Show(row.kind, [&, byKey](QMessageBox& box) {
                QStringList names;
                for (const QAbstractButton* button : box.buttons()) names += button->text();
                QStringList expected = QString::fromLatin1(row.buttons).split(u'|');
                names.sort(), expected.sort();
                EXPECT_EQ(names, expected);
                if (byKey)
                    QTest::keyClick(&box, Qt::Key_Escape);
                else
                    box.close();
                EXPECT_EQ(box.isVisible(), row.escape == 0);
                if (box.isVisible()) QTest::keyClick(&box, Qt::Key_Return);
            });
        };
        const int expected = row.escape ? row.escape : row.answers[0];
        EXPECT_EQ(leave(true), expected);
        EXPECT_EQ(leave(false), expected);
    }
}

TEST_F(MessageBoxes, IconsAndBoxesInFront) {
    const struct {
        UINT style;
        QMessageBox::Icon icon;
        bool onTop;
    } rows[] = {{MB_ICONSTOP, QMessageBox::Critical, false},
                {MB_ICONQUESTION | MB_TOPMOST, QMessageBox::Question, true},
                {MB_ICONWARNING | MB_SYSTEMMODAL, QMessageBox::Warning, true},
                {MB_ICONINFORMATION, QMessageBox::Information, false},
                {MB_OK, QMessageBox::NoIcon, false}};
    for (const auto& row : rows)
        Show(row.style, [&](QMessageBox& box) {
            EXPECT_EQ(box.icon(), row.icon) << row.style;
            EXPECT_EQ((box.windowFlags() & Qt::WindowStaysOnTopHint) != 0, row.onTop) << row.style;
            box.accept();
        });
}

TEST_F(MessageBoxes, MnemonicLettersAnswer) {
    EXPECT_EQ(Show(MB_YESNO, Key(Qt::Key_N)), IDNO);
    EXPECT_EQ(Show(MB_ABORTRETRYIGNORE, Key(Qt::Key_I)), IDIGNORE);
}

TEST_F(MessageBoxes, TextIsPlainWrappedAndCopied) {
    const std::string path(4000, 'x');
    const std::string text = "<b>Bank</b> & more\nsecond line " + path;
    const auto inspect = [&](QMessageBox& box) {
        auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        ASSERT_TRUE(label);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_TRUE(label->text().startsWith(QStringLiteral("<b>Bank</b> & more\nsecond line x")));
        EXPECT_LT(box.width(), 800);
        QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Return);
    };
    Show(MB_OKCANCEL, inspect, text.c_str(), "Bänke");
    const QString copy = QGuiApplication::clipboard()->text();
    const QString line = QStringLiteral("---------------------------\n");
    EXPECT_TRUE(copy.startsWith(line + QStringLiteral("Bänke\n") + line +
                                QString::fromStdString(text) + u'\n' + line));
    EXPECT_TRUE(copy.contains(QStringLiteral("Cancel")));
}

TEST_F(MessageBoxes, WindowsShowTheirOwn) {
    std::vector<std::string> shown;
    const vm::MessageBoxHandler before =
        vm::SetMessageBoxHandler([&](const char* text, const char* caption, UINT style) {
            shown.push_back(vm::Format("%s|%s|%u", text, caption, style));
            return IDNO;
        });
    struct Pane : CWnd {
        int Ask() { return MessageBox("One", "Pane", MB_YESNO) + MessageBox(view, "Two", "", 1); }
    } pane;
    EXPECT_EQ(pane.Ask(), 2 * IDNO);
    std::strcpy(vm::App().AppName, "Librarian");
    pane.MessageBox("Three");
    vm::App().AppName[0] = '\0';
    vm::SetMessageBoxHandler(before);
    EXPECT_EQ(shown[0], "One|Pane|4");
    EXPECT_EQ(shown[1], "Two||1");
    EXPECT_EQ(shown[2], "Three|Librarian|0") << "the application's name";
}
