#include "platform/messagebox.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <QtCore/QPointer>
#include <QtGui/QClipboard>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "core/log.h"
#include "platform/mainqueue.h"
#include "platform/runloop.h"

namespace vm {
namespace {

constexpr UINT kErrorStyle = 0x10; // OK, and the icon of an error
constexpr UINT kOnTop = 0x40000 | 0x1000;
constexpr QMessageBox::StandardButton kCancel = QMessageBox::Cancel;

struct BoxButton {
    QMessageBox::StandardButton button;
    int answer;
    const char* text = nullptr; ///< of a button that the toolkit has no name for
};

// By the low four bits of the style word. Unknown kinds show OK.
const std::vector<BoxButton>& ButtonsOf(UINT style) {
    static const std::array<std::vector<BoxButton>, 7> s_kinds = {{
        {{QMessageBox::Ok, 1}},
        {{QMessageBox::Ok, 1}, {kCancel, 2}},
        {{QMessageBox::Abort, 3}, {QMessageBox::Retry, 4}, {QMessageBox::Ignore, 5}},
        {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}, {kCancel, 2}},
        {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}},
        {{QMessageBox::Retry, 4}, {kCancel, 2}},
        {{kCancel, 2},
         {QMessageBox::Retry, 10, "&Try Again"},
         {QMessageBox::Ignore, 11, "&Continue"}},
    }};
    const UINT kind = style & 0xF;
    return s_kinds[kind < s_kinds.size() ? kind : 0];
}

const BoxButton& DefaultButton(UINT style) {
    const std::vector<BoxButton>& buttons = ButtonsOf(style);
    const UINT index = (style >> 8) & 0xF;
    return buttons[index < buttons.size() ? index : 0];
}

// What Escape and the close button answer; null where they have no answer.
const BoxButton* EscapeButton(UINT style) {
    const std::vector<BoxButton>& buttons = ButtonsOf(style);
    if (buttons.size() == 1) return &buttons.front();
    for (const BoxButton& entry : buttons)
        if (entry.button == kCancel) return &entry;
    return nullptr;
}

QMessageBox::Icon IconOf(UINT style) {
    switch (style & 0xF0) {
    case 0x10:
        return QMessageBox::Critical;
    case 0x20:
        return QMessageBox::Question;
    case 0x30:
        return QMessageBox::Warning;
    case 0x40:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// Words that no line has room for may be broken anywhere.
QString WithBreaks(const QString& text) {
    constexpr int kLongestWord = 60;
    QString broken;
    int length = 0;
    for (const QChar character : text) {
        if (!character.isLowSurrogate()) length = character.isSpace() ? 0 : length + 1;
        if (length > kLongestWord && !character.isLowSurrogate()) {
            broken += QChar(0x200B); // a space of no width
            length = 1;
        }
        broken += character;
    }
    return broken;
}

MessageBoxHandler& Handler() {
    static auto* const s_handler = new MessageBoxHandler;
    return *s_handler;
}

struct BoxRequest {
    HWND owner;
    const char* text;
    const char* caption;
    UINT style;
    bool captionIsReason;
    int answer;
};

// A box that is copied with Ctrl+C, and only closed with an answer.
class Box : public QMessageBox {
public:
    Box(QWidget* owner, const BoxRequest& request)
        : QMessageBox(owner), m_text(QString::fromUtf8(request.text)) {
        setIcon(IconOf(request.style));
        setTextFormat(Qt::PlainText);
        setText(WithBreaks(m_text));
        const QString caption = QString::fromUtf8(request.caption);
        if (request.captionIsReason)
            setInformativeText(WithBreaks(caption));
        else
            setWindowTitle(caption);
        if (request.style & kOnTop) setWindowFlag(Qt::WindowStaysOnTopHint);
        AddButtons(request.style);
    }

    bool HasEscape() const { return m_hasEscape; }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Copy)) return Copy();
        if (event->matches(QKeySequence::Cancel) && !m_hasEscape) return;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (m_hasEscape) return QMessageBox::closeEvent(event);
        event->ignore();
    }

