// Text fields: how they are made, their text as a whole, their state, their messages. Selection and lines
// are in CEditLines.cpp.
#include <vmcore/controls/CEdit.h>

#include <algorithm>
#include <limits>

#include <QtCore/QVariant>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include "controls/textField.h"
#include "controls/typingRules.h"
#include "wnd/TextRules.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace {

using vm::TextField;
using vm::TypingRules;

constexpr char kPasswordProperty[] = "passwordCharacter";
constexpr int kTabStop = 32; // eight characters
constexpr int kParts = 4;    // of a character in a tab stop's width

TypingRules RulesOf(DWORD style) {
    TypingRules rules;
    rules.digitsOnly = (style & ES_NUMBER) != 0;
    if (style & ES_LOWERCASE) rules.letters = TypingRules::Letters::Lower;
    if (style & ES_UPPERCASE) rules.letters = TypingRules::Letters::Upper;
    return rules;
}

Qt::Alignment AlignmentOf(DWORD style) {
    if (style & ES_CENTER) return Qt::AlignHCenter;
    return style & ES_RIGHT ? Qt::AlignRight : Qt::AlignLeft;
}

QWidget* MakeLine(DWORD style) {
    auto* line = new QLineEdit;
    line->setAlignment(AlignmentOf(style) | Qt::AlignVCenter);
    line->setReadOnly((style & ES_READONLY) != 0);
    if (style & ES_PASSWORD) line->setEchoMode(QLineEdit::Password);
    if (style & (ES_NUMBER | ES_UPPERCASE | ES_LOWERCASE))
        vm::SetTypingRules(*line, RulesOf(style));
    return line;
}

Qt::ScrollBarPolicy BarFor(DWORD bit) {
    return bit ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

QWidget* MakeLines(DWORD style) {
    auto* edit = new QPlainTextEdit;
    QTextOption option = edit->document()->defaultTextOption();
    option.setAlignment(AlignmentOf(style));
    edit->document()->setDefaultTextOption(option);
    edit->setLineWrapMode(style & ES_AUTOHSCROLL ? QPlainTextEdit::NoWrap
                                                 : QPlainTextEdit::WidgetWidth);
    edit->setVerticalScrollBarPolicy(BarFor(style & WS_VSCROLL));
    edit->setHorizontalScrollBarPolicy(BarFor(style & WS_HSCROLL));
    edit->setReadOnly((style & ES_READONLY) != 0);
    edit->setTabChangesFocus((style & WS_TABSTOP) != 0);
    vm::SetTypingRules(*edit, RulesOf(style));
    return edit;
}

QLineEdit* LineOf(const CEdit& edit) {
    return vm::ControlOf<QLineEdit>(edit);
}

} // namespace

BOOL CEdit::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    QWidget* const field =
        createStyle & ES_MULTILINE ? MakeLines(createStyle) : MakeLine(createStyle);
    return vm::AdoptControl(*this, field, parent, rect, createStyle, id);
}

void CEdit::SetLimitText(UINT characters) {
    const auto most = static_cast<UINT>(std::numeric_limits<int>::max());
    if (const auto field = TextField::Of(*this))
        field->SetLimit(static_cast<int>(std::min(characters, most)));
}
UINT CEdit::GetLimitText() const {
    const auto field = TextField::Of(*this);
    return field ? static_cast<UINT>(field->Limit()) : 0;
}

BOOL CEdit::CanUndo() const {
    const auto field = TextField::Of(*this);
    return field && field->CanUndo();
}

BOOL CEdit::Undo() {
    const auto field = TextField::Of(*this);
    if (!field || !field->CanUndo() || field->IsReadOnly()) return FALSE;
    const vm::ProgramChange change;
    field->Undo();
    return TRUE;
}

void CEdit::EmptyUndoBuffer() {
    const vm::ProgramChange change;
    if (const auto field = TextField::Of(*this)) field->ForgetUndo();
}

void CEdit::Copy() const {
    if (const auto field = TextField::Of(*this)) field->Copy();
}

void CEdit::Clear() {
    const auto field = TextField::Of(*this);
    if (!field || field->IsReadOnly()) return;
    const vm::ProgramChange change;
    field->Replace(QString());
}

