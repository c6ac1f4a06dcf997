#include <vmcore/controls/CStatic.h>

#include <QtCore/QEvent>
#include <QtWidgets/QLabel>

#include "controls/bitmapPicture.h"
#include "wnd/nativeControl.h"

namespace {

Qt::Alignment AlignmentOf(DWORD style) {
    if (style & (SS_CENTER | SS_CENTERIMAGE)) return Qt::AlignCenter;
    const Qt::Alignment across = style & SS_RIGHT ? Qt::AlignRight : Qt::AlignLeft;
    return across | (style & SS_BITMAP ? Qt::AlignTop : Qt::AlignVCenter);
}

int FrameOf(DWORD style) {
    if (style & SS_ETCHEDHORZ) return static_cast<int>(QFrame::HLine) | QFrame::Sunken;
    if (style & SS_ETCHEDVERT) return static_cast<int>(QFrame::VLine) | QFrame::Sunken;
    if (style & SS_ETCHEDFRAME) return static_cast<int>(QFrame::Box) | QFrame::Sunken;
    if (style & SS_SUNKEN) return static_cast<int>(QFrame::Panel) | QFrame::Sunken;
    return QFrame::NoFrame;
}

// A text with a marked key leads to the next control made in the same parent that the Tab key leads to.
class MarkedLabel : public QLabel {
public:
    void WaitForNext() { parentWidget()->installEventFilter(this); }

protected:
    bool eventFilter(QObject* parent, QEvent* event) override {
        if (event->type() != QEvent::ChildAdded) return false;
        auto* next = qobject_cast<QWidget*>(static_cast<QChildEvent*>(event)->child());
        if (!next || !(next->focusPolicy() & Qt::TabFocus)) return false;
        setBuddy(next);
        parent->removeEventFilter(this);
        return false;
    }
};

} // namespace

BOOL CStatic::Create(const char* label, DWORD createStyle, const RECT& rect, CWnd* parent,
                     UINT id) {
    auto* control = new MarkedLabel;
    control->setTextFormat(Qt::PlainText);
    control->setAlignment(AlignmentOf(createStyle));
    control->setFrameStyle(FrameOf(createStyle));
    if (!vm::AdoptControl(*this, control, parent, rect, createStyle, id)) return FALSE;
    if (!(createStyle & SS_NOPREFIX)) control->WaitForNext();
    const bool hasText = !(createStyle & (SS_BITMAP | SS_ETCHEDHORZ | SS_ETCHEDVERT));
    SetWindowText(label && hasText ? label : "");
    return TRUE;
}

HBITMAP CStatic::SetBitmap(HBITMAP bitmap) {
    auto* label = vm::ControlOf<QLabel>(*this);
    if (!label) return nullptr;
    label->setPixmap(vm::PictureOf(bitmap));
    return vm::RememberBitmap(*label, bitmap);
}

HBITMAP CStatic::GetBitmap() const {
    const auto* label = vm::ControlOf<QLabel>(*this);
    return label ? vm::ShownBitmap(*label) : nullptr;
}