private:
    void AddButtons(UINT style) {
        const BoxButton* const escape = EscapeButton(style);
        m_hasEscape = escape != nullptr;
        for (const BoxButton& entry : ButtonsOf(style)) {
            QPushButton* const button = addButton(entry.button);
            if (entry.text) button->setText(QString::fromLatin1(entry.text));
            const bool isPlain = entry.button == QMessageBox::Ok || entry.button == kCancel;
            if (!isPlain && !button->text().contains(u'&')) button->setText(u'&' + button->text());
            if (&entry == escape) setEscapeButton(button);
        }
        setDefaultButton(DefaultButton(style).button);
    }

    // As users paste it into a report.
    void Copy() const {
        const QString line = QStringLiteral("---------------------------\n");
        QString names;
        for (const QAbstractButton* button : buttons())
            names += button->text().remove(u'&') + QStringLiteral("   ");
        QString body = m_text;
        if (!informativeText().isEmpty()) body += u'\n' + informativeText();
        QGuiApplication::clipboard()->setText(line + windowTitle() + u'\n' + line + body + u'\n' +
                                              line + names + u'\n' + line);
    }

    const QString m_text;
    bool m_hasEscape = false;
};

const BoxButton* PressedButton(UINT style, int pressed) {
    for (const BoxButton& entry : ButtonsOf(style))
        if (entry.button == pressed) return &entry;
    return nullptr;
}

// Of a box that went without an answer: what changes least.
int AnswerOfNone(UINT style) {
    const std::vector<BoxButton>& buttons = ButtonsOf(style);
    if (const BoxButton* escape = EscapeButton(style)) return escape->answer;
    return buttons.front().button == QMessageBox::Abort ? buttons.front().answer
                                                        : buttons.back().answer;
}

int ShowNative(const BoxRequest& request) {
    // An owner that is freed while the box is open takes the box with it.
    const QPointer<Box> box(new Box(LiveOwner(request.owner), request));
    bool isOver = false;
    const ClosedWithLoops closed([box, &isOver] {
        isOver = true;
        if (box) box->reject();
    });
    const BoxButton* answer = nullptr;
    do // a desktop's own box may be closed without an answer
        answer = PressedButton(request.style, box->exec());
    while (!answer && box && !isOver && !box->HasEscape());
    delete box.data();
    return answer ? answer->answer : AnswerOfNone(request.style);
}

void AnswerRequest(void* argument) {
    auto* request = static_cast<BoxRequest*>(argument);
    if (const MessageBoxHandler handler = Handler()) {
        request->answer = handler(request->text, request->caption, request->style);
    } else if (IsUnattended()) {
        Log(LogModule::Platform, "%s: %s", request->caption, request->text);
        request->answer = DefaultAnswer(request->style);
    } else {
        request->answer = ShowNative(*request);
    }
}

int Answer(BoxRequest request) {
    if (!QCoreApplication::instance())
        AnswerRequest(&request); // nothing could carry the call
    else
        CallOnMain({AnswerRequest, nullptr, &request});
    return request.answer;
}

struct DelayedBox {
    HWND owner;
    std::string text;
    std::string caption;
    UINT style;
};

/// Of this thread; null while its boxes are shown at once. Plain pointer: threads that end have no
/// destructor to run.
thread_local std::vector<DelayedBox>* t_delayed = nullptr;

} // namespace

DelayedMessageBoxes::DelayedMessageBoxes() : m_isOutermost(!t_delayed) {
    static thread_local std::vector<DelayedBox> t_boxes;
    if (m_isOutermost) t_delayed = &t_boxes;
}

DelayedMessageBoxes::~DelayedMessageBoxes() {
    if (!m_isOutermost) return;
    const std::vector<DelayedBox> boxes = std::exchange(*std::exchange(t_delayed, nullptr), {});
    for (const DelayedBox& box : boxes)
        ShowMessageBox(box.owner, box.text.c_str(), box.caption.c_str(), box.style);
}

bool IsUnattended() {
    const char* setting = std::getenv("VMCORE_MESSAGEBOX");
    return LoopsAreEnding() || (setting && std::strcmp(setting, "log") == 0) ||
           !qobject_cast<QApplication*>(QCoreApplication::instance());
}

// The window must be visible, too: one that was destroyed is hidden at once and freed later, and what
// it owns with it.
QWidget* LiveOwner(HWND owner) {
    if (!owner || !QApplication::allWidgets().contains(owner)) return nullptr;
    QWidget* window = owner->window();
    return window->isVisible() ? window : nullptr;
}

int DefaultAnswer(UINT style) {
    return DefaultButton(style).answer;
}

int ShowMessageBox(HWND owner, const char* text, const char* caption, UINT style) {
    if (t_delayed) {
        t_delayed->push_back({owner, text ? text : "", caption ? caption : "", style});
        return DefaultAnswer(style);
    }
    return Answer({owner, text ? text : "", caption ? caption : "", style, false, 0});
}

void ShowAlert(const char* message, const char* reason) {
    Answer({nullptr, message, reason, kErrorStyle, true, 0});
}

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
    std::swap(Handler(), handler);
    return handler;
}

} // namespace vm