void CEdit::Cut() {
    if (GetPasswordChar()) return;
    const auto field = TextField::Of(*this);
    if (!field || field->IsReadOnly()) return;
    field->Copy();
    Clear();
}

void CEdit::Paste() {
    const auto field = TextField::Of(*this);
    QString pasted = QGuiApplication::clipboard()->text();
    if (!field || field->IsReadOnly() || pasted.isEmpty()) return;
    const vm::ProgramChange change;
    field->Replace(pasted.remove(u'\r'));
}

BOOL CEdit::SetReadOnly(BOOL readOnly) {
    const auto field = TextField::Of(*this);
    if (field) field->SetReadOnly(readOnly != 0);
    return field != nullptr;
}

BOOL CEdit::GetModify() const {
    const auto field = TextField::Of(*this);
    return field && field->IsModified();
}
void CEdit::SetModify(BOOL modified) {
    if (const auto field = TextField::Of(*this)) field->SetModified(modified != 0);
}

void CEdit::SetPasswordChar(char character) {
    QLineEdit* const line = LineOf(*this);
    if (!line) return;
    line->setProperty(kPasswordProperty, static_cast<int>(character));
    line->setEchoMode(character ? QLineEdit::Password : QLineEdit::Normal);
}
char CEdit::GetPasswordChar() const {
    const QLineEdit* const line = LineOf(*this);
    if (!line || line->echoMode() == QLineEdit::Normal) return 0;
    const int character = line->property(kPasswordProperty).toInt();
    return character ? static_cast<char>(character) : '*';
}

void CEdit::SetMargins(UINT left, UINT right) {
    if (QLineEdit* line = LineOf(*this))
        line->setTextMargins(static_cast<int>(left), 0, static_cast<int>(right), 0);
}
DWORD CEdit::GetMargins() const {
    const QLineEdit* const line = LineOf(*this);
    if (!line) return 0;
    return static_cast<DWORD>(MAKELONG(line->textMargins().left(), line->textMargins().right()));
}

BOOL CEdit::SetTabStops(int width) {
    auto* plain = vm::ControlOf<QPlainTextEdit>(*this);
    auto* rich = vm::ControlOf<QTextEdit>(*this);
    if ((!plain && !rich) || width <= 0) return FALSE;
    const double pixels = double(width) * view->fontMetrics().averageCharWidth() / kParts;
    if (plain) plain->setTabStopDistance(pixels);
    if (rich) rich->setTabStopDistance(pixels);
    return TRUE;
}
void CEdit::SetTabStops() {
    SetTabStops(kTabStop);
}
BOOL CEdit::SetTabStops(int count, const int* stops) {
    return SetTabStops(count > 0 && stops ? stops[0] : kTabStop);
}

LRESULT CEdit::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const int number = static_cast<int>(wParam);
    switch (message) {
    case EM_LIMITTEXT:
        return SetLimitText(static_cast<UINT>(wParam)), 0;
    case EM_GETLIMITTEXT:
        return GetLimitText();
    case EM_SETSEL:
        return SetSel(number, static_cast<int>(lParam)), 0;
    case EM_GETSEL:
        return GetSel();
    case EM_REPLACESEL:
        return ReplaceSel(reinterpret_cast<const char*>(lParam), wParam != 0), 0;
    case EM_SETREADONLY:
        return SetReadOnly(wParam != 0);
    case EM_GETMODIFY:
        return GetModify();
    case EM_SETMODIFY:
        return SetModify(wParam != 0), 0;
    case EM_GETLINECOUNT:
        return GetLineCount();
    case EM_GETLINE:
        return GetLine(number, reinterpret_cast<char*>(lParam));
    case EM_LINEINDEX:
        return LineIndex(number);
    case EM_LINELENGTH:
        return LineLength(number);
    case EM_LINEFROMCHAR:
        return LineFromChar(number);
    case EM_CANUNDO:
        return CanUndo();
    case EM_UNDO:
        return Undo();
    case EM_SETPASSWORDCHAR:
        return SetPasswordChar(static_cast<char>(wParam)), 0;
    case EM_GETPASSWORDCHAR:
        return static_cast<unsigned char>(GetPasswordChar());
    default:
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
}
