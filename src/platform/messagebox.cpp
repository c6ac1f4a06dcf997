#include "platform/messagebox.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "core/log.h"
#include "platform/mainqueue.h"
#include "platform/runloop.h"

namespace vm {
namespace {

constexpr UINT kErrorStyle = 0x10; // OK, and the icon of an error

struct BoxButton {
    QMessageBox::StandardButton button;
    int answer;
};

// By the low four bits of the style word. Unknown kinds show OK.
const std::vector<BoxButton>& ButtonsOf(UINT style) {
    static const std::array<std::vector<BoxButton>, 6> s_kinds = {{
        {{QMessageBox::Ok, 1}},
        {{QMessageBox::Ok, 1}, {QMessageBox::Cancel, 2}},
        {{QMessageBox::Abort, 3}, {QMessageBox::Retry, 4}, {QMessageBox::Ignore, 5}},
        {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}, {QMessageBox::Cancel, 2}},
        {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}},
        {{QMessageBox::Retry, 4}, {QMessageBox::Cancel, 2}},
    }};
    const UINT kind = style & 0xF;
    return s_kinds[kind < s_kinds.size() ? kind : 0];
}

const BoxButton& DefaultButton(UINT style) {
    const std::vector<BoxButton>& buttons = ButtonsOf(style);
    const UINT index = (style >> 8) & 0xF;
    return buttons[index < buttons.size() ? index : 0];
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

MessageBoxHandler& Handler() {
    static auto* const s_handler = new MessageBoxHandler;
    return *s_handler;
}

bool Unattended() {
    const char* setting = std::getenv("VMCORE_MESSAGEBOX");
    return LoopsAreEnding() || (setting && std::strcmp(setting, "log") == 0) ||
           !qobject_cast<QApplication*>(QCoreApplication::instance());
}

// The owner is a caller's word: it is only believed when it is a live widget. The window must be
// visible, too: one that was destroyed is hidden at once and freed later, and the box with it.
QWidget* LiveOwner(HWND owner) {
    if (!owner || !QApplication::allWidgets().contains(owner)) return nullptr;
    QWidget* window = owner->window();
    return window->isVisible() ? window : nullptr;
}

struct BoxRequest {
    HWND owner;
    const char* text;
    const char* caption;
    UINT style;
    bool captionIsReason;
    int answer;
};

void Fill(QMessageBox& box, const BoxRequest& request) {
    box.setIcon(IconOf(request.style));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromUtf8(request.text));
    if (request.captionIsReason)
        box.setInformativeText(QString::fromUtf8(request.caption));
    else
        box.setWindowTitle(QString::fromUtf8(request.caption));
    for (const BoxButton& entry : ButtonsOf(request.style)) box.addButton(entry.button);
    box.setDefaultButton(DefaultButton(request.style).button);
}

int ShowNative(const BoxRequest& request) {
    // An owner that is freed while the box is open takes the box with it.
    const QPointer<QMessageBox> box(new QMessageBox(LiveOwner(request.owner)));
    Fill(*box, request);
    const ClosedWithLoops closed([box] {
        if (box) box->reject();
    });
    const int pressed = box->exec();
    delete box.data();
    for (const BoxButton& entry : ButtonsOf(request.style))
        if (entry.button == pressed) return entry.answer;
    return ButtonsOf(request.style).back().answer; // closed without a choice
}

void AnswerRequest(void* argument) {
    auto* request = static_cast<BoxRequest*>(argument);
    if (const MessageBoxHandler handler = Handler()) {
        request->answer = handler(request->text, request->caption, request->style);
    } else if (Unattended()) {
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
