// The selection and the lines of text fields.
#include <vmcore/controls/CEdit.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "controls/textField.h"
#include "core/macroman.h"
#include "wnd/controlText.h"

using vm::TextField;
using vm::TextRange;

namespace {

// The selection in order: its first character, and the one behind it.
TextRange Ordered(const TextField& field) {
    const auto [first, end] = field.Selection();
    return {std::min(first, end), std::max(first, end)};
}

int LengthOf(const TextField& field, int line) {
    return static_cast<int>(field.Line(line).size());
}

// Win32's oddity: hosts ask what stays of the lines when the selection goes.
int Unselected(const TextField& field) {
    const TextRange selection = Ordered(field);
    const int lastLine = field.LineAt(selection.end);
    const int start = field.LineStart(field.LineAt(selection.first));
    const int end = field.LineCount() == 1 ? field.Length()
                                           : field.LineStart(lastLine) + LengthOf(field, lastLine);
    return end - start - (selection.end - selection.first);
}

} // namespace

void CEdit::GetSel(int& first, int& end) const {
    const auto field = TextField::Of(*this);
    const TextRange selection = field ? Ordered(*field) : TextRange{0, 0};
    first = selection.first;
    end = selection.end;
}

DWORD CEdit::GetSel() const {
    int first = 0;
    int end = 0;
    GetSel(first, end);
    return static_cast<DWORD>(MAKELONG(first, end));
}

void CEdit::SetSel(int first, int end, BOOL noScroll) {
    if (const auto field = TextField::Of(*this))
        field->Select(vm::RangeIn(*field, first, end), !noScroll);
}

// In this form 0xFFFF in both halves is nothing, in the high one the end.
void CEdit::SetSel(DWORD selection, BOOL noScroll) {
    SetSel(static_cast<short>(LOWORD(selection)) == -1 ? -1 : LOWORD(selection),
           static_cast<short>(HIWORD(selection)) == -1 ? -1 : HIWORD(selection), noScroll);
}

void CEdit::ReplaceSel(const char* newText, BOOL canUndo) {
    const auto field = TextField::Of(*this);
    if (!field || !newText) return;
    const vm::ProgramChange change;
    field->Replace(vm::FieldText(newText));
    if (!canUndo) field->ForgetUndo();
}

int CEdit::GetWindowTextLength() const {
    const auto field = TextField::Of(*this);
    return field ? field->Length() : CWnd::GetWindowTextLength();
}

int CEdit::GetLineCount() const {
    const auto field = TextField::Of(*this);
    return field ? field->LineCount() : 0;
}

int CEdit::GetLine(int line, char* buffer, int size) const {
    const auto field = TextField::Of(*this);
    if (!field || !buffer || size <= 0 || line < 0 || line >= field->LineCount()) return 0;
    const std::string bytes = vm::ToMacRomanLossy(field->Line(line));
    const std::size_t length = std::min(bytes.size(), static_cast<std::size_t>(size));
    std::memcpy(buffer, bytes.data(), length);
    if (length < static_cast<std::size_t>(size)) buffer[length] = '\0';
    return static_cast<int>(length);
}

int CEdit::GetLine(int line, char* buffer) const {
    if (!buffer) return 0;
    WORD size = 0;
    std::memcpy(&size, buffer, sizeof size);
    return GetLine(line, buffer, size);
}

int CEdit::LineFromChar(int character) const {
    const auto field = TextField::Of(*this);
    if (!field) return 0;
    return field->LineAt(character < 0 ? Ordered(*field).first : character);
}

int CEdit::LineIndex(int line) const {
    const auto field = TextField::Of(*this);
    if (!field) return 0;
    if (line < 0) line = field->LineAt(field->Selection().end);
    return line < field->LineCount() ? field->LineStart(line) : -1;
}

int CEdit::LineLength(int character) const {
    const auto field = TextField::Of(*this);
    if (!field || character > field->Length()) return 0;
    if (character < 0) return Unselected(*field);
    return LengthOf(*field, field->LineAt(character));
}

void CEdit::LineScroll(int lines, int characters) {
    if (const auto field = TextField::Of(*this)) field->Scroll(lines, characters);
}

int CEdit::GetFirstVisibleLine() const {
    const auto field = TextField::Of(*this);
    return field ? field->FirstVisible() : 0;
}
